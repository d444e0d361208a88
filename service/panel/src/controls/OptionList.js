// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useEffect, useLayoutEffect, useRef, useState } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';

const kTypedTogether = 700; // ms between two keys of one word

/** The option to which a key leads, or null. */
function optionOf(options, at, key) {
    const last = options.length - 1;
    const to = {
        ArrowDown: at + 1, ArrowRight: at + 1, ArrowUp: at - 1, ArrowLeft: at - 1,
        Home: 0, End: last, PageDown: at + 10, PageUp: at - 10,
    }[key];
    return to === undefined ? null : Math.min(Math.max(to, 0), last);
}

/** Letters lead to the next option that begins with them. */
function useTyping() {
    const typed = useRef({ text: '', at: 0 });
    return (options, at, key) => {
        const now = performance.now();
        const goesOn = now - typed.current.at < kTypedTogether;
        typed.current = { text: (goesOn ? typed.current.text : '') + key.toLowerCase(), at: now };
        const { text } = typed.current;
        const from = text.length > 1 ? at : at + 1;
        const order = options.map((_, i) => (from + i) % options.length);
        return order.find((i) => options[i].shown.toLowerCase().startsWith(text)) ?? null;
    };
}

/**
 * Values to choose from. Those that can not be chosen now stand among the others, can be reached by
 * keys and heard, and are told of by `onLook`; they are never chosen.
 *
 * @param {{options: {value: *, shown: string, isSelectable: boolean}[], value: *, name: string,
 *     isInline: boolean, isClosed: boolean, hasFocus: boolean, onChoose: function(*): void,
 *     onLook: function(object|null): void, describedBy: string}} properties
 */
export function OptionList({
    options, value, labelledBy, isInline, isClosed, hasFocus, onChoose, onLook, describedBy, isInvalid,
}) {
    const chosen = options.findIndex((option) => option.value === value);
    const [at, setAt] = useState(Math.max(chosen, 0));
    const list = useRef(null);
    const search = useTyping();
    const current = Math.min(at, options.length - 1);
    useEffect(() => setAt(Math.max(chosen, 0)), [chosen]);
    useLayoutEffect(() => { // before the next key can come
        if (hasFocus) {
            list.current?.children[current]?.focus();
        }
    }, []);

    const go = (index) => {
        setAt(index);
        list.current.children[index].focus();
    };
    const look = (index) => onLook?.(options[index].isSelectable ? null : options[index]);
    const choose = (index) => {
        look(index);
        if (options[index].isSelectable && !isClosed) {
            onChoose(options[index].value);
        }
    };
    const key = (event) => {
        if (event.altKey || event.ctrlKey || event.metaKey) {
            return;
        }
        // Where the focus is, which may be ahead of what is drawn.
        const here = [...list.current.children].indexOf(event.target);
        if (event.key === 'Enter' || event.key === ' ') {
            event.preventDefault();
            choose(here);
            return;
        }
        const to = optionOf(options, here, event.key)
            ?? (event.key.length === 1 ? search(options, here, event.key) : null);
        if (to !== null) {
            event.preventDefault();
            go(to);
        }
    };
    return html`<ul ref=${list} class=${isInline ? 'options is-inline' : 'options'} role="listbox"
        aria-labelledby=${labelledBy} aria-describedby=${describedBy} aria-disabled=${isClosed}
        aria-invalid=${isInvalid ? 'true' : undefined}
        aria-orientation=${isInline ? 'horizontal' : 'vertical'} onKeyDown=${key}>
        ${options.map((option, index) => html`<li key=${option.value} role="option" class="option"
            tabindex=${index === current ? 0 : -1} aria-selected=${index === chosen}
            aria-disabled=${isClosed || !option.isSelectable}
            onClick=${() => { setAt(index); choose(index); }}
            onFocus=${() => look(index)} onMouseEnter=${() => look(index)}>
            ${option.shown}${!option.isSelectable && html`<span class="option-closed"
                > ${texts.notSelectableShort}</span>`}</li>`)}
    </ul>`;
}
