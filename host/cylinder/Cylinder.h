#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "host/Units.h"
#include "verenwick.hpp"

/// One cylinder of an engine at one operating point, and what the calculators of the library make
/// of it.
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

/// How a quantity of the engine is given.
struct QuantityWords {
  const char* name;
  const char* unitName;
  const char* help;
  double unit;  ///< in SI units
};

inline constexpr std::array<QuantityWords, kEngineQuantities> kQuantityWords{{
    {"bore", "MM", "Diameter of the cylinder", kMilli},
    {"stroke", "MM", "Stroke of the piston", kMilli},
    {"conrod-ratio", "RATIO", "Crank radius divided by rod length", 1},
    {"compression-ratio", "RATIO", "Compression ratio", 1},
    {"rated-power", "KW", "Rated power of the cylinder", kKilo},
    {"rated-speed", "RPM", "Rated speed", 1},
    {"power", "KW", "Power of the cylinder; rated if not given", kKilo},
    {"speed", "RPM", "Speed; rated if not given", 1},
    {"inlet-pressure", "BAR", "Rated charge air pressure, absolute", kBar},
    {"charge-temperature", "CELSIUS", "Temperature of the charge air", 1},
    {"peak-pressure", "BAR", "Rated peak pressure, above 1 bar", kBar},
    {"compression-pressure", "BAR", "Rated compression pressure, above 1 bar", kBar},
    {"heat-share", "PERCENT", "Share of the heat that becomes work", 1e-2},
    {"mechanical-efficiency", "PERCENT", "Mechanical efficiency", 1e-2},
    {"form-factor", "FACTOR", "Of the heat release, where the search begins", 1},
    {"ignition", "DEGREES", "Start of combustion, after top dead centre", 1},
    {"end-of-combustion", "DEGREES", "End of combustion, after top dead centre", 1},
    {"exhaust-start", "DEGREES", "Exhaust opening, after top dead centre", 1},
    {"inlet-start", "DEGREES", "Inlet opening, after top dead centre (two-stroke)", 1},
    {"inlet-close", "DEGREES", "Inlet closing, more than 180 (two-stroke)", 1},
}};

struct Cylinder {
  std::int32_t strokes = 0;  ///< of a cycle, 2 or 4
  bool misfires = false;     ///< compression and expansion only
  /// In SI units. Peak and compression pressure stay above 1 bar.
  std::array<double, kEngineQuantities> values{};

  const double& operator[](EngineQuantity quantity) const { return values[quantity]; }
  /// Points of a cycle in steps of one degree.
  [[nodiscard]] std::int32_t points() const { return strokes == 2 ? 360 : 720; }
  /// Order of a harmonic of the cycle.
  [[nodiscard]] double order(std::int32_t harmonic) const {
    return harmonic * (strokes == 2 ? 1.0 : 0.5);
  }
  /// Crank angles of a cycle from a first one on, rad.
  [[nodiscard]] std::vector<double> crankAngles(double firstDegree) const;
};

/// Cylinder pressure over a cycle.
struct PressureCurve {
  std::vector<double> pressures;     ///< Pa, from -180 degrees on
  double peak;                       ///< Pa
  double meanIndicated;              ///< Pa
  std::optional<double> missedPeak;  ///< Pa: what the peak should be at rated speed, where it isn't
};

/// Throws std::runtime_error where no curve comes from the data.
PressureCurve pressureCurve(const Cylinder& cylinder);

/// A harmonic of the tangential pressure, sine and cosine component in Pa.
struct Harmonic {
  double sine;
  double cosine;
};

/// The first harmonics of the tangential pressure of a curve that begins at -180 degrees.
std::vector<Harmonic> tangentialHarmonics(const Cylinder& cylinder,
                                          const std::vector<double>& pressures, std::int32_t count);

/// What moves, and the pressure on the other side of the piston.
struct CrankLoad {
  double reciprocatingMass;  ///< kg
  double rotatingMass;       ///< of the connecting rod, kg
  double referencePressure;  ///< Pa
};

using api::CrankForces;

/// Forces on the crank pin over a cycle from -180 degrees on.
CrankForces crankForces(const Cylinder& cylinder, const CrankLoad& load,
                        const std::vector<double>& pressures);

/// A harmonic of the tangential force, N.
struct ForceHarmonic {
  double order;
  Harmonic gas;
  Harmonic mass;
};

std::vector<ForceHarmonic> forceHarmonics(const Cylinder& cylinder, const CrankLoad& load,
                                          std::vector<double> pressures, std::int32_t count);

}  // namespace verenwick::host
