#include <gtest/gtest.h>

#include "ForcedVibration/EveryKind.h"
#include "Support/SolverRun.h"

namespace verenwick::test {
namespace {

// Engine: 500 kW a cylinder are a mean effective pressure of 500e3 / (5 / s x pi / 4 x 0.4^2 x 0.5)
// = 15.92 bar, over 90 % efficiency 17.68 bar. At 480 rpm the torque is 0.64 of the rated one:
// peak 150 (1 - 0.8 x 0.36), inlet 3 (1 - 1.28 x 0.36), compression 100 (1 - 1.32 x 0.36),
// mean indicated 1.592 + 0.64 (17.684 - 1.592).
// Propeller 1: torque 600e3 / (5 pi) = 38197 N m at 150 rpm; Archer 30 x 38197 / 150. Propeller 2:
// Frahm 3 x 1666.7 / 120^2 x 91.25 x 120; 5 and 2 % of 200e3 / (4 pi) = 15915 N m.
// Linear coupling: 2e6 / (10 x 5 pi). Progressive: 200e3 / (40 pi) = 1591.5 N m lies between 1000
// and 2000 N m, 3e5 + 2e5 x 0.59155; over 5 x 40 pi. Spring coupling: order 1 of 1500 rpm is twice
// the reference frequency of 78.54 rad/s: 1e5 (1.1 + 0.27 x 2), damping 0.7 x that / (50 pi).
// Dampers 2 and 3: 10 Hz and 8 Hz in their tables from 5 to 15 Hz. Rubber: 82000 / (6.5 x 20 pi).
// Reciprocating pump: 300e3 / (10 pi) = 9549 N m of 500e3 / (400 / 30 pi) = 11937 N m.
TEST(LoadCaseReport, StatesEveryKindOfComponentUnderItsHeader) {
  SolverRun run;
  run.start(everyKindPlant(run.directory()), 3);
  ASSERT_EQ(run.status(), 1) << run.log();
  const std::string report = readText(run.results() / "LoadCaseSetting.txt");
  EXPECT_EQ(report, readText(kEveryKind / "LoadCaseSetting.txt"));

  // A mode without a number of its own calculates all but the power of couplings and dampers, which
  // have no column: their sections, the last ones, are missing.
  SolverRun unprepared;
  unprepared.start(everyKindPlant(unprepared.directory()), 7);
  ASSERT_EQ(unprepared.status(), 1) << unprepared.log();
  EXPECT_EQ(filesIn(unprepared.results()), filesIn(run.results()));
  EXPECT_EQ(readText(unprepared.results() / "LoadCaseSetting.txt"),
            report.substr(0, report.find("\nLinear coupling ")));
}

}  // namespace
}  // namespace verenwick::test
