// SPDX-License-Identifier: MIT
// The connection against a service that each test plays by hand, with a clock of its own.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Connection, kTimes, Phase } from '../../service/panel/src/connection.js';

/** A browser's means, a service's answers and what the connection tells. */
class Scene {
    constructor() {
        this.time = 0;
        this.timers = new Map();
        this.sockets = [];
        this.asked = [];
        this.heard = { trees: [], changes: [], phases: [] };
        this.answers = { '/history': {}, '/tree?detail=full': { path: '', kind: 'group' } };
        const scene = this;
        class Socket {
            constructor(address, protocols) {
                Object.assign(this, { address, protocols, sent: [], isClosed: false });
                scene.sockets.push(this);
            }

            send(text) {
                this.sent.push(JSON.parse(text));
            }

            close() {
                this.isClosed = true;
            }
        }
        this.connection = new Connection({
            base: 'http://here:1',
            fetch: (address, request) => this.#answer(address, request),
            WebSocket: Socket,
            later: (f, pause) => {
                const timer = {};
                this.timers.set(timer, { f, at: this.time + pause });
                return timer;
            },
            never: (timer) => this.timers.delete(timer),
            now: () => this.time
        }, {
            tree: (tree, isAgain) => this.heard.trees.push(isAgain),
            changes: (changes) => this.heard.changes.push(...changes.map(({ path }) => path)),
            state: (state) => this.heard.phases.push(state.phase)
        });
    }

    async #answer(address, request) {
        const path = address.replace('http://here:1', '');
        this.asked.push({ path, ...request });
        const answer = await this.answers[path];
        if (answer === undefined) {
            throw new TypeError('no connection');
        }
        return { status: answer.status ?? 200, json: async () => answer };
    }

    get socket() {
        return this.sockets.at(-1);
    }

    get phase() {
        return this.connection.state.phase;
    }

    /** Lets answers arrive. */
    async settle() {
        for (let turn = 0; turn < 20; turn += 1) {
            await null;
        }
    }

    async pass(milliseconds) {
        const end = this.time + milliseconds;
        for (;;) {
            const due = [...this.timers].filter(([, { at }]) => at <= end)
                .sort(([, a], [, b]) => a.at - b.at)[0];
            if (!due) {
                break;
            }
            this.timers.delete(due[0]);
            this.time = due[1].at;
            due[1].f();
            await this.settle();
        }
        this.time = end;
    }

    async tell(message) {
        this.socket.onmessage({ data: JSON.stringify(message) });
        await this.settle();
    }

    async stand(stream, number, resync = false) {
        this.socket.onopen();
        await this.tell({ stream, number, subscribed: [''], resync });
    }

    async goLive() {
        this.connection.start();
        await this.settle();
        await this.stand('A', 5);
        assert.equal(this.phase, Phase.LIVE);
    }

    async lose() {
        this.socket.onclose();
        assert.equal(this.phase, Phase.BROKEN);
        await this.pass(2 * kTimes.firstPause);
    }
}

const changed = (number, ...paths) =>
    ({ number, changes: paths.map((path) => ({ path, now: {} })) });

test('changes that come while the tree is read are told after it', async () => {
    const scene = new Scene();
    let answerTree;
    scene.answers['/tree?detail=full'] = new Promise((resolve) => {
        answerTree = resolve;
    });
    scene.connection.start();
    await scene.settle();
    await scene.stand('A', 5);
    await scene.tell(changed(6, 'X'));
    assert.deepEqual(scene.heard.changes, []);
    answerTree({ path: '' });
    await scene.settle();
    assert.deepEqual(scene.heard.trees, [false]);
    assert.deepEqual(scene.heard.changes, ['X']);
    assert.deepEqual(scene.heard.phases, [Phase.CONNECTING, Phase.LOADING, Phase.LIVE]);
});

