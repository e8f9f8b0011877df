#include "Excitation/Engine_functions.h"

#include "Excitation/ExcitationConstants.h"

namespace verenwick {
namespace {

/// Torque as a share of the rated torque, cut above.
double torqueRatio(double powerRated, double speedRated, double power, double speed) {
  const double ratio = (power / speed) / (powerRated / speedRated);
  return ratio > kTorqueRatioLimit ? kTorqueRatioLimit : ratio;
}

}  // namespace

double CALCULATE_TORQUE(double power, double speed) { return power / (speed * kPiSingle / 30.0); }

double CALCULATE_POWER(double torque, double speed) { return torque * (speed * kPiSingle / 30.0); }

double CALCULATE_MEP(double power, double speed, double bore, std::int32_t nStroke, double stroke) {
  const double cyclesPerSecond = speed / (nStroke * 60.0 * 0.5);
  return power / (cyclesPerSecond * kPiSingle * bore * bore * 0.25 * stroke);
}

double CALCULATE_MIP(double /*mep*/, double mepRated, double load, double mechEfficiency,
                     double mipMax) {
  const double friction = (1.0 - mechEfficiency) * mepRated;
  const double mip = friction + load * (mepRated / mechEfficiency - friction);
  return mip > mipMax ? mipMax : mip;
}

double CALCULATE_MIP_MAX(double mepRated, double mechEfficiency, double mipLimit) {
  return mipLimit * (mepRated / mechEfficiency);
}

double CALCULATE_PMAX(double powerRated, double speedRated, double power, double speed,
                      double pmaxRated, double pcomp, std::int32_t nStroke) {
  const double slope = nStroke == 2 ? kPeakSlopeTwoStroke : kPeakSlopeFourStroke;
  const double ratio = torqueRatio(powerRated, speedRated, power, speed);
  double pmax = pmaxRated - pmaxRated * slope * (1.0 - ratio);
  if (pmax < pcomp * kPeakOverCompression)
    pmax = pcomp * kPeakOverCompression;
  if (pmax < pmaxRated * kLowestShareOfRated)
    pmax = pmaxRated * kLowestShareOfRated;
  if (pmax > pmaxRated)
    pmax = pmaxRated;
  return pmax;
}

double CALCULATE_PINLET(double powerRated, double speedRated, double power, double speed,
                        double pinletRated, std::int32_t nStroke) {
  const double slope = nStroke == 2 ? kInletSlopeTwoStroke : kInletSlopeFourStroke;
  const double ratio = torqueRatio(powerRated, speedRated, power, speed);
  // The gauge is taken off as 1.0, not as one bar: pressures in bar and in Pa meet here.
  const double pinlet = pinletRated - (pinletRated - 1.0) * slope * (1.0 - ratio);
  return pinlet < kBar ? kBar : pinlet;
}

double CALCULATE_PCOMP(double powerRated, double speedRated, double power, double speed,
                       double pcompRated) {
  const double ratio = torqueRatio(powerRated, speedRated, power, speed);
  double pcomp = pcompRated - pcompRated * kCompressionSlope * (1.0 - ratio);
  if (pcomp < pcompRated * kLowestShareOfRated)
    pcomp = pcompRated * kLowestShareOfRated;
  if (pcomp > pcompRated)
    pcomp = pcompRated;
  return pcomp;
}

}  // namespace verenwick
