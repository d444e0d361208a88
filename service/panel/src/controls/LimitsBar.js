// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { controls as texts } from '../texts/controls.js';
import { limitsOf, showValue } from './quantity.js';

const kWidth = 1000; // of the drawing; it is stretched to the width of the control
const kHeight = 20;
const kMostTicks = 64;
const kDecadesOfLog = 3;

/**
 * Where a value lies between the limits, 0 to 1; null beyond them. Ranges of many decades are
 * drawn by their logarithm, as the present value would stick to one end otherwise.
 */
export function placeOf(value, minimum, maximum) {
    const [at, from, to] = [value, minimum, maximum].map(Number);
    if (value === null || value === undefined || !(at >= from && at <= to)) {
        return null;
    }
    if (to === from) {
        return 0;
    }
    const isLog = from > 0 && to / from >= 10 ** kDecadesOfLog;
    return isLog ? Math.log(at / from) / Math.log(to / from) : (at - from) / (to - from);
}

/** Minimum, maximum, default and present value of a number, where it has both limits. Defaults of
    results are what they were at the start: nothing that anybody chose. */
export function LimitsBar({ node }) {
    const { minimum, maximum } = limitsOf(node);
    if (minimum === null || maximum === null) {
        return null;
    }
    const place = (value) => placeOf(value, minimum, maximum);
    const at = (value) => Math.round((place(value) ?? 0) * kWidth);
    const show = (value) => showValue(node, value);
    const hasDefault = !node.result && place(node.default) !== null;
    const hasNow = node.valid && place(node.value) !== null;
    const ticks = node.selectable.length <= kMostTicks ? node.selectable : [];
    const says = texts.barOf({
        minimum: show(minimum),
        maximum: show(maximum),
        standard: hasDefault ? show(node.default) : '',
        now: hasNow ? node.shown : '',
    });
    const line = (className, x, top, bottom) =>
        html`<line class=${className} x1=${x} x2=${x} y1=${top} y2=${bottom} />`;
    return html`<div class="limits">
        <svg class="limits-bar" viewBox="0 0 ${kWidth} ${kHeight}" preserveAspectRatio="none"
            role="img" aria-label=${says}>
            <rect class="limits-range" x="0" y="8" width=${kWidth} height="4" />
            ${hasNow && html`<rect class="limits-filled" x="0" y="8" width=${at(node.value)} height="4" />`}
            ${ticks.map((value) => line('limits-tick', at(value), 7, 13))}
            ${hasDefault && line('limits-default', at(node.default), 3, 17)}
            ${hasNow && line('limits-now', at(node.value), 0, kHeight)}
        </svg>
        <div class="limits-ends" aria-hidden="true">
            <span title=${texts.minimum}>${show(minimum)}</span>
            ${hasDefault && html`<span class="limits-standard" title=${texts.default}
                >${texts.default} ${show(node.default)}</span>`}
            <span title=${texts.maximum}>${show(maximum)}</span>
        </div>
    </div>`;
}
