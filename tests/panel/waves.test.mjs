// SPDX-License-Identifier: MIT
// Traces, spectrum and masks: what is drawn, what it says in words, and what keys do with it.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { setTimeout as pause } from 'node:timers/promises';
import { inWindow, until } from './browser.mjs';
import { browser, host, serve, withHost } from './served.mjs';

serve('--demo');

const pictureOf = (page) => page.getByRole('img', { name: /^Traces from/ });
const rowOf = (page, name) => page.getByRole('row', { name: new RegExp(`^${name}`) });
const open = { place: '#/waves' };

/** How many points of the canvas have the colour that the style gives a trace. */
function countPoints(picture, name) {
    return picture.locator('canvas').evaluate((canvas, variable) => {
        const probe = document.createElement('canvas').getContext('2d');
        probe.fillStyle = getComputedStyle(document.documentElement).getPropertyValue(variable);
        probe.fillRect(0, 0, 1, 1);
        const wanted = probe.getImageData(0, 0, 1, 1).data;
        const { data } = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height);
        let count = 0;
        for (let i = 0; i < data.length; i += 4) {
            const isIt = [0, 1, 2].every((k) => Math.abs(data[i + k] - wanted[k]) < 24);
            count += isIt ? 1 : 0;
        }
        return count;
    }, `--${name}`);
}

test('traces are drawn seldom, or not at all', () => inWindow(browser, host, {}, async (page) => {
    let pictures = 0;
    page.on('websocket', (socket) => socket.on('framereceived', ({ payload }) => {
        pictures += typeof payload === 'string' ? 0 : 1;
    }));
    await page.getByRole('link', { name: 'Traces' }).click();
    await pictureOf(page).waitFor();
    const begun = pictures;
    const start = performance.now();
    await pause(2000);
    const rate = (pictures - begun) / (performance.now() - start) * 1000;
    assert.ok(rate > 10 && rate < 22, `${rate} pictures a second`);
    for (const name of ['trace-1', 'trace-2']) {
        assert.ok(await countPoints(pictureOf(page), name) > 300, `${name} is not to be seen`);
    }
}));

test('a trace that is switched off is still drawn', () => inWindow(browser, host, open, async (page) => {
    await host.set('Vertical/Channel[1]/Enabled', false);
    try {
        await until(async () => assert.equal(await rowOf(page, 'C2').count(), 0));
        await until(async () => assert.ok(await countPoints(pictureOf(page), 'trace-2') < 20));
    } finally {
        await host.set('Vertical/Channel[1]/Enabled', true);
    }
}));

test('the picture has another time base than the tree', () => inWindow(browser, host, open, async (page) => {
    await page.getByRole('img', { name: /from -500 ns to 500 ns/ }).waitFor();
    await host.set('Horizontal/Scale', '50 ns');
    try {
        await page.getByRole('img', { name: /from -250 ns to 250 ns/ }).waitFor();
    } finally {
        await host.set('Horizontal/Scale', '100 ns');
    }
}));

test('zoom does not follow buttons or dragging', () => inWindow(browser, host, open, async (page) => {
    await pictureOf(page).waitFor();
    await page.getByRole('button', { name: 'Zoom in' }).press('Enter');
    await page.getByRole('img', { name: /from -250 ns to 250 ns/ }).waitFor();
    await page.getByRole('button', { name: 'To the right' }).press('Enter');
    await page.getByRole('img', { name: /from -125 ns to 375 ns/ }).waitFor();
    await page.getByRole('button', { name: 'Whole screen' }).first().press('Enter');
    await page.getByRole('img', { name: /from -500 ns to 500 ns/ }).waitFor();
    const widest = page.getByRole('img', { name: /from -50 µs to 50 µs/ });
    for (let i = 0; i < 50 && await widest.count() === 0; ++i) {
        await page.getByRole('button', { name: 'Zoom out' }).press('Enter');
        await pause(80);
    }
    await page.getByRole('button', { name: 'Zoom out' }).press('Enter');
    await pause(200);
    assert.equal(await widest.count(), 1);
    await page.getByRole('button', { name: 'Whole screen' }).first().press('Enter');
    await page.getByRole('img', { name: /from -500 ns to 500 ns/ }).waitFor();
    const box = await pictureOf(page).locator('.u-over').boundingBox();
    await page.mouse.move(box.x + box.width * 0.5, box.y + 60);
    await page.mouse.down();
    await page.mouse.move(box.x + box.width * 0.75, box.y + 80, { steps: 4 });
    await page.mouse.up();
    await page.getByRole('img', { name: /from -?\d.* to 2\d\d/ }).waitFor();
}));

