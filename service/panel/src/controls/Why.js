// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useEffect, useState } from 'preact/hooks';
import { controls as texts } from '../texts/controls.js';

const kMostSources = 12;

/**
 * Why a value can not be selected, and what would offer it.
 *
 * @param {{path: string, value: string, shown: string, open: function(string): string,
 *     why: function(string): Promise<object>}} properties  `why` as reasonsOf in reasons.js
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

    const link = (target, text) => (open ? html`<a href=${open(target)}>${text}</a>` : text);
    const offers = reasons?.offers ?? [];
    const sources = offers.length > 0 ? [] : reasons?.sources ?? [];
    const more = sources.length - kMostSources;
    return html`<div class="why">
        <p>${texts.notSelectable(shown)} ${reasons === undefined && why && texts.whyAsked}</p>
        ${offers.length > 0 && html`<p>${texts.offeredBy}</p>
            <ul>${offers.map((one) => html`<li key=${one.path + one.value}
                >${link(one.path, texts.offerIs(one.path, one.shown))}</li>`)}</ul>`}
        ${sources.length > 0 && html`<p>${texts.noReason} ${texts.dependsOn}</p>
            <ul>${sources.slice(0, kMostSources).map((source) =>
                html`<li key=${source}>${link(source, source)}</li>`)}</ul>
            ${more > 0 && html`<p>${texts.andMore(more)}</p>`}`}
    </div>`;
}
