// SPDX-License-Identifier: MIT
// What pictures say in numbers: for those who do not see them, and for exact values.

import { formatQuantity } from '../controls/quantity.js';
import { html } from '../html.js';
import { waves as texts } from '../texts/waves.js';
import { colourNameOf } from './draw.js';
import { extremesOf, valueAt } from './picture.js';

const kDigits = 4;

export function show(value, unit) {
    return Number.isFinite(value) ? formatQuantity(Number(value.toPrecision(kDigits)), unit)
        : texts.none;
}

function Swatch({ name }) {
    return html`<svg class="swatch" viewBox="0 0 16 8" aria-hidden="true">
        <rect class=${colourNameOf(name)} width="16" height="8" /></svg>`;
}

/** One column of a picture is more than one point: what lies in it. */
function showAt(part, trace, at) {
    const value = valueAt(part, trace, at);
    if (value === null) {
        return texts.none;
    }
    const low = show(value.low, trace.unit);
    const high = show(value.high, trace.unit);
    return low === high ? low : texts.range(low, high);
}

function notesOf(trace, masks) {
    return [trace.above && texts.above, trace.below && texts.below,
        masks.some(({ name }) => name === trace.name) && texts.tested].filter(Boolean).join(', ');
}

function Row({ part, trace, cursors, masks }) {
    if (trace.kind === 'lines') {
        return html`<tr><th scope="row"><${Swatch} name=${trace.name} />${
            texts.lines(trace.name)}</th><td colspan=${4 + cursors.length}></td></tr>`;
    }
    const extremes = extremesOf(part, trace);
    const { low, high } = extremes ?? { low: NaN, high: NaN };
    const notes = notesOf(trace, masks);
    return html`<tr>
        <th scope="row"><${Swatch} name=${trace.name} />${trace.name}${
            notes && html` <small>${notes}</small>`}</th>
        <td>${show((trace.top - trace.bottom) / 8, trace.unit)}</td>
        <td>${show(low, trace.unit)}</td>
        <td>${show(high, trace.unit)}</td>
        <td>${show(high - low, trace.unit)}</td>
        ${cursors.map(({ at }) => html`<td>${showAt(part, trace, at)}</td>`)}
    </tr>`;
}

/** @param {{name: string, at: number}[]} props.cursors */
export function Figures({ part, cursors, masks }) {
    return html`<div class="figures" role="region" aria-label=${texts.figures} tabindex="0"><table>
        <caption>${texts.figures}</caption>
        <thead><tr>${[texts.name, texts.perDivision, texts.lowest, texts.highest, texts.span,
            ...cursors.map(({ name }) => texts.at(name))].map((title) =>
            html`<th scope="col">${title}</th>`)}</tr></thead>
        <tbody>${part.traces.map((trace) => html`<${Row} key=${trace.name} part=${part}
            trace=${trace} cursors=${cursors} masks=${masks} />`)}</tbody>
    </table></div>`;
}

export function SpectrumFigures({ part }) {
    return html`<p class="quiet">${part.traces.map((trace) => {
        const extremes = extremesOf(part, trace);
        return extremes ? `${texts.spectrumTrace(trace.name, show(extremes.high, trace.unit),
            show(extremes.at, 'Hz'))} ` : '';
    })}</p>`;
}

/** A picture in words. */
export function describe(part) {
    return texts.picture(show(part.from, 's'), show(part.to, 's'), part.traces.map((trace) => {
        const extremes = trace.kind === 'curve' && extremesOf(part, trace);
        return extremes ? texts.trace(trace.name, show(extremes.low, trace.unit),
            show(extremes.high, trace.unit)) : texts.lines(trace.name);
    }).join(', '));
}

export function describeSpectrum(part) {
    return texts.spectrumPicture(show(part.from, 'Hz'), show(part.to, 'Hz'), part.traces.map((trace) => {
        const extremes = extremesOf(part, trace);
        return extremes ? texts.spectrumTrace(trace.name, show(extremes.high, trace.unit),
            show(extremes.at, 'Hz')) : trace.name;
    }).join(', '));
}
