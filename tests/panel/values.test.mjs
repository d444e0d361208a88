// SPDX-License-Identifier: MIT
// How the panel writes values, and what it finds out about them, without a browser.

import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { base64Of, bytesOf, bytesOfHex, hexOf } from '../../service/panel/src/controls/blocks.js';
import { formatQuantity, isNumeric, limitsOf } from '../../service/panel/src/controls/quantity.js';
import { reasonsOf } from '../../service/panel/src/reasons.js';
import { suggestionsOf } from '../../service/panel/src/suggestions.js';
import { Host } from './host.mjs';

let host;
let nodes;

before(async () => {
    host = await Host.start();
    nodes = await readNodes();
});

after(() => host?.end());

/** All nodes by path, as a panel holds them. */
async function readNodes() {
    const found = new Map();
    const take = (node) => {
        found.set(node.path, node);
        [node.properties, node.actions, node.groups, node.items]
            .forEach((members) => Object.values(members ?? {}).forEach(take));
    };
    take(await host.ask('/tree?detail=full'));
    return found;
}

/** What the panel gives to who looks for reasons and suggestions; counts the requests. */
function help() {
    const asked = [];
    return {
        asked,
        ask: (method, resource, body) => {
            asked.push(resource);
            return host.ask(resource, body);
        },
        node: (path) => nodes.get(path) ?? null,
        paths: () => [...nodes.keys()],
    };
}

test('a number of the tree is written otherwise than the instrument writes it', () => {
    const numbers = [...nodes.values()]
        .filter((node) => node.kind === 'property' && isNumeric(node.type) && node.value !== null);
    assert.ok(numbers.length > 1000);
    for (const { path, value, unit, shown } of numbers) {
        assert.equal(formatQuantity(value, unit), shown, path);
    }
});

test('a number is written otherwise than the instrument would write it', async () => {
    const written = [2e-9, 1.5e-7, 0.00025, 0.0123456789012, 1 / 3, 0.9999999999, 12, 99.99, 500];
    const writes = written.flatMap((value) => [
        { path: 'Logger/LoggerAttributes/LoggerChannel[0]/Factor', value },
        { path: 'Vertical/Channel[0]/Scale', value },
        { path: 'Horizontal/AcquisitionTime', value },
    ]);
    const answer = await host.ask('/trial', { writes });
    const taken = answer.writes.filter(({ code }) => code <= 1);
    assert.ok(taken.length > written.length);
    for (const { now, path } of taken) {
        assert.equal(formatQuantity(now.value, now.unit), now.shown, path);
    }
});

test('numbers that no double holds, and none at all, are not told as they are', () => {
    assert.equal(formatQuantity('18446744073709551615', 'Sa'), '18446744073709551615 Sa');
    assert.equal(formatQuantity(null, 'V'), '');
    assert.equal(formatQuantity(-0.002, 'V'), '-2 mV');
    assert.equal(formatQuantity(999.9999999, 'V'), '1 kV');
    assert.deepEqual(limitsOf({ type: 'uint16', minimum: null, maximum: 100 }),
        { minimum: 0, maximum: 100 });
    assert.deepEqual(limitsOf({ type: 'double', minimum: null, maximum: null }),
        { minimum: null, maximum: null });
});

test('bytes come back otherwise than they were typed', () => {
    const bytes = Uint8Array.from({ length: 100000 }, (_, i) => (i * 7) & 0xff);
    assert.deepEqual(bytesOf(base64Of(bytes)), bytes);
    assert.equal(hexOf(bytesOfHex('0xA,ff 0x10:0B 1234')), '0a ff 10 0b 12 34');
    assert.equal(hexOf(bytesOfHex('  ')), '');
    for (const wrong of ['0g', '123', 'ff,,gg', 'ff-00']) {
        assert.equal(bytesOfHex(wrong), null, wrong);
    }
});

test('a choice that would offer a value is not found, or moves the instrument', async () => {
    const logic = await host.ask('/tree?path=Logic');
    const from = help();
    const { offers } = await reasonsOf(nodes.get('Trigger/Source'), 'D0', from);
    assert.deepEqual(offers.map(({ path, value }) => [path, value]), [['Logic/Enabled', 'ON']]);
    assert.equal(from.asked.length, 2);
    const none = await reasonsOf(nodes.get('Vertical/ReferenceCurve/Enabled'), 'ON', help());
    assert.deepEqual(none.offers, []);
    assert.ok(none.sources.includes('Vertical/ReferenceCurve/ReferenceCurveAttributes/RecordLength'));
    const { canUndo } = await host.ask('/history');
    assert.equal(canUndo, false);
    assert.deepEqual(await host.ask('/tree?path=Logic'), logic);
});

test('a reference is offered what it would not keep', async () => {
    const source = 'Logger/LoggerAttributes/LoggerChannel[0]/LoggerChannelSource/Item';
    const items = await suggestionsOf(nodes.get(source), help());
    assert.ok(items.length > 0);
    for (const { value } of items) {
        const { writes: [report] } = await host.ask('/trial', { writes: [{ path: source, value }] });
        assert.equal(report.now.value, value);
    }
    const language = 'Setup/Display/UserInterfaceLanguage';
    await host.ask('/items', { path: language, do: 'insert', key: 'Ελληνικά' });
    nodes = await readNodes();
    const languages = await suggestionsOf(nodes.get('Setup/Display/SelectedLanguage'), help());
    assert.deepEqual(languages.map(({ value }) => value), [`${language}[Ελληνικά]`]);
});

test('files that a setting could name are not told', async () => {
    const file = nodes.get('SaveRecall/File');
    assert.deepEqual(await suggestionsOf(file, help()), []);
    await host.ask('/save', { file: 'bench.xml' });
    assert.deepEqual((await suggestionsOf(file, help())).map(({ value }) => value), ['bench.xml']);
});
