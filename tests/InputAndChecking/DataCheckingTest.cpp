#include <gtest/gtest.h>

#include <algorithm>

#include "InputAndChecking/DataChecking.h"
#include "Support/ReadModel.h"

namespace verenwick::test {
namespace {

/// Checks of models that no input file of moderate length makes, or in several run modes.
class DataChecking : public testing::Test {
 protected:
  DataChecking() { read_.read(everyKindInput()); }
  ModelBundle& model() { return read_.model; }
  /// Words of a check, behind the log of those before.
  std::string check(std::int32_t mode = 2) {
    std::filesystem::remove(read_.directory().file("Verenwick.log"));
    isSound_ = DATACHECKING(model(), mode);
    return read_.log();
  }

  ReadModel read_;
  bool isSound_ = false;
};

TEST_F(DataChecking, EmptyModelNamesBothTables) {
  model() = ModelBundle();
  EXPECT_EQ(check(0), " Error: No inertia is defined\n Error: No stiffness is defined\n");
  EXPECT_FALSE(isSound_);
}

TEST_F(DataChecking, EveryMachineNeedsALoadCaseColumnForTheForcedProblem) {
  model().loadCase.allocate(14);
  for (const std::int32_t mode : {-1, 0, 1, 2, 3, 4, 7}) {
    const bool isForced = mode == 2 || mode == 3;
    EXPECT_EQ(check(mode), isForced
                               ? " Error: Diesel 17 does't have load case setting\n"
                                 " Error: Propeller 22 does't have load case setting\n"
                                 " Error: Generator 23 does't have load case setting\n"
                                 " Error: Centrifugal pump 24 does't have load case setting\n"
                                 " Error: Reciprocating pump 18 does't have load case setting\n"
                                 " Error: SteamTurbine 21 does't have load case setting\n"
                                 " Error: GasTurbine 20 does't have load case setting\n"
                                 " Error: ElectricMotor 19 does't have load case setting\n"
                               : "");
    EXPECT_EQ(isSound_, !isForced) << mode;
  }
}

// The link of the viscous damper is shaft 301, its ring inertia 201: one or the other is taken by
// another component.
const std::string kCoupledLink = replaced(everyKindInput(), "\n304 5000.0", "\n301 5000.0");
const std::string kTurbineRing =
    replaced(everyKindInput(), "\n213 5000.0 3000.0", "\n201 5000.0 3000.0");
const std::string kBoth = replaced(kCoupledLink, "\n213 5000.0 3000.0", "\n201 5000.0 3000.0");

/// The free problem fails where only one of them is left out by its mark.
TEST_F(DataChecking, ADampersLostMarkIsAnErrorOnlyWhereItBreaksTheFreeProblem) {
  const std::string link = " Viscous damper 11 has a link not marked as its own, Shaft (301)\n";
  const std::string ring = " Viscous damper 11 has a ring not marked as such, Inertia (201)\n";
  for (const auto& [input, words, breaks] : {std::tuple{kCoupledLink, std::vector{link}, true},
                                             {kTurbineRing, std::vector{ring}, true},
                                             {kBoth, std::vector{link, ring}, false}}) {
    for (const std::int32_t mode : {0, 1, 2, 3, 7}) {
      read_.read(input);
      const bool isError = breaks && mode != 0 && mode != 2;
      std::string expected;
      for (const std::string& each : words) {
        expected += (isError ? " Error:" : " Warning:") + each;
      }
      EXPECT_EQ(check(mode), expected) << mode;
      EXPECT_EQ(isSound_, !isError) << mode;
    }
  }
}

TEST(LostMarks, WhatPassesIsCalculated) {
  for (const auto& [input, mode] :
       {std::pair{kCoupledLink, 2}, {kTurbineRing, 2}, {kBoth, 2}, {kBoth, 1}}) {
    const SolverRun run(input, mode);
    EXPECT_EQ(run.status(), 1);
    EXPECT_EQ(run.log().find("**"), std::string::npos) << run.log();
  }
}

TEST_F(DataChecking, IceWithoutAFileIsTold) {
  read_.read(replaced(everyKindInput(), "LOADCASE\n", "PROPELLERICE 22\n0\n\nLOADCASE\n"));
  EXPECT_EQ(check(),
            " Warning: Propeller 22 has ice excitation without a file, the ice gives no torque\n");
  EXPECT_TRUE(isSound_);
}

TEST_F(DataChecking, MessagesOfSharedIdsHaveAnEnd) {
  // 1 + 2 + ... + 199 matches among 200 records.
  const GENERATOR_RECORD generator = model().generator.at(1);
  model().generator.allocate(200);
  for (std::int32_t i = 1; i <= 200; ++i) {
    model().generator.at(i) = generator;
    model().generator.setId(i, 23);
  }
  const std::string log = check();
  EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 10001);
  EXPECT_TRUE(
      log.ends_with(" Error: Generator 23 has a index (23) used by another one\n"
                    " Error: Generator indices are used by another one in 9900 more cases\n"));
}

TEST_F(DataChecking, AGensetEngineNeedsPressuresOfEveryLoadCase) {
  const std::string input = replaced(everyKindInput(), "1 765.0 0 1.25", "1 765.0 1 1.25");
  const auto missing = [](int loadCase) {
    return " Warning: Diesel 17 has no pressures of load case " + std::to_string(loadCase) +
           " in Genset.txt\n";
  };
  // An engine whose first record is the last one of the table isn't found.
  for (const char* text : {"", "0 1 1\n0 1 1\n17 150 120\n"}) {
    read_.directory().write("Genset.txt", text);
    read_.read(input);
    EXPECT_EQ(check(), missing(1) + missing(2) + missing(3));
    EXPECT_TRUE(isSound_);
  }
  read_.directory().write("Genset.txt", "17 150,5 120\n17 0 0\n17 160 130 remark\n");
  read_.read(input);
  EXPECT_EQ(check(), missing(2));
  EXPECT_EQ(GET_LOADCASEGENSET_PRESSUREMAX(model().loadCaseGenset, 17, 1), 150.5e5);
  EXPECT_EQ(GET_LOADCASEGENSET_PRESSURECOMP(model().loadCaseGenset, 17, 3), 130e5);
  // Harmonic files take the place of the pressures.
  model().diesel.at(1).ISTHEORETICALPRESURE = false;
  model().diesel.at(1).FIRINGSTATUSA = {3, 1};
  model().diesel.at(1).NORMALHARMONICFILE = "/nowhere/normal.txt";
  EXPECT_EQ(check().find("Warning"), std::string::npos);
}

TEST_F(DataChecking, ADampingThatALoadCaseSetIsNoLessChecked) {
  model().propeller.at(1).ABSDAMPING = -1.0;
  EXPECT_EQ(check(), " Error: Propeller 22 has a negative absolute damping (-1)\n");
}

TEST_F(DataChecking, RepairsTheLinkOfAViscousDamperInEveryMode) {
  for (const std::int32_t mode : {0, 1, 2, 3, 7}) {
    for (const double stiffness : {0.0, -5.0, 1e-9}) {
      model().shaft.at(1).STIFFNESS = stiffness;
      EXPECT_EQ(check(mode), "");
      EXPECT_EQ(model().shaft.at(1).STIFFNESS, stiffness > 0.0 ? stiffness : 9.999999974752427e-07);
    }
  }
}

}  // namespace
}  // namespace verenwick::test
