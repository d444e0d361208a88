// SPDX-License-Identifier: MIT
import { isRefused, sentenceOf } from '../controls/Frame.js';
import { isNumeric } from '../controls/quantity.js';
import { html, useEffect, useState } from '../html.js';
import { texts } from '../texts/panel.js';
import { usePanel } from './hooks.js';
import { MoveList } from './MoveList.js';

function Value({ node, value, onValue }) {
    const on = (event) => onValue(event.target.value);
    return node.values
        ? html`<select id="trial-value" class="field" value=${value} onChange=${on}>
            ${node.values.map((one) => html`<option value=${one.value}>${one.shown}</option>`)}
        </select>`
        : html`<input id="trial-value" class="field" value=${value} autocomplete="off"
            spellcheck="false" aria-describedby="trial-says" onInput=${on} />`;
}

/** What the trial answered. */
function Outcome({ node, answer, onWrite }) {
    const { store } = usePanel();
    const report = answer.writes?.[0] ?? answer;
    const named = (path, state) => state ? { ...state, values: store.node(path)?.values } : null;
    const moves = (answer.changes ?? []).map(({ path, before, now }) =>
        ({ path, before: named(path, before), now: named(path, now) }));
    const says = isRefused(report) ? sentenceOf(node, report)
        : [sentenceOf(node, report), moves.length === 0 ? texts.trial.nothing
            : `${texts.trial.moves(moves.length)}.`].filter(Boolean).join(' ');
    return html`
        <p id="trial-says" role="status" class=${isRefused(report) ? 'refused' : ''}>${says}</p>
        ${answer.unlike?.length > 0 && html`<p class="quiet">${
            texts.trial.unlike(answer.unlike.length)}</p>`}
        ${moves.length > 0 && html`<${MoveList} moves=${moves} />
            <button type="button" class="button" onClick=${onWrite}>${texts.trial.write}</button>`}`;
}

/**
 * What would move if the property had another value.
 * @param {?string} properties.draft what is typed at the control and not yet written
 */
export function Trial({ node, draft }) {
    const panel = usePanel();
    const standing = isNumeric(node.type) ? node.shown : node.text;
    const [value, setValue] = useState(draft ?? standing);
    const [state, setState] = useState({ isTrying: false, answer: null });
    useEffect(() => {
        if (draft !== null) {
            setValue(draft);
        }
    }, [draft]);
    const drop = () => setState({ isTrying: false, answer: null });
    const submit = async (event) => {
        event.preventDefault();
        setState({ isTrying: true, answer: null });
        const answer = await panel.try(node.path, { value });
        setState({ isTrying: false, answer: answer ?? { isLost: true } });
    };
    const write = async () => {
        const answer = await panel.write(node.path, { value });
        setState({ isTrying: false, answer: answer?.kept ? null : answer ?? { isLost: true } });
    };
    const { isTrying, answer } = state;
    return html`<section class="trial" aria-labelledby="trial-heading">
        <h3 id="trial-heading">${texts.trial.heading}</h3>
        <p class="quiet">${texts.trial.about}</p>
        <form class="field-row" onSubmit=${submit}>
            <label for="trial-value">${texts.trial.value}</label>
            <${Value} node=${node} value=${value} onValue=${(text) => {
                setValue(text);
                drop();
            }} />
            <button type="submit" class="button" aria-disabled=${isTrying}>${
                isTrying ? texts.trial.trying : texts.trial.try}</button>
        </form>
        ${answer === null ? html`<p id="trial-says" role="status"></p>`
            : answer.isLost ? html`<p id="trial-says" role="status" class="refused">${
                texts.trial.lost}</p>`
                : html`<${Outcome} node=${node} answer=${answer} onWrite=${write} />`}
    </section>`;
}
