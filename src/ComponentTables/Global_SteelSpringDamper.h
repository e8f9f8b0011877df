#pragma once

#include "ComponentTables/FieldGroups.h"

/// Steel spring dampers: an outer on an inner member.
namespace verenwick {

// clang-format off
#define STEELSPRINGDAMPER_FIELDS(VALUE, ARRAY, LIST, X)                \
  VALUE(X, std::int32_t, OUTERMEMBERNODE, 0, "id of the outer member") \
  VALUE(X, std::int32_t, INNERMEMBERNODE, 0, "id of the inner member") \
  VALUE(X, double, ABSDAMPING, 0.0, "fixed damping, N m s/rad")        \
  VERENWICK_ELASTIC_FIELDS(VALUE, X)
// clang-format on

VERENWICK_TABLE(STEELSPRINGDAMPER, STEELSPRINGDAMPER_FIELDS)
VERENWICK_TABLE_ID(STEELSPRINGDAMPER, ISTEELSPRINGDAMPER)

/// Sets STIFFNESS and DAMPING of the load case.
/// @param stiffness of the damper's link, N m/rad
void CALCULATE_STEELSPRINGDAMPER_LOADCASESETTING(STEELSPRINGDAMPER_TABLE& table, std::int32_t row,
                                                 double stiffness);

}  // namespace verenwick
