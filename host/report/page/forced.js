// Forced vibration: the worst of each quantity, the curves of shafts, inertias, dampers, couplings.

import { data } from "./data.js";
import { capital, digits, unitFor } from "./format.js";
import { el, table } from "./elements.js";
import { caseName, componentName, componentOfShaft, inertiaTitle, orderName, shaftTitle } from "./names.js";
import { neighbours } from "./layout.js";
import { caseAxis, casePlot, drawAgainst, figure, orderStroke } from "./plots.js";

const TOTAL = { label: "synthesised", stroke: "#111", width: 2.4 };
const NOMINAL = { label: "nominal", stroke: "#8b95a1", width: 1.8, dash: [8, 4] };

const ICE = { label: "ice alone", stroke: "#18a0c8", width: 2, dash: [3, 3] };
const RESULTANT = { label: "with damping torque", stroke: "#111", width: 1.2, dash: [6, 3] };

/** The largest value of a table of points against load cases, over chosen points: {value, point,
 * loadCase}; a value that isn't a number comes before all others. */
export function worstOf(total, points = total.map((_, i) => i)) {
  let worst = null;
  for (const point of points) {
    total[point].forEach((value, loadCase) => {
      if (worst === null || (worst.value !== null && (value === null || value > worst.value))) {
        worst = { value, point, loadCase };
      }
    });
  }
  return worst;
}

/** The strongest order at a point and load case, in words. */
function strongestOrder(quantity, point, loadCase) {
  const curves = data.forced[quantity].orders[point];
  const best = curves.reduce((a, b) =>
    (a === null || b.values[loadCase] > a.values[loadCase] ? b : a), null);
  return best === null ? "–" : orderName(best);
}

/** The shafts that are a damper or a coupling. */
export const dampingShafts = [...componentOfShaft.keys()].sort((a, b) => a - b);

function amount(value, kind) {
  if (value === null) {
    return "not a number";
  }
  const [unit, name] = unitFor(kind, Math.abs(value));
  return `${digits(value / unit)} ${name}`;
}

/** The table of the first page: the worst of each. */
export function worstTable() {
  const rows = [];
  const add = (words, quantity, kind, title, points) => {
    const total = data.forced[quantity]?.total;
    const worst = total ? worstOf(total, points) : null;
    if (worst !== null && worst.value !== 0) {
      rows.push([words, amount(worst.value, kind), capital(title(worst.point)),
        caseName(worst.loadCase),
        data.forced[quantity].orders ? strongestOrder(quantity, worst.point, worst.loadCase) : ""]);
    }
  };
  add("Vibratory torque", "torque", "torque", shaftTitle);
  addTorqueShare(rows);
  add("Vibratory stress", "stress", "stress", shaftTitle);
  add("Angular deflection", "deflection", "deflection", inertiaTitle);
  add("Angular acceleration", "acceleration", "acceleration", inertiaTitle);
  add("Damping torque", "damping", "torque", shaftTitle, dampingShafts);
  add("Power loss in a damper or coupling", "loss", "power", shaftTitle, dampingShafts);
  return table([["largest"], ["value"], ["where"], ["at"], ["strongest order there"]], rows, "worst");
}

/** Peaks that the load cases step over, so that the largest values are higher than those stated. */
export function unresolvedNotes() {
  const { unresolved } = data.forced;
  if (!data.free) {
    return el("p", { class: "quiet" }, "Whether peaks lie between the load cases is not known without "
      + "the free vibration.");
  }
  if (unresolved.length === 0) {
    return null;
  }
  const item = ({ words }) => el("li", {}, `${capital(words)}.`);
  return el("div", { class: "unresolved" },
    el("p", {}, "Between load cases the largest values may be higher:"),
    el("ul", {}, unresolved.map(item)));
}

/** The worst vibratory torque against the nominal torque, over shafts that carry a mean torque. */
function addTorqueShare(rows) {
  const { total, nominal } = data.forced.torque;
  const carried = Math.max(0, ...nominal.flat().map(value => Math.abs(value ?? 0)));
  let worst = null;
  total.forEach((values, point) => values.forEach((value, loadCase) => {
    const mean = Math.abs(nominal[point][loadCase] ?? 0);
    if (mean > 0.02 * carried && (worst === null || value / mean > worst.share)) {
      worst = { share: value / mean, point, loadCase };
    }
  }));
  if (worst !== null) {
    rows.push(["Vibratory over nominal torque", `${digits(100 * worst.share, 3)} %`,
      capital(shaftTitle(worst.point)), caseName(worst.loadCase),
      strongestOrder("torque", worst.point, worst.loadCase)]);
  }
}

/** A value as it stands in a column, whose unit and largest value are known. */
export const columnText = (value, unit, most) =>
  (value === null ? "not a number" : digits(value / unit, 4, most / unit));

