// SPDX-License-Identifier: MIT
import { html, useMemo } from '../html.js';
import { parentOf, titleOf } from '../paths.js';
import { linkTo } from '../route.js';
import { texts } from '../texts/panel.js';
import { useNode, usePanel } from './hooks.js';
import { Mark } from './Mark.js';
import { oldValueOf } from './moves.js';
import { NodeControl } from './NodeControl.js';
import { Star } from './Star.js';

let count = 0;

/** Ids for labels, of which names of nodes are no part. */
export function useLabel() {
    return useMemo(() => {
        count += 1;
        return `label-${count}`;
    }, []);
}

/** What a value was before the last step moved it. */
export function OldValue({ path }) {
    const { steps } = usePanel();
    const old = oldValueOf(steps.moveOf(path));
    return old === null ? null : html`<p class="old-value">${texts.moved.from} <del>${old}</del></p>`;
}

/** A setting, result or action with its control, in a list.
    @param {string} [properties.heading] that fits below the list's own
    @param {boolean} [properties.hasWay] whether to say where it stands */
export function NodeRow({ path, hasWay, heading = 'h4' }) {
    const { steps, store } = usePanel();
    const node = useNode(path);
    const label = useLabel();
    if (!node) {
        return null;
    }
    return html`<li class=${steps.moveOf(path) ? 'node-row is-moved' : 'node-row'}>
        <div class="node-head">
            <${heading} id=${label} class="node-name"><a href=${linkTo(path)}
                title=${node.meaning}>${titleOf(path)}</a></${heading}>
            <${Mark} node=${node} count=${store.differing(path)} />
            <${Star} path=${path} />
        </div>
        ${hasWay && html`<p class="quiet way">${parentOf(path)}</p>`}
        <${NodeControl} node=${node} labelledBy=${label} />
        <${OldValue} path=${path} />
    </li>`;
}
