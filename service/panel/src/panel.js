// SPDX-License-Identifier: MIT
// What all views share: the connection, the nodes, and what can be asked of the service.

import { Connection } from './connection.js';
import { Store } from './store.js';

const kUnknownPause = 250; // milliseconds between two readings of nodes that have come

/** Before the next picture; a page that nobody sees has none. */
function nextFrame(f) {
    if (document.hidden) {
        setTimeout(f, 250);
    } else {
        requestAnimationFrame(f);
    }
}

export class Panel {
    constructor(base = location.origin) {
        this.listeners = new Set();
        this.reading = new Set();
        this.store = new Store(nextFrame, {
            unknown: (path) => this.#readLater(path)
        });
        this.connection = new Connection({
            base,
            fetch: (...request) => fetch(...request),
            WebSocket,
            later: (f, pause) => setTimeout(f, pause),
            never: (timer) => clearTimeout(timer),
            now: () => performance.now()
        }, {
            tree: (tree, isAgain) => this.store.graft(tree, isAgain),
            changes: (changes) => this.store.apply(changes),
            state: () => this.#tell()
        });
    }

    start() {
        this.connection.start();
    }

    /** Calls when anything but a node has changed. @returns {() => void} ends it */
    subscribe(f) {
        this.listeners.add(f);
        return () => this.listeners.delete(f);
    }

    #tell() {
        [...this.listeners].forEach((f) => f());
    }

    #readLater(path) {
        if (this.reading.has(path)) {
            return;
        }
        this.reading.add(path);
        setTimeout(async () => {
            this.reading.delete(path);
            const node = await this.read(path);
            if (node?.kind) {
                this.store.graft(node);
            }
        }, kUnknownPause);
    }

    /** A node in full detail with all that is below it. */
    read(path) {
        return this.connection.request('GET',
            `/tree?detail=full&path=${encodeURIComponent(path)}`);
    }

    /** @param {{value?: *, steps?: number, default?: true}} change
        @returns {Promise<?object>} the service's answer; null without a connection */
    write(path, change) {
        return this.connection.request('POST', '/write', { writes: [{ path, ...change }] });
    }
}
