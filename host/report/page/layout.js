// Where each inertia of the tree stands: a column along the line and a lane beside it. The trunk is

import { data } from "./data.js";
import { componentOfInertia } from "./names.js";

// lane 0; branches lie above (negative lanes) and below it.

const PRIME_MOVERS = ["diesel", "electric motor", "gas turbine", "steam turbine"];

export const neighbours = data.inertias.map(() => []);
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
  const stretches = []; // what is taken: {lane, from, to, attach}

  const free = (lane, from, to, sharer) => stretches.every(each =>
    each.lane !== lane || to < each.from || from > each.to || each.attach === sharer);

  function put(path, attach, lane, first, step) {
    path.forEach((inertia, i) => {
      place[inertia] = { x: first + i * step, lane };
      taken.add(inertia);
    });
    const columns = path.map(inertia => place[inertia].x);
    if (attach !== null) {
      columns.push(place[attach].x);
    }
    const [from, to] = [Math.min(...columns), Math.max(...columns)];
    stretches.push({ lane, from, to, attach });
    branches.push({ inertias: path, attach, from });
  }

  /** The nearest lane with room for a branch and, on the way to it, for its connection, which
   * branches of the same inertia share. Where others are in every way, a lane beyond them. */
  function laneFor(attach, from, to) {
    const { x, lane: start } = place[attach];
    const clear = lane => {
      const side = Math.sign(lane - start);
      for (let between = start + side; between !== lane; between += side) {
        if (!free(between, x, x, attach)) {
          return false;
        }
      }
      return free(lane, from, to);
    };
    const beyond = stretches.length + 1;
    for (let distance = 1; distance < beyond; ++distance) {
      const lane = [start + distance, start - distance].find(clear);
      if (lane !== undefined) {
        return lane;
      }
    }
    return start + beyond;
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

  const left = Math.min(...branches.map(branch => branch.from));
  place.forEach(each => { each.x -= left; });
  return { place, branches };
}

export const tree = layOut();
tree.columns = Math.max(...tree.place.map(each => each.x)) + 1;
