// SPDX-License-Identifier: MIT
import { html, useEffect, useState } from '../html.js';
import { titleOf } from '../paths.js';
import { texts } from '../texts/panel.js';
import { usePanel, usePanelState } from './hooks.js';
import { MoveList } from './MoveList.js';

/** Undo and redo with what they would take back or bring again. */
export function UndoButtons({ isShort }) {
    const panel = usePanelState();
    const { canUndo, undo, canRedo, redo } = panel.history;
    const says = texts.history;
    const one = (can, none, full, sign, action) => {
        const label = can ? full : none;
        return html`<button type="button" class="button" aria-label=${label} title=${label}
            aria-disabled=${!can} onClick=${() => can && action()}><span
            aria-hidden="true">${sign}</span>${!isShort && html` ${label}`}</button>`;
    };
    return html`<span class="undo">
        ${one(canUndo, says.noUndo, says.undo(undo), '↶', () => panel.undo())}
        ${one(canRedo, says.noRedo, says.redo(redo), '↷', () => panel.redo())}
        <span role="status" class="refused">${panel.saying}</span>
    </span>`;
}

/** Ctrl+Z and Ctrl+Shift+Z or Ctrl+Y, except where text is typed. */
export function useUndoKeys() {
    const panel = usePanel();
    useEffect(() => {
        const onKey = (event) => {
            const isTyped = event.target.closest?.('input:not([type=checkbox]), textarea, select');
            const key = event.key.toLowerCase();
            if (!(event.ctrlKey || event.metaKey) || isTyped || !['z', 'y'].includes(key)) {
                return;
            }
            event.preventDefault();
            if (key === 'y' || event.shiftKey) {
                panel.redo();
            } else {
                panel.undo();
            }
        };
        addEventListener('keydown', onKey);
        return () => removeEventListener('keydown', onKey);
    }, [panel]);
}

/** What a step was, in words. */
export function nameOf(step) {
    return texts.history.kind[step.kind](step.text || titleOf(step.path) || texts.root);
}

function Step({ step }) {
    const [isOpen, setOpen] = useState(false);
    const time = new Date(step.at);
    return html`<li>
        <details onToggle=${(event) => setOpen(event.currentTarget.open)}>
            <summary><time datetime=${time.toISOString()}>${time.toLocaleTimeString('en-GB')}</time>
                ${' '}${nameOf(step)} <span class="quiet">${
                texts.moved.said(step.moves.size)}</span></summary>
            ${isOpen && html`<${MoveList} moves=${[...step.moves.values()]} />`}
        </details>
    </li>`;
}

export function History() {
    const { steps } = usePanelState();
    return html`<article class="page">
        <h2 tabindex="-1">${texts.history.heading}</h2>
        <section><h3>${texts.history.next}</h3><${UndoButtons} /></section>
        <section><h3>${texts.history.steps}</h3>
            ${steps.list.length === 0 ? html`<p class="quiet">${texts.history.none}</p>`
                : html`<ol class="steps">${steps.list.map((step) =>
                    html`<${Step} key=${step.id} step=${step} />`)}</ol>`}
        </section>
    </article>`;
}