test('after a break it goes on behind the last number and counts what it missed', async () => {
    const scene = new Scene();
    await scene.goLive();
    await scene.tell(changed(9, 'X'));
    await scene.lose();
    scene.socket.onopen();
    assert.deepEqual(scene.socket.sent, [{ subscribe: [''], stream: 'A', number: 9 }]);
    await scene.tell({ stream: 'A', number: 9, subscribed: [''], resync: false });
    await scene.tell(changed(12, 'X', 'Y'));
    assert.equal(scene.phase, Phase.CATCHING_UP);
    await scene.pass(kTimes.catchUp);
    assert.equal(scene.phase, Phase.LIVE);
    assert.equal(scene.connection.state.missed, 2);
    assert.deepEqual(scene.heard.trees, [false], 'nothing is read again');
});

test('a subscriber that was too slow reads again without a break', async () => {
    const scene = new Scene();
    await scene.goLive();
    await scene.tell({ stream: 'A', number: 700, subscribed: [''], resync: true });
    assert.deepEqual(scene.heard.trees, [false, true]);
    assert.equal(scene.sockets.length, 1);
});

test('pauses between tries grow up to their bound, and a try by hand begins anew', async () => {
    const scene = new Scene();
    scene.answers = {};
    scene.connection.start();
    await scene.settle();
    await scene.pass(120000);
    const tries = scene.asked.length;
    assert.ok(tries >= 14 && tries <= 26, `${tries} tries in two minutes`);
    scene.connection.retry();
    await scene.settle();
    await scene.pass(2 * kTimes.firstPause);
    assert.ok(scene.asked.length >= tries + 2);
});

test('a network that swallows everything counts as a break', async () => {
    const scene = new Scene();
    await scene.goLive();
    const { socket } = scene;
    await scene.pass(kTimes.silence);
    assert.equal(socket.sent.length, 2, 'it asks how the service stands');
    await scene.tell({ stream: 'A', number: 5, subscribed: [''], resync: false });
    await scene.pass(kTimes.silence);
    assert.equal(scene.phase, Phase.LIVE);
    await scene.pass(kTimes.answer);
    assert.ok(socket.isClosed);
    assert.notEqual(scene.phase, Phase.LIVE);
});

test('what is no JSON is a break, after which it goes on', async () => {
    const scene = new Scene();
    await scene.goLive();
    scene.socket.onmessage({ data: '<html>' });
    assert.equal(scene.phase, Phase.BROKEN);
    await scene.pass(2 * kTimes.firstPause);
    await scene.stand('A', 5);
    await scene.pass(kTimes.catchUp);
    assert.equal(scene.phase, Phase.LIVE);
});

test('a socket of an earlier attempt is not listened to', async () => {
    const scene = new Scene();
    await scene.goLive();
    const [old] = scene.sockets;
    await scene.lose();
    await scene.stand('A', 5);
    old.onmessage({ data: JSON.stringify(changed(99, 'Old')) });
    old.onclose();
    assert.equal(scene.connection.number, 5);
    assert.deepEqual(scene.heard.changes, []);
    assert.equal(scene.phase, Phase.CATCHING_UP);
});

test('a token is asked for, shown in both ways, and asked for again when it is wrong', async () => {
    const scene = new Scene();
    scene.answers['/history'] = { status: 401 };
    scene.connection.start();
    await scene.settle();
    assert.deepEqual([scene.phase, scene.connection.state.isWrong], [Phase.TOKEN, false]);
    await scene.pass(60000);
    assert.equal(scene.asked.length, 1, 'it waits for the user');
    scene.connection.setToken('gu\u00e9ss?>');
    await scene.settle();
    assert.deepEqual([scene.phase, scene.connection.state.isWrong], [Phase.TOKEN, true]);
    scene.answers['/history'] = {};
    scene.connection.setToken('r\u00efght?>~');
    await scene.settle();
    assert.equal(scene.socket.protocols[0], 'changes');
    const shown = scene.socket.protocols[1].replace('bearer.', '');
    assert.match(shown, /^[\w-]+$/);
    assert.equal(Buffer.from(shown, 'base64url').toString(), 'r\u00efght?>~');
});
