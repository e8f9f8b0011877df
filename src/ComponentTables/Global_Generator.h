#pragma once

#include "ComponentTables/ComponentTable.h"
#include "ComponentTables/TorqueOrders.h"

/// Generators.
namespace verenwick {

// clang-format off
#define GENERATOR_FIELDS(VALUE, ARRAY, LIST, X)                                                           \
  VALUE(X, std::int32_t, GENERATORNODE, 0, "id of the inertia it sits on")                                \
  VALUE(X, double, RPMRATIO, 1.0, "speed relative to the reference speed")                                \
  VALUE(X, double, MCRPOWER, 0.0, "power at maximum continuous rating, W")                                \
  VALUE(X, double, MCRSPEED, 0.0, "speed at maximum continuous rating, rpm")                              \
  VALUE(X, double, MCRTORQUE, 0.0, "torque at maximum continuous rating, N m")                            \
  VALUE(X, double, POWER, 0.0, "power in the load case, W")                                               \
  VALUE(X, double, SPEED, 0.0, "speed in the load case, rpm")                                             \
  VALUE(X, double, TORQUE, 0.0, "torque in the load case, N m")                                           \
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
