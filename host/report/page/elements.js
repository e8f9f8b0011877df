// The document's elements, and the tables, folded parts and drawings made of them.

/** An element with attributes and children; a child is an element or a text. */
export function el(tag, attributes = {}, ...children) {
  return filled(document.createElement(tag), attributes, children);
}

/** The same for a drawing. */
export function svg(tag, attributes = {}, ...children) {
  return filled(document.createElementNS("http://www.w3.org/2000/svg", tag), attributes, children);
}

function filled(node, attributes, children) {
  for (const [name, value] of Object.entries(attributes)) {
    node.setAttribute(name, value);
  }
  node.append(...children.flat().filter(child => child !== null));
  return node;
}

const ROWS_KEPT = 25; // a table of that many isn't broken across pages

/** A table: columns are [heading, unit]; rows hold texts or elements. Numbers stand to the right. */
export function table(columns, rows, className = "") {
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
export function details(summary, content, onPaper = true) {
  return el("details", onPaper ? {} : { class: "long" }, el("summary", {}, summary), content);
}

/** The rows of a table, in parts that stand side by side. */
export function parted(rows, parts) {
  const size = Math.max(8, Math.ceil(rows.length / parts));
  return Array.from({ length: Math.ceil(rows.length / size) }, (_, i) =>
    rows.slice(i * size, (i + 1) * size));
}
