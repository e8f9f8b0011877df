#pragma once

#include <CLI/CLI.hpp>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// One cylinder of an engine at one operating point, as the commands take it: each quantity is an
/// option, or a line "name = value" of a small file.
namespace verenwick::host {

enum EngineQuantity : std::size_t {
  kBore,
  kStroke,
  kConrodRatio,
  kCompressionRatio,
  kRatedPower,
  kRatedSpeed,
  kPower,
  kSpeed,
  kInletPressure,
  kChargeTemperature,
  kPeakPressure,
  kCompressionPressure,
  kHeatShare,
  kMechanicalEfficiency,
  kFormFactor,
  kIgnition,
  kEndOfCombustion,
  kExhaustStart,
  kInletStart,
  kInletClose,
  kEngineQuantities
};

class EngineData {
 public:
  /// Adds the options of the engine to a command. The command outlives the object.
  explicit EngineData(CLI::App& command);

  /// Takes what the command line left open from the file, and the operating point from the rated
  /// one where it is still open. Throws UsageError for what is missing or unknown.
  void complete();

  /// In SI units. Peak and compression pressure stay above 1 bar.
  const double& operator[](EngineQuantity quantity) const { return values_[quantity]; }
  /// Points of a cycle in steps of one degree.
  std::int32_t points() const { return strokes_ == 2 ? 360 : 720; }
  /// Harmonics to print in place of a curve, fewer than half the points; 0 for the curve.
  std::int32_t harmonics() const { return harmonics_; }
  /// Order of a harmonic of the cycle.
  double order(std::int32_t harmonic) const { return harmonic * (strokes_ == 2 ? 1.0 : 0.5); }

  /// Cylinder pressure over a cycle, Pa, from -180 degrees on. Says on standard error how it came
  /// out; throws where no curve comes from the data.
  std::vector<double> pressureCurve() const;
  /// Crank angles of a cycle from a first one on, rad.
  std::vector<double> crankAngles(double firstDegree) const;

 private:
  void readFile();

  CLI::App& command_;
  std::string file_;
  std::int32_t strokes_{};
  bool misfires_{};
  std::int32_t harmonics_{};
  std::array<std::optional<double>, kEngineQuantities> given_;
  std::array<double, kEngineQuantities> values_{};
};

/// A harmonic of the tangential pressure, sine and cosine component in Pa.
struct Harmonic {
  double sine;
  double cosine;
};

/// The engine's number of harmonics of the tangential pressure of a curve that begins at -180
/// degrees.
std::vector<Harmonic> tangentialHarmonics(const EngineData& engine,
                                          const std::vector<double>& pressure);

/// Prints a row of numbers, with all digits, separated by commas.
void printRow(const std::vector<double>& numbers);

}  // namespace verenwick::host
