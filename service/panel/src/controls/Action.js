// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useId } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';
import { closedBy, Frame, idsOf, isRefused } from './Frame.js';
import { useWriting } from './useWriting.js';

/** How what this panel asked for stands. */
function stateOf({ kind }, { isWriting, report }) {
    const isOperation = kind === 'operation';
    if (isWriting) {
        return isOperation ? texts.operationRuns : texts.actionRuns;
    }
    return !report || isRefused(report) ? ''
        : isOperation ? texts.operationDone : texts.actionDone;
}

/** A button; an operation is busy until the instrument has ended it. */
export function Action({ node, run, busy, refusal, labelledBy }) {
    const ids = idsOf(useId());
    const writing = useWriting(node.path, run);
    const isClosed = closedBy(node) !== '';
    const press = () => {
        if (!isClosed && !writing.isWriting) {
            writing.send();
        }
    };
    return html`<${Frame} kind="action" ...${{ node, ids, labelledBy, writing, refusal, busy }}>
        <button type="button" class="button" id=${ids.input}
            aria-disabled=${isClosed || writing.isWriting}
            aria-describedby="${ids.input}-state ${isClosed ? ids.hint : ''} ${ids.says}"
            onClick=${press}>${texts.run(node.name)}</button>
        <span class="action-state" id="${ids.input}-state" role="status"
            >${stateOf(node, writing)}</span>
    <//>`;
}
