// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useId, useState } from 'preact/hooks';
import { Chooser, Greyed } from './Chooser.js';
import { closedBy, Frame, idsOf, isRefused } from './Frame.js';
import { OptionList } from './OptionList.js';
import { showValue } from './quantity.js';
import { useWriting } from './useWriting.js';

const kMostInline = 6;

/**
 * Every value of a property with choices. What can be selected now is told by `selectable` alone:
 * `values` are read once, and may be older.
 */
export function optionsOf(node) {
    const values = node.values ?? node.selectable.map((value) => ({
        value, shown: showValue(node, value),
    }));
    return values.map(({ value, shown }) => ({
        value, shown, isSelectable: node.selectable.includes(value),
    }));
}

/** A value out of several: few stand side by side, many in a list that opens. */
export function Selection({ node, write, busy, refusal, labelledBy, why, open }) {
    const ids = idsOf(useId());
    const writing = useWriting(node.path, write);
    const [greyed, setGreyed] = useState(null);
    const options = optionsOf(node);
    const label = labelledBy ?? ids.label;
    const choose = (value) => {
        if (value !== node.value) {
            writing.send({ value });
        }
    };
    const leave = (event) => {
        if (!event.currentTarget.contains(event.relatedTarget)) {
            setGreyed(null);
        }
    };
    const shared = {
        options, value: node.value, labelledBy: label, describedBy: ids.says, onChoose: choose,
        isClosed: closedBy(node) !== '', isInvalid: isRefused(writing.report ?? refusal),
    };
    const reasons = { path: node.path, why, open };
    const button = { class: 'field chooser-button', 'aria-labelledby': `${label} ${ids.input}` };
    return html`<${Frame} kind="selection" ...${{ node, ids, labelledBy, writing, refusal, busy }}>
        ${options.length > kMostInline
            ? html`<${Chooser} id=${ids.input} ...${shared} button=${button} why=${reasons}
                content=${showValue(node, node.value)} />`
            : html`<div class="chooser" onFocusOut=${leave}>
                <${OptionList} isInline ...${shared} onLook=${setGreyed} />
                <${Greyed} option=${greyed} ...${reasons} />
            </div>`}
    <//>`;
}
