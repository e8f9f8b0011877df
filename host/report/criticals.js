// The table of critical speeds, sorted by what matters.

const forcedOrders = new Map((data.forced?.largest.orders || []).map(each =>
  [`${each.component} ${plain(each.order)}`, each]));

/** What the forced vibration says of an order of an engine near a critical speed: the largest
 * amplitude of the order in any shaft at the load case nearest to it, if one is within a tenth. */
function forcedAt(critical) {
  const curve = forcedOrders.get(`${critical.component} ${plain(critical.order)}`);
  if (!curve) {
    return null;
  }
  const reference = critical.rpm / data.components[critical.component].ratio;
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

/** The critical speeds: first those near a load case, by the amplitude there times the vector sum,
 * since other modes may have a share in the amplitude; then the others, by their vector sum over
 * the order, since high orders of gas and mass forces are weak. */
function rankedCriticals() {
  const ranked = data.free.criticals.filter(each => each.sum !== null && each.rpm > 0)
    .map(each => ({ ...each, forced: forcedAt(each) }));
  const inside = each => {
    const reference = each.rpm / data.components[each.component].ratio;
    return data.speeds.length === 0
      || (reference >= 0.9 * Math.min(...data.speeds) && reference <= 1.1 * Math.max(...data.speeds));
  };
  ranked.forEach(each => { each.inside = inside(each); });
  const weight = each => (each.forced ? each.forced.value * each.sum : -1);
  return ranked.sort((a, b) => weight(b) - weight(a)
    || b.inside - a.inside || b.sum / b.order - a.sum / a.order);
}

function criticalTable(ranked) {
  const geared = ranked.some(each => data.components[each.component].ratio !== 1);
  const engines = new Set(ranked.map(each => each.component)).size > 1;
  const kind = data.forced?.largest.quantity;
  const [unit, unitName] = kind ? unitFor(kind, Math.max(0, ...ranked.map(each => each.forced?.value ?? 0)))
    : [1, ""];
  const columns = [
    engines ? [["engine"], each => componentName(data.components[each.component])] : null,
    [["order"], each => plain(each.order)],
    [["mode"], each => String(each.mode)],
    [["natural frequency", "1/min"], each => digits(data.free.frequencies[each.mode - 1] * RPM, 5)],
    [["critical speed", geared ? "rpm of the engine" : "rpm"], each => digits(each.rpm, 4)],
    geared ? [["reference speed", "rpm"],
      each => digits(each.rpm / data.components[each.component].ratio, 4)] : null,
    [["relative vector sum"], each => each.sum.toFixed(3)],
    [["in range"], each => (each.inside ? "yes" : "no")],
    kind ? [[`${kind} of the order`, unitName],
      each => (each.forced ? digits(each.forced.value / unit) : "–")] : null,
    kind ? [["in shaft"], each => (each.forced ? String(data.shafts[each.forced.shaft].id) : "–")] : null,
    kind ? [["at"], each => (each.forced ? caseName(each.forced.loadCase) : "–")] : null,
  ].filter(Boolean);
  return table(columns.map(([heading]) => heading), ranked.map(each => columns.map(([, text]) => text(each))));
}

function criticalTables() {
  const shown = 15;
  const ranked = rankedCriticals();
  if (ranked.length === 0) {
    return [];
  }
  return [el("h3", {}, "Critical speeds of the engines"),
    el("p", {}, data.forced
      ? "First those with a load case within 10 %, by the largest amplitude that the order reaches "
        + "there times the vector sum; then the others by the vector sum over the order. In range: "
        + "between 90 % of the lowest and 110 % of the highest speed of the load cases."
      : "Those in the range of the load cases first, by the vector sum over the order."),
    criticalTable(ranked.slice(0, shown)),
    ranked.length > shown ? details(`All ${ranked.length} critical speeds`,
      criticalTable(ranked), false) : null];
}
