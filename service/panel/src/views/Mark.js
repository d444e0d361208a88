// SPDX-License-Identifier: MIT
import { html } from '../html.js';
import { differs } from '../store.js';
import { texts } from '../texts/panel.js';

/** The mark of what differs from the defaults: of a setting, or of what is below a group. */
export function Mark({ node, count }) {
    if (node.kind === 'property' ? !differs(node) : count === 0) {
        return null;
    }
    const says = node.kind === 'property' ? texts.tree.differs : texts.tree.differBelow(count);
    return html`<span class="mark" title=${says}><span aria-hidden="true">${
        node.kind === 'property' ? '●' : count}</span><span class="visually-hidden">, ${says}
        </span></span>`;
}
