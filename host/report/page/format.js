// Numbers and units as words.

import { data } from "./data.js";

const { kilo, mega, milli } = data.units;

const exponentOf = size => Math.floor(Math.log10(size));

/** A number with this many significant digits; large ones keep their digits before the point, and
 * none has digits below a millionth of the largest number of its column, where that is given. */
export function digits(value, significant = 4, most = 0) {
  if (value === null || value === undefined) {
    return "–";
  }
  const size = Math.abs(value.toPrecision(significant)); // 0.99996 is 1.000
  const finest = most > 0 ? 5 - exponentOf(most) : Infinity;
  if (size < 0.5 * 10 ** -finest || size === 0) {
    return "0";
  }
  if ((size < 1e-4 && !(most > 0)) || size >= 1e7) {
    return value.toExponential(significant - 1).replace("e+", "e");
  }
  return value.toFixed(Math.max(Math.min(significant - 1 - exponentOf(size), finest), 0));
}

/** A number as short as it can be written: ids, orders, speeds. */
export const plain = value => String(Number(value.toPrecision(6)));

/** A number of the input file with the digits that it has there, large ones with an exponent. */
export const given = value => (value < 1e7 ? plain(value)
  : `${plain(value / 10 ** exponentOf(value))}e${exponentOf(value)}`);

/** A length in mm; none where it is 0. */
export const millimetres = metres => (metres > 0 ? plain(metres / milli) : "–");

/** The units that a quantity is shown in, by the value that one of it has; smallest first. */
const UNITS = {
  torque: [[1, "N m"], [kilo, "kN m"]],
  stress: [[mega, "N/mm²"]],
  deflection: [[milli, "mrad"]],
  acceleration: [[1, "rad/s²"]],
  power: [[1, "W"], [kilo, "kW"]],
};

/** The unit that suits values up to a size: its value and its name. */
export function unitFor(kind, size) {
  const units = UNITS[kind];
  const suitable = units.filter(([value]) => size >= 2 * value);
  return suitable.length > 0 ? suitable[suitable.length - 1] : units[0];
}

/** The largest of values that may be null; null if there is none. */
export function largest(values) {
  return values.reduce((a, b) => (a === null || (b !== null && b > a) ? b : a), null);
}

/** The text with a capital at its beginning. */
export const capital = text => text.charAt(0).toUpperCase() + text.slice(1);
