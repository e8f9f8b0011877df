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

std::vector<int> marked(const VISITEDNODE& visited, int nodes) {
  std::vector<int> positions;
  for (int i = 1; i <= nodes; ++i) {
    if (visited.at(i)) {
      positions.push_back(i);
    }
  }
  return positions;
}

TEST(GraphTheory, ChecksThatAModelIsATree) {
  struct Case {
    const char* what;
    int inertias;
    Ends ends;
    bool isConnected;
    bool hasCycle;
  };
  for (const Case& c : {Case{"two and a shaft", 2, {{1, 2}}, true, false},
                        {"ring of three", 3, {{1, 2}, {2, 3}, {3, 1}}, true, true},
                        {"two pairs", 4, {{1, 2}, {3, 4}}, false, false},
                        {"double shaft", 2, {{1, 2}, {2, 1}}, true, true},
                        {"single inertia", 1, {}, true, false},
                        {"branches", 5, {{3, 1}, {2, 3}, {3, 4}, {5, 4}}, true, false},
                        {"end that is no inertia", 2, {{1, 7}}, false, false}}) {
    const Model model(c.inertias, c.ends);
    const GraphCheck check = MASSSHAFTGRAPHCHECK(model.mass, model.shaft);
    EXPECT_EQ(check.isConnected, c.isConnected) << c.what;
    EXPECT_EQ(check.hasCycle, c.hasCycle) << c.what;
  }
}

TEST(GraphTheory, AShaftCutsATreeIntoItsTwoSides) {
  const Model model(6, {{1, 2}, {2, 3}, {2, 4}, {4, 5}, {4, 6}});
  const ADJNODE graph(model.mass, model.shaft);
  const TwoBranches sides = UNDIRECTEDGRAPH_TWOBRANCH(graph, 4, 2);
  EXPECT_EQ(marked(sides.ORGVISITEDNODE, 6), (std::vector<int>{4, 5, 6}));
  EXPECT_EQ(marked(sides.DESVISITEDNODE, 6), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(UNDIRECTEDGRAPH_TRAVERSALDFS(graph, 6).count(), 6);
}

TEST(GraphTheory, APropellersLineEndsAtTheFirstBranching) {
  // Propeller at 1, line 1-2-3, branching at 3 to 4 and 5; propeller 2 at 5.
  const Model model(5, {{2, 1}, {3, 2}, {3, 4}, {3, 5}});
  ADJNODE directed(5);
  for (const auto& [org, des] : Ends{{2, 1}, {3, 2}, {3, 4}, {3, 5}}) {
    directed.set(des, org);
  }
  PROPELLER_TABLE propellers;
  ALLOCATE_PROPELLER_TABLE(propellers, 2);
  SET_PROPELLER_PROPELLERNODE(propellers, 1, 10);
  SET_PROPELLER_PROPELLERNODE(propellers, 2, 50);
  struct Case {
    int node;
    int propeller;
  };
  for (const auto& [node, propeller] : {Case{1, 1}, {2, 1}, {3, 0}, {4, 0}, {5, 2}}) {
    const PropellerShaft found =
        ISDESNODELOCATEDONPROPELLERSHAFT(propellers, model.mass, directed, node);
    EXPECT_EQ(found.propeller, propeller) << node;
    EXPECT_EQ(found.isOnLine, propeller > 0) << node;
  }
  // With both triangles every neighbour counts twice: a node within the line branches.
  const ADJNODE both(model.mass, model.shaft);
  EXPECT_TRUE(ISDESNODELOCATEDONPROPELLERSHAFT(propellers, model.mass, both, 1).isOnLine);
  EXPECT_FALSE(ISDESNODELOCATEDONPROPELLERSHAFT(propellers, model.mass, both, 2).isOnLine);
}

TEST(GraphTheory, PropellersOnOneLineShareTheNodesThatTheyPassed) {
  // Line 1-2-3-4. Who comes second sees only nodes that the first one left.
  const Model model(4, {});
  ADJNODE line(4);
  for (int i = 1; i < 4; ++i) {
    line.set(i, i + 1);
  }
  struct Case {
    std::vector<int> propellers;  ///< their nodes
    std::vector<int> found;       ///< for each node of the line
  };
  for (const Case& c : {Case{{1, 2}, {1, 2, 1, 1}}, Case{{2, 1}, {2, 1, 1, 1}}}) {
    PROPELLER_TABLE propellers;
    ALLOCATE_PROPELLER_TABLE(propellers, 2);
    SET_PROPELLER_PROPELLERNODE(propellers, 1, 10 * c.propellers[0]);
    SET_PROPELLER_PROPELLERNODE(propellers, 2, 10 * c.propellers[1]);
    std::vector<int> found;
    for (int node = 1; node <= 4; ++node) {
      found.push_back(
          ISDESNODELOCATEDONPROPELLERSHAFT(propellers, model.mass, line, node).propeller);
    }
    EXPECT_EQ(found, c.found) << c.propellers[0];
  }
}

TEST(GraphTheory, ALongLineIsWalkedWithoutDelay) {
  constexpr int kInertias = 100000;
  Ends ends;
  for (int i = 1; i < kInertias; ++i) {
    ends.emplace_back(i, i + 1);
  }
  const Model model(kInertias, ends);
  const GraphCheck check = MASSSHAFTGRAPHCHECK(model.mass, model.shaft);
  EXPECT_TRUE(check.isConnected);
  EXPECT_FALSE(check.hasCycle);
}

}  // namespace
}  // namespace verenwick
