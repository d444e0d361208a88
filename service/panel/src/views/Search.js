// SPDX-License-Identifier: MIT
import { html, useEffect, useMemo, useState } from '../html.js';
import { parentOf, titleOf } from '../paths.js';
import { linkTo } from '../route.js';
import { shownOf } from '../shown.js';
import { texts } from '../texts/panel.js';
import { useNode, usePanel } from './hooks.js';
import { Mark } from './Mark.js';

const kFirst = 15; // what a screen shows: the first key draws all of them

export function SearchField({ query, onQuery, field }) {
    const onKey = (event) => {
        if (event.key === 'Escape' && query) {
            event.preventDefault();
            onQuery('');
        } else if (event.key === 'ArrowDown' && query) {
            event.preventDefault();
            document.querySelector('.found a')?.focus();
        }
    };
    return html`<search class="search">
        <input type="search" class="field" ref=${field} value=${query} autocomplete="off"
            spellcheck="false" aria-label=${texts.search.label} aria-keyshortcuts="/"
            placeholder=${texts.search.placeholder} onKeyDown=${onKey}
            onInput=${(event) => onQuery(event.target.value)} />
    </search>`;
}

function Found({ path }) {
    const { store } = usePanel();
    const node = useNode(path);
    if (!node) {
        return null;
    }
    return html`<li><a href=${linkTo(path)}>
        <span class="found-name">${titleOf(path)}<${Mark} node=${node}
            count=${store.differing(path)} /></span>
        <span class="row-value">${shownOf(node)}</span>
        <span class="quiet found-way">${parentOf(path)}</span>
        <span class="quiet found-meaning">${node.meaning}</span>
    </a></li>`;
}

/** Arrow keys go from one to the next. */
function onListKey(event, onEnd) {
    const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
    const links = [...event.currentTarget.querySelectorAll('a')];
    const place = links.indexOf(document.activeElement);
    if (event.key === 'Escape' || (step === -1 && place === 0)) {
        event.preventDefault();
        onEnd(event.key === 'Escape');
    } else if (step) {
        event.preventDefault();
        links[place + step]?.focus();
    }
}

/** What is found. @param {(isOver: boolean) => void} properties.onEnd back to the field */
export function SearchResults({ query, onEnd }) {
    const { store, index } = usePanel();
    const [most, setMost] = useState(kFirst);
    useEffect(() => setMost(kFirst), [query]);
    const paths = useMemo(() => index.find(query), [query, store.structure]);
    return html`<section class="found" aria-label=${texts.search.results}>
        <p role="status" class="quiet">${texts.search.found(paths.length)}</p>
        <ul onKeyDown=${(event) => onListKey(event, onEnd)}>
            ${paths.slice(0, most).map((path) => html`<${Found} key=${path} path=${path} />`)}
        </ul>
        ${paths.length > most && html`<button type="button" class="button"
            onClick=${() => setMost(most + 5 * kFirst)}>${
            texts.search.more(paths.length - most)}</button>`}
    </section>`;
}
