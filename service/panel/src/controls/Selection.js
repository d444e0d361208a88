// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useId, useRef, useState } from 'preact/hooks';
import { closedBy, Frame, idsOf, isRefused } from './Frame.js';
import { OptionList } from './OptionList.js';
import { showValue } from './quantity.js';
import { useWriting } from './useWriting.js';
import { Why } from './Why.js';

const MOST_INLINE = 6;

/**
 * Every value of a property with choices; of those that seldom change only the present state counts
 * for what can be selected.
 */
export function optionsOf(node) {
    const values = node.values ?? node.selectable.map((value) => ({ value, shown: showValue(node, value) }));
    return values.map(({ value, shown }) => ({
        value, shown, isSelectable: node.selectable.includes(value),
    }));
}

/** A value out of several: few stand side by side, many in a list that opens. */
export function Selection({ node, write, busy, refusal, labelledBy, why, open }) {
    const ids = idsOf(useId());
    const writing = useWriting(node.path, write);
    const [isOpen, setOpen] = useState(false);
    const [greyed, setGreyed] = useState(null);
    const opener = useRef(null);
    const options = optionsOf(node);
    const isInline = options.length <= MOST_INLINE;
    const isClosed = closedBy(node) !== '';
    const close = () => {
        setOpen(false);
        opener.current?.focus();
    };
    const choose = (value) => {
        if (value !== node.value) {
            writing.send({ value });
        }
        if (!isInline) {
            close();
        }
    };
    const leave = (event) => {
        if (!event.currentTarget.contains(event.relatedTarget)) {
            setOpen(false);
            setGreyed(null);
        }
    };
    const key = (event) => {
        if (event.key === 'Escape' && isOpen) {
            event.stopPropagation();
            close();
        }
    };
    const stepOrOpen = (event) => {
        if (event.key === 'ArrowDown' || event.key === 'ArrowUp') {
            event.preventDefault();
            setOpen(true);
        }
    };
    const label = labelledBy ?? ids.label;
    const isInvalid = isRefused(writing.report ?? refusal);
    return html`<${Frame} kind="selection" ...${{ node, ids, labelledBy, writing, refusal, busy }}>
        <div class="chooser" onFocusOut=${leave} onKeyDown=${key}>
            ${!isInline && html`<button type="button" ref=${opener} id=${ids.input}
                class="field chooser-button" aria-haspopup="listbox" aria-expanded=${isOpen}
                aria-labelledby="${label} ${ids.input}" aria-describedby=${ids.says}
                onClick=${() => setOpen(!isOpen)} onKeyDown=${stepOrOpen}>${showValue(node, node.value)}</button>`}
            ${(isInline || isOpen) && html`<${OptionList} options=${options} value=${node.value}
                labelledBy=${label} describedBy=${ids.says} isInline=${isInline}
                isClosed=${isClosed} isInvalid=${isInvalid} hasFocus=${!isInline}
                onChoose=${choose} onLook=${setGreyed} />`}
            <div aria-live="polite">${greyed && html`<${Why} path=${node.path} value=${greyed.value}
                shown=${greyed.shown} why=${why} open=${open} />`}</div>
        </div>
    <//>`;
}
