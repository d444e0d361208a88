// SPDX-License-Identifier: MIT
// A picture with axes, zoom and grid, into which others draw.

import uPlot from 'uplot';
import { formatQuantity } from '../controls/quantity.js';

const kLabelRoom = 76; // pixels of a label of an axis
const kSmallestDrag = 4; // pixels, below which it is a click

/** A colour of the style, as a canvas wants it. */
export function colourOf(name) {
    return getComputedStyle(document.documentElement).getPropertyValue(`--${name}`).trim();
}

/** Places of grid lines: even parts of the screen, where the window is that of the screen. */
function divide({ from, to }, parts) {
    return Array.from({ length: parts + 1 }, (_, i) => from + (to - from) * i / parts);
}

export class Chart {
    /**
     * @param {HTMLElement} home
     * @param {object} options
     * @param {string} options.unit of the horizontal axis
     * @param {?string} options.levels unit of the vertical axis; null: divisions, without labels
     * @param {number} options.parts of the grid, from left to right
     * @param {(chart: Chart, context: CanvasRenderingContext2D) => void} options.draw
     * @param {(from: number, to: number) => void} options.onZoom
     * @param {(at: number) => void} options.onPoint
     */
    constructor(home, options) {
        this.options = options;
        this.window = { from: 0, to: 1, bottom: -4, top: 4 };
        this.plot = new uPlot(this.#plotOptions(), [[0, 1], [null, null]], home);
        const { over } = this.plot;
        over.addEventListener('click', (event) => {
            if (!this.wasDragged) {
                options.onPoint(this.plot.posToVal(event.offsetX, 'x'));
            }
            this.wasDragged = false;
        });
    }

    #axis(more) {
        const line = () => colourOf('edge-quiet');
        return {
            stroke: () => colourOf('text-quiet'),
            font: '12px system-ui, sans-serif',
            grid: { stroke: line, width: 1 },
            ticks: { stroke: line, width: 1, size: 4 },
            ...more
        };
    }

    #plotOptions() {
        const { unit, levels, parts } = this.options;
        const label = (value, of) => formatQuantity(Number(value.toPrecision(4)), of);
        return {
            width: 320,
            height: 240,
            legend: { show: false },
            cursor: { y: false, points: { show: false }, drag: { setScale: false } },
            scales: {
                x: { time: false, range: () => [this.window.from, this.window.to] },
                y: { range: () => [this.window.bottom, this.window.top] }
            },
            axes: [this.#axis({
                size: 28,
                splits: () => divide(this.window, parts),
                values: (plot, splits) => {
                    const width = plot.bbox.width / (globalThis.devicePixelRatio ?? 1);
                    const each = Math.ceil(parts * kLabelRoom / width);
                    const isTold = (i) => i > 0 && i < parts && (i - parts / 2) % each === 0;
                    return splits.map((at, i) => (isTold(i) ? label(at, unit) : null));
                }
            }), this.#axis(levels === null
                ? { splits: () => divide({ from: -4, to: 4 }, 8), values: () => [], size: 8 }
                : { values: (plot, splits) => splits.map((at) => label(at, levels)), size: 64 })],
            series: [{}, {}],
            hooks: {
                draw: [({ ctx, bbox }) => {
                    ctx.save();
                    ctx.beginPath();
                    ctx.rect(bbox.left, bbox.top, bbox.width, bbox.height);
                    ctx.clip();
                    this.options.draw(this, ctx);
                    ctx.restore();
                }],
                setSelect: [(plot) => this.#zoom(plot)]
            }
        };
    }

    #zoom(plot) {
        const { left, width } = plot.select;
        if (width >= kSmallestDrag) {
            this.wasDragged = true;
            this.options.onZoom(plot.posToVal(left, 'x'), plot.posToVal(left + width, 'x'));
        }
        if (width > 0) {
            plot.setSelect({ left: 0, top: 0, width: 0, height: 0 }, false);
        }
    }

    setSize(width, height) {
        this.plot.setSize({ width, height });
    }

    /** Draws again. @param {{from: number, to: number, bottom: number, top: number}} window */
    show(window) {
        this.window = window;
        this.plot.setData([[window.from, window.to], [null, null]]);
    }

    /** Pixels of the canvas. */
    x(value) {
        return this.plot.valToPos(value, 'x', true);
    }

    y(value) {
        return this.plot.valToPos(value, 'y', true);
    }

    destroy() {
        this.plot.destroy();
    }
}
