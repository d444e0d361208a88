// SPDX-License-Identifier: MIT
import { html } from '../html.js';
import { texts } from '../texts/panel.js';
import { nameOf } from './History.js';
import { usePanelState } from './hooks.js';
import { MoveList } from './MoveList.js';

/** Leads to the list, which stands below the page on narrow screens. */
export function MovedButton() {
    const { steps } = usePanelState();
    const count = steps.moved().size;
    return count > 0 && html`<button type="button" class="badge to-moved"
        title=${texts.moved.toList(count)} onClick=${() => {
            const list = document.getElementById('moved');
            list.scrollIntoView();
            list.focus();
        }}>${texts.moved.said(count)}</button>`;
}

/** What our last step moved, and what others have changed since. */
export function Moved() {
    const { steps } = usePanelState();
    const written = steps.own?.path;
    const own = [...(steps.own?.moves.values() ?? [])]
        .sort((a, b) => (b.path === written) - (a.path === written));
    const others = [...steps.others.values()];
    const says = texts.moved;
    return html`<aside class="moved" id="moved" tabindex="-1" aria-label=${says.heading}>
        <p role="status" class="visually-hidden">${own.length > 0 && !steps.own.isOpen
            ? says.said(own.length) : ''}</p>
        ${own.length > 0 && html`<section><h2>${says.own(nameOf(steps.own))}</h2>
            <${MoveList} moves=${own} /></section>`}
        ${others.length > 0 && html`<section><h2>${says.others}</h2>
            <${MoveList} moves=${others} /></section>`}
    </aside>`;
}
