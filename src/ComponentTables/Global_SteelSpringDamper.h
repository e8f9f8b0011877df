#pragma once

#include "ComponentTables/ComponentTable.h"

/// Steel spring dampers: an outer on an inner member.
namespace verenwick {

// clang-format off
#define STEELSPRINGDAMPER_FIELDS(VALUE, ARRAY, LIST, X)                    \
  VALUE(X, std::int32_t, OUTERMEMBERNODE, 0, "id of the outer member")     \
  VALUE(X, std::int32_t, INNERMEMBERNODE, 0, "id of the inner member")     \
  VALUE(X, double, ABSDAMPING, 0.0, "fixed damping, N m s/rad")            \
  VALUE(X, double, RPMRATIO, 1.0, "speed relative to the reference speed") \
  VALUE(X, double, POWER, 0.0, "power in the load case, W")                \
  VALUE(X, double, SPEED, 0.0, "speed in the load case, rpm")              \
  VALUE(X, double, TORQUE, 0.0, "torque in the load case, N m")            \
  VALUE(X, double, STIFFNESS, 0.0, "stiffness in the load case, N m/rad")  \
  VALUE(X, double, DAMPING, 0.0, "damping in the load case, N m s/rad")
// clang-format on

VERENWICK_TABLE(STEELSPRINGDAMPER, STEELSPRINGDAMPER_FIELDS)
VERENWICK_TABLE_ID(STEELSPRINGDAMPER, ISTEELSPRINGDAMPER)

/// Sets STIFFNESS and DAMPING of the load case.
/// @param stiffness of the damper's link, N m/rad
void CALCULATE_STEELSPRINGDAMPER_LOADCASESETTING(STEELSPRINGDAMPER_TABLE& table, std::int32_t row,
                                                 double stiffness);

}  // namespace verenwick
