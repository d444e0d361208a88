// SPDX-License-Identifier: MIT
// Blocks of bytes: base 64 to the service, hexadecimal to the user.

/** @returns {Uint8Array} */
export function bytesOf(base64) {
    return Uint8Array.from(atob(base64), (character) => character.charCodeAt(0));
}

/** @param {Uint8Array} bytes */
export function base64Of(bytes) {
    const kAtOnce = 0x8000; // more arguments than that some browsers do not take
    let text = '';
    for (let at = 0; at < bytes.length; at += kAtOnce) {
        text += String.fromCharCode(...bytes.subarray(at, at + kAtOnce));
    }
    return btoa(text);
}

export function hexOf(bytes) {
    return [...bytes].map((byte) => byte.toString(16).padStart(2, '0')).join(' ');
}

/** Bytes of hexadecimal digits, with blanks, commas, colons or 0x between them; null for others. */
export function bytesOfHex(text) {
    const digits = text.replace(/0x/gi, ' ').trim();
    const words = digits === '' ? [] : digits.split(/[\s,:]+/);
    const isHex = words.every((word) => /^(?:[0-9a-f]|(?:[0-9a-f]{2})+)$/i.test(word));
    return isHex ? Uint8Array.from(words
        .flatMap((word) => (word.length === 1 ? [word] : word.match(/../g)))
        .map((pair) => parseInt(pair, 16))) : null;
}
