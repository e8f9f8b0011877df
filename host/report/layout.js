// Where each inertia of the tree stands: a column along the line and a lane beside it. The trunk is
// lane 0; branches lie above (negative lanes) and below it.

const PRIME_MOVERS = ["diesel", "electric motor", "gas turbine", "steam turbine"];

const neighbours = data.inertias.map(() => []);
data.shafts.forEach((shaft, row) => {
  neighbours[shaft.origin].push({ inertia: shaft.destination, shaft: row });
  neighbours[shaft.destination].push({ inertia: shaft.origin, shaft: row });
});

/** The longest path from an inertia that enters none of those taken. */
function longestPath(start, taken) {
  const cameFrom = new Map([[start, null]]);
  let last = start;
  const queue = [start]; // breadth first: the last one reached is the farthest
  for (const inertia of queue) {
    last = inertia;
    for (const next of neighbours[inertia]) {
      if (!taken.has(next.inertia) && !cameFrom.has(next.inertia)) {
        cameFrom.set(next.inertia, inertia);
        queue.push(next.inertia);
      }
    }
  }
  const path = [];
  for (let inertia = last; inertia !== null; inertia = cameFrom.get(inertia)) {
    path.push(inertia);
  }
  return { path: path.reverse(), reached: queue };
}

/** Where the trunk ends on the right: at a propeller, or else at what a machine drives. */
function trunkEnd() {
  for (const kinds of [["propeller"], ["generator", "centrifugal pump", "reciprocating pump"]]) {
    for (const component of data.components) {
      const end = component.inertias[component.inertias.length - 1];
      if (kinds.includes(component.kind) && end !== undefined && neighbours[end].length <= 1) {
        return end;
      }
    }
  }
  const far = longestPath(0, new Set()).path;
  return far[far.length - 1];
}

/** Whether a branch drives the line; such a branch points to the left. */
function drives(inertias) {
  return inertias.some(row => PRIME_MOVERS.includes(componentOfInertia.get(row)?.kind));
}

/** Lays out the tree: {x, lane} an inertia, and the branches as {inertias, attach}, trunk first. */
function layOut() {
  const place = new Array(data.inertias.length);
  const taken = new Set();
  const branches = [];
  const lanes = new Map(); // the stretches [from, to] of the columns that each lane has taken

  const free = (lane, from, to) =>
    (lanes.get(lane) || []).every(([a, b]) => to < a || from > b);

  function put(path, attach, lane, first, step) {
    path.forEach((inertia, i) => {
      place[inertia] = { x: first + i * step, lane };
      taken.add(inertia);
    });
    const columns = path.map(inertia => place[inertia].x);
    if (attach !== null) {
      columns.push(place[attach].x);
    }
    const stretch = [Math.min(...columns), Math.max(...columns)];
    lanes.set(lane, [...(lanes.get(lane) || []), stretch]);
    branches.push({ inertias: path, attach, columns: stretch });
  }

  /** The nearest lane with room for a branch and, on the way to it, for its connection. */
  function laneFor(attach, from, to) {
    const start = place[attach].lane;
    for (let distance = 1; ; ++distance) {
      for (const side of [1, -1]) {
        const lane = start + side * distance;
        let way = free(lane, from, to);
        for (let between = start + side; way && between !== lane; between += side) {
          way = free(between, place[attach].x, place[attach].x);
        }
        if (way) {
          return lane;
        }
      }
    }
  }

  put(longestPath(trunkEnd(), taken).path.reverse(), null, 0, 0, 1);
  for (const { inertias } of branches) { // grows as branches of branches are found
    for (const attach of inertias) {
      for (const next of neighbours[attach]) {
        if (taken.has(next.inertia)) {
          continue;
        }
        const { path, reached } = longestPath(next.inertia, taken);
        const step = drives(reached) ? -1 : 1;
        const x = place[attach].x;
        const far = x + step * path.length;
        put(path, attach, laneFor(attach, Math.min(x, far), Math.max(x, far)), x + step, step);
      }
    }
  }

  const left = Math.min(...branches.map(branch => branch.columns[0]));
  place.forEach(each => { each.x -= left; });
  return { place, branches };
}

const tree = layOut();
tree.columns = Math.max(...tree.place.map(each => each.x)) + 1;
