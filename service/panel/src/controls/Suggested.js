// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useId, useState } from 'preact/hooks';
import { Chooser } from './Chooser.js';
import { DraftField } from './DraftField.js';
import { closedBy, Frame, idsOf } from './Frame.js';
import { useDraft } from './useDraft.js';
import { useWriting } from './useWriting.js';

/**
 * A text that is typed, or taken from what `suggest` finds when the list is opened; without it a
 * plain field.
 *
 * @param {object} properties  as Control, and
 * @param {string} properties.kind  for the style
 * @param {string} properties.none  how the empty text is called
 * @param {string} properties.listLabel  name of the button that opens the list
 */
export function Suggested({
    node, write, busy, refusal, labelledBy, onDraft, suggest, kind, none, listLabel, children,
}) {
    const ids = idsOf(useId());
    const writing = useWriting(node.path, write);
    const draft = useDraft(node.text, onDraft);
    const [found, setFound] = useState([]);
    const send = async (text) => {
        if (await writing.send({ value: text })) {
            draft.discard();
        }
    };
    const field = (opener) => html`<${DraftField} extra=${{ placeholder: none }}
        ...${{ node, ids, labelledBy, draft, writing, refusal, send }}>${opener}<//>`;
    const look = async () => setFound(await suggest().catch(() => null) ?? []);
    const options = [{ value: '', shown: none }, ...found]
        .map((option) => ({ ...option, isSelectable: true }));
    return html`<${Frame} ...${{ kind, node, ids, labelledBy, writing, refusal, busy }}>
        ${!suggest ? field()
            : html`<${Chooser} id="${ids.input}-list" content="▾" options=${options} value=${node.value}
                button=${{ class: 'button is-step', 'aria-label': listLabel }}
                labelledBy=${labelledBy ?? ids.label} describedBy=${ids.says}
                isClosed=${closedBy(node) !== ''} onChoose=${send} onOpen=${look}>${field}<//>`}
        ${children}
    <//>`;
}
