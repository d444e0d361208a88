// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useRef, useState } from 'preact/hooks';
import { OptionList } from './OptionList.js';
import { Why } from './Why.js';

/**
 * A button that opens a list below it; keys and leaving close it. The list stands in the page and
 * not above it: nothing is covered, and it fits the smallest screen.
 *
 * `id` is the button's; `button` are more of its attributes, `content` is what it shows. The list opens
 * when `onOpen` is done. `children(opener)` places the button among others; without them it stands
 * alone.
 */
export function Chooser({
    id, content, button, options, value, labelledBy, describedBy, isClosed, isInvalid, onChoose, onOpen, why,
    children,
}) {
    const [isOpen, setOpen] = useState(false);
    const [isWaiting, setWaiting] = useState(false);
    const [greyed, setGreyed] = useState(null);
    const opener = useRef(null);
    const close = () => {
        setOpen(false);
        setGreyed(null);
        opener.current?.focus();
    };
    const show = async () => {
        setWaiting(true);
        await onOpen?.();
        setWaiting(false);
        setOpen(true);
    };
    const choose = (chosen) => {
        close();
        onChoose(chosen);
    };
    const leave = (event) => {
        if (!event.currentTarget.contains(event.relatedTarget)) {
            setOpen(false);
            setGreyed(null);
        }
    };
    const key = (event) => {
        if (event.key === 'Escape' && isOpen) {
            event.stopPropagation();
            close();
        }
    };
    const openByKey = (event) => {
        if (!isOpen && (event.key === 'ArrowDown' || event.key === 'ArrowUp')) {
            event.preventDefault();
            show();
        }
    };
    const openerButton = html`<button type="button" ref=${opener} id=${id} aria-haspopup="listbox"
        aria-expanded=${isOpen} aria-busy=${isWaiting} aria-describedby=${describedBy}
        onClick=${() => (isOpen ? close() : show())} onKeyDown=${openByKey}
        ...${button}>${content}</button>`;
    return html`<div class="chooser" onFocusOut=${leave} onKeyDown=${key}>
        ${children ? children(openerButton) : openerButton}
        ${isOpen && html`<${OptionList} options=${options} value=${value} hasFocus
            ...${{ labelledBy, describedBy, isClosed, isInvalid }}
            onChoose=${choose} onLook=${setGreyed} />`}
        <${Greyed} option=${greyed} ...${why} />
    </div>`;
}

/** The place where a value that can not be chosen says why; always there, for screen readers. */
export function Greyed({ option, ...why }) {
    return html`<div aria-live="polite">${option && html`<${Why} value=${option.value}
        shown=${option.shown} ...${why} />`}</div>`;
}
