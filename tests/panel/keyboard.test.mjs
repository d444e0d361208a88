// SPDX-License-Identifier: MIT
// The controls by keys alone: where they lead, what they say, and where the focus stays.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { enter, until } from './browser.mjs';
import { at, holds, host, serve } from './served.mjs';

serve();

/** The name of what has the focus. */
function focused(page) {
    return page.evaluate(() => {
        const { activeElement: element } = document;
        return element.getAttribute('aria-label') ?? element.textContent.trim();
    });
}

async function focusIs(page, name) {
    await until(async () => assert.match(await focused(page), name));
}

test('a greyed value can not be reached by keys, or does not lead to what offers it', async () => {
    await at('Trigger/Source', async ({ page, control }) => {
        await control.getByRole('button', { name: 'Source' }).focus();
        await page.keyboard.press('ArrowDown');
        await focusIs(page, /^C1$/);
        await page.keyboard.type('d0');
        await focusIs(page, /^D0/);
        await page.keyboard.press('Enter');
        const way = control.getByRole('link', { name: 'Logic/Enabled = On' });
        await way.waitFor();
        await holds('Trigger/Source', 'C1');
        await page.keyboard.press('Tab');
        await focusIs(page, /Logic\/Enabled/);
        await page.keyboard.press('Enter');
        const other = page.getByRole('switch', { name: 'Enabled' });
        await other.press('Space');
        await holds('Logic/Enabled', 'ON');
        await page.goBack();
        await control.getByRole('button', { name: 'Source' }).press('ArrowDown');
        await focusIs(page, /^C1$/);
        await page.keyboard.type('d0');
        await focusIs(page, /^D0/);
        await page.keyboard.press('Enter');
        await holds('Trigger/Source', 'D0');
        await focusIs(page, /D0/);
        assert.equal(await control.getByRole('listbox').count(), 0);
    });
});

test('Escape leaves a list open, or loses the focus', async () => {
    await at('Horizontal/Scale', async ({ page, control }) => {
        const opener = control.getByRole('button', { name: 'Values of Scale' });
        await opener.press('Enter');
        await focusIs(page, /^100 ns\/div$/);
        await page.keyboard.press('End');
        await focusIs(page, /^500 s\/div$/);
        await page.keyboard.press('Escape');
        assert.equal(await control.getByRole('listbox').count(), 0);
        await focusIs(page, /^Values of Scale$/);
        await opener.press('Enter');
        await focusIs(page, /^100 ns\/div$/);
        await page.keyboard.press('Home');
        await focusIs(page, /^1 ns\/div$/);
        await page.keyboard.press('Enter');
        await holds('Horizontal/Scale', 1e-9);
    });
});

test('the wheel of a page that is scrolled sets a number', async () => {
    const place = 'Setup/Display/GridIntensity';
    await host.set(place, 40);
    await at(place, async ({ page, control }) => {
        const field = control.getByRole('spinbutton');
        await field.hover();
        await page.mouse.wheel(0, 300);
        await field.focus();
        await field.hover(); // the page has moved below the pointer
        await page.mouse.wheel(0, -200);
        await holds(place, 50);
        await page.keyboard.press('PageDown');
        await holds(place, 0);
        await control.getByRole('button', { name: /to its default/ }).press('Enter');
        await holds(place, 40);
    });
});

test('what comes faster than it is answered is lost, or overtaken', async () => {
    await at('Trigger/Mode', async ({ page, control }) => {
        const choices = [1, 2, 1, 0, 2, 1, 0, 2];
        let answers = 0;
        page.on('response', (answer) => {
            answers += answer.url().endsWith('/write') ? 1 : 0;
        });
        await control.getByRole('listbox').evaluate((list, them) => {
            them.forEach((choice) => list.children[choice].click());
        }, choices);
        await until(async () => assert.equal(answers, choices.length));
        assert.equal((await host.node('Trigger/Mode')).value, 'FREE_RUN');
    });
    const place = 'Setup/Display/GridIntensity';
    await host.set(place, 0);
    await at(place, async ({ page, control }) => {
        await control.getByRole('spinbutton').focus();
        for (let i = 0; i < 15; ++i) {
            await page.keyboard.press('ArrowUp');
        }
        await holds(place, 75);
    });
});

test('a draft is lost, or overtaken by another user', async () => {
    const place = 'Setup/Display/TraceIntensity';
    await at(place, async ({ page, control }) => {
        const field = control.getByRole('spinbutton');
        await field.fill('3');
        await host.set(place, 70);
        await control.getByText('Changed meanwhile to 70 %').waitFor();
        assert.equal(await field.inputValue(), '3');
        await page.keyboard.press('Tab');
        await holds(place, 70);
        await field.press('Escape');
        await until(async () => assert.equal(await field.inputValue(), '70 %'));
    });
});

test('what is chosen for a reference is not what the instrument takes', async () => {
    const place = 'Logger/LoggerAttributes/LoggerChannel[0]/LoggerChannelSource/Item';
    await at(place, async ({ page, control }) => {
        await control.getByRole('button', { name: 'Items for Item' }).press('ArrowDown');
        await focusIs(page, /^None$/);
        await page.keyboard.press('ArrowDown');
        const chosen = await focused(page);
        await page.keyboard.press('Enter');
        await holds(place, chosen);
        await control.getByRole('link', { name: `Go to ${chosen}` }).waitFor();
        await control.getByRole('button', { name: 'Items for Item' }).press('ArrowUp');
        await control.getByRole('option', { name: chosen }).waitFor();
        await page.keyboard.press('Home');
        await page.keyboard.press('Enter');
        await holds(place, '');
    });
});

test('the focus does not follow an item that is renamed or removed', async () => {
    const place = 'Setup/Display/UserInterfaceLanguage';
    await at(place, async ({ page, control }) => {
        const name = control.getByRole('textbox', { name: 'Name of the new item' });
        for (const language of ['A', '<b>B</b>', 'C']) {
            await enter(name, language.replace(/[/]/g, ''));
            await until(async () => assert.equal(await name.inputValue(), ''));
        }
        await control.getByRole('button', { name: 'Rename <b>B<b>' }).press('Enter');
        await page.keyboard.type('A');
        await page.keyboard.press('Enter');
        await control.getByRole('alert').filter({ hasText: /in use/ }).waitFor();
        await page.keyboard.press('Control+A');
        await page.keyboard.type('<script>alert(1)');
        await page.keyboard.press('Enter');
        await focusIs(page, /^Rename <script>alert\(1\)$/);
        await control.getByRole('button', { name: /^Remove <script>/ }).press('Enter');
        await focusIs(page, /^Remove C$/);
        await page.keyboard.press('Enter');
        await focusIs(page, /^Remove A$/);
    });
});

test('what was chosen and is held back is not told', async () => {
    const place = 'Horizontal/Position';
    await host.set('Horizontal/Scale', '1 ms');
    await host.set(place, 5);
    await at(place, async ({ page, control }) => {
        await host.set('Horizontal/Scale', '100 ns');
        await control.getByText('5 s was chosen, and is held back').waitFor();
        await host.set('Horizontal/Scale', '1 ms');
        await until(async () => assert.equal(await control.getByText('held back').count(), 0));
    });
});
