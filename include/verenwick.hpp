/// Verenwick for hosts in C++20: the five entries of verenwick.h with texts as texts, numbers by
/// value and arrays that know their size. What the arguments mean is told there. Header only; the
/// library is called through its C interface, one call at a time.
#ifndef VERENWICK_HPP
#define VERENWICK_HPP

#include <complex>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

#include "verenwick.h"

namespace verenwick::api {

/// What a run calculates. A value without a name is as `both`, without preparing the power of
/// couplings and dampers.
enum class Mode : std::int32_t {
  reports = VERENWICK_MODE_REPORTS,
  free = VERENWICK_MODE_FREE,
  forced = VERENWICK_MODE_FORCED,
  both = VERENWICK_MODE_BOTH
};

/// A text as it crosses the C interface, one character an element.
class PackedText {
 public:
  explicit PackedText(std::string_view text) {
    elements_.reserve(text.size());
    for (const char character : text) {
      elements_.push_back(static_cast<unsigned char>(character));
    }
    if (text.size() > std::size_t{VERENWICK_TEXT_LENGTH}) {
      length_ = VERENWICK_TEXT_LENGTH + 1;  // the library refuses it
    } else {
      length_ = static_cast<std::int32_t>(text.size());
    }
  }

  const std::int32_t* elements() const { return elements_.data(); }
  const std::int32_t* length() const { return &length_; }

 private:
  std::vector<std::int32_t> elements_;
  std::int32_t length_ = 0;
};

/// One complete run. Returns whether the input was read and passed every check; the log in the
/// result directory has the words, also of a calculation that failed behind the checks.
inline bool solve(std::string_view inputDirectory, std::string_view inputName,
                  std::string_view resultDirectory, Mode mode) {
  const PackedText directory(inputDirectory);
  const PackedText name(inputName);
  const PackedText results(resultDirectory);
  const auto calculation = static_cast<std::int32_t>(mode);
  std::int32_t status = 0;
  VERENWICKSOLVER(directory.elements(), directory.length(), name.elements(), name.length(),
                  results.elements(), results.length(), &status, &calculation);
  return status == 1;
}

/// A cylinder whose pressure is wanted, and the load.
struct Cylinder {
  double ratedPower{};  ///< W, of the cylinder
  double ratedSpeed{};  ///< rpm
  bool misfire{};
  std::int32_t strokes{4};
  double bore{};      ///< m
  double stroke{};    ///< m
  double rodRatio{};  ///< crank radius divided by length of the connecting rod
  double compressionRatio{};
  double ratedInletPressure{};        ///< Pa absolute
  double chargeTemperature{};         ///< degrees Celsius
  double speed{};                     ///< rpm
  double power{};                     ///< W, of the cylinder
  double ratedPeakPressure{};         ///< Pa above 1 bar
  double ratedCompressionPressure{};  ///< Pa above 1 bar
  double heatShare{};                 ///< share of the heat that becomes indicated work
  double mechanicalEfficiency{};
  double formFactor{};
  // Degrees after top dead centre.
  double ignition{};
  double endOfCombustion{};
  double exhaustStart{};
  double inletStart{};  ///< two-stroke
  double inletClose{};  ///< two-stroke, counted from the top dead centre that began the cycle

