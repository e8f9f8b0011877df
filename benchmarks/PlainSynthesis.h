#pragma once

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "ForcedVibration/FamilyResults.h"

namespace verenwick::plain {

/// The synthesis written down as its sum, with a sine and a cosine for every point, source, order
/// and step; families in their worst phase.
inline void synthesis(const LoadCaseResults& results, Quantity quantity, double BASE,
                      std::span<double> result) {
  const std::size_t P = result.size();
  for (std::size_t j = 0; j < P; ++j) {
    double sum = 0.0;
    for (const FamilyResults& family : results) {
      std::vector<double> W(360);
      const ComplexArrays& values = family.of(quantity);
      const auto orders = static_cast<std::size_t>(family.orders);
      for (std::size_t s = 0; s < family.OMEGA.size(); ++s) {
        for (std::size_t k = 1; k <= orders; ++k) {
          const double a = values.RE[(s * orders + k - 1) * P + j];
          const double b = values.IM[(s * orders + k - 1) * P + j];
          for (std::size_t m = 1; m <= 360; ++m) {
            double angle = static_cast<double>(k * m) * family.OMEGA[s] / BASE;
            angle = angle * 3.141592653589793 / 180;
            W[m - 1] = W[m - 1] + (a * std::cos(angle) - b * std::sin(angle)) * 2;
          }
        }
      }
      sum += *std::max_element(W.begin(), W.end()) - *std::min_element(W.begin(), W.end());
    }
    result[j] = sum * 0.5;
  }
}

/// Results of engines and a propeller with a value everywhere.
inline LoadCaseResults sampleResults(std::int32_t inertias, std::int32_t engines) {
  LoadCaseResults results;
  double value = 0.1;
  for (FamilyResults& family : results) {
    const bool isDiesel = &family == results.data();
    const bool isPropeller = &family == &results[1];
    family.points = {inertias, inertias - 1};
    family.sources = isDiesel ? engines : isPropeller ? 1 : 0;
    family.orders = isDiesel ? 24 : isPropeller ? 2 : 4;
    family.clear();
    for (std::size_t s = 0; s < family.OMEGA.size(); ++s) {
      family.OMEGA[s] = isPropeller ? 23.7 : 39.3 + 5.1 * static_cast<double>(s % 2);
    }
    for (ComplexArrays& quantity : family.quantities) {
      for (auto* values : {&quantity.RE, &quantity.IM}) {
        for (double& x : *values) {
          x = value = 3.7 * value * (1 - value);
        }
      }
    }
  }
  return results;
}

}  // namespace verenwick::plain
