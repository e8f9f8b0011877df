#include <gtest/gtest.h>

#include "Support/EveryKindModel.h"

namespace verenwick {
namespace {

TEST(ComponentTable, UnallocatedAndEmptyAreDifferent) {
  MASS_TABLE table;
  EXPECT_FALSE(table.isAllocated());
  EXPECT_EQ(GET_MASS_NUMBER(table), 0);
  EXPECT_EQ(GET_MASS_IMASS(table, 0), 0);
  ALLOCATE_MASS_TABLE(table, -3);
  EXPECT_TRUE(table.isAllocated());
  EXPECT_EQ(GET_MASS_NUMBER(table), 0);
  DEALLOCATE_MASS_TABLE(table);
  DEALLOCATE_MASS_TABLE(table);
  EXPECT_FALSE(table.isAllocated());
}

TEST(ComponentTable, SearchGivesTheFirstPositionOfAnId) {
  SHAFT_TABLE table;
  ALLOCATE_SHAFT_TABLE(table, 4);
  EXPECT_EQ(GET_SHAFT_ISHAFT(table, 0), 1);
  SET_SHAFT_ID(table, 4, 7);
  SET_SHAFT_ID(table, 2, 7);
  EXPECT_EQ(GET_SHAFT_ISHAFT(table, 7), 2);
  SET_SHAFT_ID(table, 2, -5);
  EXPECT_EQ(GET_SHAFT_ISHAFT(table, 7), 4);
  EXPECT_EQ(GET_SHAFT_ISHAFT(table, -5), 2);
  EXPECT_EQ(GET_SHAFT_ISHAFT(table, 8), 0);
  ALLOCATE_SHAFT_TABLE(table, 1);
  EXPECT_EQ(GET_SHAFT_ISHAFT(table, 7), 0);
}

TEST(ComponentTable, LookupsFindWhatThePlantHolds) {
  ModelBundle m = test::everyKindModel();
  // The ring, 201, comes first and is no degree of freedom of the free problem.
  const std::int32_t degrees = m.mass.number() - 1;
  EXPECT_EQ(GET_MASS_NUMBERNONEVISCOUSDAMPERRINGMASS(m.mass), degrees);
  EXPECT_EQ(GET_MASS_NNOTVISCOUSDAMPERRINGSHAFT(m.mass, 203), 2);
  EXPECT_EQ(GET_MASS_NNOTVISCOUSDAMPERRINGSHAFT(m.mass, 999), degrees) << "unknown: counts all";
  ALLOCATE_MASS_TABLE(m.mass, 2);
  m.mass.at(1).INERTIA = 5.0;
  m.mass.at(2).INERTIA = 30.0;
  m.mass.at(2).RPMRATIO = 2.0;
  EXPECT_EQ(GET_MASS_INERTIAEQUIVALENTTOTAL(m.mass), 5.0 + 4 * 30.0);

  EXPECT_EQ(GET_SHAFT_ISHAFTBYNODE(SHAFT_TABLE{}, 1, 2), 0);
  EXPECT_EQ(GET_SHAFT_ISHAFTBYNODE(m.shaft, 203, 204), 3);
  EXPECT_EQ(GET_SHAFT_ISHAFTBYNODE(m.shaft, 204, 203), 3);
  EXPECT_EQ(GET_SHAFT_ISHAFTBYNODE(m.shaft, 203, 205), m.shaft.number()) << "none: the last";

  EXPECT_EQ(GET_LOADCASE_ICOMPONENT(m.loadCase, ComponentType::propeller, 22), 6);
  EXPECT_EQ(GET_LOADCASE_ICOMPONENT(m.loadCase, ComponentType::generator, 22), 0);
  m.loadCase.append();
  EXPECT_EQ(GET_LOADCASE_COMPONENTNUMBER(m.loadCase), 8) << "only those in use";

  EXPECT_EQ(GET_VISCOUSDAMPER_IVISCOUSDAMPER_NODE(m.viscousDamper, 202, 201), 1);
  EXPECT_EQ(GET_VISCOUSDAMPER_IVISCOUSDAMPER_NODE(m.viscousDamper, 201, 202), 1);
  EXPECT_EQ(GET_VISCOUSDAMPER_IVISCOUSDAMPER_NODE(m.viscousDamper, 201, 203), 0);
  // A rubber damper is found with its turning mass named first only.
  EXPECT_EQ(GET_RUBBERDAMPER_IRUBBERDAMPER_NODE(m.rubberDamper, 206, 207), 1);
  EXPECT_EQ(GET_RUBBERDAMPER_IRUBBERDAMPER_NODE(m.rubberDamper, 207, 206), 0);
  EXPECT_EQ(GET_RUBBERDAMPER_IRUBBERDAMPER_NODE(m.rubberDamper, 206, 205), 0);
  EXPECT_FALSE(GET_VISCOUSDAMPER_CONTAINCUSTOMDAMPING(m.viscousDamper));
  SET_VISCOUSDAMPER_ISCUSTOMDAMPING(m.viscousDamper, 1, true);
  EXPECT_TRUE(GET_VISCOUSDAMPER_CONTAINCUSTOMDAMPING(m.viscousDamper));
}

TEST(ComponentTable, DampersAreFoundByNodesAndCouplingsById) {
  ModelBundle m = test::everyKindModel();
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
  DEALLOCATE_SHAFT_TABLE(m.shaft);
  EXPECT_FALSE(
      GET_SHAFT_ISDAMPER(m.shaft, 0, m.viscousDamper, m.rubberDamper, m.steelSpringDamper));
}

}  // namespace
}  // namespace verenwick
