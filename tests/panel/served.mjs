// SPDX-License-Identifier: MIT
// What all tests of a file share.

import assert from 'node:assert/strict';
import { after, before } from 'node:test';
import { inWindow, pageOf, startBrowser, until } from './browser.mjs';
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

/** A host of other options, while the steps with it run. */
export async function withHost(options, steps) {
    const other = await Host.start(...options);
    try {
        await steps(other);
    } finally {
        await other.end();
    }
}

/** The page of a node, with its control. */
export async function at(place, steps) {
    await inWindow(browser, host, { place: pageOf(place) }, async (page) => {
        const main = page.getByRole('main');
        await main.getByRole('heading', { level: 2 }).waitFor();
        await steps({ page, control: main.locator('.main-control') });
    });
}

/** A setting comes to hold a value. */
export async function holds(place, value) {
    await until(async () => assert.deepEqual((await host.node(place)).value, value));
}
