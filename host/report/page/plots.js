// Plots by uPlot. They are drawn when they come near the window, or all at once for paper.

import uPlot from "uplot";
import { data } from "./data.js";
import { digits, largest, plain, unitFor } from "./format.js";
import { el } from "./elements.js";
import { caseName, speedsDiffer } from "./names.js";

// Drawn twice as fine as most screens ask for, so that plots stay sharp on paper.
const screenRatio = window.devicePixelRatio;
Object.defineProperty(window, "devicePixelRatio", { get: () => Math.max(2, screenRatio) });
window.dispatchEvent(new Event("dppxchange"));

export const PALETTE = ["#3f6fa8", "#d9822b", "#c23b3b", "#3c8d5a", "#7b5aa6", "#8a5a2b", "#c6629c",
  "#2d8c94"];
const FONT = "12px system-ui, sans-serif";
const PAPER_WIDE = 700; // px between the margins of A4
const PAPER_HALF = 342;
const PAPER_HEIGHT = 0.8; // of the height on a screen: three rows of curves fit a page

const figures = [];

/** A figure with a caption. `make(holder, width)` draws its plot. */
export function figure(parent, caption, make, wide = false) {
  const holder = el("div", { class: "plot" });
  const node = el("figure", wide ? { class: "wide" } : {}, el("figcaption", {}, caption), holder);
  const entry = {
    node, holder, plot: null,
    draw() {
      if (this.plot === null) {
        this.plot = make(holder, holder.clientWidth || PAPER_WIDE);
        node.dataset.drawn = "true";
      }
    },
    redraw() {
      if (this.plot !== null) {
        this.plot.destroy();
        this.plot = this.height = null;
        this.draw();
      }
    },
    resize(width, share = 1) {
      if (this.plot !== null && width > 0) {
        this.height = this.height ?? this.plot.height;
        this.plot.setSize({ width, height: Math.round(share * this.height) });
      }
    },
    remove() {
      seen.unobserve(node);
      sized.unobserve(holder);
      figures.splice(figures.indexOf(this), 1);
      node.remove();
    },
  };
  node.entry = holder.entry = entry;
  figures.push(entry);
  parent.append(node);
  seen.observe(node);
  sized.observe(holder);
  return entry;
}

const seen = new IntersectionObserver(entries => {
  entries.filter(each => each.isIntersecting).forEach(each => each.target.entry.draw());
}, { rootMargin: "600px" });

const sized = new ResizeObserver(entries => {
  if (!printing) {
    entries.forEach(each => each.target.entry.resize(Math.floor(each.contentRect.width)));
  }
});

let printing = false;

window.addEventListener("beforeprint", () => {
  printing = true;
  document.querySelectorAll("details").forEach(each => {
    each.dataset.open = each.open;
    each.open = each.open || !each.classList.contains("long");
  });
  for (const entry of figures) {
    entry.draw();
    entry.resize(entry.node.classList.contains("wide") ? PAPER_WIDE : PAPER_HALF,
      entry.node.closest(".modes") ? 1 : PAPER_HEIGHT);
  }
});

window.addEventListener("afterprint", () => {
  printing = false;
  document.querySelectorAll("details").forEach(each => { each.open = each.dataset.open === "true"; });
  figures.forEach(entry => entry.resize(entry.holder.clientWidth));
});

/** What the axes of all plots have in common. */
export function axis(label, more = {}) {
  return { label, size: 32, font: FONT, labelFont: FONT, labelSize: 20, stroke: "#333",
    grid: { stroke: "#e3e6ea", width: 1 }, ticks: { stroke: "#c8ced5", width: 1 },
    values: tickTexts, ...more };
}

/** Tick labels, as numbers stand in tables, also where all values are tiny. */
function tickTexts(plot, splits) {
  const most = Math.max(...splits.map(Math.abs));
  return splits.map(value => (value !== 0 && most < 1e-3 ? value.toExponential(1) : plain(value)));
}

/** Options that all plots have in common: hover by the cursor, zoom by dragging, back by a double
 * click, curves on and off by the legend. */
export function plotOptions(width, height, more) {
  return {
    width, height, padding: [10, 14, 0, 0], ...more,
    cursor: { drag: { x: true, y: true, uni: 24 }, points: { size: 7 }, ...more.cursor },
    legend: { markers: { width: 0, fill: mark }, ...more.legend },
  };
}

