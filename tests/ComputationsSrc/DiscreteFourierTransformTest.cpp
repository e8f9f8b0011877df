#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <span>
#include <vector>

#include "ComputationsSrc/DiscreteFourierTransform.h"
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
      std::vector<double> signal(n);
      for (std::size_t i = 0; i < n; ++i) {
        const double a = 2 * kPi * static_cast<double>(j * i) / static_cast<double>(n);
        signal[i] = 10.0 + std::cos(a) + 3.0 * std::sin(a);
      }
      const Coefficients c = transform(25, signal);
      for (std::size_t k = 0; k < 25; ++k) {
        const std::complex<double> expected = k == j ? std::complex(0.5, -1.5) : k == 0 ? 10 : 0;
        EXPECT_NEAR(std::abs(c[k] - expected), 0, 1e-13) << n << " " << k;
      }
    }
    // A table serves 24 harmonics of a whole number of revolutions: same digits as term by term.
    const Coefficients many = transform(40, mixedCurve(n, 0.123));
    const Coefficients few = transform(25, mixedCurve(n, 0.123));
    EXPECT_TRUE(std::equal(few.begin(), few.end(), many.begin())) << n;
  }
  EXPECT_EQ(transform(3, {}), Coefficients(3)) << "no points give zeros";
  DISCRETEFOURIERTRANSFORM({}, mixedCurve(360, 0));
}

TEST(FourierCoefficientTransform, DelaysTheCurve) {
  const Coefficients late = transform(8, mixedCurve(720, 75.0 / 720.0));
  const Coefficients c = transform(8, mixedCurve(720, 0.0));
  Coefficients shifted = c;
  FOURIERCOEFFICIENTTRANSFORM(shifted, shifted, 75.0, 720.0, 0);
  for (std::size_t k = 0; k < c.size(); ++k) {
    EXPECT_NEAR(std::abs(shifted[k] - late[k]), 0, 1e-6) << k;
  }
  // A whole period turns by 2 pi in single precision. Without the mean the first element is
  // harmonic 1.
  Coefficients turned(7);
  FOURIERCOEFFICIENTTRANSFORM(std::span(c).subspan(1), turned, 360.0, 360.0, 1);
  const double excess = 6.2831854820251465 - 2 * kPi;
  for (std::size_t k = 1; k < c.size(); ++k) {
    const auto expected = c[k] * std::polar(1.0, -excess * static_cast<double>(k));
    EXPECT_NEAR(std::abs(turned[k - 1] - expected), 0, 1e-13) << k;
  }
}

TEST(InverseDiscreteFourierTransform, GathersEachCoefficientInItsOwnElement) {
  std::vector<double> signal(3, 9.0);
  INVERSEDISCRETEFOURIERTRANSFORM(Coefficients{{1.5, 0.0}, {1.0, -1.0}}, signal);
  EXPECT_EQ(signal[0], 3 * 2 * 1.5);
  // Angles are of single precision: harmonic 1 over three points, at 0, 2/3 and 4/3 of pi.
  double sum = 0;
  for (const float share : {0.0F, 2.0F / 3.0F, 4.0F / 3.0F}) {
    const double t = static_cast<double>(share) * 3.1415927410125732;
    sum += 2.0 * std::cos(t) + 2.0 * std::sin(t);
  }
  EXPECT_DOUBLE_EQ(signal[1], sum);
  EXPECT_EQ(signal[2], 0.0);
  INVERSEDISCRETEFOURIERTRANSFORM(Coefficients(2, 0.5), std::span(signal).first(1));
  EXPECT_EQ(signal[0], 1.0) << "more coefficients than points";
}

}  // namespace
}  // namespace verenwick
