#include "ComponentTables/Global_GeislingerCoupling.h"

#include <cmath>

#include "RunControl/Constants.h"

namespace verenwick {
namespace {

// Dynamic over static stiffness up to the reference frequency and above it, a line each over the
// relative frequency.
constexpr double kStiffnessSlopeBelow = single(0.37F);
constexpr double kStiffnessAbove = single(1.1F);
constexpr double kStiffnessSlopeAbove = single(0.27F);

// Relative damping with pressurised oil: a line over the relative frequency up to the knee, another
// up to the reference frequency, constant above.
constexpr double kKnee = single(0.3F);
constexpr double kDampingBelowKnee = single(0.02F);
constexpr double kDampingSlopeBelowKnee = single(1.1F);
constexpr double kDampingAboveKnee = single(0.2F);
constexpr double kDampingSlopeAboveKnee = 0.5;
constexpr double kDampingAbove = single(0.7F);

/// Relative damping without oil pressure: a parabola over the load.
struct LoadParabola {
  double constant;
  double linear;
  double quadratic;
};
constexpr LoadParabola kMultiSpring{single(0.058F), single(0.13F), single(0.11F)};
constexpr LoadParabola kDualSpring{single(0.032F), single(0.0069F), single(0.055F)};

double excitationFrequency(const GEISLINGERCOUPLING_RECORD& coupling, double q) {
  return q * angularSpeed(coupling.SPEEDEXCITATION);
}

/// Excitation frequency over the reference frequency, which thicker oil lowers.
double relativeFrequency(const GEISLINGERCOUPLING_RECORD& coupling, double q) {
  return excitationFrequency(coupling, q) /
         (40 * coupling.CHARACTERISTICFREQUENCY / coupling.OILVISCOSITY);
}

double pressurizedDamping(double r) {
  if (r <= 0.0) {
    return 0.0;
  }
  if (r <= kKnee) {
    return kDampingSlopeBelowKnee * r + kDampingBelowKnee;
  }
  return r <= 1.0 ? kDampingSlopeAboveKnee * r + kDampingAboveKnee : kDampingAbove;
}

double relativeDamping(const GEISLINGERCOUPLING_RECORD& coupling, double q) {
  if (coupling.OILSUPPLYTYPE == pressurizedOil) {
    return pressurizedDamping(relativeFrequency(coupling, q));
  }
  const bool isMultiSpring = coupling.DESIGNTYPE == multiSpring;
  if (coupling.OILSUPPLYTYPE != oilWithoutPressure ||
      !(isMultiSpring || coupling.DESIGNTYPE == dualSpring)) {
    return 0.0;
  }
  const LoadParabola& parabola = isMultiSpring ? kMultiSpring : kDualSpring;
  const double load = coupling.TORQUE / coupling.NOMINALTORQUE;
  return parabola.constant + parabola.linear * load + parabola.quadratic * (load * load);
}

}  // namespace

std::int32_t GET_GEISLINGERCOUPLING_IGEISLINGERCOUPLING_SHAFTNODE(
    const GEISLINGERCOUPLING_TABLE& table, std::int32_t shaftId) {
  return firstPosition(
      table, [&](std::int32_t i) { return GET_GEISLINGERCOUPLING_SHAFTNODE(table, i) == shaftId; });
}

double CALCULATE_GEISLINGERCOUPLING_STIFFNESSDYNAMIC(const GEISLINGERCOUPLING_TABLE& table,
                                                     std::int32_t row, double q) {
  const GEISLINGERCOUPLING_RECORD& coupling = table.at(row);
  const double r = relativeFrequency(coupling, q);
  if (r <= 0.0) {
    return coupling.STATICSTIFFNESS;
  }
  return coupling.STATICSTIFFNESS *
         (r <= 1.0 ? 1.0 + kStiffnessSlopeBelow * r : kStiffnessAbove + kStiffnessSlopeAbove * r);
}

double CALCULATE_GEISLINGERCOUPLING_DAMPING(const GEISLINGERCOUPLING_TABLE& table, std::int32_t row,
                                            double g, double q) {
  const GEISLINGERCOUPLING_RECORD& coupling = table.at(row);
  const double stiffness = CALCULATE_GEISLINGERCOUPLING_STIFFNESSDYNAMIC(table, row, q);
  const double frequency = excitationFrequency(coupling, q);
  if (coupling.DAMPINGTYPE == dampingByFormula) {
    return relativeDamping(coupling, q) * stiffness / frequency;
  }
  if (coupling.DAMPINGTYPE == dampingByMagnifier && g != 0.0) {
    return std::sqrt(1 / (g * g - 1)) * stiffness / frequency;
  }
  return 0.0;
}

void CALCULATE_GEISLINGERCOUPLING_LOADCASESETTING(GEISLINGERCOUPLING_TABLE& table, std::int32_t row,
                                                  double g, double q) {
  GEISLINGERCOUPLING_RECORD& coupling = table.at(row);
  coupling.STIFFNESS = CALCULATE_GEISLINGERCOUPLING_STIFFNESSDYNAMIC(table, row, q);
  coupling.DAMPING = CALCULATE_GEISLINGERCOUPLING_DAMPING(table, row, g, q);
}

}  // namespace verenwick
