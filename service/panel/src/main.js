// SPDX-License-Identifier: MIT
// Starts the panel.

import { html, render } from './html.js';
import { Panel } from './panel.js';
import { App } from './views/App.js';
import { PanelContext } from './views/hooks.js';

const panel = new Panel();
render(html`<${PanelContext.Provider} value=${panel}><${App} /></${PanelContext.Provider}>`,
    document.getElementById('panel'));
panel.start();
