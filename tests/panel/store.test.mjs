// SPDX-License-Identifier: MIT
import assert from 'node:assert/strict';
import { beforeEach, test } from 'node:test';
import { isMoved, Store } from '../../service/panel/src/store.js';
import { Steps } from '../../service/panel/src/steps.js';

const setting = (path, value) => ({ path, kind: 'property', name: path, result: false, value,
    shown: String(value), default: 1, isDefault: value === 1, availability: 'available' });
const group = (path, members = {}) => ({ path, kind: 'group', properties: {}, actions: {},
    groups: {}, ...members });
const tree = () => group('', {
    properties: { A: setting('A', 1) },
    groups: {
        G: group('G', {
            properties: { B: setting('G/B', 2) },
            groups: { L: { ...group('G/L'), kind: 'array', count: 1, items: [group('G/L[0]',
                { properties: { C: setting('G/L[0]/C', 1) } })] } }
        })
    }
});
const changeOf = (path, value) => ({ path, now: { path, value, shown: String(value) } });

let frames;
let moves;
let unknown;
let store;

beforeEach(() => {
    [frames, moves, unknown] = [[], [], []];
    store = new Store((f) => frames.push(f), {
        moved: (some) => moves.push(...some),
        unknown: (path) => unknown.push(path)
    });
    store.graft(tree(), false);
});

test('a thousand changes cost one drawing, and the last of each node stands', () => {
    let drawings = 0;
    store.watch(() => {
        drawings += 1;
    });
    for (let value = 0; value < 1000; value += 1) {
        store.apply([changeOf(value % 2 ? 'A' : 'G/B', value)]);
    }
    assert.equal(store.node('A').value, 1, 'nothing moves before the next picture');
    assert.equal(frames.length, 1);
    frames[0]();
    assert.equal(drawings, 1);
    assert.deepEqual([store.node('A').value, store.node('G/B').value], [999, 998]);
    assert.deepEqual(moves.map(({ path, before, now }) => [path, before.value, now.value]),
        [['G/B', 2, 998], ['A', 1, 999]]);
});

test('what differs from the defaults is counted up to the root', () => {
    const counts = () => ['', 'A', 'G', 'G/L[0]'].map((path) => store.differing(path));
    assert.deepEqual(counts(), [1, 0, 1, 0]);
    store.apply([changeOf('A', 7), changeOf('G/L[0]/C', 8)]);
    store.flush();
    assert.deepEqual(counts(), [3, 1, 2, 1]);
    store.apply([{ path: 'G/L[0]', removed: true }, changeOf('A', 1)]);
    store.flush();
    assert.deepEqual(counts(), [1, 0, 1, 0]);
});

test('a node that is gone takes along what was below it', () => {
    store.apply([{ path: 'G/L[0]', removed: true }]);
    store.flush();
    assert.deepEqual(store.children('G/L'), []);
    assert.equal(store.node('G/L[0]/C'), null);
    assert.deepEqual(moves.map(({ path, now }) => [path, now]),
        [['G/L[0]/C', null], ['G/L[0]', null]]);
});

test('of a node that has come the nearest known one is read again, once', () => {
    store.apply([changeOf('G/L[1]/C', 1), { path: 'G/L[1]', now: {} }, changeOf('A', 3)]);
    store.flush();
    assert.deepEqual(unknown, ['G/L']);
    const list = tree().groups.G.groups.L;
    list.items.push(group('G/L[1]', { properties: { C: setting('G/L[1]/C', 9) } }));
    moves.length = 0;
    store.graft(list);
    assert.deepEqual(store.children('G/L'), ['G/L[0]', 'G/L[1]']);
    assert.deepEqual(store.children('G'), ['G/B', 'G/L'], 'it stands where it stood');
    assert.equal(store.differing('G'), 2);
    assert.deepEqual(moves.map(({ path }) => path), ['G/L[1]', 'G/L[1]/C']);
});

test('a tree that is read again tells what moved meanwhile, and a change that waited is older', () => {
    store.apply([changeOf('A', 4)]);
    const again = tree();
    again.properties.A = setting('A', 5);
    delete again.groups.G.properties.B;
    store.graft(again);
    frames.forEach((frame) => frame());
    assert.deepEqual(moves.map(({ path, now }) => [path, now?.value ?? null]),
        [['A', 4], ['A', 5], ['G/B', null]]);
    assert.equal(store.node('A').value, 5);
    assert.equal(store.differing('G'), 0);
});

test('what was read of a node that has gone meanwhile does not bring it back', () => {
    store.apply([{ path: 'G/L', removed: true }]);
    store.graft(tree().groups.G.groups.L);
    assert.deepEqual([store.node('G/L'), store.node('G/L[0]/C')], [null, null]);
});

test('listeners of a node hear of it alone, and may leave while they are called', () => {
    const heard = [];
    const leave = store.subscribe('A', () => {
        heard.push('A');
        leave();
    });
    store.subscribe('A', () => heard.push('A too'));
    store.subscribe('G/L[0]', () => heard.push('other'));
    store.apply([changeOf('A', 2)]);
    store.flush();
    store.apply([changeOf('A', 3)]);
    store.flush();
    assert.deepEqual(heard, ['A', 'A too', 'A too']);
});

test('what moves during our own step and shortly after it is ours, later it is of others', () => {
    let time = 0;
    const steps = new Steps(() => time, isMoved);
    const move = (path, from, to) => steps.take([{ path, before: setting(path, from),
        now: setting(path, to) }]);
    const paths = (map) => [...map.keys()];
    const { step } = steps.begin('write', 'A');
    move('A', 1, 2);
    steps.end(step, { code: 0 });
    time = 100;
    move('B', 1, 2);
    time = 400;
    move('C', 1, 2);
    move('C', 2, 3);
    assert.deepEqual([paths(step.moves), paths(steps.others)], [['A', 'B'], ['C']]);
    assert.deepEqual([steps.moveOf('C').before.value, steps.moveOf('C').now.value], [1, 3]);
    move('C', 3, 1);
    assert.deepEqual(paths(steps.others), [], 'what has gone back has not moved');
    assert.deepEqual(steps.begin('write', 'B').left, ['A', 'B']);
    assert.equal(steps.moveOf('A'), null);
});

test('results that move by themselves are moved by nobody, and a refused step is none', () => {
    const steps = new Steps(() => 1000, isMoved);
    const result = (path, value) => ({ ...setting(path, value), result: true });
    const move = (path) => steps.take([{ path, before: result(path, 1), now: result(path, 2) }]);
    move('R');
    assert.deepEqual(steps.list, []);
    steps.begin('write', 'A');
    move('R');
    move('Derived');
    assert.deepEqual([...steps.moved().keys()], ['Derived']);
    steps.end(steps.own, { code: 0 });
    steps.list = [];
    const { step } = steps.begin('write', 'A');
    steps.end(step, { code: 12, name: 'ABOVE_MAXIMUM' });
    assert.deepEqual(steps.list, []);
    assert.deepEqual([...steps.moved().keys()], ['Derived'], 'what moved before stays what moved');
});
