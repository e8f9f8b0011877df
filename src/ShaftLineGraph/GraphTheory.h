#pragma once

#include <cstdint>
#include <vector>

#include "ComponentTables/ModelBundle.h"
#include "RunControl/Positions.h"

/// The shaft line as a graph: inertias are the nodes, by their positions in the table, shafts the
/// edges. A sound model is a tree, and any shaft cuts it into two sides.
namespace verenwick {

/// Which nodes are joined, kept as ascending neighbour lists.
class ADJNODE {
 public:
  explicit ADJNODE(std::int32_t nodes);
  /// The graph of a model; a shaft with an end that is no inertia is left out.
  ADJNODE(const MASS_TABLE& mass, const SHAFT_TABLE& shaft);

  std::int32_t nodes() const { return static_cast<std::int32_t>(from_.size()); }
  /// Sets element (i, j); positions from 1.
  void set(std::int32_t i, std::int32_t j);
  /// All j with element (i, j), ascending.
  const std::vector<std::int32_t>& from(std::int32_t i) const { return from_[index(i)]; }
  /// All j with element (j, i), ascending.
  const std::vector<std::int32_t>& into(std::int32_t i) const { return into_[index(i)]; }

 private:
  using NeighbourLists = std::vector<std::vector<std::int32_t>>;
  NeighbourLists from_;
  NeighbourLists into_;
};

/// Positions of the inertias at both ends of a shaft. Throws RunStopped if there is none.
struct ShaftEnds {
  std::int32_t org;
  std::int32_t des;
};
ShaftEnds shaftEnds(const ModelBundle& model, std::int32_t shaft);

/// Marks of nodes, by position from 1.
class VISITEDNODE {
 public:
  VISITEDNODE() = default;
  explicit VISITEDNODE(std::int32_t nodes) : marks_(static_cast<std::size_t>(nodes)) {}
  bool at(std::int32_t node) const { return marks_[index(node)] != 0; }
  void mark(std::int32_t node) { marks_[index(node)] = 1; }
  /// Number of marked nodes.
  std::int32_t count() const;

 private:
  std::vector<char> marks_;
};

/// The nodes that can be reached from a start node, walked in depth, lowest neighbour first.
VISITEDNODE UNDIRECTEDGRAPH_TRAVERSALDFS(const ADJNODE& graph, std::int32_t start);

/// Whether every node is reachable from node 1.
bool UNDIRECTEDGRAPH_ISCONNECTED(const ADJNODE& graph);

/// Whether a connected graph with these counts has a cycle; it says nothing of an unconnected one.
bool UNDIRECTEDGRAPH_ISCYCLEEXIST(std::int32_t nodes, std::int32_t edges);

/// The two sides of the edge between two nodes.
struct TwoBranches {
  VISITEDNODE ORGVISITEDNODE;  ///< reached from node 1
  VISITEDNODE DESVISITEDNODE;  ///< reached from node 2
};
TwoBranches UNDIRECTEDGRAPH_TWOBRANCH(const ADJNODE& graph, std::int32_t node1, std::int32_t node2);

/// Whether a node lies on the line that runs from a propeller to the first branching.
struct PropellerShaft {
  std::int32_t propeller = 0;  ///< position of the last propeller whose line holds the node
  bool isOnLine = false;
};
/// A node branches when it has 3 connections or more, each direction of an element counting as one:
/// a graph with both symmetric elements counts every neighbour twice.
PropellerShaft ISDESNODELOCATEDONPROPELLERSHAFT(const PROPELLER_TABLE& propeller,
                                                const MASS_TABLE& mass, const ADJNODE& graph,
                                                std::int32_t destination);

/// The check of a whole model.
struct GraphCheck {
  bool isConnected = false;
  bool hasCycle = false;  ///< false where the model isn't connected
};
GraphCheck MASSSHAFTGRAPHCHECK(const MASS_TABLE& mass, const SHAFT_TABLE& shaft);

}  // namespace verenwick
