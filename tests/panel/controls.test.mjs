// SPDX-License-Identifier: MIT
// Each kind of control, as a user meets it on the page of a node.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { enter, until } from './browser.mjs';
import { at, holds, host, serve } from './served.mjs';

serve();

/** Items of a container as another client reads them. */
async function itemsOf(place) {
    return (await host.node(place)).items.map(({ name }) => name);
}

test('a number is not taken with its unit, not stepped, or shows other limits', async () => {
    await at('Horizontal/Scale', async ({ page, control }) => {
        const field = control.getByRole('spinbutton', { name: 'Scale' });
        await enter(field, '2 ms');
        await holds('Horizontal/Scale', 0.002);
        await field.press('ArrowUp');
        await holds('Horizontal/Scale', 0.005);
        await control.getByRole('button', { name: 'one step down' }).click();
        await holds('Horizontal/Scale', 0.002);
        await until(async () => assert.equal(await field.inputValue(), '2 ms/div'));
        await field.focus();
        await field.hover();
        await page.mouse.wheel(0, -100);
        await holds('Horizontal/Scale', 0.005);
        await control.getByRole('img',
            { name: 'From 1 ns/div to 500 s/div, default 100 ns/div, now 5 ms/div' }).waitFor();
    });
});

test('a refusal is not said at the control, or moves something', async () => {
    await host.set('Horizontal/Scale', '2 ms');
    await at('Horizontal/Scale', async ({ page, control }) => {
        const field = control.getByRole('spinbutton', { name: 'Scale' });
        for (const [typed, reason] of [['1e99', /above the maximum.*1 ns\/div.*500 s\/div/],
            ['two', /Refused/], ['3 V', /Refused/]]) {
            await enter(field, typed);
            await control.getByRole('alert').filter({ hasText: reason }).waitFor();
            assert.equal(await field.getAttribute('aria-invalid'), 'true', typed);
            const says = (await field.getAttribute('aria-describedby')).split(' ')
                .map((id) => page.locator(`[id="${id}"]`));
            const described = (await Promise.all(says.map((part) => part.textContent()))).join(' ');
            assert.match(described, reason);
            assert.equal(await field.inputValue(), typed);
        }
        await holds('Horizontal/Scale', 0.002);
        await field.press('Escape');
        assert.equal(await field.inputValue(), '2 ms/div');
        assert.equal(await field.getAttribute('aria-invalid'), 'false');
    });
});

test('a value that can not be selected is taken, or nothing says why it can not', async () => {
    await at('Trigger/Type', async ({ page, control }) => {
        await control.getByRole('button').first().click();
        const list = control.getByRole('listbox');
        const closed = list.getByRole('option', { name: /^Bus/ });
        assert.equal(await closed.getAttribute('aria-disabled'), 'true');
        await closed.click({ force: true }); // it is marked as disabled, which users do not mind
        await control.getByText(/can not be selected now/).waitFor();
        await holds('Trigger/Type', 'EDGE');
        await page.keyboard.press('Home');
        await list.getByRole('option', { name: /Width/i }).click();
        await holds('Trigger/Type', 'WIDTH');
    });
});

test('a switch does not switch, or shows another state', async () => {
    const place = 'Vertical/Channel[1]/Enabled';
    const { value } = await host.node(place);
    const other = { ON: 'OFF', OFF: 'ON' }[value];
    await at(place, async ({ control }) => {
        const button = control.getByRole('switch', { name: 'Enabled' });
        assert.equal(await button.getAttribute('aria-checked'), String(value === 'ON'));
        await button.press('Space');
        await holds(place, other);
        await until(async () => assert.equal(await button.getAttribute('aria-checked'),
            String(other === 'ON')));
    });
});

test('a text is cut, or its length and form are not said', async () => {
    await at('Vertical/Channel[0]/Label', async ({ control }) => {
        const field = control.getByRole('textbox', { name: 'Label' });
        await enter(field, 'Übertrager "1" 😀');
        await control.getByRole('alert').filter({ hasText: /Refused.*16 characters/ }).waitFor();
        await field.fill(' Ω "1" 😀');
        await control.getByRole('button', { name: 'Set Label', exact: true }).click();
        await holds('Vertical/Channel[0]/Label', ' Ω "1" 😀');
    });
    await at('Setup/Wireless/WirelessAccesspoint/Passphrase', async ({ control }) => {
        const field = control.getByLabel('Passphrase').and(control.locator('input'));
        await enter(field, 'short');
        await control.getByRole('alert').filter({ hasText: /Refused.*8 to 63/ }).waitFor();
        assert.equal(await field.getAttribute('type'), 'password');
    });
});

test('bits are not set one by one, or a wrong pattern is taken', async () => {
    const place = 'Trigger/SerialPatternTriggerSettings/Pattern';
    await at(place, async ({ page, control }) => {
        const field = control.getByRole('textbox', { name: 'Pattern' });
        await enter(field, '10x2');
        await control.getByRole('alert').filter({ hasText: /Refused/ }).waitFor();
        await enter(field, '1010 xxxx');
        await holds(place, '1010XXXX');
        await control.getByRole('group', { name: /bits/i }).getByRole('button').nth(4).focus();
        await page.keyboard.type('01');
        await control.getByRole('button', { name: 'Set Pattern', exact: true }).click();
        await holds(place, '101001XX');
    });
});

