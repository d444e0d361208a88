// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { controls as texts } from '../texts/controls.js';
import { Suggested } from './Suggested.js';

/** An item of a container that the setting stands for, or none. */
export function Reference(properties) {
    const { node, open } = properties;
    return html`<${Suggested} kind="reference" none=${texts.noItem}
        listLabel=${texts.itemsOf(node.name)} ...${properties}>
        ${node.value && open && html`<p class="control-hint"><a href=${open(node.value)}
            >${texts.toItem(node.value)}</a></p>`}
    <//>`;
}
