#include "ComponentTables/Global_SteelSpringDamper.h"

namespace verenwick {

void CALCULATE_STEELSPRINGDAMPER_LOADCASESETTING(STEELSPRINGDAMPER_TABLE& table, std::int32_t row,
                                                 double stiffness) {
  STEELSPRINGDAMPER_RECORD& damper = table.at(row);
  damper.STIFFNESS = stiffness;
  damper.DAMPING = damper.ABSDAMPING;
}

}  // namespace verenwick
