// SPDX-License-Identifier: MIT
// What all tests of a file share.

import { after, before } from 'node:test';
import { startBrowser } from './browser.mjs';
import { Host } from './host.mjs';

export let browser;
export let host;

/** One browser and one host, while the tests of the file that calls it run. */
export function serve(...options) {
    before(async () => {
        [browser, host] = await Promise.all([startBrowser(), Host.start(...options)]);
    });
    after(async () => {
        await Promise.all([browser?.close(), host?.end()]);
    });
}
