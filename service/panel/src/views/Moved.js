// SPDX-License-Identifier: MIT
import { html } from '../html.js';
import { lastOf } from '../paths.js';
import { texts } from '../texts/panel.js';
import { usePanelState } from './hooks.js';
import { MoveList } from './MoveList.js';

/** What our last step moved, and what others have changed since. */
export function Moved() {
    const { steps } = usePanelState();
    const own = [...(steps.own?.moves.values() ?? [])];
    const others = [...steps.others.values()];
    const says = texts.moved;
    return html`<aside class="moved" aria-label=${says.heading}>
        <p role="status" class="visually-hidden">${own.length > 0 && !steps.own.isOpen
            ? says.said(own.length) : ''}</p>
        ${own.length > 0 && html`<section><h2>${says.own(lastOf(steps.own.path))}</h2>
            <${MoveList} moves=${own} /></section>`}
        ${others.length > 0 && html`<section><h2>${says.others}</h2>
            <${MoveList} moves=${others} /></section>`}
    </aside>`;
}
