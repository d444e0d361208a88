// SPDX-License-Identifier: MIT
import { useCallback, useRef, useState } from 'preact/hooks';

const kSlow = 500; // milliseconds until a write that goes on is told of

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
 *     isWriting: boolean, isSlow: boolean, report: object|null, forget: function(): void}}  `report` is kLost where
 *     the service did not answer
 */
export function useWriting(path, write) {
    const [state, setState] = useState({ isWriting: false, isSlow: false, report: null });
    const way = useRef({ last: Promise.resolve(), waiting: 0, steps: 0 });
    const writer = useRef(write);
    writer.current = write;

    const carryOut = useCallback(async (what) => {
        setState((before) => ({ ...before, isWriting: true }));
        const slow = setTimeout(() => setState((before) => ({ ...before, isSlow: true })), kSlow);
        let report = kLost;
        try {
            report = reportOf(await writer.current(what), path);
        } catch {
            // Who writes tells of a lost connection; the control says that nothing was written.
        }
        clearTimeout(slow);
        way.current.waiting -= 1;
        setState({ isWriting: way.current.waiting > 0, isSlow: false, report });
        return report;
    }, [path]);

    const send = useCallback(async (what) => {
        way.current.waiting += 1;
        const mine = way.current.last.then(() => carryOut(what));
        way.current.last = mine;
        const report = await mine;
        const { steps } = way.current;
        if (steps !== 0 && way.current.waiting === 0) {
            way.current.steps = 0;
            if (report !== kLost) {
                send({ steps });
            }
        }
        return report !== kLost && report.code <= 1;
    }, [carryOut]);

    const step = useCallback((steps) => {
        if (way.current.waiting > 0) {
            way.current.steps += steps;
        } else {
            send({ steps });
        }
    }, [send]);

    const forget = useCallback(() => setState((before) => ({ ...before, report: null })), []);
    return { ...state, send, step, forget };
}
