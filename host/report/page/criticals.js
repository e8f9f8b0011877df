// The table of critical speeds, sorted by what matters.

import { RPM, data } from "./data.js";
import { digits, plain, unitFor } from "./format.js";
import { details, el, table } from "./elements.js";
import { caseName, componentName } from "./names.js";
import { forcedOrder, sources } from "./sources.js";
import { highestSpeed } from "./interference.js";
import { columnText } from "./forced.js";

/** The critical speeds of the sources other than engines, which have no vector sum. */
function otherCriticals() {
  const highest = data.limits.speedMargin * highestSpeed();
  return sources.filter(({ component }) => component.kind !== "diesel" && component.fixedSpeed === undefined)
    .flatMap(({ component, orders }) => orders.flatMap(order => data.free.frequencies.map((omega, i) => ({
      component: data.components.indexOf(component), order, mode: i + 1, rpm: omega * RPM / order, sum: null,
    })).filter(({ mode, rpm }) => mode > 1 && rpm > 0 && rpm <= highest * component.ratio)));
}

/** What the forced vibration says of an order near a critical speed: the largest amplitude of the
 * order in any shaft at the load case nearest to it, if one is within a tenth. */
function forcedAt(critical, reference) {
  const curve = forcedOrder(data.components[critical.component], critical.order);
  if (!curve) {
    return null;
  }
  let best = null;
  data.speeds.forEach((speed, i) => {
    const away = Math.abs(speed - reference);
    const value = curve.values[i];
    if (away <= 0.1 * reference && value !== null
      && (best === null || away < best.away || (away === best.away && value > best.value))) {
      best = { away, value, loadCase: i, shaft: curve.shafts[i] };
    }
  });
  return best;
}

/** The peak between two load cases that a critical speed is; none where a load case stands on it. */
const unresolvedAt = (critical, reference) => data.forced?.unresolved.find(each =>
  each.components.includes(critical.component) && plain(each.order) === plain(critical.order)
  && (each.mode === critical.mode || Math.abs(each.speed - reference) < data.limits.samePeak * reference));

/** The critical speeds: first those near a load case, by the amplitude there times the vector sum,
 * since other modes may have a share in the amplitude; then the others, by their vector sum over
 * the order, since high orders of gas and mass forces are weak. What has no vector sum counts
 * with 1. */
function rankedCriticals() {
  const engines = data.free.criticals.filter(each => each.sum !== null && each.rpm > 0);
  const ranked = [...engines, ...otherCriticals()].map(each => {
    const reference = each.rpm / data.components[each.component].ratio;
    const forced = forcedAt(each, reference);
    const share = each.sum ?? 1;
    return { ...each, reference, forced, share, unresolved: unresolvedAt(each, reference),
      weight: forced ? forced.value * share : -1,
      inside: data.speeds.length === 0 || (Math.min(...data.speeds) <= 1.1 * reference
        && Math.max(...data.speeds) >= 0.9 * reference) };
  });
  return ranked.sort((a, b) => b.weight - a.weight
    || b.inside - a.inside || b.share / b.order - a.share / a.order);
}

function criticalTable(ranked) {
  const geared = ranked.some(each => data.components[each.component].ratio !== 1);
  const engines = ranked.some(each => each.sum !== null);
  const kind = data.forced?.largest.quantity;
  const most = Math.max(0, ...ranked.map(each => each.forced?.value ?? 0));
  const [unit, unitName] = kind ? unitFor(kind, most) : [1, ""];
  const columns = [
    sources.length > 1 ? [["source"], each => componentName(data.components[each.component])] : null,
    [["order"], each => plain(each.order)],
    [["mode"], each => String(each.mode)],
    [["natural frequency", "1/min"], each => digits(data.free.frequencies[each.mode - 1] * RPM, 5)],
    [["critical speed", geared ? "rpm of the source" : "rpm"], each => digits(each.rpm, 4)],
    geared ? [["reference speed", "rpm"], each => digits(each.reference, 4)] : null,
    engines ? [["relative vector sum"], each => (each.sum === null ? "–" : each.sum.toFixed(3))] : null,
    [["in range"], each => (each.inside ? "yes" : "no")],
    kind ? [[`${kind} of the order`, unitName],
      each => (each.forced ? columnText(each.forced.value, unit, most) : "–")] : null,
    kind ? [["in shaft"], each => (each.forced ? String(data.shafts[each.forced.shaft].id) : "–")] : null,
    kind ? [["at"], each => (each.forced ? caseName(each.forced.loadCase) : "–")] : null,
    ranked.some(each => each.unresolved) ? [["peak between", "rpm"], each =>
      (each.unresolved ? `${plain(each.unresolved.below)} and ${plain(each.unresolved.above)}` : "–")] : null,
  ].filter(Boolean);
  return table(columns.map(([heading]) => heading), ranked.map(each => columns.map(([, text]) => text(each))));
}

export function criticalTables() {
  const ranked = rankedCriticals();
  if (ranked.length === 0) {
    return [];
  }
  const exciting = ranked.filter(each => each.share >= 0.0005).slice(0, 15);
  const engines = ranked.some(each => each.sum !== null);
  const rest = engines ? "by the vector sum over the order." : "by the order.";
  return [el("h3", {}, "Critical speeds"),
    el("p", {}, data.forced
      ? "First those with a load case within 10 %, by the largest amplitude that the order reaches "
        + `there${engines ? " times the vector sum" : ""}; then the others ${rest} In range: at most `
        + "10 % outside of the speeds of the load cases."
      : `Those in the range of the load cases first, ${rest}`,
    ranked.some(each => each.unresolved)
      ? " Peak between: the peak of the order lies between these two load cases, none of which shows it."
      : "",
    engines && sources.length > 1
      ? " Only engines have a vector sum; other sources count with 1." : ""),
    criticalTable(exciting),
    ranked.length > exciting.length ? details(`All ${ranked.length} critical speeds`,
      criticalTable(ranked), false) : null];
}