test('a file outside of the folder, or an item that is not there, is taken', async () => {
    const markers = 'Spectrum/SpectrumMarkers/SpectrumMarker';
    await host.ask('/items', { path: markers, do: 'insert' });
    for (const [place, name, wrong, right] of [
        ['SaveRecall/File', 'File', '../bench.xml', 'bench.xml'],
        ['Spectrum/SpectrumMarkers/SelectedMarker', 'SelectedMarker', `${markers}[7]`, `${markers}[0]`],
    ]) {
        await at(place, async ({ control }) => {
            const field = control.getByLabel(name).and(control.locator('input'));
            await enter(field, wrong);
            await control.getByRole('alert').filter({ hasText: /Refused/ }).waitFor();
            await enter(field, right);
            await holds(place, right);
        });
    }
});

test('bytes come out otherwise than they were typed', async () => {
    const place = 'Setup/BgDetection/ServiceI2CAccess/WriteData';
    await at(place, async ({ control }) => {
        const field = control.getByLabel('WriteData').and(control.locator('input:not([type=file])'));
        await enter(field, '00 fg');
        await holds(place, '');
        await enter(field, '00 ff 10');
        await holds(place, Buffer.from([0, 255, 16]).toString('base64'));
        await control.locator('input[type=file]').setInputFiles({
            name: 'bytes', mimeType: 'application/octet-stream', buffer: Buffer.from([1, 2]),
        });
        await holds(place, 'AQI=');
    });
});

test('an invalid result shows a value, or can be written', async () => {
    await at('Setup/BgDetection/Mainboard/Temperature', async ({ control }) => {
        await control.getByText('No valid value at present').waitFor();
        assert.equal(await control.getByRole('textbox').count(), 0);
        assert.doesNotMatch(await control.innerText(), /\d/);
    });
});

test('a setting that is not available takes what is typed', async () => {
    await at('Setup/EthernetGateway', async ({ control }) => {
        await control.getByText('Not available').waitFor();
        const field = control.getByRole('textbox', { name: 'EthernetGateway' });
        assert.equal(await field.isEditable(), false);
    });
});

test('an action says nothing of its end, or of why it refused', async () => {
    await host.set('Horizontal/Scale', '2 ms');
    await at('Preset', async ({ control }) => {
        await control.getByRole('button', { name: /Preset/ }).click();
        await control.getByRole('status').filter({ hasText: /Done|Ran|ended/i }).first().waitFor();
        await holds('Horizontal/Scale', 1e-7);
    });
    await at('Vertical/ReferenceCurve/SetToOriginal', async ({ control }) => {
        await control.getByRole('button', { name: /SetToOriginal/ }).click();
        await control.getByRole('alert').filter({ hasText: /Refused/ }).waitFor();
    });
});

test('an operation keeps the page from anything else until it has ended', async () => {
    await at('Setup/Selftest/Start', async ({ control }) => {
        const button = control.getByRole('button', { name: /Start/ });
        await button.click();
        await control.getByRole('status').filter({ hasText: /\w/ }).first().waitFor();
        await until(async () => assert.notEqual(await button.getAttribute('aria-disabled'), 'true'));
    });
});

test('items of an array are not inserted, moved, chosen or removed as shown', async () => {
    const place = 'Spectrum/SpectrumMarkers/SpectrumMarker';
    while ((await itemsOf(place)).length > 0) {
        await host.ask('/items', { path: place, do: 'remove', key: '0' });
    }
    await at(place, async ({ control }) => {
        const insert = control.getByRole('button', { name: /Insert/i });
        const rows = control.getByRole('listitem');
        await insert.click();
        await until(async () => assert.equal(await rows.count(), 1));
        await insert.click();
        await until(async () => assert.equal(await rows.count(), 2));
        await host.set(`${place}[1]/Enabled`, false);
        await rows.nth(1).getByRole('button', { name: /activate/i }).click();
        await until(async () => assert.equal((await host.node(place)).active, '1'));
        await rows.nth(1).getByRole('button', { name: /up/i }).click();
        await until(async () => assert.equal((await host.node(`${place}[0]/Enabled`)).value, 'OFF'));
        await rows.nth(0).getByRole('button', { name: /remove/i }).click();
        await until(async () => assert.equal(await rows.count(), 1));
        assert.equal((await host.node(`${place}[0]/Enabled`)).value, 'ON');
    });
});

test('items of a map get other names than were typed, or a name that another has', async () => {
    const place = 'SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem';
    await at(place, async ({ page, control }) => {
        const name = control.getByRole('textbox', { name: /name/i }).last();
        for (const key of ['Engine', 'Gear']) {
            await enter(name, key);
            await control.getByRole('link', { name: key }).waitFor();
        }
        await enter(name, 'Gear');
        await control.getByRole('alert').filter({ hasText: /Refused/ }).waitFor();
        await control.getByRole('button', { name: /Rename.*Gear/i }).click();
        await page.keyboard.type('Brake');
        await page.keyboard.press('Enter');
        await control.getByRole('link', { name: 'Brake' }).waitFor();
        assert.deepEqual((await itemsOf(place)).sort(), ['Brake', 'Engine']);
        await control.getByRole('button', { name: /Remove.*Engine/i }).click();
        await until(async () => assert.deepEqual(await itemsOf(place), ['Brake']));
    });
});
