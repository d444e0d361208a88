// SPDX-License-Identifier: MIT
// Where in the panel one is, as the part of the address behind "#": links and the browser's own
// history work without the service.

/** @typedef {{view: string, path: ?string}} Route  path: of a node, with the view 'p' */

/** @returns {Route} */
export function parseRoute(hash) {
    const text = hash.replace(/^#\/?/, '');
    if (text === 'p' || text.startsWith('p/')) {
        try {
            return { view: 'p', path: decodeURIComponent(text.slice(2)) };
        } catch {
            return { view: 'p', path: text.slice(2) }; // not written by linkTo
        }
    }
    return { view: text, path: null };
}

/** The link to a node. Slashes and brackets stay readable. */
export function linkTo(path) {
    return `#/p/${encodeURIComponent(path).replace(/%2F/g, '/').replace(/%5B/g, '[')
        .replace(/%5D/g, ']')}`;
}
