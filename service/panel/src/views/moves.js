// SPDX-License-Identifier: MIT
// What a move shows: each aspect of a node that is not as it was.

import { formatQuantity } from '../controls/quantity.js';
import { shownOf } from '../shown.js';
import { texts } from '../texts/panel.js';

function limitsOf(node) {
    return `${formatQuantity(node.minimum, node.unit)} … ${formatQuantity(node.maximum, node.unit)}`;
}

const kAspects = [
    { read: (node) => shownOf(node) ?? null },
    { read: (node) => (node.valid === undefined ? null : node.valid ? texts.moved.valid
        : texts.moved.invalid) },
    { read: (node) => node.availability },
    { read: (node) => (node.count === undefined ? null : texts.moved.items(node.count)) },
    { read: (node) => (node.active === undefined ? null
        : texts.moved.active(node.active || texts.moved.nothing)) },
    { what: texts.moved.limits, read: (node) => (typeof node.minimum === 'number' ||
        typeof node.maximum === 'number' ? limitsOf(node) : null) }
];

/**
 * @param {import('../steps.js').Move} move
 * @returns {{what: string, from: ?string, to: ?string}[]} `from` or `to` is null where the node has
 *     come or gone
 */
export function aspectsOf({ before, now }) {
    if (!before || !now) {
        return [{ what: '', from: before ? shownOf(before) ?? before.name ?? '' : null,
            to: now ? shownOf(now) ?? now.name ?? '' : null }];
    }
    return kAspects.map(({ what = '', read }) => ({ what, from: read(before), to: read(now) }))
        .filter(({ from, to }) => from !== to);
}

/** The old value where the value itself has moved, else null. */
export function oldValueOf(move) {
    return move?.before && move.now && move.before.shown !== move.now.shown ? shownOf(move.before)
        : null;
}
