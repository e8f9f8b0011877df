#include <gtest/gtest.h>

#include "ShaftLineGraph/GraphTheory.h"

namespace verenwick {
namespace {

using Ends = std::vector<std::pair<int, int>>;

/// Inertias with ids 10, 20, 30, ... and shafts between positions.
struct Model {
  MASS_TABLE mass;
  SHAFT_TABLE shaft;

  Model(int inertias, const Ends& ends) {
    ALLOCATE_MASS_TABLE(mass, inertias);
    for (int i = 1; i <= inertias; ++i) {
      SET_MASS_ID(mass, i, 10 * i);
    }
    ALLOCATE_SHAFT_TABLE(shaft, static_cast<int>(ends.size()));
    for (std::size_t s = 0; s < ends.size(); ++s) {
      SET_SHAFT_ORGNODE(shaft, static_cast<int>(s) + 1, 10 * ends[s].first);
      SET_SHAFT_DESNODE(shaft, static_cast<int>(s) + 1, 10 * ends[s].second);
    }
  }
};

TEST(GraphTheory, ChecksThatAModelIsATree) {
  Ends longLine;  // is walked without delay
  for (int i = 1; i < 100000; ++i) {
    longLine.emplace_back(i, i + 1);
  }
  struct Case {
    const char* what;
    int inertias;
    Ends ends;
    bool isConnected;
    bool hasCycle;
  };
  for (const Case& c : {Case{"double shaft", 2, {{1, 2}, {2, 1}}, true, true},
                        {"single inertia", 1, {}, true, false},
                        {"branches", 5, {{3, 1}, {2, 3}, {3, 4}, {5, 4}}, true, false},
                        {"end that is no inertia", 2, {{1, 7}}, false, false},
                        {"long line", 100000, longLine, true, false}}) {
    const Model model(c.inertias, c.ends);
    const GraphCheck check = MASSSHAFTGRAPHCHECK(model.mass, model.shaft);
    EXPECT_EQ(check.isConnected, c.isConnected) << c.what;
    EXPECT_EQ(check.hasCycle, c.hasCycle) << c.what;
  }
}

TEST(GraphTheory, APropellersLineEndsAtTheFirstBranching) {
  struct Case {
    Ends ends;                    ///< elements set in the graph
    std::vector<int> propellers;  ///< their nodes
    std::vector<int> found;       ///< the propeller on whose line each node lies
  };
  for (const Case& c : {
           // Line 1-2-3, branching at 3 to 4 and 5.
           Case{{{1, 2}, {2, 3}, {4, 3}, {5, 3}}, {1, 5}, {1, 1, 0, 0, 2}},
           // With both triangles every neighbour counts twice: a node within the line branches.
           Case{{{1, 2}, {2, 1}, {2, 3}, {3, 2}}, {1}, {1, 0, 0}},
           // On one line who comes second sees only nodes that the first one left.
           Case{{{1, 2}, {2, 3}, {3, 4}}, {2, 1}, {2, 1, 1, 1}},
       }) {
    const auto nodes = static_cast<std::int32_t>(c.found.size());
    const Model model(nodes, {});
    ADJNODE graph(nodes);
    for (const auto& [i, j] : c.ends) {
      graph.set(i, j);
    }
    PROPELLER_TABLE propellers;
    ALLOCATE_PROPELLER_TABLE(propellers, static_cast<std::int32_t>(c.propellers.size()));
    for (std::size_t p = 0; p < c.propellers.size(); ++p) {
      propellers.at(static_cast<std::int32_t>(p) + 1).PROPELLERNODE = 10 * c.propellers[p];
    }
    for (std::int32_t node = 1; node <= nodes; ++node) {
      const PropellerShaft shaft =
          ISDESNODELOCATEDONPROPELLERSHAFT(propellers, model.mass, graph, node);
      EXPECT_EQ(shaft.propeller, c.found[static_cast<std::size_t>(node) - 1]) << node;
    }
  }
}

}  // namespace
}  // namespace verenwick
