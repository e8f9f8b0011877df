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
  SET_LINEARCOUPLING_STIFFNESS(table, row, GET_LINEARCOUPLING_STIFFNESSDYNAMIC(table, row));
  SET_LINEARCOUPLING_DAMPING(table, row, CALCULATE_LINEARCOUPLING_DAMPING(table, row, g, 1.0));
}

}  // namespace verenwick
