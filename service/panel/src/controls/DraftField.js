// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { controls as texts } from '../texts/controls.js';
import { closedBy, isRefused } from './Frame.js';

/**
 * A field that writes when it is told to: by Enter or by its button. Shift and Enter begins a line in
 * a long text. Leaving it writes nothing, so
 * that one can look what a write would move before it happens.
 *
 * `onKey(event)` sees keys first, and answers whether it has used one.
 */
export function DraftField({
    node, ids, labelledBy, draft, writing, refusal, send, onKey, isLong, isInvalid, type = 'text',
    extra = {}, inputRef, children,
}) {
    const closed = closedBy(node) !== '';
    const refused = isRefused(writing.report ?? refusal);
    const submit = () => draft.isDirty && !closed && send(draft.text);
    const key = (event) => {
        if (onKey?.(event)) {
            event.preventDefault();
        } else if (event.key === 'Enter' && !event.shiftKey) {
            event.preventDefault();
            submit();
        } else if (event.key === 'Escape' && (draft.isDirty || refused)) {
            event.stopPropagation();
            draft.discard();
            writing.forget();
        }
    };
    const described = [draft.isDirty && `${ids.input}-draft`, closed && ids.hint, ids.says]
        .filter(Boolean).join(' ');
    const properties = {
        id: ids.input, ref: inputRef, class: 'field', value: draft.text, readOnly: closed,
        autocomplete: 'off', autocapitalize: 'off', spellcheck: false,
        'aria-labelledby': labelledBy ?? ids.label,
        'aria-describedby': described,
        'aria-invalid': refused || isInvalid ? 'true' : 'false',
        onInput: (event) => draft.type(event.currentTarget.value),
        onKeyDown: key,
        ...extra,
    };
    return html`
        <div class="field-row">
            ${isLong ? html`<textarea rows="2" ...${properties}></textarea>`
                : html`<input type=${type} ...${properties} />`}
            ${children}
            ${draft.isDirty && html`<button type="button" class="button is-main"
                aria-disabled=${closed} aria-label=${texts.setOf(node.name)} onClick=${submit}>${texts.set}</button>`}
        </div>
        ${draft.isDirty && html`<p class="control-draft" id="${ids.input}-draft">
            ${texts.notWritten} ${draft.moved && texts.movedMeanwhile(node.shown)}</p>`}`;
}
