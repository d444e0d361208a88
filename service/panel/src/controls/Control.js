// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { Action } from './Action.js';
import { Bits } from './Bits.js';
import { BlobControl } from './Blob.js';
import { Container } from './Container.js';
import { FilePath } from './FilePath.js';
import { NumberControl } from './Number.js';
import { isNumeric } from './quantity.js';
import { Reference } from './Reference.js';
import { Result } from './Result.js';
import { Selection } from './Selection.js';
import { isSwitch, Switch } from './Switch.js';
import { Text } from './Text.js';

const kOfNodes = { function: Action, operation: Action, array: Container, map: Container };
const kOfTypes = { bitpattern: Bits, blob: BlobControl, filepath: FilePath, reference: Reference };

function controlOfSetting(node) {
    if (isSwitch(node)) {
        return Switch;
    }
    if (isNumeric(node.type)) {
        return NumberControl;
    }
    // A type that is newer than the panel is a text: every value can be written as one.
    return node.values || node.selectable.length > 0 ? Selection : kOfTypes[node.type] ?? Text;
}

/** The control that fits a node of the service (`detail=full`), or null for plain groups. */
export function controlOf(node) {
    if (node.kind !== 'property') {
        return kOfNodes[node.kind] ?? null;
    }
    return node.result ? Result : controlOfSetting(node);
}

/**
 * A control for a node. What a write refused is shown at it, with the reason and the limits.
 *
 * @param {object} properties
 * @param {object} properties.node  JSON of the node with `detail=full`, and what changed since
 * @param {function({value: *}|{steps: number}|{default: true}): Promise<object|null>}
 *     properties.write  answers what the service answered, null where it did not
 * @param {function(): Promise<object|null>} [properties.run]  runs the action
 * @param {function({do: string, key: string, to: string}): Promise<object|null>} [properties.edit]
 *     changes the items of a container
 * @param {function(string): Promise<object>} [properties.why]  why a value can not be
 *     selected (reasons.js)
 * @param {function(string): string} [properties.open]  the address of the page of a path
 * @param {function(string|null): void} [properties.onDraft]  told what is typed and not yet written
 * @param {function(): Promise<{value: string, shown: string}[]>} [properties.suggest]  finds what
 *     could be written here (suggestions.js)
 * @param {string} [properties.closed]  why nothing at all can be written just now; empty where it can
 * @param {boolean} [properties.busy]  whether somebody else writes this node just now
 * @param {object|null} [properties.refusal]  report of a refused write that the control did not ask
 * @param {string} [properties.labelledBy]  id of a heading that names the node; without one the
 *     control shows the name itself
 */
export function Control({ closed, ...properties }) {
    const { node } = properties;
    const kind = controlOf(node);
    return kind === null ? null
        // Another node is another control: nothing that was typed may reach it.
        : html`<${kind} ...${properties} key=${node.path} node=${closed ? { ...node, closed } : node} />`;
}
