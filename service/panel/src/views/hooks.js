// SPDX-License-Identifier: MIT
// What views follow: a node, the panel, the address.

import { createContext, useContext, useEffect, useState } from '../html.js';
import { parseRoute } from '../route.js';

export const PanelContext = createContext(null);

export function usePanel() {
    return useContext(PanelContext);
}

/** Draws again when asked. */
function useAgain() {
    const [, set] = useState(0);
    return () => set((count) => count + 1);
}

/** A node that is drawn again when it changes; null when there is none. */
export function useNode(path) {
    const { store } = usePanel();
    const again = useAgain();
    useEffect(() => store.subscribe(path, again), [store, path]);
    return store.node(path);
}

/** The panel itself: connection, control, steps. */
export function usePanelState() {
    const panel = usePanel();
    const again = useAgain();
    useEffect(() => panel.subscribe(again), [panel]);
    return panel;
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
