// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { controls as texts } from '../texts/controls.js';
import { limitsOf, isNumeric, showValue } from './quantity.js';
import { kLost } from './useWriting.js';

const kMostNamed = 8;

/** A few values by name; of many numbers their ends say more than the first ones. */
function listed(node, values) {
    const shown = values.map((value) => showValue(node, value));
    const more = shown.length - kMostNamed;
    if (more > 0 && isNumeric(node.type)) {
        return texts.wantedValues(shown.length, shown[0], shown.at(-1));
    }
    const named = shown.slice(0, kMostNamed).join(', ');
    return texts.wantedOneOf(more > 0 ? `${named} ${texts.andMore(more)}` : named);
}

/** What the property takes, for a user who was refused. */
function bounds(node, report) {
    const now = { ...node, ...report.now };
    if (report.form) {
        return texts.wantedForm(report.form);
    }
    if (report.name === 'TOO_LONG' && report.maximumLength) {
        const say = { bitpattern: texts.atMostBits, blob: texts.atMostBytes }[now.type];
        return (say ?? texts.atMostCharacters)(report.maximumLength);
    }
    if (now.selectable?.length > 0) {
        return listed(now, now.selectable);
    }
    if (!isNumeric(now.type ?? '')) {
        return '';
    }
    const { minimum, maximum } = limitsOf(now);
    const [from, to] = [minimum, maximum].map((limit) => showValue(now, limit));
    return from !== null && to !== null ? texts.limitsFromTo(from, to)
        : from !== null ? texts.limitsFrom(from)
            : to !== null ? texts.limitsTo(to) : '';
}

/** What stands instead of what was asked for; nothing once it has moved on. */
function otherwise(node, now) {
    const shown = node.values ? showValue(node, now?.value) : now?.shown;
    return now?.text === node.text ? texts.limited(shown) : '';
}

/** One sentence about the last write, or nothing where it stands as asked. */
export function sentenceOf(node, report) {
    if (report === null || report === undefined || report.code === 0) {
        return '';
    }
    if (report === kLost) {
        return texts.unreachable;
    }
    if (report.code === 1) {
        return node.kind === 'property' ? otherwise(node, report.now)
            : texts.takenBut(report.detail ?? report.text);
    }
    const reason = report.detail ? `${report.text}: ${report.detail}` : report.text;
    return `${texts.refused(reason)} ${bounds(node, report)}`.trim();
}

export function isRefused(report) {
    return Boolean(report) && (report === kLost || report.code > 1);
}

/** Why nothing can be written, or nothing; `closed` is what holds for the whole panel. */
export function closedBy(node) {
    if (node.kind === 'property' && node.result) {
        return node.availability === 'not available' ? texts.unavailable : '';
    }
    return node.closed ? node.closed : node.availability === 'not available' ? texts.unavailable
        : node.availability === 'read only' ? texts.readOnly : '';
}

/** Ids of the parts of a control, of which names of nodes are no part. */
export function idsOf(id) {
    return { label: `${id}-label`, input: `${id}-input`, says: `${id}-says`, hint: `${id}-hint` };
}

function ToDefault({ node, writing }) {
    if (node.default === undefined || node.default === node.value || !writing || closedBy(node)) {
        return null;
    }
    return html`<button type="button" class="button is-small"
        aria-label=${texts.toDefaultOf(node.name, showValue(node, node.default))}
        onClick=${() => writing.send({ default: true })}>${texts.toDefault}</button>`;
}

/** Controls of several parts that are no field with a label of its own. */
const kGroups = ['bits', 'blob', 'container'];

/**
 * What all controls have: the name, the control itself, and below it what the instrument answered.
 * The place of the answer is always there, as screen readers tell only of changes in what they know.
 */
export function Frame({ node, kind, ids, labelledBy, writing, refusal, busy, children }) {
    const report = writing?.report ?? refusal;
    const isSlow = writing?.isSlow && kind !== 'action'; // which tells of itself
    const refused = !isSlow && isRefused(report);
    const says = isSlow ? texts.writing : sentenceOf(node, report);
    const closed = closedBy(node);
    const held = node.userValue !== null && node.userValue !== undefined
        ? texts.heldBack(showValue(node, node.userValue)) : '';
    const classes = ['control', `control-${kind}`, refused && 'is-refused', closed && 'is-closed',
        (busy || writing?.isWriting) && 'is-writing'].filter(Boolean).join(' ');
    const group = kGroups.includes(kind)
        ? { role: 'group', 'aria-labelledby': labelledBy ?? ids.label } : {};
    return html`<div class=${classes} ...${group}>
        ${!labelledBy && html`<div class="control-head">
            <span class="control-name" id=${ids.label}>${node.name}</span>
            <${ToDefault} ...${{ node, writing }} />
        </div>`}
        <div class="control-body">${children}</div>
        ${labelledBy && html`<${ToDefault} ...${{ node, writing }} />`}
        ${closed && html`<p class="control-closed" id=${ids.hint}>${closed}</p>`}
        ${held && html`<p class="control-held">${held}</p>`}
        <p class="control-says" id=${ids.says} role=${refused ? 'alert' : 'status'}
            >${says}</p>
    </div>`;
}
