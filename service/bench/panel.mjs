// SPDX-License-Identifier: MIT
// What the panel takes of a browser's time, in figures; of the machine at hand, so that no test
// depends on them.
//
//   ZELHOST=… [PANEL_FOLDER=…] node service/bench/panel.mjs

import net from 'node:net';
import { setTimeout as pause } from 'node:timers/promises';
import { startBrowser, Window } from '../../tests/panel/browser.mjs';
import { Host } from '../../tests/panel/host.mjs';

const OPENINGS = 9;
const WORD = 'horizontal scale 100 ns/div';
const CHANGES_PER_SECOND = 1000;
const STORM_SECONDS = 3;

function row(what, figure, budget) {
    console.log(`${what.padEnd(58)} ${figure.padStart(10)}   ${budget}`);
}

const ms = (value) => `${value.toFixed(1)} ms`;
const median = (values) => [...values].sort((a, b) => a - b)[values.length >> 1];

/** Milliseconds from the start of navigation: of the first paint, and of the tree. */
async function timeOpening(browser, host) {
    const window = await Window.open(browser, host);
    await window.page.getByRole('treeitem').first().waitFor();
    const times = await window.page.evaluate(() => ({
        paint: performance.getEntriesByName('first-contentful-paint')[0].startTime,
        tree: performance.now(),
    }));
    await window.close();
    return times;
}

/** Time of a processor that the page's thread has used, in ms: what other programs do counts little. */
async function busy(client) {
    const { metrics } = await client.send('Performance.getMetrics');
    return 1000 * metrics.find(({ name }) => name === 'TaskDuration').value;
}

/** Work of the page for each key of a word: script, style, layout and painting; and the longest. */
async function timeKeys(browser, host) {
    const window = await Window.open(browser, host);
    const { page } = window;
    await page.getByRole('treeitem').first().waitFor();
    const field = page.getByRole('searchbox').or(page.getByRole('combobox')).first();
    await field.focus();
    const client = await page.context().newCDPSession(page);
    await client.send('Performance.enable', { timeDomain: 'threadTicks' });
    const times = [];
    for (const letter of WORD) {
        await pause(150);
        const before = await busy(client);
        await page.keyboard.press(letter === ' ' ? 'Space' : letter);
        await pause(150);
        times.push(await busy(client) - before);
    }
    await window.close();
    return times;
}

/** Settings that any number between their limits can be written to without moving others. */
async function quietSettings(host) {
    const tree = await host.ask('/tree?detail=full');
    const found = [];
    const walk = (node) => {
        if (node.kind === 'property') {
            if (node.type === 'double' && !node.result && node.availability === 'available' &&
                node.selectable.length === 0 && node.minimum < node.maximum) {
                found.push(node);
            }
            return;
        }
        for (const part of [node.properties, node.groups, node.items]) {
            Object.values(part ?? {}).forEach(walk);
        }
    };
    walk(tree);
    const quiet = [];
    for (const node of found) {
        const value = node.minimum + (node.maximum - node.minimum) * 0.37;
        const { changes = [] } = await host.ask('/trial', { writes: [{ path: node.path, value }] });
        if (changes.length === 1) {
            quiet.push(node);
        }
        if (quiet.length === 50) {
            break;
        }
    }
    return quiet;
}

/** Writes them in turn from another client, a thousand in a second, one by one. */
async function storm(host, settings) {
    const socket = net.connect(Number(host.remotePort), '127.0.0.1');
    const begun = performance.now();
    let sent = 0;
    while (performance.now() - begun < STORM_SECONDS * 1000) {
        const due = Math.floor((performance.now() - begun) / 1000 * CHANGES_PER_SECOND);
        let message = '';
        for (; sent < due; sent += 1) {
            const { header, minimum, maximum } = settings[sent % settings.length];
            message += `${header} ${minimum + (maximum - minimum) * Math.random()}\n`;
        }
        socket.write(message);
        await pause(5);
    }
    await pause(300);
    socket.destroy();
    return sent;
}

async function headersOf(host, nodes) {
    const settings = [];
    for (const { path, minimum, maximum } of nodes) {
        const names = await Promise.all(path.split('/').map((_, i, parts) =>
            host.node(parts.slice(0, i + 1).join('/'))));
        const header = names.map(({ remote, path: of }) =>
            remote + (Number(of.match(/\[(\d+)\]$/)?.[1] ?? -1) + 1 || '')).join(':');
        settings.push({ header: `:${header}`, minimum, maximum });
    }
    return settings;
}

/** Milliseconds between pictures of the screen while others write, on a view. */
async function timeStorm(browser, host, place, settings) {
    const window = await Window.open(browser, host, { place });
    const { page } = window;
    await page.getByRole('treeitem').or(page.getByRole('heading')).first().waitFor();
    await pause(1000);
    await page.evaluate(() => {
        globalThis.frames_ = [];
        let last = performance.now();
        const look = (now) => {
            globalThis.frames_.push(now - last);
            last = now;
            requestAnimationFrame(look);
        };
        requestAnimationFrame(look);
    });
    const client = await page.context().newCDPSession(page);
    await client.send('Performance.enable', { timeDomain: 'threadTicks' });
    const before = await busy(client);
    const sent = await storm(host, settings);
    const share = (await busy(client) - before) / (STORM_SECONDS * 1000 + 300);
    const frames = await page.evaluate(() => globalThis.frames_.slice(1));
    await window.close();
    return { sent, share, longest: Math.max(...frames), median: median(frames) };
}

const [browser, host] = await Promise.all([startBrowser(), Host.start()]);
try {
    const openings = [];
    for (let i = 0; i < OPENINGS; i += 1) {
        openings.push(await timeOpening(browser, host));
    }
    row('first paint, median', ms(median(openings.map(({ paint }) => paint))), '≤ 300 ms');
    row('tree shown, median', ms(median(openings.map(({ tree }) => tree))), '');
    const keys = await timeKeys(browser, host);
    row('a key of the search over the whole tree, median', ms(median(keys)), '≤ 16 ms');
    row('a key of the search over the whole tree, longest', ms(Math.max(...keys)), '≤ 16 ms');
    const settings = await headersOf(host, await quietSettings(host));
    for (const place of ['', '#/p/Vertical', '#/history']) {
        const { sent, share, longest, median: usual } = await timeStorm(browser, host, place, settings);
        row(`${sent} changes in ${STORM_SECONDS} s at ${place || 'the start'}: longest frame`, ms(longest),
            `median ${ms(usual)}, thread busy ${(100 * share).toFixed(0)} %`);
    }
} finally {
    await Promise.all([browser.close(), host.end()]);
}
