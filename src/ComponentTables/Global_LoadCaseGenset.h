#pragma once

#include "ComponentTables/ComponentTable.h"

/// Pressures that a genset's engine runs at in each load case. The records of one diesel lie next
/// to each other, in load case order.
namespace verenwick {

// clang-format off
#define LOADCASEGENSET_FIELDS(VALUE, ARRAY, LIST, X)                  \
  VALUE(X, double, PRESSUREMAX, 0.0, "maximum cylinder pressure, Pa") \
  VALUE(X, double, PRESSURECOMP, 0.0, "compression pressure, Pa")     \
  VALUE(X, double, PRESSUREINLET, 0.0, "inlet pressure, Pa. Not part of a run.")
// clang-format on

VERENWICK_TABLE(LOADCASEGENSET, LOADCASEGENSET_FIELDS)
VERENWICK_TABLE_ID_NAMED(LOADCASEGENSET, DIESELID, ILOADCASEGENSET)

/// Pressures of a diesel in a load case, Pa; 0 if the table holds none. A diesel whose first record
/// is the last one of the table counts as not found.
double GET_LOADCASEGENSET_PRESSUREMAX(const LOADCASEGENSET_TABLE& table, std::int32_t dieselId,
                                      std::int32_t loadCase);
double GET_LOADCASEGENSET_PRESSURECOMP(const LOADCASEGENSET_TABLE& table, std::int32_t dieselId,
                                       std::int32_t loadCase);

}  // namespace verenwick
