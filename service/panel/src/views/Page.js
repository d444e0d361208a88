// SPDX-License-Identifier: MIT
import { html, useEffect, useState } from '../html.js';
import { lastOf, titleOf, wayTo } from '../paths.js';
import { linkTo } from '../route.js';
import { texts } from '../texts/panel.js';
import { Facts } from './Facts.js';
import { useAgain, useNode, usePanel } from './hooks.js';
import { Mark } from './Mark.js';
import { NodeControl } from './NodeControl.js';
import { NodeRow, OldValue } from './NodeRow.js';
import { kFirst } from './rows.js';
import { Star } from './Star.js';
import { Trial } from './Trial.js';
import { Why } from './Why.js';

function Way({ path }) {
    return html`<nav class="way" aria-label=${texts.page.way}><ol>${wayTo(path).map((at) =>
        html`<li><a href=${linkTo(at)} aria-current=${at === path ? 'page' : undefined}>${
            lastOf(at) || texts.root}</a></li>`)}</ol></nav>`;
}

function CopyLink() {
    const [isCopied, setCopied] = useState(false);
    const copy = async () => {
        try {
            await navigator.clipboard.writeText(location.href);
            setCopied(true);
        } catch {
            setCopied(false); // the address line has it too
        }
    };
    // Browsers give the clipboard to secure addresses alone, to which this machine's own belongs.
    return navigator.clipboard ? html`<button type="button" class="button" onClick=${copy}>
        <span role="status">${isCopied ? texts.page.copied : texts.page.copy}</span></button>` : null;
}

function PropertyPart({ node }) {
    const [draft, setDraft] = useState(null);
    // What is typed of a secret is shown nowhere else.
    const isTried = node.kind === 'property' && !node.result && !node.secret;
    return html`
        <div class="main-control"><${NodeControl} node=${node} labelledBy="page-heading"
            onDraft=${setDraft} /><${OldValue} path=${node.path} /></div>
        ${isTried && html`<${Trial} node=${node} draft=${draft} />`}`;
}

function LinkRow({ path }) {
    const { store } = usePanel();
    const node = useNode(path);
    return node && html`<li><a href=${linkTo(path)}>${lastOf(path)}</a>${' '}
        <${Mark} node=${node} count=${store.differing(path)} />
        <span class="quiet"> ${node.meaning}</span></li>`;
}

/** Members, in parts that are told apart. */
function partsOf(store, path) {
    const parts = { property: [], action: [], group: [] };
    for (const member of store.children(path)) {
        const { kind } = store.node(member);
        const part = kind === 'property' ? 'property'
            : kind === 'function' || kind === 'operation' ? 'action'
                : 'group';
        // The control of a container lists its items.
        if (!member.startsWith(`${path}[`)) {
            parts[part].push(member);
        }
    }
    return parts;
}

function Members({ path }) {
    const { store } = usePanel();
    const again = useAgain();
    useEffect(() => {
        let structure = store.structure;
        return store.watch(() => {
            if (structure !== store.structure) {
                structure = store.structure;
                again();
            }
        });
    }, [store]);
    const [most, setMost] = useState(kFirst);
    const { property, action, group } = partsOf(store, path);
    const rows = (heading, paths) => paths.length > 0 && html`<section><h3>${heading}</h3>
        <ul class="node-rows">${paths.slice(0, most).map((member) =>
            html`<${NodeRow} key=${member} path=${member} />`)}</ul></section>`;
    const links = (heading, paths) => paths.length > 0 && html`<section><h3>${heading}</h3>
        <ul class="links">${paths.slice(0, most).map((member) =>
            html`<${LinkRow} key=${member} path=${member} />`)}</ul>
        ${paths.length > most && html`<button type="button" class="button" onClick=${() =>
            setMost(most + 5 * kFirst)}>${texts.tree.more(paths.length - most)}</button>`}
        </section>`;
    return html`
        ${rows(texts.page.members, property)}
        ${rows(texts.page.actions, action)}
        ${links(texts.page.groups, group)}`;
}

function NodePage({ node }) {
    const { store } = usePanel();
    const { path, kind } = node;
    const isGroup = ['group', 'array', 'map'].includes(kind);
    return html`<article class="page">
        <${Way} path=${path} />
        <div class="page-head">
            <h2 id="page-heading" tabindex="-1">${titleOf(path) || texts.root}</h2>
            <${Mark} node=${node} count=${store.differing(path)} />
            <${Star} path=${path} />
            <${CopyLink} key=${path} />
        </div>
        <p class="meaning">${node.meaning}</p>
        ${kind !== 'group' && html`<${PropertyPart} node=${node} />`}
        ${isGroup && html`<${Members} path=${path} />`}
        <${Why} path=${path} />
        <${Facts} node=${node} />
    </article>`;
}

/** There was one, or never was: what stands above it may lead on. */
function Missing({ path }) {
    const { store } = usePanel();
    const nearest = wayTo(path).reverse().find((at) => store.node(at));
    return html`<article class="page">
        <h2 tabindex="-1">${texts.page.missing(path)}</h2>
        <p>${texts.page.nearest} <a href=${linkTo(nearest)}>${nearest || texts.root}</a>.</p>
    </article>`;
}

/** The page of one node. */
export function Page({ path }) {
    const node = useNode(path);
    // Another node is another page: nothing that was typed or tried may reach it.
    return node ? html`<${NodePage} key=${path} node=${node} />`
        : html`<${Missing} path=${path} />`;
}
