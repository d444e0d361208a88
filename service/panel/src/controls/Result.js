// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useId, useMemo } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';
import { Bytes } from './Bytes.js';
import { bytesOf } from './blocks.js';
import { Frame, idsOf } from './Frame.js';
import { LimitsBar } from './LimitsBar.js';
import { isNumeric, showValue } from './quantity.js';

/** Texts and names as they are; everything else as the instrument shows it. */
function shownOf(node) {
    const isText = node.type === 'string' || node.type === 'filepath' || node.type === 'reference';
    return node.values ? showValue(node, node.value) : isText ? node.text : node.shown;
}

function BytesOf({ node }) {
    const bytes = useMemo(() => bytesOf(node.text), [node.text]);
    return html`<${Bytes} ...${{ node, bytes }} />`;
}

/** What was measured. Not announced when it changes: nobody could listen to anything else. */
export function Result({ node, labelledBy }) {
    const ids = idsOf(useId());
    const isThere = node.valid && node.availability !== 'not available';
    const value = () => (node.type === 'blob' ? html`<${BytesOf} node=${node} />`
        : html`<output class="result" id=${ids.input} aria-live="off"
            aria-labelledby=${labelledBy ?? ids.label}>${shownOf(node)}</output>`);
    return html`<${Frame} kind="result" ...${{ node, ids, labelledBy }}>
        ${isThere ? value() : html`<p class="result is-invalid" aria-hidden="true">${texts.noValue}</p>`}
        ${!node.valid && html`<p class="control-closed">${texts.invalid}</p>`}
        ${isThere && isNumeric(node.type) && html`<${LimitsBar} node=${node} />`}
    <//>`;
}
