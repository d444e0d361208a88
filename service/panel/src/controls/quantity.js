// SPDX-License-Identifier: MIT
// Numbers as the instrument shows them: nine significant digits, with prefix and unit.

const kPrefixes = new Map([[-15, 'f'], [-12, 'p'], [-9, 'n'], [-6, 'µ'], [-3, 'm'], [0, ''],
    [3, 'k'], [6, 'M'], [9, 'G'], [12, 'T']]);

/** Units whose large and small numbers are written with a prefix. */
const kPrefixed = new Set(['W', 'W/Hz', 'J', 'V/s', 'A/s', 'V', 'V/√Hz', 'A', 'A/√Hz', 'H', 'F', 'Ω',
    'S', 's', 'Hz', 'm', 'rad', 'sym/s', 'bit/s', 's/div', 'Hz/div', 'V/div', 'A/div', 'Sa', 'Sa/s',
    'Bd', 'Vs', 'As', 'W/div', 'A/V', 'W/V', 'B', 'V/A', 'V/W', 'VA', 'Hz/Sa']);

const kShownDigits = 9;

/** A decimal number without an exponent. */
export function plain(number) {
    const [digits, exponent] = number.toExponential().split('e');
    const places = Math.max(0, (digits.split('.')[1] ?? '').length - Number(exponent));
    return number.toFixed(Math.min(places, 100));
}

function rounded(number) {
    return Number(number.toPrecision(kShownDigits));
}

/**
 * @param {number|string|null} value  whole numbers that no double holds are texts
 * @param {string} unit
 * @returns {string} such as "1.5 MHz"
 */
export function formatQuantity(value, unit) {
    const join = (text, behind) => (behind === '' ? text : `${text} ${behind}`);
    if (typeof value !== 'number') {
        return join(String(value ?? ''), value === null ? '' : unit);
    }
    if (unit === '') {
        return String(value);
    }
    if (!kPrefixed.has(unit)) {
        return join(Number.isInteger(value) ? String(value) : plain(rounded(value)), unit);
    }
    const short = rounded(value);
    const magnitude = short === 0 ? 0 : Number(short.toExponential().split('e')[1]);
    const power = Math.floor(magnitude / 3) * 3;
    if (!kPrefixes.has(power)) {
        return join(String(value), unit);
    }
    const [digits, exponent] = short.toExponential().split('e');
    return join(plain(Number(`${digits}e${exponent - power}`)), kPrefixes.get(power) + unit);
}

/** Whether a property's values are numbers. */
export function isNumeric(type) {
    return type === 'double' || /^u?int\d+$/.test(type);
}

/** The present limits of a number; where the service names none, those of unsigned types, else null. */
export function limitsOf(node) {
    const least = node.minimum ?? (node.type.startsWith('uint') ? 0 : null);
    return { minimum: least, maximum: node.maximum };
}

/** A value of a property as a user reads it. */
export function showValue(node, value) {
    if (value === null || value === undefined) {
        return null;
    }
    if (isNumeric(node.type)) {
        return formatQuantity(value, node.unit);
    }
    return node.values?.find((one) => one.value === value)?.shown || String(value);
}
