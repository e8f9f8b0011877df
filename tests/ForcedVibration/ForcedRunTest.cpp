#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cmath>
#include <csignal>
#include <sstream>

#include "ForcedVibration/PreparedModel.h"
#include "Matrices/LoadCaseSetting.h"
#include "Support/SolverRun.h"

/// The course of a forced run: what stops it, what it leaves, what it makes of odd sources.
namespace verenwick::test {
namespace {

using testing::Each;
using testing::EndsWith;
using testing::HasSubstr;

const std::string kMotorLine =
    "INERTIA 1 1.0 10.0 0.0 0.0\nINERTIA 2 1.0 4.0 0.0 0.0\n"
    "SHAFT 1 1 2 1.0 90000.0 30.0 0.0 80.0 0.0 0 0\n"
    "ELECTRICMOTOR 1\n1 1000.0 1500.0 0 0.0 1\n2.0 0.0 0.0 0.0\n10.0 0.0 0.0 0.0\n"
    "LOADCASE\nRPM 1\nELECTRICMOTOR\n";

TEST(ForcedRun, AFailedFactorisationStopsTheRunAndKeepsTheLoadCasesBefore) {
  testing::internal::CaptureStderr();
  const SolverRun run(kMotorLine + "900.0 100.0\n0.0 0.0\n1200.0 100.0\n", 2);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "** CGETRF/ZGETRF failed\n");
  EXPECT_EQ(run.status(), 1);
  EXPECT_THAT(run.log(), HasSubstr(" ** CGETRF/ZGETRF failed\n"));
  const SolverRun whole(kMotorLine + "900.0 100.0\n", 2);
  for (const char* file : {"ElectricMotorTorque.bin", "SynthesisTorque.bin", "NominalTorque.bin"}) {
    EXPECT_EQ(run.records(file), whole.records(file)) << file;
  }
  // The next run in the process is a first one again.
  EXPECT_EQ(whole.log(), "");
}

TEST(ForcedRun, AFileThatCannotBeWrittenStopsTheRunByName) {
  const SolverRun whole(kMotorLine + "900.0 100.0\n", 2);
  TemporaryDirectory directory;
  directory.write("input.txt", kMotorLine + "900.0 100.0\n");
  std::filesystem::create_directories(directory.path() / "results/ShaftPowerLoss.bin");
  testing::internal::CaptureStderr();
  EXPECT_EQ(callSolver(directory.path().string(), "input.txt", directory.file("results"), 2), 1);
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("ShaftPowerLoss.bin"));
  EXPECT_THAT(readText(directory.path() / "results/Verenwick.log"),
              HasSubstr("ShaftPowerLoss.bin"));
}

TEST(ForcedRun, ALineThatNeedsTooMuchRoomIsRefusedInWords) {
  const auto chain = [](int inertias, int loadCases) {
    std::ostringstream input;
    for (int i = 1; i <= inertias; ++i) {
      input << "INERTIA " << i << " 1.0 10.0 0.0 0.0\n";
    }
    for (int i = 1; i < inertias; ++i) {
      input << "SHAFT " << i << ' ' << i << ' ' << i + 1 << " 1.0 90000.0 30.0 0.0 80.0 0.0 0 0\n";
    }
    input << "GASTURBINE 1\n1 10.0 1500.0\nLOADCASE\nRPM 1\nGASTURBINE\n";
    for (int i = 1; i <= loadCases; ++i) {
      input << "9 1\n";
    }
    return input.str();
  };
  for (const auto& [inertias, loadCases, words] :
       {std::tuple{5001, 1, "not 5001\n"}, std::tuple{5000, 50100, "load cases\n"}}) {
    testing::internal::CaptureStderr();
    const SolverRun run(chain(inertias, loadCases), 2);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), EndsWith(words));
    EXPECT_EQ(run.status(), 1) << run.log().substr(0, 1000);
  }
}

/// Files of the process hold at most so many bytes while this lives, as on a full disk.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : previous_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &before_);
    std::signal(SIGXFSZ, previous_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit before_{};
  void (*previous_)(int);
};

