#pragma once

#include "ComponentTables/FieldGroups.h"

/// Progressive couplings: stiffness over the mean torque on one shaft.
namespace verenwick {

// clang-format off
#define PROGRESSIVECOUPLING_FIELDS(VALUE, ARRAY, LIST, X)                    \
  VALUE(X, std::int32_t, SHAFTNODE, 0, "id of the shaft that carries it")    \
  ARRAY(X, double, NOMINALTORQUE, 5, "torque of each point, ascending, N m") \
  ARRAY(X, double, NOMINALSTIFFNESS, 5, "stiffness at each torque, N m/rad") \
  VERENWICK_ELASTIC_FIELDS(VALUE, X)
// clang-format on

VERENWICK_TABLE(PROGRESSIVECOUPLING, PROGRESSIVECOUPLING_FIELDS)
VERENWICK_TABLE_ID(PROGRESSIVECOUPLING, IPROGRESSIVECOUPLING)

/// First row on the shaft with this id, 0 if there is none.
std::int32_t GET_PROGRESSIVECOUPLING_IPROGRESSIVECOUPLING_SHAFTNODE(
    const PROGRESSIVECOUPLING_TABLE& table, std::int32_t shaftId);

/// Stiffness in N m/rad at a mean torque: linear between the points, and beyond the first and the
/// last one along the line of the two nearest points.
/// @param torque mean torque, N m
double GET_PROGRESSIVECOUPLING_STIFFNESSDYNAMIC(const PROGRESSIVECOUPLING_TABLE& table,
                                                std::int32_t row, double torque);

/// Damping in N m s/rad at the row's torque and an order of its speed; 0 without a magnifier.
/// @param g dynamic magnifier of the shaft
/// @param q excitation order
double CALCULATE_PROGRESSIVECOUPLING_DAMPING(const PROGRESSIVECOUPLING_TABLE& table,
                                             std::int32_t row, double g, double q);

/// Sets STIFFNESS and DAMPING of the load case, the damping at the first order.
/// @param g dynamic magnifier of the shaft
void CALCULATE_PROGRESSIVECOUPLING_LOADCASESETTING(PROGRESSIVECOUPLING_TABLE& table,
                                                   std::int32_t row, double g);

}  // namespace verenwick
