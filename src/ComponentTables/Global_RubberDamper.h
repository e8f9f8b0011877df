#pragma once

#include "ComponentTables/ComponentTable.h"

/// Rubber dampers: a turning mass on a drive plate.
namespace verenwick {

// clang-format off
#define RUBBERDAMPER_FIELDS(VALUE, ARRAY, LIST, X)                         \
  VALUE(X, std::int32_t, TURNINGMASSNODE, 0, "id of the turning mass")     \
  VALUE(X, std::int32_t, DRIVEPLATENODE, 0, "id of the drive plate")       \
  VALUE(X, double, ABSDAMPING, 0.0, "fixed damping, N m s/rad")            \
  VALUE(X, double, RPMRATIO, 1.0, "speed relative to the reference speed") \
  VALUE(X, double, POWER, 0.0, "power in the load case, W")                \
  VALUE(X, double, SPEED, 0.0, "speed in the load case, rpm")              \
  VALUE(X, double, TORQUE, 0.0, "torque in the load case, N m")            \
  VALUE(X, double, STIFFNESS, 0.0, "stiffness in the load case, N m/rad")  \
  VALUE(X, double, DAMPING, 0.0, "damping in the load case, N m s/rad")
// clang-format on

VERENWICK_TABLE(RUBBERDAMPER, RUBBERDAMPER_FIELDS)
VERENWICK_TABLE_ID(RUBBERDAMPER, IRUBBERDAMPER)

}  // namespace verenwick
