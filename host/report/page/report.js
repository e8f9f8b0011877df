// The report: its sections in the order in which it is read.

import { data } from "./data.js";
import { given, millimetres, plain, unitFor } from "./format.js";
import { details, el, table } from "./elements.js";
import { componentName, componentOfInertia, componentOfShaft } from "./names.js";
import { drawTree } from "./tree.js";
import { frequencyTable, modeFigures } from "./free.js";
import { campbell } from "./interference.js";
import { criticalTables } from "./criticals.js";
import { axisChoice, columnText, dampingFigures, dampingShafts, deflectionFigures, shaftFigures,
  shaftTable, unresolvedNotes, worstOf, worstTable } from "./forced.js";

/** What must be said of all values, as of results that aren't held against the record of their
 * run. */
const remark = () => (data.remark ? [el("p", { class: "remark" }, data.remark)] : []);

function section(id, title, ...content) {
  return el("section", { id }, el("h2", {}, title), ...remark(), ...content);
}

const lines = text => text.split(/\r?\n/).filter(line => line.trim() !== "");

function warnings() {
  const log = lines(data.log);
  const notes = [];
  if (log.length > 0) {
    notes.push(el("h3", {}, "What the run had to say"),
      el("ul", { class: "log" }, log.map(line => el("li", {}, line.trim()))));
  }
  // Behind two lines of heading a cylinder a line; the firing status comes last.
  const odd = lines(data.firing).slice(2).filter(line => !line.trim().endsWith("Normal firing"));
  if (odd.length > 0) {
    notes.push(el("h3", {}, "Cylinders that don't fire normally"),
      table([["engine"], ["inertia"], ["bank"], ["status"]], odd.map(line => {
        const [, engine, inertia, bank, status] =
          line.match(/^ ?(.{0,20}?)\s+(\d+)\s+([AB])\s+(.*)$/) || [null, line, "", "", ""];
        return [engine.trim(), inertia, bank, status];
      })));
  }
  if (log.length === 0) {
    notes.unshift(el("p", {}, "The log of the run is empty: no errors, no warnings."));
  }
  return notes;
}

/** What the look at the input finds before the calculation. */
function findings() {
  const { rows, further } = data.findings;
  if (rows.length === 0) {
    return el("p", {}, "The look at the input found nothing that is wrong or unusual.");
  }
  return [el("h3", {}, "What the look at the input found"),
    table([["kind"], ["line"], ["found"], ["expected"], ["to do"]], rows.map(each =>
      [each.severity, each.line > 0 ? String(each.line) : "–", `${each.found} [${each.code}]`,
        each.expected, each.advice]), "findings"),
    ...further.map(([code, count]) => el("p", { class: "quiet" }, `And ${count} more of [${code}].`))];
}

function modelTables() {
  const inertiaRows = data.inertias.map((each, row) => [String(each.id),
    [each.name, componentOfInertia.has(row) ? componentName(componentOfInertia.get(row)) : ""]
      .filter(Boolean).join(", "), plain(each.ratio), given(each.inertia)]);
  const shaftRows = data.shafts.map((each, row) => [String(each.id),
    `${data.inertias[each.origin].id}–${data.inertias[each.destination].id}`,
    [each.name, componentOfShaft.has(row) ? componentName(componentOfShaft.get(row)) : ""]
      .filter(Boolean).join(", "), plain(each.ratio), given(each.stiffness),
    millimetres(each.outer), millimetres(each.inner)]);
  return details("Tables of inertias and shafts", el("div", { class: "pair" },
    table([["inertia"], ["name"], ["speed ratio"], ["inertia", "kg m²"]], inertiaRows),
    table([["shaft"], ["between"], ["name"], ["speed ratio"], ["stiffness", "N m/rad"],
      ["outer Ø", "mm"], ["inner Ø", "mm"]], shaftRows)));
}

function plantSection() {
  const one = (words, number) => (number === 1 ? words.replace(/s$/, "") : words);
  const counts = data.counts.map(([words, number]) => `${number} ${one(words, number)}`).join(", ");
  const calculated = [data.free && "free vibration", data.forced && "forced vibration"]
    .filter(Boolean).join(" and ");
  return section("plant", "The plant",
    el("p", {}, `${counts}.`),
    el("p", { class: "quiet" }, `Input ${data.input}, results in ${data.results}, ${data.time}, `
      + `Verenwick ${data.version}. Calculated: ${calculated || "nothing"}.`),
    ...warnings(),
    findings(),
    data.forced ? el("h3", {}, "The worst of each") : null,
    data.forced ? worstTable() : null,
    data.forced ? unresolvedNotes() : null,
    el("h3", {}, "Mass-elastic system"),
    drawTree(),
    el("p", { class: "quiet" }, "Discs with the root of their inertia, referred to the reference "
      + "speed.", el("span", { class: "screen" }, " Point at a disc or shaft for its data.")),
    modelTables());
}

function freeSection() {
  const content = section("free", "Natural frequencies and mode shapes", frequencyTable());
  const resting = data.free.nodes.some((nodes, i) => nodes !== null && nodes.length !== i + 1);
  content.append(el("p", { class: "quiet" },
    "Deflections at true speed, as a share of the largest one. Circles mark nodes."
    + (resting ? ` Inertias with less than ${data.limits.atRest} of the largest deflection count as at rest.` : "")),
  ...modeFigures());
  return content;
}

