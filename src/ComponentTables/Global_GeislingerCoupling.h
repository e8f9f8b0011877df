#pragma once

#include "ComponentTables/FieldGroups.h"

/// Geislinger couplings: stiffness and damping over the excitation frequency on one shaft.
namespace verenwick {

/// DAMPINGTYPE, OILSUPPLYTYPE and DESIGNTYPE of a coupling. A record may hold any other number.
enum GeislingerDamping : std::int32_t { dampingByFormula = 1, dampingByMagnifier = 2 };
enum GeislingerOilSupply : std::int32_t { pressurizedOil = 1, oilWithoutPressure = 2 };
enum GeislingerDesign : std::int32_t { multiSpring = 1, dualSpring = 2 };

// clang-format off
#define GEISLINGERCOUPLING_FIELDS(VALUE, ARRAY, LIST, X)                                      \
  VALUE(X, std::int32_t, SHAFTNODE, 0, "id of the shaft that carries it")                     \
  VALUE(X, std::int32_t, DAMPINGTYPE, 0, "1 damping by the formulas, 2 by dynamic magnifier") \
  VALUE(X, std::int32_t, OILSUPPLYTYPE, 0, "1 pressurised oil, 2 without")                    \
  VALUE(X, std::int32_t, DESIGNTYPE, 0, "1 multi-spring, 2 dual spring")                      \
  VALUE(X, double, NOMINALTORQUE, 0.0, "nominal torque, N m")                                 \
  VALUE(X, double, STATICSTIFFNESS, 0.0, "static stiffness, N m/rad")                         \
  VALUE(X, double, CHARACTERISTICFREQUENCY, 0.0, "characteristic frequency as read")          \
  VALUE(X, double, OILVISCOSITY, 0.0, "oil viscosity as read")                                \
  VERENWICK_ELASTIC_FIELDS(VALUE, X)                                                          \
  VALUE(X, double, SPEEDEXCITATION, 0.0, "speed of the excitation in progress, rpm")
// clang-format on

VERENWICK_TABLE(GEISLINGERCOUPLING, GEISLINGERCOUPLING_FIELDS)
VERENWICK_TABLE_ID(GEISLINGERCOUPLING, IGEISLINGERCOUPLING)

/// First row on the shaft with this id, 0 if there is none.
std::int32_t GET_GEISLINGERCOUPLING_IGEISLINGERCOUPLING_SHAFTNODE(
    const GEISLINGERCOUPLING_TABLE& table, std::int32_t shaftId);

/// Stiffness in N m/rad at an order of SPEEDEXCITATION: the oil between the springs stiffens the
/// coupling with the frequency. The static stiffness at a frequency of 0 or below.
/// @param q excitation order
double CALCULATE_GEISLINGERCOUPLING_STIFFNESSDYNAMIC(const GEISLINGERCOUPLING_TABLE& table,
                                                     std::int32_t row, double q);

/// Damping in N m s/rad at an order of SPEEDEXCITATION, by the row's damping type: from the
/// relative damping of its oil supply and design, or from the magnifier. 0 for a type, supply or
/// design that isn't known, and without a magnifier where that is what counts.
/// @param g dynamic magnifier of the shaft
/// @param q excitation order
double CALCULATE_GEISLINGERCOUPLING_DAMPING(const GEISLINGERCOUPLING_TABLE& table, std::int32_t row,
                                            double g, double q);

/// Sets STIFFNESS and DAMPING of the load case.
/// @param g dynamic magnifier of the shaft
/// @param q excitation order
void CALCULATE_GEISLINGERCOUPLING_LOADCASESETTING(GEISLINGERCOUPLING_TABLE& table, std::int32_t row,
                                                  double g, double q);

}  // namespace verenwick
