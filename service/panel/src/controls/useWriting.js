// SPDX-License-Identifier: MIT
import { useCallback, useRef, useState } from 'preact/hooks';

/** What is reported where the service, or what stands in front of it, gave no code. */
export const kLost = { code: null };

/** The report of one node in what the service answered to a write; answers of actions are reports. */
function reportOf(answer, path) {
    const report = answer?.writes?.find((one) => one.path === path) ?? answer;
    return typeof report?.code === 'number' ? report : kLost;
}

/**
 * Writes one after the other, and keeps what was answered until the next one.
 *
 * Steps that come while a write is on its way are added up to one write, so that a fast wheel never
 * queues behind a slow network.
 *
 * @returns {{send: function(object): Promise<boolean>, step: function(number): void,
 *     isWriting: boolean, report: object|null, forget: function(): void}}  `report` is kLost where
 *     the service did not answer
 */
export function useWriting(path, write) {
    const [state, setState] = useState({ isWriting: false, report: null });
    const way = useRef({ busy: false, steps: 0 });
    const writer = useRef(write);
    writer.current = write;

    const send = useCallback(async (what) => {
        way.current.busy = true;
        setState((before) => ({ ...before, isWriting: true }));
        let answer = null;
        try {
            answer = await writer.current(what);
        } catch {
            answer = null; // who writes tells of a lost connection; the control says it was not written
        }
        way.current.busy = false;
        const report = reportOf(answer, path);
        setState({ isWriting: false, report });
        if (way.current.steps !== 0) {
            const steps = way.current.steps;
            way.current.steps = 0;
            send({ steps });
        }
        return report !== kLost && report.code <= 1;
    }, [path]);

    const step = useCallback((steps) => {
        if (way.current.busy) {
            way.current.steps += steps;
        } else {
            send({ steps });
        }
    }, [send]);

    const forget = useCallback(() => setState((before) => ({ ...before, report: null })), []);
    return { ...state, send, step, forget };
}
