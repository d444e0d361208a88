// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useId } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';
import { DraftField } from './DraftField.js';
import { closedBy, Frame, idsOf } from './Frame.js';
import { LimitsBar } from './LimitsBar.js';
import { limitsOf, plain } from './quantity.js';
import { useDraft } from './useDraft.js';
import { useWheel } from './useWheel.js';
import { useWriting } from './useWriting.js';

const STEPS_OF_KEYS = { ArrowUp: 1, ArrowDown: -1, PageUp: 10, PageDown: -10 };

/** What a screen reader tells of a number: browsers know no prefixes and units. */
function spoken(node) {
    const { minimum, maximum } = limitsOf(node);
    const numeral = (value) => (value === null ? undefined : plain(Number(value)));
    return {
        role: 'spinbutton',
        'aria-valuenow': numeral(node.value),
        'aria-valuemin': numeral(minimum),
        'aria-valuemax': numeral(maximum),
        'aria-valuetext': node.shown,
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
    const send = async (text) => {
        if (await writing.send({ value: text })) {
            draft.discard();
        }
    };
    const onKey = (event) => {
        const steps = STEPS_OF_KEYS[event.key];
        if (steps !== undefined && !event.altKey && !event.ctrlKey && !event.metaKey) {
            step(steps);
            return true;
        }
        return false;
    };
    const button = (steps, sign, label) => html`<button type="button" class="button is-step"
        aria-label=${label} aria-disabled=${!isOpen} tabindex="-1"
        onClick=${() => step(steps)}>${sign}</button>`;
    return html`<${Frame} kind="number" ...${{ node, ids, labelledBy, writing, refusal, busy }}>
        <${DraftField} ...${{ node, ids, labelledBy, draft, writing, refusal, send, onKey }}
            inputRef=${field} extra=${spoken(node)}>
            ${button(-1, '−', texts.stepDown(node.name))}
            ${button(1, '+', texts.stepUp(node.name))}
        <//>
        <${LimitsBar} node=${node} />
    <//>`;
}
