// SPDX-License-Identifier: MIT
// What all views share: the connection, the nodes, and what can be asked of the service.

import { Connection, Phase } from './connection.js';
import { showValue } from './controls/quantity.js';
import { Favourites } from './favourites.js';
import { titleOf } from './paths.js';
import { SearchIndex } from './search.js';
import { Steps } from './steps.js';
import { isMoved, Store } from './store.js';
import { texts } from './texts/panel.js';

const kReadPause = 250; // milliseconds between two readings of nodes that have come
const kAskPause = 200; // between two readings of the history
const kTellPause = 100; // between two lists of what moved
const kTokenKey = 'token';

/** Before the next picture; a page that nobody sees has none. */
function nextFrame(f) {
    if (document.hidden) {
        setTimeout(f, kReadPause);
    } else {
        requestAnimationFrame(f);
    }
}

/** What the browser keeps, where it keeps anything. */
function storageOf(name) {
    try {
        return window[name];
    } catch {
        return null;
    }
}

const query = (path) => `path=${encodeURIComponent(path)}`;

export class Panel {
    constructor(base = location.origin) {
        this.ascribed = undefined; // the step that moves what is being read
        this.listeners = new Set();
        this.saying = ''; // why the last undo or redo was refused
        this.later = new Map();
        this.history = { undoSteps: [], redoSteps: [] };
        this.standing = { control: null, readOnly: false };
        this.session = storageOf('sessionStorage');
        this.favourites = new Favourites(storageOf('localStorage'));
        this.index = new SearchIndex();
        this.steps = new Steps(() => performance.now(), isMoved);
        this.store = new Store(nextFrame, {
            moved: (moves) => this.#take(moves),
            unknown: (path) => this.#readLater(path)
        });
        this.connection = this.#connection(base);
        /** What looks for reasons and suggestions by asking. */
        this.help = {
            ask: (...request) => this.connection.request(...request),
            node: (path) => this.store.node(path),
            paths: () => [...this.store.nodes.keys()]
        };
        this.connection.token = this.session?.getItem(kTokenKey) ?? '';
    }

