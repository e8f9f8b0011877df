// Free vibration: natural frequencies, mode shapes, and the diagram of interferences.

/** Orders of gas and mass forces above this one are too weak to matter. */
const HIGHEST_CYLINDER_ORDER = 12;

/** The highest frequency that a source excites with any strength at the highest speed, in rpm. */
function highestExcitation() {
  const speed = Math.max(0, ...data.speeds);
  const reach = component => {
    const own = component.fixedSpeed ?? (speed > 0 ? speed * component.ratio : component.speed);
    const cylinders = ["diesel", "reciprocating pump"].includes(component.kind);
    const orders = component.orders.filter(order => !cylinders || order <= HIGHEST_CYLINDER_ORDER);
    return own * Math.max(0, ...orders);
  };
  return Math.max(0, ...data.components.map(reach));
}

function frequencyTable() {
  const { frequencies, nodes } = data.free;
  const rows = frequencies.map((omega, i) => [String(i + 1), digits(omega, 5),
    digits(omega / (2 * Math.PI), 5), digits(omega * RPM, 5),
    i === 0 ? "0" : String(nodes[i - 1]?.length ?? "–")]);
  return el("div", { class: "pair" }, parted(rows, 3).map(part => table([["mode"],
    ["angular", "rad/s"], ["frequency", "Hz"], ["frequency", "1/min"], ["nodes"]], part)));
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
  branch.inertias.filter(row => !rings.has(row)).forEach(row => { rows[tree.place[row].x] = row; });
  const ids = [branch.inertias[0], branch.inertias[branch.inertias.length - 1]]
    .map(row => data.inertias[row].id);
  const name = ids[0] === ids[1] ? `inertia ${ids[0]}` : `inertias ${ids[0]} to ${ids[1]}`;
  return { name, rows, stroke: PALETTE[i % PALETTE.length] };
});

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
    axes: [axis("inertia", { incrs: [1, 2, 5, 10, 20, 50],
      values: (plot, splits) => splits.map(at => (Number.isInteger(at) ? idAt(at) : "")) }),
      axis("relative deflection", { size: 52 })],
    series: [{}, ...branchCurves.map((curve, i) => ({
      label: curve.name, stroke: curve.stroke, width: 1.8, points: { show: true, size: 4 },
      value: (plot, value, at, column) => {
        const row = curve.rows[column ?? peak[i]];
        return row === null ? "–" : `${data.inertias[row].id}: ${digits(shape[row], 4, 1)}`;
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
function modeFigures() {
  const limit = highestExcitation();
  const [near, far] = [el("div", { class: "figures modes" }), el("div", { class: "figures modes" })];
  let folded = 0;
  data.free.shapes.forEach((shape, i) => {
    const rpm = data.free.frequencies[i + 1] * RPM;
    const excited = limit === 0 || i < 2 || rpm <= limit;
    folded += excited ? 0 : 1;
    const caption = `Mode ${i + 2}: ${digits(rpm, 5)} 1/min, ${digits(rpm / 60, 5)} Hz`;
    figure(excited ? near : far, shape.every(value => value !== null) ? caption
      : `${caption}, not finite: the reference inertia is at rest`,
      (holder, width) => modePlot(holder, width, i));
  });
  return folded === 0 ? [near] : [near, details(
    `${folded} more, above ${digits(limit, 4)} 1/min, the highest excitation of the plant`, far)];
}

// The diagram of interferences.

/** The order lines of a source: frequency in rpm against the reference speed. */
function orderLines(component) {
  return component.orders.filter(order => order > 0).map(order => component.fixedSpeed !== undefined
    ? { component, order, slope: 0, offset: order * component.fixedSpeed }
    : { component, order, slope: order * component.ratio, offset: 0 });
}

/** Where order lines meet natural frequencies below a speed: {line, mode, rpm, frequency, sum}. */
function crossings(lines, speed) {
  const sums = new Map(data.free.criticals.map(each =>
    [`${each.component} ${each.mode} ${plain(each.order)}`, each.sum]));
  const found = [];
  for (const line of lines.filter(each => each.slope > 0)) {
    data.free.frequencies.slice(1).forEach((omega, i) => {
      const rpm = omega * RPM / line.slope;
      if (omega > 0 && rpm <= speed) {
        const key = `${data.components.indexOf(line.component)} ${i + 2} ${plain(line.order)}`;
        found.push({ line, mode: i + 2, rpm, frequency: omega * RPM, sum: sums.get(key) });
      }
    });
  }
  return found;
}

function campbell(parent) {
  const sources = data.components.filter(component => component.orders.some(order => order > 0));
  const rated = data.components.filter(c => c.speed > 0).map(c => c.speed / c.ratio);
  const speed = 1.15 * Math.max(...data.speeds, data.speeds.length > 0 ? 0 : Math.max(0, ...rated));
  const lines = sources.flatMap(orderLines);
  const modes = data.free.frequencies.slice(1).map(omega => omega * RPM);
  if (lines.length === 0 || modes.length === 0 || !(speed > 0)) {
    return el("p", {}, "The plant has no source of excitation with a speed: no order meets a mode.");
  }
  const top = Math.min(1.1 * highestExcitation(), 1.08 * Math.max(...modes));
  const marks = crossings(lines, speed);
  const colours = sources.map((_, i) => PALETTE[(i + 1) % PALETTE.length]);
  const reading = el("p", { class: "reading" },
    "Point at a crossing to read it; drag to zoom, double-click to go back.");

  figure(parent, "Natural frequencies and order lines against the reference speed", (holder, width) => {
    const x = Array.from({ length: 201 }, (_, i) => i * speed / 200);
    const none = x.map(() => null);
    return new uPlot(plotOptions(width, 600, {
      scales: { x: { time: false, range: (plot, a, b) => [a, b] },
        y: { range: (plot, a, b) => (a === null || b === null || a === b ? [0, top] : [a, b]) } },
      axes: [axis("reference speed [rpm]"), axis("frequency [1/min]", { size: 70 })],
      series: [{}, { label: "natural frequencies", stroke: "#222" },
        ...sources.map((source, i) => ({ label: `orders of ${componentName(source)}`,
          stroke: colours[i] }))],
      legend: { live: false },
      cursor: { points: { show: false } },
      hooks: {
        drawClear: [plot => shadeCases(plot)],
        draw: [plot => drawInterference(plot, { sources, lines, marks, colours, modes, speed })],
        setCursor: [plot => { reading.textContent = readCrossing(plot, marks) || reading.textContent; }],
      },
    }), [x, none, ...sources.map(() => none)], holder);
  }, true);
  return reading;
}

/** Shades the range of speeds of the load cases. */
function shadeCases(plot) {
  const speeds = data.speeds.filter(each => each > 0);
  if (speeds.length === 0) {
    return;
  }
  const { left, top, width, height } = plot.bbox;
  const clip = value => Math.min(Math.max(value, left), left + width);
  const from = clip(plot.valToPos(Math.min(...speeds), "x", true));
  const to = clip(plot.valToPos(Math.max(...speeds), "x", true));
  plot.ctx.fillStyle = "#eef3f8";
  plot.ctx.fillRect(from - uPlot.pxRatio, top, to - from + 2 * uPlot.pxRatio, height);
}

function drawInterference(plot, { sources, lines, marks, colours, modes, speed }) {
  const { ctx, bbox } = plot;
  const px = uPlot.pxRatio;
  const X = value => plot.valToPos(value, "x", true);
  const Y = value => plot.valToPos(value, "y", true);
  ctx.save();
  ctx.beginPath();
  ctx.rect(bbox.left, bbox.top, bbox.width, bbox.height);
  ctx.clip();
  ctx.font = `${11 * px}px system-ui, sans-serif`;
  const stroke = (colour, width, x0, y0, x1, y1) => {
    ctx.strokeStyle = colour;
    ctx.lineWidth = width * px;
    ctx.beginPath();
    ctx.moveTo(X(x0), Y(y0));
    ctx.lineTo(X(x1), Y(y1));
    ctx.stroke();
  };
  if (plot.series[1].show) {
    modes.forEach(frequency => stroke("#222", 1.4, 0, frequency, speed, frequency));
  }
  const shown = component => plot.series[2 + sources.indexOf(component)].show;
  const labels = [];
  for (const { component, order, slope, offset } of lines.filter(each => shown(each.component))) {
    const colour = colours[sources.indexOf(component)];
    stroke(colour, Number.isInteger(order) ? 1 : 0.5, 0, offset, speed, offset + slope * speed);
    labelOrder(plot, labels, colour, order, offset, slope);
  }
  for (const { line, rpm, frequency, sum } of marks.filter(each => shown(each.line.component))) {
    if (sum !== undefined && sum !== null && sum < 0.02) {
      continue;
    }
    ctx.beginPath();
    ctx.arc(X(rpm), Y(frequency), (sum === undefined || sum === null ? 2 : 2 + 6 * Math.sqrt(sum)) * px, 0, 7);
    ctx.fillStyle = `${colours[sources.indexOf(line.component)]}b0`;
    ctx.fill();
  }
  ctx.restore();
}

/** Writes an order where its line leaves the plot, if no label is in the way. */
function labelOrder(plot, labels, colour, order, offset, slope) {
  const { ctx, bbox, scales } = plot;
  const px = uPlot.pxRatio;
  const right = offset + slope * scales.x.max;
  const leavesAtTop = right > scales.y.max;
  const x = leavesAtTop ? (scales.y.max - offset) / slope : scales.x.max;
  const left = plot.valToPos(x, "x", true);
  const top = plot.valToPos(leavesAtTop ? scales.y.max : right, "y", true);
  const inside = x >= scales.x.min && top <= bbox.top + bbox.height;
  const covered = labels.some(each => Math.abs(each.top - top) < 11 * px
    && Math.abs(each.left - left) < 24 * px);
  if (inside && !covered) {
    labels.push({ left, top });
    ctx.fillStyle = colour;
    ctx.textAlign = "right";
    ctx.fillText(plain(order), left - (leavesAtTop ? 4 : 3) * px, top + (leavesAtTop ? 12 : -3) * px);
  }
}

/** The words for the crossing under the cursor. */
function readCrossing(plot, marks) {
  const { left, top } = plot.cursor;
  if (left === undefined || left < 0) {
    return "";
  }
  let nearest = null;
  let distance = 14;
  for (const mark of marks) {
    const away = Math.hypot(plot.valToPos(mark.rpm, "x") - left, plot.valToPos(mark.frequency, "y") - top);
    if (away < distance) {
      [nearest, distance] = [mark, away];
    }
  }
  if (nearest === null) {
    return `${digits(plot.posToVal(left, "x"))} rpm, ${digits(plot.posToVal(top, "y"))} 1/min`;
  }
  const { line, mode, rpm, frequency, sum } = nearest;
  const weight = sum === undefined || sum === null ? "" : `, relative vector sum ${digits(sum, 3)}`;
  return `Order ${plain(line.order)} of ${componentName(line.component)} meets mode ${mode} `
    + `(${digits(frequency, 5)} 1/min) at ${digits(rpm, 4)} rpm${weight}`;
}