/** The largest values of every shaft. */
export function shaftTable() {
  const { torque, stress, loss } = data.forced;
  const [mostTorque, mostStress, mostLoss] =
    [torque, stress, loss].map(({ total }) => worstOf(total).value ?? 0);
  const [torqueUnit, torqueName] = unitFor("torque", mostTorque);
  const [lossUnit, lossName] = unitFor("power", mostLoss);
  const [stressUnit, stressName] = unitFor("stress", mostStress);
  const rows = data.shafts.map((shaft, row) => {
    const worst = worstOf(torque.total, [row]);
    const stressed = shaft.outer > 0;
    const still = worst.value !== null && worst.value <= 1e-9 * mostTorque;
    const stressWorst = worstOf(stress.total, [row]);
    return [
      String(shaft.id),
      `${data.inertias[shaft.origin].id}–${data.inertias[shaft.destination].id}`,
      [shaft.name, componentOfShaft.has(row) ? componentName(componentOfShaft.get(row)) : ""]
        .filter(Boolean).join(", "),
      columnText(worst.value, torqueUnit, mostTorque),
      columnText(torque.nominal[row][worst.loadCase], torqueUnit, mostTorque),
      still ? "–" : caseName(worst.loadCase),
      still ? "–" : strongestOrder("torque", row, worst.loadCase),
      stressed ? columnText(stressWorst.value, stressUnit, mostStress) : "–",
      columnText(worstOf(loss.total, [row]).value, lossUnit, mostLoss),
    ];
  });
  return table([["shaft"], ["between"], ["name"], ["vibratory torque", torqueName],
    ["nominal torque there", torqueName], ["at"], ["strongest order"],
    ["vibratory stress", stressName], ["power loss", lossName]], rows);
}

/** The curves of a quantity at a point: total, what else there is at the point, strongest orders.
 * A nominal value far above all of them starts switched off, since it would flatten them. */
function curvesOf(quantity, point) {
  const { total, resultant, ice, nominal, orders } = data.forced[quantity];
  const curves = [{ ...TOTAL, values: total[point] }];
  if (resultant && componentOfShaft.has(point)) {
    curves.push({ ...RESULTANT, values: resultant[point] });
  }
  if (ice) {
    curves.push({ ...ICE, values: ice[point] });
  }
  const peak = values => Math.max(...values.map(value => Math.abs(value ?? 0)));
  const most = Math.max(...curves.map(curve => peak(curve.values)));
  if (nominal) {
    curves.push({ ...NOMINAL, values: nominal[point],
      hidden: most > 0 && peak(nominal[point]) > 4 * most });
  }
  for (const curve of orders[point].filter(each => peak(each.values) > 1e-6 * most)) {
    curves.push({ label: orderName(curve), values: curve.values, ...orderStroke(curve) });
  }
  return curves;
}

function forcedFigure(parent, caption, name, kind, curves) {
  const entry = figure(parent, caption, (holder, width) => casePlot(holder, width, name, kind, curves()));
  entry.followsCases = true;
  return entry;
}

export function shaftFigures() {
  const place = el("div", { class: "figures" });
  data.shafts.forEach((shaft, row) => {
    const title = capital(shaftTitle(row));
    const torque = forcedFigure(place, `${title}: torque`, "torque", "torque",
      () => curvesOf("torque", row));
    if (shaft.outer > 0) { // torque and stress side by side
      torque.node.classList.add("first");
      forcedFigure(place, `${title}: stress`, "stress", "stress", () => curvesOf("stress", row));
    }
  });
  return place;
}

export function dampingFigures() {
  const place = el("div", { class: "figures" });
  for (const row of dampingShafts) {
    const title = capital(componentName(componentOfShaft.get(row)));
    const shaft = `shaft ${data.shafts[row].id}`;
    forcedFigure(place, `${title}, ${shaft}: damping torque`, "damping torque", "torque",
      () => curvesOf("damping", row));
    forcedFigure(place, `${title}, ${shaft}: power loss`, "power loss", "power",
      () => [{ ...TOTAL, label: "total", values: data.forced.loss.total[row] }]);
  }
  return place;
}

/** The inertias whose deflection is drawn at first: ends of the line, machines, the worst one. */
function chosenInertias() {
  const chosen = new Set([worstOf(data.forced.deflection.total).point]);
  data.inertias.forEach((_, row) => {
    if (neighbours[row].length === 1) {
      chosen.add(row);
    }
  });
  for (const { inertias } of data.components.filter(c => c.shafts.length === 0)) {
    chosen.add(inertias[0]);
  }
  return [...chosen].filter(row => row !== undefined).sort((a, b) => a - b);
}

/** Deflections of chosen inertias, with a list to choose further ones. */
export function deflectionFigures() {
  const place = el("div", { class: "figures" });
  const choice = el("select", { id: "inertia-choice", "aria-label": "Add an inertia" });
  const drawn = new Set();
  const offer = () => choice.replaceChildren(el("option", { value: "" }, "add an inertia …"),
    ...data.inertias.map((_, row) => row).filter(row => !drawn.has(row))
      .map(row => el("option", { value: row }, inertiaTitle(row))));
  const add = row => {
    drawn.add(row);
    const entry = forcedFigure(place, `${capital(inertiaTitle(row))}: deflection`, "deflection",
      "deflection", () => curvesOf("deflection", row));
    const close = el("button", { class: "remove", title: "remove this plot" }, "×");
    close.addEventListener("click", () => {
      drawn.delete(row);
      entry.remove();
      offer();
    });
    entry.node.querySelector("figcaption").append(close);
  };
  chosenInertias().forEach(add);
  offer();
  choice.addEventListener("change", () => {
    if (choice.value !== "") {
      add(Number(choice.value));
      offer();
    }
  });
  return [el("p", { class: "choice" }, choice), place];
}

/** Speed or load case as the axis of all curves. */
export function axisChoice() {
  const choice = el("select", { id: "axis-choice", "aria-label": "Curves against" },
    el("option", { value: "speed" }, "speed"), el("option", { value: "case" }, "load case"));
  choice.value = caseAxis;
  choice.addEventListener("change", () => drawAgainst(choice.value));
  return el("p", { class: "choice" }, "Curves against ", choice);
}
