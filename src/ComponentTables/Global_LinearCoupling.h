#pragma once

#include "ComponentTables/FieldGroups.h"

/// Linear couplings: constant stiffness on one shaft.
namespace verenwick {

// clang-format off
#define LINEARCOUPLING_FIELDS(VALUE, ARRAY, LIST, X)                      \
  VALUE(X, std::int32_t, SHAFTNODE, 0, "id of the shaft that carries it") \
  VALUE(X, double, NOMINALTORQUE, 0.0, "nominal torque, N m")             \
  VALUE(X, double, NOMINALSTIFFNESS, 0.0, "stiffness, N m/rad")           \
  VERENWICK_ELASTIC_FIELDS(VALUE, X)
// clang-format on

VERENWICK_TABLE(LINEARCOUPLING, LINEARCOUPLING_FIELDS)
VERENWICK_TABLE_ID(LINEARCOUPLING, ILINEARCOUPLING)

/// First row on the shaft with this id, 0 if there is none.
std::int32_t GET_LINEARCOUPLING_ILINEARCOUPLING_SHAFTNODE(const LINEARCOUPLING_TABLE& table,
                                                          std::int32_t shaftId);

/// Stiffness at load, N m/rad: the nominal one.
double GET_LINEARCOUPLING_STIFFNESSDYNAMIC(const LINEARCOUPLING_TABLE& table, std::int32_t row);

/// Damping in N m s/rad at an order of the row's speed; 0 without a magnifier.
/// @param g dynamic magnifier of the shaft
/// @param q excitation order
double CALCULATE_LINEARCOUPLING_DAMPING(const LINEARCOUPLING_TABLE& table, std::int32_t row,
                                        double g, double q);

/// Sets STIFFNESS and DAMPING of the load case, the damping at the first order.
/// @param g dynamic magnifier of the shaft
void CALCULATE_LINEARCOUPLING_LOADCASESETTING(LINEARCOUPLING_TABLE& table, std::int32_t row,
                                              double g);

}  // namespace verenwick
