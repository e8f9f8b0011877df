#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "verenwick.h"

namespace verenwick {

/// Room of a pressure curve; a two-stroke curve fills 360 points, a four-stroke one 720.
constexpr std::size_t kPressurePoints = VERENWICK_PRESSURE_POINTS;

/// What a theoretical pressure curve is made from. Equal inputs give equal curves, to the bit.
/// Angles are cut to whole degrees.
struct CylinderPressureInput {
  bool misfire{};              ///< only compression and expansion, no combustion
  std::int32_t nStroke{};      ///< 2 or 4
  double bore{};               ///< m
  double stroke{};             ///< m
  double lambda{};             ///< crank radius divided by rod length
  double compRatio{};          ///< compression ratio
  double pInlet{};             ///< inlet pressure, Pa
  double tCharge{};            ///< charge air temperature, degrees Celsius
  double speed{};              ///< rpm
  double power{};              ///< power of the cylinder, W
  double pMax{};               ///< required peak pressure, Pa above 1 bar
  double pComp{};              ///< compression pressure, Pa above 1 bar
  double CompExp{};            ///< no effect: the exponent follows from pComp
  double ExpaExp{};            ///< no effect: the exponent follows from that of the compression
  double Te{};                 ///< share of the heat that becomes indicated work
  double me{};                 ///< mechanical efficiency
  double FormFactor{};         ///< form factor of the heat release, improved in the iteration
  double AngleIgnition{};      ///< start of combustion, degrees after top dead centre
  double AngleEndOfComb{};     ///< end of combustion, degrees after top dead centre
  double AngleExhaustStart{};  ///< exhaust opening, degrees after top dead centre
  double AngleInletStart{};    ///< inlet opening, degrees after top dead centre (two-stroke)
  double AngleInletClose{};    ///< inlet closing, degrees after the top dead centre before
                               ///< compression (two-stroke)

  bool operator==(const CylinderPressureInput&) const = default;
};

/// Cylinder pressure in Pa over one cycle in steps of one degree, point 1 at -180 degrees from the
/// top dead centre of combustion. Heat and its form factor are iterated, at most 21 passes, until
/// the indicated work and the peak pressure of the curve are those required; where the iteration
/// runs out, the last pass stands.
///
/// @param pressure  out, the points of the cycle; those beyond are left as they are. Untouched
///                  where the peak pressure wanted is none (absolute 0). Without misfire: all zero
///                  if the power is 0, else untouched where nStroke is neither 2 nor 4, or the
///                  angles are not in the order exhaust opening, inlet opening, inlet closing
///                  (two-stroke).
/// @param mip       out, mean indicated pressure of the required power, Pa; left as it is where the
///                  curve is all zero or no peak pressure is wanted
/// @param status    out, true also where the iteration ran out and where the angles are unfit;
///                  false if no peak pressure is wanted; left as it is where the curve is all zero
void CALCULATEDPRESSURE(const CylinderPressureInput& input,
                        std::span<double, kPressurePoints> pressure, double& mip, bool& status);

/// One temperature step of the cylinder charge by the first law: heat released at crank angle t by
/// a Vibe curve against the work done on the piston.
/// @param t         crank angle, degrees; AngleIgnition and duration likewise
/// @param vPrev     swept volume of the step before, v of this step, m3
/// @param tPrev     temperature of the step before, K; pPrev its pressure, Pa
/// @param mass      mass of the charge, kg
/// @param heat      heat of the whole combustion, J
/// @param tOut      out, the temperature, K
void CYLTEMP(double t, double AngleIgnition, double duration, double FormFactor, double vPrev,
             double v, double tPrev, double pPrev, double mass, double heat, double& tOut);

}  // namespace verenwick
