#include "host/cylinder/Cylinder.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <string>

#include "verenwick.h"

namespace verenwick::host {

std::vector<double> Cylinder::crankAngles(double firstDegree) const {
  std::vector<double> phi(static_cast<std::size_t>(points()));
  for (std::size_t i = 0; i < phi.size(); ++i) {
    phi[i] = (firstDegree + static_cast<double>(i)) * kPi / 180;
  }
  return phi;
}

PressureCurve pressureCurve(const Cylinder& c) {
  constexpr std::size_t kRoom = 1000;
  const std::int32_t misfire = c.misfires ? 1 : 0;
  const double derived = 0;  // exponents that follow from the pressures
  std::vector<double> curve(kRoom, std::nan(""));
  double mip = 0;
  THEORETICALCYLINDERPRESSURE(&c[kRatedPower], &c[kRatedSpeed], &misfire, &c.strokes, &c[kBore],
                              &c[kStroke], &c[kConrodRatio], &c[kCompressionRatio],
                              &c[kInletPressure], &c[kChargeTemperature], &c[kSpeed], &c[kPower],
                              &c[kPeakPressure], &c[kCompressionPressure], &derived, &derived,
                              &c[kHeatShare], &c[kMechanicalEfficiency], &c[kFormFactor],
                              &c[kIgnition], &c[kEndOfCombustion], &c[kExhaustStart],
                              &c[kInletStart], &c[kInletClose], curve.data(), &mip);
  curve.resize(static_cast<std::size_t>(c.points()));
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
  const std::int32_t points = cylinder.points();
  const std::vector<double> phi = cylinder.crankAngles(0);
  std::vector<double> sine(static_cast<std::size_t>(count));
  std::vector<double> cosine(sine.size());
  CYLINDERPRESSURETOHARMONIC(&points, &count, curve.data(), phi.data(), &cylinder[kConrodRatio],
                             sine.data(), cosine.data());
  std::vector<Harmonic> harmonics;
  for (std::size_t k = 0; k < sine.size(); ++k) harmonics.push_back({sine[k], cosine[k]});
  return harmonics;
}

CrankForces crankForces(const Cylinder& cylinder, const CrankLoad& load,
                        const std::vector<double>& pressures) {
  const std::int32_t points = cylinder.points();
  const std::vector<double> phi = cylinder.crankAngles(-180);
  const std::vector<double> zeros(pressures.size());
  CrankForces forces{zeros, zeros, zeros, zeros, zeros, zeros};
  CALCULATETANGENTIALRADIALFORCE(
      &load.rotatingMass, &load.reciprocatingMass, nullptr, &load.referencePressure,
      &cylinder[kConrodRatio], &cylinder[kSpeed], &cylinder[kStroke], &cylinder[kBore], &points,
      phi.data(), pressures.data(), forces.tangential.data(), forces.tangentialMass.data(),
      forces.tangentialGas.data(), forces.radial.data(), forces.radialMass.data(),
      forces.radialGas.data());
  return forces;
}

std::vector<ForceHarmonic> forceHarmonics(const Cylinder& cylinder, const CrankLoad& load,
                                          std::vector<double> pressures, std::int32_t count) {
  const double omega = cylinder[kSpeed] * kPi / 30;
  const double area = cylinder[kBore] * cylinder[kBore] * kPi / 4;
  const double inertia = load.reciprocatingMass * omega * omega * cylinder[kStroke] / 2;

  for (double& p : pressures) p -= load.referencePressure;
  const std::vector<Harmonic> gas = tangentialHarmonics(cylinder, pressures, count);
  const std::int32_t points = cylinder.points();
  const std::int32_t coefficients = count + 1;
  const std::vector<double> phi = cylinder.crankAngles(0);
  std::vector<double> mass(2 * (gas.size() + 1));
  OSCILLATINGMASSFOURIERCOEFFICIENTS(&points, &coefficients, mass.data(), phi.data(),
                                     &cylinder[kConrodRatio]);
  std::vector<ForceHarmonic> harmonics;
  for (std::size_t k = 1; k <= gas.size(); ++k) {
    // The inertia force is the negative of the force that accelerates the mass.
    harmonics.push_back({cylinder.order(static_cast<std::int32_t>(k)),
                         {gas[k - 1].sine * area, gas[k - 1].cosine * area},
                         {2 * mass[2 * k + 1] * inertia, -2 * mass[2 * k] * inertia}});
  }
  return harmonics;
}

}  // namespace verenwick::host
