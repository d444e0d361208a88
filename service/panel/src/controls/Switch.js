// SPDX-License-Identifier: MIT
import { html } from 'htm/preact';
import { useId, useState } from 'preact/hooks';
import { Greyed } from './Chooser.js';
import { closedBy, Frame, idsOf } from './Frame.js';
import { optionsOf } from './Selection.js';
import { useWriting } from './useWriting.js';

const kOn = 'ON';
const kOff = 'OFF';

export function isSwitch(node) {
    return node.type === 'KW_ONOFF';
}

/** On or off. Where the other state can not be selected now, pressing it says why. */
export function Switch({ node, write, busy, refusal, labelledBy, why, open }) {
    const ids = idsOf(useId());
    const writing = useWriting(node.path, write);
    const [asked, setAsked] = useState(false);
    const isOn = node.value === kOn;
    const options = optionsOf(node);
    const other = options.find(({ value }) => value === (isOn ? kOff : kOn));
    const shown = options.find(({ value }) => value === node.value)?.shown ?? node.shown;
    const isClosed = closedBy(node) !== '';
    const press = () => {
        setAsked(!other.isSelectable);
        if (other.isSelectable && !isClosed) {
            writing.send({ value: !isOn });
        }
    };
    const greyed = asked && !other.isSelectable ? other : null;
    return html`<${Frame} kind="switch" ...${{ node, ids, labelledBy, writing, refusal, busy }}>
        <button type="button" role="switch" class="switch" id=${ids.input} aria-checked=${isOn}
            aria-labelledby=${labelledBy ?? ids.label} aria-describedby=${ids.says}
            aria-disabled=${isClosed || !other.isSelectable} onClick=${press}>
            <span class="switch-knob" aria-hidden="true"></span>
            <span class="switch-state">${shown}</span>
        </button>
        <${Greyed} option=${greyed} ...${{ path: node.path, why, open }} />
    <//>`;
}
