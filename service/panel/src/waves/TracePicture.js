// SPDX-License-Identifier: MIT
import { html, useEffect } from '../html.js';
import { describe } from './Figures.js';
import { drawCursor, drawCurve, drawLines, drawMask, drawZero } from './draw.js';
import { divisionOf } from './picture.js';
import { useChart } from './useChart.js';

const kShape = { least: 200, most: 480, ratio: 0.6 };

function drawAll(chart, context, { part, masks, cursors }) {
    if (!part) {
        return;
    }
    for (const trace of part.traces.filter(({ kind }) => kind === 'lines')) {
        drawLines(chart, context, part, trace);
    }
    const curves = part.traces.filter(({ kind }) => kind === 'curve');
    for (const mask of masks) {
        const trace = curves.find(({ name }) => name === mask.name);
        if (trace) {
            drawMask(chart, context, mask, trace);
        }
    }
    curves.forEach((trace) => {
        drawCurve(chart, context, part, trace, (level) => chart.y(divisionOf(trace, level)));
    });
    curves.forEach((trace, place) => drawZero(chart, context, trace, place));
    cursors.forEach(({ name, at }) => drawCursor(chart, context, name, at));
}

/** Traces of a record. `shown` is what stands; `follow` gets a function that draws a new picture,
    twenty times a second, without the page being made anew. */
export function TracePicture({ shown, follow, onColumns, onZoom, onPoint }) {
    const { home, chart, columns } = useChart({
        unit: 's', levels: null, parts: shown.current.part?.divisions ?? 10, onZoom, onPoint,
        draw: (of, context) => drawAll(of, context, shown.current)
    }, kShape);
    useEffect(() => onColumns(columns), [columns]);
    useEffect(() => follow(() => {
        const { part } = shown.current;
        if (part && chart.current) {
            chart.current.show({ from: part.from, to: part.to, bottom: -4, top: 4 });
        }
    }), []);
    return html`<div class="chart" role="img" ref=${home} aria-label=${
        shown.current.part ? describe(shown.current.part) : ''}></div>`;
}
