// SPDX-License-Identifier: MIT
import { html, useEffect, useState } from '../html.js';
import { Phase } from '../connection.js';
import { texts } from '../texts/panel.js';
import { usePanelState } from './hooks.js';

const kSaidFor = 10000; // milliseconds for which the end of a break is told

/** What is said after a break, for some time. */
function useReturn(state) {
    const [isOver, setOver] = useState(false);
    useEffect(() => {
        setOver(false);
        const timer = setTimeout(() => setOver(true), kSaidFor);
        return () => clearTimeout(timer);
    }, [state]);
    if (state.phase !== Phase.LIVE || !state.wasBroken || isOver) {
        return '';
    }
    return state.isRead ? texts.connection.backRead(state.wasBroken)
        : texts.connection.back(state.wasBroken, state.missed);
}

/** Who operates the instrument: told by the service, or by the tree where it does not. */
function controlOf({ standing, store }) {
    return standing.control ?? (store.node('RemoteState')?.value === 'ON' ? 'remote' : 'local');
}

export function StatusBar() {
    const panel = usePanelState();
    const { state } = panel.connection;
    const back = useReturn(state);
    const control = controlOf(panel);
    const isBroken = state.phase === Phase.BROKEN;
    return html`<div class="status">
        <p role="status" aria-label=${texts.connection.label} class=${`badge is-${state.phase}`}>${
            back || texts.connection[state.phase]}</p>
        ${isBroken && html`<button type="button" class="button"
            onClick=${() => panel.connection.retry()}>${texts.connection.tryNow}</button>`}
        ${panel.standing.readOnly && html`<p class="badge is-closed"
            title=${texts.connection.readOnlyLong}>${texts.connection.readOnly}</p>`}
        ${control !== 'local' && html`<p role="status" class=${`badge is-${
            control === 'remote' ? 'remote' : 'locked'}`} title=${
            texts.connection.controlLong[control]}>${texts.connection.control[control]}</p>`}
    </div>`;
}
