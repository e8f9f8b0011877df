#pragma once

#include <complex>
#include <string>

#include "ComponentTables/FieldGroups.h"
#include "RunControl/CalculationMode.h"

/// Propellers.
namespace verenwick {

// clang-format off
#define PROPELLER_FIELDS(VALUE, ARRAY, LIST, X)                                                                   \
  VALUE(X, std::int32_t, PROPELLERNODE, 0, "id of the inertia it sits on")                                        \
  VERENWICK_MACHINE_FIELDS(VALUE, X)                                                                              \
  VALUE(X, double, BLADEFREQUENCY, 0.0, "SPEED times NBLADE, 1/min")                                              \
  VALUE(X, double, DAMPING, 0.0, "damping for reports, N m s/rad")                                                \
  VALUE(X, double, TORQUEAMP1, 0.0, "excitation torque at blade order, N m")                                      \
  VALUE(X, double, TORQUEAMP2, 0.0, "excitation torque at twice the blade order, N m")                            \
  VALUE(X, std::int32_t, NBLADE, 0, "number of blades")                                                           \
  VALUE(X, double, DB, 0.0, "boss diameter, m")                                                                   \
  VALUE(X, double, DI, 0.0, "propeller diameter, m")                                                              \
  VALUE(X, double, PITCHRATIO, 0.0, "pitch ratio")                                                                \
  VALUE(X, double, EXPAREARATIO, 0.0, "expanded area ratio")                                                      \
  VALUE(X, double, INERTIAAIR, 0.0, "inertia in air, kg m2")                                                      \
  VALUE(X, double, INERTIAWATER, 0.0, "inertia of the entrained water, kg m2")                                    \
  VALUE(X, double, INERTIATOTAL, 0.0, "inertia in force, kg m2")                                                  \
  VALUE(X, std::int32_t, DAMPINGMETHOD, 0, "1 Schwanecke, 2 Archer, 3 Frahm, 4 manual, 5 variable magnifier")     \
  VALUE(X, double, ARCHERNUMBER, 0.0, "Archer's number")                                                          \
  VALUE(X, double, FRAHMNUMBER, 0.0, "Frahm's number")                                                            \
  VALUE(X, double, KNUCKLEPOINT, 0.0, "knuckle point, percent of MCRSPEED")                                       \
  VALUE(X, bool, ISDUCTED, false, "ducted propeller")                                                             \
  VALUE(X, bool, ISFIXEDPITCH, false, "fixed pitch")                                                              \
  VALUE(X, double, PITCHPERCENT, 0.0, "pitch setting, fraction")                                                  \
  VALUE(X, double, DYNMAGNIFIER, 0.0, "dynamic magnifier")                                                        \
  VALUE(X, double, DYNMAGNIFIERFORKNUCKLEPOINT, 0.0, "dynamic magnifier at the knuckle point")                    \
  VALUE(X, double, ABSDAMPING, 0.0, "damping in the load case, N m s/rad")                                        \
  VALUE(X, double, TORQUEPERCENT1, 0.0, "torque at blade order, fraction of TORQUE")                              \
  VALUE(X, double, TORQUEPERCENT2, 0.0, "torque at twice the blade order, fraction of TORQUE")                    \
  VALUE(X, double, EXCITATIONPHASE, 0.0, "excitation phase, rad")                                                 \
  VALUE(X, bool, CONSIDERPHASEANGLE, false, "use the phase of this propeller")                                    \
  VALUE(X, bool, HASICEEXCITATION, false, "has ice excitation")                                                   \
  VALUE(X, bool, ISTMAXCORRECTEDWITHACTUALSPEED, false, "below the first speed ratio, scale with speed")          \
  VALUE(X, std::string, EXCITATIONFILE, {}, "ice excitation file")                                                \
  ARRAY(X, double, SPEEDRATIO, 10, "speed ratios of the ice table, ascending")                                    \
  VALUE(X, std::int32_t, NSPEEDRATIO, 0, "speed ratios in the ice file, at most 10")                              \
  LIST(X, double, ICEHARMONICORDER, "harmonic order of each line of the ice table")                               \
  LIST(X, double, ICECOSINE, "element (o-1) NSPEEDRATIO + s: cosine of line o at ratio s, N m")                   \
  LIST(X, double, ICESINE, "the same for the sine; line 1 stays zero, N m")                                       \
  LIST(X, std::complex<double>, ICEFOURIERCOEFFICIENT, "cosine and sine of line o + 1 at the current speed, N m") \
  VALUE(X, double, ICEZEROORDERCOEFFICIENT, 0.0, "mean term at the current speed, N m")                           \
  VALUE(X, bool, ISVARIABLEENTRAINEDWATER, false, "entrained water varies by load case")                          \
  VALUE(X, std::string, VARIABLEENTRAINEDWATERFILE, {}, "file with one inertia a load case")                      \
  LIST(X, double, VARIABLEENTRAINEDWATERTABLE, "entrained water by load case, kg m2")                             \
  VALUE(X, std::int32_t, NLOADCASE, 0, "number of load cases")
// clang-format on

VERENWICK_TABLE(PROPELLER, PROPELLER_FIELDS)
VERENWICK_TABLE_ID(PROPELLER, IPROPELLER)

/// How a propeller's damping is found, DAMPINGMETHOD.
enum class PropellerDamping : std::int32_t {
  schwanecke = 1,
  archer = 2,
  frahm = 3,
  manual = 4,   ///< by the dynamic magnifier
  variable = 5  ///< by the magnifier of the knuckle point, growing below it
};

/// Sets INERTIATOTAL: the inertia in air and that of the entrained water, which in the forced
/// problem may go with the load case.
void CALCULATE_PROPELLER_INERTIATOTAL(Vibration vibration, PROPELLER_TABLE& table, std::int32_t row,
                                      std::int32_t loadCase);

/// Entrained water of a load case by the row's table, kg m2. A load case beyond NLOADCASE takes
/// INERTIAWATER, and a line goes to the log.
double CALCULATE_PROPELLER_CURRENTINERTIAWATER(const PROPELLER_TABLE& table, std::int32_t row,
                                               std::int32_t loadCase);

/// Estimates INERTIAWATER in kg m2 from the geometry where it is missing; does nothing where it is
/// given or the geometry is incomplete. Not part of a run.
void CALCULATE_PROPELLER_INERTIAWATER(PROPELLER_TABLE& table, std::int32_t row);

/// Sets ABSDAMPING in N m s/rad by the row's method at its SPEED and TORQUE, and returns it; 0 for
/// an unknown method.
double CALCULATE_PROPELLER_ABSDAMPING(PROPELLER_TABLE& table, std::int32_t row);

/// Damping in N m s/rad by one method at the row's SPEED and TORQUE. The manual and the variable
/// method take the inertia in air and in plain water, whatever the load case; the variable one also
/// sets DYNMAGNIFIER. Without their magnifier both give 0.
double CALCULATE_PROPELLER_SCHWANECHEDAMPING(const PROPELLER_TABLE& table, std::int32_t row);
double CALCULATE_PROPELLER_ARCHERDAMPING(const PROPELLER_TABLE& table, std::int32_t row);
double CALCULATE_PROPELLER_FRAHMDAMPING(const PROPELLER_TABLE& table, std::int32_t row);
double CALCULATE_PROPELLER_MANUALDAMPING(const PROPELLER_TABLE& table, std::int32_t row);
double CALCULATE_PROPELLER_VARIABLEDAMPING(PROPELLER_TABLE& table, std::int32_t row);

/// Sets damping, blade frequency and blade order torques from POWER, SPEED and TORQUE.
void CALCULATE_PROPELLER_LOADCASESETTING(PROPELLER_TABLE& table, std::int32_t row);

/// SPEED over MCRSPEED.
double CALCULATE_SPEEDRATIO(const PROPELLER_TABLE& table, std::int32_t row);

/// Lines of the ice table of a propeller: the mean term, then four harmonics a blade.
std::int32_t GET_PROPELLER_NICEFOURIERORDERS(const PROPELLER_TABLE& table, std::int32_t row);

/// Number of ice harmonics of the model, those of the first propeller in ice; 0 without one.
std::int32_t GET_PROPELLERICEHARMONICORDERNUMBER(const PROPELLER_TABLE& table);

/// Whether the model has ice excitation at all.
bool hasIceExcitation(const PROPELLER_TABLE& table);

/// Whether any propeller wants its phase considered; ice excitation in the model forbids it.
bool GET_PROPELLER_ISMODELCONSIDERPHASEANGLE(const PROPELLER_TABLE& table);

/// Sets ICEZEROORDERCOEFFICIENT and ICEFOURIERCOEFFICIENT at the row's SPEED from the ice table:
/// linear between its speed ratios, along the last two above them. Below the first one the first
/// column holds, or where that is asked for a line to the origin.
void CALCULATE_PROPELLER_FOURIERCOEFFICIENT(PROPELLER_TABLE& table, std::int32_t row);

/// Ice harmonic of an order from 1 at the current speed, N m; zero for an order that the row's ice
/// table doesn't hold.
std::complex<double> iceHarmonic(const PROPELLER_TABLE& table, std::int32_t row,
                                 std::int32_t order);

}  // namespace verenwick
