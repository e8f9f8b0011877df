#pragma once

#include "ComponentTables/FieldGroups.h"
#include "ComponentTables/TorqueOrders.h"

/// Electric motors.
namespace verenwick {

// clang-format off
#define ELECTRICMOTOR_FIELDS(VALUE, ARRAY, LIST, X)                                                   \
  VALUE(X, std::int32_t, ELECTRICMOTORNODE, 0, "id of the inertia it sits on")                        \
  VERENWICK_MACHINE_FIELDS(VALUE, X)                                                                  \
  VALUE(X, std::int32_t, EXCITATIONTYPE, 0, "0 excitation follows speed and torque, else constant")   \
  VALUE(X, double, CONSTEXCITATIONFREQ, 0.0, "speed of a constant excitation, rpm")                   \
  VALUE(X, std::int32_t, MOTORORDERNUMBER, 0, "orders in use, 0 to 4")                                \
  ARRAY(X, double, MOTORORDER, kTorqueOrders, "harmonic orders")                                      \
  ARRAY(X, double, MOTORTORQUEPERCENT, kTorqueOrders, "torque of each order, fraction of the torque") \
  ARRAY(X, double, MOTORTORQUEAMP, kTorqueOrders, "torque of each order in the load case, N m")
// clang-format on

VERENWICK_TABLE(ELECTRICMOTOR, ELECTRICMOTOR_FIELDS)
VERENWICK_TABLE_ID(ELECTRICMOTOR, IELECTRICMOTOR)

/// Torque that a constant excitation goes by, N m: MCRTORQUE; 0 if the excitation follows the load.
inline double GET_ELECTRICMOTOR_CONSTEXCITATIONTORQUE(const ELECTRICMOTOR_TABLE& table,
                                                      std::int32_t row) {
  return GET_ELECTRICMOTOR_EXCITATIONTYPE(table, row) != 0 ? GET_ELECTRICMOTOR_MCRTORQUE(table, row)
                                                           : 0.0;
}

/// Sets the torque of each order of the load case, from TORQUE or from the constant one.
inline void CALCULATE_ELECTRICMOTOR_LOADCASESETTING(ELECTRICMOTOR_TABLE& table, std::int32_t row) {
  ELECTRICMOTOR_RECORD& motor = table.at(row);
  const double torque = motor.EXCITATIONTYPE == 0
                            ? motor.TORQUE
                            : GET_ELECTRICMOTOR_CONSTEXCITATIONTORQUE(table, row);
  motor.MOTORTORQUEAMP = torqueAmplitudes(torque, motor.MOTORTORQUEPERCENT);
}

}  // namespace verenwick
