// SPDX-License-Identifier: MIT
// A picture as the service sends it, and what can be read from it.

/**
 * @typedef {object} Trace
 * @property {string} name
 * @property {'curve'|'lines'} kind
 * @property {string} unit
 * @property {number} bottom  level at the lower edge of the screen; of curves of a record
 * @property {number} top
 * @property {Float32Array} columns  lowest and highest value of each; NaN where there is none
 */

/** @param {ArrayBuffer} buffer
    @returns {{record?: object, spectrum?: object}} their `traces` are Trace[] */
export function decode(buffer) {
    const body = 4 + new DataView(buffer).getUint32(0, true);
    const picture = JSON.parse(new TextDecoder().decode(new Uint8Array(buffer, 4, body - 4)));
    for (const part of [picture.record, picture.spectrum].filter(Boolean)) {
        for (const trace of part.traces) {
            trace.columns = new Float32Array(buffer, body + 4 * trace.begin, 2 * part.columns);
        }
    }
    return picture;
}

/** Lowest and highest value, and where the highest is; null where nothing is shown. */
export function extremesOf(part, { columns }) {
    let low = Infinity;
    let high = -Infinity;
    let peak = 0;
    for (let i = 0; i < columns.length; i += 2) {
        low = columns[i] < low ? columns[i] : low;
        if (columns[i + 1] > high) {
            high = columns[i + 1];
            peak = i / 2;
        }
    }
    return high === -Infinity ? null
        : { low, high, at: part.from + (part.to - part.from) * (peak + 0.5) / part.columns };
}

/** What a trace has in the column of a place; null where there is nothing. */
export function valueAt(part, { columns }, at) {
    const column = Math.floor((at - part.from) / (part.to - part.from) * part.columns);
    const low = columns[2 * column];
    return column < 0 || column >= part.columns || Number.isNaN(low) ? null
        : { low, high: columns[2 * column + 1] };
}

/** Divisions of the screen above its middle; its edges are ± 4. */
export function divisionOf({ bottom, top }, level) {
    return 8 * (level - bottom) / (top - bottom) - 4;
}
