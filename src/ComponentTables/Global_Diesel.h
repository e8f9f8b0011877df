#pragma once

#include <complex>
#include <string>

#include "ComponentTables/ComponentTable.h"
#include "Excitation/HarmonicData.h"

/// Diesel engines.
namespace verenwick {

/// Design limit: cylinder rows of an engine or pump.
inline constexpr std::int32_t kMaxCylinders = 20;
/// Design limit: harmonic orders of an engine or pump.
inline constexpr std::int32_t kMaxOrders = 24;

/// Fourier coefficients of the tangential gas pressure of one cylinder row by order index, Pa.
struct CylinderGas {
  using Coefficients = std::array<std::complex<double>, kMaxOrders>;
  Coefficients NORMALGASFCBANKBANKA{};
  Coefficients MISFIRINGGASFCBANKBANKA{};
  Coefficients NORMALGASFCBANKB{};
  Coefficients MISFIRINGGASFCBANKB{};
};

// clang-format off
#define DIESEL_FIELDS(VALUE, ARRAY, LIST, X)                                                                  \
  VALUE(X, std::string, NAME, {}, "engine name, at most 20 characters")                                       \
  VALUE(X, std::int32_t, NSTROKE, 0, "strokes a cycle: 2, any other is four-stroke")                          \
  VALUE(X, double, RPMRATIO, 1.0, "speed relative to the reference speed")                                    \
  VALUE(X, double, MCRPOWER, 0.0, "power at maximum continuous rating, W")                                    \
  VALUE(X, double, MCRSPEED, 0.0, "speed at maximum continuous rating, rpm")                                  \
  VALUE(X, double, MCRTORQUE, 0.0, "torque at maximum continuous rating, N m")                                \
  VALUE(X, double, MIPLIMIT, 0.0, "limit of the mean indicated pressure, multiple of the rated one")          \
  VALUE(X, bool, ISVENGINE, false, "has banks A and B")                                                       \
  VALUE(X, double, VANGLE, 0.0, "bank angle, degrees")                                                        \
  VALUE(X, std::int32_t, VEEFIRINGTYPE, 0, "bank B fires 0 consecutively, 1 not, 2 either")                   \
  VALUE(X, bool, ISGENSET, false, "pressures come from the genset table")                                     \
  VALUE(X, std::int32_t, NLOADCASE, 0, "number of load cases")                                                \
  VALUE(X, std::int32_t, ILOADCASE, 0, "current load case")                                                   \
  VALUE(X, double, POWER, 0.0, "power in the load case, W")                                                   \
  VALUE(X, double, POWERPERCYL, 0.0, "power per firing cylinder in the load case, W")                         \
  VALUE(X, double, SPEED, 0.0, "speed in the load case, rpm")                                                 \
  VALUE(X, double, TORQUE, 0.0, "torque in the load case, N m")                                               \
  ARRAY(X, double, CYLPOWERA, kMaxCylinders, "power of each cylinder of bank A, W")                           \
  ARRAY(X, double, CYLPOWERB, kMaxCylinders, "power of each cylinder of bank B, W")                           \
  VALUE(X, double, LOADPERCENTAGE, 0.0, "torque over MCRTORQUE, fraction")                                    \
  VALUE(X, double, PMAXRPM, 0.0, "maximum cylinder pressure in the load case, Pa")                            \
  VALUE(X, double, PCHARGEAIRRPM, 0.0, "charge air pressure in the load case, Pa")                            \
  VALUE(X, double, PCOMPRPM, 0.0, "compression pressure in the load case, Pa")                                \
  VALUE(X, double, MIPRPM, 0.0, "mean indicated pressure in the load case, Pa")                               \
  VALUE(X, double, MEPRPM, 0.0, "mean effective pressure in the load case, Pa")                               \
  ARRAY(X, std::complex<double>, MASSFC, kMaxOrders, "oscillating mass factor by order index")                \
  LIST(X, CylinderGas, GASFCPERCYLINDER, "tangential gas pressure of each cylinder row, Pa")                  \
  VALUE(X, std::int32_t, NCYLINDER, 0, "cylinder rows; a V engine has two cylinders a row")                   \
  ARRAY(X, std::int32_t, CYLINDERS, kMaxCylinders, "id of the inertia of each row")                           \
  ARRAY(X, std::int32_t, FIRINGSTATUSA, kMaxCylinders, "firing status of bank A, 1 to 5")                     \
  ARRAY(X, std::int32_t, FIRINGSTATUSB, kMaxCylinders, "firing status of bank B, 1 to 5")                     \
  ARRAY(X, double, FIRINGPERCENTA, kMaxCylinders, "percent of normal power at status 5")                      \
  ARRAY(X, double, FIRINGPERCENTB, kMaxCylinders, "percent of normal power at status 5")                      \
  ARRAY(X, std::int32_t, FIRINGORDER, kMaxCylinders, "firing order numbers")                                  \
  ARRAY(X, double, FIRINGANGLEA, kMaxCylinders, "firing angle of bank A, rad")                                \
  ARRAY(X, double, FIRINGANGLEB, kMaxCylinders, "firing angle of bank B, rad")                                \
  VALUE(X, double, EXCITATIONPHASE, 0.0, "phase of the excitation, rad")                                      \
  VALUE(X, double, BORE, 0.0, "cylinder diameter, m")                                                         \
  VALUE(X, double, STROKE, 0.0, "piston stroke, m")                                                           \
  VALUE(X, double, CONRODRATIO, 0.0, "crank radius over rod length")                                          \
  VALUE(X, double, RECIPMASS, 0.0, "reciprocating mass a cylinder, kg")                                       \
  VALUE(X, double, ME, 0.0, "mechanical efficiency, fraction")                                                \
  VALUE(X, bool, ISTHEORETICALPRESURE, false, "gas forces from the pressure model, else from harmonic files") \
  VALUE(X, bool, HASPARTIALFIRING, false, "some cylinder has status 5")                                       \
  VALUE(X, std::string, NORMALHARMONICFILE, {}, "harmonic file of normal firing")                             \
  VALUE(X, std::string, MISHARMONICFILE, {}, "harmonic file of misfiring")                                    \
  VALUE(X, double, PMAX, 0.0, "rated maximum pressure, Pa")                                                   \
  VALUE(X, double, PCOMP, 0.0, "rated compression pressure, Pa")                                              \
  VALUE(X, double, COMPEXP, 0.0, "compression exponent")                                                      \
  VALUE(X, double, EXPAEXP, 0.0, "expansion exponent")                                                        \
  VALUE(X, double, COMPRATIO, 0.0, "compression ratio")                                                       \
  VALUE(X, double, PCHARGEAIR, 0.0, "rated charge air pressure, Pa")                                          \
  VALUE(X, double, TCHARGEAIR, 0.0, "charge air temperature, degrees Celsius")                                \
  VALUE(X, double, TE, 0.0, "fraction of heat release")                                                       \
  VALUE(X, double, FORMFACTOR, 0.0, "form factor of the combustion curve")                                    \
  VALUE(X, double, ANGLEIGNITION, 0.0, "ignition, degrees of crank")                                          \
  VALUE(X, double, ANGLEENDOFCOMB, 0.0, "end of combustion, degrees of crank")                                \
  VALUE(X, double, ANGLEEXHAUSTSTART, 0.0, "exhaust opens, degrees of crank")                                 \
  VALUE(X, double, ANGLEINLETSTART, 0.0, "inlet opens, degrees of crank")                                     \
  VALUE(X, double, ANGLEINLETCLOSE, 0.0, "inlet closes, degrees of crank")                                    \
  VALUE(X, HarmonicData, NORMAL, {}, "harmonic data of normal firing")                                        \
  VALUE(X, HarmonicData, MISFIRING, {}, "harmonic data of misfiring")                                         \
  VALUE(X, bool, ISFORMULADAMPING, false, "damping by the power laws below")                                  \
  VALUE(X, double, CYLABSDAMPING, 0.0, "coefficient of the cylinder damping")                                 \
  VALUE(X, double, EXPCYLABSDAMPING, 0.0, "exponent of the cylinder damping")                                 \
  VALUE(X, double, CRANKRELDAMPING, 0.0, "coefficient of the crank throw damping")                            \
  VALUE(X, double, EXPCRANKRELDAMPING, 0.0, "exponent of the crank throw damping")
// clang-format on

VERENWICK_TABLE(DIESEL, DIESEL_FIELDS)
VERENWICK_TABLE_ID(DIESEL, IDIESEL)

}  // namespace verenwick
