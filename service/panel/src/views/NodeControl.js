// SPDX-License-Identifier: MIT
import { Control } from '../controls/Control.js';
import { html, useMemo } from '../html.js';
import { Phase } from '../connection.js';
import { lastOf } from '../paths.js';
import { reasonsOf } from '../reasons.js';
import { linkTo } from '../route.js';
import { suggestionsOf } from '../suggestions.js';
import { texts } from '../texts/panel.js';
import { usePanel, usePanelValue } from './hooks.js';

/** Why nothing at all can be written now, or nothing. */
function closedBy({ standing, connection }) {
    return standing.readOnly ? texts.connection.readOnlyLong
        : connection.state.phase === Phase.BROKEN ? texts.connection.lostLong : '';
}

/** The control of a node, bound to the service. */
export function NodeControl({ node, labelledBy, onDraft }) {
    const panel = usePanel();
    const closed = usePanelValue(closedBy);
    const { path } = node;
    const actions = useMemo(() => ({
        write: (change) => panel.write(path, change),
        run: () => panel.run(path),
        edit: (change) => panel.edit(path, change),
        why: (value) => reasonsOf(panel.store.node(path), value, panel.help),
        suggest: () => suggestionsOf(panel.store.node(path), panel.help)
    }), [panel, path]);
    const items = node.count === undefined ? undefined : panel.store.children(path)
        .filter((member) => member.startsWith(`${path}[`))
        .map((member) => ({ path: member, name: lastOf(member).slice(1, -1) }));
    return html`<${Control} node=${node} ...${actions} open=${linkTo} labelledBy=${labelledBy}
        onDraft=${onDraft} items=${items} closed=${closed} />`;
}
