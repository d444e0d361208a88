// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useEffect, useState } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';

const kMostSources = 12;

/** Settings that the rows of a node's group follow, without the node itself and without actions. */
function sourcesOf(reasons, path) {
    const sources = (reasons?.rows ?? [])
        .filter((row) => row.what === 'Derive')
        .flatMap((row) => row.sources);
    return [...new Set(sources)].filter((source) => source !== path).slice(0, kMostSources);
}

/**
 * Why a value can not be selected, and what would offer it.
 *
 * @param {{path: string, value: string, shown: string, why: function(string): Promise<object>,
 *     open: function(string): string}} properties
 */
export function Why({ path, value, shown, why, open }) {
    const [reasons, setReasons] = useState(undefined);
    useEffect(() => {
        let isWanted = true;
        setReasons(undefined);
        Promise.resolve(why?.(value)).catch(() => null)
            .then((answer) => isWanted && setReasons(answer ?? null));
        return () => {
            isWanted = false;
        };
    }, [path, value]);

    const link = (target, text) => (open && !target.includes('[each]')
        ? html`<a href=${open(target)}>${text}</a>` : text);
    const offers = reasons?.offers;
    const sources = offers ? [] : sourcesOf(reasons, path);
    return html`<div class="why">
        <p>${texts.notSelectable(shown)} ${reasons === undefined && why && texts.whyAsked}</p>
        ${offers?.length > 0 && html`<p>${texts.offeredBy}</p>
            <ul>${offers.map((one) => html`<li key=${one.path + one.value}
                >${link(one.path, texts.offerIs(one.path, one.shown))}</li>`)}</ul>`}
        ${offers?.length === 0 && html`<p>${texts.noReason}</p>`}
        ${sources.length > 0 && html`<p>${texts.dependsOn}</p>
            <ul>${sources.map((source) => html`<li key=${source}>${link(source, source)}</li>`)}</ul>`}
    </div>`;
}