function interferenceSection() {
  const content = section("interference", "Interference of orders and natural frequencies");
  content.append(...campbell(content), ...criticalTables().filter(Boolean));
  return content;
}

function forcedSection() {
  const notes = [
    data.shafts.some(shaft => !(shaft.outer > 0)) ? " Shafts without a diameter have no stress." : "",
    data.shafts.some(shaft => shaft.inner > 0)
      ? " Stress is 16 T / (π (D³ − d³)), on the safe side for hollow shafts." : ""];
  const content = section("forced", "Forced vibration", el("p", {},
    "Amplitudes: half the range of the synthesised wave; of an order, of its sine wave. A plot "
    + `shows at most the ${data.limits.ordersDrawn} strongest orders of its point. Legends give values `
    + "under the cursor, or else where the synthesised curve peaks; what is pale in them isn't drawn."
    + notes.join("")), shaftTable(), axisChoice());
  content.append(el("h3", {}, "Shafts"), shaftFigures());
  if (data.forced.damping && dampingShafts.length > 0) {
    content.append(el("h3", {}, "Dampers and couplings"), dampingFigures());
  }
  content.append(el("h3", {}, "Deflection of inertias"), ...deflectionFigures());
  return content;
}

/** The largest values of each load case. */
function loadCaseTable() {
  const { torque, stress, deflection, loss } = data.forced;
  const column = (total, kind) => {
    const most = worstOf(total).value ?? 0;
    const [unit, name] = unitFor(kind, most);
    return { name, text: value => columnText(value, unit, most) };
  };
  const at = (total, loadCase) => worstOf(total.map(values => [values[loadCase]]));
  const losses = data.speeds.map((_, i) => loss.total.reduce((sum, values) =>
    (sum === null || values[i] === null ? null : sum + values[i]), 0));
  const [t, s, d, l] = [column(torque.total, "torque"), column(stress.total, "stress"),
    column(deflection.total, "deflection"), column([losses], "power")];
  return table([["case"], ["speed", "rpm"], ["torque", t.name], ["shaft"], ["stress", s.name],
    ["shaft"], ["deflection", d.name], ["inertia"], ["total loss", l.name]],
  data.speeds.map((speed, i) => {
    const [a, b, c] = [at(torque.total, i), at(stress.total, i), at(deflection.total, i)];
    return [String(i + 1), plain(speed), t.text(a.value), String(data.shafts[a.point].id),
      s.text(b.value), String(data.shafts[b.point].id), d.text(c.value),
      String(data.inertias[c.point].id), l.text(losses[i])];
  }));
}

/** The tables of the load case settings: blocks of title, notes, names, units, rule, rows. */
function settingTables() {
  const blocks = data.loadCaseSetting.split(/\r?\n\s*\r?\n/).map(lines).filter(block => block.length > 0);
  return blocks.map(block => {
    const rule = block.findIndex(line => /^\s*-{10,}\s*$/.test(line));
    const rows = block.slice(rule + 1).map(line => line.trim().split(/\s+/));
    const names = rule < 3 ? [] : block[rule - 2].trim().split(/\s{2,}/);
    const units = rule < 3 ? [] : block[rule - 1].match(/\[[^\]]*\]/g) || [];
    const setting = el("div", {}, el("h4", {}, block[0].trim().replace(/\s+/g, " ")));
    if (rule < 3 || units.length !== names.length - 1
      || rows.some(row => row.length !== names.length)) {
      setting.append(el("pre", {}, block.slice(1).join("\n")));
    } else {
      setting.append(...block.slice(1, rule - 2).map(line => el("p", { class: "quiet" }, line.trim())),
        table(names.map((name, i) => (i === 0 ? [name] : [name, units[i - 1].slice(1, -1)])), rows));
    }
    return setting;
  });
}

function loadCaseSection() {
  const settings = settingTables();
  return section("cases", "Load cases", data.forced ? loadCaseTable() : null,
    settings.length > 0 ? el("h3", {}, "Settings of the components") : null,
    el("div", { class: "settings" }, settings));
}

function buildReport() {
  const title = data.title || data.input;
  document.title = `${title} – torsional vibration`;
  const sections = [plantSection()];
  if (data.free && data.free.shapes.length > 0) {
    sections.push(freeSection(), interferenceSection());
  }
  if (data.forced) {
    sections.push(forcedSection());
  }
  if (data.speeds.length > 0) {
    sections.push(loadCaseSection());
  }
  document.getElementById("report").append(
    el("header", {}, el("p", { class: "kind" }, "Torsional vibration"), el("h1", {}, title),
      el("nav", {}, sections.map(each =>
        el("a", { href: `#${each.id}` }, each.querySelector("h2").textContent)))),
    ...sections);
  if (data.remark) { // at the foot of every printed page
    document.head.append(el("style", {}, `@page { @bottom-left { content: ${JSON.stringify(data.remark)}; `
      + "font: 600 9px system-ui, sans-serif; color: #a3300b; } }"));
  }
}

buildReport();
