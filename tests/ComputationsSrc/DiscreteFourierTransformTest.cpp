#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <vector>

#include "ComputationsSrc/DiscreteFourierTransform.h"
#include "ComputationsSrc/PlainTransform.h"
#include "RunControl/Constants.h"

namespace verenwick {
namespace {

using Coefficients = std::vector<std::complex<double>>;

Coefficients transform(std::size_t nFC, const std::vector<double>& signal) {
  Coefficients c(nFC, {7.0, 7.0});
  DISCRETEFOURIERTRANSFORM(c, signal);
  return c;
}

/// Harmonics 0 .. 5 of mixed size, delayed by a share of the period.
std::vector<double> mixedCurve(std::size_t n, double delay) {
  std::vector<double> signal(n);
  for (std::size_t i = 0; i < n; ++i) {
    const double a = 2 * kPi * (static_cast<double>(i) / static_cast<double>(n) - delay);
    signal[i] = 4.0 + 3.0 * std::cos(a) - 2.0 * std::sin(2 * a) + 0.5 * std::cos(5 * a - 1.0);
  }
  return signal;
}

TEST(DiscreteFourierTransform, PureHarmonicsGiveHalfTheirAmplitude) {
  for (const std::size_t n : {360U, 720U, 100U}) {
    for (const std::size_t j : {1U, 7U, 24U}) {
      std::vector<double> cosine(n);
      std::vector<double> sine(n);
      for (std::size_t i = 0; i < n; ++i) {
        const double a = 2 * kPi * static_cast<double>(j * i) / static_cast<double>(n);
        cosine[i] = 10.0 + std::cos(a);
        sine[i] = std::sin(a);
      }
      const Coefficients c = transform(25, cosine);
      const Coefficients s = transform(25, sine);
      for (std::size_t k = 0; k < 25; ++k) {
        const double expected = k == j ? 0.5 : 0.0;
        EXPECT_NEAR(std::abs(c[k] - (k == 0 ? 10.0 : expected)), 0, 1e-13) << n << " " << k;
        EXPECT_NEAR(std::abs(s[k] - std::complex<double>(0, -expected)), 0, 1e-13) << n << " " << k;
      }
    }
  }
}

TEST(DiscreteFourierTransform, TablesGiveTheDigitsOfTheDirectSum) {
  for (const std::size_t n : {360U, 720U, 361U}) {
    const std::vector<double> signal = mixedCurve(n, 0.123);
    for (const std::size_t nFC : {1U, 2U, 21U, 25U, 26U, 40U}) {
      EXPECT_EQ(transform(nFC, signal), plain::transform(nFC, signal)) << n << " " << nFC;
    }
  }
}

TEST(DiscreteFourierTransform, CoefficientsSumToTheCurve) {
  const std::vector<double> signal = mixedCurve(360, 0.2);
  const Coefficients c = transform(6, signal);
  for (std::size_t i = 0; i < signal.size(); ++i) {
    double sum = c[0].real();
    for (std::size_t j = 1; j < c.size(); ++j) {
      const double a = 2 * kPi * static_cast<double>(i * j) / 360.0;
      sum += 2 * (c[j].real() * std::cos(a) - c[j].imag() * std::sin(a));
    }
    EXPECT_NEAR(sum, signal[i], 1e-12);
  }
}

TEST(DiscreteFourierTransform, NoPointsGiveZeros) {
  EXPECT_EQ(transform(3, {}), Coefficients(3));
  DISCRETEFOURIERTRANSFORM({}, mixedCurve(360, 0));
}

TEST(FourierCoefficientTransform, DelaysTheCurve) {
  const Coefficients late = transform(8, mixedCurve(720, 75.0 / 720.0));
  Coefficients c = transform(8, mixedCurve(720, 0.0));
  FOURIERCOEFFICIENTTRANSFORM(c, c, 75.0, 720.0, 0);
  for (std::size_t k = 0; k < c.size(); ++k) {
    EXPECT_NEAR(std::abs(c[k] - late[k]), 0, 1e-6) << k;
  }

  // Without the mean the first element is harmonic 1.
  Coefficients harmonics = transform(8, mixedCurve(720, 0.0));
  harmonics.erase(harmonics.begin());
  Coefficients shifted(harmonics.size());
  FOURIERCOEFFICIENTTRANSFORM(harmonics, shifted, 75.0, 720.0, 1);
  for (std::size_t k = 0; k < shifted.size(); ++k) EXPECT_EQ(shifted[k], c[k + 1]) << k;
}

TEST(FourierCoefficientTransform, WholePeriodTurnsBySinglePrecisionTwoPi) {
  const Coefficients c = transform(6, mixedCurve(360, 0.3));
  Coefficients same(c.size());
  FOURIERCOEFFICIENTTRANSFORM(c, same, 0.0, 360.0, 0);
  EXPECT_EQ(same, c);

  Coefficients turned(c.size());
  FOURIERCOEFFICIENTTRANSFORM(c, turned, 360.0, 360.0, 0);
  const double excess = 6.2831854820251465 - 2 * kPi;
  for (std::size_t k = 1; k < c.size(); ++k) {
    const auto expected = c[k] * std::polar(1.0, -excess * static_cast<double>(k));
    EXPECT_NEAR(std::abs(turned[k] - expected), 0, 1e-13) << k;
  }
}

TEST(InverseDiscreteFourierTransform, GathersEachCoefficientInItsOwnElement) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  std::vector<double> signal(360, 9.0);
  const Coefficients mean{{1.5, 0.0}, {0.0, 0.0}, {nan, 0.0}, {1.0, 0.0}};
  INVERSEDISCRETEFOURIERTRANSFORM(mean, signal);
  EXPECT_DOUBLE_EQ(signal[0], 360 * 2 * 1.5);
  EXPECT_EQ(signal[1], 0.0);
  EXPECT_TRUE(std::isnan(signal[2]));
  // A whole number of waves cancels but for the single-precision angles.
  EXPECT_LT(std::abs(signal[3]), 1e-3);
  EXPECT_GT(std::abs(signal[3]), 1e-8);
  EXPECT_EQ(std::accumulate(signal.begin() + 4, signal.end(), 0.0), 0.0);

  std::vector<double> shorter(2, 9.0);
  INVERSEDISCRETEFOURIERTRANSFORM(mean, shorter);
  EXPECT_EQ(shorter[0], 6.0);
}

TEST(InverseDiscreteFourierTransform, AnglesAreSinglePrecision) {
  // The terms of harmonic 1 over three points, at the shares 0, 2/3 and 4/3 of pi.
  std::vector<double> signal(3);
  const Coefficients c{{0.0, 0.0}, {1.0, -1.0}};
  INVERSEDISCRETEFOURIERTRANSFORM(c, signal);
  double sum = 0;
  for (const float share : {0.0F, 2.0F / 3.0F, 4.0F / 3.0F}) {
    const double t = static_cast<double>(share) * 3.1415927410125732;
    sum += 2.0 * std::cos(t) + 2.0 * std::sin(t);
  }
  EXPECT_DOUBLE_EQ(signal[1], sum);
}

}  // namespace
}  // namespace verenwick
