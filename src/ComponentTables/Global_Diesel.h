#pragma once

#include <complex>
#include <string>

#include "ComponentTables/CrankMachine.h"
#include "ComponentTables/FieldGroups.h"
#include "ComponentTables/Global_LoadCaseGenset.h"
#include "Excitation/HarmonicData.h"

/// Diesel engines.
namespace verenwick {

/// What a cylinder does. The input file may hold any other number, which fires nothing.
enum FiringStatus : std::int32_t {
  normalFiring = 1,
  onlyCompression = 2,
  exhaustValveOpen = 3,
  pistonRemoved = 4,
  partialFiring = 5
};

/// How bank B fires after bank A. Any other number is kept as either.
class VeeFiringType {
 public:
  enum Type : std::int32_t { consecutive = 0, nonConsecutive = 1, either = 2 };
  VeeFiringType(std::int32_t type = consecutive)
      : type_(type == consecutive || type == nonConsecutive ? type : either) {}
  operator std::int32_t() const { return type_; }

 private:
  std::int32_t type_;
};

/// Fourier coefficients of the tangential gas pressure of one cylinder row by order index, Pa.
struct CylinderGas {
  StoredCoefficients NORMALGASFCBANKBANKA{};
  StoredCoefficients MISFIRINGGASFCBANKBANKA{};
  StoredCoefficients NORMALGASFCBANKB{};
  StoredCoefficients MISFIRINGGASFCBANKB{};

