// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useEffect, useId, useRef, useState } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';
import { ContainerItem } from './ContainerItem.js';
import { closedBy, Frame, idsOf } from './Frame.js';
import { useWriting } from './useWriting.js';

const kAtOnce = 50;

/**
 * Where the focus belongs after a change: with the item that was moved or renamed, or with the one
 * that has taken the place of a removed one.
 */
function focusAfter({ do: does, key, to }, keys) {
    switch (does) {
    case 'rename':
        return { key: to, does };
    case 'move':
        return { key: to, does: Number(to) < Number(key) ? 'up' : 'down' };
    case 'remove':
        return { position: keys.indexOf(key), count: keys.length - 1, does };
    default:
        return null;
    }
}

/** Moves the focus once the list shows what was changed: its buttons are other ones then. */
function useFocusAfter(keys) {
    const list = useRef(null);
    const [wanted, setWanted] = useState(null);
    useEffect(() => {
        const { key, position, count, does } = wanted ?? {};
        const at = key !== undefined ? keys.indexOf(key)
            : keys.length === count ? Math.min(position, count - 1) : -1;
        const button = list.current.children[at]?.querySelector(`[data-does="${does}"]`);
        if (button) {
            button.focus();
            setWanted(null);
        }
    }, [wanted, keys.join()]);
    return { list, wantFocus: setWanted };
}

/** Insert by name in maps, at the end in arrays. Without a name the instrument makes one. */
function Insert({ node, isMap, send, ids }) {
    const [name, setName] = useState('');
    const isFull = node.count >= node.maximumCount;
    const insert = async (event) => {
        event.preventDefault();
        if (!isFull && await send({ do: 'insert', key: name })) {
            setName('');
        }
    };
    return html`<form class="field-row" onSubmit=${insert}>
        ${isMap && html`<input type="text" class="field" value=${name} autocomplete="off"
            aria-label=${texts.nameOfNew} aria-describedby=${ids.says} placeholder=${texts.nameOfNew}
            onInput=${(event) => setName(event.currentTarget.value)} />`}
        <button type="submit" class="button" aria-disabled=${isFull} aria-describedby=${ids.says}
            aria-label=${texts.insertInto(node.name)}>${texts.insert}</button>
        ${isFull && html`<span class="control-hint">${texts.isFull}</span>`}
    </form>`;
}

/**
 * Items of an array or map: which there are, which one is active, and where clients may, insert,
 * copy, rename, move and remove. Nothing is asked twice: undo brings back what was removed.
 */
export function Container({ node, items, edit, busy, refusal, labelledBy, open }) {
    const ids = idsOf(useId());
    const writing = useWriting(node.path, edit);
    const [most, setMost] = useState(kAtOnce);
    const all = items ?? node.items ?? [];
    const isMap = node.kind === 'map';
    const isOpen = closedBy(node) === '';
    const canEdit = isOpen && node.dynamic;
    const keys = all.map(({ path }, position) => (isMap ? path.slice(path.lastIndexOf('[') + 1, -1)
        : String(position)));
    const { list, wantFocus } = useFocusAfter(keys);
    const send = async (what) => {
        const isTaken = await writing.send(what);
        if (isTaken) {
            wantFocus(focusAfter(what, keys));
        }
        return isTaken;
    };
    return html`<${Frame} kind="container" ...${{ node, ids, labelledBy, writing, refusal, busy }}>
        <p class="control-hint">${texts.itemCount(all.length, node.maximumCount, node.dynamic)}</p>
        <ol class="items" ref=${list} aria-labelledby=${labelledBy ?? ids.label}>
            ${all.slice(0, most).map((item, position) => html`<${ContainerItem} key=${item.path}
                itemKey=${keys[position]} position=${position} count=${all.length}
                isActive=${node.active === keys[position]}
                ...${{ item, isMap, isOpen, canEdit, send, open, ids, wantFocus }} />`)}
        </ol>
        ${all.length > most && html`<button type="button" class="button"
            onClick=${() => setMost(most + kAtOnce)}>${texts.showMore(all.length - most)}</button>`}
        ${canEdit && html`<${Insert} ...${{ node, isMap, send, ids }} />`}
    <//>`;
}
