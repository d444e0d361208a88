// SPDX-License-Identifier: MIT
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { SearchIndex } from '../../service/panel/src/search.js';

const node = (path, more = {}) => ({ path, kind: 'property', name: path.split('/').at(-1),
    meaning: '', remote: '', unit: '', shown: '', ...more });

function indexOf(...nodes) {
    const index = new SearchIndex();
    nodes.forEach((one) => index.set(one.path, one));
    return index;
}

const scale = node('Horizontal/Scale', { unit: 's/div', meaning: 'Time scale.', shown: '100 ns/div' });
const level = node('Trigger/Level', { unit: 'V', meaning: 'Voltage of the scale.', shown: '1 V' });
const mode = node('Acquisition/Mode', { shown: 'AVG', meaning: 'How records are made.',
    values: [{ value: 'AVG', shown: 'Average' }, { value: 'PEAK', shown: 'Peak detection' }] });
const averages = node('Acquisition/NumberOfAverages', { shown: '16' });

test('names go before units, these before values, paths and meanings', () => {
    const index = indexOf(level, scale, mode, averages, node('Setup/V'));
    const rows = [
        ['scale', ['Horizontal/Scale', 'Trigger/Level']],
        ['v', ['Setup/V', 'Trigger/Level']],
        ['S/DIV', ['Horizontal/Scale']],
        ['peak', ['Acquisition/Mode']],
        ['100 ns', ['Horizontal/Scale']],
        ['number of averages', ['Acquisition/NumberOfAverages']],
        ['averages acquisition', ['Acquisition/NumberOfAverages']],
        ['scale nothing', []],
        ['   ', []],
        ['<script>', []]
    ];
    for (const [query, expected] of rows) {
        assert.deepEqual(index.find(query).slice(0, Math.max(1, expected.length)), expected, query);
    }
});

test('a value is found as it is now, and a node that is gone is not', () => {
    const index = indexOf(scale, level);
    index.set('Horizontal/Scale', { ...scale, shown: '2 ms/div' });
    assert.deepEqual([index.find('100 ns'), index.find('2 ms')], [[], ['Horizontal/Scale']]);
    index.set('Horizontal/Scale', null);
    assert.deepEqual(index.find('2 ms'), []);
});

test('of equals a setting goes before a result', () => {
    const index = indexOf(node('A/Level', { result: true }), node('Longer/Level'));
    assert.deepEqual(index.find('level'), ['Longer/Level', 'A/Level']);
});

test('one key costs less than a picture over a tree of 10,000 nodes', () => {
    const index = new SearchIndex();
    for (let place = 0; place < 10000; place += 1) {
        index.set(`G/N${place}`, node(`G/N${place}`, { unit: 'V', shown: `${place} mV`,
            meaning: `The ${place}th of many settings, with a meaning of usual length, by which it `
                + 'can be found as well.', values: mode.values }));
    }
    const times = ['u', 'us', 'usu', 'usual', 'usual x', '9999', 'zz'].map((query) => {
        // Time of a processor: other programs of the machine count nothing.
        const start = process.cpuUsage();
        index.find(query);
        const { user, system } = process.cpuUsage(start);
        return (user + system) / 1000;
    }).sort((a, b) => a - b);
    assert.ok(times[3] < 16, `half of the keys take ${times[3]} ms and more`);
});
