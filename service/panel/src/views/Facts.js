// SPDX-License-Identifier: MIT
import { showValue } from '../controls/quantity.js';
import { html } from '../html.js';
import { texts } from '../texts/panel.js';

function factsOf(node) {
    const names = texts.page.fact;
    const saved = (node.saved ?? []).map((kind) => texts.page.saved[kind]).join(', ');
    return [
        [names.path, node.path],
        [names.kind, texts.kinds[node.result ? 'result' : node.kind]],
        [names.type, node.type],
        [names.unit, node.unit],
        [names.default, node.kind === 'property' && !node.result ? showValue(node, node.default)
            : null],
        [names.form, node.form],
        [names.items, node.count === undefined ? null
            : node.dynamic ? texts.page.ofMost(node.count, node.maximumCount) : node.count],
        [names.remote, node.remote],
        [names.saved, node.kind === 'property' && !node.result ? saved || texts.page.notSaved : null]
    ].filter(([, value]) => value !== null && value !== undefined && value !== '');
}

/** What seldom changes of a node. */
export function Facts({ node }) {
    return html`<details class="facts"><summary><h3>${texts.page.facts}</h3></summary>
        <dl>${factsOf(node).map(([name, value]) =>
            html`<dt>${name}</dt><dd>${String(value)}</dd>`)}</dl>
    </details>`;
}
