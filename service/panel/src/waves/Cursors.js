// SPDX-License-Identifier: MIT
// Two places in time, moved by keys, by a finger, or by a click into the picture.

import { html } from '../html.js';
import { waves as texts } from '../texts/waves.js';
import { show } from './Figures.js';

const kSteps = 1000; // over the picture

/** Where cursors begin: at a quarter and at three quarters. */
export function placeCursors({ from, to }) {
    return [{ name: 'A', at: from + (to - from) / 4 }, { name: 'B', at: from + 3 * (to - from) / 4 }];
}

/** @param {{name: string, at: number}[]} props.cursors */
export function Cursors({ cursors, part, onMove }) {
    const { from, to } = part;
    const toStep = (at) => Math.round((at - from) / (to - from) * kSteps);
    const between = cursors[1].at - cursors[0].at;
    return html`<div class="cursors">
        ${cursors.map(({ name, at }) => html`<label class="cursor" key=${name}>
            <span>${texts.cursor(name)}</span>
            <input type="range" min="0" max=${kSteps} value=${toStep(at)}
                aria-valuetext=${show(at, 's')}
                onInput=${({ target }) => onMove(name, from + (to - from) * target.value / kSteps)} />
            <span class="cursor-at">${show(at, 's')}</span>
        </label>`)}
        <p>${texts.between}: ${show(between, 's')}, ${
            show(between === 0 ? NaN : 1 / Math.abs(between), 'Hz')}</p>
    </div>`;
}
