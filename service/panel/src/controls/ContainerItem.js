// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useLayoutEffect, useRef, useState } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';

/** The name of an item while it is changed. Enter keeps it, Escape does not. */
function Rename({ name, send, onKept, onEnd, ids }) {
    const [typed, setTyped] = useState(name);
    const field = useRef(null);
    useLayoutEffect(() => field.current.select(), []); // before the next key can come
    const keep = async (event) => {
        event.preventDefault();
        if (await send({ do: 'rename', key: name, to: typed })) {
            onKept();
        } else {
            field.current?.focus();
        }
    };
    const key = (event) => {
        if (event.key === 'Escape') {
            event.stopPropagation();
            onEnd();
        }
    };
    return html`<form class="field-row" onSubmit=${keep} onKeyDown=${key}>
        <input type="text" class="field" ref=${field} value=${typed} autocomplete="off"
            aria-label=${texts.newNameOf(name)} aria-describedby=${ids.says}
            onInput=${(event) => setTyped(event.currentTarget.value)} />
        <button type="submit" class="button is-main">${texts.rename}</button>
        <button type="button" class="button" onClick=${onEnd}>${texts.discard}</button>
    </form>`;
}

/** One item with what can be done to it. `itemKey` is what the service calls it by. */
export function ContainerItem({
    item, itemKey, position, count, isActive, isMap, isOpen, canEdit, send, open, ids, wantFocus,
}) {
    const [isRenaming, setRenaming] = useState(false);
    const shown = isMap ? itemKey : texts.itemAt(itemKey);
    const end = () => {
        wantFocus({ key: itemKey, does: 'rename' });
        setRenaming(false);
    };
    const button = (does, text, label, what, isPossible = true) => html`<button type="button"
        class="button" data-does=${does} aria-label=${label} aria-disabled=${!isPossible}
        onClick=${() => isPossible && send(what)}>${text}</button>`;
    const move = (does, to, text, label) => button(does, text, label,
        { do: 'move', key: itemKey, to: String(to) }, to >= 0 && to < count);
    if (isRenaming) {
        return html`<li class="item"><${Rename} name=${itemKey} send=${send}
            onKept=${() => setRenaming(false)} onEnd=${end} ids=${ids} /></li>`;
    }
    return html`<li class=${isActive ? 'item is-active' : 'item'}>
        <span class="item-name">${open ? html`<a href=${open(item.path)}>${shown}</a>` : shown}
            ${isActive && html` <span class="item-active">${texts.active}</span>`}</span>
        <span class="item-tools">
            ${isOpen && button('activate', texts.activate, texts.activateOf(shown),
                { do: 'activate', key: itemKey }, !isActive)}
            ${canEdit && !isMap && move('up', position - 1, '↑', texts.moveUp(shown))}
            ${canEdit && !isMap && move('down', position + 1, '↓', texts.moveDown(shown))}
            ${canEdit && isMap && html`<button type="button" class="button" data-does="rename"
                aria-label=${texts.renameOf(shown)} onClick=${() => setRenaming(true)}
                >${texts.rename}</button>`}
            ${canEdit && button('copy', texts.copy, texts.copyOf(shown),
                { do: 'copy', key: itemKey, to: isMap ? '' : String(position + 1) })}
            ${canEdit && button('remove', texts.remove, texts.removeOf(shown),
                { do: 'remove', key: itemKey })}
        </span>
    </li>`;
}