  bool operator==(const CylinderGas&) const = default;
};

// clang-format off
#define DIESEL_FIELDS(VALUE, ARRAY, LIST, X)                                                                  \
  VALUE(X, std::string, NAME, {}, "engine name, at most 20 characters")                                       \
  VALUE(X, std::int32_t, NSTROKE, 0, "strokes a cycle: 2, any other is four-stroke")                          \
  VERENWICK_MACHINE_FIELDS(VALUE, X)                                                                          \
  VALUE(X, double, MIPLIMIT, 0.0, "limit of the mean indicated pressure, multiple of the rated one")          \
  VALUE(X, bool, ISVENGINE, false, "has banks A and B")                                                       \
  VALUE(X, double, VANGLE, 0.0, "bank angle, degrees")                                                        \
  VALUE(X, VeeFiringType, VEEFIRINGTYPE, {}, "bank B fires consecutively after bank A or not")                \
  VALUE(X, bool, ISGENSET, false, "pressures come from the genset table")                                     \
  VALUE(X, std::int32_t, NLOADCASE, 0, "number of load cases")                                                \
  VALUE(X, std::int32_t, ILOADCASE, 0, "current load case")                                                   \
  VALUE(X, double, POWERPERCYL, 0.0, "power per firing cylinder in the load case, W")                         \
  ARRAY(X, double, CYLPOWERA, kMaxCylinders, "power of each cylinder of bank A, W; no result goes by it")     \
  ARRAY(X, double, CYLPOWERB, kMaxCylinders, "power of each cylinder of bank B, W; no result goes by it")     \
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
  ARRAY(X, std::int32_t, FIRINGORDER, kMaxCylinders, "firing order numbers. Not part of a run.")              \
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
  VALUE(X, SharedHarmonicData, NORMAL, {}, "harmonic data of normal firing")                                  \
  VALUE(X, SharedHarmonicData, MISFIRING, {}, "harmonic data of misfiring")                                   \
  VALUE(X, bool, ISFORMULADAMPING, false, "damping by the power laws below")                                  \
  VALUE(X, double, CYLABSDAMPING, 0.0, "coefficient of the cylinder damping")                                 \
  VALUE(X, double, EXPCYLABSDAMPING, 0.0, "exponent of the cylinder damping")                                 \
  VALUE(X, double, CRANKRELDAMPING, 0.0, "coefficient of the crank throw damping")                            \
  VALUE(X, double, EXPCRANKRELDAMPING, 0.0, "exponent of the crank throw damping")
// clang-format on

VERENWICK_TABLE(DIESEL, DIESEL_FIELDS)
VERENWICK_TABLE_ID(DIESEL, IDIESEL)

// Lookups and counts

/// Position of the last engine that has an inertia among its cylinders; 0 if none has. Not part of
/// a run.
std::int32_t GET_DIESEL_IDIESEL_BASEDON_CYLINDERINDEX(const DIESEL_TABLE& table,
                                                      std::int32_t inertiaId);

/// Cylinder row of an inertia in an engine; 0 if it has none. Not part of a run.
std::int32_t GET_DIESEL_ICYLINDER(const DIESEL_TABLE& table, std::int32_t iDiesel,
                                  std::int32_t inertiaId);

/// Whether any engine has formula damping.
bool GET_DIESEL_CONTAINFORMULADAMPING(const DIESEL_TABLE& table);

/// Cylinders that fire, fully or partially.
std::int32_t GET_DIESEL_NFIRINGCYLINDER(const DIESEL_TABLE& table, std::int32_t iDiesel);

/// Factor on the power of the fully firing cylinders that makes up for the partially firing ones.
double GET_DIESEL_POWERCYLPERCENTINCREASED(const DIESEL_TABLE& table, std::int32_t iDiesel);

/// A value of a cylinder that fires as all others do, as partial firing of some changes it: its own
/// percent of the value, or more where it makes up for the others. The status of bank A decides for
/// both banks.
/// @param iCylinder cylinder row; 0 for the engine as a whole, which makes up for the others
double atFiringStatus(const DIESEL_TABLE& table, std::int32_t iDiesel, std::int32_t iCylinder,
                      bool isBankA, double value);

/// Harmonic orders of every engine: whole ones, or half ones as soon as one engine is four-stroke;
/// 0 without engines.
std::int32_t GET_DIESEL_NCYLFOURIERCOEFFICIENTS(const DIESEL_TABLE& table);

/// The orders by order index.
std::vector<double> GET_DIESEL_HARMONICORDER(const DIESEL_TABLE& table);

// Harmonic data files

/// Reads the harmonic files that the engines name; a blank name is passed over.
/// @param status set true before a file is opened, false where one can't be read, which ends the
///               reading; the log says why. Left as it is when no engine names a file.
void LOADHALDORINFILE(DIESEL_TABLE& table, bool& status);

/// Coefficients of the tangential pressure from the harmonic files, one an order row, Pa.
/// @param mip mean indicated pressure, Pa
std::vector<std::complex<double>> GETNORMALFIRINGHARMONICDATA(const DIESEL_TABLE& table,
                                                              std::int32_t iDiesel, double mip);
std::vector<std::complex<double>> GETMISFIRINGHARMONICDATA(const DIESEL_TABLE& table,
                                                           std::int32_t iDiesel, double mip);

// Operating point. No result is checked: a zero speed or rating gives infinities and not-a-numbers.

/// Sets TORQUE from POWER and SPEED.
void CALCULATE_DIESEL_TORQUE(DIESEL_TABLE& table, std::int32_t iDiesel);

/// Sets LOADPERCENTAGE from TORQUE and MCRTORQUE.
void CALCULATE_DIESEL_LOADPERCENTAGE(DIESEL_TABLE& table, std::int32_t iDiesel);

/// Largest cylinder power, W. Not part of a run.
double CALCULATE_DIESEL_NORMALCYLPOWER(const DIESEL_TABLE& table, std::int32_t iDiesel);

/// Rated mean effective pressure, Pa, the power shared by the firing cylinders or by all.
double CALCULATE_DIESEL_MEPMCR(const DIESEL_TABLE& table, std::int32_t iDiesel,
                               bool useFiringCount);

/// Sets the pressures of one cylinder at the operating point: MEPRPM and MIPRPM, and by the
/// pressure model also PCHARGEAIRRPM, PCOMPRPM and PMAXRPM.
/// @param iCylinder cylinder row; 0 for the engine as a whole
void CALCULATE_DIESEL_LOADCASESETTING(DIESEL_TABLE& table, std::int32_t iDiesel,
                                      const LOADCASEGENSET_TABLE& genset, std::int32_t iCylinder,
                                      bool isBankA);

/// Formula damping of a cylinder to ground and of a crank throw, N m s/rad; 0 for position 0 and
/// for an engine without.
/// @param speedFactor excitation order at which the damping is taken
double CALCULATE_DIESEL_DAMPING_CYLINDER(const DIESEL_TABLE& table, std::int32_t iDiesel,
                                         double speedFactor);
double CALCULATE_DIESEL_DAMPING_CRANKTHROW(const DIESEL_TABLE& table, std::int32_t iDiesel,
                                           double speedFactor);

// Excitation

/// Stores the pressure coefficients of one cylinder and the engine's mass factor at the operating
/// point. Not part of a run.
/// @param iCylinder cylinder row, 1 to NCYLINDER
void CALCULATE_DIESEL_FOURIERCOEFFICIENT(DIESEL_TABLE& table, std::int32_t iDiesel,
                                         const LOADCASEGENSET_TABLE& genset, std::int32_t iCylinder,
                                         bool isBankA);

/// The same for all cylinders of an engine, bank B after bank A in each row of a V engine. The mass
/// factor is computed once, and a pressure curve once for all cylinders that run at equal inputs;
/// the stored digits are those of the cylinders one by one.
void CALCULATE_DIESEL_FOURIERCOEFFICIENTS(DIESEL_TABLE& table, std::int32_t iDiesel,
                                          const LOADCASEGENSET_TABLE& genset);

/// Torque coefficients of one cylinder row by order index, N m, against the crank angle from top
/// dead centre of its bank A cylinder; bank B is contained with its shift. The torque is the sum of
/// 2 (Re cos - Im sin). Valid for the operating point at which the row's pressure coefficients
/// were stored.
std::vector<std::complex<double>> CALCULATE_DIESEL_CYLFOURIERCOEFFICIENTS(const DIESEL_TABLE& table,
                                                                          std::int32_t iDiesel,
                                                                          std::int32_t iCylinder);

}  // namespace verenwick
