#pragma once

#include "ComponentTables/FieldGroups.h"
#include "ComponentTables/TorqueOrders.h"

/// Generators.
namespace verenwick {

// clang-format off
#define GENERATOR_FIELDS(VALUE, ARRAY, LIST, X)                                                           \
  VALUE(X, std::int32_t, GENERATORNODE, 0, "id of the inertia it sits on")                                \
  VERENWICK_MACHINE_FIELDS(VALUE, X)                                                                      \
  VALUE(X, std::int32_t, GENERATORORDERNUMBER, 0, "orders in use, 0 to 4")                                \
  ARRAY(X, double, GENERATORORDER, kTorqueOrders, "harmonic orders")                                      \
  ARRAY(X, double, GENERATORTORQUEPERCENT, kTorqueOrders, "torque of each order, fraction of the torque") \
  ARRAY(X, double, GENTORQUEAMP, kTorqueOrders, "torque of each order in the load case, N m")
// clang-format on

VERENWICK_TABLE(GENERATOR, GENERATOR_FIELDS)
VERENWICK_TABLE_ID(GENERATOR, IGENERATOR)

/// Sets the torque of each order of the load case from TORQUE.
inline void CALCULATE_GENERATOR_LOADCASESETTING(GENERATOR_TABLE& table, std::int32_t row) {
  GENERATOR_RECORD& generator = table.at(row);
  generator.GENTORQUEAMP = torqueAmplitudes(generator.TORQUE, generator.GENERATORTORQUEPERCENT);
}

}  // namespace verenwick
