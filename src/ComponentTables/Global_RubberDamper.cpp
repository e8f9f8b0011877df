#include "ComponentTables/Global_RubberDamper.h"

#include "RunControl/Constants.h"

namespace verenwick {

std::int32_t GET_RUBBERDAMPER_IRUBBERDAMPER_NODE(const RUBBERDAMPER_TABLE& table,
                                                 std::int32_t turningMassNode,
                                                 std::int32_t drivePlateNode) {
  return firstPosition(table, [&](std::int32_t i) {
    return GET_RUBBERDAMPER_TURNINGMASSNODE(table, i) == turningMassNode &&
           GET_RUBBERDAMPER_DRIVEPLATENODE(table, i) == drivePlateNode;
  });
}

double CALCULATE_RUBBERDAMPER_DAMPING(const RUBBERDAMPER_TABLE& table, std::int32_t row, double g,
                                      double q) {
  const RUBBERDAMPER_RECORD& damper = table.at(row);
  return g != 0.0 ? damper.STIFFNESS / (g * q * damper.SPEED * kPi / 30) : damper.ABSDAMPING;
}

void CALCULATE_RUBBERDAMPER_LOADCASESETTING(RUBBERDAMPER_TABLE& table, std::int32_t row,
                                            double stiffness, double g, double q) {
  RUBBERDAMPER_RECORD& damper = table.at(row);
  damper.STIFFNESS = stiffness;
  damper.DAMPING = CALCULATE_RUBBERDAMPER_DAMPING(table, row, g, q);
}

}  // namespace verenwick
