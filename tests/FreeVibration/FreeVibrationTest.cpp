#include <gtest/gtest.h>

#include <cmath>

#include "Support/SolverRun.h"

namespace verenwick::test {
namespace {

TEST(FreeVibration, TwoInertiasSwingAtTheClosedFormula) {
  const SolverRun run(
      "INERTIA 1 1.0 100.0 0.0 0.0\nINERTIA 2 1.0 50.0 0.0 0.0\n"
      "SHAFT 1 1 2 1.0 1000000.0 0.0 0.0 200.0 0.0 0 0\n");
  ASSERT_EQ(run.status(), 1) << run.log();
  const auto frequencies = run.records("NaturalFrequency.bin");
  ASSERT_EQ(frequencies.size(), 2U);
  EXPECT_EQ(frequencies[0], 0.0);
  EXPECT_NEAR(frequencies[1], std::sqrt(1e6 * (1 / 100.0 + 1 / 50.0)), 1e-10);
  const auto deflection = run.records("RelativeDeflection.bin");
  ASSERT_EQ(deflection.size(), 2U);
  EXPECT_EQ(deflection[0], 1.0);
  EXPECT_NEAR(deflection[1], -2.0, 1e-14);
}

}  // namespace
}  // namespace verenwick::test
