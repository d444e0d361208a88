// SPDX-License-Identifier: MIT
// The rows of the tree that are to be seen.

export const kFirst = 200; // members of one node that are shown at first

/**
 * @param {import('../store.js').Store} store
 * @param {Map<string, number>} open nodes that show their members, and how many of them at most
 * @param {boolean} isOnlyDiffering
 * @returns {{path: string, level: number, place: number, of: number, more?: number}[]} `more` says
 *     how many members of `path` are not shown
 */
export function rowsOf(store, open, isOnlyDiffering) {
    const rows = [];
    const add = (parent, level) => {
        const all = store.children(parent);
        const wanted = isOnlyDiffering ? all.filter((path) => store.differing(path) > 0) : all;
        const shown = wanted.slice(0, open.get(parent) ?? kFirst);
        shown.forEach((path, at) => {
            rows.push({ path, level, place: at + 1, of: wanted.length });
            if (open.has(path)) {
                add(path, level + 1);
            }
        });
        if (shown.length < wanted.length) {
            rows.push({ path: parent, level, place: shown.length + 1, of: wanted.length,
                more: wanted.length - shown.length });
        }
    };
    add('', 1);
    return rows;
}
