#pragma once

#include "ComponentTables/FieldGroups.h"
#include "ComponentTables/TorqueOrders.h"

/// Centrifugal pumps.
namespace verenwick {

// clang-format off
#define CENTRIFUGALPUMP_FIELDS(VALUE, ARRAY, LIST, X)                                                           \
  VALUE(X, std::int32_t, CENTRIFUGALPUMPNODE, 0, "id of the inertia it sits on")                                \
  VERENWICK_MACHINE_FIELDS(VALUE, X)                                                                            \
  VALUE(X, std::int32_t, CENTRIFUGALPUMPORDERNUMBER, 0, "orders in use, 0 to 4")                                \
  ARRAY(X, double, CENTRIFUGALPUMPORDER, kTorqueOrders, "harmonic orders")                                      \
  ARRAY(X, double, CENTRIFUGALPUMPTORQUEPERCENT, kTorqueOrders, "torque of each order, fraction of the torque") \
  ARRAY(X, double, CENTRIFUGALPUMPTORQUEAMP, kTorqueOrders, "torque of each order in the load case, N m")       \
  VALUE(X, double, CENTRIFUGALPUMPPHASEANGLE, 0.0, "phase of the excitation, rad")
// clang-format on

VERENWICK_TABLE(CENTRIFUGALPUMP, CENTRIFUGALPUMP_FIELDS)
VERENWICK_TABLE_ID(CENTRIFUGALPUMP, ICENTRIFUGALPUMP)

/// Sets the torque of each order of the load case from TORQUE.
inline void CALCULATE_CENTRIFUGALPUMP_LOADCASESETTING(CENTRIFUGALPUMP_TABLE& table,
                                                      std::int32_t row) {
  CENTRIFUGALPUMP_RECORD& pump = table.at(row);
  pump.CENTRIFUGALPUMPTORQUEAMP = torqueAmplitudes(pump.TORQUE, pump.CENTRIFUGALPUMPTORQUEPERCENT);
}

}  // namespace verenwick
