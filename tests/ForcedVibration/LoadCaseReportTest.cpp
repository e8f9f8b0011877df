#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ForcedVibration/AllFamiliesPlant.h"
#include "Support/SolverRun.h"

namespace verenwick::test {
namespace {

using testing::HasSubstr;

TEST(LoadCaseReport, AModeWithoutANumberOfItsOwnCalculatesAllButCouplingPower) {
  const SolverRun prepared(kAllFamiliesPlant, 3);
  const SolverRun unprepared(kAllFamiliesPlant, 7);
  ASSERT_EQ(unprepared.status(), 1) << unprepared.log();
  EXPECT_EQ(filesIn(unprepared.results()), filesIn(prepared.results()));
  // Couplings and dampers have no column: their sections, the last ones, are missing.
  const std::string whole = readText(prepared.results() / "LoadCaseSetting.txt");
  const auto couplings = whole.find("\nLinear coupling ");
  ASSERT_NE(couplings, std::string::npos);
  EXPECT_EQ(readText(unprepared.results() / "LoadCaseSetting.txt"), whole.substr(0, couplings));
}

TEST(LoadCaseReport, TurbinesAndNumbersTooWideForTheirField) {
  const SolverRun run(
      "INERTIA 1 1.0 10.0 0.0 0.0\nINERTIA 2 1.0 4.0 0.0 0.0\nINERTIA 3 1.0 4.0 0.0 0.0\n"
      "SHAFT 1 1 2 1.0 90000.0 30.0 0.0 80.0 0.0 0 0\nSHAFT 2 2 3 1.0 90000.0 0.0 9.0 80.0 0.0 0 "
      "0\n"
      "LINEARCOUPLING 1\n2 500.0 9.0E104\nGASTURBINE 12\n1 1000.0 1500.0\nSTEAMTURBINE 1234\n"
      "3 1000.0 1500.0\nLOADCASE\nRPM 12 1234\nGASTURBINE STEAMTURBINE\n"
      "900.0 1.0E12 100.0\n1000.0 1.0E14 -0.04\n",
      2);
  ASSERT_EQ(run.status(), 1) << run.log();
  const std::string text = readText(run.results() / "LoadCaseSetting.txt");
  EXPECT_THAT(text, HasSubstr("\nGas turbine  12\nCase          Speed          Power\n"));
  EXPECT_THAT(
      text,
      HasSubstr("\n   1          900.01000000000000.0\n   2         1000.0***************\n"));
  EXPECT_THAT(text, HasSubstr("\nSteam turbine ***\n"));
  EXPECT_THAT(text, HasSubstr("     9.000E+104     1.061E+102\n"));
}

/// A viscous damper with a table over frequency between an engine-less motor line.
std::string customDamperPlant(const std::string& table) {
  return "INERTIA 1 1.0 10.0 0.0 0.0\nINERTIA 2 1.0 4.0 0.0 0.0\nINERTIA 3 1.0 4.0 0.0 0.0\n"
         "SHAFT 1 1 2 1.0 90000.0 30.0 0.0 80.0 0.0 0 0\nSHAFT 2 2 3 1.0 0.0 5.0 0.0 0.0 0.0 0 0\n"
         "VISCOUSDAMPER 1\n2 3 5.0 1\n@DIR@/" +
         table +
         "\n"
         "ELECTRICMOTOR 1\n1 1000.0 1500.0 0 0.0 1\n2.0 0.0 0.0 0.0\n10.0 0.0 0.0 0.0\n"
         "LOADCASE\nRPM 1\nELECTRICMOTOR\n600.0 100.0\n";
}

TEST(LoadCaseReport, ACustomViscousDamperShowsItsTableAtShaftOrder) {
  SolverRun both;
  both.directory().write("both.txt", "Hz damping stiffness\n0.0 100.0 5000.0\n20.0 300.0 9000.0\n");
  both.start(customDamperPlant("both.txt"), 2);
  EXPECT_THAT(readText(both.results() / "LoadCaseSetting.txt"),
              HasSubstr("Viscous damper   1\nNote: The listed stiffness and damping values are "
                        "calculated basing on shaft order\nCase "));
  EXPECT_THAT(readText(both.results() / "LoadCaseSetting.txt"),
              HasSubstr("   1          600.0     7.000E+003     2.000E+002\n"));
  SolverRun damping;
  damping.directory().write("damping.txt", "Hz damping\n0.0 100.0\n20.0 300.0\n");
  damping.start(customDamperPlant("damping.txt"), 2);
  EXPECT_THAT(readText(damping.results() / "LoadCaseSetting.txt"),
              HasSubstr("Viscous damper   1\nNote: The listed damping values are calculated basing "
                        "on shaft order\nCase "));
  EXPECT_THAT(readText(damping.results() / "LoadCaseSetting.txt"),
              HasSubstr("   1          600.0     0.000E+000     2.000E+002\n"));
}

}  // namespace
}  // namespace verenwick::test
