#include "ComponentTables/Global_SteelSpringDamper.h"

namespace verenwick {

void CALCULATE_STEELSPRINGDAMPER_LOADCASESETTING(STEELSPRINGDAMPER_TABLE& table, std::int32_t row,
                                                 double stiffness) {
  SET_STEELSPRINGDAMPER_STIFFNESS(table, row, stiffness);
  SET_STEELSPRINGDAMPER_DAMPING(table, row, GET_STEELSPRINGDAMPER_ABSDAMPING(table, row));
}

}  // namespace verenwick
