// SPDX-License-Identifier: MIT
// Where everything of the panel takes its elements and hooks from.

export { Component, createContext, render } from 'preact';
export {
    useCallback, useContext, useEffect, useLayoutEffect, useMemo, useReducer, useRef, useState
} from 'preact/hooks';
export { html } from 'htm/preact';
