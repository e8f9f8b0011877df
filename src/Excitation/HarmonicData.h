#pragma once

#include <complex>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "RunControl/Constants.h"

/// Harmonic data files: measured tangential pressure of a cylinder by order, at several operating
/// points. Engines and reciprocating pumps share the layout and the interpolation.
namespace verenwick {

/// One harmonic data file as loaded. A matrix element of order row h and column c stands at
/// (h - 1) x columns + c, counted from 1. Row h is order index h of whoever uses it.
struct HarmonicData {
  std::int32_t orders = 0;            ///< order rows, 1 to 24
  std::int32_t columns = 0;           ///< columns, 1 to 100
  std::vector<double> columnValues;   ///< mean indicated pressure, Pa, or speed fraction
  std::vector<double> harmonicOrder;  ///< order value of each row as the file has it
  std::vector<double> cosine;         ///< Pa
  std::vector<double> sine;           ///< Pa
  std::vector<double> resultant;      ///< Pa
  std::vector<double> phaseAngle;     ///< rad
};

/// The data of a file; engines with the same file share it. None if there is no file.
using SharedHarmonicData = std::shared_ptr<const HarmonicData>;

/// What tells an engine's file from a pump's.
struct HarmonicFileKind {
  std::size_t columnLabel;          ///< characters before the number of columns
  double columnUnit;                ///< of the column values
  std::string_view tooManyColumns;  ///< log record
};
inline constexpr HarmonicFileKind kEngineHarmonicFile{
    4, kBar, "Number of mean indicated pressure exceeds the max allowable number"};
inline constexpr HarmonicFileKind kPumpHarmonicFile{
    16, 1.0, "Number of speed percentage exceeds the max allowable number"};

/// Reads one file.
/// @returns false, with the reason in the log, where a line can't be read (" in line" and its
///          number; a count below 1 is such a line), or orders or columns are too many
[[nodiscard]] bool loadHarmonicFile(std::string_view path, const HarmonicFileKind& kind,
                                    HarmonicData& data);

/// Reads the files of all engines or pumps, each file once.
class HarmonicFileLoader {
 public:
  explicit HarmonicFileLoader(const HarmonicFileKind& kind) : kind_(kind) {}
  [[nodiscard]] bool load(const std::string& path, SharedHarmonicData& data);

 private:
  HarmonicFileKind kind_;
  std::map<std::string, SharedHarmonicData> loaded_;
};

/// Fourier coefficients of the tangential pressure by order row, Pa, at an operating point.
/// Resultant and phase are taken linearly between two columns, or beyond the outermost ones on
/// their line; phases are not unwrapped. The result carries single precision.
/// @param x mean indicated pressure in Pa, or speed fraction
/// @returns one coefficient an order row; none without data
std::vector<std::complex<double>> interpolateHarmonics(const SharedHarmonicData& data, double x);

}  // namespace verenwick
