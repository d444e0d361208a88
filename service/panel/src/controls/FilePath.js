// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { controls as texts } from '../texts/controls.js';
import { Suggested } from './Suggested.js';

function endings(extensions) {
    return extensions.map((extension) => `.${extension}`).join(', ');
}

/** What the file may be called, as far as the service tells it. */
function hintsOf({ folder, openExtensions = [], saveExtensions = [] }) {
    const [opened, saved] = [endings(openExtensions), endings(saveExtensions)];
    return [
        folder && texts.folderIs(folder),
        opened && opened === saved && texts.endsIn(opened),
        opened && opened !== saved && texts.opens(opened),
        saved && opened !== saved && texts.saves(saved),
    ].filter(Boolean);
}

/** The name of a file in the instrument's folder: one that is there, or a new one. */
export function FilePath(properties) {
    const { node } = properties;
    return html`<${Suggested} kind="file" none=${texts.noFile}
        listLabel=${texts.filesOf(node.name)} ...${properties}>
        ${hintsOf(node).map((hint) => html`<p class="control-hint" key=${hint}>${hint}</p>`)}
    <//>`;
}
