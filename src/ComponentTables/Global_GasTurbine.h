#pragma once

#include "ComponentTables/FieldGroups.h"

/// Gas turbines.
namespace verenwick {

// clang-format off
#define GASTURBINE_FIELDS(VALUE, ARRAY, LIST, X)                            \
  VALUE(X, std::int32_t, GASTURBINENODE, 0, "id of the inertia it sits on") \
  VERENWICK_MACHINE_FIELDS(VALUE, X)
// clang-format on

VERENWICK_TABLE(GASTURBINE, GASTURBINE_FIELDS)
VERENWICK_TABLE_ID(GASTURBINE, IGASTURBINE)

}  // namespace verenwick