  /// Points of a pressure curve, one a degree.
  std::int32_t points() const { return strokes == 2 ? 360 : 720; }
};

struct CylinderPressure {
  std::vector<double> curve;  ///< Pa, from 180 degrees before the top dead centre of combustion
  double meanIndicatedPressure{};  ///< Pa; 0 with power 0 and no misfire
};

/// Pressure over one cycle by the theoretical model; not-a-number where no curve comes from the
/// data.
inline CylinderPressure theoreticalCylinderPressure(const Cylinder& c) {
  CylinderPressure result{
      std::vector<double>(VERENWICK_PRESSURE_POINTS, std::numeric_limits<double>::quiet_NaN())};
  const std::int32_t misfire = c.misfire ? 1 : 0;
  const double derived = 0.0;  // exponents that follow from the pressures
  THEORETICALCYLINDERPRESSURE(
      &c.ratedPower, &c.ratedSpeed, &misfire, &c.strokes, &c.bore, &c.stroke, &c.rodRatio,
      &c.compressionRatio, &c.ratedInletPressure, &c.chargeTemperature, &c.speed, &c.power,
      &c.ratedPeakPressure, &c.ratedCompressionPressure, &derived, &derived, &c.heatShare,
      &c.mechanicalEfficiency, &c.formFactor, &c.ignition, &c.endOfCombustion, &c.exhaustStart,
      &c.inletStart, &c.inletClose, result.curve.data(), &result.meanIndicatedPressure);
  result.curve.resize(static_cast<std::size_t>(c.points()));
  return result;
}

/// The common size of two arrays over the same points.
/// @throws std::length_error if they differ in size, or have more elements than 32 bits can tell
inline std::int32_t commonSize(std::span<const double> a, std::span<const double> b) {
  if (a.size() != b.size() ||
      a.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
    throw std::length_error("the arrays differ in size or are too large");
  }
  return static_cast<std::int32_t>(a.size());
}

struct Harmonics {
  std::vector<double> sine;                ///< element k - 1 belongs to harmonic k of the period
  std::vector<double> cosine;              ///< likewise
  std::vector<double> tangentialPressure;  ///< Pa, what they belong to
};

/// Harmonics of the tangential pressure, Pa, of a pressure curve.
/// @param pressure Pa, over a whole period from top dead centre on
/// @param phi      crank angles of its points, rad
inline Harmonics cylinderPressureToHarmonic(std::vector<double> pressure,
                                            std::span<const double> phi, double rodRatio,
                                            std::int32_t harmonics) {
  const std::int32_t points = commonSize(pressure, phi);
  const auto count = static_cast<std::size_t>(harmonics < 0 ? 0 : harmonics);
  Harmonics result{std::vector<double>(count), std::vector<double>(count), std::move(pressure)};
  CYLINDERPRESSURETOHARMONIC(&points, &harmonics, result.tangentialPressure.data(), phi.data(),
                             &rodRatio, result.sine.data(), result.cosine.data());
  return result;
}

/// Fourier coefficients of the tangential factor of the oscillating mass, the mean first.
/// @param phi crank angles over a whole period, rad
inline std::vector<std::complex<double>> oscillatingMassFourierCoefficients(
    std::span<const double> phi, double rodRatio, std::int32_t coefficients) {
  const std::int32_t points = commonSize(phi, phi);
  std::vector<double> parts(2 * static_cast<std::size_t>(coefficients < 0 ? 0 : coefficients));
  OSCILLATINGMASSFOURIERCOEFFICIENTS(&points, &coefficients, parts.data(), phi.data(), &rodRatio);
  std::vector<std::complex<double>> result;
  result.reserve(parts.size() / 2);
  for (std::size_t i = 0; i < parts.size(); i += 2) {
    result.emplace_back(parts[i], parts[i + 1]);
  }
  return result;
}

struct CrankDrive {
  double rotatingMass{};       ///< of the connecting rod, kg
  double reciprocatingMass{};  ///< kg
  double referencePressure{};  ///< on the other side of the piston, Pa
  double rodRatio{};           ///< crank radius divided by length of the connecting rod
  double speed{};              ///< rpm
  double stroke{};             ///< m
  double bore{};               ///< m
};

/// Forces on the crank pin at each point of a curve, N.
struct CrankForces {
  std::vector<double> tangential;
  std::vector<double> tangentialMass;
  std::vector<double> tangentialGas;
  std::vector<double> radial;
  std::vector<double> radialMass;
  std::vector<double> radialGas;
};

/// @param phi      crank angles, rad
/// @param pressure cylinder pressure there, Pa
inline CrankForces tangentialRadialForce(const CrankDrive& d, std::span<const double> phi,
                                         std::span<const double> pressure) {
  const std::int32_t points = commonSize(phi, pressure);
  const std::vector<double> none(pressure.size());
  CrankForces f{none, none, none, none, none, none};
  CALCULATETANGENTIALRADIALFORCE(&d.rotatingMass, &d.reciprocatingMass, nullptr,
                                 &d.referencePressure, &d.rodRatio, &d.speed, &d.stroke, &d.bore,
                                 &points, phi.data(), pressure.data(), f.tangential.data(),
                                 f.tangentialMass.data(), f.tangentialGas.data(), f.radial.data(),
                                 f.radialMass.data(), f.radialGas.data());
  return f;
}

}  // namespace verenwick::api

#endif
