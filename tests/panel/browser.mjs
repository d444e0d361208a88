// SPDX-License-Identifier: MIT
// Debian's Chromium and pages in it that report whatever goes wrong in them.

import assert from 'node:assert/strict';
import { createRequire } from 'node:module';

// The packages lie where the panel's lock file is.
export const need = createRequire(new URL('../../service/panel/package.json', import.meta.url));
const { chromium } = need('playwright-core');

export function startBrowser() {
    return chromium.launch({
        executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
        args: process.getuid() === 0 ? ['--no-sandbox'] : [],
    });
}

/** A user at a window: what goes wrong in it is kept and asserted at the end. */
export class Window {
    static async open(browser, host, { place = '', width = 1440, height = 900, scheme = 'light', path = '/', ...options } = {}) {
        const window = new Window();
        window.faults = [];
        window.context = await browser.newContext({
            viewport: { width, height }, colorScheme: scheme, reducedMotion: 'reduce', ...options,
        });
        await window.context.addInitScript(() => {
            addEventListener('securitypolicyviolation', (event) => {
                console.error(`policy: ${event.violatedDirective} ${event.blockedURI} ${event.sourceFile}:${event.lineNumber}`);
            });
        });
        window.page = await window.context.newPage();
        window.page.setDefaultTimeout(10000);
        window.#watch(host);
        await window.page.goto(`${host.url}${path}${place}`);
        return window;
    }

    #watch(host) {
        this.page.on('pageerror', (error) => this.faults.push(`thrown: ${error.stack}`));
        this.page.on('console', (message) => {
            // The browser itself says of each request that failed; pages may ask and be refused.
            if (message.type() === 'error' && !/^(Failed to load resource|WebSocket connection)/.test(message.text())) {
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

    /** The end of a test: nothing was thrown, blocked, asked elsewhere or said in a dialogue. */
    async close() {
        await this.context.close();
        assert.deepEqual(this.faults, []);
    }
}