TEST(ForcedRun, AFullDiskStopsTheRunByTheNameOfTheFile) {
  std::string input = kMotorLine;
  for (int L = 0; L < 40; ++L) {
    input += "900.0 100.0\n";
  }
  TemporaryDirectory directory;
  directory.write("input.txt", input);
  std::filesystem::create_directory(directory.path() / "results");
  std::int32_t status = -1;
  testing::internal::CaptureStderr();
  {
    const FileSizeLimit limit(4096);
    status = callSolver(directory.path().string(), "input.txt", directory.file("results"), 2);
  }
  EXPECT_EQ(status, 1);
  EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("ElectricMotorDeflection.bin"));
  EXPECT_THAT(readText(directory.path() / "results/Verenwick.log"),
              HasSubstr("ElectricMotorDeflection.bin"));
}

TEST(ForcedRun, ModesTwoThreeAndOthersCalculateModesZeroAndOneDoNot) {
  for (const auto& [mode, isForced, isFree] :
       {std::tuple{0, false, false}, std::tuple{1, false, true}, std::tuple{2, true, false},
        std::tuple{3, true, true}, std::tuple{7, true, true}, std::tuple{-1, true, true}}) {
    const SolverRun run(kMotorLine + "900.0 100.0\n", mode);
    EXPECT_EQ(std::filesystem::exists(run.results() / "SynthesisTorque.bin"), isForced) << mode;
    EXPECT_EQ(std::filesystem::exists(run.results() / "LoadCaseSetting.txt"), isForced) << mode;
    EXPECT_EQ(std::filesystem::exists(run.results() / "NaturalFrequency.bin"), isFree) << mode;
  }
}

TEST(ForcedRun, AMachineWithoutOrdersKeepsItsRecordsAtZeroAndFamiliesWithoutSourcesAreEmpty) {
  const SolverRun run(
      "INERTIA 1 1.0 10.0 0.0 0.0\nINERTIA 2 1.0 4.0 0.0 0.0\n"
      "SHAFT 1 1 2 1.0 90000.0 30.0 0.0 80.0 0.0 0 0\n"
      "ELECTRICMOTOR 1\n1 1000.0 1500.0 0 0.0 0\n2.0 0.0 0.0 0.0\n10.0 0.0 0.0 0.0\n"
      "LOADCASE\nRPM 1\nELECTRICMOTOR\n900.0 100.0\n1000.0 100.0\n",
      2);
  ASSERT_EQ(run.status(), 1) << run.log();
  const auto deflection = run.records("ElectricMotorDeflection.bin");
  EXPECT_EQ(deflection.size(), 2U * 4U * 2U * 4U);
  EXPECT_THAT(deflection, Each(0.0));
  EXPECT_EQ(run.records("SynthesisDeflection.bin"), std::vector<double>(4)) << "nothing ran";
  EXPECT_TRUE(run.records("DieselTorque.bin").empty());
  EXPECT_EQ(run.records("NominalTorque.bin").size(), 2U);
}

