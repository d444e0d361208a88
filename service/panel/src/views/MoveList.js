// SPDX-License-Identifier: MIT
import { html, useState } from '../html.js';
import { linkTo } from '../route.js';
import { texts } from '../texts/panel.js';
import { aspectsOf } from './moves.js';

const kFirst = 50;

function Aspect({ what, from, to }) {
    const hidden = (text) => html`<span class="visually-hidden"> ${text} </span>`;
    return html`<span class="aspect">
        ${what && html`<span class="quiet">${what} </span>`}
        ${from === null ? html`<span class="quiet">${texts.moved.came}</span>`
            : html`${hidden(texts.moved.from)}<del>${from}</del>`}
        <span aria-hidden="true"> → </span>
        ${to === null ? html`<span class="quiet">${texts.moved.gone}</span>`
            : html`${hidden(texts.moved.to)}<ins>${to}</ins>`}
    </span>`;
}

/** Nodes with old → new. @param {import('../steps.js').Move[]} properties.moves */
export function MoveList({ moves }) {
    const [most, setMost] = useState(kFirst);
    return html`<ul class="moves">
        ${moves.slice(0, most).map((move) => html`<li key=${move.path}>
            <a href=${linkTo(move.path)}>${move.path || texts.root}</a>
            <span class="aspects">${aspectsOf(move).map((aspect) =>
                html`<${Aspect} ...${aspect} />`)}</span>
        </li>`)}
        ${moves.length > most && html`<li><button type="button" class="button"
            onClick=${() => setMost(most + 10 * kFirst)}>${texts.tree.more(moves.length - most)}
        </button></li>`}
    </ul>`;
}
