// SPDX-License-Identifier: MIT
// The way to the service: requests in JSON, and a WebSocket of changes that comes back by itself.

/** What the connection is doing; what is said about it stands in the texts. */
export const Phase = Object.freeze({
    CONNECTING: 'connecting',
    LOADING: 'loading',
    LIVE: 'live',
    CATCHING_UP: 'catchingUp',
    BROKEN: 'broken',
    TOKEN: 'token'
});

/** All in milliseconds. */
export const kTimes = Object.freeze({
    firstPause: 250, // before the first further try; doubles
    longestPause: 8000,
    silence: 20000, // after which the service is asked whether it is there
    answer: 10000, // for which that answer is waited for, and a WebSocket to open
    load: 60000, // for reading all nodes
    catchUp: 400 // for which what comes after a break counts as missed
});

/** Base64 as a WebSocket's protocol may carry it. */
function encodeToken(token) {
    const bytes = new TextEncoder().encode(token);
    const text = btoa(String.fromCharCode(...bytes));
    return text.replaceAll('+', '-').replaceAll('/', '_').replaceAll('=', '');
}

export class Connection {
    /**
     * @param {object} means what a browser has; tests give their own
     * @param {string} means.base address of the service, without a slash at its end
     * @param {typeof fetch} means.fetch
     * @param {typeof WebSocket} means.WebSocket
     * @param {(f: () => void, pause: number) => *} means.later
     * @param {(timer: *) => void} means.never
     * @param {() => number} means.now
     * @param {object} hear
     * @param {(tree: object, isAgain: boolean) => void} hear.tree all nodes, in full detail
     * @param {(changes: object[]) => void} hear.changes what has come since
     * @param {(message: object) => void} [hear.message] every message of changes, for what else is
     *        in it
     * @param {(state: object) => void} hear.state phase, and what belongs to it
     */
    constructor(means, hear) {
        this.means = means;
        this.hear = hear;
        this.token = '';
        this.stream = ''; // of numbers; empty before the first one
        this.number = 0; // the last that was seen
        this.attempt = 0; // since it was live; also tells old callbacks from present ones
        this.pause = kTimes.firstPause;
        this.socket = null;
        this.timers = new Set();
        this.waiting = null; // changes that came while the tree was read
        this.isLoaded = false;
        this.brokenAt = null;
        this.missed = 0;
        this.state = { phase: Phase.CONNECTING };
    }

    /**
     * One request. Never throws: without a connection, null; otherwise the service's answer, and
     * its status in `status`.
     * @returns {Promise<object|null>}
     */
    async request(method, path, body) {
        const headers = {};
        if (this.token) {
            headers.Authorization = `Bearer ${this.token}`;
        }
        if (method === 'POST') {
            headers['Content-Type'] = 'application/json';
        }
        try {
            const answer = await this.means.fetch(this.means.base + path, {
                method, headers, cache: 'no-store',
                body: method === 'POST' ? JSON.stringify(body ?? {}) : undefined
            });
            const json = await answer.json().catch(() => ({}));
            if (answer.status === 401) {
                this.#wantToken();
            }
            return { ...json, status: answer.status };
        } catch {
            return null;
        }
    }

    /** A WebSocket of the service, by the name of what it is about. */
    openSocket(name) {
        const address = `${this.means.base.replace(/^http/, 'ws')}/${name}`;
        return this.token
            ? new this.means.WebSocket(address, [name, `bearer.${encodeToken(this.token)}`])
            : new this.means.WebSocket(address);
    }

    setToken(token) {
        this.token = token;
        this.retry();
    }

    /** Tries now, whatever pause is left; nothing while it is connected. */
    retry() {
        if (this.state.phase === Phase.LIVE || this.state.phase === Phase.CATCHING_UP) {
            return;
        }
        this.pause = kTimes.firstPause;
        this.#begin();
    }

    /** Begins, and goes on until the page ends. */
    start() {
        this.#begin();
    }

