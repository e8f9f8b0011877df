#pragma once

#include <string>

#include "ComponentTables/FieldGroups.h"
#include "RunControl/Constants.h"

/// Viscous dampers: a ring that a casing drags along.
namespace verenwick {

/// Stiffness of a damper's link, N m/rad, where the input file gives none: it holds the ring and
/// carries no torque that matters. Reports print it as 0.
constexpr double kNearlyFreeLink = single(1e-6F);

// clang-format off
#define VISCOUSDAMPER_FIELDS(VALUE, ARRAY, LIST, X)                                \
  VALUE(X, std::int32_t, CASINGNODE, 0, "id of the casing inertia")                \
  VALUE(X, std::int32_t, RINGNODE, 0, "id of the ring inertia")                    \
  VALUE(X, double, ABSDAMPING, 0.0, "fixed damping, N m s/rad")                    \
  VERENWICK_ELASTIC_FIELDS(VALUE, X)                                               \
  VALUE(X, bool, ISCUSTOMDAMPING, false, "damping from the table over frequency")  \
  VALUE(X, bool, ISCUSTOMSTIFFNESS, false, "stiffness from the table as well")     \
  LIST(X, double, FREQUENCIES, "frequency of each row, ascending, Hz")             \
  LIST(X, double, CUSTOMDAMPING, "damping at each frequency, N m s/rad")           \
  LIST(X, double, CUSTOMSTIFFNESS, "stiffness at each frequency, N m/rad")         \
  VALUE(X, std::string, CUSTOMDAMPINGFILE, {}, "file of the table over frequency")
// clang-format on

VERENWICK_TABLE(VISCOUSDAMPER, VISCOUSDAMPER_FIELDS)
VERENWICK_TABLE_ID(VISCOUSDAMPER, IVISCOUSDAMPER)

/// Rows of the table over frequency.
inline std::int32_t GET_VISCOUSDAMPER_NFREQUENCY(const VISCOUSDAMPER_TABLE& table,
                                                 std::int32_t row) {
  return static_cast<std::int32_t>(table.at(row).FREQUENCIES.size());
}

/// First damper whose ring and casing are these two inertias, whichever way round; 0 if none is.
/// Not part of a run.
std::int32_t GET_VISCOUSDAMPER_IVISCOUSDAMPER_NODE(const VISCOUSDAMPER_TABLE& table,
                                                   std::int32_t nodeA, std::int32_t nodeB);

/// Whether any damper takes its damping from a table over frequency.
bool GET_VISCOUSDAMPER_CONTAINCUSTOMDAMPING(const VISCOUSDAMPER_TABLE& table);

/// Reads the damping tables that the dampers name, all in one call; a blank name is passed over. A
/// file is a heading line and one line a frequency: frequency in Hz, damping in N m s/rad, and
/// stiffness in N m/rad where the heading has not exactly two words.
/// @returns false at the first line that can't be read, a blank one between the rows included; the
///          log names it, and the dampers behind are left unread
[[nodiscard]] bool LOADCUSTOMDAMPINGFILE(VISCOUSDAMPER_TABLE& table);

/// Damping at harmonic order q of the damper's speed, N m s/rad: on a straight line between two
/// rows of its table, and beyond the table on the line of the outermost two. A table without rows
/// gives ABSDAMPING.
double CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(const VISCOUSDAMPER_TABLE& table, std::int32_t row,
                                             double q);

/// Stiffness in the same way, N m/rad; a table without rows gives 0.
double CALCULATE_VISCOUSDAMPER_CUSTOMSTIFFNESS(const VISCOUSDAMPER_TABLE& table, std::int32_t row,
                                               double q);

/// Sets STIFFNESS and DAMPING of the load case.
/// @param stiffness of the damper's link, N m/rad
void CALCULATE_VISCOUSDAMPER_LOADCASESETTING(VISCOUSDAMPER_TABLE& table, std::int32_t row,
                                             double stiffness);

}  // namespace verenwick
