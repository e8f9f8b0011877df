#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// The one table of files in a result directory. The solver writes by it, readers read by it.
namespace verenwick::results {

/// What the points of a file are.
enum class Points { none, inertias, shafts };

/// Where a value stands in its file. All records are 8 bytes, one little-endian double each, and
/// count from 1. The numbers are made by the functions of RecordNumbers.h.
enum class Layout {
  text,             ///< a text file
  systemInfo,       ///< record = number of the count, see SystemCount
  mode,             ///< record = mode
  modePoint,        ///< recordOfModePoint
  engineModeOrder,  ///< recordOfEngineModeOrder
  family,           ///< recordOfFamilyElement: amplitude, angle, real, imaginary
  loadCase,         ///< recordOfLoadCasePoint
  marks,            ///< record = shaft
  angle             ///< recordOfAngleStep: 360 steps a point
};

/// The families of excitation sources, in the order in which a load case goes through them.
enum class Family {
  diesel,
  propeller,
  generator,
  centrifugalPump,
  reciprocatingPump,
  electricMotor
};
inline constexpr int kFamilies = 6;

/// What a file of a family holds.
enum class Quantity { deflection, velocity, acceleration, torque, stress, dampingTorque };
inline constexpr int kQuantities = 6;

constexpr Points pointsOf(Quantity quantity) {
  return quantity <= Quantity::acceleration ? Points::inertias : Points::shafts;
}

constexpr std::string_view unitOf(Quantity quantity) {
  constexpr std::array<std::string_view, kQuantities> units = {"rad", "rad/s", "rad/s2",
                                                               "N m", "Pa",    "N m"};
  return units[static_cast<std::size_t>(quantity)];
}

/// The step of a run that leaves the file.
enum class Step {
  run,    ///< run control, reading and reports, in every run mode
  free,   ///< free vibration
  forced  ///< forced vibration
};

/// What the model must hold for the file to be written.
enum class Needs {
  nothing,
  diesel,
  couplingOrDamper,
  ice,
  iceAndCouplingOrDamper,
  angleBased  ///< angle based results asked for, and a diesel
};

/// One file.
struct ResultFile {
  std::string_view name;
  Step step;
  Layout layout;
  Points points;
  Needs needs;
  std::string_view unit;  ///< unit of the value, of the amplitude for family files; SI, "1" if bare
  Family family;          ///< of family files
  Quantity quantity;      ///< of family files
  std::string_view holds;  ///< what an engineer finds in it
};

/// Builders of rows: each leaves out what its kind of file has no use for.
namespace rows {

constexpr ResultFile text(std::string_view name, Step step, Needs needs, std::string_view holds) {
  return {name, step, Layout::text, Points::none, needs, "", {}, {}, holds};
}

constexpr ResultFile free(std::string_view name, Layout layout, Points points, Needs needs,
                          std::string_view unit, std::string_view holds) {
  return {name, Step::free, layout, points, needs, unit, {}, {}, holds};
}

constexpr ResultFile family(std::string_view name, Family family, Quantity quantity,
                            std::string_view holds) {
  const Needs needs =
      quantity == Quantity::dampingTorque ? Needs::couplingOrDamper : Needs::nothing;
  return {name,   Step::forced, Layout::family, pointsOf(quantity), needs, unitOf(quantity),
          family, quantity,     holds};
}

constexpr ResultFile forced(std::string_view name, Layout layout, Quantity quantity, Needs needs,
                            std::string_view holds) {
  return {name, Step::forced, layout, pointsOf(quantity), needs, unitOf(quantity), {}, {}, holds};
}

constexpr ResultFile shafts(std::string_view name, Layout layout, Needs needs,
                            std::string_view unit, std::string_view holds) {
  return {name, Step::forced, layout, Points::shafts, needs, unit, {}, {}, holds};
}

}  // namespace rows

// clang-format off
/// All files of a result directory, in the order in which hosts know them.
inline constexpr std::array<ResultFile, 74> kResultFiles = {{
  {"SystemInfo.bin", Step::run, Layout::systemInfo, Points::none, Needs::nothing, "1", {}, {}, "sizes of the model"},
  rows::text("Overview.txt",        Step::run,    Needs::diesel,  "firing status of every cylinder"),
  rows::text("Verenwick.log",       Step::run,    Needs::nothing, "errors and warnings of the run"),
  rows::text("Genset.txt",          Step::run,    Needs::nothing, "genset pressures; read by the run, not written"),
  rows::text("LoadCaseSetting.txt", Step::forced, Needs::nothing, "settings of every component in every load case"),

  rows::free("NaturalFrequency.bin",   Layout::mode,            Points::none,     Needs::nothing, "rad/s",   "natural angular frequency"),
  rows::free("RelativeDeflection.bin", Layout::modePoint,       Points::inertias, Needs::nothing, "1",       "mode shape, 1 at the reference inertia"),
  rows::free("RelativeTorque.bin",     Layout::modePoint,       Points::shafts,   Needs::nothing, "N m/rad", "shaft torque of the mode shape"),
  rows::free("VectorSum.bin",          Layout::engineModeOrder, Points::none,     Needs::diesel,  "1",       "vector sum of the cylinders, 1 at the largest order of the mode"),
  rows::free("VectorSumRpm.bin",       Layout::engineModeOrder, Points::none,     Needs::diesel,  "rpm",     "speed at which the order meets the natural frequency"),
  rows::free("VectorSumAngle.bin",     Layout::engineModeOrder, Points::none,     Needs::diesel,  "rad",     "phase of the vector sum against the largest order of the mode"),

  rows::family("DieselDeflection.bin", Family::diesel, Quantity::deflection,   "angular deflection by a diesel"),
  rows::family("DieselVelocity.bin",   Family::diesel, Quantity::velocity,     "angular velocity by a diesel"),
  rows::family("DieselAccele.bin",     Family::diesel, Quantity::acceleration, "angular acceleration by a diesel"),
  rows::family("DieselTorque.bin",     Family::diesel, Quantity::torque,       "shaft torque by a diesel"),
  rows::family("DieselStress.bin",     Family::diesel, Quantity::stress,       "shaft stress by a diesel"),

  rows::family("PropellerDeflection.bin", Family::propeller, Quantity::deflection,   "angular deflection by a propeller"),
  rows::family("PropellerVelocity.bin",   Family::propeller, Quantity::velocity,     "angular velocity by a propeller"),
  rows::family("PropellerAccele.bin",     Family::propeller, Quantity::acceleration, "angular acceleration by a propeller"),
  rows::family("PropellerTorque.bin",     Family::propeller, Quantity::torque,       "shaft torque by a propeller"),
  rows::family("PropellerStress.bin",     Family::propeller, Quantity::stress,       "shaft stress by a propeller"),

  rows::forced("SynthesisDeflection.bin",   Layout::loadCase, Quantity::deflection,   Needs::nothing, "amplitude of the total deflection"),
  rows::forced("SynthesisTorque.bin",       Layout::loadCase, Quantity::torque,       Needs::nothing, "amplitude of the total vibratory torque"),
  rows::forced("SynthesisStress.bin",       Layout::loadCase, Quantity::stress,       Needs::nothing, "amplitude of the total vibratory stress"),
  rows::forced("NominalTorque.bin",         Layout::loadCase, Quantity::torque,       Needs::nothing, "mean torque of the transmitted power"),
  rows::forced("NominalStress.bin",         Layout::loadCase, Quantity::stress,       Needs::nothing, "mean stress of the transmitted power"),
  rows::forced("SynthesisVelocity.bin",     Layout::loadCase, Quantity::velocity,     Needs::nothing, "amplitude of the total velocity"),
  rows::forced("SynthesisAcceleration.bin", Layout::loadCase, Quantity::acceleration, Needs::nothing, "amplitude of the total acceleration"),
  rows::shafts("ShaftPowerLoss.bin",        Layout::loadCase, Needs::nothing, "W", "power dissipated in the shaft"),

  rows::family("GeneratorDeflection.bin", Family::generator, Quantity::deflection,   "angular deflection by a generator"),
  rows::family("GeneratorTorque.bin",     Family::generator, Quantity::torque,       "shaft torque by a generator"),
  rows::family("GeneratorStress.bin",     Family::generator, Quantity::stress,       "shaft stress by a generator"),
  rows::family("GeneratorVelocity.bin",   Family::generator, Quantity::velocity,     "angular velocity by a generator"),
  rows::family("GeneratorAccele.bin",     Family::generator, Quantity::acceleration, "angular acceleration by a generator"),

  rows::family("CentrifugalPumpDeflection.bin", Family::centrifugalPump, Quantity::deflection,   "angular deflection by a centrifugal pump"),
  rows::family("CentrifugalPumpTorque.bin",     Family::centrifugalPump, Quantity::torque,       "shaft torque by a centrifugal pump"),
  rows::family("CentrifugalPumpStress.bin",     Family::centrifugalPump, Quantity::stress,       "shaft stress by a centrifugal pump"),
  rows::family("CentrifugalPumpVelocity.bin",   Family::centrifugalPump, Quantity::velocity,     "angular velocity by a centrifugal pump"),
  rows::family("CentrifugalPumpAccele.bin",     Family::centrifugalPump, Quantity::acceleration, "angular acceleration by a centrifugal pump"),

  rows::family("ReciprocatingPumpDeflection.bin", Family::reciprocatingPump, Quantity::deflection,   "angular deflection by a reciprocating pump"),
  rows::family("ReciprocatingPumpTorque.bin",     Family::reciprocatingPump, Quantity::torque,       "shaft torque by a reciprocating pump"),
  rows::family("ReciprocatingPumpStress.bin",     Family::reciprocatingPump, Quantity::stress,       "shaft stress by a reciprocating pump"),
  rows::family("ReciprocatingPumpVelocity.bin",   Family::reciprocatingPump, Quantity::velocity,     "angular velocity by a reciprocating pump"),
  rows::family("ReciprocatingPumpAccele.bin",     Family::reciprocatingPump, Quantity::acceleration, "angular acceleration by a reciprocating pump"),

  rows::family("ElectricMotorDeflection.bin", Family::electricMotor, Quantity::deflection,   "angular deflection by an electric motor"),
  rows::family("ElectricMotorTorque.bin",     Family::electricMotor, Quantity::torque,       "shaft torque by an electric motor"),
  rows::family("ElectricMotorStress.bin",     Family::electricMotor, Quantity::stress,       "shaft stress by an electric motor"),
  rows::family("ElectricMotorVelocity.bin",   Family::electricMotor, Quantity::velocity,     "angular velocity by an electric motor"),
  rows::family("ElectricMotorAccele.bin",     Family::electricMotor, Quantity::acceleration, "angular acceleration by an electric motor"),

  rows::forced("SynPropIceDeflection.bin", Layout::loadCase, Quantity::deflection,   Needs::ice, "amplitude of the deflection by ice on the propeller"),
  rows::forced("SynPropIceVelocity.bin",   Layout::loadCase, Quantity::velocity,     Needs::ice, "amplitude of the velocity by ice on the propeller"),
  rows::forced("SynPropIceAccele.bin",     Layout::loadCase, Quantity::acceleration, Needs::ice, "amplitude of the acceleration by ice on the propeller"),
  rows::forced("SynPropIceTorque.bin",     Layout::loadCase, Quantity::torque,       Needs::ice, "amplitude of the torque by ice on the propeller"),
  rows::forced("SynPropIceStress.bin",     Layout::loadCase, Quantity::stress,       Needs::ice, "amplitude of the stress by ice on the propeller"),
  rows::shafts("PropellerShaftMarks.bin",  Layout::marks,    Needs::ice, "1", "1 on the propeller's line, 2 elsewhere, 0 without a single propeller"),

  rows::family("DieselDampingTorque.bin",            Family::diesel,            Quantity::dampingTorque, "damping torque by a diesel"),
  rows::family("PropellerDampingTorque.bin",         Family::propeller,         Quantity::dampingTorque, "damping torque by a propeller"),
  rows::family("GeneratorDampingTorque.bin",         Family::generator,         Quantity::dampingTorque, "damping torque by a generator"),
  rows::family("CentrifugalPumpDampingTorque.bin",   Family::centrifugalPump,   Quantity::dampingTorque, "damping torque by a centrifugal pump"),
  rows::family("ReciprocatingPumpDampingTorque.bin", Family::reciprocatingPump, Quantity::dampingTorque, "damping torque by a reciprocating pump"),
  rows::family("ElectricMotorDampingTorque.bin",     Family::electricMotor,     Quantity::dampingTorque, "damping torque by an electric motor"),

  rows::forced("SynthesisDampingTorque.bin",  Layout::loadCase, Quantity::dampingTorque, Needs::couplingOrDamper,       "amplitude of the total damping torque"),
  rows::forced("ResultantTorque.bin",         Layout::loadCase, Quantity::torque,        Needs::couplingOrDamper,       "amplitude of vibratory and damping torque together"),
  rows::forced("SynPropIceDampingTorque.bin", Layout::loadCase, Quantity::dampingTorque, Needs::iceAndCouplingOrDamper, "amplitude of the damping torque by ice on the propeller"),

  rows::forced("AngularDefAngleBasedDiesel.bin",  Layout::angle, Quantity::deflection,   Needs::angleBased, "deflection by the diesels over one period"),
  rows::forced("AngularVelAngleBasedDiesel.bin",  Layout::angle, Quantity::velocity,     Needs::angleBased, "velocity by the diesels over one period"),
  rows::forced("AngularAcceAngleBasedDiesel.bin", Layout::angle, Quantity::acceleration, Needs::angleBased, "acceleration by the diesels over one period"),
  rows::forced("TorqueAngleBasedDiesel.bin",      Layout::angle, Quantity::torque,       Needs::angleBased, "torque by the diesels over one period"),
  rows::forced("StressAngleBasedDiesel.bin",      Layout::angle, Quantity::stress,       Needs::angleBased, "stress by the diesels over one period"),

  rows::forced("AngularDefAngleBasedPropeller.bin",  Layout::angle, Quantity::deflection,   Needs::angleBased, "deflection by the propellers over one period"),
  rows::forced("AngularVelAngleBasedPropeller.bin",  Layout::angle, Quantity::velocity,     Needs::angleBased, "velocity by the propellers over one period"),
  rows::forced("AngularAcceAngleBasedPropeller.bin", Layout::angle, Quantity::acceleration, Needs::angleBased, "acceleration by the propellers over one period"),
  rows::forced("TorqueAngleBasedPropeller.bin",      Layout::angle, Quantity::torque,       Needs::angleBased, "torque by the propellers over one period"),
  rows::forced("StressAngleBasedPropeller.bin",      Layout::angle, Quantity::stress,       Needs::angleBased, "stress by the propellers over one period"),
}};
// clang-format on

/// The row of a file; null for a name that is no result file.
constexpr const ResultFile* findResultFile(std::string_view name) {
  for (const ResultFile& file : kResultFiles) {
    if (file.name == name) {
      return &file;
    }
  }
  return nullptr;
}

/// The row of a file whose name is known when compiling; an unknown name doesn't compile.
consteval const ResultFile& resultFile(std::string_view name) { return *findResultFile(name); }

/// The file of a family that holds a quantity.
constexpr const ResultFile& familyFile(Family family, Quantity quantity) {
  return *std::find_if(kResultFiles.begin(), kResultFiles.end(), [=](const ResultFile& file) {
    return file.layout == Layout::family && file.family == family && file.quantity == quantity;
  });
}

static_assert(
    [] {
      for (int f = 0; f < kFamilies; ++f) {
        for (int q = 0; q < kQuantities; ++q) {
          const ResultFile& file = familyFile(static_cast<Family>(f), static_cast<Quantity>(q));
          if (file.family != static_cast<Family>(f) || file.quantity != static_cast<Quantity>(q)) {
            return false;
          }
        }
      }
      return true;
    }(),
    "every family has a file for every quantity");

}  // namespace verenwick::results
