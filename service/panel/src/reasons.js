// SPDX-License-Identifier: MIT
// Why a value can not be selected, and which other settings would offer it.

const kMostWrites = 256; // of one trial
const kWritesOfTry = 3;
const kMostOffers = 12;
const kEach = '[each]';

/** Whether a path is what a row names as its source; "[each]" stands for every item. */
function isSource(source, path) {
    const parts = source.split(kEach);
    let at = 0;
    for (const [i, part] of parts.entries()) {
        if (i > 0) {
            const end = path[at] === '[' ? path.indexOf(']', at) + 1 : 0;
            if (end === 0) {
                return false;
            }
            at = end;
        }
        if (!path.startsWith(part, at)) {
            return false;
        }
        at += part.length;
    }
    return at === path.length;
}

/** Settings that the rows of a group follow, by name first; a row of any setting follows all of its
    group. */
function sourcesOf(rows, from) {
    const derived = rows.filter(({ what }) => what !== '');
    const isNamed = (path) => derived.some(({ sources }) =>
        sources.some((source) => isSource(source, path)));
    const isOfGroup = (path) => derived.some(({ word, group }) =>
        word === 'OnAny' && path.slice(0, path.lastIndexOf('/')) === group);
    const all = from.paths();
    return [...new Set([...all.filter(isNamed), ...all.filter(isOfGroup)])];
}

/** Each choice of these settings, with the value that takes it back. */
function triesOf(sources, node, from) {
    const isChoice = (one) => one?.values && !one.result && one.availability === 'available'
        && one.path !== node.path;
    return sources.map((path) => from.node(path)).filter(isChoice)
        .flatMap((one) => one.values
            .filter(({ value }) => value !== one.value && one.selectable.includes(value))
            .map(({ value, shown }) => ({ path: one.path, value, shown, before: one.value })))
        .slice(0, Math.floor(kMostWrites / kWritesOfTry));
}

/**
 * Tries each choice on a copy of the tree, and takes it back: the report of the node, which is
 * written with what stands there and so does not move, tells what it offers meanwhile.
 */
async function offersOf(tries, node, value, { ask }) {
    const writes = tries.flatMap(({ path, value: choice, before }) => [
        { path, value: choice }, { path: node.path, value: node.value }, { path, value: before },
    ]);
    const answer = writes.length > 0 ? await ask('POST', '/trial', { writes }) : null;
    const offers = tries.filter((_, i) => answer?.writes?.[i * kWritesOfTry + 1]
        ?.now.selectable.includes(value));
    return offers.slice(0, kMostOffers);
}

/**
 * @param {object} node  a property with choices
 * @param {*} value  one that can not be selected now
 * @param {{ask: function(string, string, object=): Promise<?object>, node: function(string): ?object,
 *     paths: function(): string[]}} from  asks the service, and tells nodes and all their paths
 * @returns {Promise<{sources: string[], offers: {path: string, value: string, shown: string}[]}>}
 *     settings that the group of the node follows, and single choices after which the value can be
 *     selected
 */
export async function reasonsOf(node, value, from) {
    const answer = await from.ask('GET', `/why?path=${encodeURIComponent(node.path)}`);
    const sources = sourcesOf(answer?.rows ?? [], from).filter((path) => path !== node.path
        && from.node(path)?.kind === 'property');
    return { sources, offers: await offersOf(triesOf(sources, node, from), node, value, from) };
}
