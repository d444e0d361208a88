// SPDX-License-Identifier: MIT
// Nodes that the user wants at hand, kept by the browser for this address.

const kKey = 'favourites';

export class Favourites {
    /** @param {?Storage} storage a browser may deny it: they last as long as the page then */
    constructor(storage) {
        this.storage = storage;
        this.paths = this.#read();
    }

    /** After another window has changed them. */
    reload() {
        this.paths = this.#read();
    }

    has(path) {
        return this.paths.includes(path);
    }

    toggle(path) {
        this.paths = this.has(path) ? this.paths.filter((other) => other !== path)
            : [...this.paths, path];
        try {
            this.storage?.setItem(kKey, JSON.stringify(this.paths));
        } catch {
            // Full or forbidden: they last as long as the page.
        }
    }

    #read() {
        try {
            const paths = JSON.parse(this.storage?.getItem(kKey) ?? '[]');
            return Array.isArray(paths) ? paths.filter((path) => typeof path === 'string') : [];
        } catch {
            return [];
        }
    }
}
