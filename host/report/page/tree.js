// The drawing of the mass-elastic system: discs sized by inertia, shafts, gears, components.

import { data } from "./data.js";
import { given, millimetres, plain } from "./format.js";
import { el, svg } from "./elements.js";
import { componentName, componentOfInertia, componentOfShaft, inertiaTitle, shaftTitle } from "./names.js";
import { tree } from "./layout.js";

const KIND_COLOURS = {
  "diesel": "#3f6fa8",
  "propeller": "#b5762a",
  "generator": "#3c8d5a",
  "electric motor": "#7b5aa6",
  "gas turbine": "#a34a6a",
  "steam turbine": "#a34a6a",
  "centrifugal pump": "#2d8c94",
  "reciprocating pump": "#2d8c94",
};
const PLAIN_DISC = "#8b95a1";
const COUPLING = "#c2503a";
const DAMPER = "#8a5a2b";

const DISC_HALF = 46; // half the height of the largest disc
const CHARACTER = 7.4; // width of a character of a label
const LABEL_LINE = 15;

/** Half the height of a disc: with the root of its inertia, referred to the speed of the line. */
function discHalf(row) {
  const referred = data.inertias.map(each => each.inertia * each.ratio * each.ratio);
  return Math.max(5, DISC_HALF * Math.sqrt(referred[row] / (Math.max(...referred) || 1)));
}

/** The symbol of a machine at the place of its disc, its top at y. */
function machineSymbol(kind, x, y, colour) {
  const stroke = { stroke: colour, "stroke-width": 1.6, fill: "white" };
  const letters = { "generator": "G", "electric motor": "M", "centrifugal pump": "P",
    "gas turbine": "T", "steam turbine": "T" };
  if (kind === "diesel" || kind === "reciprocating pump") { // piston and rod
    return svg("g", {},
      svg("line", { x1: x, x2: x, y1: y - 12, y2: y, ...stroke }),
      svg("rect", { x: x - 6, y: y - 20, width: 12, height: 9, rx: 1.5, ...stroke }));
  }
  if (kind === "propeller") { // two blades
    return svg("path", { d: `M${x} ${y} c-9 -4 -9 -16 0 -22 c9 6 9 18 0 22`, ...stroke });
  }
  const text = svg("text", { x, y: y - 8, "text-anchor": "middle", fill: colour, class: "letter" },
    letters[kind] || "");
  if (kind.includes("turbine")) {
    const d = `M${x - 8} ${y - 18} L${x + 8} ${y - 24} V${y - 1} L${x - 8} ${y - 7} Z`;
    return svg("g", {}, svg("path", { d, ...stroke }), text);
  }
  return svg("g", {}, svg("circle", { cx: x, cy: y - 12, r: 10, ...stroke }), text);
}

/** The symbol of a coupling, damper or gear in the middle of a shaft. */
function shaftSymbol(row, x, y) {
  const shaft = data.shafts[row];
  const component = componentOfShaft.get(row);
  if (component && component.kind.includes("coupling")) { // a spring between two flanges
    const d = `M${x - 7} ${y - 9} v18 M${x + 7} ${y - 9} v18 M${x - 7} ${y} l2.3 -5 l4.6 10 l4.6 -10 l2.5 5`;
    return svg("g", {}, svg("rect", { x: x - 7, y: y - 9, width: 14, height: 18, fill: "white" }),
      svg("path", { d, fill: "none", stroke: COUPLING, "stroke-width": 1.8 }));
  }
  if (component && component.kind.includes("damper")) { // a dashpot
    const d = `M${x + 7} ${y - 7} h-12 v14 h12 M${x + 1} ${y - 5} v10 M${x + 1} ${y} h8`;
    return svg("g", {}, svg("rect", { x: x - 8, y: y - 8, width: 16, height: 16, fill: "white" }),
      svg("path", { d, fill: "none", stroke: DAMPER, "stroke-width": 1.8 }));
  }
  const [a, b] = [data.inertias[shaft.origin].ratio, data.inertias[shaft.destination].ratio];
  if (Math.abs(a - b) > 1e-9 * Math.abs(a)) { // two wheels in mesh
    const wheel = { fill: "white", stroke: "#333", "stroke-width": 1.6, "stroke-dasharray": "2 1.4" };
    return svg("g", {}, svg("circle", { cx: x, cy: y - 7, r: a > b ? 4.5 : 7, ...wheel }),
      svg("circle", { cx: x, cy: y + 7, r: a > b ? 7 : 4.5, ...wheel }));
  }
  return null;
}

