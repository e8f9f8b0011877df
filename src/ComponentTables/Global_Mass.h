#pragma once

#include "ComponentTables/ComponentTable.h"
#include "ComponentTables/ComponentType.h"

/// The inertias of the shaft line.
namespace verenwick {

// clang-format off
#define MASS_FIELDS(VALUE, ARRAY, LIST, X)                                                           \
  VALUE(X, MassType, MASSTYPE, MassType::plain, "what this inertia is")                              \
  VALUE(X, ComponentType, COMPONENTTYPE, ComponentType::plainInertia, "kind of the owning component")\
  VALUE(X, std::int32_t, COMPONENTID, 0, "id of the owning component, its own id if plain")          \
  VALUE(X, double, RPMRATIO, 1.0, "speed relative to the reference speed")                           \
  VALUE(X, double, INERTIA, 0.0, "moment of inertia as read, kg m2")                                 \
  VALUE(X, double, INERTIAEFFECTIVE, 0.0, "inertia in force for the load case, kg m2")               \
  VALUE(X, double, ABSDAMPING, 0.0, "absolute damping to ground, N m s/rad")                         \
  VALUE(X, double, DYNMAGNIFIER, 0.0, "dynamic magnifier; 0 lets ABSDAMPING act")                    \
  VALUE(X, double, SPEED, 0.0, "speed in the load case, rpm")
// clang-format on

VERENWICK_TABLE(MASS, MASS_FIELDS)
VERENWICK_TABLE_ID(MASS, IMASS)

/// Sum over all inertias of RPMRATIO squared times INERTIA, kg m2.
double GET_MASS_INERTIAEQUIVALENTTOTAL(const MASS_TABLE& table);

/// Number of inertias that aren't rings of viscous dampers.
std::int32_t GET_MASS_NUMBERNONEVISCOUSDAMPERRINGMASS(const MASS_TABLE& table);

/// The same count over positions 1 to position, both included: the degree of freedom of that
/// inertia in the free problem.
std::int32_t GET_MASS_NNOTVISCOUSDAMPERRINGMASS(const MASS_TABLE& table, std::int32_t position);

/// The same count up to and including the first inertia with this id. An id that isn't in the
/// table counts all of them.
std::int32_t GET_MASS_NNOTVISCOUSDAMPERRINGSHAFT(const MASS_TABLE& table, std::int32_t id);

}  // namespace verenwick
