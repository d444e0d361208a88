// SPDX-License-Identifier: MIT
// Curves, digital lines, masks and cursors into a chart.

import { colourOf } from './chart.js';
import { divisionOf } from './picture.js';

const kLineRoom = 0.5; // divisions of a digital line, the lowest at the lower edge
const kHigh = 0.35; // divisions of its swing

const ratio = () => globalThis.devicePixelRatio ?? 1;

/** The colour of a trace: of inputs by their number, of others by what they are. */
export function colourNameOf(name) {
    const input = name.match(/(?:^C|FFT )([1-4])$/);
    return input ? `trace-${input[1]}` : name.startsWith('M') ? 'trace-5' : 'trace-6';
}

/** Columns as one line that goes through the lowest and the highest value of each; neighbours share
    the point between them, so that nothing is left open. */
function curvePath(chart, part, columns, toY) {
    const path = new Path2D();
    const step = (part.to - part.from) / part.columns;
    let isOpen = false;
    for (let i = 0; i < part.columns; ++i) {
        const low = columns[2 * i];
        if (Number.isNaN(low)) {
            isOpen = false;
            continue;
        }
        const x = chart.x(part.from + (i + 0.5) * step);
        const ends = [toY(low), toY(columns[2 * i + 1])];
        if (isOpen) {
            path.lineTo(x, ends[0]);
        } else {
            path.moveTo(x, ends[0]);
        }
        path.lineTo(x, ends[1]);
        isOpen = true;
    }
    return path;
}

export function drawCurve(chart, context, part, trace, toY) {
    context.strokeStyle = colourOf(colourNameOf(trace.name));
    context.lineWidth = 1.25 * ratio();
    context.lineJoin = 'round';
    context.stroke(curvePath(chart, part, trace.columns, toY));
}

/** A name on a ground of its own. */
function drawName(context, name, colour, left, middle) {
    const size = ratio();
    context.font = `${11 * size}px system-ui, sans-serif`;
    context.textAlign = 'left';
    context.textBaseline = 'middle';
    context.fillStyle = colourOf('ground-field');
    context.fillRect(left, middle - 7 * size, context.measureText(name).width + 4 * size, 14 * size);
    context.fillStyle = colourOf(colour);
    context.fillText(name, left + 2 * size, middle);
}

/** The place of zero, with the name; of curves beside each other. */
export function drawZero(chart, context, trace, place) {
    const zero = Math.max(-3.9, Math.min(3.9, divisionOf(trace, 0)));
    const left = chart.plot.bbox.left + (22 + 24 * place) * ratio();
    drawName(context, trace.name, colourNameOf(trace.name), left, chart.y(zero));
}

export function drawLines(chart, context, part, trace) {
    const { columns } = trace;
    const width = chart.plot.bbox.width / part.columns;
    const step = (part.to - part.from) / part.columns;
    for (let line = 0; line < 8; ++line) {
        const base = -4 + kLineRoom * (line + 0.15);
        context.fillStyle = colourOf('trace-6');
        for (let i = 0; i < part.columns; ++i) {
            if (Number.isNaN(columns[2 * i])) {
                continue;
            }
            const always = columns[2 * i] >> line & 1;
            const once = columns[2 * i + 1] >> line & 1;
            const top = chart.y(base + (once ? kHigh : 0));
            const bottom = always ? top : chart.y(base);
            context.fillRect(chart.x(part.from + i * step), top, width,
                Math.max(bottom - top, ratio()));
        }
        drawName(context, `D${line}`, 'trace-6', chart.plot.bbox.left, chart.y(base + kHigh / 2));
    }
}

/** What a mask forbids: between its lines and the edges of the screen. */
export function drawMask(chart, context, mask, trace) {
    context.fillStyle = colourOf('mask');
    context.strokeStyle = colourOf('bad');
    context.lineWidth = ratio();
    const toY = (level) => chart.y(divisionOf(trace, level));
    for (const [pieces, edge] of [[mask.upper, 4.5], [mask.lower, -4.5]]) {
        for (const piece of pieces) {
            const path = new Path2D();
            path.moveTo(chart.x(piece[0][0]), chart.y(edge));
            piece.forEach(([time, level]) => path.lineTo(chart.x(time), toY(level)));
            path.lineTo(chart.x(piece.at(-1)[0]), chart.y(edge));
            path.closePath();
            context.fill(path);
            context.stroke(path);
        }
    }
}

export function drawCursor(chart, context, name, at) {
    const { bbox } = chart.plot;
    const x = chart.x(at);
    context.strokeStyle = colourOf('text');
    context.lineWidth = ratio();
    context.setLineDash(name === 'A' ? [] : [6 * ratio(), 4 * ratio()]);
    context.beginPath();
    context.moveTo(x, bbox.top);
    context.lineTo(x, bbox.top + bbox.height);
    context.stroke();
    context.setLineDash([]);
    drawName(context, name, 'text', x + 2 * ratio(), bbox.top + 9 * ratio());
}
