// SPDX-License-Identifier: MIT
// Debian's Chromium and pages in it that report whatever goes wrong in them.

import assert from 'node:assert/strict';
import { mkdirSync } from 'node:fs';
import { createRequire } from 'node:module';
import path from 'node:path';
import { setTimeout as pause } from 'node:timers/promises';
import { ROOT } from './host.mjs';

const PICTURES = path.join(ROOT, 'build/panel/pictures');
mkdirSync(PICTURES, { recursive: true });

// The packages lie where the panel's lock file is.
export const need = createRequire(new URL('../../service/panel/package.json', import.meta.url));
const { chromium } = need('playwright-core');

export function startBrowser() {
    return chromium.launch({
        executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
        args: process.getuid() === 0 ? ['--no-sandbox'] : [],
    });
}

/** The address of a node, behind that of the panel. */
export function pageOf(place) {
    return `#/p/${encodeURIComponent(place).replaceAll('%2F', '/').replaceAll('%5B', '[')
        .replaceAll('%5D', ']')}`;
}

/** Tries assertions again until they hold, for some seconds. */
export async function until(assertions, seconds = 8) {
    const last = performance.now() + seconds * 1000;
    for (;;) {
        try {
            return await assertions();
        } catch (error) {
            if (performance.now() > last) {
                throw error;
            }
            await pause(30);
        }
    }
}

/** What a user types instead of what stands in a field. */
export async function enter(field, text) {
    await field.fill(text);
    await field.press('Enter');
}

/** A user at a window: what goes wrong in it is kept and asserted at the end. */
export class Window {
    static async open(browser, host, {
        place = '', width = 1440, height = 900, scheme = 'light', ...options
    } = {}) {
        const window = new Window();
        window.faults = [];
        window.context = await browser.newContext({
            viewport: { width, height }, colorScheme: scheme, reducedMotion: 'reduce', ...options,
        });
        await window.context.addInitScript(() => {
            addEventListener('securitypolicyviolation', (event) => {
                const { violatedDirective, blockedURI, sourceFile, lineNumber } = event;
                console.error(`policy: ${violatedDirective} ${blockedURI} ${sourceFile}:${lineNumber}`);
            });
        });
        window.page = await window.context.newPage();
        window.page.setDefaultTimeout(10000);
        window.#watch(host);
        await window.page.goto(`${host.url}/${place}`);
        return window;
    }

    #watch(host) {
        this.page.on('pageerror', (error) => this.faults.push(`thrown: ${error.stack}`));
        this.page.on('console', (message) => {
            // The browser itself says of each request that failed; pages may ask and be refused.
            const isRequest = /^(Failed to load resource|WebSocket connection)/.test(message.text());
            if (message.type() === 'error' && !isRequest) {
                this.faults.push(`console: ${message.text()}`);
            }
        });
        this.page.on('request', (request) => {
            if (new URL(request.url()).host !== new URL(host.url).host) {
                this.faults.push(`elsewhere: ${request.url()}`);
            }
        });
        this.page.on('dialog', (dialog) => {
            this.faults.push(`dialogue: ${dialog.message()}`);
            dialog.dismiss();
        });
    }

    /** The end: nothing was thrown, blocked, asked elsewhere or said in a dialogue. */
    async close() {
        await this.context.close();
        assert.deepEqual(this.faults, []);
    }

    /** What a user sees, kept as a result of the build. */
    async keep(name) {
        await this.page.screenshot({ path: path.join(PICTURES, `${name}.png`) });
    }
}

/** Steps in a window of their own, which is left without a fault; a failure is kept as a picture. */
export async function inWindow(browser, host, options, steps) {
    const window = await Window.open(browser, host, options);
    try {
        await steps(window.page, window);
    } catch (error) {
        await window.keep(`failed-${Date.now()}`).catch(() => {});
        await window.context.close();
        error.message += `\n${window.faults.join('\n')}`;
        throw error;
    }
    await window.close();
}
