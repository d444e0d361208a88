// SPDX-License-Identifier: MIT
// What others and the service do while a page is open.

import assert from 'node:assert/strict';
import { randomBytes } from 'node:crypto';
import { mkdtemp, rm, writeFile } from 'node:fs/promises';
import net from 'node:net';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { beforeEach, test } from 'node:test';
import { enter, inWindow, pageOf, until } from './browser.mjs';
import { Host } from './host.mjs';
import { browser, holds, host, serve, withHost } from './served.mjs';

const SCALE = 'Horizontal/Scale';

serve();
beforeEach(() => host.ask('/preset', {}));

const fieldOf = (page) => page.getByRole('main').getByRole('spinbutton', { name: 'Scale' });
const shows = (page, text) =>
    until(async () => assert.equal(await fieldOf(page).inputValue(), text));
const connection = (page, text) =>
    page.getByRole('status', { name: 'Connection' }).filter({ hasText: text }).waitFor();

/** A way to a host that can be cut. */
class Way {
    static async to(host) {
        const way = new Way();
        way.sockets = new Set();
        way.isCut = false;
        const { port } = new URL(host.url);
        way.server = net.createServer((client) => {
            if (way.isCut) {
                client.destroy();
                return;
            }
            const server = net.connect(Number(port), '127.0.0.1');
            for (const [from, to] of [[client, server], [server, client]]) {
                way.sockets.add(from);
                from.pipe(to);
                from.on('error', () => to.destroy());
                from.on('close', () => to.destroy());
            }
        });
        await new Promise((done) => { way.server.listen(0, '127.0.0.1', done); });
        way.url = `http://127.0.0.1:${way.server.address().port}`;
        return way;
    }

    cut() {
        this.isCut = true;
        this.sockets.forEach((socket) => socket.destroy());
    }

    mend() {
        this.isCut = false;
    }

    end() {
        this.cut();
        this.server.close();
    }
}

test('two windows show different values, or what moved is not told', async () => {
    await inWindow(browser, host, { place: pageOf(SCALE) }, async (one) => {
        await inWindow(browser, host, { place: pageOf('Horizontal') }, async (other) => {
            await fieldOf(other).waitFor();
            await enter(fieldOf(one), '2 ms');
            await shows(other, '2 ms/div');
            for (const page of [one, other]) {
                const moved = page.getByRole('complementary', { name: 'What moved' });
                const row = moved.getByRole('listitem').filter({ hasText: 'Horizontal/AcquisitionTime' });
                await row.filter({ hasText: /1 µs.*→.*20 ms/s }).waitFor();
            }
            await fieldOf(other).focus();
            await other.keyboard.press('ArrowUp');
            await shows(one, '5 ms/div');
        });
    });
});

test('undo takes back another step, too many, or only a part of it', async () => {
    await inWindow(browser, host, { place: pageOf(SCALE) }, async (page) => {
        for (const text of ['2 ms', '5 ms']) {
            await enter(fieldOf(page), text);
            await shows(page, `${text}/div`);
        }
        await page.getByRole('link', { name: 'History', exact: true }).click();
        const main = page.getByRole('main');
        await main.getByText(/You wrote Scale/).nth(1).waitFor();
        await main.getByRole('button', { name: /^Undo/ }).first().click();
        await holds(SCALE, 0.002);
        await main.getByText(/You undid/).first().waitFor();
        assert.equal((await host.node('Horizontal/AcquisitionTime')).value, 0.02);
        await page.keyboard.press('Control+z');
        await holds(SCALE, 1e-7);
        await main.getByRole('button', { name: /^Redo 2 steps: Scale: 5 ms/ }).click();
        await holds(SCALE, 0.005);
        await main.getByRole('button', { name: /^Undo 2 steps: Scale: 2 ms/ }).click();
        await holds(SCALE, 1e-7);
    });
});