/** The mark of a curve in a legend: a piece of it, with its dashes. */
function mark(plot, at) {
  const { stroke, dash } = plot.series[at];
  const colour = stroke(plot, at);
  let end = 0;
  const pieces = (dash ?? []).map((length, i) =>
    `${i % 2 === 0 ? colour : "transparent"} ${end}px ${end += length}px`);
  return pieces.length > 0 ? `repeating-linear-gradient(90deg, ${pieces.join()})` : colour;
}

/** A range of a scale from zero to a little above the largest value. */
function fromZero(plot, least, most) {
  const low = Math.min(least ?? 0, 0);
  const high = most > low ? most : low + 1;
  return [low, high + 0.06 * (high - low)];
}

/** A range just around what is shown, for a scale that the user may zoom. */
export function around(plot, least, most) {
  const span = most - least || Math.abs(most) || 1;
  return [least - 0.03 * span, most + 0.03 * span];
}

// Curves against the load cases.

/** "speed" or "case": what the curves of the forced vibration are drawn against. */
export let caseAxis = speedsDiffer && data.speeds.length > 1 ? "speed" : "case";

/** Draws all curves of the forced vibration against "speed" or "case". */
export function drawAgainst(choice) {
  caseAxis = choice;
  figures.filter(entry => entry.followsCases).forEach(entry => entry.redraw());
}

function casesInOrder() {
  const cases = data.speeds.map((_, i) => i);
  return caseAxis === "case" ? cases
    : cases.sort((a, b) => data.speeds[a] - data.speeds[b] || a - b);
}

/** How orders are drawn, wherever they are: those of a source by their strength in the colours of
 * the palette, then again with other dashes. Kinds of sources begin with different colours, sources
 * differ in their dashes. */
const DASHES = [[], [7, 3], [2, 3], [12, 3], [8, 3, 2, 3], [4, 2]];
const orderStrokes = new Map();
const forcedSources = [...new Set((data.forced?.largest.orders ?? []).map(each => each.component))];
const forcedKinds = [...new Set(forcedSources.map(component => data.components[component].kind))];
forcedSources.forEach((component, source) => {
  const first = 3 * forcedKinds.indexOf(data.components[component].kind);
  const peak = ({ values }) => largest(values) ?? Infinity;
  const orders = data.forced.largest.orders.filter(each => each.component === component);
  orders.sort((a, b) => peak(b) - peak(a)).forEach(({ order }, place) => {
    const turn = Math.floor(place / PALETTE.length);
    orderStrokes.set(`${component} ${plain(order)}`, {
      stroke: PALETTE[(first + place) % PALETTE.length],
      dash: DASHES[(source % 3 + 3 * turn) % DASHES.length] });
  });
});

export const orderStroke = curve => orderStrokes.get(`${curve.component} ${plain(curve.order)}`);

/** A plot of curves against the load cases. `kind` chooses the unit; curves are {label, values,
 * stroke, dash, width, hidden}, the first one leads: without the cursor the legend shows where it peaks. */
export function casePlot(holder, width, name, kind, curves) {
  const cases = casesInOrder();
  const most = Math.max(0, ...curves.filter(curve => !curve.hidden).flatMap(curve => curve.values)
    .map(value => Math.abs(value ?? 0)));
  const [unit, unitName] = unitFor(kind, most);
  const values = curves.map(curve => cases.map(i => {
    const value = curve.values[i];
    return value === null || value === undefined ? null : value / unit;
  }));
  const show = value => digits(value, 4, most / unit);
  const peak = Math.max(0, values[0].indexOf(largest(values[0])));
  const x = cases.map(i => (caseAxis === "case" ? i + 1 : data.speeds[i]));
  const series = curves.map(curve => ({
    label: curve.label, stroke: curve.stroke, width: curve.width || 1.5, dash: curve.dash,
    points: { size: 4 }, show: !curve.hidden,
    value: (plot, value, at, index) => show(index === null ? plot.data[at][peak] : value),
  }));
  return new uPlot(plotOptions(width, 270, {
    scales: { x: { time: false, range: around }, y: { range: fromZero } },
    axes: [caseAxis === "case" ? axis("load case", { incrs: [1, 2, 5, 10, 20, 50] })
      : axis("speed [rpm]"), axis(`${name} [${unitName}]`, { size: 58 })],
    series: [{ label: "at", value: (plot, value, at, index) =>
      caseName(cases[index ?? peak], caseAxis === "case" || !speedsDiffer) },
      ...series],
  }), [x, ...values], holder);
}
