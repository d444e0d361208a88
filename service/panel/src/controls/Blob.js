// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useId, useMemo, useRef, useState } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';
import { Bytes } from './Bytes.js';
import { base64Of, bytesOf, bytesOfHex, hexOf } from './blocks.js';
import { DraftField } from './DraftField.js';
import { closedBy, Frame, idsOf } from './Frame.js';
import { useDraft } from './useDraft.js';
import { useWriting } from './useWriting.js';

const kMostTyped = 256; // bytes; larger blocks come from a file
const kMostSent = 768 * 1024; // a request of 1 MiB holds these in base 64

/** A block of bytes: a short one is typed in hexadecimal, any one comes from a file. */
export function BlobControl({ node, write, busy, refusal, labelledBy, onDraft }) {
    const ids = idsOf(useId());
    const writing = useWriting(node.path, write);
    const bytes = useMemo(() => bytesOf(node.text), [node.text]);
    const isShort = bytes.length <= kMostTyped;
    // A trial takes what a write takes: base 64.
    const asWritten = (text) => (text === null ? null : base64Of(bytesOfHex(text) ?? new Uint8Array()));
    const draft = useDraft(isShort ? hexOf(bytes) : '', (text) => onDraft?.(asWritten(text)));
    const [problem, setProblem] = useState('');
    const file = useRef(null);
    const isClosed = closedBy(node) !== '';
    const sendBytes = async (block) => {
        const most = Math.min(node.maximumLength ?? kMostSent, kMostSent);
        setProblem(block === null ? texts.noHex : block.length > most ? texts.atMostBytes(most) : '');
        if (block !== null && block.length <= most && await writing.send({ value: base64Of(block) })) {
            draft.discard();
        }
    };
    const sendFile = async (event) => {
        const [chosen] = event.currentTarget.files;
        event.currentTarget.value = ''; // the same file may be chosen again
        if (chosen) {
            await sendBytes(chosen.size > kMostSent ? { length: chosen.size }
                : new Uint8Array(await chosen.arrayBuffer()));
        }
    };
    return html`<${Frame} kind="blob" ...${{ node, ids, labelledBy, writing, refusal, busy }}>
        ${isShort && html`<${DraftField} ...${{ node, ids, labelledBy, draft, writing, refusal }}
            send=${(text) => sendBytes(bytesOfHex(text))} isInvalid=${problem !== ''}
            extra=${{ class: 'field is-mono', placeholder: texts.hexWanted }} />`}
        <div aria-live="polite">${problem && html`<p class="control-problem">${problem}</p>`}</div>
        <${Bytes} ...${{ node, bytes }} />
        ${!isClosed && html`<div class="field-row">
            <input type="file" hidden ref=${file} onChange=${sendFile} tabindex="-1" aria-hidden="true" />
            <button type="button" class="button" aria-label=${texts.loadBytesOf(node.name)}
                onClick=${() => file.current.click()}>${texts.loadBytes}</button>
            ${bytes.length > 0 && html`<button type="button" class="button"
                aria-label=${texts.clearOf(node.name)}
                onClick=${() => sendBytes(new Uint8Array())}>${texts.clear}</button>`}
        </div>`}
    <//>`;
}
