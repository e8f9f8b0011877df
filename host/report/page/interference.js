// The diagram of interferences of orders and natural frequencies.

import uPlot from "uplot";
import { RPM, data } from "./data.js";
import { capital, digits, plain } from "./format.js";
import { el } from "./elements.js";
import { PALETTE, axis, figure, plotOptions } from "./plots.js";
import { highestExcitation, orderLines, sources } from "./sources.js";

/** Sources whose order lines are the same, such as two engines on one gear, are drawn as one:
 * {components, name, lines}. */
function drawnSources() {
  const drawn = new Map();
  for (const source of sources) {
    const lines = orderLines(source);
    const key = lines.map(({ slope, offset }) => `${plain(slope)} ${plain(offset)}`).join();
    const same = drawn.get(key) ?? { components: [], names: [], lines };
    same.components.push(source.component);
    same.names.push(source.name);
    drawn.set(key, same);
  }
  return [...drawn.values()].map(({ names, ...each }) => ({ ...each,
    name: [names.slice(0, -1).join(", "), names[names.length - 1]].filter(Boolean).join(" and ") }));
}

/** Where order lines meet natural frequencies below a speed: {source, order, mode, rpm, frequency,
 * sums}, with the vector sums of the engines among the source. */
function crossings(drawn, speed) {
  const sumOf = new Map(data.free.criticals.map(each =>
    [`${each.component} ${each.mode} ${plain(each.order)}`, each.sum]));
  return drawn.flatMap(source => source.lines.filter(line => line.slope > 0).flatMap(({ order, slope }) =>
    data.free.frequencies.map((omega, i) => ({
      source, order, mode: i + 1, rpm: omega * RPM / slope, frequency: omega * RPM,
      sums: source.components.map(component =>
        sumOf.get(`${data.components.indexOf(component)} ${i + 1} ${plain(order)}`) ?? null)
        .filter(sum => sum !== null),
    })).filter(({ mode, rpm }) => mode > 1 && rpm > 0 && rpm <= speed)));
}

/** The highest speed of the plant: that of the load cases, or else the rated ones, in rpm. */
export function highestSpeed() {
  const rated = data.components.filter(each => each.speed > 0).map(each => each.speed / each.ratio);
  return Math.max(0, ...(data.speeds.length > 0 ? data.speeds : rated));
}

const CASES = { line: "#a9c1da", area: "#eef3f8" }; // colours of the speeds of the load cases

export function campbell(parent) {
  const drawn = drawnSources();
  const speed = 1.15 * highestSpeed();
  const modes = data.free.frequencies.slice(1).map(omega => omega * RPM);
  if (drawn.length === 0 || modes.length === 0 || !(speed > 0)) {
    return [el("p", {}, "The plant has no source of excitation with a speed: no order meets a mode.")];
  }
  const top = Math.min(1.1 * highestExcitation(), 1.08 * Math.max(...modes));
  const marks = crossings(drawn, speed);
  drawn.forEach((source, i) => {
    source.series = 2 + i;
    source.colour = PALETTE[(i + 1) % PALETTE.length];
  });
  const series = [{}, { label: "natural frequencies", stroke: "#222" },
    ...drawn.map(({ name, colour }) => ({ label: `orders of ${name}`, stroke: colour })),
    ...(data.speeds.length > 0 ? [{ label: "speeds of the load cases", stroke: CASES.line }] : [])];
  const reading = el("p", { class: "reading" },
    "Point at a crossing to read it; drag to zoom, double-click to go back.");

  figure(parent, "Natural frequencies and order lines against the reference speed", (holder, width) => {
    const x = Array.from({ length: 201 }, (_, i) => i * speed / 200);
    const none = x.map(() => null);
    return new uPlot(plotOptions(width, 600, {
      padding: [24, 44, 0, 0], // room for the orders
      scales: { x: { time: false, range: (plot, a, b) => [a, b] },
        y: { range: (plot, a, b) => (a === null || b === null || a === b ? [0, top] : [a, b]) } },
      axes: [axis("reference speed [rpm]"), axis("frequency [1/min]", { size: 70 })],
      series,
      legend: { live: false },
      cursor: { points: { show: false } },
      hooks: {
        drawClear: [shadeCases],
        draw: [plot => drawInterference(plot, drawn, marks, modes, speed)],
        setCursor: [plot => { reading.textContent = readCrossing(plot, marks) || reading.textContent; }],
      },
    }), series.map((_, i) => (i === 0 ? x : none)), holder);
  }, true);
  return [reading, el("p", { class: "quiet" }, "Marks show where orders meet natural "
    + "frequencies.", data.free.criticals.length > 0 ? " Those of engines grow with the relative "
    + "vector sum, with none below 0.02; those of other sources are small." : "")];
}

