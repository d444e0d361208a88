// SPDX-License-Identifier: MIT
// Each view as it looks: pictures in build/panel/pictures, and what can be judged without eyes.

import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { before, test } from 'node:test';
import { enter, inWindow, need, pageOf } from './browser.mjs';
import { browser, host, serve } from './served.mjs';

const WIDTHS = [320, 768, 1440];
const JUDGED = ['320 light', '1440 dark']; // each layout and each set of colours once
const MARKERS = 'Spectrum/SpectrumMarkers/SpectrumMarker';
const LABELS = 'SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem';

const openTree = async (page) => {
    if (page.viewportSize().width >= 768) {
        await page.getByRole('treeitem').first().waitFor();
    }
};
const writeScale = (text) => async (page) => {
    const field = page.getByRole('main').getByRole('spinbutton', { name: 'Scale' });
    await enter(field, text);
};

/** Name, address, and what is done there before one looks. */
const VIEWS = [
    ['overview', '', openTree],
    ['group', pageOf('Horizontal'), openTree],
    ['number', pageOf('Horizontal/Scale'), async (page) => {
        await page.getByText('What it moves and follows').click();
        await page.getByText('CalculateScaleGui').first().waitFor();
        await page.getByRole('main').getByRole('link', { name: 'Horizontal/ScaleGUI' }).first().waitFor();
    }],
    ['number-written', pageOf('Horizontal/Scale'), async (page) => {
        await writeScale('2 ms')(page);
        await page.getByText('AcquisitionTime').last().waitFor();
    }],
    ['number-refused', pageOf('Horizontal/Scale'), async (page) => {
        await writeScale('1e99')(page);
        await page.getByRole('alert').filter({ hasText: 'Refused' }).waitFor();
    }],
    ['trial', pageOf('Horizontal/Scale'), async (page) => {
        const trial = page.getByRole('region', { name: 'What would move?' });
        await trial.getByRole('textbox').fill('1');
        await trial.getByRole('button', { name: 'Try it' }).click();
        await trial.getByText(/would move/).last().waitFor();
    }],
    ['selection', pageOf('Trigger/Type'), async (page) => {
        await page.locator('.main-control').getByRole('button').first().click();
        await page.getByRole('listbox').getByRole('option', { name: /^Bus/ }).click({ force: true });
    }],
    ['bits', pageOf('Trigger/SerialPatternTriggerSettings/Pattern'), async () => {}],
    ['bytes', pageOf('Setup/BgDetection/ServiceI2CAccess/WriteData'), async () => {}],
    ['text', pageOf('Vertical/Channel[0]/Label'), async () => {}],
    ['file', pageOf('SaveRecall/File'), async () => {}],
    ['reference', pageOf('Spectrum/SpectrumMarkers/SelectedMarker'), async () => {}],
    ['result-invalid', pageOf('Setup/BgDetection/Mainboard/Temperature'), async () => {}],
    ['unavailable', pageOf('Setup/EthernetGateway'), async () => {}],
    ['action', pageOf('Setup/Selftest/Start'), async () => {}],
    ['array', pageOf(MARKERS), async () => {}],
    ['map', pageOf(LABELS), async () => {}],
    ['channel', pageOf('Vertical/Channel[0]'), async () => {}],
    ['missing', pageOf('Vertical/None'), async () => {}],
    ['search', '', async (page) => {
        await page.getByRole('searchbox').fill('scale');
        await page.getByRole('region', { name: 'Found' }).getByRole('link').first().waitFor();
    }],
    ['favourites', pageOf('Horizontal/Scale'), async (page) => {
        await page.getByRole('main').getByRole('button', { name: /favourite/ }).click();
        await page.getByRole('link', { name: 'Favourites', exact: true }).click();
        await page.getByRole('main').getByRole('listitem').first().waitFor();
    }],
    ['history', pageOf('Horizontal/Scale'), async (page) => {
        await writeScale('5 ms')(page);
        await page.getByRole('link', { name: 'History', exact: true }).click();
        await page.getByRole('main').getByText(/you wrote Scale/i).waitFor();
    }],
    ['traces', '#/waves', async (page) => {
        await page.getByRole('button', { name: 'Cursors' }).click();
        await page.getByRole('slider', { name: 'Cursor A' }).waitFor();
        await page.getByRole('img', { name: /^Spectrum from/ }).waitFor();
    }],
];

let axe;

serve('--demo');
before(async () => {
    axe = await readFile(need.resolve('axe-core/axe.min.js'), 'utf8');
});

/** Where each view begins: defaults, and items in containers. */
async function begin() {
    await host.ask('/preset', {});
    for (const key of ['Engine', 'Gear']) {
        await host.ask('/items', { path: LABELS, do: 'insert', key });
        await host.ask('/items', { path: MARKERS, do: 'insert' });
    }
}

async function findings(page) {
    await page.evaluate(axe);
    const { violations } = await page.evaluate(() => globalThis.axe.run({ preload: false }));
    return violations.flatMap(({ id, help, nodes }) =>
        nodes.map(({ html }) => `${id}: ${help}: ${html.slice(0, 200)}`));
}

/** Elements that reach beyond the right edge of the screen. */
function wide(page) {
    return page.evaluate(() => {
        const { clientWidth, scrollWidth } = document.documentElement;
        return scrollWidth <= clientWidth ? [] : [...document.querySelectorAll('body *')]
            .filter((node) => node.getBoundingClientRect().right > clientWidth + 1)
            .map((node) => `wider than the screen: ${node.outerHTML.slice(0, 120)}`).slice(-3);
    });
}

for (const [name, place, prepare] of VIEWS) {
    test(`${name}: somebody can not read or reach something`, async () => {
        await begin();
        await inWindow(browser, host, { place }, async (page, window) => {
            await page.getByRole('main').getByRole('heading', { level: 2 }).waitFor();
            await prepare(page);
            const wrong = [];
            for (const width of WIDTHS) {
                await page.setViewportSize({ width, height: 900 });
                for (const colorScheme of ['light', 'dark']) {
                    await page.emulateMedia({ colorScheme });
                    await window.keep(`${name}-${width}-${colorScheme}`);
                    if (JUDGED.includes(`${width} ${colorScheme}`)) {
                        wrong.push(...(await findings(page)).map((what) => `${width}: ${what}`));
                    }
                }
                wrong.push(...(await wide(page)).map((what) => `${width}: ${what}`));
            }
            assert.deepEqual(wrong, []);
        });
    });
}
