// Numbers, names and units of the report, and the document's elements.

const data = JSON.parse(document.getElementById("data").textContent);

const RPM = 30 / Math.PI; // rpm in a rad/s

/** An element with attributes and children; a child is an element or a text. */
function el(tag, attributes = {}, ...children) {
  return filled(document.createElement(tag), attributes, children);
}

/** The same for a drawing. */
function svg(tag, attributes = {}, ...children) {
  return filled(document.createElementNS("http://www.w3.org/2000/svg", tag), attributes, children);
}

function filled(node, attributes, children) {
  for (const [name, value] of Object.entries(attributes)) {
    node.setAttribute(name, value);
  }
  node.append(...children.flat().filter(child => child !== null));
  return node;
}

const exponentOf = size => Math.floor(Math.log10(size));

/** A number with this many significant digits; large ones keep their digits before the point, and
 * none has digits below a millionth of the largest number of its column, where that is given. */
function digits(value, significant = 4, most = 0) {
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
const plain = value => String(Number(value.toPrecision(6)));

/** A number of the input file with the digits that it has there, large ones with an exponent. */
const given = value => (value < 1e7 ? plain(value)
  : `${plain(value / 10 ** exponentOf(value))}e${exponentOf(value)}`);

/** A length in mm; none where it is 0. */
const millimetres = metres => (metres > 0 ? plain(metres * 1e3) : "–");

/** The units that a quantity is shown in, by the value that one of it has; smallest first. */
const UNITS = {
  torque: [[1, "N m"], [1e3, "kN m"]],
  stress: [[1e6, "N/mm²"]],
  deflection: [[1e-3, "mrad"]],
  acceleration: [[1, "rad/s²"]],
  power: [[1, "W"], [1e3, "kW"]],
};

/** The unit that suits values up to a size: its value and its name. */
function unitFor(kind, size) {
  const units = UNITS[kind];
  const suitable = units.filter(([value]) => size >= 2 * value);
  return suitable.length > 0 ? suitable[suitable.length - 1] : units[0];
}

/** The largest of values that may be null; null if there is none. */
function largest(values) {
  return values.reduce((a, b) => (a === null || (b !== null && b > a) ? b : a), null);
}

const capital = text => text.charAt(0).toUpperCase() + text.slice(1);

function componentName(component) {
  return component.name || `${component.kind} ${component.id}`;
}

/** The components at each inertia and shaft. */
const componentOfInertia = new Map();
const componentOfShaft = new Map();
for (const component of data.components) {
  for (const row of component.inertias) {
    if (!componentOfInertia.has(row) || component.shafts.length === 0) {
      componentOfInertia.set(row, component);
    }
  }
  component.shafts.forEach(row => componentOfShaft.set(row, component));
}

function inertiaTitle(row) {
  const inertia = data.inertias[row];
  const component = componentOfInertia.get(row);
  const words = [inertia.name, component && componentName(component)].filter(Boolean);
  return `inertia ${inertia.id}` + (words.length > 0 ? `, ${words.join(", ")}` : "");
}

function shaftTitle(row) {
  const shaft = data.shafts[row];
  const ends = `${data.inertias[shaft.origin].id}–${data.inertias[shaft.destination].id}`;
  const component = componentOfShaft.get(row);
  const words = [shaft.name, component && componentName(component)].filter(Boolean);
  return `shaft ${shaft.id} (${ends})` + (words.length > 0 ? `, ${words.join(", ")}` : "");
}

/** Whether every load case has its own speed, so that the speed names it. */
const speedsDiffer = new Set(data.speeds).size === data.speeds.length;

function caseName(loadCase, numbered = !speedsDiffer) {
  const speed = `${plain(data.speeds[loadCase])} rpm`;
  return numbered ? `case ${loadCase + 1}, ${speed}` : speed;
}

const singleSource = new Set(data.components.filter(c => c.orders.length > 0)).size === 1;

/** The name of the curve of an order. */
function orderName(curve) {
  return `order ${plain(curve.order)}`
    + (singleSource ? "" : ` of ${componentName(data.components[curve.component])}`);
}

const ROWS_KEPT = 25; // a table of that many isn't broken across pages

/** A table: columns are [heading, unit]; rows hold texts or elements. Numbers stand to the right. */
function table(columns, rows, className = "") {
  const numeric = columns.map((_, i) => rows.every(row => /^[-–+\d.eE]*$/.test(row[i])));
  const wordiness = text => (text.length > 30 ? "wordy long" : text.length > 20 ? "wordy" : "");
  const cell = (tag, i, ...content) =>
    el(tag, { class: numeric[i] ? "number" : wordiness(content[0]) }, ...content);
  const kept = rows.length <= ROWS_KEPT ? "kept" : "";
  return el("div", { class: `scroll ${kept} ${className}` }, el("table", {},
    el("thead", {}, el("tr", {}, columns.map(([heading, unit], i) =>
      cell("th", i, heading, unit ? el("span", { class: "unit" }, unit) : null)))),
    el("tbody", {}, rows.map(row => el("tr", {}, row.map((text, i) => cell("td", i, text)))))));
}

/** Folded content. What is too long for paper isn't unfolded there. */
function details(summary, content, onPaper = true) {
  return el("details", onPaper ? {} : { class: "long" }, el("summary", {}, summary), content);
}

/** The rows of a table, in parts that stand side by side. */
function parted(rows, parts) {
  const size = Math.max(8, Math.ceil(rows.length / parts));
  return Array.from({ length: Math.ceil(rows.length / size) }, (_, i) =>
    rows.slice(i * size, (i + 1) * size));
}
