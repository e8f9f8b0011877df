#pragma once

#include <cstdint>

/// Mean pressures of an engine, and the three pressures of the theoretical cylinder pressure model,
/// from rated data and the present operating point. Pressures in Pa, powers in W, speeds in rpm,
/// torques in N m, lengths in m. Bad values run on as not-a-number or infinity.
namespace verenwick {

/// Torque of a power at a speed. Not part of a run.
double CALCULATE_TORQUE(double power, double speed);

/// Power of a torque at a speed. Not part of a run.
double CALCULATE_POWER(double torque, double speed);

/// Mean effective pressure of one cylinder that delivers `power`.
double CALCULATE_MEP(double power, double speed, double bore, std::int32_t nStroke, double stroke);

/// Mean indicated pressure at a load (a fraction of 1): the friction pressure plus the load's share
/// of the rest, at most mipMax. The mean effective pressure itself takes no part: friction is held
/// at its rated value.
double CALCULATE_MIP(double mep, double mepRated, double load, double mechEfficiency,
                     double mipMax);

/// Highest mean indicated pressure; mipLimit is a share of the rated one.
double CALCULATE_MIP_MAX(double mepRated, double mechEfficiency, double mipLimit);

/// Peak pressure at part load: at least 1.1 of pcomp and 0.3 of the rated peak, at most the rated
/// peak.
double CALCULATE_PMAX(double powerRated, double speedRated, double power, double speed,
                      double pmaxRated, double pcomp, std::int32_t nStroke);

/// Inlet pressure at part load, at least 1 bar.
double CALCULATE_PINLET(double powerRated, double speedRated, double power, double speed,
                        double pinletRated, std::int32_t nStroke);

/// Compression pressure at part load, between 0.3 of the rated one and the rated one.
double CALCULATE_PCOMP(double powerRated, double speedRated, double power, double speed,
                       double pcompRated);

}  // namespace verenwick
