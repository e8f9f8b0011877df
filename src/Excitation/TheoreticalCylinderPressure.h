#pragma once

#include <span>

#include "Excitation/TheoreticalPressure.h"

namespace verenwick {

/// Pressure curve at part load. The three pressures of `input` are rated ones; away from the rated
/// speed they follow the load, at the rated speed they stand as they are, whatever the power.
/// @param ratedPowerPerCylinder  W
/// @param ratedSpeed             rpm
/// @param pressure               out, as CALCULATEDPRESSURE
/// @param mip                    out, as CALCULATEDPRESSURE
void THEORETICALCYLINDERPRESSURE(double ratedPowerPerCylinder, double ratedSpeed,
                                 CylinderPressureInput input,
                                 std::span<double, kPressurePoints> pressure, double& mip);

}  // namespace verenwick
