#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace verenwick {

/// One harmonic data file: tangential pressure by order and operating column, as loaded. A matrix
/// element of order row h and column c stands at (h - 1) x columns + c, counted from 1.
struct HarmonicData {
  std::int32_t orders = 0;           ///< order rows, at most 24
  std::int32_t columns = 0;          ///< columns, at most 100
  std::vector<double> columnValues;  ///< mean indicated pressure, Pa, or speed fraction
  std::vector<double> harmonicOrder;
  std::vector<double> cosine;      ///< Pa
  std::vector<double> sine;        ///< Pa
  std::vector<double> resultant;   ///< Pa
  std::vector<double> phaseAngle;  ///< rad
};

}  // namespace verenwick
