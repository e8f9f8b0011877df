#include "ComponentTables/Global_LinearCoupling.h"

#include "RunControl/Constants.h"

namespace verenwick {

std::int32_t GET_LINEARCOUPLING_ILINEARCOUPLING_SHAFTNODE(const LINEARCOUPLING_TABLE& table,
                                                          std::int32_t shaftId) {
  return firstPosition(
      table, [&](std::int32_t i) { return GET_LINEARCOUPLING_SHAFTNODE(table, i) == shaftId; });
}

double GET_LINEARCOUPLING_STIFFNESSDYNAMIC(const LINEARCOUPLING_TABLE& table, std::int32_t row) {
  return GET_LINEARCOUPLING_NOMINALSTIFFNESS(table, row);
}

double CALCULATE_LINEARCOUPLING_DAMPING(const LINEARCOUPLING_TABLE& table, std::int32_t row,
                                        double g, double q) {
  const double omega = angularSpeed(GET_LINEARCOUPLING_SPEED(table, row));
  return g != 0.0 ? GET_LINEARCOUPLING_STIFFNESSDYNAMIC(table, row) / (g * omega * q) : 0.0;
}

void CALCULATE_LINEARCOUPLING_LOADCASESETTING(LINEARCOUPLING_TABLE& table, std::int32_t row,
                                              double g) {
  LINEARCOUPLING_RECORD& coupling = table.at(row);
  coupling.STIFFNESS = GET_LINEARCOUPLING_STIFFNESSDYNAMIC(table, row);
  coupling.DAMPING = CALCULATE_LINEARCOUPLING_DAMPING(table, row, g, 1.0);
}

}  // namespace verenwick
