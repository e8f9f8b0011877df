#pragma once

#include <string>

#include "ComponentTables/ComponentTable.h"

/// Viscous dampers: a ring that a casing drags along.
namespace verenwick {

// clang-format off
#define VISCOUSDAMPER_FIELDS(VALUE, ARRAY, LIST, X)                                \
  VALUE(X, std::int32_t, CASINGNODE, 0, "id of the casing inertia")                \
  VALUE(X, std::int32_t, RINGNODE, 0, "id of the ring inertia")                    \
  VALUE(X, double, ABSDAMPING, 0.0, "fixed damping, N m s/rad")                    \
  VALUE(X, double, RPMRATIO, 1.0, "speed relative to the reference speed")         \
  VALUE(X, double, POWER, 0.0, "power in the load case, W")                        \
  VALUE(X, double, SPEED, 0.0, "speed in the load case, rpm")                      \
  VALUE(X, double, TORQUE, 0.0, "torque in the load case, N m")                    \
  VALUE(X, double, STIFFNESS, 0.0, "stiffness in the load case, N m/rad")          \
  VALUE(X, double, DAMPING, 0.0, "damping in the load case, N m s/rad")            \
  VALUE(X, bool, ISCUSTOMDAMPING, false, "damping from the table over frequency")  \
  VALUE(X, bool, ISCUSTOMSTIFFNESS, false, "stiffness from the table as well")     \
  LIST(X, double, FREQUENCIES, "frequency of each row, ascending, Hz")             \
  LIST(X, double, CUSTOMDAMPING, "damping at each frequency, N m s/rad")           \
  LIST(X, double, CUSTOMSTIFFNESS, "stiffness at each frequency, N m/rad")         \
  VALUE(X, std::string, CUSTOMDAMPINGFILE, {}, "file of the table over frequency")
// clang-format on

VERENWICK_TABLE(VISCOUSDAMPER, VISCOUSDAMPER_FIELDS)
VERENWICK_TABLE_ID(VISCOUSDAMPER, IVISCOUSDAMPER)

}  // namespace verenwick
