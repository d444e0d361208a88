// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useId } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';
import { DraftField } from './DraftField.js';
import { closedBy, Frame, idsOf } from './Frame.js';
import { useDraft } from './useDraft.js';
import { useWriting } from './useWriting.js';

const kLongText = 128; // from here on a text has room for several lines

/** Characters as the instrument counts them: not halves of pairs. */
function lengthOf(text) {
    return [...text].length;
}

/** How long the text is, where that is near to what is taken. */
function Length({ text, most }) {
    const length = lengthOf(text);
    return most && length > most * 0.75
        ? html`<p class="control-draft">${texts.lengthOf(length, most)}</p>` : null;
}

/** A text. A secret is never shown, and what is typed for it is hidden as well. */
export function Text({ node, write, busy, refusal, labelledBy, onDraft }) {
    const ids = idsOf(useId());
    const writing = useWriting(node.path, write);
    const draft = useDraft(node.secret ? '' : node.text, onDraft);
    const isLong = !node.secret && (node.maximumLength >= kLongText || node.text.includes('\n'));
    const send = async (text) => {
        if (await writing.send({ value: text })) {
            draft.discard();
        }
    };
    const extra = node.secret
        ? { placeholder: node.shown, autocomplete: 'new-password' } : {};
    const canClear = node.secret && closedBy(node) === '';
    const type = node.secret ? 'password' : 'text';
    return html`<${Frame} kind="text" ...${{ node, ids, labelledBy, writing, refusal, busy }}>
        <${DraftField} ...${{
            node, ids, labelledBy, draft, writing, refusal, send, isLong, type, extra,
        }}>
            ${canClear && !draft.isDirty && html`<button type="button" class="button"
                aria-label=${texts.clearOf(node.name)} onClick=${() => send('')}>${texts.clear}</button>`}
        <//>
        ${draft.isDirty && html`<${Length} text=${draft.text} most=${node.maximumLength} />`}
        ${isLong && draft.isDirty && html`<p class="control-draft">${texts.longKeys}</p>`}
        ${node.form && html`<p class="control-hint">${texts.wantedForm(node.form)}</p>`}
    <//>`;
}
