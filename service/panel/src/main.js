// SPDX-License-Identifier: MIT
// Starts the panel.

import { html, render } from './html.js';
import { Panel } from './panel.js';
import { texts } from './texts/panel.js';
import { PanelContext, useNode, usePanelState } from './views/hooks.js';
import { Tree } from './views/Tree.js';

function App() {
    const { connection } = usePanelState();
    const root = useNode('');
    return html`
        <header><h1>${texts.title}</h1>
            <p role="status">${texts.connection[connection.state.phase]}</p></header>
        <main>${root && html`<${Tree} />`}</main>`;
}

const panel = new Panel();
render(html`<${PanelContext.Provider} value=${panel}><${App} /></${PanelContext.Provider}>`,
    document.getElementById('panel'));
panel.start();
