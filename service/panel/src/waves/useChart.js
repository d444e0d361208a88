// SPDX-License-Identifier: MIT
import { useEffect, useRef, useState } from '../html.js';
import { Chart } from './chart.js';

const kColumnStep = 50; // so that small changes of a window are no other wish
const kMostColumns = 2000;

/**
 * A chart that is as wide as its place. `options` are those of Chart, of the moment.
 * @returns {{home: object, chart: object, columns: number}} `columns` are what the picture can show
 */
export function useChart(options, shape) {
    const home = useRef(null);
    const chart = useRef(null);
    const now = useRef(options);
    const [columns, setColumns] = useState(0);
    now.current = options;
    useEffect(() => {
        const place = home.current;
        chart.current = new Chart(place, {
            ...options,
            draw: (...drawn) => now.current.draw(...drawn),
            onZoom: (...stretch) => now.current.onZoom(...stretch),
            onPoint: (at) => now.current.onPoint(at)
        });
        const fit = () => {
            const width = Math.max(240, Math.floor(place.clientWidth));
            chart.current.setSize(width, Math.round(Math.max(shape.least,
                Math.min(shape.most, width * shape.ratio))));
            setColumns(Math.min(kMostColumns, Math.ceil(width / kColumnStep) * kColumnStep));
        };
        const observer = new ResizeObserver(fit);
        observer.observe(place);
        fit();
        const dark = matchMedia('(prefers-color-scheme: dark)');
        const again = () => chart.current.plot.redraw();
        dark.addEventListener('change', again);
        return () => {
            observer.disconnect();
            dark.removeEventListener('change', again);
            chart.current.destroy();
            chart.current = null;
        };
    }, []);
    return { home, chart, columns };
}
