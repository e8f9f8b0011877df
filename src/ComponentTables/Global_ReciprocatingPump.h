#pragma once

#include <complex>
#include <string>

#include "ComponentTables/CrankMachine.h"
#include "ComponentTables/FieldGroups.h"
#include "ComponentTables/TorqueOrders.h"
#include "Excitation/HarmonicData.h"

/// Reciprocating pumps.
namespace verenwick {

/// Fourier coefficients of the tangential pressure of one cylinder row by order index, Pa.
struct PumpCylinderGas {
  StoredCoefficients NORMALGASFCBANKA{};
  StoredCoefficients NORMALGASFCBANKB{};
};

// clang-format off
#define RECIPROCATINGPUMP_FIELDS(VALUE, ARRAY, LIST, X)                                                                    \
  VALUE(X, std::string, NAME, {}, "pump name, at most 20 characters")                                                      \
  VERENWICK_MACHINE_FIELDS(VALUE, X)                                                                                       \
  VALUE(X, bool, ISDOUBLEACTING, false, "both sides of the piston work")                                                   \
  VALUE(X, bool, ISOPPOSITE, false, "each row has an opposite cylinder")                                                   \
  VALUE(X, double, VANGLE, 0.0, "angle between the cylinders of a row, degrees")                                           \
  VALUE(X, std::int32_t, NLOADCASE, 0, "number of load cases")                                                             \
  VALUE(X, std::int32_t, ILOADCASE, 0, "current load case")                                                                \
  VALUE(X, double, POWERPERCYL, 0.0, "power per cylinder in the load case, W")                                             \
  VALUE(X, double, SPEEDPERCENTAGE, 0.0, "SPEED over MCRSPEED, fraction")                                                  \
  VALUE(X, double, LOADPERCENTAGE, 0.0, "TORQUE over MCRTORQUE, fraction")                                                 \
  ARRAY(X, double, CYLPOWERA, kMaxCylinders, "power of each cylinder, W; no result goes by it")                            \
  ARRAY(X, double, CYLPOWERB, kMaxCylinders, "power of each opposite cylinder, W; no result goes by it")                   \
  VALUE(X, double, MIPRPM, 0.0, "mean pressure in the load case, Pa; no result goes by it")                                \
  ARRAY(X, std::complex<double>, MASSFC, kMaxOrders, "oscillating mass factor by order index")                             \
  LIST(X, PumpCylinderGas, GASFCPERCYLINDER, "tangential pressure of each cylinder row, Pa")                               \
  VALUE(X, std::int32_t, NCYLINDER, 0, "cylinder rows")                                                                    \
  ARRAY(X, std::int32_t, CYLINDERS, kMaxCylinders, "id of the inertia of each row")                                        \
  ARRAY(X, std::int32_t, DISCHARGEORDER, kMaxCylinders, "discharge order numbers. Not part of a run.")                     \
  ARRAY(X, double, DISCHARGEANGLEA, kMaxCylinders, "discharge angle, rad")                                                 \
  ARRAY(X, double, DISCHARGEANGLEB, kMaxCylinders, "of the opposite cylinder, rad; VANGLE stands for it")                  \
  VALUE(X, double, EXCITATIONPHASE, 0.0, "phase of the excitation, rad")                                                   \
  VALUE(X, double, BORE, 0.0, "cylinder diameter, m")                                                                      \
  VALUE(X, double, STROKELENGTH, 0.0, "piston stroke, m")                                                                  \
  VALUE(X, double, CONRODRATIO, 0.0, "crank radius over rod length")                                                       \
  VALUE(X, double, RECIPMASS, 0.0, "reciprocating mass, kg")                                                               \
  VALUE(X, bool, ISSIMPLIFIEDPRESSURE, false, "torque orders from the table below, else from a harmonic file")             \
  VALUE(X, std::int32_t, RECIPROCATINGPUMPORDERNUMBER, 0, "orders in use, 0 to 4")                                         \
  ARRAY(X, double, RECIPROCATINGPUMPORDER, kTorqueOrders, "harmonic orders")                                               \
  ARRAY(X, double, RECIPROCATINGPUMPTORQUEPERCENT, kTorqueOrders, "torque of each order, fraction of TORQUE")              \
  ARRAY(X, double, RECIPROCATINGPUMPTORQUEAMP, kTorqueOrders, "torque of each order in the load case, N m; see TORQUEAMP") \
  ARRAY(X, double, SIMPLIFIEDORDER, kMaxOrders, "order of the table by order index; no result goes by it")                 \
  ARRAY(X, std::complex<double>, TORQUEAMP, kMaxOrders, "torque coefficient of the table by order index, N m")             \
  VALUE(X, std::string, PUMPHARMONICFILE, {}, "harmonic file")                                                             \
  VALUE(X, SharedHarmonicData, NORMAL, {}, "harmonic data")
// clang-format on

VERENWICK_TABLE(RECIPROCATINGPUMP, RECIPROCATINGPUMP_FIELDS)
VERENWICK_TABLE_ID(RECIPROCATINGPUMP, IRECIPROCATINGPUMP)

/// Harmonic orders of every pump, 1 to 20 whatever the engines do; 0 without pumps.
std::int32_t GET_RECIPROCATINGPUMP_NCYLFOURIERCOEFFICIENTS(const RECIPROCATINGPUMP_TABLE& table);

/// The orders by order index.
std::vector<double> GET_RECIPROCATINGPUMP_HARMONICORDER(const RECIPROCATINGPUMP_TABLE& table,
                                                        std::int32_t iPump);

/// Cylinder row of an inertia in a pump; 0 if it has none. Not part of a run.
std::int32_t GET_RECIPROCATINGPUMP_ICYLINDER(const RECIPROCATINGPUMP_TABLE& table,
                                             std::int32_t iPump, std::int32_t inertiaId);

// Harmonic data files

/// Reads the harmonic files that the pumps name; a blank name is passed over.
/// @param status set true before a file is opened, false where one can't be read, which ends the
///               reading; the log says why. Left as it is when no pump names a file.
void LOADHALDORINPUMPFILE(RECIPROCATINGPUMP_TABLE& table, bool& status);

/// Coefficients of the tangential pressure from the harmonic file, one an order row, Pa.
std::vector<std::complex<double>> GETRECIPROCATINGPUMPHARMONICDATA(
    const RECIPROCATINGPUMP_TABLE& table, std::int32_t iPump, double speedPercentage);

// Operating point. No result is checked: a zero speed or rating gives infinities and not-a-numbers.

/// Sets SPEEDPERCENTAGE from SPEED and MCRSPEED.
void CALCULATE_RECIPROCATINGPUMP_SPEEDPERCENTAGE(RECIPROCATINGPUMP_TABLE& table,
                                                 std::int32_t iPump);

/// Sets TORQUE from POWER and SPEED.
void CALCULATE_RECIPROCATINGPUMP_TORQUE(RECIPROCATINGPUMP_TABLE& table, std::int32_t iPump);

/// Sets LOADPERCENTAGE from TORQUE and MCRTORQUE.
void CALCULATE_RECIPROCATINGPUMP_LOADPERCENTAGE(RECIPROCATINGPUMP_TABLE& table, std::int32_t iPump);

/// Rated mean pressure of a working side of a piston, Pa. Every revolution is a working cycle. Not
/// part of a run.
double CALCULATE_RECIPROCATINGPUMP_MEPMCR(const RECIPROCATINGPUMP_TABLE& table, std::int32_t iPump);

/// Sets MIPRPM, and from a table of torque orders the torque and the coefficient of each.
/// @param iCylinder cylinder row, 0 for the pump as a whole; all rows work alike
void CALCULATE_RECIPROCATINGPUMP_LOADCASESETTING(RECIPROCATINGPUMP_TABLE& table, std::int32_t iPump,
                                                 std::int32_t iCylinder);

/// Whether an order of the table of torques has an order index, its integer part.
bool isPumpOrder(double order);

// Excitation

/// Stores the pressure coefficients of one cylinder and the pump's mass factor at the operating
/// point; from a table of torque orders the torque coefficients instead of the pressure.
/// @param iCylinder cylinder row, 1 to NCYLINDER
/// @param isBankA   false for the opposite cylinder of the row
void CALCULATE_RECIPROCATINGPUMP_FOURIERCOEFFICIENT(RECIPROCATINGPUMP_TABLE& table,
                                                    std::int32_t iPump, std::int32_t iCylinder,
                                                    bool isBankA);

/// Torque coefficients of one cylinder row by order index, N m, against the crank angle from top
/// dead centre of its first cylinder; the opposite cylinder and the other side of a double-acting
/// piston are contained with their shift. The torque is the sum of 2 (Re cos - Im sin).
std::vector<std::complex<double>> CALCULATE_RECIPROCATINGPUMP_CYLFOURIERCOEFFICIENTS(
    const RECIPROCATINGPUMP_TABLE& table, std::int32_t iPump, std::int32_t iCylinder);

}  // namespace verenwick
