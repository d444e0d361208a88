// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useId } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';
import { Frame, idsOf } from './Frame.js';
import { LimitsBar } from './LimitsBar.js';
import { isNumeric } from './quantity.js';

/** What was measured. Not announced when it changes: nobody could listen to anything else. */
export function Result({ node, labelledBy }) {
    const ids = idsOf(useId());
    const isThere = node.valid && node.availability !== 'not available';
    const shown = node.values?.find(({ value }) => value === node.value)?.shown ?? node.shown;
    return html`<${Frame} kind="result" ...${{ node, ids, labelledBy }}>
        <output class=${isThere ? 'result' : 'result is-invalid'} aria-live="off"
            aria-labelledby=${labelledBy ?? ids.label}>${isThere ? shown
            : html`<span aria-hidden="true">${texts.noValue} </span>`}</output>
        ${!node.valid && html`<p class="control-closed">${texts.invalid}</p>`}
        ${isThere && isNumeric(node.type) && html`<${LimitsBar} node=${node} />`}
    <//>`;
}
