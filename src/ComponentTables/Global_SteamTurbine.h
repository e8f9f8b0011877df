#pragma once

#include "ComponentTables/FieldGroups.h"

/// Steam turbines.
namespace verenwick {

// clang-format off
#define STEAMTURBINE_FIELDS(VALUE, ARRAY, LIST, X)                            \
  VALUE(X, std::int32_t, STEAMTURBINENODE, 0, "id of the inertia it sits on") \
  VERENWICK_MACHINE_FIELDS(VALUE, X)
// clang-format on

VERENWICK_TABLE(STEAMTURBINE, STEAMTURBINE_FIELDS)
VERENWICK_TABLE_ID(STEAMTURBINE, ISTEAMTURBINE)

}  // namespace verenwick
