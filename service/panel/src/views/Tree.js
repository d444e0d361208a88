// SPDX-License-Identifier: MIT
import { html, useState } from '../html.js';
import { lastOf } from '../paths.js';
import { linkTo } from '../route.js';
import { differs } from '../store.js';
import { texts } from '../texts/panel.js';
import { useNode, usePanel } from './hooks.js';

function Row({ path }) {
    const { store } = usePanel();
    const node = useNode(path);
    const [isOpen, setOpen] = useState(path === '');
    const members = store.children(path);
    if (!node) {
        return null;
    }
    return html`<li>
        ${members.length > 0 && html`<button type="button" aria-expanded=${isOpen}
            aria-label=${lastOf(path) || texts.root}
            onClick=${() => setOpen(!isOpen)}>${isOpen ? '−' : '+'}</button>`}
        <a href=${linkTo(path)}>${lastOf(path) || texts.root}</a>
        ${differs(node) && html` <span class="differs" title=${texts.tree.differs}>•</span>`}
        ${node.shown !== undefined && html` <span class="value">${node.shown}</span>`}
        ${isOpen && html`<ul>${members.map((member) =>
            html`<${Row} key=${member} path=${member} />`)}</ul>`}
    </li>`;
}

export function Tree() {
    return html`<ul class="tree"><${Row} path="" /></ul>`;
}
