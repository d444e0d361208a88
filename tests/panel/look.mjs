// SPDX-License-Identifier: MIT
// A picture of one view of a panel that is served: for who works at it.
//
//   node tests/panel/look.mjs http://127.0.0.1:5026/#/favourites picture.png [WIDTH] [dark]

import { startBrowser } from './browser.mjs';

const [address, picture, width = '1440', scheme = 'light'] = process.argv.slice(2);
const browser = await startBrowser();
const page = await browser.newPage({
    viewport: { width: Number(width), height: 900 }, colorScheme: scheme,
});
page.on('console', (message) => console.log(`${message.type()}: ${message.text()}`));
page.on('pageerror', (error) => console.log(error.stack));
await page.goto(address);
await page.waitForTimeout(1500);
await page.screenshot({ path: picture });
await browser.close();
