// SPDX-License-Identifier: MIT
// What a user could write where no change tells of it: files that are there, items that a reference
// takes.

const kMostTried = 256; // writes of one request
const kMostItems = 1024;

/** Files that the setting could name. */
async function filesOf(node, { ask }) {
    const answer = await ask('GET', `/files?path=${encodeURIComponent(node.path)}`);
    return (answer?.files ?? []).map((name) => ({ value: name, shown: name }));
}

/** Whether a reference could be kept, after a trial of it. Items that no file holds, such as languages
    that are installed, are not in the copy, and can not be tried. */
function mayStand({ code, name, now }, path) {
    return name === 'NOT_FOUND' || (code <= 1 && now.value === path);
}

/**
 * Items that the reference would keep. Rules decide that, so a trial writes all of them to a copy:
 * those that stand afterwards are offered.
 */
async function targetsOf(node, { ask, paths: all }) {
    const paths = all().filter((path) => path.endsWith(']')).slice(0, kMostItems);
    const taken = [];
    for (let at = 0; at < paths.length; at += kMostTried) {
        const writes = paths.slice(at, at + kMostTried).map((value) => ({ path: node.path, value }));
        const answer = await ask('POST', '/trial', { writes });
        (answer?.writes ?? []).forEach((report, index) => {
            const { value } = writes[index];
            if (mayStand(report, value)) {
                taken.push({ value, shown: value });
            }
        });
    }
    return taken;
}

/**
 * @param {object} node  a property of type filepath or reference; of others there is nothing to suggest
 * @param {{ask: function(string, string, object=): Promise<?object>, paths: function(): string[]}} from
 *     asks the service, and tells the paths of all nodes
 * @returns {Promise<{value: string, shown: string}[]>}
 */
export async function suggestionsOf(node, from) {
    return node.type === 'filepath' ? filesOf(node, from)
        : node.type === 'reference' ? targetsOf(node, from) : [];
}
