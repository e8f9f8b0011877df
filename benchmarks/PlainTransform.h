#pragma once

#include <complex>
#include <cstddef>
#include <span>
#include <vector>

namespace verenwick::plain {

/// The transform as the formula says it, sine and cosine evaluated term by term.
inline std::vector<std::complex<double>> transform(std::size_t nFC,
                                                   std::span<const double> signal) {
  const auto n = static_cast<double>(signal.size());
  std::vector<std::complex<double>> coefficients(nFC);
  for (std::size_t j = 0; j < nFC; ++j) {
    const double w = (static_cast<double>(j) * 6.283185307179586) / n;
    double re = 0;
    double im = 0;
    for (std::size_t p = 0; p < signal.size(); ++p) {
      const double angle = -(w * static_cast<double>(p));
      re += signal[p] * std::cos(angle);
      im += signal[p] * std::sin(angle);
    }
    coefficients[j] = {re / n, im / n};
  }
  return coefficients;
}

}  // namespace verenwick::plain
