// SPDX-License-Identifier: MIT
// Values as users read them.

import { showValue } from './controls/quantity.js';

/** What a property shows now: of an enumeration the name of its value. */
export function shownOf(node) {
    return node.values?.length > 0 ? showValue(node, node.value) : node.shown;
}
