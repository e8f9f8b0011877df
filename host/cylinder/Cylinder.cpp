#include "host/cylinder/Cylinder.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <stdexcept>
#include <string>
#include <utility>

namespace verenwick::host {

std::vector<double> Cylinder::crankAngles(double firstDegree) const {
  std::vector<double> phi(static_cast<std::size_t>(points()));
  for (std::size_t i = 0; i < phi.size(); ++i) {
    phi[i] = (firstDegree + static_cast<double>(i)) * kPi / 180;
  }
  return phi;
}

PressureCurve pressureCurve(const Cylinder& c) {
  auto [curve, mip] =
      api::theoreticalCylinderPressure({.ratedPower = c[kRatedPower],
                                        .ratedSpeed = c[kRatedSpeed],
                                        .misfire = c.misfires,
                                        .strokes = c.strokes,
                                        .bore = c[kBore],
                                        .stroke = c[kStroke],
                                        .rodRatio = c[kConrodRatio],
                                        .compressionRatio = c[kCompressionRatio],
                                        .ratedInletPressure = c[kInletPressure],
                                        .chargeTemperature = c[kChargeTemperature],
                                        .speed = c[kSpeed],
                                        .power = c[kPower],
                                        .ratedPeakPressure = c[kPeakPressure],
                                        .ratedCompressionPressure = c[kCompressionPressure],
                                        .heatShare = c[kHeatShare],
                                        .mechanicalEfficiency = c[kMechanicalEfficiency],
                                        .formFactor = c[kFormFactor],
                                        .ignition = c[kIgnition],
                                        .endOfCombustion = c[kEndOfCombustion],
                                        .exhaustStart = c[kExhaustStart],
                                        .inletStart = c[kInletStart],
                                        .inletClose = c[kInletClose]});
  if (!std::ranges::all_of(curve, [](double p) { return std::isfinite(p); })) {
    const bool areValvesInOrder = std::trunc(c[kExhaustStart]) < std::trunc(c[kInletStart]) &&
                                  std::trunc(c[kInletStart]) < std::trunc(c[kInletClose]);
    std::string words = "no pressure curve comes from these data";
    if (c.strokes == 2 && !c.misfires && !areValvesInOrder)
      words += "; the exhaust must open before the inlet, and the inlet close last";
    throw std::runtime_error(words);
  }
  const double peak = *std::ranges::max_element(curve);
  // What the peak should be off the rated speed, only the library knows.
  const double tolerance = c.strokes == 2 ? 0.02 : 0.005;
  const double wanted = c[kPeakPressure] + kBar;
  const bool isRated = c[kSpeed] == c[kRatedSpeed] && !c.misfires && c[kPower] != 0;
  const bool isMissed = isRated && std::abs(peak - wanted) > tolerance * wanted;
  return {std::move(curve), peak, mip, isMissed ? std::optional(wanted) : std::nullopt};
}

std::vector<Harmonic> tangentialHarmonics(const Cylinder& cylinder,
                                          const std::vector<double>& pressures,
                                          std::int32_t count) {
  // From top dead centre on.
  std::vector<double> curve = pressures;
  std::rotate(curve.begin(), curve.begin() + 180, curve.end());
  const auto [sine, cosine, tangential] = api::cylinderPressureToHarmonic(
      std::move(curve), cylinder.crankAngles(0), cylinder[kConrodRatio], count);
  std::vector<Harmonic> harmonics;
  for (std::size_t k = 0; k < sine.size(); ++k) harmonics.push_back({sine[k], cosine[k]});
  return harmonics;
}

CrankForces crankForces(const Cylinder& cylinder, const CrankLoad& load,
                        const std::vector<double>& pressures) {
  return api::tangentialRadialForce({.rotatingMass = load.rotatingMass,
                                     .reciprocatingMass = load.reciprocatingMass,
                                     .referencePressure = load.referencePressure,
                                     .rodRatio = cylinder[kConrodRatio],
                                     .speed = cylinder[kSpeed],
                                     .stroke = cylinder[kStroke],
                                     .bore = cylinder[kBore]},
                                    cylinder.crankAngles(-180), pressures);
}

std::vector<ForceHarmonic> forceHarmonics(const Cylinder& cylinder, const CrankLoad& load,
                                          std::vector<double> pressures, std::int32_t count) {
  const double omega = cylinder[kSpeed] * kPi / 30;
  const double area = cylinder[kBore] * cylinder[kBore] * kPi / 4;
  const double inertia = load.reciprocatingMass * omega * omega * cylinder[kStroke] / 2;

  for (double& p : pressures) p -= load.referencePressure;
  const std::vector<Harmonic> gas = tangentialHarmonics(cylinder, pressures, count);
  const std::vector<std::complex<double>> mass = api::oscillatingMassFourierCoefficients(
      cylinder.crankAngles(0), cylinder[kConrodRatio], count + 1);
  std::vector<ForceHarmonic> harmonics;
  for (std::size_t k = 1; k <= gas.size(); ++k) {
    // The inertia force is the negative of the force that accelerates the mass.
    harmonics.push_back({cylinder.order(static_cast<std::int32_t>(k)),
                         {gas[k - 1].sine * area, gas[k - 1].cosine * area},
                         {2 * mass[k].imag() * inertia, -2 * mass[k].real() * inertia}});
  }
  return harmonics;
}

}  // namespace verenwick::host
