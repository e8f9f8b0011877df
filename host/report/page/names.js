// What the parts of the plant are called: components, inertias, shafts, load cases, orders.

import { data } from "./data.js";
import { plain } from "./format.js";

export function componentName(component) {
  return component.name || `${component.kind} ${component.id}`;
}

/** The components at each inertia and shaft. */
export const componentOfInertia = new Map();
export const componentOfShaft = new Map();
for (const component of data.components) {
  for (const row of component.inertias) {
    if (!componentOfInertia.has(row) || component.shafts.length === 0) {
      componentOfInertia.set(row, component);
    }
  }
  component.shafts.forEach(row => componentOfShaft.set(row, component));
}

export function inertiaTitle(row) {
  const inertia = data.inertias[row];
  const component = componentOfInertia.get(row);
  const words = [inertia.name, component && componentName(component)].filter(Boolean);
  return `inertia ${inertia.id}` + (words.length > 0 ? `, ${words.join(", ")}` : "");
}

export function shaftTitle(row) {
  const shaft = data.shafts[row];
  const ends = `${data.inertias[shaft.origin].id}–${data.inertias[shaft.destination].id}`;
  const component = componentOfShaft.get(row);
  const words = [shaft.name, component && componentName(component)].filter(Boolean);
  return `shaft ${shaft.id} (${ends})` + (words.length > 0 ? `, ${words.join(", ")}` : "");
}

/** Whether every load case has its own speed, so that the speed names it. */
export const speedsDiffer = new Set(data.speeds).size === data.speeds.length;

export function caseName(loadCase, numbered = !speedsDiffer) {
  const speed = `${plain(data.speeds[loadCase])} rpm`;
  return numbered ? `case ${loadCase + 1}, ${speed}` : speed;
}

const singleSource = new Set(data.components.filter(c => c.orders.length > 0)).size === 1;

/** The name of the curve of an order. */
export function orderName(curve) {
  return `order ${plain(curve.order)}`
    + (singleSource ? "" : ` of ${componentName(data.components[curve.component])}`);
}