TEST(SourceResponse, OrdersBeyondTheCountAndOrdersOfZeroStandStill) {
  struct Case {
    const char* orders;
    int count;
    double firstOrder;  ///< order of the base frequency
    std::vector<bool> isMoving;
  };
  for (const auto& [orders, count, firstOrder, isMoving] :
       {Case{"2.0 1.0 4.0 8.0", 3, 1.0, {true, true, true, false}},
        Case{"0.0 3.0 4.0 8.0", 2, 3.0, {false, true, false, false}},
        Case{"5.0 3.0 4.0 8.0", 1, 5.0, {true, false, false, false}},
        Case{"0.0 3.0 4.0 8.0", 1, 0.0, {false, false, false, false}}}) {
    PreparedModel plant(
        "INERTIA 1 1.0 10.0 0.0 0.0\nINERTIA 2 1.0 4.0 0.0 0.0\n"
        "SHAFT 1 1 2 1.0 90000.0 30.0 0.0 80.0 0.0 0 0\n"
        "GENERATOR 1\n1 1000.0 1500.0 " +
        std::to_string(count) + "\n" + orders +
        "\n10.0 10.0 10.0 10.0\nLOADCASE\nRPM 1\nGENERATOR\n900.0 100.0\n");
    ModelBundle& model = plant.model;
    LOADCASESETTING(model, 1);
    FamilyResults results = emptyResults(model, Family::generator);
    const SourceResults source = results.source(1);
    CALCULATE_GENERATOR_FORCEDVIBRATION(model, 1, 1, source);
    EXPECT_DOUBLE_EQ(source.OMEGA, firstOrder * 900 * 3.141592653589793 / 30);
    for (std::size_t k = 0; k < 4; ++k) {
      EXPECT_EQ(source.of(Quantity::deflection).AMP[2 * k] > 0, isMoving[k])
          << orders << ", count " << count << ", slot " << k;
      EXPECT_TRUE(isMoving[k] || source.EXFO[k] == 0.0);
    }
  }
}

TEST(SourceResponse, AMotorOfConstantExcitationHasTheSameFrequencyAtEverySpeed) {
  const std::string line =
      "INERTIA 1 1.0 10.0 0.0 0.0\nINERTIA 2 1.0 4.0 0.0 0.0\n"
      "SHAFT 1 1 2 1.0 90000.0 30.0 0.0 80.0 0.0 0 0\n"
      "ELECTRICMOTOR 1\n1 1000.0 1500.0 1 3000.0 1\n2.0 0.0 0.0 0.0\n10.0 0.0 0.0 0.0\n"
      "LOADCASE\nRPM 1\nELECTRICMOTOR\n900.0 100.0\n1100.0 500.0\n";
  const SolverRun run(line, 2);
  const auto velocity = run.records("ElectricMotorVelocity.bin");
  const auto deflection = run.records("ElectricMotorDeflection.bin");
  EXPECT_NEAR(velocity[0] / deflection[0], 2 * 3000 * 3.141592653589793 / 30, 1e-9);
  EXPECT_EQ(deflection[0], deflection[32]);
  EXPECT_NEAR(run.records("NominalTorque.bin")[1], 500000 / (1100 * 3.141592653589793 / 30), 1e-8);
}

TEST(SourceResponse, TheRatiosOfTheLineComeBackAfterAGearedSource) {
  PreparedModel plant(
      "INERTIA 1 0.3 10.0 0.0 0.0\nINERTIA 2 1.0 4.0 0.0 0.0\nINERTIA 3 1.7 4.0 0.0 0.0\n"
      "SHAFT 1 1 2 0.3 90000.0 30.0 0.0 80.0 0.0 0 0\n"
      "SHAFT 2 2 3 1.7 90000.0 30.0 0.0 80.0 0.0 0 0\n"
      "GENERATOR 1\n1 1000.0 1500.0 1\n1.0 0.0 0.0 0.0\n10.0 0.0 0.0 0.0\n"
      "LOADCASE\nRPM 1\nGENERATOR\n900.0 100.0\n");
  ModelBundle& model = plant.model;
  LOADCASESETTING(model, 1);
  FamilyResults results = emptyResults(model, Family::generator);
  CALCULATE_GENERATOR_FORCEDVIBRATION(model, 1, 1, results.source(1));
  const std::vector<double> ratios = {0.3, 1.0, 1.7};
  for (std::int32_t i = 1; i <= 3; ++i) {
    const double ratio = ratios[static_cast<std::size_t>(i) - 1];
    EXPECT_NEAR(GET_MASS_RPMRATIO(model.mass, i), ratio, 4e-16);
  }
  EXPECT_NEAR(GET_SHAFT_RPMRATIO(model.shaft, 1), 0.3, 4e-16);
  EXPECT_NEAR(GET_SHAFT_RPMRATIO(model.shaft, 2), 1.7, 4e-16);
}

}  // namespace
}  // namespace verenwick::test