    #say(phase, more = {}) {
        this.state = { phase, ...more };
        this.hear.state(this.state);
    }

    /** Later, unless another attempt has begun meanwhile. */
    #later(pause, action) {
        const timer = this.means.later(() => {
            this.timers.delete(timer);
            action();
        }, pause);
        this.timers.add(timer);
        return timer;
    }

    #leave() {
        this.attempt += 1;
        this.timers.forEach((timer) => this.means.never(timer));
        this.timers.clear();
        this.waiting = null;
        const socket = this.socket;
        this.socket = null;
        socket?.close();
    }

    async #begin() {
        this.#leave();
        const attempt = this.attempt;
        this.#say(this.isLoaded ? Phase.BROKEN : Phase.CONNECTING, { since: this.brokenAt });
        // A WebSocket does not say why it was refused: a request does.
        const answer = await this.request('GET', '/history');
        if (attempt !== this.attempt || this.state.phase === Phase.TOKEN) {
            return;
        }
        if (answer === null || answer.status !== 200) {
            this.#fail();
            return;
        }
        this.#open(attempt);
    }

    #open(attempt) {
        const socket = this.openSocket('changes');
        this.socket = socket;
        const isPresent = () => attempt === this.attempt;
        socket.onopen = () => isPresent() && this.#subscribe();
        socket.onmessage = ({ data }) => isPresent() && this.#read(data);
        socket.onclose = () => isPresent() && this.#fail();
        this.#watch();
    }

    #subscribe() {
        const wish = { subscribe: [''] };
        if (this.stream) {
            wish.stream = this.stream;
            wish.number = this.number;
        }
        this.socket.send(JSON.stringify(wish));
    }

    /** A network that swallows everything closes nothing: after silence the service is asked how
        it stands, which costs nothing. */
    #watch() {
        this.means.never(this.watching);
        this.timers.delete(this.watching);
        if (this.state.phase !== Phase.LIVE) {
            const isLoading = this.state.phase === Phase.LOADING;
            this.watching = this.#later(isLoading ? kTimes.load : kTimes.answer,
                () => this.#fail());
            return;
        }
        this.watching = this.#later(kTimes.silence, () => {
            this.#subscribe();
            this.watching = this.#later(kTimes.answer, () => this.#fail());
        });
    }

    /** Who sends no JSON is no service. */
    #read(data) {
        let message;
        try {
            message = JSON.parse(data);
        } catch {
            this.#fail();
            return;
        }
        this.#take(message ?? {});
    }

    #take(message) {
        this.#watch();
        if (message.subscribed) {
            this.#stand(message);
        } else if (message.changes) {
            this.number = message.number;
            this.#change(message.changes);
        }
        this.hear.message?.(message);
    }

    #stand(message) {
        const isOther = message.resync || message.stream !== this.stream || !this.isLoaded;
        this.stream = message.stream;
        this.number = message.number;
        if (isOther) {
            this.#load();
        } else if (this.state.phase === Phase.BROKEN) {
            this.#catchUp();
        }
    }

    #change(changes) {
        if (this.waiting) {
            this.waiting.push(...changes);
            return;
        }
        if (this.state.phase === Phase.CATCHING_UP) {
            this.missed += changes.length;
        }
        this.hear.changes(changes);
    }

    /** Reads the whole tree. What changes meanwhile is told afterwards: the last state of a node
        stands, whichever way it came. */
    async #load() {
        const attempt = this.attempt;
        const isAgain = this.isLoaded;
        this.waiting = [];
        this.#say(Phase.LOADING, { since: this.brokenAt, isAgain });
        this.#watch();
        const answer = await this.request('GET', '/tree?detail=full');
        if (attempt !== this.attempt) {
            return;
        }
        if (answer === null || answer.status !== 200) {
            this.#fail();
            return;
        }
        this.isLoaded = true;
        const changes = this.waiting;
        this.waiting = null;
        this.hear.tree(answer, isAgain);
        this.hear.changes(changes);
        this.#live(isAgain ? { wasBroken: this.#broken(), isRead: true } : {});
    }

    #catchUp() {
        this.missed = 0;
        this.#say(Phase.CATCHING_UP, { since: this.brokenAt });
        this.#later(kTimes.catchUp,
            () => this.#live({ wasBroken: this.#broken(), missed: this.missed }));
    }

    #broken() {
        return this.brokenAt === null ? 0 : this.means.now() - this.brokenAt;
    }

    #live(more) {
        this.brokenAt = null;
        this.pause = kTimes.firstPause;
        this.#say(Phase.LIVE, more);
        this.#watch();
    }

    #wantToken() {
        this.#leave();
        this.#say(Phase.TOKEN, { isWrong: this.token !== '' });
    }

    #fail() {
        this.#leave();
        this.brokenAt ??= this.means.now();
        const pause = this.pause * (0.75 + Math.random() / 2);
        this.pause = Math.min(this.pause * 2, kTimes.longestPause);
        this.#say(Phase.BROKEN, { since: this.brokenAt, again: this.means.now() + pause });
        this.#later(pause, () => this.#begin());
    }
}
