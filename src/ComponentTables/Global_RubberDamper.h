#pragma once

#include "ComponentTables/FieldGroups.h"

/// Rubber dampers: a turning mass on a drive plate.
namespace verenwick {

// clang-format off
#define RUBBERDAMPER_FIELDS(VALUE, ARRAY, LIST, X)                     \
  VALUE(X, std::int32_t, TURNINGMASSNODE, 0, "id of the turning mass") \
  VALUE(X, std::int32_t, DRIVEPLATENODE, 0, "id of the drive plate")   \
  VALUE(X, double, ABSDAMPING, 0.0, "fixed damping, N m s/rad")        \
  VERENWICK_ELASTIC_FIELDS(VALUE, X)
// clang-format on

VERENWICK_TABLE(RUBBERDAMPER, RUBBERDAMPER_FIELDS)
VERENWICK_TABLE_ID(RUBBERDAMPER, IRUBBERDAMPER)

/// First damper with this turning mass on this drive plate, in this order only; 0 if there is none.
/// Not part of a run.
std::int32_t GET_RUBBERDAMPER_IRUBBERDAMPER_NODE(const RUBBERDAMPER_TABLE& table,
                                                 std::int32_t turningMassNode,
                                                 std::int32_t drivePlateNode);

/// Damping at harmonic order q of the damper's speed, N m s/rad. Rubber loses the same share of its
/// energy in each cycle: with a magnifier the damping falls with the frequency. At q = 0 that is
/// infinite.
/// @param g dynamic magnifier of the damper's link; 0 gives ABSDAMPING
double CALCULATE_RUBBERDAMPER_DAMPING(const RUBBERDAMPER_TABLE& table, std::int32_t row, double g,
                                      double q);

/// Sets STIFFNESS and DAMPING of the load case.
/// @param stiffness of the damper's link, N m/rad
void CALCULATE_RUBBERDAMPER_LOADCASESETTING(RUBBERDAMPER_TABLE& table, std::int32_t row,
                                            double stiffness, double g, double q);

}  // namespace verenwick
