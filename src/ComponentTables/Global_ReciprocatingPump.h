#pragma once

#include <complex>
#include <string>

#include "ComponentTables/ComponentTable.h"
#include "ComponentTables/Global_Diesel.h"
#include "Excitation/HarmonicData.h"

/// Reciprocating pumps.
namespace verenwick {

/// Fourier coefficients of the tangential pressure of one cylinder row by order index, Pa.
struct PumpCylinderGas {
  CylinderGas::Coefficients NORMALGASFCBANKA{};
  CylinderGas::Coefficients NORMALGASFCBANKB{};
};

// clang-format off
#define RECIPROCATINGPUMP_FIELDS(VALUE, ARRAY, LIST, X)                                                        \
  VALUE(X, std::string, NAME, {}, "pump name, at most 20 characters")                                          \
  VALUE(X, double, RPMRATIO, 1.0, "speed relative to the reference speed")                                     \
  VALUE(X, double, MCRPOWER, 0.0, "power at maximum continuous rating, W")                                     \
  VALUE(X, double, MCRSPEED, 0.0, "speed at maximum continuous rating, rpm")                                   \
  VALUE(X, double, MCRTORQUE, 0.0, "torque at maximum continuous rating, N m")                                 \
  VALUE(X, bool, ISDOUBLEACTING, false, "both sides of the piston work")                                       \
  VALUE(X, bool, ISOPPOSITE, false, "each row has an opposite cylinder")                                       \
  VALUE(X, double, VANGLE, 0.0, "angle between the cylinders of a row, degrees")                               \
  VALUE(X, std::int32_t, NLOADCASE, 0, "number of load cases")                                                 \
  VALUE(X, std::int32_t, ILOADCASE, 0, "current load case")                                                    \
  VALUE(X, double, POWER, 0.0, "power in the load case, W")                                                    \
  VALUE(X, double, POWERPERCYL, 0.0, "power per cylinder in the load case, W")                                 \
  VALUE(X, double, SPEED, 0.0, "speed in the load case, rpm")                                                  \
  VALUE(X, double, SPEEDPERCENTAGE, 0.0, "SPEED over MCRSPEED, fraction")                                      \
  VALUE(X, double, TORQUE, 0.0, "torque in the load case, N m")                                                \
  VALUE(X, double, LOADPERCENTAGE, 0.0, "TORQUE over MCRTORQUE, fraction")                                     \
  ARRAY(X, double, CYLPOWERA, kMaxCylinders, "power of each cylinder, W")                                      \
  ARRAY(X, double, CYLPOWERB, kMaxCylinders, "power of each opposite cylinder, W")                             \
  VALUE(X, double, MIPRPM, 0.0, "mean pressure in the load case, Pa")                                          \
  ARRAY(X, std::complex<double>, MASSFC, kMaxOrders, "oscillating mass factor by order index")                 \
  LIST(X, PumpCylinderGas, GASFCPERCYLINDER, "tangential pressure of each cylinder row, Pa")                   \
  VALUE(X, std::int32_t, NCYLINDER, 0, "cylinder rows")                                                        \
  ARRAY(X, std::int32_t, CYLINDERS, kMaxCylinders, "id of the inertia of each row")                            \
  ARRAY(X, std::int32_t, DISCHARGEORDER, kMaxCylinders, "discharge order numbers")                             \
  ARRAY(X, double, DISCHARGEANGLEA, kMaxCylinders, "discharge angle, rad")                                     \
  ARRAY(X, double, DISCHARGEANGLEB, kMaxCylinders, "discharge angle of the opposite cylinder, rad")            \
  VALUE(X, double, EXCITATIONPHASE, 0.0, "phase of the excitation, rad")                                       \
  VALUE(X, double, BORE, 0.0, "cylinder diameter, m")                                                          \
  VALUE(X, double, STROKELENGTH, 0.0, "piston stroke, m")                                                      \
  VALUE(X, double, CONRODRATIO, 0.0, "crank radius over rod length")                                           \
  VALUE(X, double, RECIPMASS, 0.0, "reciprocating mass, kg")                                                   \
  VALUE(X, bool, ISSIMPLIFIEDPRESSURE, false, "torque orders from the table below, else from a harmonic file") \
  VALUE(X, std::int32_t, RECIPROCATINGPUMPORDERNUMBER, 0, "orders in use, 0 to 4")                             \
  ARRAY(X, double, RECIPROCATINGPUMPORDER, 4, "harmonic orders")                                               \
  ARRAY(X, double, RECIPROCATINGPUMPTORQUEPERCENT, 4, "torque of each order, fraction of TORQUE")              \
  ARRAY(X, double, RECIPROCATINGPUMPTORQUEAMP, 4, "torque of each order in the load case, N m")                \
  ARRAY(X, double, SIMPLIFIEDORDER, kMaxOrders, "order of the table by order index")                           \
  ARRAY(X, std::complex<double>, TORQUEAMP, kMaxOrders, "torque coefficient of the table by order index, N m") \
  VALUE(X, std::string, PUMPHARMONICFILE, {}, "harmonic file")                                                 \
  VALUE(X, SharedHarmonicData, NORMAL, {}, "harmonic data")
// clang-format on

VERENWICK_TABLE(RECIPROCATINGPUMP, RECIPROCATINGPUMP_FIELDS)
VERENWICK_TABLE_ID(RECIPROCATINGPUMP, IRECIPROCATINGPUMP)

}  // namespace verenwick
