// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useId, useRef, useState } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';
import { DraftField } from './DraftField.js';
import { closedBy, Frame, idsOf } from './Frame.js';
import { useDraft } from './useDraft.js';
import { useWriting } from './useWriting.js';

const kBitsOfGroup = 4;
const kNext = { 0: '1', 1: 'X', X: '0' };

/** What is typed as the service reads it: blanks and lower case are nothing of their own. */
export function bitsOf(text) {
    return text.replace(/[\s_]/g, '').toUpperCase();
}

/** The groups of a pattern from its least significant end: "1 0X1X". */
export function groupsOf(bits) {
    const first = bits.length % kBitsOfGroup;
    const groups = first > 0 ? [bits.slice(0, first)] : [];
    for (let at = first; at < bits.length; at += kBitsOfGroup) {
        groups.push(bits.slice(at, at + kBitsOfGroup));
    }
    return groups;
}

/** The pattern in hexadecimal digits; X where a digit is not known whole. */
export function hexOf(bits) {
    return groupsOf(bits)
        .map((group) => (group.includes('X') ? 'X' : parseInt(group, 2).toString(16).toUpperCase()))
        .join('');
}

/** One button for each bit. Arrow keys lead from bit to bit, and 0, 1 and X set one and go on. */
function BitButtons({ bits, isClosed, label, onChange }) {
    const [at, setAt] = useState(0);
    const row = useRef(null);
    const current = Math.min(at, bits.length - 1);
    const go = (index) => {
        const to = Math.min(Math.max(index, 0), bits.length - 1);
        setAt(to);
        row.current.querySelector(`[data-bit="${to}"]`).focus();
    };
    const put = (index, bit) => !isClosed
        && onChange(bits.slice(0, index) + bit + bits.slice(index + 1));
    const key = (event) => {
        const keys = { ArrowLeft: current - 1, ArrowRight: current + 1, Home: 0, End: bits.length };
        const to = keys[event.key];
        const bit = event.key.toUpperCase();
        if (event.ctrlKey || event.altKey || event.metaKey || (to === undefined && !(bit in kNext))) {
            return;
        }
        event.preventDefault();
        if (to === undefined) {
            put(current, bit);
        }
        go(to ?? current + 1);
    };
    let index = 0;
    return html`<div class="bits" role="group" aria-label=${label} ref=${row} onKeyDown=${key}>
        ${groupsOf(bits).map((group) => html`<span class="bits-group" key=${index}>
            ${[...group].map((bit) => {
                const mine = index;
                index += 1;
                return html`<button type="button" class="bit" key=${mine} data-bit=${mine}
                    data-state=${bit} tabindex=${mine === current ? 0 : -1} aria-disabled=${isClosed}
                    aria-label=${texts.bitAt(bits.length - 1 - mine, bit)}
                    onFocus=${() => setAt(mine)} onClick=${() => put(mine, kNext[bit])}>${bit}</button>`;
            })}</span>`)}
    </div>`;
}

/** A pattern of 0, 1 and X, typed or set bit by bit; written when it is whole. */
export function Bits({ node, write, busy, refusal, labelledBy, onDraft }) {
    const ids = idsOf(useId());
    const writing = useWriting(node.path, write);
    const draft = useDraft(node.text, onDraft);
    const bits = bitsOf(draft.text);
    const isPattern = /^[01X]+$/.test(bits);
    const send = async (text) => {
        if (await writing.send({ value: text })) {
            draft.discard();
        }
    };
    return html`<${Frame} kind="bits" ...${{ node, ids, labelledBy, writing, refusal, busy }}>
        <${DraftField} ...${{ node, ids, labelledBy, draft, writing, refusal, send }} />
        ${isPattern && bits.length <= node.maximumLength && html`<${BitButtons} bits=${bits}
            label=${texts.bitsOf(node.name)} isClosed=${closedBy(node) !== ''} onChange=${draft.type} />`}
        <p class="control-hint">${texts.bitCount(bits.length, node.maximumLength)}
            ${isPattern && node.format !== 'binary' && ` ${texts.inHex(hexOf(bits))}`}</p>
    <//>`;
}
