#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "FreeVibration/RelativeModes.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using testing::NanSensitiveDoubleEq;
using testing::Pointwise;
using Values = std::vector<double>;

/// A ring, a propeller, two cylinders and a second propeller, whose modes are chosen so that two
/// candidates for the reference tie or stand still.
class RelativeModes : public testing::Test {
 protected:
  RelativeModes() {
    struct Inertia {
      MassType type;
      double ratio;
    };
    constexpr Inertia kInertias[] = {{MassType::viscousDamperRing, 1.0},
                                     {MassType::propeller, 0.5},
                                     {MassType::dieselCylinder, 1.0},
                                     {MassType::dieselCylinder, 2.0},
                                     {MassType::propeller, 0.5}};
    ALLOCATE_MASS_TABLE(model().mass, 5);
    std::int32_t i = 0;
    for (const Inertia& inertia : kInertias) {
      ++i;
      SET_MASS_ID(model().mass, i, 10 * i);
      SET_MASS_MASSTYPE(model().mass, i, inertia.type);
      SET_MASS_RPMRATIO(model().mass, i, inertia.ratio);
    }
    ALLOCATE_DIESEL_TABLE(model().diesel, 1);
    ALLOCATE_PROPELLER_TABLE(model().propeller, 2);
  }
  ModelBundle& model() { return read_.model; }
  Values deflection() { return RELATIVEINERTIADEFLECTION(model(), 4, kModes); }
  Values records(const char* file) const { return test::readRecords(read_.directory().file(file)); }

  /// At the speed of each inertia modes 2 to 4 are (-4, -2, 2, 4), (1, 1, -4, -6), (2, 0, 0, 1).
  const Values kModes = {1, 1, 1, 1, -8, -2, 1, 8, 2, 1, -2, -12, 4, 0, 0, 2};

 private:
  test::ReadModel read_;
};

TEST_F(RelativeModes, TheReferenceIsTheFirstLargestCylinderThenPropellerThenInertia) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  const Values byCylinder = {0, 2,   1, -1,        -2,   0,    -0.25,    -0.25,
                             1, 1.5, 0, kInfinity, kNan, kNan, kInfinity};
  EXPECT_THAT(deflection(), Pointwise(NanSensitiveDoubleEq(), byCylinder));
  EXPECT_THAT(records("RelativeDeflection.bin"), Pointwise(NanSensitiveDoubleEq(), byCylinder));
  DEALLOCATE_DIESEL_TABLE(model().diesel);
  const Values byPropeller = {0,       1, 0.5, -0.5, -1, 0, -1 / 6.0, -1 / 6.0,
                              4 / 6.0, 1, 0,   1,    0,  0, 0.5};
  EXPECT_THAT(deflection(), Pointwise(NanSensitiveDoubleEq(), byPropeller));
  DEALLOCATE_PROPELLER_TABLE(model().propeller);
  EXPECT_EQ(deflection(), (Values{0, 1, 0.5, -0.5, -1, 0, 1, 1, -4, -6, 0, 1, 0, 0, 0.5}));
}

TEST_F(RelativeModes, TorqueIsWhatTwistsAShaftAndNoneInTheLinkOfARing) {
  struct Shaft {
    ShaftType type;
    std::int32_t org, des;
    double stiffness;
  };
  constexpr Shaft kShafts[] = {{ShaftType::viscousDamperLink, 10, 20, 7.0},
                               {ShaftType::plain, 20, 30, 100.0},
                               {ShaftType::crankThrow, 40, 30, 1000.0},
                               {ShaftType::plain, 40, 50, 10.0}};
  ALLOCATE_SHAFT_TABLE(model().shaft, 4);
  std::int32_t s = 0;
  for (const Shaft& shaft : kShafts) {
    SET_SHAFT_SHAFTTYPE(model().shaft, ++s, shaft.type);
    SET_SHAFT_ORGNODE(model().shaft, s, shaft.org);
    SET_SHAFT_DESNODE(model().shaft, s, shaft.des);
    SET_SHAFT_STIFFNESS(model().shaft, s, shaft.stiffness);
    SET_SHAFT_RPMRATIO(model().shaft, s, 3.0);  // deflections are at the shaft's speed already
  }
  const Values relative = {0, 1, 0.5, -0.5, -1, 0, 1, 1, -4, -6, 0, 1, 0, 0, 0.5};
  const Values torque = {0, 50, -1000, 5, 0, 0, -5000, 20, 0, 100, 0, -5};
  EXPECT_EQ(RELATIVEINERTIATORQUE(model(), 4, relative), torque);
  EXPECT_EQ(records("RelativeTorque.bin"), torque);
}

}  // namespace
}  // namespace verenwick
