// SPDX-License-Identifier: MIT
import { html } from '../html.js';
import { titleOf } from '../paths.js';
import { texts } from '../texts/panel.js';
import { usePanel, usePanelValue } from './hooks.js';

export function Star({ path }) {
    const panel = usePanel();
    const isOn = usePanelValue(({ favourites }) => favourites.has(path));
    const label = texts.favourites.add(titleOf(path) || texts.root);
    return html`<button type="button" class="star" aria-pressed=${isOn} aria-label=${label}
        title=${label} onClick=${() => panel.toggleFavourite(path)}>
        <svg viewBox="0 0 24 24" width="20" height="20" aria-hidden="true"><path
            d="M12 3l2.7 5.9 6.3.7-4.7 4.3 1.3 6.3-5.6-3.2-5.6 3.2 1.3-6.3L3 9.6l6.3-.7z" /></svg>
    </button>`;
}
