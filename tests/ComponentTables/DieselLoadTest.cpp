#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "ComponentTables/SampleDiesels.h"

namespace verenwick {
namespace {

using sample::addBankB;
using sample::setLoad;
using sample::sixCylinderFourStroke;
using sample::tableOf;

const LOADCASEGENSET_TABLE kNoGenset;

TEST(DieselTable, FindsEnginesAndRowsByTheirInertias) {
  DIESEL_TABLE table;
  EXPECT_EQ(GET_DIESEL_IDIESEL_BASEDON_CYLINDERINDEX(table, 4), 0);
  EXPECT_FALSE(GET_DIESEL_CONTAINFORMULADAMPING(table));
  table = tableOf({sixCylinderFourStroke(), sixCylinderFourStroke(), DIESEL_RECORD{}});
  table.at(2).CYLINDERS = {11, 12, 4, 4, 15, 16, 99};
  EXPECT_EQ(GET_DIESEL_IDIESEL_BASEDON_CYLINDERINDEX(table, 5), 1);
  EXPECT_EQ(GET_DIESEL_IDIESEL_BASEDON_CYLINDERINDEX(table, 4), 2) << "the last engine";
  EXPECT_EQ(GET_DIESEL_IDIESEL_BASEDON_CYLINDERINDEX(table, 99), 0) << "beyond the sixth row";
  EXPECT_EQ(GET_DIESEL_ICYLINDER(table, 2, 4), 3) << "the first row";
  EXPECT_EQ(GET_DIESEL_ICYLINDER(table, 2, 99), 0);
  EXPECT_EQ(GET_DIESEL_ICYLINDER(table, 1, 8), 6);
  table.at(3).ISFORMULADAMPING = true;
  EXPECT_TRUE(GET_DIESEL_CONTAINFORMULADAMPING(table));
}

TEST(DieselTable, KeepsOnlyThreeVeeFiringTypes) {
  DIESEL_TABLE table = tableOf({sixCylinderFourStroke()});
  for (const auto& [given, kept] : {std::pair{0, 0}, {1, 1}, {2, 2}, {7, 2}, {-1, 2}}) {
    SET_DIESEL_VEEFIRINGTYPE(table, 1, given);
    EXPECT_EQ(GET_DIESEL_VEEFIRINGTYPE(table, 1), kept);
  }
}

TEST(DieselLoad, CylindersThatFirePartiallyGiveTheirShareToTheOthers) {
  constexpr std::int32_t n = normalFiring;
  constexpr std::int32_t p = partialFiring;
  struct Case {
    std::array<std::int32_t, 6> a;
    std::array<std::int32_t, 6> b;
    bool isVengine;
    std::int32_t firing;
    double increase;
  };
  for (const Case& c :
       {Case{{n, n, n, n, n, n}, {}, false, 6, 1.0},
        Case{{n, n, p, n, n, n}, {}, false, 6, 1.1},                  // (6 - 0.5) / 5
        Case{{n, n, p, 2, 3, 4}, {}, false, 3, 1.25},                 // (3 - 0.5) / 2
        Case{{n, n, n, n, n, n}, {p, p, n, 2, n, n}, false, 6, 1.0},  // no V engine: no bank B
        Case{{n, n, p, n, n, n}, {n, n, n, 2, n, p}, true, 11, 10.25 / 9},  // 0.5 and 0.25
        Case{{p, p, p, p, p, p}, {}, false, 6, 1.0},
        Case{{2, 3, 4, 0, 9, -1}, {}, false, 0, 1.0}}) {
    DIESEL_RECORD engine = sixCylinderFourStroke();
    engine.ISVENGINE = c.isVengine;
    for (std::size_t i = 0; i < 6; ++i) {
      engine.FIRINGSTATUSA[i] = c.a[i];
      engine.FIRINGSTATUSB[i] = c.b[i];
      engine.FIRINGPERCENTA[i] = 50.0;
      engine.FIRINGPERCENTB[i] = 25.0;
    }
    const DIESEL_TABLE table = tableOf({engine});
    EXPECT_EQ(GET_DIESEL_NFIRINGCYLINDER(table, 1), c.firing);
    EXPECT_DOUBLE_EQ(GET_DIESEL_POWERCYLPERCENTINCREASED(table, 1), c.increase);
  }
}

TEST(DieselLoad, PressuresFollowTheTorque) {
  DIESEL_TABLE table = tableOf({sixCylinderFourStroke()});
  DIESEL_RECORD& d = table.at(1);
  setLoad(table, 1, 1500.0, 0.5);
  EXPECT_DOUBLE_EQ(d.LOADPERCENTAGE, 0.5);
  EXPECT_DOUBLE_EQ(d.TORQUE, 0.5 * 200e3 / (2000.0 * kPi / 30.0));
  CALCULATE_DIESEL_LOADCASESETTING(table, 1, kNoGenset, 1, true);
  EXPECT_NEAR(d.PCHARGEAIRRPM, 3.2e5 - (3.2e5 - 1.0) * 1.28 * 0.5, 1e-2);
  EXPECT_NEAR(d.PCOMPRPM, 110e5 * (1.0 - 1.32 * 0.5), 1.0);
  EXPECT_NEAR(d.PMAXRPM, 151e5 * (1.0 - 0.8 * 0.5), 1.0);
  // Mean effective pressure x swept volume x working cycles a second is the cylinder's power.
  const double swept = kPi / 4.0 * 0.105 * 0.105 * 0.137;
  EXPECT_NEAR(d.MEPRPM * swept * 1500.0 / 120.0, d.POWER / 6.0, 1e-6);
  const double rated = 200e3 / 6.0 / (swept * 2000.0 / 120.0);
  EXPECT_NEAR(CALCULATE_DIESEL_MEPMCR(table, 1, false) / rated, kPi / kPiSingle, 1e-12);
  // Friction stays, the rest is halved.
  const double mepRated = CALCULATE_DIESEL_MEPMCR(table, 1, true);
  EXPECT_NEAR(d.MIPRPM, 0.1 * mepRated + 0.5 * (mepRated / 0.9 - 0.1 * mepRated), 1e-6);

  setLoad(table, 1, 2000.0, 2.0);
  CALCULATE_DIESEL_LOADCASESETTING(table, 1, kNoGenset, 0, true);
  EXPECT_DOUBLE_EQ(d.MIPRPM, 1.2 * (mepRated / 0.9)) << "overload is cut";
}

TEST(DieselLoad, RatedPressureCountsFiringCylindersOrAll) {
  DIESEL_RECORD engine = sixCylinderFourStroke();
  const double all = CALCULATE_DIESEL_MEPMCR(tableOf({engine}), 1, false);
  engine.FIRINGSTATUSA[2] = onlyCompression;
  engine.FIRINGSTATUSA[3] = exhaustValveOpen;
  DIESEL_TABLE table = tableOf({engine});
  EXPECT_DOUBLE_EQ(CALCULATE_DIESEL_MEPMCR(table, 1, false), all);
  EXPECT_DOUBLE_EQ(CALCULATE_DIESEL_MEPMCR(table, 1, true), all * 6 / 4);
  // The same engine twice, on both banks, has the same pressures.
  addBankB(engine, 60.0);
  table = tableOf({engine});
  EXPECT_DOUBLE_EQ(CALCULATE_DIESEL_MEPMCR(table, 1, false), all);
  EXPECT_DOUBLE_EQ(CALCULATE_DIESEL_MEPMCR(table, 1, true), all * 6 / 4);
}

/// Pressures that a cylinder has at a share of the rated cylinder power, at rated speed.
DIESEL_RECORD atShare(double share) {
  DIESEL_TABLE table = tableOf({sixCylinderFourStroke()});
  setLoad(table, 1, 2000.0, share);
  CALCULATE_DIESEL_LOADCASESETTING(table, 1, kNoGenset, 1, true);
  return table.at(1);
}

TEST(DieselLoad, BankADecidesOnThePartialPowerOfBothBanks) {
  DIESEL_RECORD engine = sixCylinderFourStroke();
  addBankB(engine, 60.0);
  engine.HASPARTIALFIRING = true;
  engine.FIRINGSTATUSA[0] = partialFiring;
  engine.FIRINGPERCENTA[0] = 60.0;
  engine.FIRINGPERCENTB[0] = 80.0;
  engine.FIRINGSTATUSB[1] = partialFiring;
  engine.FIRINGPERCENTB[1] = 40.0;
  DIESEL_TABLE table = tableOf({engine});
  setLoad(table, 1, 2000.0, 0.8);
  const double increase = GET_DIESEL_POWERCYLPERCENTINCREASED(table, 1);
  EXPECT_DOUBLE_EQ(increase, 11.0 / 10.0);
  struct Case {
    std::int32_t row;
    bool isBankA;
    double share;
  };
  for (const Case& c :
       {Case{1, true, 0.6}, Case{1, false, 0.8},  // bank B fires normally: its percent counts
        Case{2, true, increase},
        Case{2, false, increase},  // bank B fires partially: its percent doesn't
        Case{0, true, increase}}) {
    CALCULATE_DIESEL_LOADCASESETTING(table, 1, kNoGenset, c.row, c.isBankA);
    const DIESEL_RECORD expected = atShare(0.8 * c.share);
    EXPECT_NEAR(table.at(1).PMAXRPM, expected.PMAXRPM, 1e-3) << c.row << c.isBankA;
    EXPECT_NEAR(table.at(1).PCOMPRPM, expected.PCOMPRPM, 1e-3);
    EXPECT_NEAR(table.at(1).PCHARGEAIRRPM, expected.PCHARGEAIRRPM, 1e-3);
    EXPECT_NEAR(table.at(1).MEPRPM, expected.MEPRPM, 1e-3);
  }
}

TEST(DieselLoad, AGensetTakesItsPressuresFromTheTable) {
  DIESEL_RECORD engine = sixCylinderFourStroke();
  engine.ISGENSET = true;
  DIESEL_TABLE table = tableOf({engine, engine});
  LOADCASEGENSET_TABLE genset;
  ALLOCATE_LOADCASEGENSET_TABLE(genset, 4);
  for (std::int32_t i = 1; i <= 4; ++i) {
    genset.at(i) = {i <= 2 ? 2 : 1, i * 10e5, i * 1e5, 0.0};
  }
  setLoad(table, 2, 2000.0, 0.5);
  table.at(2).ILOADCASE = 2;
  CALCULATE_DIESEL_LOADCASESETTING(table, 2, genset, 1, true);
  EXPECT_EQ(table.at(2).PMAXRPM, 20e5);
  EXPECT_EQ(table.at(2).PCOMPRPM, 2e5);
  EXPECT_EQ(table.at(2).PCHARGEAIRRPM, atShare(0.5).PCHARGEAIRRPM) << "inlet stays";

  // With harmonic files the engine has no such pressures.
  table.at(2).ISTHEORETICALPRESURE = false;
  table.at(2).ILOADCASE = 1;
  CALCULATE_DIESEL_LOADCASESETTING(table, 2, genset, 1, true);
  EXPECT_EQ(table.at(2).PMAXRPM, 20e5);
}

TEST(DieselLoad, NormalCylinderPowerIsTheLargest) {
  DIESEL_RECORD engine = sixCylinderFourStroke();
  engine.CYLPOWERA = {1, 5, 2, 3, 4, 2, 99};
  engine.CYLPOWERB = {1, 7, 2, 3, 4, 2, 99};
  EXPECT_EQ(CALCULATE_DIESEL_NORMALCYLPOWER(tableOf({engine}), 1), 5.0);
  engine.ISVENGINE = true;
  EXPECT_EQ(CALCULATE_DIESEL_NORMALCYLPOWER(tableOf({engine}), 1), 7.0);
}

TEST(DieselLoad, FormulaDampingIsAPowerOfSpeedTimesOrder) {
  DIESEL_RECORD engine = sixCylinderFourStroke();
  engine.CYLABSDAMPING = 12.0;
  engine.EXPCYLABSDAMPING = 0.5;
  engine.CRANKRELDAMPING = 3.0;
  engine.EXPCRANKRELDAMPING = -1.0;
  engine.SPEED = 100.0;
  DIESEL_TABLE table = tableOf({engine});
  EXPECT_EQ(CALCULATE_DIESEL_DAMPING_CYLINDER(table, 1, 4.0), 0.0);
  EXPECT_EQ(CALCULATE_DIESEL_DAMPING_CRANKTHROW(table, 1, 4.0), 0.0);
  table.at(1).ISFORMULADAMPING = true;
  EXPECT_DOUBLE_EQ(CALCULATE_DIESEL_DAMPING_CYLINDER(table, 1, 4.0), 240.0);
  EXPECT_DOUBLE_EQ(CALCULATE_DIESEL_DAMPING_CRANKTHROW(table, 1, 4.0), 0.0075);
  EXPECT_EQ(CALCULATE_DIESEL_DAMPING_CYLINDER(table, 0, 4.0), 0.0);
  EXPECT_EQ(CALCULATE_DIESEL_DAMPING_CRANKTHROW(table, 0, 4.0), 0.0);
}

}  // namespace
}  // namespace verenwick
