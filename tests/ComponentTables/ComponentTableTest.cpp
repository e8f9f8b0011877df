#include <gtest/gtest.h>

#include "ComponentTables/ModelBundle.h"

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

TEST(GlobalMass, CountsAndSumsLeaveOutOrScaleByTheRatio) {
  MASS_TABLE table;
  ALLOCATE_MASS_TABLE(table, 3);
  const double ratios[] = {1.0, 2.0, 3.0};
  const double inertias[] = {2.0, 3.0, 1.0};
  for (int i = 1; i <= 3; ++i) {
    SET_MASS_ID(table, i, 100 + i);
    SET_MASS_RPMRATIO(table, i, ratios[i - 1]);
    SET_MASS_INERTIA(table, i, inertias[i - 1]);
  }
  EXPECT_EQ(GET_MASS_INERTIAEQUIVALENTTOTAL(table), 2.0 + 4.0 * 3.0 + 9.0);
  SET_MASS_MASSTYPE(table, 2, MassType::viscousDamperRing);
  EXPECT_EQ(GET_MASS_NUMBERNONEVISCOUSDAMPERRINGMASS(table), 2);
  EXPECT_EQ(GET_MASS_NNOTVISCOUSDAMPERRINGMASS(table, 2), 1);
  EXPECT_EQ(GET_MASS_NNOTVISCOUSDAMPERRINGSHAFT(table, 103), 2);
}

TEST(GlobalShaft, ShaftBetweenNodesIsTheLastOneIfNoneJoinsThem) {
  SHAFT_TABLE table;
  EXPECT_EQ(GET_SHAFT_ISHAFTBYNODE(table, 1, 2), 0);
  ALLOCATE_SHAFT_TABLE(table, 3);
  for (int s = 1; s <= 3; ++s) {
    SET_SHAFT_ORGNODE(table, s, s);
    SET_SHAFT_DESNODE(table, s, s + 1);
  }
  EXPECT_EQ(GET_SHAFT_ISHAFTBYNODE(table, 1, 2), 1);
  EXPECT_EQ(GET_SHAFT_ISHAFTBYNODE(table, 3, 2), 2);
  EXPECT_EQ(GET_SHAFT_ISHAFTBYNODE(table, 1, 4), 3);
}

TEST(GlobalShaft, DampersAreFoundByNodesAndCouplingsById) {
  ModelBundle model;
  const auto isDamper = [&](std::int32_t s) {
    return GET_SHAFT_ISDAMPER(model.shaft, s, model.viscousDamper, model.rubberDamper,
                              model.steelSpringDamper);
  };
  const auto isCoupling = [&](std::int32_t s) {
    return GET_SHAFT_ISCOUPLING(model.shaft, s, model.linearCoupling, model.progressiveCoupling,
                                model.geislingerCoupling);
  };
  ALLOCATE_VISCOUSDAMPER_TABLE(model.viscousDamper, 1);
  ALLOCATE_RUBBERDAMPER_TABLE(model.rubberDamper, 1);
  ALLOCATE_STEELSPRINGDAMPER_TABLE(model.steelSpringDamper, 1);
  EXPECT_FALSE(isDamper(0));  // a line without shafts
  // Shaft s, with the id 10 (8 - s), joins the inertias s and s + 1; the last one is a plain shaft.
  ALLOCATE_SHAFT_TABLE(model.shaft, 7);
  for (int s = 1; s <= 7; ++s) {
    SET_SHAFT_ID(model.shaft, s, 10 * (8 - s));
    SET_SHAFT_ORGNODE(model.shaft, s, s);
    SET_SHAFT_DESNODE(model.shaft, s, s + 1);
  }
  SET_VISCOUSDAMPER_CASINGNODE(model.viscousDamper, 1, 2);
  SET_VISCOUSDAMPER_RINGNODE(model.viscousDamper, 1, 1);
  SET_RUBBERDAMPER_TURNINGMASSNODE(model.rubberDamper, 1, 2);
  SET_RUBBERDAMPER_DRIVEPLATENODE(model.rubberDamper, 1, 3);
  SET_STEELSPRINGDAMPER_OUTERMEMBERNODE(model.steelSpringDamper, 1, 4);
  SET_STEELSPRINGDAMPER_INNERMEMBERNODE(model.steelSpringDamper, 1, 3);
  ALLOCATE_LINEARCOUPLING_TABLE(model.linearCoupling, 1);
  SET_LINEARCOUPLING_SHAFTNODE(model.linearCoupling, 1, 40);
  ALLOCATE_PROGRESSIVECOUPLING_TABLE(model.progressiveCoupling, 1);
  SET_PROGRESSIVECOUPLING_SHAFTNODE(model.progressiveCoupling, 1, 30);
  ALLOCATE_GEISLINGERCOUPLING_TABLE(model.geislingerCoupling, 1);
  SET_GEISLINGERCOUPLING_SHAFTNODE(model.geislingerCoupling, 1, 20);
  for (int s = 1; s <= 7; ++s) {
    EXPECT_EQ(isDamper(s), s <= 3) << s;
    EXPECT_EQ(isCoupling(s), s >= 4 && s <= 6) << s;
  }
}

TEST(GlobalLoadCase, OnlyEntriesInUseCount) {
  LOADCASE_TABLE table;
  ALLOCATE_LOADCASE_TABLE(table, 3);
  SET_LOADCASE_COMPONENTTYPE(table, 1, ComponentType::diesel);
  SET_LOADCASE_COMPONENTID(table, 1, 4);
  SET_LOADCASE_COMPONENTTYPE(table, 2, ComponentType::propeller);
  SET_LOADCASE_COMPONENTID(table, 2, 4);
  EXPECT_EQ(GET_LOADCASE_NCOMPONENT(table), 3);
  EXPECT_EQ(GET_LOADCASE_COMPONENTNUMBER(table), 2);
  EXPECT_EQ(GET_LOADCASE_ICOMPONENT(table, ComponentType::propeller, 4), 2);
  EXPECT_EQ(GET_LOADCASE_ICOMPONENT(table, ComponentType::generator, 4), 0);
}

TEST(GlobalLoadCaseGenset, ADieselWhoseFirstRecordIsTheLastOneIsNotFound) {
  LOADCASEGENSET_TABLE table;
  ALLOCATE_LOADCASEGENSET_TABLE(table, 5);
  const std::int32_t diesels[] = {7, 7, 8, 8, 9};
  for (int i = 1; i <= 5; ++i) {
    SET_LOADCASEGENSET_DIESELID(table, i, diesels[i - 1]);
    SET_LOADCASEGENSET_PRESSUREMAX(table, i, 100.0 * i);
    SET_LOADCASEGENSET_PRESSURECOMP(table, i, 10.0 * i);
  }
  EXPECT_EQ(GET_LOADCASEGENSET_PRESSUREMAX(table, 8, 2), 400.0);
  EXPECT_EQ(GET_LOADCASEGENSET_PRESSURECOMP(table, 7, 1), 10.0);
  EXPECT_EQ(GET_LOADCASEGENSET_PRESSUREMAX(table, 9, 1), 0.0);
  EXPECT_EQ(GET_LOADCASEGENSET_PRESSUREMAX(table, 6, 1), 0.0);
  EXPECT_EQ(GET_LOADCASEGENSET_PRESSUREMAX(table, 8, 4), 0.0);
}

}  // namespace
}  // namespace verenwick
