// SPDX-License-Identifier: MIT
// Traces, spectrum and masks as the instrument's screen has them.

import { html, useEffect, useRef, useState } from '../html.js';
import { linkTo } from '../route.js';
import { waves as texts } from '../texts/waves.js';
import { useAgain, usePanel } from '../views/hooks.js';
import { Cursors, placeCursors } from './Cursors.js';
import { Figures, SpectrumFigures } from './Figures.js';
import { WaveSource } from './source.js';
import { SpectrumPicture } from './SpectrumPicture.js';
import { TracePicture } from './TracePicture.js';

const kTextPause = 500; // milliseconds between two numbers: they are read by people
const kSettings = ['Control/SMScope/RunStop', 'Horizontal/Scale', 'Horizontal/Position',
    'Vertical/Channel', 'Mask', 'Spectrum'];

/** Those who draw each picture: a page that is made anew twenty times a second would be too much. */
class Followers {
    constructor() {
        this.all = new Set();
        this.isAsked = false;
    }

    add(f) {
        this.all.add(f);
        return () => this.all.delete(f);
    }

    draw() {
        if (!this.isAsked) {
            this.isAsked = true;
            requestAnimationFrame(() => {
                this.isAsked = false;
                this.all.forEach((f) => f());
            });
        }
    }
}

/** Pictures as they come, and what is to be drawn of them. */
function useWaves() {
    const { connection } = usePanel();
    const again = useAgain();
    const state = useRef(null);
    state.current ??= {
        shown: { current: { part: null, spectrum: null, masks: [], cursors: [] } },
        followers: new Followers(), source: null, standing: null, isHeld: false
    };
    useEffect(() => {
        const { current } = state;
        const { shown, followers } = current;
        current.source = new WaveSource(connection, {
            standing: (standing) => {
                current.standing = standing;
                again();
            },
            picture: ({ record, spectrum }) => {
                if (!current.isHeld) {
                    const isFirst = !shown.current.part || !shown.current.spectrum !== !spectrum;
                    shown.current = { ...shown.current, part: record, spectrum };
                    followers.draw();
                    isFirst && again();
                }
            },
            masks: (masks) => {
                shown.current = { ...shown.current, masks };
                followers.draw();
            }
        });
        const timer = setInterval(again, kTextPause);
        return () => {
            clearInterval(timer);
            current.source.close();
        };
    }, []);
    return state.current;
}

/** Another stretch, between a millionth of the screen and a hundred of them. */
function zoomed(part, factor, shift) {
    const screen = part.right - part.left;
    const middle = (part.from + part.to) / 2 + shift * (part.to - part.from);
    const half = Math.min(Math.max((part.to - part.from) / 2 * factor, screen * 1e-6), screen * 50);
    return { from: middle - half, to: middle + half };
}

function Tools({ part, tools, set, onZoom }) {
    const button = (text, action, isOn) => html`<button type="button" class="button"
        aria-pressed=${isOn} disabled=${!part} onClick=${action}>${text}</button>`;
    return html`<div class="wave-tools" role="group" aria-label=${texts.tools}>
        ${button(texts.hold, () => set({ isHeld: !tools.isHeld }), tools.isHeld)}
        ${button(texts.zoomIn, () => onZoom(zoomed(part, 0.5, 0)))}
        ${button(texts.zoomOut, () => onZoom(zoomed(part, 2, 0)))}
        ${button(texts.left, () => onZoom(zoomed(part, 1, -0.25)))}
        ${button(texts.right, () => onZoom(zoomed(part, 1, 0.25)))}
        ${button(texts.whole, () => onZoom(null))}
        ${button(texts.cursors, () => set({ hasCursors: !tools.hasCursors }), tools.hasCursors)}
        ${tools.canSpectrum
            && button(texts.spectrum, () => set({ hasSpectrum: !tools.hasSpectrum }), tools.hasSpectrum)}
    </div>`;
}

function Settings() {
    const { store } = usePanel();
    return html`<nav aria-label=${texts.settings} class="wave-settings">${kSettings
        .filter((path) => store.node(path)).map((path) =>
            html`<a href=${linkTo(path)}>${store.node(path).name ?? path}</a>`)}</nav>`;
}

export function Waves() {
    const waves = useWaves();
    const { shown, followers, standing } = waves;
    const [tools, setTools] = useState({ isHeld: false, hasCursors: false, hasSpectrum: true });
    const [wish, setWish] = useState({ columns: 0, window: null, spectrumColumns: 0, spectrum: null });
    const change = (more) => setWish((before) => ({ ...before, ...more }));
    const hasSpectrum = tools.hasSpectrum && standing?.spectrum === true;
    useEffect(() => {
        waves.source.want({
            ...(wish.columns && { traces: { columns: wish.columns, ...wish.window } }),
            ...(hasSpectrum && wish.spectrumColumns
                && { spectrum: { columns: wish.spectrumColumns, ...wish.spectrum } })
        });
    }, [wish, hasSpectrum]);

    const set = (more) => {
        const next = { ...tools, ...more };
        waves.isHeld = next.isHeld;
        const { part } = shown.current;
        const cursors = !next.hasCursors ? [] : more.hasCursors ? placeCursors(part)
            : shown.current.cursors;
        shown.current = { ...shown.current, cursors };
        setTools(next);
        followers.draw();
    };
    const move = (name, at) => {
        shown.current = {
            ...shown.current,
            cursors: shown.current.cursors.map((one) => (one.name === name ? { name, at } : one))
        };
        setTools({ ...tools });
        followers.draw();
    };
    /** A click moves the cursor that is nearer. */
    const point = (at) => {
        const [a, b] = shown.current.cursors;
        if (a) {
            move(Math.abs(a.at - at) <= Math.abs(b.at - at) ? 'A' : 'B', at);
        }
    };
    const zoom = (window) => {
        waves.isHeld = false;
        setTools({ ...tools, isHeld: false });
        change({ window });
    };

    const { part, spectrum, cursors, masks } = shown.current;
    return html`<div class="page waves">
        <h2 tabindex="-1">${texts.title}</h2>
        ${standing?.traces !== true
            ? html`<p class="quiet">${standing ? texts.nothing : texts.connecting}</p>` : html`
        <${Tools} part=${part} set=${set} onZoom=${zoom}
            tools=${{ ...tools, canSpectrum: standing.spectrum }} />
        <p class="quiet">${part?.number ? texts.record(part.number, part.mask) : texts.waiting}. ${
            texts.hint} ${cursors.length > 0 && texts.cursorHint}</p>
        <${TracePicture} shown=${shown} follow=${(f) => followers.add(f)}
            onColumns=${(columns) => change({ columns })} onPoint=${point}
            onZoom=${(from, to) => zoom({ from, to })} />
        ${cursors.length > 0 && part && html`<${Cursors} cursors=${cursors} part=${part}
            onMove=${move} />`}
        ${part && html`<${Figures} part=${part} cursors=${cursors} masks=${masks} />`}
        ${hasSpectrum && html`<h3>${texts.spectrum}</h3>
            <${SpectrumPicture} shown=${shown} follow=${(f) => followers.add(f)}
                onColumns=${(columns) => change({ spectrumColumns: columns })}
                onZoom=${(from, to) => change({ spectrum: { from, to } })} />
            ${wish.spectrum && html`<button type="button" class="button"
                onClick=${() => change({ spectrum: null })}>${texts.whole}</button>`}
            ${spectrum && html`<${SpectrumFigures} part=${spectrum} />`}`}`}
        <${Settings} />
    </div>`;
}
