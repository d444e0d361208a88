// SPDX-License-Identifier: MIT
import { useEffect, useRef } from 'preact/hooks';

const kNotch = 100; // what browsers tell of one notch, in pixels
const kLinesOfNotch = 3;

/**
 * Steps by the wheel, while the element has the focus: a page that is scrolled must not change the
 * instrument. Browsers let listeners hold the page only where they say so, which preact's do not.
 */
export function useWheel(step) {
    const element = useRef(null);
    const stepper = useRef(step);
    stepper.current = step;
    useEffect(() => {
        const target = element.current;
        let rest = 0;
        const turn = (event) => {
            if (document.activeElement !== target || event.ctrlKey) {
                return;
            }
            event.preventDefault();
            rest -= event.deltaY / (event.deltaMode === 0 ? kNotch : kLinesOfNotch);
            const steps = Math.trunc(rest);
            if (steps !== 0) {
                rest -= steps;
                stepper.current(steps);
            }
        };
        target?.addEventListener('wheel', turn, { passive: false });
        return () => target?.removeEventListener('wheel', turn);
    }, []);
    return element;
}