test('a trial writes, or does not tell what would move', async () => {
    await inWindow(browser, host, { place: pageOf(SCALE) }, async (page) => {
        const trial = page.getByRole('region', { name: 'What would move?' });
        await trial.getByRole('textbox').fill('1');
        await trial.getByRole('button', { name: 'Try it' }).click();
        await trial.getByText(/would move/).last().waitFor();
        const row = trial.getByRole('listitem').filter({ hasText: 'Horizontal/AcquisitionTime' });
        await row.filter({ hasText: /1 µs.*→.*10 s/s }).waitFor();
        assert.equal((await host.node(SCALE)).value, 1e-7);
        await trial.getByRole('textbox').fill('1e99');
        await trial.getByRole('button', { name: 'Try it' }).click();
        await trial.getByText(/above the maximum.*500 s\/div/).waitFor();
    });
});

test('a break goes unseen, or what changed meanwhile is missed', async () => {
    const way = await Way.to(host);
    try {
        await inWindow(browser, way, { place: pageOf(SCALE) }, async (page) => {
            await fieldOf(page).waitFor();
            way.cut();
            await connection(page, 'Connection lost');
            assert.equal(await fieldOf(page).isEditable(), false);
            await host.set(SCALE, '2 ms');
            way.mend();
            await page.getByRole('button', { name: 'Try now' }).click();
            await connection(page, /Connected again.*changed meanwhile/);
            await shows(page, '2 ms/div');
            assert.equal(await fieldOf(page).isEditable(), true);
        });
    } finally {
        way.end();
    }
});

test('a page stays behind after the service was started again', async () => {
    await inWindow(browser, host, { place: pageOf(SCALE) }, async (page) => {
        await fieldOf(page).waitFor();
        await host.restart();
        await host.set(SCALE, '10 ms');
        await connection(page, /Connected again.*read again/);
        await shows(page, '10 ms/div');
        await host.set(SCALE, '20 ms');
        await shows(page, '20 ms/div');
    });
});

test('local lockout is not seen', async () => {
    await inWindow(browser, host, {}, async (page) => {
        await page.getByRole('tree').waitFor();
        const remote = net.connect(Number(host.remotePort), '127.0.0.1');
        remote.write('SYST:RWL\n');
        await page.getByText('Local lockout', { exact: true }).waitFor();
        await page.reload();
        await page.getByText('Local lockout', { exact: true }).waitFor();
        remote.write('SYST:LOC\n');
        await page.getByText('Local lockout', { exact: true }).waitFor({ state: 'detached' });
        remote.destroy();
    });
});

test('a service that only reads looks as if it could be written', () => withHost(['--read-only'], async (reader) => {
    await inWindow(browser, reader, { place: pageOf(SCALE) }, async (page) => {
        await page.getByText('Read only', { exact: true }).waitFor();
        assert.equal(await fieldOf(page).isEditable(), false);
        await fieldOf(page).press('ArrowUp');
        await page.getByText(/only reads/).first().waitFor();
    });
}));

test('a stranger sees the tree, or who has the token does not', async () => {
    const folder = await mkdtemp(path.join(tmpdir(), 'token-'));
    const file = path.join(folder, 'token');
    const token = `${randomBytes(24).toString('base64')}/+=`;
    await writeFile(file, `${token}\n`, { mode: 0o600 });
    const guarded = await Host.start('--token-file', file);
    guarded.token = token;
    try {
        await inWindow(browser, guarded, { place: pageOf(SCALE) }, async (page) => {
            const field = page.getByLabel('Token', { exact: true });
            await enter(field, '0123456789abcdef');
            await page.getByRole('alert').filter({ hasText: /not the service/ }).waitFor();
            assert.equal(await page.getByRole('tree').count(), 0);
            await enter(field, token);
            await fieldOf(page).waitFor();
            await guarded.set(SCALE, '2 ms'); // changes come by the WebSocket
            await shows(page, '2 ms/div');
            assert.equal(page.url().includes(token.slice(0, 8)), false);
        });
    } finally {
        await guarded.end();
        await rm(folder, { recursive: true });
    }
});
