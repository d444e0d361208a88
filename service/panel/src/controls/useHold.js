// SPDX-License-Identifier: MIT
import { useEffect, useRef } from 'preact/hooks';

const kFirst = 500; // milliseconds until a button that is held down repeats
const kAgain = 120;

/**
 * Buttons that step once when they are pressed and go on while they are held.
 *
 * @param {function(number): void} step
 * @returns {function(number): object}  attributes of the button that steps by so much
 */
export function useHold(step) {
    const timer = useRef(0);
    const isHeld = useRef(false);
    const stepper = useRef(step);
    stepper.current = step;
    const end = () => clearTimeout(timer.current);
    useEffect(() => end, []);
    return (steps) => {
        const again = () => {
            isHeld.current = true;
            stepper.current(steps);
            timer.current = setTimeout(again, kAgain);
        };
        return {
            onPointerDown: (event) => {
                isHeld.current = false;
                end();
                if (event.button === 0) {
                    timer.current = setTimeout(again, kFirst);
                }
            },
            onPointerUp: end,
            onPointerLeave: end,
            onPointerCancel: end,
            // The click that ends a hold has stepped already; one by a key (no detail) has not.
            onClick: ({ detail }) => (detail === 0 || !isHeld.current) && stepper.current(steps),
            onContextMenu: (event) => isHeld.current && event.preventDefault(),
        };
    };
}
