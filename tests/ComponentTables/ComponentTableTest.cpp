#include <gtest/gtest.h>

#include "Support/ReadModel.h"

namespace verenwick {
namespace {

TEST(ComponentTable, SearchGivesTheFirstPositionOfAnId) {
  SHAFT_TABLE table;
  EXPECT_EQ(GET_SHAFT_ISHAFT(table, 0), 0);
  ALLOCATE_SHAFT_TABLE(table, 4);
  EXPECT_EQ(GET_SHAFT_ISHAFT(table, 0), 1);
  SET_SHAFT_ID(table, 4, 7);
  SET_SHAFT_ID(table, 2, 7);
  EXPECT_EQ(GET_SHAFT_ISHAFT(table, 7), 2);
  SET_SHAFT_ID(table, 2, -5);
  EXPECT_EQ(GET_SHAFT_ISHAFT(table, 7), 4);
  ALLOCATE_SHAFT_TABLE(table, -1);
  EXPECT_TRUE(table.isAllocated());
  EXPECT_EQ(GET_SHAFT_ISHAFT(table, 7), 0);
}

TEST(ComponentTable, ShaftBetweenNodesIsTheFirstOneOrElseTheLastOfTheTable) {
  SHAFT_TABLE table;
  EXPECT_EQ(GET_SHAFT_ISHAFTBYNODE(table, 1, 2), 0);
  EXPECT_EQ(ShaftsByNodes(table).between(1, 2), 0);
  ALLOCATE_SHAFT_TABLE(table, 5);
  ShaftsByNodes index(table);
  const auto between = [&](std::int32_t node1, std::int32_t node2) {
    const std::int32_t position = GET_SHAFT_ISHAFTBYNODE(table, node1, node2);
    EXPECT_EQ(index.between(node1, node2), position) << node1 << " " << node2;
    return position;
  };
  EXPECT_EQ(between(0, 0), 1);
  EXPECT_EQ(between(1, 2), 5);
  for (int s = 1; s <= 4; ++s) {  // the fourth joins the same inertias as the first
    SET_SHAFT_ORGNODE(table, s, s < 4 ? s : 2);
    SET_SHAFT_DESNODE(table, s, s < 4 ? s + 1 : 1);
    index.set(s, GET_SHAFT_ORGNODE(table, s), GET_SHAFT_DESNODE(table, s));
  }
  EXPECT_EQ(between(1, 2), 1);
  EXPECT_EQ(between(3, 2), 2);
  EXPECT_EQ(between(1, 4), 5);
  EXPECT_EQ(between(0, 0), 5);
  index = ShaftsByNodes(table);
  EXPECT_EQ(between(2, 1), 1);
}

TEST(ComponentTable, DampersAreFoundByNodesAndCouplingsById) {
  const ModelBundle m = test::ReadModel(test::everyKindInput()).model;
  std::vector<std::int32_t> dampers;
  std::vector<std::int32_t> couplings;
  for (std::int32_t s = 1; s <= GET_SHAFT_NUMBER(m.shaft); ++s) {
    if (GET_SHAFT_ISDAMPER(m.shaft, s, m.viscousDamper, m.rubberDamper, m.steelSpringDamper)) {
      dampers.push_back(GET_SHAFT_ID(m.shaft, s));
    }
    if (GET_SHAFT_ISCOUPLING(m.shaft, s, m.linearCoupling, m.progressiveCoupling,
                             m.geislingerCoupling)) {
      couplings.push_back(GET_SHAFT_ID(m.shaft, s));
    }
  }
  EXPECT_EQ(dampers, (std::vector{301, 306, 308}));
  EXPECT_EQ(couplings, (std::vector{304, 309, 310}));
  // A rubber damper is found with its turning mass named first only.
  EXPECT_EQ(GET_VISCOUSDAMPER_IVISCOUSDAMPER_NODE(m.viscousDamper, 201, 202), 1);
  EXPECT_EQ(GET_RUBBERDAMPER_IRUBBERDAMPER_NODE(m.rubberDamper, 206, 207), 1);
  EXPECT_EQ(GET_RUBBERDAMPER_IRUBBERDAMPER_NODE(m.rubberDamper, 207, 206), 0);
}

}  // namespace
}  // namespace verenwick
