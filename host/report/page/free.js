// Free vibration: natural frequencies and mode shapes.

import uPlot from "uplot";
import { RPM, data } from "./data.js";
import { digits, largest } from "./format.js";
import { details, el, parted, table } from "./elements.js";
import { tree } from "./layout.js";
import { PALETTE, around, axis, figure, plotOptions } from "./plots.js";
import { HIGHEST_CYLINDER_ORDER, highestExcitation } from "./sources.js";

export function frequencyTable() {
  const { frequencies, nodes } = data.free;
  const rows = frequencies.map((omega, i) => [String(i + 1), digits(omega, 5),
    digits(omega / (2 * Math.PI), 5), digits(omega * RPM, 5),
    i === 0 ? "0" : String(nodes[i - 1]?.length ?? "–")]);
  return el("div", { class: "pair" }, parted(rows, 3).map(part => table([["mode"],
    ["rad/s"], ["Hz"], ["1/min"], ["nodes"]], part)));
}

/** The rings of viscous dampers, which take no part in free vibration. */
const rings = new Set(data.components.filter(component => component.kind === "viscous damper")
  .map(component => component.inertias[1]));

/** The branches as curves along the columns of the tree: name, and the inertia at each column. */
const branchCurves = tree.branches.map((branch, i) => {
  const rows = new Array(tree.columns).fill(null);
  if (branch.attach !== null) {
    rows[tree.place[branch.attach].x] = branch.attach;
  }
  const swinging = branch.inertias.filter(row => !rings.has(row));
  swinging.forEach(row => { rows[tree.place[row].x] = row; });
  const ids = [...new Set([swinging[0], swinging[swinging.length - 1]])].map(row => data.inertias[row]?.id);
  const name = `${ids.length > 1 ? "inertias" : "inertia"} ${ids.join(" to ")}`;
  return { name, rows, swinging, stroke: PALETTE[i % PALETTE.length] };
}).filter(({ swinging }) => swinging.length > 0);

const longestId = Math.max(...data.inertias.map(({ id }) => String(id).length));

/** Where a shaft is drawn in a mode shape: the columns of its ends. */
function shaftColumns(row) {
  const shaft = data.shafts[row];
  return [tree.place[shaft.origin].x, tree.place[shaft.destination].x];
}

/** Marks the nodes of a mode on the zero line of its plot. */
function markNodes(plot, nodes) {
  const { ctx } = plot;
  ctx.save();
  ctx.beginPath();
  ctx.rect(plot.bbox.left, plot.bbox.top, plot.bbox.width, plot.bbox.height);
  ctx.clip();
  const y = plot.valToPos(0, "y", true);
  for (const { shaft, along } of nodes || []) {
    const [from, to] = shaftColumns(shaft);
    ctx.beginPath();
    ctx.arc(plot.valToPos(from + along * (to - from), "x", true), y, 4 * uPlot.pxRatio, 0, 7);
    ctx.lineWidth = 1.5 * uPlot.pxRatio;
    ctx.strokeStyle = "#111";
    ctx.fillStyle = "white";
    ctx.fill();
    ctx.stroke();
  }
  ctx.restore();
}

function modePlot(holder, width, index) {
  const most = largest(data.free.shapes[index].map(value => (value === null ? null : Math.abs(value))));
  const shape = data.free.shapes[index].map(value => (value === null ? null : value / (most || 1)));
  const values = branchCurves.map(curve => curve.rows.map(row => (row === null ? null : shape[row])));
  const peak = branchCurves.map((curve, i) => {
    const sizes = values[i].map(value => (value === null ? null : Math.abs(value)));
    return Math.max(0, sizes.indexOf(largest(sizes)));
  });
  const idAt = column => {
    const row = branchCurves.map(curve => curve.rows[column]).find(each => each !== null && each !== undefined);
    return row === undefined ? "" : String(data.inertias[row].id);
  };
  return new uPlot(plotOptions(width, 190, {
    scales: { x: { time: false, range: around }, y: { range: around } },
    axes: [axis("inertia", { incrs: [1, 2, 5, 10, 20, 50], space: 10 + 8 * longestId,
      values: (plot, splits) => splits.map(at => (Number.isInteger(at) ? idAt(at) : "")) }),
      axis("relative deflection", { size: 52 })],
    series: [{}, ...branchCurves.map((curve, i) => ({
      label: curve.name, stroke: curve.stroke, width: 1.8, points: { show: true, size: 4 },
      value: (plot, value, at, column) => {
        const row = curve.rows[column ?? peak[i]];
        return row === null ? "–" : `${digits(shape[row], 4, 1)} at ${data.inertias[row].id}`;
      },
    }))],
    hooks: { draw: [plot => markNodes(plot, data.free.nodes[index])],
      drawAxes: [plot => zeroLine(plot)] },
  }), [tree.place.length > 0 ? [...Array(tree.columns).keys()] : [], ...values], holder);
}

function zeroLine(plot) {
  const y = plot.valToPos(0, "y", true);
  const { left, top, width, height } = plot.bbox;
  if (y >= top && y <= top + height) {
    plot.ctx.fillStyle = "#9aa3ad";
    plot.ctx.fillRect(left, y, width, uPlot.pxRatio);
  }
}

/** The mode shapes; those that nothing in the plant excites are folded away. */
export function modeFigures() {
  const limit = highestExcitation();
  const [near, far] = [el("div", { class: "figures modes" }), el("div", { class: "figures modes" })];
  let folded = 0;
  data.free.shapes.forEach((shape, i) => {
    const rpm = data.free.frequencies[i + 1] * RPM;
    const excited = limit === 0 || i < 2 || rpm <= limit;
    folded += excited ? 0 : 1;
    const caption = `Mode ${i + 2}: ${digits(rpm, 5)} 1/min, ${digits(rpm / data.units.minute, 5)} Hz`;
    figure(excited ? near : far, shape.every(value => value !== null) ? caption
      : `${caption}, not finite: the reference inertia is at rest`,
      (holder, width) => modePlot(holder, width, i));
  });
  const weakly = highestExcitation(Infinity) > limit
    ? ` but cylinders by orders above ${HIGHEST_CYLINDER_ORDER}` : "";
  return folded === 0 ? [near] : [near, details(
    `${folded} more, above ${digits(limit, 4)} 1/min, which no source reaches${weakly}`, far)];
}
