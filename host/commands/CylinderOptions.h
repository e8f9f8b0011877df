#pragma once

#include <CLI/CLI.hpp>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/cylinder/Cylinder.h"

/// What the commands of one cylinder take and say alike.
namespace verenwick::host {

/// Each quantity of the engine is an option, or a line "name = value" of a small file.
class CylinderOptions {
 public:
  /// Adds the options of the engine to a command. The command outlives the object.
  explicit CylinderOptions(CLI::App& command);

  /// The cylinder: what the command line left open is taken from the file, and the operating point
  /// from the rated one where it is still open. Throws UsageError for what is missing or unknown.
  Cylinder cylinder();

  /// Harmonics to print in place of a curve, fewer than half the points; 0 for the curve.
  [[nodiscard]] std::int32_t harmonics() const { return harmonics_; }

 private:
  void readFile();

  CLI::App& command_;
  std::string file_;
  std::int32_t strokes_{};
  bool misfires_{};
  std::int32_t harmonics_{};
  std::array<std::optional<double>, kEngineQuantities> given_;
};

/// The pressure curve of a cylinder, Pa. Says on standard error how it came out.
std::vector<double> toldPressureCurve(const Cylinder& cylinder);

/// Prints a row of numbers, with all digits, separated by commas.
void printRow(const std::vector<double>& numbers);

}  // namespace verenwick::host
