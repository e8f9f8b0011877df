#include "ComputationsSrc/Interpolation.h"

#include <cstddef>

namespace verenwick {

double interpolate(std::span<const double> xs, std::span<const double> values, double x) {
  std::size_t hi = 1;
  while (hi + 1 < xs.size() && x > xs[hi]) {
    ++hi;
  }
  const std::size_t lo = hi - 1;
  return values[lo] + (values[hi] - values[lo]) * (x - xs[lo]) / (xs[hi] - xs[lo]);
}

}  // namespace verenwick