/** Puts labels into lines below y so that none covers another; each is {x, text, colour}. */
function labelLines(labels, y, width) {
  const ends = [];
  const group = svg("g", {});
  labels.sort((a, b) => a.x - b.x);
  for (const { x, text, colour } of labels) {
    const half = text.length * CHARACTER / 2;
    const middle = Math.min(Math.max(x, half), Math.max(width - half, half));
    let line = ends.findIndex(end => end < middle - half - 4);
    if (line < 0) {
      line = ends.length;
    }
    ends[line] = middle + half;
    group.append(svg("text", { x: middle, y: y + line * LABEL_LINE, "text-anchor": "middle",
      fill: colour, class: "label" }, text));
  }
  return { group, height: ends.length * LABEL_LINE };
}

/** The labels of the components of a lane; those of engines stand in the middle of the engine. */
function laneLabels(lane, position) {
  const labels = [];
  for (const component of data.components) {
    const rows = component.shafts.length > 0
      ? component.shafts.flatMap(row => [data.shafts[row].origin, data.shafts[row].destination])
      : component.inertias;
    if (rows.length === 0 || tree.place[rows[0]].lane !== lane) {
      continue;
    }
    const columns = rows.map(row => position(row).x);
    labels.push({
      x: (Math.min(...columns) + Math.max(...columns)) / 2,
      text: componentName(component),
      colour: KIND_COLOURS[component.kind] || (component.kind.includes("damper") ? DAMPER : COUPLING),
    });
  }
  return labels;
}

function inertiaHint(row) {
  const inertia = data.inertias[row];
  return `${inertiaTitle(row)}\n${given(inertia.inertia)} kg m², speed ratio ${plain(inertia.ratio)}`;
}

function shaftHint(row) {
  const shaft = data.shafts[row];
  const outer = shaft.outer > 0 ? `, Ø ${millimetres(shaft.outer)} mm` : "";
  return `${shaftTitle(row)}\n${given(shaft.stiffness)} N m/rad${outer}`;
}

/** The whole drawing. */
export function drawTree() {
  const step = Math.min(64, Math.max(30, 1180 / tree.columns));
  const width = (tree.columns + 0.2) * step;
  const lanes = [...new Set(tree.place.map(each => each.lane))].sort((a, b) => a - b);
  const x = row => (tree.place[row].x + 0.6) * step;

  // Lanes from top to bottom, each as high as its symbols and labels ask for.
  const laneY = new Map();
  const texts = svg("g", {});
  let bottom = 0;
  for (const lane of lanes) {
    const y = bottom + DISC_HALF + 30;
    laneY.set(lane, y);
    const labels = labelLines(laneLabels(lane, row => ({ x: x(row) })), y + DISC_HALF + 30, width);
    texts.append(labels.group);
    bottom = y + DISC_HALF + 24 + labels.height;
  }
  const y = row => laneY.get(tree.place[row].lane);

  const shafts = svg("g", {});
  const discs = svg("g", {});
  data.shafts.forEach((shaft, row) => {
    const [a, b] = [shaft.origin, shaft.destination];
    const bent = y(a) !== y(b);
    // A branch leaves its wheel towards its own lane, then turns along the line.
    const [attach, first] = tree.branches.some(each => each.attach === a && each.inertias[0] === b)
      ? [a, b] : [b, a];
    const d = bent ? `M${x(attach)} ${y(attach)} V${y(first)} H${x(first)}`
      : `M${x(a)} ${y(a)} H${x(b)}`;
    const middle = bent ? [(x(attach) + x(first)) / 2, y(first)] : [(x(a) + x(b)) / 2, y(a)];
    shafts.append(svg("g", {}, svg("title", {}, shaftHint(row)),
      svg("path", { d, fill: "none", stroke: "#333", "stroke-width": 2.5 }),
      shaftSymbol(row, ...middle)));
  });
  data.inertias.forEach((inertia, row) => {
    const kind = componentOfInertia.get(row)?.kind || "";
    const colour = KIND_COLOURS[kind] || PLAIN_DISC;
    const half = discHalf(row);
    discs.append(svg("g", {}, svg("title", {}, inertiaHint(row)),
      KIND_COLOURS[kind] ? machineSymbol(kind, x(row), y(row) - half, colour) : null,
      svg("rect", { x: x(row) - 5, y: y(row) - half, width: 10, height: 2 * half, rx: 2,
        fill: colour, stroke: "white" }),
      svg("text", { x: x(row), y: y(row) + DISC_HALF + 14, "text-anchor": "middle", class: "id" },
        String(inertia.id))));
  });
  return el("div", { class: "tree scroll" }, svg("svg", { viewBox: `0 0 ${width} ${bottom}`,
    style: `min-width:${Math.min(width, tree.columns * 28)}px;max-width:${1.3 * width}px` },
    shafts, discs, texts));
}
