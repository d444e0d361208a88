// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useId, useState } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';
import { Chooser, Greyed } from './Chooser.js';
import { closedBy, Frame, idsOf, isRefused } from './Frame.js';
import { OptionList } from './OptionList.js';
import { useWriting } from './useWriting.js';

const kMostInline = 6;

/** The choices of a text: those that are offered, none where that is its default, and what stands. */
function choicesOf({ selectable, default: standard, value: now }) {
    const empty = standard === '' || now === '' ? [''] : [];
    const values = new Set([...empty, ...selectable, now]);
    return [...values].map((value) => ({
        value, shown: value === '' ? texts.noItem : value,
        isSelectable: selectable.includes(value) || (value === '' && standard === ''),
    }));
}

/**
 * Every value of a property with choices. What can be selected now is told by `selectable` alone:
 * `values` are read once, and may be older.
 */
export function optionsOf(node) {
    return node.values?.map(({ value, shown }) => ({
        value, shown: shown || value, isSelectable: node.selectable.includes(value),
    })) ?? choicesOf(node);
}

/** A value out of several: few stand side by side, many in a list that opens. */
export function Selection({ node, write, busy, refusal, labelledBy, why, open }) {
    const ids = idsOf(useId());
    const writing = useWriting(node.path, write);
    const [greyed, setGreyed] = useState(null);
    const options = optionsOf(node);
    const label = labelledBy ?? ids.label;
    // What stands is written as well: it may be about to change, and some settings confirm by it.
    const choose = (value) => writing.send({ value });
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
                content=${options.find(({ value }) => value === node.value)?.shown} />`
            : html`<div class="chooser" onFocusOut=${leave}>
                <${OptionList} isInline ...${shared} onLook=${setGreyed} />
                <${Greyed} option=${greyed} ...${reasons} />
            </div>`}
    <//>`;
}
