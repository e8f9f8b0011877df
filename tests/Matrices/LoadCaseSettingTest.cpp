#include <gtest/gtest.h>

#include "Matrices/LoadCaseSetting.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

TEST(LoadCaseSetting, ReachesEveryInertiaAndPassesOverAKindWithoutLoad) {
  ModelBundle model = test::ReadModel(test::everyKindInput()).model;
  SET_LOADCASE_COMPONENTTYPE(model.loadCase, 1, ComponentType{27});
  LOADCASESETTING(model, 2);
  EXPECT_DOUBLE_EQ(model.mass.at(5).SPEED, 500.0 * 1.05);
  EXPECT_EQ(model.diesel.at(1).POWER, 0.0);
  EXPECT_EQ(model.propeller.at(1).POWER, 104e3);
}

}  // namespace
}  // namespace verenwick
