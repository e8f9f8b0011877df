#include "ShaftLineGraph/GraphTheory.h"

#include <algorithm>

#include "RunControl/RunStopped.h"

namespace verenwick {
namespace {

void insertOnce(std::vector<std::int32_t>& ascending, std::int32_t node) {
  const auto place = std::lower_bound(ascending.begin(), ascending.end(), node);
  if (place == ascending.end() || *place != node) {
    ascending.insert(place, node);
  }
}

/// Walks in depth from a start node without using the edge between two nodes; 0, 0 cuts none.
VISITEDNODE walk(const ADJNODE& graph, std::int32_t start, std::int32_t cut1, std::int32_t cut2) {
  VISITEDNODE visited(graph.nodes());
  if (start < 1 || start > graph.nodes()) {
    return visited;
  }
  // A node of the stack with the next of its neighbours to look at.
  std::vector<std::pair<std::int32_t, std::size_t>> stack;
  visited.mark(start);
  stack.emplace_back(start, 0);
  while (!stack.empty()) {
    auto& [node, next] = stack.back();
    const auto& neighbours = graph.from(node);
    if (next == neighbours.size()) {
      stack.pop_back();
      continue;
    }
    const std::int32_t neighbour = neighbours[next++];
    const bool isCut = (node == cut1 && neighbour == cut2) || (node == cut2 && neighbour == cut1);
    if (!isCut && !visited.at(neighbour)) {
      visited.mark(neighbour);
      stack.emplace_back(neighbour, 0);
    }
  }
  return visited;
}

}  // namespace

ADJNODE::ADJNODE(std::int32_t nodes)
    : from_(static_cast<std::size_t>(nodes)), into_(static_cast<std::size_t>(nodes)) {}

ADJNODE::ADJNODE(const MASS_TABLE& mass, const SHAFT_TABLE& shaft) : ADJNODE(mass.number()) {
  for (std::int32_t s = 1; s <= shaft.number(); ++s) {
    const std::int32_t i = GET_MASS_IMASS(mass, GET_SHAFT_ORGNODE(shaft, s));
    const std::int32_t j = GET_MASS_IMASS(mass, GET_SHAFT_DESNODE(shaft, s));
    if (i > 0 && j > 0) {
      from_[index(i)].push_back(j);
      from_[index(j)].push_back(i);
    }
  }
  // Sorted once at the end: an inertia may be the hub of very many shafts.
  for (auto& neighbours : from_) {
    std::sort(neighbours.begin(), neighbours.end());
    neighbours.erase(std::unique(neighbours.begin(), neighbours.end()), neighbours.end());
  }
  into_ = from_;
}

void ADJNODE::set(std::int32_t i, std::int32_t j) {
  insertOnce(from_[index(i)], j);
  insertOnce(into_[index(j)], i);
}

ShaftEnds shaftEnds(const ModelBundle& model, std::int32_t shaft) {
  const ShaftEnds ends{GET_MASS_IMASS(model.mass, GET_SHAFT_ORGNODE(model.shaft, shaft)),
                       GET_MASS_IMASS(model.mass, GET_SHAFT_DESNODE(model.shaft, shaft))};
  if (ends.org < 1 || ends.des < 1) {
    throw RunStopped("** A shaft ends at an inertia that is not in the model");
  }
  return ends;
}

std::int32_t VISITEDNODE::count() const {
  return static_cast<std::int32_t>(std::count(marks_.begin(), marks_.end(), 1));
}

VISITEDNODE UNDIRECTEDGRAPH_TRAVERSALDFS(const ADJNODE& graph, std::int32_t start) {
  return walk(graph, start, 0, 0);
}

bool UNDIRECTEDGRAPH_ISCONNECTED(const ADJNODE& graph) {
  return UNDIRECTEDGRAPH_TRAVERSALDFS(graph, 1).count() == graph.nodes();
}

bool UNDIRECTEDGRAPH_ISCYCLEEXIST(std::int32_t nodes, std::int32_t edges) {
  return nodes != edges + 1;
}

TwoBranches UNDIRECTEDGRAPH_TWOBRANCH(const ADJNODE& graph, std::int32_t node1,
                                      std::int32_t node2) {
  return {walk(graph, node1, node1, node2), walk(graph, node2, node1, node2)};
}

PropellerShaft ISDESNODELOCATEDONPROPELLERSHAFT(const PROPELLER_TABLE& propeller,
                                                const MASS_TABLE& mass, const ADJNODE& graph,
                                                std::int32_t destination) {
  constexpr std::size_t kBranching = 3;
  PropellerShaft found;
  VISITEDNODE visited(graph.nodes());
  for (std::int32_t p = 1; p <= propeller.number(); ++p) {
    std::int32_t node = GET_MASS_IMASS(mass, GET_PROPELLER_PROPELLERNODE(propeller, p));
    while (node > 0) {
      visited.mark(node);
      const auto& into = graph.into(node);
      const auto& from = graph.from(node);
      if (into.size() + from.size() >= kBranching) {
        break;
      }
      if (node == destination) {
        found = {p, true};
        break;
      }
      std::int32_t next = 0;
      for (const auto* neighbours : {&into, &from}) {
        for (const std::int32_t neighbour : *neighbours) {
          if (!visited.at(neighbour)) {
            next = std::max(next, neighbour);
          }
        }
      }
      node = next;
    }
  }
  return found;
}

GraphCheck MASSSHAFTGRAPHCHECK(const MASS_TABLE& mass, const SHAFT_TABLE& shaft) {
  GraphCheck check;
  check.isConnected = UNDIRECTEDGRAPH_ISCONNECTED(ADJNODE(mass, shaft));
  check.hasCycle = check.isConnected && UNDIRECTEDGRAPH_ISCYCLEEXIST(mass.number(), shaft.number());
  return check;
}

}  // namespace verenwick
