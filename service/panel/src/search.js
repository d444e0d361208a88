// SPDX-License-Identifier: MIT
// Finds nodes by words in their names, paths, meanings, units and values. All texts are lowered
// once, so that one key costs one pass over them.

import { titleOf } from './paths.js';

const kWeights = { name: 100, begins: 60, inName: 40, unit: 30, value: 20, path: 10, meaning: 5 };

/** Words of a query; the order does not matter. */
export function wordsOf(query) {
    return query.toLowerCase().split(/\s+/).filter(Boolean);
}

function entryOf(node) {
    const values = (node.values ?? []).map(({ value, shown }) => `${value}\n${shown}`).join('\n');
    return {
        path: node.path,
        node,
        name: titleOf(node.path).toLowerCase(),
        unit: (node.unit ?? '').toLowerCase(),
        values: values.toLowerCase(),
        way: node.path.toLowerCase(),
        // Of a word in a header of remote control clients may write the short or the long form.
        meaning: `${node.meaning ?? ''}\n${node.remote ?? ''}`.toLowerCase(),
        shown: (node.shown ?? '').toLowerCase()
    };
}

function weightOf(entry, word) {
    if (entry.name.includes(word)) {
        return entry.name === word ? kWeights.name
            : entry.name.startsWith(word) ? kWeights.begins : kWeights.inName;
    }
    if (entry.unit === word) {
        return kWeights.unit;
    }
    if (entry.shown.includes(word) || entry.values.includes(word)) {
        return kWeights.value;
    }
    if (entry.way.includes(word)) {
        return kWeights.path;
    }
    return entry.meaning.includes(word) ? kWeights.meaning : 0;
}

export class SearchIndex {
    constructor() {
        this.entries = new Map();
    }

    /** @param {?object} node null where it has gone */
    set(path, node) {
        const old = this.entries.get(path);
        if (!node) {
            this.entries.delete(path);
        } else if (old && old.node.meaning === node.meaning && old.node.values === node.values) {
            old.shown = old.node.shown === node.shown ? old.shown : node.shown.toLowerCase();
            old.node = node;
        } else if (path !== '') {
            this.entries.set(path, entryOf(node));
        }
    }

    /**
     * Nodes in which every word is found, the best first; among equals, settings before results
     * and what stands higher in the tree first.
     * @returns {string[]} paths
     */
    find(query) {
        const words = wordsOf(query);
        const found = [];
        for (const entry of words.length > 0 ? this.entries.values() : []) {
            let weight = 0;
            for (const word of words) {
                const one = weightOf(entry, word);
                weight = one === 0 ? -1 : weight + one;
                if (weight < 0) {
                    break;
                }
            }
            if (weight > 0) {
                found.push({ path: entry.path, weight: entry.node.result ? weight - 1 : weight });
            }
        }
        found.sort((a, b) => b.weight - a.weight || a.path.length - b.path.length);
        return found.map(({ path }) => path);
    }
}
