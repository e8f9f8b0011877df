#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FreeVibration/Lines.h"
#include "Support/SolverRun.h"

/// The course of a forced run: what stops it, what it leaves.
namespace verenwick::test {
namespace {

using testing::HasSubstr;

const std::string kMotorLine =
    "INERTIA 1 1.0 10.0 0.0 0.0\nINERTIA 2 1.0 4.0 0.0 0.0\n"
    "SHAFT 1 1 2 1.0 90000.0 30.0 0.0 80.0 0.0 0 0\n"
    "ELECTRICMOTOR 1\n1 1000.0 1500.0 0 0.0 1\n2.0 0.0 0.0 0.0\n10.0 0.0 0.0 0.0\n"
    "LOADCASE\nRPM 1\nELECTRICMOTOR\n900.0 100.0\n";

TEST(ForcedRun, AFailedFactorisationStopsTheRunAndKeepsTheLoadCasesBefore) {
  testing::internal::CaptureStderr();
  const SolverRun run(kMotorLine + "0.0 0.0\n1200.0 100.0\n", 2);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "** CGETRF/ZGETRF failed\n");
  EXPECT_EQ(run.status(), 1);
  EXPECT_THAT(run.log(), HasSubstr(" ** CGETRF/ZGETRF failed\n"));
  const SolverRun whole(kMotorLine, 2);
  for (const char* file : {"ElectricMotorTorque.bin", "SynthesisTorque.bin", "NominalTorque.bin"}) {
    EXPECT_EQ(run.records(file), whole.records(file)) << file;
  }
  // The next run in the process is a first one again.
  EXPECT_EQ(whole.log(), "");
}

TEST(ForcedRun, AFileThatCannotBeWrittenStopsTheRunByName) {
  SolverRun run;
  std::filesystem::create_directories(run.results() / "ShaftPowerLoss.bin");
  testing::internal::CaptureStderr();
  run.start(kMotorLine, 2);
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("ShaftPowerLoss.bin"));
  EXPECT_THAT(run.log(), HasSubstr("ShaftPowerLoss.bin"));
  EXPECT_EQ(run.status(), 1);
}

TEST(ForcedRun, ALineThatNeedsTooMuchRoomIsRefusedInWords) {
  for (const auto& [inertias, loadCases, words] :
       {std::tuple{5001, 1,
                   "** The forced vibration calculation takes 1 to 5000 inertias, not 5001\n"},
        {5000, 50100, "** The model has too many sources, orders, inertias or load cases\n"}}) {
    std::string input =
        uniformChain(inertias) + "GASTURBINE 1\n1 10.0 1500.0\nLOADCASE\nRPM 1\nGASTURBINE\n";
    for (int L = 1; L <= loadCases; ++L) {
      input += "9 1\n";
    }
    testing::internal::CaptureStderr();
    const SolverRun run(input, 2);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), words);
    EXPECT_EQ(run.status(), 1) << run.log().substr(0, 1000);
  }
}

TEST(ForcedRun, EachDamperOrCouplingByItselfCallsForDampingTorque) {
  for (const auto& [component, damping] :
       {std::pair{"STEELSPRINGDAMPER 1\n2 1 30.0\n", "30.0 0.0"},
        {"VISCOUSDAMPER 1\n1 2 30.0 0\n", "30.0 0.0"},
        {"RUBBERDAMPER 1\n2 1 0.0\n", "0.0 9.0"},
        {"LINEARCOUPLING 1\n1 500.0 90000.0\n", "0.0 9.0"},
        {"PROGRESSIVECOUPLING 1\n1 500.0 9e4 9e4 9e4 9e4 9e4\n", "0.0 9.0"},
        {"GEISLINGERCOUPLING 1\n1 500.0 9e4 50.0 40.0\nGEISLINGERDAMPING\nWITHPRESSURIZED\n",
         "0.0 9.0"}}) {
    std::string plant = kMotorLine;
    plant.replace(plant.find("30.0 0.0"), 8, damping);
    const SolverRun run(plant.insert(plant.find("ELECTRICMOTOR"), component), 2);
    EXPECT_EQ(run.records("ResultantTorque.bin").size(), 1U) << component << run.log();
  }
}

TEST(ForcedRun, ModesTwoThreeAndOthersCalculateModesZeroAndOneDoNot) {
  for (const auto& [mode, isForced] :
       {std::pair{0, false}, {1, false}, {2, true}, {3, true}, {-1, true}}) {
    const SolverRun run(kMotorLine, mode);
    EXPECT_EQ(std::filesystem::exists(run.results() / "SynthesisTorque.bin"), isForced) << mode;
    EXPECT_EQ(std::filesystem::exists(run.results() / "LoadCaseSetting.txt"), isForced) << mode;
  }
}

}  // namespace
}  // namespace verenwick::test
