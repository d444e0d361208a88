// SPDX-License-Identifier: MIT
import { html, useState } from '../html.js';
import { texts } from '../texts/panel.js';
import { usePanelState } from './hooks.js';

/** Asks for the token of a service that wants one. */
export function TokenForm() {
    const panel = usePanelState();
    const [token, setToken] = useState('');
    const isWrong = panel.connection.state.isWrong;
    const submit = (event) => {
        event.preventDefault();
        if (token.trim()) {
            panel.setToken(token.trim());
        }
    };
    return html`<article class="page">
        <h2 tabindex="-1">${texts.token.heading}</h2>
        <p>${texts.token.about}</p>
        <form class="token" onSubmit=${submit}>
            <label for="token">${texts.token.label}</label>
            <input id="token" class="field" type="password" autocomplete="off" value=${token}
                aria-invalid=${Boolean(isWrong)} aria-describedby="token-wrong"
                onInput=${(event) => setToken(event.target.value)} />
            <button type="submit" class="button is-main">${texts.token.show}</button>
            <p id="token-wrong" role="alert" class="refused">${isWrong ? texts.token.wrong : ''}</p>
        </form>
    </article>`;
}
