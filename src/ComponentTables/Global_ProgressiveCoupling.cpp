#include "ComponentTables/Global_ProgressiveCoupling.h"

#include "ComputationsSrc/Interpolation.h"
#include "RunControl/Constants.h"

namespace verenwick {

std::int32_t GET_PROGRESSIVECOUPLING_IPROGRESSIVECOUPLING_SHAFTNODE(
    const PROGRESSIVECOUPLING_TABLE& table, std::int32_t shaftId) {
  return firstPosition(table, [&](std::int32_t i) {
    return GET_PROGRESSIVECOUPLING_SHAFTNODE(table, i) == shaftId;
  });
}

double GET_PROGRESSIVECOUPLING_STIFFNESSDYNAMIC(const PROGRESSIVECOUPLING_TABLE& table,
                                                std::int32_t row, double torque) {
  const PROGRESSIVECOUPLING_RECORD& coupling = table.at(row);
  return interpolate(coupling.NOMINALTORQUE, coupling.NOMINALSTIFFNESS, torque);
}

double CALCULATE_PROGRESSIVECOUPLING_DAMPING(const PROGRESSIVECOUPLING_TABLE& table,
                                             std::int32_t row, double g, double q) {
  if (g == 0.0) {
    return 0.0;
  }
  const PROGRESSIVECOUPLING_RECORD& coupling = table.at(row);
  const double stiffness = GET_PROGRESSIVECOUPLING_STIFFNESSDYNAMIC(table, row, coupling.TORQUE);
  return stiffness / (g * angularSpeed(coupling.SPEED) * q);
}

void CALCULATE_PROGRESSIVECOUPLING_LOADCASESETTING(PROGRESSIVECOUPLING_TABLE& table,
                                                   std::int32_t row, double g) {
  PROGRESSIVECOUPLING_RECORD& coupling = table.at(row);
  coupling.STIFFNESS = GET_PROGRESSIVECOUPLING_STIFFNESSDYNAMIC(table, row, coupling.TORQUE);
  coupling.DAMPING = CALCULATE_PROGRESSIVECOUPLING_DAMPING(table, row, g, 1.0);
}

}  // namespace verenwick
