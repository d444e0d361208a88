// SPDX-License-Identifier: MIT
import { html, useEffect, useState } from '../html.js';
import { linkTo } from '../route.js';
import { texts } from '../texts/panel.js';
import { usePanel } from './hooks.js';

/** A source of a rule; one that stands for each item leads to the container. */
function Source({ path }) {
    const at = path.indexOf('[each]');
    return html`<a href=${linkTo(at < 0 ? path : path.slice(0, at))}>${path}</a>`;
}

function Rule({ row, path }) {
    const sources = row.sources.filter((source) => source !== path);
    const steps = row.steps.length > 0 ? row.steps : [row.word === 'Twins' ? texts.why.twins
        : row.what];
    return html`<li>
        <span class="rule-word">${row.group || texts.root}: ${row.word}</span>${' '}
        ${sources.map((source, at) => html`${at > 0 && ', '}<${Source} path=${source} />`)}
        ${' '}<span class="quiet" aria-hidden="true">→</span> <span>${steps.join(', ')}</span>
    </li>`;
}

const Rules = ({ rows, path }) => html`<ul class="rules">${rows.map((row) =>
    html`<${Rule} key=${`${row.group} ${row.row}`} row=${row} path=${path} />`)}</ul>`;

/** The rules that a node starts, and those that may move it. */
export function Why({ path }) {
    const panel = usePanel();
    const [reasons, setReasons] = useState(null);
    const [isOpen, setOpen] = useState(false);
    useEffect(() => {
        setReasons(null);
        let isOld = false;
        if (isOpen) {
            panel.why(path).then((answer) => isOld || setReasons(answer?.rows ? answer : false));
        }
        return () => {
            isOld = true;
        };
    }, [path, isOpen]);
    const group = (heading, rows, none) => html`<h4>${heading}</h4>${rows.length === 0
        ? html`<p class="quiet">${none}</p>` : html`<${Rules} rows=${rows} path=${path} />`}`;
    return html`<details class="couplings" onToggle=${(event) => setOpen(event.currentTarget.open)}>
        <summary><h3>${texts.why.heading}</h3></summary>
        ${reasons === false && html`<p class="refused">${texts.why.lost}</p>`}
        ${reasons && group(texts.why.starts, reasons.starts, texts.why.startsNothing)}
        ${reasons && group(texts.why.follows, reasons.rows.filter((row) =>
            !(row.sources.length === 1 && row.sources[0] === path)), texts.why.followsNothing)}
    </details>`;
}
