// SPDX-License-Identifier: MIT
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { startBrowser, Window } from './browser.mjs';
import { Host } from './host.mjs';

let browser;
let host;

before(async () => {
    [browser, host] = await Promise.all([startBrowser(), Host.start()]);
});

after(async () => {
    await Promise.all([browser?.close(), host?.end()]);
});

test('the page that the service serves shows the tree', async () => {
    const window = await Window.open(browser, host);
    await window.page.getByText('Horizontal').first().waitFor();
    assert.equal(await window.page.locator('html').getAttribute('lang'), 'en');
    await window.close();
});