/** Shades the range of speeds of the load cases, which may be a single one. */
function shadeCases(plot) {
  const speeds = data.speeds.filter(each => each > 0);
  if (speeds.length === 0 || !plot.series[plot.series.length - 1].show) {
    return;
  }
  const { ctx, bbox: { left, top, width, height } } = plot;
  const [from, to] = [Math.min(...speeds), Math.max(...speeds)].map(each => plot.valToPos(each, "x", true));
  const clip = x => Math.min(Math.max(x, left), left + width);
  ctx.fillStyle = CASES.area;
  ctx.fillRect(clip(from), top, clip(to) - clip(from), height);
  ctx.fillStyle = CASES.line;
  for (const x of [from, to].filter(each => each === clip(each))) {
    ctx.fillRect(x - uPlot.pxRatio, top, 2 * uPlot.pxRatio, height);
  }
}

function drawInterference(plot, drawn, marks, modes, speed) {
  const { ctx, bbox } = plot;
  const px = uPlot.pxRatio;
  const X = value => plot.valToPos(value, "x", true);
  const Y = value => plot.valToPos(value, "y", true);
  const stroke = (colour, width, x0, y0, x1, y1) => {
    ctx.strokeStyle = colour;
    ctx.lineWidth = width * px;
    ctx.beginPath();
    ctx.moveTo(X(x0), Y(y0));
    ctx.lineTo(X(x1), Y(y1));
    ctx.stroke();
  };
  const shown = drawn.filter(each => plot.series[each.series].show);
  ctx.save();
  ctx.beginPath();
  ctx.rect(bbox.left, bbox.top, bbox.width, bbox.height);
  ctx.clip();
  if (plot.series[1].show) {
    modes.forEach(frequency => stroke("#222", 1.4, 0, frequency, speed, frequency));
  }
  for (const { lines, colour } of shown) {
    for (const { order, slope, offset } of lines) {
      stroke(colour, Number.isInteger(order) ? 1 : 0.5, 0, offset, speed, offset + slope * speed);
    }
  }
  for (const { source, rpm, frequency, sums } of marks.filter(each => shown.includes(each.source))) {
    const sum = Math.max(...sums); // -Infinity without an engine
    if (sums.length === 0 || sum >= 0.02) {
      ctx.beginPath();
      ctx.arc(X(rpm), Y(frequency), (sums.length === 0 ? 3 : 2 + 6 * Math.sqrt(sum)) * px, 0, 7);
      ctx.fillStyle = `${source.colour}b0`;
      ctx.fill();
    }
  }
  ctx.restore();
  labelOrders(plot, shown);
}

/** Writes orders where their lines leave the plot, above it and to its right: as many as there is
 * room for, whole ones first. */
function labelOrders(plot, shown) {
  const { ctx, bbox, scales: { x, y } } = plot;
  const px = uPlot.pxRatio;
  const labels = shown.flatMap(({ lines, colour }) => lines.map(line => ({ ...line, colour })));
  labels.sort((a, b) => Number.isInteger(b.order) - Number.isInteger(a.order));
  const written = [];
  ctx.save();
  ctx.font = `${11 * px}px system-ui, sans-serif`;
  ctx.textBaseline = "middle";
  for (const { order, slope, offset, colour } of labels) {
    const text = plain(order);
    const right = offset + slope * x.max;
    const above = right > y.max;
    const speed = above ? (y.max - offset) / slope : x.max;
    const half = (above ? ctx.measureText(text).width / 2 + 3 * px : 6 * px);
    const at = above ? plot.valToPos(speed, "x", true) : plot.valToPos(right, "y", true);
    if (speed < x.min || right < y.min
      || written.some(each => each.above === above && Math.abs(each.at - at) < each.half + half)) {
      continue;
    }
    written.push({ above, at, half });
    ctx.fillStyle = colour;
    ctx.textAlign = above ? "center" : "left";
    ctx.fillText(text, above ? at : bbox.left + bbox.width + 5 * px, above ? bbox.top - 8 * px : at);
  }
  ctx.restore();
}

/** The words for the crossing under the cursor, and for others at the same place. */
function readCrossing(plot, marks) {
  const { left, top } = plot.cursor;
  if (left === undefined || left < 0) {
    return "";
  }
  const shown = marks.filter(each => plot.series[each.source.series].show);
  const away = mark =>
    Math.hypot(plot.valToPos(mark.rpm, "x") - left, plot.valToPos(mark.frequency, "y") - top);
  const nearest = shown.reduce((a, b) => (away(b) < (a === null ? 14 : away(a)) ? b : a), null);
  if (nearest === null) {
    return `${digits(plot.posToVal(left, "x"))} rpm, ${digits(plot.posToVal(top, "y"))} 1/min`;
  }
  const name = ({ order, source }) => `order ${plain(order)} of ${source.name}`;
  const weight = ({ sums }) => (sums.length === 0 ? ""
    : `, relative vector sum ${[...new Set(sums.map(each => digits(each, 3)))].join(" and ")}`);
  const { mode, rpm, frequency } = nearest;
  const others = shown.filter(each => each !== nearest && each.mode === mode
    && Math.abs(each.rpm - rpm) < 1e-6 * rpm);
  return `${capital(name(nearest))} meets mode ${mode} (${digits(frequency, 5)} 1/min) `
    + `at ${digits(rpm, 4)} rpm${weight(nearest)}`
    + others.map(each => `; so does ${name(each)}${weight(each)}`).join("");
}
