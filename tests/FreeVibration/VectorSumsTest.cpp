#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <span>

#include "FreeVibration/Lines.h"
#include "RunControl/Constants.h"
#include "Support/SolverRun.h"

namespace verenwick::test {
namespace {

using Complex = std::complex<double>;

/// An engine on the six cylinders of the line.
/// @param head  id, name, power, speed, strokes and what follows these
/// @param banks firing angles of bank A and of bank B, degrees
std::string engine(const std::string& head, const std::string& banks) {
  return "DIESEL " + head + "\n3 4 5 6 7 8\n" + banks +
         "\n1 1 1 1 1 1\n1 1 1 1 1 1\n100 100 100 100 100 100\n100 100 100 100 100 100\n"
         "105 137 0.33 2.5 90 1 0 0\n150 110 1 1 16 3 45\n45 1 -8 60 130 140 220\n";
}

/// A four-stroke V engine of 60 degrees and a two-stroke one of uneven cranks share the throws.
TEST(VectorSums, AddTheCylindersOfEveryEngineTurnedByOrderTimesFiringAngle) {
  const SolverRun run(
      kSixCylinderLine +
      engine("1 V\n1000 1000 4 6 0 1 60 0 1.2", "0 480 240 600 120 360\n60 540 300 660 180 420") +
      engine("2 Row\n1000 1000 2 6 0 0 0 0 1.2", "0 241 119 123 237 11\n0 241 119 123 237 11"));
  ASSERT_EQ(run.status(), 1) << run.log();
  const auto sums = run.records("VectorSum.bin");
  const auto speeds = run.records("VectorSumRpm.bin");
  const auto angles = run.records("VectorSumAngle.bin");
  const auto deflection = run.records("RelativeDeflection.bin");
  const auto frequency = run.records("NaturalFrequency.bin");
  ASSERT_EQ(sums.size(), 2U * 8U * 24U);
  const std::vector<std::vector<double>> firingDegrees = {
      {0, 480, 240, 600, 120, 360, 60, 540, 300, 660, 180, 420}, {0, 241, 119, 123, 237, 11}};
  int borrowed = 0;
  for (std::size_t engine = 0; engine < 2; ++engine) {
    for (std::size_t mode = 0; mode < 8; ++mode) {
      const std::size_t first = (engine * 8 + mode) * 24;
      std::vector<Complex> raw(24);
      for (std::size_t o = 0; o < 24; ++o) {
        const double order = (engine == 0 ? 0.5 : 1.0) * static_cast<double>(o + 1);
        for (std::size_t c = 0; c < firingDegrees[engine].size(); ++c) {
          raw[o] += deflection[mode * 9 + 2 + c % 6] *
                    std::polar(1.0, order * firingDegrees[engine][c] * kPi / 180);
        }
        EXPECT_DOUBLE_EQ(speeds[first + o], frequency[mode + 1] * 30 / kPi / order);
      }
      const auto ofMode = std::span(sums).subspan(first, 24);
      const auto largest =
          static_cast<std::size_t>(std::find(ofMode.begin(), ofMode.end(), 1.0) - ofMode.begin());
      ASSERT_LT(largest, 24U);
      const auto rawAngle = [&](std::size_t o) {
        const bool isBelowZero = raw[o].imag() < 0;
        borrowed += engine == 1 && isBelowZero ? 1 : 0;
        // Below zero the first engine's finished angle stands in for that of any other.
        return engine == 1 && isBelowZero ? angles[mode * 24 + o] : std::arg(raw[o]);
      };
      EXPECT_EQ(angles[first + largest], 0.0);
      for (std::size_t o = 0; o < 24; ++o) {
        EXPECT_NEAR(sums[first + o], std::abs(raw[o]) / std::abs(raw[largest]), 1e-12);
        EXPECT_TRUE(engine == 1 || angles[first + o] >= 0.0);
        // A sum of nothing, or one on the real axis, has a direction of rounding.
        if (std::abs(raw[o].imag()) > 1e-9 && std::abs(raw[largest].imag()) > 1e-9) {
          const double expected = rawAngle(o) - rawAngle(largest);
          EXPECT_LT(std::abs(std::polar(1.0, angles[first + o]) - std::polar(1.0, expected)), 1e-9)
              << "engine " << engine << ", mode " << mode + 2 << ", order row " << o + 1;
        }
      }
    }
  }
  EXPECT_GT(borrowed, 0);
  // In the first mode of the crank all throws swing alike: bank B takes the firing order 3 away.
  EXPECT_LT(sums[5], 1e-9);
  EXPECT_EQ(sums[11], 1.0);
}

}  // namespace
}  // namespace verenwick::test
