#pragma once

#include <array>
#include <cstdint>
#include <string_view>

/// The one table of files in a result directory. The solver writes by it, readers read by it.
namespace verenwick::results {

/// What the points of a file are.
enum class Points { none, inertias, shafts };

/// Where a value stands in its file. All records are 8 bytes, one little-endian double each, and
/// count from 1.
enum class Layout {
  text,             ///< a text file
  systemInfo,       ///< record = number of the count
  mode,             ///< record = mode
  modePoint,        ///< recordOfModePoint
  engineModeOrder,  ///< recordOfEngineModeOrder
  family,           ///< recordOfFamilyElement: amplitude, angle, real, imaginary
  loadCase,         ///< recordOfLoadCasePoint
  marks,            ///< record = shaft
  angle             ///< recordOfAngleStep: 360 steps a point
};

/// The families of excitation sources, in the order in which a load case goes through them.
enum class Family {
  diesel,
  propeller,
  generator,
  centrifugalPump,
  reciprocatingPump,
  electricMotor
};
inline constexpr int kFamilies = 6;

/// The step of a run that leaves the file.
enum class Step {
  run,    ///< run control, reading and reports, in every run mode
  free,   ///< free vibration
  forced  ///< forced vibration
};

/// What the model must hold for the file to be written.
enum class Needs {
  nothing,
  diesel,
  couplingOrDamper,
  ice,
  iceAndCouplingOrDamper,
  angleBased  ///< angle based results asked for, and a diesel
};

/// One file.
struct ResultFile {
  std::string_view name;
  Step step;
  Layout layout;
  Points points;
  Needs needs;
  std::string_view unit;   ///< unit of the value, of the amplitude for family files
  Family family;           ///< of family files
  std::string_view holds;  ///< what an engineer finds in it
};

}  // namespace verenwick::results
