#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <sstream>

#include "FreeVibration/VectorSums.h"
#include "RunControl/Constants.h"
#include "RunControl/Global_Parameter.h"
#include "Support/SolverRun.h"
#include "results/RecordNumbers.h"

namespace verenwick {
namespace {

/// An engine on the inertias behind each other from `first` on.
std::string engine(int id, int strokes, int first, const std::vector<double>& angles, int isVengine,
                   double vAngle) {
  std::ostringstream out;
  const auto list = [&](auto value) {
    for (std::size_t i = 0; i < angles.size(); ++i) {
      out << value(i) << ' ';
    }
    out << '\n';
  };
  out << "DIESEL " << id << " E\n1000 1000 " << strokes << ' ' << angles.size() << " 0 "
      << isVengine << ' ' << vAngle << " 0 1.2\n";
  list([&](std::size_t i) { return first + static_cast<int>(i); });
  list([&](std::size_t i) { return angles[i]; });
  list([&](std::size_t i) { return angles[i] + vAngle; });
  for (const int value : {1, 1, 100, 100}) {
    list([&](std::size_t) { return value; });
  }
  out << "105 137 0.33 2.5 90 1 0 0\n150 110 1 1 16 3 45\n45 1 -8 60 130 140 220\n";
  return out.str();
}

/// The chain of Mendes, Meirelles and Zampieri (2008): pulley, gear train, six cylinders, flywheel.
std::string mendes() {
  const std::vector<double> inertias{0.017,  0.009,  0.0467, 0.0327, 0.0467,
                                     0.0467, 0.0327, 0.0487, 2.075};
  const std::vector<double> stiffness{1.106e6, 1.631e6, 1.253e6, 1.253e6,
                                      1.678e6, 1.253e6, 1.253e6, 1.976e6};
  std::ostringstream out;
  for (std::size_t i = 0; i < inertias.size(); ++i) {
    out << "INERTIA " << i + 1 << " 1 " << inertias[i] << " 0 0\n";
  }
  for (std::size_t i = 0; i < stiffness.size(); ++i) {
    out << "SHAFT " << i + 1 << ' ' << i + 1 << ' ' << i + 2 << " 1 " << stiffness[i]
        << " 0 0 0 0 0 0\n";
  }
  return out.str();
}

const std::vector<double> kFiring{0, 480, 240, 600, 120, 360};

/// The three files of a run.
struct VectorSums {
  std::vector<double> sum, rpm, angle, deflection, frequency;
  explicit VectorSums(const test::SolverRun& run)
      : sum(run.records("VectorSum.bin")),
        rpm(run.records("VectorSumRpm.bin")),
        angle(run.records("VectorSumAngle.bin")),
        deflection(run.records("RelativeDeflection.bin")),
        frequency(run.records("NaturalFrequency.bin")) {}
};

/// Sum of the cylinders' deflections, turned by order x firing angle.
std::complex<double> rawSum(const VectorSums& r, std::size_t inertias, std::size_t mode,
                            std::size_t first, const std::vector<double>& degrees, double order) {
  std::complex<double> sum;
  for (std::size_t c = 0; c < degrees.size(); ++c) {
    sum += r.deflection[(mode - 2) * inertias + first - 1 + c] *
           std::polar(1.0, order * degrees[c] * kPi / 180.0);
  }
  return sum;
}

double halfOrder(std::size_t o) { return 0.5 * static_cast<double>(o); }

double distance(double a, double b) { return std::abs(std::polar(1.0, a) - std::polar(1.0, b)); }

std::size_t record(std::size_t engine, std::size_t modes, std::size_t mode, std::size_t orders,
                   std::size_t order) {
  return static_cast<std::size_t>(results::recordOfEngineModeOrder(
             static_cast<int>(engine), static_cast<int>(modes), static_cast<int>(mode),
             static_cast<int>(orders), static_cast<int>(order))) -
         1;
}

TEST(VectorSums, SixCylindersOnEveryModeAndOrder) {
  const test::SolverRun run(mendes() + engine(1, 4, 3, kFiring, 0, 0.0));
  ASSERT_EQ(run.status(), 1) << run.log();
  const VectorSums r(run);
  const std::vector<double> printed{216.584, 592.74, 984.923, 1171.02};
  for (std::size_t i = 0; i < printed.size(); ++i) {
    EXPECT_NEAR(r.frequency[i + 1] / (2 * kPi) / printed[i], 1.0, 1e-5);
  }
  ASSERT_EQ(r.sum.size(), 8U * 24U);
  for (std::size_t mode = 2; mode <= 9; ++mode) {
    double largest = 0.0;
    std::size_t major = 0;
    for (std::size_t o = 1; o <= 24; ++o) {
      if (r.sum[record(1, 9, mode, 24, o)] == 1.0 && major == 0) {
        major = o;
      }
      largest = std::max(largest, std::abs(rawSum(r, 9, mode, 3, kFiring, halfOrder(o))));
    }
    ASSERT_GT(major, 0U);
    const auto reference = rawSum(r, 9, mode, 3, kFiring, halfOrder(major));
    EXPECT_EQ(r.angle[record(1, 9, mode, 24, major)], 0.0);
    for (std::size_t o = 1; o <= 24; ++o) {
      const std::size_t x = record(1, 9, mode, 24, o);
      const auto raw = rawSum(r, 9, mode, 3, kFiring, halfOrder(o));
      EXPECT_NEAR(r.sum[x], std::abs(raw) / largest, 1e-12);
      EXPECT_DOUBLE_EQ(r.rpm[x], r.frequency[mode - 1] * 30 / kPi / halfOrder(o));
      EXPECT_GE(r.angle[x], 0.0);
      EXPECT_LE(r.angle[x], 2 * kPi);
      EXPECT_LT(distance(r.angle[x], std::arg(raw) - std::arg(reference)), 1e-9) << mode << o;
    }
  }
  // In the first crank mode all throws swing to one side and the largest sums are those of the
  // firing order 3 and its multiples, met at 216.58 x 60 / 3 = 4332 rpm first.
  EXPECT_EQ(r.sum[record(1, 9, 2, 24, 6)], 1.0);
  EXPECT_NEAR(r.rpm[record(1, 9, 2, 24, 6)], 4331.7, 0.1);
}

TEST(VectorSums, TheBanksOfAVEngineSumOnTheSameThrows) {
  const VectorSums row(test::SolverRun(mendes() + engine(1, 4, 3, kFiring, 0, 0.0)));
  const VectorSums vee(test::SolverRun(mendes() + engine(1, 4, 3, kFiring, 1, 60.0)));
  // Bank B turns an order's sum by order x 60 degrees: the sum is that of bank A times
  // 2 cos(order x 30 degrees), which takes order 3 away and doubles order 6.
  for (std::size_t mode = 2; mode <= 9; ++mode) {
    const double scale = [&] {
      const std::size_t x = record(1, 9, mode, 24, 12);
      return vee.sum[x] / row.sum[x];
    }();
    for (std::size_t o = 1; o <= 24; ++o) {
      const std::size_t x = record(1, 9, mode, 24, o);
      EXPECT_NEAR(vee.sum[x], scale * row.sum[x] * std::fabs(std::cos(halfOrder(o) * kPi / 6)),
                  1e-9)
          << mode << " " << o;
    }
  }
}

TEST(VectorSums, EveryEngineHasTheOrdersOfItsOwnStrokes) {
  // Two engines share the cylinders: a four-stroke one and a two-stroke one.
  const std::vector<double> second{0, 241, 119, 123, 237, 11};
  const test::SolverRun run(mendes() + engine(1, 4, 3, kFiring, 0, 0.0) +
                            engine(2, 2, 3, second, 0, 0.0));
  ASSERT_EQ(run.status(), 1) << run.log();
  const VectorSums r(run);
  ASSERT_EQ(r.sum.size(), 2U * 8U * 24U);
  bool isFirstEnginesAngleSeen = false;
  for (std::size_t mode = 2; mode <= 9; ++mode) {
    std::vector<std::complex<double>> raw;
    for (std::size_t o = 1; o <= 24; ++o) {
      raw.push_back(rawSum(r, 9, mode, 3, second, static_cast<double>(o)));
    }
    const auto largest = static_cast<std::size_t>(
        std::max_element(raw.begin(), raw.end(),
                         [](auto a, auto b) { return std::abs(a) < std::abs(b); }) -
        raw.begin());
    const auto rawAngle = [&](std::size_t o) {
      const double own = std::arg(raw[o]);
      // Below zero the first engine's finished angle stands in for it.
      return own < 0.0 ? r.angle[record(1, 9, mode, 24, o + 1)] + 2 * kPi : own;
    };
    for (std::size_t o = 0; o < 24; ++o) {
      const std::size_t x = record(2, 9, mode, 24, o + 1);
      EXPECT_DOUBLE_EQ(r.rpm[x], r.frequency[mode - 1] * 30 / kPi / static_cast<double>(o + 1));
      EXPECT_NEAR(r.sum[x], std::abs(raw[o]) / std::abs(raw[largest]), 1e-12);
      if (std::abs(raw[o].imag()) > 1e-9 && std::abs(raw[largest].imag()) > 1e-9) {
        double expected = rawAngle(o) - rawAngle(largest);
        expected += expected < 0.0 ? 2 * kPi : 0.0;
        EXPECT_NEAR(r.angle[x], expected, 1e-9) << mode << " " << o;
        isFirstEnginesAngleSeen = isFirstEnginesAngleSeen || std::arg(raw[o]) < 0.0;
      }
    }
  }
  EXPECT_TRUE(isFirstEnginesAngleSeen);
}

TEST(VectorSums, AStrokeCountOfThreeHasTwentyHalfOrders) {
  const test::TemporaryDirectory directory;
  std::string results = directory.path().string();
  SETRESULTFILEDIR(results, static_cast<std::int32_t>(results.size()));
  MASS_TABLE mass;
  ALLOCATE_MASS_TABLE(mass, 2);
  SET_MASS_ID(mass, 2, 7);
  DIESEL_TABLE diesel;
  ALLOCATE_DIESEL_TABLE(diesel, 1);
  diesel.at(1).NSTROKE = 3;
  diesel.at(1).NCYLINDER = 2;
  // The second cylinder is on no inertia of the table and adds nothing.
  diesel.at(1).CYLINDERS = {7, 99};
  VECTORSUMS(mass, diesel, 2, std::vector{0.0, 10.0}, std::vector{1.0, -0.5});
  const auto rpm = test::readRecords(directory.path() / "VectorSumRpm.bin");
  ASSERT_EQ(rpm.size(), 20U);
  EXPECT_DOUBLE_EQ(rpm[0], 10.0 * 30 / kPi / 0.5);
  EXPECT_EQ(test::readRecords(directory.path() / "VectorSum.bin"), std::vector<double>(20, 1.0));
  // A mode in which the engine stands still has no direction.
  VECTORSUMS(mass, diesel, 2, std::vector{0.0, 10.0}, std::vector{1.0, 0.0});
  const auto angle = test::readRecords(directory.path() / "VectorSumAngle.bin");
  EXPECT_TRUE(std::all_of(angle.begin(), angle.end(), [](double a) { return std::isnan(a); }));
}

TEST(VectorSums, TheShipsMainCriticalIsThatOfThePrintedModel) {
  // Printed: order 5 meets the mode of 330.08 1/min at 66.016 rpm.
  const test::SolverRun run(test::readText(VERENWICK_EXAMPLES "/two-stroke-ship/input.txt"));
  ASSERT_EQ(run.status(), 1) << run.log();
  const VectorSums r(run);
  const std::size_t x = record(1, 12, 2, 20, 5);
  EXPECT_NEAR(r.rpm[x], 66.016, 0.001);
  EXPECT_EQ(r.sum[x], 1.0);
  for (std::size_t o = 1; o <= 4; ++o) {
    EXPECT_LT(r.sum[record(1, 12, 2, 20, o)], 0.05) << o;
  }
}

TEST(VectorSums, WithoutEnginesThereAreNoFiles) {
  const test::SolverRun run(mendes());
  for (const std::string& file : test::filesIn(run.results())) {
    EXPECT_EQ(file.find("VectorSum"), std::string::npos) << file;
  }
}

}  // namespace
}  // namespace verenwick
