#pragma once

#include "ComponentTables/ComponentTable.h"

// Fields that the lists of several kinds have in common.

/// What a load case puts on every component that has a column.
#define VERENWICK_OPERATING_FIELDS(VALUE, X)                               \
  VALUE(X, double, RPMRATIO, 1.0, "speed relative to the reference speed") \
  VALUE(X, double, POWER, 0.0, "power in the load case, W")                \
  VALUE(X, double, SPEED, 0.0, "speed in the load case, rpm")              \
  VALUE(X, double, TORQUE, 0.0, "torque in the load case, N m")

/// Of a machine: its rating and its operating point.
#define VERENWICK_MACHINE_FIELDS(VALUE, X)                                     \
  VALUE(X, double, MCRPOWER, 0.0, "power at maximum continuous rating, W")     \
  VALUE(X, double, MCRSPEED, 0.0, "speed at maximum continuous rating, rpm")   \
  VALUE(X, double, MCRTORQUE, 0.0, "torque at maximum continuous rating, N m") \
  VERENWICK_OPERATING_FIELDS(VALUE, X)

/// Of a damper or coupling: its operating point, and what the report of load case settings prints.
#define VERENWICK_ELASTIC_FIELDS(VALUE, X)                                \
  VERENWICK_OPERATING_FIELDS(VALUE, X)                                    \
  VALUE(X, double, STIFFNESS, 0.0, "stiffness in the load case, N m/rad") \
  VALUE(X, double, DAMPING, 0.0, "damping in the load case, N m s/rad")
