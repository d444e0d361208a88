// SPDX-License-Identifier: MIT
import { html, useEffect, useMemo, useRef, useState } from '../html.js';
import { Phase } from '../connection.js';
import { titleOf } from '../paths.js';
import { texts } from '../texts/panel.js';
import { UndoButtons, useUndoKeys } from './History.js';
import { useNode, usePanelValue, useRoute } from './hooks.js';
import { Moved, MovedButton } from './Moved.js';
import { Page } from './Page.js';
import { SearchField, SearchResults } from './Search.js';
import { StatusBar } from './StatusBar.js';
import { TokenForm } from './TokenForm.js';
import { Tree } from './Tree.js';
import { views } from './views.js';

function Navigation({ route }) {
    return html`<nav aria-label=${texts.views.label} class="views">${views.map(({ name, title }) =>
        html`<a href=${`#/${name}`} aria-current=${route.view === name ? 'page' : undefined}>${
            title}</a>`)}</nav>`;
}

/** A key that leads to the search, except where text is typed. */
function useSearchKey(field) {
    useEffect(() => {
        const onKey = (event) => {
            if (event.key === '/' && !event.target.closest?.('input, textarea, select')) {
                event.preventDefault();
                field.current?.focus();
            }
        };
        addEventListener('keydown', onKey);
        return () => removeEventListener('keydown', onKey);
    }, []);
}

/** The title says where one is, and the heading gets the focus, as on a page that was loaded. */
function useArrival(route, title, isAsked) {
    const isFirst = useRef(true);
    useEffect(() => {
        document.title = title ? `${title} – ${texts.title}` : texts.title;
        if (isFirst.current) {
            isFirst.current = false;
            return;
        }
        const side = document.activeElement?.closest('.side');
        document.getElementById('page').scrollTo(0, 0);
        // Who walks through the tree or the results stays there where both are to be seen.
        if (!side || side.getClientRects().length === 0) {
            scrollTo(0, 0);
            document.querySelector('main h2')?.focus();
        }
    }, [route.view, route.path, isAsked]);
}

function Content({ route, hasRoot, phase }) {
    if (phase === Phase.TOKEN) {
        return html`<${TokenForm} />`;
    }
    if (!hasRoot) {
        return html`<p class="page quiet">${texts.connection[phase]}</p>`;
    }
    if (route.view === 'p') {
        return html`<${Page} path=${route.path} />`;
    }
    const { view: View } = views.find(({ name }) => name === route.view) ?? views[0];
    return html`<${View} />`;
}

export function App() {
    const phase = usePanelValue(({ connection }) => connection.state.phase);
    const hasRoot = useNode('') !== null;
    const route = useRoute();
    const [query, setQuery] = useState('');
    const field = useRef(null);
    useUndoKeys();
    useSearchKey(field);
    const view = views.find(({ name }) => name === route.view);
    useArrival(route, route.view === 'p' ? titleOf(route.path) : route.view && view?.title,
        phase === Phase.TOKEN);
    useEffect(() => setQuery((before) => (matchMedia('(min-width: 60rem)').matches ? before : '')),
        [route.view, route.path]);

    const hasMoves = usePanelValue(({ steps }) => steps.moved().size > 0);
    const isSearching = query.trim() !== '';
    // A key of the search draws what it changes, and not the page beside it.
    const page = useMemo(() => html`
        ${phase === Phase.BROKEN && hasRoot && html`<p class="banner">${
            texts.connection.brokenLong}</p>`}
        <${Content} route=${route} hasRoot=${hasRoot} phase=${phase} />`, [route, hasRoot, phase]);
    const top = useMemo(() => html`<${Navigation} route=${route} />
        <${UndoButtons} isShort /><${MovedButton} /><${StatusBar} />`, [route]);
    const moved = useMemo(() => hasRoot && html`<${Moved} />`, [hasRoot]);
    const endSearch = (isOver) => {
        if (isOver) {
            setQuery('');
        }
        field.current?.focus();
    };
    return html`
        <a class="skip" href="#page" onClick=${(event) => {
            event.preventDefault();
            document.getElementById('page').focus();
        }}>${texts.skip}</a>
        <header class="top">
            <h1><a href="#/">${texts.title}</a></h1>
            <${SearchField} query=${query} onQuery=${setQuery} field=${field} />
            ${top}
        </header>
        <div class=${`panes ${isSearching ? 'is-searching' : route.view === '' ? 'is-home'
            : 'is-page'} ${hasMoves ? 'has-moves' : ''}`}>
            <div class="side">
                ${hasRoot && (isSearching
                    ? html`<${SearchResults} query=${query} onEnd=${endSearch} />`
                    : html`<nav aria-label=${texts.tree.label}><${Tree}
                        chosen=${route.view === 'p' ? route.path : null} /></nav>`)}
            </div>
            <main id="page" tabindex="-1">${page}</main>
            ${moved}
        </div>`;
}
