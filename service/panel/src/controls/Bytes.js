// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useEffect, useState } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';
import { hexOf } from './blocks.js';

const kMostShown = 64;

/** A link under which the browser keeps the bytes; given back when they change. */
function useDownload(bytes) {
    const [address, setAddress] = useState(null);
    useEffect(() => {
        if (bytes.length === 0) {
            setAddress(null);
            return undefined;
        }
        const made = URL.createObjectURL(new Blob([bytes], { type: 'application/octet-stream' }));
        setAddress(made);
        return () => URL.revokeObjectURL(made);
    }, [bytes]);
    return address;
}

/** The bytes that stand: their number, the first of them, and all as a file. */
export function Bytes({ node, bytes }) {
    const address = useDownload(bytes);
    const more = bytes.length - kMostShown;
    return html`<div class="bytes">
        <output class="bytes-size" aria-live="off">${node.shown}</output>
        ${bytes.length > 0 && html`<code class="bytes-hex">${hexOf(bytes.subarray(0, kMostShown))}${
            more > 0 && ` ${texts.andMoreBytes(more)}`}</code>`}
        ${address && html`<a class="button" href=${address} download="${node.name}.bin"
            >${texts.saveBytes}</a>`}
    </div>`;
}
