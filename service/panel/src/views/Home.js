// SPDX-License-Identifier: MIT
import { showValue } from '../controls/quantity.js';
import { html, useEffect, useMemo } from '../html.js';
import { linkTo } from '../route.js';
import { shownOf } from '../shown.js';
import { differs } from '../store.js';
import { texts } from '../texts/panel.js';
import { useAgain, usePanel } from './hooks.js';

const kMost = 200;
const kPause = 250; // milliseconds between two drawings

/** Settings that differ from their defaults, in the order of the tree. */
function differingOf(store, path = '', found = []) {
    const node = store.node(path);
    if (found.length < kMost && store.differing(path) > 0) {
        if (differs(node)) {
            found.push(node);
        }
        store.children(path).forEach((member) => differingOf(store, member, found));
    }
    return found;
}

export function Home() {
    const { store } = usePanel();
    const again = useAgain();
    useEffect(() => {
        let timer = null; // a list is read by people
        const end = store.watch(() => {
            timer ??= setTimeout(() => {
                timer = null;
                again();
            }, kPause);
        });
        return () => {
            clearTimeout(timer);
            end();
        };
    }, [store]);
    const nodes = useMemo(() => differingOf(store), [store.version]);
    const count = store.differing('');
    return html`<article class="page">
        <h2 tabindex="-1">${texts.home.heading}</h2>
        <p>${texts.home.about}</p>
        <section><h3>${texts.home.differing}</h3>
            ${count === 0 && html`<p class="quiet">${texts.tree.noneDiffers}</p>`}
            <ul class="moves">${nodes.map((node) => html`<li key=${node.path}>
                <a href=${linkTo(node.path)}>${node.path}</a>
                <span class="aspects"><span class="aspect"><span class="quiet">${
                    texts.page.fact.default}${' '}${showValue(node, node.default)}</span><span
                    aria-hidden="true"> → </span><ins>${shownOf(node)}</ins></span></span></li>`)}
                ${count > nodes.length && html`<li class="quiet">${
                    texts.tree.more(count - nodes.length)}</li>`}</ul>
        </section>
    </article>`;
}
