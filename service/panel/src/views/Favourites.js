// SPDX-License-Identifier: MIT
import { html } from '../html.js';
import { texts } from '../texts/panel.js';
import { useNode, usePanelValue } from './hooks.js';
import { NodeRow } from './NodeRow.js';
import { Star } from './Star.js';

function Favourite({ path }) {
    const node = useNode(path);
    return node ? html`<${NodeRow} path=${path} hasWay heading="h3" />`
        : html`<li class="node-row is-closed"><div class="node-head"><span>${path}</span>
            <${Star} path=${path} /></div><p class="quiet">${texts.favourites.gone}</p></li>`;
}

export function Favourites() {
    const paths = usePanelValue(({ favourites }) => favourites.paths);
    return html`<article class="page">
        <h2 tabindex="-1">${texts.favourites.heading}</h2>
        ${paths.length === 0 && html`<p class="quiet">${texts.favourites.none}</p>`}
        <ul class="node-rows">${paths.map((path) =>
            html`<${Favourite} key=${path} path=${path} />`)}</ul>
    </article>`;
}
