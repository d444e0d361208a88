// SPDX-License-Identifier: MIT
import { useCallback, useEffect, useRef, useState } from 'preact/hooks';

/**
 * What is typed and not written yet. While there is a draft, changes of others do not touch it; they
 * are told by `moved`.
 *
 * @param {string} shown  the present value, as the field shows it
 * @param {function(string|null): void} [onDraft]  told of each change, null for none
 */
export function useDraft(shown, onDraft) {
    const [draft, setDraft] = useState(null);
    const start = useRef(shown);
    const type = useCallback((text) => {
        setDraft((before) => {
            if (before === null) {
                start.current = shown;
            }
            return text === shown ? null : text;
        });
    }, [shown]);
    const discard = useCallback(() => setDraft(null), []);
    useEffect(() => {
        onDraft?.(draft);
    }, [draft]);
    useEffect(() => () => onDraft?.(null), []);
    return {
        draft, type, discard,
        text: draft ?? shown,
        isDirty: draft !== null,
        moved: draft !== null && start.current !== shown,
    };
}
