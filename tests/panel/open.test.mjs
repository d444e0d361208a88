// SPDX-License-Identifier: MIT
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { inWindow, startBrowser } from './browser.mjs';
import { Host } from './host.mjs';

let browser;
let host;

before(async () => {
    [browser, host] = await Promise.all([startBrowser(), Host.start()]);
});

after(async () => {
    await Promise.all([browser?.close(), host?.end()]);
});

test('a page that the service serves shows nothing of the tree', async () => {
    await inWindow(browser, host, {}, async (page) => {
        await page.getByText('Horizontal').first().waitFor();
        assert.equal(await page.locator('html').getAttribute('lang'), 'en');
    });
});
