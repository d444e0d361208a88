// SPDX-License-Identifier: MIT
// What views follow: a node, the panel, the address.

import { createContext, useContext, useEffect, useReducer, useRef, useState } from '../html.js';
import { parseRoute } from '../route.js';

export const PanelContext = createContext(null);

/** @returns {import('../panel.js').Panel} */
export function usePanel() {
    return useContext(PanelContext);
}

/** Draws again when asked. */
export function useAgain() {
    return useReducer((count) => count + 1, 0)[1];
}

/** A node that is drawn again when it changes; null when there is none. */
export function useNode(path) {
    const { store } = usePanel();
    const again = useAgain();
    const node = store.node(path);
    useEffect(() => {
        if (store.node(path) !== node) {
            again(); // it has changed since it was drawn
        }
        return store.subscribe(path, again);
    }, [store, path]);
    return node;
}

/** The panel, drawn again when the connection, the steps or the favourites change. */
export function usePanelState() {
    const panel = usePanel();
    const again = useAgain();
    useEffect(() => panel.subscribe(again), [panel]);
    return panel;
}

/** One value of the panel's state: drawn again when it is another one, which many parts of a page
    can afford. @param {(panel: import('../panel.js').Panel) => *} select */
export function usePanelValue(select) {
    const panel = usePanel();
    const again = useAgain();
    const last = useRef();
    last.current = { select, value: select(panel) };
    useEffect(() => panel.subscribe(() => {
        const { select: now, value } = last.current;
        if (now(panel) !== value) {
            again();
        }
    }), [panel]);
    return last.current.value;
}

export function useRoute() {
    const [route, setRoute] = useState(() => parseRoute(location.hash));
    useEffect(() => {
        const follow = () => setRoute(parseRoute(location.hash));
        addEventListener('hashchange', follow);
        return () => removeEventListener('hashchange', follow);
    }, []);
    return route;
}
