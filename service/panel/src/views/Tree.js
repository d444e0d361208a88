// SPDX-License-Identifier: MIT
import { html, useEffect, useLayoutEffect, useMemo, useRef, useState } from '../html.js';
import { lastOf, parentOf, wayTo } from '../paths.js';
import { linkTo } from '../route.js';
import { shownOf } from '../shown.js';
import { texts } from '../texts/panel.js';
import { useAgain, useNode, usePanel } from './hooks.js';
import { Mark } from './Mark.js';
import { oldValueOf } from './moves.js';
import { kFirst, rowsOf } from './rows.js';

const keyOf = ({ path, more }) => (more ? `${path} more` : path);

/** What a row shows of a node: its name, its mark, and old → new. */
function Row({ row, isOpen, isAt, isChosen, onToggle, onFocus }) {
    const { store, steps } = usePanel();
    const node = useNode(row.path);
    if (!node) {
        return null;
    }
    const hasMembers = store.children(row.path).length > 0;
    const old = oldValueOf(steps.moveOf(row.path));
    const classes = ['row', `level-${Math.min(row.level, 8)}`, isChosen && 'is-chosen',
        steps.moveOf(row.path) && 'is-moved', node.availability === 'not available' && 'is-closed',
        node.valid === false && 'is-invalid'].filter(Boolean).join(' ');
    const toggle = (event) => {
        event.preventDefault();
        event.stopPropagation();
        onToggle(row.path);
    };
    return html`<a role="treeitem" class=${classes} href=${linkTo(row.path)} data-key=${row.path}
        aria-level=${row.level} aria-posinset=${row.place} aria-setsize=${row.of}
        aria-expanded=${hasMembers ? isOpen : undefined} aria-selected=${isChosen}
        tabindex=${isAt ? 0 : -1} onFocus=${() => onFocus(row.path)}>
        <span class=${hasMembers ? 'chevron' : 'chevron is-none'} aria-hidden="true"
            onClick=${hasMembers ? toggle : undefined}></span>
        <span class="row-name">${lastOf(row.path)}</span>
        <${Mark} node=${node} count=${store.differing(row.path)} />
        <span class="row-value">${old !== null && html`<del
            aria-label=${texts.tree.moved(old)}>${old}</del><span aria-hidden="true"> → </span>`}${
            shownOf(node) ?? (node.count === undefined ? '' : texts.moved.items(node.count))}</span>
    </a>`;
}

function MoreRow({ row, isAt, onMore, onFocus }) {
    return html`<a role="treeitem" class=${`row is-more level-${Math.min(row.level, 8)}`}
        data-key=${keyOf(row)} href=${linkTo(row.path)} aria-level=${row.level}
        aria-posinset=${row.place} aria-setsize=${row.of} aria-selected="false"
        tabindex=${isAt ? 0 : -1} onFocus=${() => onFocus(keyOf(row))}
        onClick=${(event) => {
            event.preventDefault();
            onMore(row.path);
        }}>${texts.tree.more(row.more)}</a>`;
}

/** Nodes that are open, and what opens and closes them. */
function useOpen(chosen) {
    const [open, setOpen] = useState(() => new Map());
    const change = (path, most) => setOpen((before) => {
        const after = new Map(before);
        if (most === 0) {
            after.delete(path);
        } else {
            after.set(path, most);
        }
        return after;
    });
    useEffect(() => {
        wayTo(chosen ?? '').slice(1, -1).forEach((path) => change(path, kFirst));
    }, [chosen]);
    return {
        open,
        show: (path) => change(path, kFirst),
        hide: (path) => change(path, 0),
        more: (path) => change(path, (open.get(path) ?? kFirst) + 5 * kFirst)
    };
}

/** The rows, made again when nodes come or go, or begin to differ where only these are shown. */
function useRows(open, isOnlyDiffering) {
    const { store } = usePanel();
    const again = useAgain();
    const structure = useRef(-1);
    useEffect(() => {
        const look = () => {
            if (isOnlyDiffering || structure.current !== store.structure) {
                structure.current = store.structure;
                again();
            }
        };
        look();
        return store.watch(look);
    }, [store, isOnlyDiffering]);
    return useMemo(() => rowsOf(store, open, isOnlyDiffering),
        [store, open, isOnlyDiffering, isOnlyDiffering ? store.version : store.structure]);
}

export function Tree({ chosen }) {
    const { store } = usePanel();
    const [isOnlyDiffering, setOnlyDiffering] = useState(false);
    const { open, show, hide, more } = useOpen(chosen);
    const rows = useRows(open, isOnlyDiffering);
    const [at, setAt] = useState(null);
    const tree = useRef(null);
    const moveTo = useRef(null); // a key whose row is to have the focus when it is drawn
    const present = rows.some((row) => keyOf(row) === at) ? at : rows[0] && keyOf(rows[0]);
    const rowElement = (key) => [...tree.current.children]
        .find((element) => element.dataset.key === key);

    useLayoutEffect(() => {
        if (moveTo.current !== null) {
            rowElement(moveTo.current)?.focus();
            moveTo.current = null;
        }
    });
    useEffect(() => {
        if (chosen) {
            setAt(chosen);
            rowElement(chosen)?.scrollIntoView({ block: 'nearest' });
        }
    }, [chosen, rows.length > 0]);

    const goTo = (key) => {
        if (key !== undefined && key !== null) {
            setAt(key);
            moveTo.current = key;
        }
    };
    const isOpen = (path) => open.has(path) && store.children(path).length > 0;
    const onKey = (event) => {
        if (event.ctrlKey || event.altKey || event.metaKey) {
            return;
        }
        const place = rows.findIndex((row) => keyOf(row) === present);
        const row = rows[place];
        const actions = {
            ArrowDown: () => goTo(rows[place + 1] && keyOf(rows[place + 1])),
            ArrowUp: () => goTo(rows[place - 1] && keyOf(rows[place - 1])),
            Home: () => goTo(keyOf(rows[0])),
            End: () => goTo(keyOf(rows[rows.length - 1])),
            ArrowRight: () => (row.more || store.children(row.path).length === 0 ? undefined
                : isOpen(row.path) ? goTo(rows[place + 1] && keyOf(rows[place + 1]))
                    : show(row.path)),
            ArrowLeft: () => (!row.more && isOpen(row.path) ? hide(row.path)
                : goTo(row.more ? row.path : parentOf(row.path) || null))
        };
        if (row && actions[event.key]) {
            event.preventDefault();
            actions[event.key]();
        }
    };
    const toggle = (path) => (open.has(path) ? hide(path) : show(path));

    return html`<div class="tree-pane">
        <label class="check"><input type="checkbox" checked=${isOnlyDiffering}
            onChange=${(event) => setOnlyDiffering(event.target.checked)} />
            ${texts.tree.onlyDiffering}</label>
        ${rows.length === 0 && isOnlyDiffering && html`<p class="quiet">${
            texts.tree.noneDiffers}</p>`}
        <div class="tree" role="tree" aria-label=${texts.tree.label} ref=${tree}
            onKeyDown=${onKey} hidden=${rows.length === 0}>
            ${rows.map((row) => (row.more
                ? html`<${MoreRow} key=${keyOf(row)} row=${row} isAt=${keyOf(row) === present}
                    onMore=${more} onFocus=${setAt} />`
                : html`<${Row} key=${row.path} row=${row} isOpen=${open.has(row.path)}
                    isAt=${row.path === present} isChosen=${row.path === chosen}
                    onToggle=${toggle} onFocus=${setAt} />`))}
        </div>
    </div>`;
}
