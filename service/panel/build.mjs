// SPDX-License-Identifier: MIT
// Makes of the sources what the service serves: index.html, panel.js, panel.css and the licences of
// what is in them. The same sources and lock file give the same bytes on every machine.
//
//   node build.mjs [FOLDER] [--watch]     FOLDER is bundle/ beside this file unless named

import { build, context } from 'esbuild';
import { mkdir, readFile, readdir, writeFile } from 'node:fs/promises';
import path from 'node:path';
import { fileURLToPath } from 'node:url';

const here = path.dirname(fileURLToPath(import.meta.url));
const folder = path.resolve(process.argv.slice(2).find((word) => !word.startsWith('--')) ??
    path.join(here, 'bundle'));

// What the panel uses none of stands in objects, where no bundler can see that: ways to draw lines,
// and what a page of charts would ask of the class itself.
const unusedOfCharts = [
    /\(paths\.(?:stepped|bars|spline)\s*= \w+\);/g,
    /^\s*uPlot\.(?:assign|\w*range\w+|fmt\w+|orient|join|tzDate|sync|addGap|clipGaps)\s*= \w+;/gmi,
];

const lean = {
    name: 'lean',
    setup({ onLoad }) {
        // Templates keep the blanks that indent them, of which a page shows nothing.
        onLoad({ filter: /[/\\]src[/\\].*\.js$/ }, async ({ path: file }) => ({
            contents: (await readFile(file, 'utf8')).replace(/\n[ \t]+/g, '\n'),
        }));
        onLoad({ filter: /uPlot\.esm\.js$/ }, async ({ path: file }) => {
            let contents = await readFile(file, 'utf8');
            for (const unused of unusedOfCharts) {
                if (!unused.test(contents)) {
                    throw new Error(`${file} no longer has ${unused}`);
                }
                contents = contents.replace(unused, '');
            }
            return { contents };
        });
    },
};

const options = {
    absWorkingDir: here,
    entryPoints: { panel: 'src/main.js' },
    outdir: folder,
    bundle: true,
    format: 'esm',
    target: 'es2022',
    charset: 'utf8',
    minify: true,
    legalComments: 'none', // LICENCES.txt has them, whole
    metafile: true,
    plugins: [lean],
    logLevel: 'warning',
};

/** Names of the packages of which something is in the bundle. */
function packagesOf(...metafiles) {
    const names = metafiles.flatMap(({ outputs }) => Object.values(outputs))
        .flatMap(({ inputs }) => Object.entries(inputs))
        .filter(([, { bytesInOutput }]) => bytesInOutput > 0)
        .map(([file]) => file.match(/(?:^|\/)node_modules\/((?:@[^/]+\/)?[^/]+)/)?.[1])
        .filter((name) => name !== undefined);
    return [...new Set(names)].sort();
}

async function licenceOf(name) {
    const home = path.join(here, 'node_modules', name);
    const { version, license } = JSON.parse(await readFile(path.join(home, 'package.json'), 'utf8'));
    const file = (await readdir(home)).find((entry) => /^licen[cs]e/i.test(entry));
    if (file === undefined) {
        throw new Error(`${name} has no text of its licence, which the bundle needs`);
    }
    const text = (await readFile(path.join(home, file), 'utf8')).replaceAll('\r\n', '\n').trim();
    return `${name} ${version} (${license})\n${'-'.repeat(72)}\n${text}\n`;
}

async function writeLicences(names) {
    const texts = await Promise.all(names.map(licenceOf));
    const head = 'The panel is under the MIT licence, as the project. Its script and style also have'
        + '\nparts of these packages:\n';
    await writeFile(path.join(folder, 'LICENCES.txt'), [head, ...texts].join('\n'));
}

const style = { ...options, entryPoints: { panel: 'style.css' } };
await mkdir(folder, { recursive: true });
const built = await Promise.all([build(options), build(style)]);
await writeLicences(packagesOf(...built.map(({ metafile }) => metafile)));
await Promise.all(['index.html', 'icon.svg'].map(async (name) =>
    writeFile(path.join(folder, name), await readFile(path.join(here, name)))));

if (process.argv.includes('--watch')) {
    await Promise.all([options, style].map(async (of) => (await context(of)).watch()));
    console.log(`panel: ${folder} follows the sources`);
}