    #connection(base) {
        return new Connection({
            base,
            fetch: (...request) => fetch(...request),
            WebSocket,
            later: (f, pause) => setTimeout(f, pause),
            never: (timer) => clearTimeout(timer),
            now: () => performance.now()
        }, {
            tree: (tree, isAgain) => this.store.graft(tree, isAgain),
            changes: (changes) => this.store.apply(changes),
            message: (message) => this.#hear(message),
            state: (state) => this.#follow(state)
        });
    }

    start() {
        this.store.watch((paths) => {
            paths.forEach((path) => this.index.set(path, this.store.node(path)));
        });
        addEventListener('online', () => this.retry());
        addEventListener('storage', () => {
            this.favourites.reload();
            this.tell();
        });
        this.connection.start();
    }

    /** Tries to connect now, where the connection is lost. */
    retry() {
        if (this.connection.state.phase === Phase.BROKEN) {
            this.connection.retry();
        }
    }

    setToken(token) {
        try {
            this.session?.setItem(kTokenKey, token);
        } catch {
            // Full or forbidden: it lasts as long as the page.
        }
        this.connection.setToken(token);
    }

    /** Calls when anything but a node has changed. @returns {() => void} ends it */
    subscribe(f) {
        this.listeners.add(f);
        return () => this.listeners.delete(f);
    }

    tell() {
        [...this.listeners].forEach((f) => f());
    }

    toggleFavourite(path) {
        this.favourites.toggle(path);
        this.tell();
    }

    /** @param {{value?: *, steps?: number, default?: true}} change
        @returns {Promise<?object>} the service's answer; null without a connection */
    write(path, change) {
        const text = this.#nameOf(path, change);
        return this.#step('write', path, '/write', { writes: [{ path, ...change }], text });
    }

    /** What the step is called in the history, which everybody reads. */
    #nameOf(path, change) {
        const node = this.store.node(path);
        const { value } = change;
        const isTyped = typeof value === 'string' && !node?.values; // as a user writes it
        return node?.secret ? texts.history.writtenSecret(titleOf(path))
            : texts.history.written(titleOf(path), value === undefined || isTyped || !node ? change
                : { value: showValue(node, value) });
    }

    run(path) {
        return this.#step('run', path, '/run', { path });
    }

    /** @param {{do: string, key?: string, to?: string}} change of an array's or map's items */
    edit(path, change) {
        return this.#step('items', path, '/items', { path, ...change });
    }

    undo(count = 1) {
        return this.#back('undo', count);
    }

    redo(count = 1) {
        return this.#back('redo', count);
    }

    async #back(kind, count) {
        const text = this.history[`${kind}Steps`][count - 1];
        const answer = await this.#step(kind, '', `/${kind}?steps=${count}`, undefined, text);
        this.saying = answer === null ? texts.history.lost
            : answer.code > 1 ? texts.history.refused(answer.detail || answer.text) : '';
        this.tell();
        return answer;
    }

    /** What a write would move, which it does not do. */
    try(path, change) {
        return this.connection.request('POST', '/trial', { writes: [{ path, ...change }] });
    }

    /** The rows of rules that a node starts, and those of its group. */
    why(path) {
        return this.connection.request('GET', `/why?${query(path)}`);
    }

    async #step(kind, path, resource, body, text = body?.text) {
        const { step, left } = this.steps.begin(kind, path);
        step.text = text;
        this.saying = '';
        this.store.touch(left);
        this.tell();
        const answer = await this.connection.request('POST', resource, body);
        this.#takeReports(answer?.writes ?? []);
        this.steps.end(step, answer);
        if (this.steps.own !== step) {
            this.store.touch(left); // they count as moved again
        }
        if (answer?.detail === 'the service only reads') {
            this.standing = { ...this.standing, readOnly: true };
        }
        this.#askHistory();
        this.tell();
        return answer;
    }

    /** What was written stands at once: who goes on typing goes on from there, and not from what
        was before the changes are told. */
    #takeReports(reports) {
        this.store.apply(reports.filter(({ now }) => now).map(({ path, now }) => ({ path, now })));
        this.store.flush();
    }

    /** Lists of what moved are read by people: a few times a second is enough. */
    #take(moves) {
        this.steps.take(moves, this.ascribed);
        this.#soon('moved', kTellPause, () => this.tell());
    }

    /** Once, after a pause, however often it is asked. */
    #soon(name, pause, action) {
        if (!this.later.has(name)) {
            this.later.set(name, setTimeout(() => {
                this.later.delete(name);
                action();
            }, pause));
        }
    }

    /** What has come by our step counts as moved by it, whenever it is read. */
    #readLater(path) {
        const step = this.steps.current();
        this.#soon(`read ${path}`, kReadPause, async () => {
            const node = await this.connection.request('GET', `/tree?detail=full&${query(path)}`);
            if (node?.kind) {
                this.ascribed = step;
                this.store.graft(node);
                this.ascribed = undefined;
            }
        });
    }

    #hear(message) {
        if (message.control) {
            this.standing = { ...this.standing, control: message.control };
            this.tell();
        }
        if (message.changes) {
            this.#askHistory();
        }
    }

    #follow(state) {
        if (state.phase === Phase.LIVE) {
            this.#askHistory();
            this.#askStanding();
        }
        this.tell();
    }

    #askHistory() {
        this.#soon('history', kAskPause, async () => {
            const answer = await this.connection.request('GET', '/history');
            const isOther = JSON.stringify(answer) !== JSON.stringify(this.history);
            if (answer?.status === 200 && isOther) {
                this.history = answer;
                this.tell();
            }
        });
    }

    async #askStanding() {
        const answer = await this.connection.request('GET', '/standing');
        if (answer?.status === 200) {
            this.standing = answer;
            this.tell();
        }
    }
}
