// SPDX-License-Identifier: MIT
// Paths of nodes, such as Vertical/Channel[1]/State; the root has none.

/** The node that has this one: of an item its container, of a member its group. */
export function parentOf(path) {
    return path === '' ? null
        : path.slice(0, Math.max(0, path.lastIndexOf('/'), path.lastIndexOf('[')));
}

/** What tells a node from its neighbours: a name, or [1] for an item. */
export function lastOf(path) {
    const parent = parentOf(path);
    return parent === null ? '' : path.slice(parent.length).replace(/^\//, '');
}

/** What a node is called where its container is not to be seen: a name, or Channel[1] for an item. */
export function titleOf(path) {
    return path.endsWith(']') ? lastOf(parentOf(path)) + lastOf(path) : lastOf(path);
}

/** The nodes on the way from the root, the root and the node itself included. */
export function wayTo(path) {
    const way = [];
    for (let at = path; at !== null; at = parentOf(at)) {
        way.unshift(at);
    }
    return way;
}

/** Whether a node is another one or lies below it. */
export function isBelow(path, top) {
    return top === '' || (path.startsWith(top) &&
        (path.length === top.length || '/['.includes(path[top.length])));
}
