// The sources of excitation, their orders, and where these meet natural frequencies.

import { data } from "./data.js";
import { largest, plain } from "./format.js";
import { componentName } from "./names.js";

/** Orders of gas and mass forces above this one are too weak to matter. */
export const HIGHEST_CYLINDER_ORDER = 12;

/** The largest amplitude of every order in any shaft, by load case: {component, order, values,
 * shafts}. */
const forcedOrders = new Map((data.forced?.largest.orders || []).map(each =>
  [`${each.component} ${plain(each.order)}`, each]));

export const forcedOrder = (component, order) =>
  forcedOrders.get(`${data.components.indexOf(component)} ${plain(order)}`);

/** The sources, each with the orders that it excites. Those that leave less than a millionth of the
 * strongest in the forced vibration, such as orders that a pump has no amplitude for, are none. */
export const sources = data.components.map(component => {
  const peak = order => largest(forcedOrder(component, order)?.values ?? []);
  const most = largest(component.orders.map(peak)) ?? 0;
  const excited = order => order > 0 && (peak(order) === null || peak(order) > 1e-6 * most);
  return { component, name: componentName(component), orders: component.orders.filter(excited) };
}).filter(({ orders }) => orders.length > 0);

/** The highest frequency that a source excites at the highest speed, by cylinders up to an order,
 * in rpm. */
export function highestExcitation(cylinderOrder = HIGHEST_CYLINDER_ORDER) {
  const speed = Math.max(0, ...data.speeds);
  return Math.max(0, ...sources.map(({ component, orders }) => {
    const own = component.fixedSpeed ?? (speed > 0 ? speed * component.ratio : component.speed);
    const cylinders = ["diesel", "reciprocating pump"].includes(component.kind);
    return own * Math.max(0, ...orders.filter(order => !cylinders || order <= cylinderOrder));
  }));
}

/** The order lines of a source: frequency in rpm against the reference speed. */
export function orderLines({ component, orders }) {
  return orders.map(order => component.fixedSpeed !== undefined
    ? { order, slope: 0, offset: order * component.fixedSpeed }
    : { order, slope: order * component.ratio, offset: 0 });
}