test('cursors do not follow keys or a click', () => inWindow(browser, host, open, async (page) => {
    await page.getByRole('button', { name: 'Cursors' }).click();
    const a = page.getByRole('slider', { name: 'Cursor A' });
    await a.waitFor();
    assert.equal(await a.getAttribute('aria-valuetext'), '-250 ns');
    await a.press('ArrowRight');
    await until(async () => assert.equal(await a.getAttribute('aria-valuetext'), '-249 ns'));
    await page.getByText('Between them: 499 ns, 2.004 MHz').waitFor();
    const box = await pictureOf(page).locator('.u-over').boundingBox();
    await page.mouse.click(box.x + box.width * 0.9, box.y + 60);
    await page.getByText(/Between them: 6\d\d/).waitFor();
    await rowOf(page, 'C1').getByText(/ V/).first().waitFor();
    assert.equal(await rowOf(page, 'C1').getByRole('cell').count(), 6);
}));

test('a held picture moves', () => inWindow(browser, host, open, async (page) => {
    await pictureOf(page).waitFor();
    await page.getByRole('button', { name: 'Hold' }).click();
    await pause(700);
    const held = await page.getByText(/^Record \d+/).textContent();
    await pause(700);
    assert.equal(await page.getByText(/^Record \d+/).textContent(), held);
    await page.getByRole('button', { name: 'Hold' }).click();
    await until(async () => assert.notEqual(await page.getByText(/^Record \d+/).textContent(), held));
}));

test('a mask is neither drawn nor told', () => inWindow(browser, host, open, async (page, window) => {
    await pictureOf(page).waitFor();
    const plain = await countPoints(pictureOf(page), 'bad');
    await host.set('Mask/Enabled', true);
    assert.equal((await host.ask('/run', { path: 'Mask/MaskSettings/CreateMask' })).name, 'OK');
    await rowOf(page, 'C1').getByText('with mask').waitFor();
    await until(async () => assert.ok(await countPoints(pictureOf(page), 'bad') > plain + 300));
    await window.keep('waves-mask');
    await host.set('Mask/Enabled', false);
}));

test('the spectrum is neither drawn nor told', () => inWindow(browser, host, open, async (page) => {
    const spectrum = page.getByRole('img', { name: /^Spectrum from 0 Hz to 625 MHz: FFT 1, peak .* at [456]\.?\d* MHz/ });
    await spectrum.waitFor();
    await until(async () => assert.ok(await countPoints(spectrum, 'trace-1') > 300));
    await page.getByRole('button', { name: 'Spectrum' }).press('Enter');
    await until(async () => assert.equal(await spectrum.count(), 0));
}));

test('no pictures come after the service was restarted', () => withHost(['--demo'], async (other) => {
    await inWindow(browser, other, open, async (page) => {
        await pictureOf(page).waitFor();
        await other.restart();
        await page.getByText(/^Record \d\./).or(page.getByText(/^Record \d\d\./)).waitFor();
    });
}));

test('nothing is said where nothing is acquired', () => withHost([], async (other) => {
    await inWindow(browser, other, open, async (page) => {
        await page.getByText(/Nothing is acquired here/).waitFor();
        assert.equal(await page.getByRole('img').count(), 0);
    });
}));
