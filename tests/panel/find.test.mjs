// SPDX-License-Identifier: MIT
// Search, tree, favourites, links, names.

import assert from 'node:assert/strict';
import { beforeEach, test } from 'node:test';
import { inWindow, pageOf, until } from './browser.mjs';
import { browser, holds, host, serve } from './served.mjs';

const HOSTILE = '<script>document.title=1<script>';
const LABELS = 'SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem';

serve();
beforeEach(() => host.ask('/preset', {}));

test('the search misses names, meanings, units or values', async () => {
    await host.set('Vertical/Channel[2]/Label', 'Motor');
    await inWindow(browser, host, {}, async (page) => {
        const field = page.getByRole('searchbox');
        const found = page.getByRole('region', { name: 'Found' });
        for (const [words, place] of [['scale horiz', 'Horizontal/Scale'],
            ['TIME SCALE', 'Horizontal/Scale'], ['s/div', 'Horizontal/Scale'],
            ['100 ns/div', 'Horizontal/Scale'], ['motor', 'Vertical/Channel[2]/Label']]) {
            await field.fill(words);
            await found.locator(`a[href="${pageOf(place)}"]`).waitFor();
        }
        await field.fill('zzzz');
        await found.getByText('Nothing found').waitFor();
        await field.press('Escape');
        await page.getByRole('tree').waitFor();
        assert.equal(await field.inputValue(), '');
    });
});

test('a value that has moved is found by what it was', async () => {
    await inWindow(browser, host, {}, async (page) => {
        const found = page.getByRole('region', { name: 'Found' });
        await page.getByRole('tree').waitFor();
        await host.set('Vertical/Channel[3]/Label', 'Pump');
        await until(async () => {
            await page.getByRole('searchbox').fill('');
            await page.getByRole('searchbox').fill('pump');
            assert.equal(await found.getByRole('link').count(), 1);
        });
    });
});

test('a link leads elsewhere, or is lost when the page is loaded again', async () => {
    await inWindow(browser, host, { place: pageOf('Vertical/Channel[1]/Coupling') }, async (page) => {
        const heading = page.getByRole('main').getByRole('heading', { level: 2 });
        await heading.filter({ hasText: 'Coupling' }).waitFor();
        await page.reload();
        await heading.filter({ hasText: 'Coupling' }).waitFor();
        const node = page.getByRole('treeitem', { name: /^Coupling/, selected: true });
        assert.equal(await node.isVisible(), true);
        await page.getByRole('main').getByRole('link', { name: 'Vertical', exact: true }).click();
        await heading.filter({ hasText: 'Vertical' }).waitFor();
        await page.goBack();
        await heading.filter({ hasText: 'Coupling' }).waitFor();
        await page.goto(`${host.url}/${pageOf('Vertical/None')}`);
        await page.getByText('There is no node “Vertical/None”').waitFor();
        await page.goto(`${host.url}/#/p/%E0%A4%A`);
        await page.getByText(/There is no node/).waitFor();
    });
});

test('a favourite is gone when the page is loaded again', async () => {
    await inWindow(browser, host, { place: pageOf('Horizontal/Scale') }, async (page) => {
        await page.getByRole('main').getByRole('button', { name: /favourite/ }).click();
        await page.reload();
        await page.getByRole('link', { name: 'Favourites', exact: true }).click();
        const row = page.getByRole('main').getByRole('listitem').filter({ hasText: 'Scale' });
        await row.getByRole('spinbutton', { name: 'Scale' }).waitFor();
        await row.getByRole('button', { name: /favourite/ }).click();
        await page.getByText('No favourites yet').waitFor();
    });
});

test('a setting that differs from its default is not marked', async () => {
    await inWindow(browser, host, {}, async (page) => {
        await page.getByLabel('Only what differs').check();
        const group = page.getByRole('treeitem', { name: /^Horizontal/ });
        await until(async () => assert.equal(await group.count(), 0));
        await host.set('Horizontal/Scale', '2 ms');
        await group.filter({ hasText: /differ/ }).waitFor();
        await page.getByRole('main').getByRole('link', { name: 'Horizontal/Scale', exact: true }).waitFor();
        await host.ask('/preset', {});
        await until(async () => assert.equal(await group.count(), 0));
    });
});

test('a name is taken for markup', async () => {
    for (const key of ['<script>', '<img src=x onerror=alert>', '&lt;b>']) {
        const answer = await host.ask('/items', { path: LABELS, do: 'insert', key });
        assert.equal(answer.name, 'OK', key);
    }
    await host.set('Logger/LoggerAttributes/Comment', `${HOSTILE}<img src=x onerror=alert(1)>`);
    const places = ['', pageOf(LABELS), pageOf(`${LABELS}[<script>]`), pageOf('<script>'),
        pageOf('Logger/LoggerAttributes/Comment'), pageOf('Logger/LoggerAttributes'), '#/history'];
    for (const place of places) {
        await inWindow(browser, host, { place }, async (page) => {
            await page.getByRole('heading', { level: 2 }).first().waitFor();
            await page.getByRole('searchbox').fill('<script>');
            await page.getByRole('link', { name: '<script>' }).first().waitFor();
            await host.set('Logger/LoggerAttributes/Name', `<b>${Date.now()}</b>`);
            await page.getByText('<b>').locator('visible=true').first().waitFor();
            const strange = page.locator('img, b, script:not([src="panel.js"])');
            assert.equal(await strange.count(), 0, `${place}: ${await strange.allInnerTexts()}`);
            assert.notEqual(await page.title(), '1');
        });
    }
});

test('a mouse is needed', async () => {
    await inWindow(browser, host, {}, async (page) => {
        await page.getByRole('tree').waitFor();
        await page.keyboard.press('/');
        await page.keyboard.type('time scale');
        await press(page, 'ArrowDown', page.locator(`a[href="${pageOf('Horizontal/Scale')}"]`));
        await page.keyboard.press('Enter');
        const field = page.getByRole('main').getByRole('spinbutton', { name: 'Scale' });
        await field.waitFor();
        await press(page, 'Tab', field);
        await page.keyboard.press('Control+a');
        await page.keyboard.type('2 ms');
        await page.keyboard.press('Enter');
        await holds('Horizontal/Scale', 0.002);
        const undo = page.getByRole('button', { name: /^Undo/ });
        await press(page, 'Shift+Tab', undo);
        await page.keyboard.press('Enter');
        await holds('Horizontal/Scale', 1e-7);
    });
    await inWindow(browser, host, {}, async (page) => {
        const group = page.getByRole('treeitem', { name: /^Horizontal/ });
        await group.waitFor();
        await press(page, 'Tab', page.getByRole('treeitem').first());
        await press(page, 'ArrowDown', group);
        await page.keyboard.press('ArrowRight');
        await page.keyboard.press('ArrowRight');
        await page.keyboard.press('Enter');
        await page.getByRole('main').getByRole('spinbutton', { name: 'Scale' }).waitFor();
    });
});

/** Presses a key until an element has the focus. */
async function press(page, key, element, most = 80) {
    for (let i = 0; i < most; i += 1) {
        if (await element.evaluate((node) => node === document.activeElement)) {
            return;
        }
        await page.keyboard.press(key);
    }
    assert.fail(`${key} does not lead to ${element}`);
}
