// SPDX-License-Identifier: MIT
import { html, useEffect } from '../html.js';
import { describeSpectrum } from './Figures.js';
import { drawCurve } from './draw.js';
import { useChart } from './useChart.js';

const kShape = { least: 160, most: 320, ratio: 0.4 };

/** As TracePicture, of a spectrum. */
export function SpectrumPicture({ shown, follow, onColumns, onZoom }) {
    const { home, chart, columns } = useChart({
        unit: 'Hz', levels: '', parts: 10, onZoom, onPoint: () => {},
        draw: (of, context) => shown.current.spectrum?.traces.forEach((trace) =>
            drawCurve(of, context, shown.current.spectrum, trace, (level) => of.y(level)))
    }, kShape);
    useEffect(() => onColumns(columns), [columns]);
    useEffect(() => follow(() => {
        const { spectrum } = shown.current;
        if (spectrum && chart.current) {
            chart.current.show(spectrum);
        }
    }), []);
    return html`<div class="chart" role="img" ref=${home} aria-label=${
        shown.current.spectrum ? describeSpectrum(shown.current.spectrum) : ''}></div>`;
}
