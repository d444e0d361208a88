// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useId } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';
import { Chooser } from './Chooser.js';
import { DraftField } from './DraftField.js';
import { closedBy, Frame, idsOf } from './Frame.js';
import { LimitsBar } from './LimitsBar.js';
import { limitsOf, plain, showValue } from './quantity.js';
import { useDraft } from './useDraft.js';
import { useHold } from './useHold.js';
import { useWheel } from './useWheel.js';
import { useWriting } from './useWriting.js';

const kStepsOfKeys = { ArrowUp: 1, ArrowDown: -1, PageUp: 10, PageDown: -10 };

/** What a screen reader tells of a number: browsers know no prefixes and units. */
function spoken(node, draft) {
    const { minimum, maximum } = limitsOf(node);
    const numeral = (value) => (value === null ? undefined : plain(Number(value)));
    return {
        role: 'spinbutton',
        'aria-valuenow': draft.isDirty ? undefined : numeral(node.value),
        'aria-valuemin': numeral(minimum),
        'aria-valuemax': numeral(maximum),
        'aria-valuetext': draft.text,
        title: texts.numberKeys,
        inputMode: 'text', // prefixes and units are letters
    };
}

/** A number with its unit: typed with any prefix, or stepped as the instrument steps it. */
export function NumberControl({ node, write, busy, refusal, labelledBy, onDraft }) {
    const ids = idsOf(useId());
    const writing = useWriting(node.path, write);
    const draft = useDraft(node.shown, onDraft);
    const isOpen = closedBy(node) === '';
    const step = (steps) => {
        if (isOpen) {
            draft.discard();
            writing.step(steps);
        }
    };
    const field = useWheel(step);
    const hold = useHold(step);
    const send = async (text) => {
        if (await writing.send({ value: text })) {
            draft.discard();
        }
    };
    const choose = (value) => {
        draft.discard();
        writing.send({ value });
    };
    const onKey = (event) => {
        const steps = kStepsOfKeys[event.key];
        if (steps !== undefined && !event.altKey && !event.ctrlKey && !event.metaKey) {
            step(steps);
            return true;
        }
        return false;
    };
    const button = (steps, sign, label) => html`<button type="button" class="button is-step"
        aria-label=${label} aria-disabled=${!isOpen} tabindex="-1"
        ...${hold(steps)}>${sign}</button>`;
    const input = (opener) => html`<${DraftField} inputRef=${field} extra=${spoken(node, draft)}
        ...${{ node, ids, labelledBy, draft, writing, refusal, send, onKey }}>
        ${button(-1, '−', texts.stepDown(node.name))}
        ${button(1, '+', texts.stepUp(node.name))}
        ${opener}
    <//>`;
    const options = node.selectable.map((value) => ({
        value, shown: showValue(node, value), isSelectable: true,
    }));
    return html`<${Frame} kind="number" ...${{ node, ids, labelledBy, writing, refusal, busy }}>
        ${options.length === 0 ? input()
            : html`<${Chooser} id="${ids.input}-list" content="▾" options=${options} value=${node.value}
                button=${{ class: 'button is-step', 'aria-label': texts.listOf(node.name) }}
                labelledBy=${labelledBy ?? ids.label} describedBy=${ids.says} isClosed=${!isOpen}
                onChoose=${choose}>${input}<//>`}
        <${LimitsBar} node=${node} />
    <//>`;
}
