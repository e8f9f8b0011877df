#include "ComputationsSrc/DiscreteFourierTransform.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

#include "RunControl/Constants.h"

namespace verenwick {
namespace {

using Complex = std::complex<double>;

constexpr double kTwoPiSingle = single(6.2831855F);

/// Angle of harmonic j at the point p (from 0) of n points, in the order of steps that gives the
/// digits of the direct sum.
double kernelAngle(std::size_t j, std::size_t p, std::size_t n) {
  const double step = (static_cast<double>(j) * (2 * kPi)) / static_cast<double>(n);
  return -(step * static_cast<double>(p));
}

/// Harmonics of an engine cycle that a run ever asks for.
constexpr std::size_t kTableHarmonics = 24;

/// Cosines and sines of kernelAngle for one grid, all harmonics of a point side by side, so that
/// the sums of all harmonics run over the points together.
class KernelTable {
 public:
  explicit KernelTable(std::size_t n) : cosine_(n * kTableHarmonics), sine_(n * kTableHarmonics) {
    for (std::size_t p = 0; p < n; ++p) {
      for (std::size_t j = 1; j <= kTableHarmonics; ++j) {
        const double angle = kernelAngle(j, p, n);
        cosine_[p * kTableHarmonics + j - 1] = std::cos(angle);
        sine_[p * kTableHarmonics + j - 1] = std::sin(angle);
      }
    }
  }

  /// Sums of the harmonics 1 to harmonics.size(), not yet divided by the number of points.
  void sum(std::span<Complex> harmonics, std::span<const double> signal) const {
    std::array<double, kTableHarmonics> re{};
    std::array<double, kTableHarmonics> im{};
    for (std::size_t p = 0; p < signal.size(); ++p) {
      const double* cosine = &cosine_[p * kTableHarmonics];
      const double* sine = &sine_[p * kTableHarmonics];
      for (std::size_t j = 0; j < kTableHarmonics; ++j) {
        re[j] += signal[p] * cosine[j];
        im[j] += signal[p] * sine[j];
      }
    }
    for (std::size_t j = 0; j < harmonics.size(); ++j) harmonics[j] = {re[j], im[j]};
  }

 private:
  std::vector<double> cosine_;
  std::vector<double> sine_;
};

/// The table of the grids of one and two revolutions in whole degrees; none for other grids.
const KernelTable* kernelTable(std::size_t n) {
  if (n == 360) {
    static const KernelTable table(360);
    return &table;
  }
  if (n == 720) {
    static const KernelTable table(720);
    return &table;
  }
  return nullptr;
}

void directSum(std::span<Complex> harmonics, std::span<const double> signal) {
  for (std::size_t j = 1; j <= harmonics.size(); ++j) {
    double re = 0;
    double im = 0;
    for (std::size_t p = 0; p < signal.size(); ++p) {
      const double angle = kernelAngle(j, p, signal.size());
      re += signal[p] * std::cos(angle);
      im += signal[p] * std::sin(angle);
    }
    harmonics[j - 1] = {re, im};
  }
}

}  // namespace

void DISCRETEFOURIERTRANSFORM(std::span<Complex> coefficients, std::span<const double> signal) {
  std::ranges::fill(coefficients, Complex{});
  if (coefficients.empty() || signal.empty())
    return;

  double sum = 0;
  for (const double value : signal) sum += value;
  coefficients[0] = sum;

  const std::span<Complex> harmonics = coefficients.subspan(1);
  const KernelTable* table =
      harmonics.size() <= kTableHarmonics ? kernelTable(signal.size()) : nullptr;
  if (table != nullptr) {
    table->sum(harmonics, signal);
  } else {
    directSum(harmonics, signal);
  }
  for (Complex& element : coefficients) element /= static_cast<double>(signal.size());
}

void INVERSEDISCRETEFOURIERTRANSFORM(std::span<const Complex> coefficients,
                                     std::span<double> signal) {
  std::ranges::fill(signal, 0.0);
  const std::size_t gathered = std::min(coefficients.size(), signal.size());
  for (std::size_t p = 0; p < signal.size(); ++p) {
    for (std::size_t j = 0; j < gathered; ++j) {
      const float share =
          static_cast<float>(j) * static_cast<float>(p) / static_cast<float>(signal.size()) * 2.0F;
      const double angle = static_cast<double>(share) * kPiSingle;
      signal[j] += 2.0 * coefficients[j].real() * std::cos(angle) -
                   2.0 * coefficients[j].imag() * std::sin(angle);
    }
  }
}

void FOURIERCOEFFICIENTTRANSFORM(std::span<const Complex> coefficientsIn,
                                 std::span<Complex> coefficientsOut, double shiftAngle,
                                 double period, std::int32_t startIndex) {
  for (std::size_t k = 0; k < coefficientsIn.size(); ++k) {
    const float harmonic = static_cast<float>(startIndex) + static_cast<float>(k);
    const double angle = -(static_cast<double>(harmonic) * kTwoPiSingle * (shiftAngle / period));
    const Complex in = coefficientsIn[k];
    coefficientsOut[k] = {std::cos(angle) * in.real() - std::sin(angle) * in.imag(),
                          std::sin(angle) * in.real() + std::cos(angle) * in.imag()};
  }
}

}  // namespace verenwick
