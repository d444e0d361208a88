// SPDX-License-Identifier: MIT
import { html, useEffect, useState } from '../html.js';
import { titleOf } from '../paths.js';
import { texts } from '../texts/panel.js';
import { usePanel, usePanelState } from './hooks.js';
import { MoveList } from './MoveList.js';

/** Undo and redo with what they would take back or bring again. */
export function UndoButtons({ isShort }) {
    const panel = usePanelState();
    const { undoSteps, redoSteps } = panel.history;
    const says = texts.history;
    const one = (steps, none, full, sign, action) => {
        const can = steps.length > 0;
        const label = can ? full(steps[0]) : none;
        return html`<button type="button" class="button" aria-label=${label} title=${label}
            aria-disabled=${!can} onClick=${() => can && action()}><span
            aria-hidden="true">${sign}</span>${!isShort && html` ${label}`}</button>`;
    };
    return html`<span class="undo">
        ${one(undoSteps, says.noUndo, says.undo, '↶', () => panel.undo())}
        ${one(redoSteps, says.noRedo, says.redo, '↷', () => panel.redo())}
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

/** Steps that are taken back or done again together with all before them in the list. */
function Steps({ heading, none, steps, label, action }) {
    return html`<section><h3>${heading}</h3>${steps.length === 0
        ? html`<p class="quiet">${none}.</p>`
        : html`<ol class="steps reversible">${steps.map((text, i) => html`<li key=${i}><button
            type="button" class="button" onClick=${() => action(i + 1)}>${
            label(text, i + 1)}</button></li>`)}</ol>`}</section>`;
}

export function History() {
    const panel = usePanelState();
    const { steps, history: { undoSteps, redoSteps } } = panel;
    const says = texts.history;
    return html`<article class="page">
        <h2 tabindex="-1">${says.heading}</h2>
        <${Steps} heading=${says.toUndo} none=${says.noUndo} steps=${undoSteps}
            label=${says.undo} action=${(count) => panel.undo(count)} />
        <${Steps} heading=${says.toRedo} none=${says.noRedo} steps=${redoSteps}
            label=${says.redo} action=${(count) => panel.redo(count)} />
        <section><h3>${says.steps}</h3>
            ${steps.list.length === 0 ? html`<p class="quiet">${says.none}</p>`
                : html`<ol class="steps">${steps.list.map((step) =>
                    html`<${Step} key=${step.id} step=${step} />`)}</ol>`}
        </section>
    </article>`;
}
