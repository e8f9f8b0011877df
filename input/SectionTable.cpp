#include "input/SectionTable.h"

#include <algorithm>
#include <array>

#include "input/LineRules.h"

namespace verenwick::input {
namespace {

using enum Type;
using Is = When::Is;

constexpr double kPi = 3.141592653589793;

constexpr Unit kBare{};
constexpr Unit kMillimetre{"mm", 1.0, 1000.0};
constexpr Unit kKilowatt{"kW", 1000.0};
constexpr Unit kBar{"bar", 100000.0};
constexpr Unit kPercent{"%", 1.0, 100.0};
constexpr Unit kDegree{"degrees", kPi, 180.0};
/// Percents and degrees that the calculation takes as they are.
constexpr Unit kPlainPercent{"%"};
constexpr Unit kPlainDegree{"degrees"};
constexpr Unit kRpm{"rpm"};
constexpr Unit kRadPerSecond{"rad/s"};
constexpr Unit kKilogram{"kg"};
constexpr Unit kCelsius{"°C"};
constexpr Unit kInertia{"kg m²"};
constexpr Unit kStiffness{"N m/rad"};
constexpr Unit kDamping{"N m s/rad"};
constexpr Unit kTorque{"N m"};

constexpr Repeat kFourPlaces{kOrderPlaces};
constexpr Repeat kEachCylinder{kMostCylinders, "nCylinder"};
constexpr Repeat kEachPumpCylinder{kMostCylinders, "nPumpCylinder"};

constexpr Field id(std::string_view meaning) { return {"Id", integer, meaning}; }

constexpr Field name() {
  return {.name = "Name", .type = word, .meaning = "at most 20 characters", .length = kNameLength};
}

constexpr Field path(std::string_view name, Type type, std::string_view meaning) {
  return {.name = name, .type = type, .meaning = meaning, .length = kPathLength};
}

constexpr Field choiceOf(std::string_view name, Type type, std::span<const std::string_view> words,
                         std::string_view meaning) {
  return {.name = name, .type = type, .meaning = meaning, .words = words};
}

constexpr Line plain(std::string_view message, std::span<const Field> fields) {
  return {message, fields};
}

constexpr std::string_view kRpmRatioMeaning = "speed over the reference speed";

// INERTIA and SHAFT

constexpr std::array kInertiaFields = {
    id("number of the node"),
    Field{"RpmRatio", real, kRpmRatioMeaning},
    Field{"Inertia", real, "moment of inertia", kInertia},
    Field{"AbsDamping", real, "damping to ground", kDamping},
    Field{"DynMagnifier", real, "dynamic magnifier; 0 if `AbsDamping` acts"},
};
constexpr std::array kInertiaLines = {
    plain("Id, RpmRatio, Inertia, AbsDamping, DynMagnifier", kInertiaFields)};

constexpr std::array kShaftFields = {
    id("number of the shaft"),
    Field{"OrgNode", integer, "ids of the inertias that it joins"},
    Field{"DesNode", integer, "ids of the inertias that it joins"},
    Field{"RpmRatio", real, kRpmRatioMeaning},
    Field{"Stiffness", real, "torsional stiffness", kStiffness},
    Field{"AbsDamping", real, "damping across the shaft", kDamping},
    Field{"DynMagnifier", real, "dynamic magnifier; 0 if `AbsDamping` acts"},
    Field{"OuterDi", real, "diameters; an outer diameter of 0 gives no stress", kMillimetre},
    Field{"InnerDi", real, "diameters; an outer diameter of 0 gives no stress", kMillimetre},
    Field{"ShaftTypeFlag", integer, "1 and the id of a diesel: a crank throw of it; else 0 0"},
    Field{"ComponentIdFlag", integer, "1 and the id of a diesel: a crank throw of it; else 0 0"},
};
constexpr std::array kShaftLines = {
    plain("Id, OrgNode, DesNode, RpmRatio, Stiffness, AbsDamping, DynMagnifier, OuterDi, InnerDi, "
          "ShaftTypeFlag, ComponentIdFlag",
          kShaftFields)};

// Dampers

constexpr std::array kDamperId = {id("number of the damper")};
constexpr std::string_view kMemberMeaning = "ids of the two inertias";
constexpr Field kStatedDamping{"AbsDamping", real, "damping that the load case report states",
                               kDamping};

constexpr std::array kViscousDamperFields = {
    Field{"CasingNode", integer, kMemberMeaning}, Field{"RingNode", integer, kMemberMeaning},
    kStatedDamping, Field{"isCustomDamping", flag, "damping by the table over frequency"}};
constexpr std::array kDampingTable = {
    path("CustomDampingFile", trimmedLine, "path of the damping table")};
constexpr std::array kViscousDamperLines = {
    plain("Id", kDamperId),
    plain("CasingNode, RingNode, AbsDamping", kViscousDamperFields),
    Line{"CustomDampingFile", kDampingTable, {"isCustomDamping", Is::set}},
};

constexpr std::array kRubberDamperFields = {Field{"TurningMassNode", integer, kMemberMeaning},
                                            Field{"DrivePlateNode", integer, kMemberMeaning},
                                            kStatedDamping};
constexpr std::array kRubberDamperLines = {
    plain("Id", kDamperId),
    plain("TurningMassNode, DrivePlateNode, AbsDamping", kRubberDamperFields)};

constexpr std::array kSteelSpringDamperFields = {Field{"OuterMemberNode", integer, kMemberMeaning},
                                                 Field{"InnerMemberNode", integer, kMemberMeaning},
                                                 kStatedDamping};
constexpr std::array kSteelSpringDamperLines = {
    plain("Id", kDamperId),
    plain("OuterMemberNode, InnerMemberNode, AbsDamping", kSteelSpringDamperFields)};

// Couplings

constexpr std::array kCouplingId = {id("number of the coupling")};
constexpr Field kShaftNode{"ShaftNode", integer, "id of the shaft that carries it"};

constexpr std::array kLinearCouplingFields = {
    kShaftNode, Field{"NominalTorque", real, "for information", kTorque},
    Field{"NominalStiffness", real,
          "stiffness at every load, in free and forced vibration; replaces the `Stiffness` of the "
          "shaft",
          kStiffness}};
constexpr std::array kLinearCouplingLines = {
    plain("Id", kCouplingId),
    plain("ShaftNode, NominalTorque, NominalStiffness", kLinearCouplingFields)};

constexpr std::array kProgressiveCouplingFields = {
    kShaftNode, Field{"NominalTorque", real, "torque of the last point", kTorque},
    Field{"NominalStiffness",
          real,
          "stiffness at 0, 25, 50, 75 and 100 % of `NominalTorque`",
          kStiffness,
          {5}}};
constexpr std::array kProgressiveCouplingLines = {
    plain("Id", kCouplingId),
    plain("ShaftNode, NominalTorque, NominalStiffness(5)", kProgressiveCouplingFields)};

constexpr std::array kGeislingerCouplingFields = {
    kShaftNode,
    Field{"NominalTorque", real, "the load is the mean torque over it", kTorque},
    Field{"StaticStiffness", real, "stiffness at rest", kStiffness},
    Field{"CharacteristicFrequency", real,
          "reference frequency of the damping at an oil viscosity of 40", kRadPerSecond},
    Field{"OilViscosity", real,
          "reference frequency = 40 `CharacteristicFrequency` / `OilViscosity`"},
};
constexpr std::array<std::string_view, 2> kDampingWords = {"GEISLINGERDAMPING", "GENERALDAMPING"};
constexpr std::array<std::string_view, 2> kOilWords = {"WITHPRESSURIZED", "WITHOUTPRESSURIZED"};
constexpr std::array<std::string_view, 2> kDesignWords = {"MULTISPRING", "DUALSPRING"};
constexpr std::array kDampingType = {
    choiceOf("DampingType", lineChoice, kDampingWords, "damping by formula or by magnifier")};
constexpr std::array kOilSupplyType = {
    choiceOf("OilSupplyType", lineChoice, kOilWords, "oil under pressure or not")};
constexpr std::array kDesignType = {
    choiceOf("DesignType", lineChoice, kDesignWords, "design of the springs")};
constexpr std::array kGeislingerCouplingLines = {
    plain("Id", kCouplingId),
    plain("ShaftNode, NominalTorque, StaticStiffness, CharacteristicFrequency, OilViscosity",
          kGeislingerCouplingFields),
    plain("DampingType", kDampingType),
    // Oil supply and design matter only to the formulas that use them.
    Line{"OilSupplyType", kOilSupplyType, {"DampingType", Is::chosen, 1}},
    Line{"DesignType", kDesignType, {"OilSupplyType", Is::chosen, 2}},
};

// Diesel

constexpr std::array kDieselHead = {id("number of the engine"), name()};
constexpr std::array kDieselRating = {
    Field{"McrPower", real, "rating of the whole engine", kKilowatt},
    Field{"McrSpeed", real, "rating of the whole engine", kRpm},
    Field{"nStroke", integer, "2 or 4"},
    Field{"nCylinder", integer, "cylinder rows, at most 20"},
    Field{"ExcitationPhase", real, "of the whole engine, against other engines", kDegree},
    Field{"isVengine", flag, "V engine"},
    Field{"Vangle", real, "bank angle; brought to 0 up to 360 (two-stroke) or 720", kPlainDegree},
    Field{"isGenset", flag, "peak and compression pressure come from `Genset.txt`"},
    Field{"MipLimit", real, "highest mean indicated pressure over the rated one"},
};
constexpr std::string_view kFiringAngleMeaning =
    "crank angle at which each cylinder is at its firing top dead centre";
constexpr std::string_view kFiringStatusMeaning =
    "1 fires, 2 only compresses, 3 exhaust valve open, 4 piston removed, 5 fires partially";
constexpr std::string_view kFiringPercentMeaning = "power of a cylinder of status 5";
constexpr std::array kCylinders = {
    Field{"Cylinders", integer, "id of the inertia of each row", kBare, kEachCylinder}};
constexpr std::array kFiringAngleA = {
    Field{"FiringAngleA", real, kFiringAngleMeaning, kDegree, kEachCylinder}};
constexpr std::array kFiringAngleB = {
    Field{"FiringAngleB", real, kFiringAngleMeaning, kDegree, kEachCylinder}};
constexpr std::array kFiringStatusA = {
    Field{"FiringStatusA", integer, kFiringStatusMeaning, kBare, kEachCylinder}};
constexpr std::array kFiringStatusB = {
    Field{"FiringStatusB", integer, kFiringStatusMeaning, kBare, kEachCylinder}};
constexpr std::array kFiringPercentA = {
    Field{"FiringPercentA", real, kFiringPercentMeaning, kPlainPercent, kEachCylinder}};
constexpr std::array kFiringPercentB = {
    Field{"FiringPercentB", real, kFiringPercentMeaning, kPlainPercent, kEachCylinder}};
constexpr std::array kDieselGeometry = {
    Field{"Bore", real, "", kMillimetre},
    Field{"Stroke", real, "", kMillimetre},
    Field{"ConrodRatio", real, "crank radius over length of the connecting rod"},
    Field{"RecipMass", real, "reciprocating mass of one cylinder", kKilogram},
    Field{"Me", real, "mechanical efficiency", kPercent},
    Field{"isTheoreticalPresure", flag, "pressure model; else harmonic files"},
    Field{"VeeFiringType", integer,
          "0 bank B fires `Vangle` behind bank A, 1 a revolution later than that, any other number "
          "either; for the checks only"},
    Field{"isFormulaDamping", flag, "damping by the last line"},
};
constexpr std::array kNormalHarmonicFile = {
    path("NormalHarmonicFile", wholeLine, "harmonic file of normal firing")};
constexpr std::array kMisHarmonicFile = {
    path("MisHarmonicFile", wholeLine, "harmonic file of cylinders that only compress")};
constexpr std::array kPressures = {
    Field{"PMax", real, "peak and compression pressure at rating, above atmosphere", kBar},
    Field{"PComp", real, "peak and compression pressure at rating, above atmosphere", kBar},
    Field{"CompExp", real, "not used: the exponents follow from the pressures"},
    Field{"ExpaExp", real, "not used: the exponents follow from the pressures"},
    Field{"CompRatio", real, "compression ratio"},
    Field{"PChargeAir", real, "pressure at inlet, absolute", kBar},
    Field{"TChargeAir", real, "charge air temperature", kCelsius},
};
constexpr std::array kCombustion = {
    Field{"Te", real, "share of the heat that becomes indicated work", kPercent},
    Field{"FormFactor", real, "form of the heat release, first guess"},
    Field{"AngleIgnition", real, "combustion, after top dead centre", kPlainDegree},
    Field{"AngleEndOfComb", real, "combustion, after top dead centre", kPlainDegree},
    Field{"AngleExhaustStart", real, "exhaust opens", kPlainDegree},
    Field{"AngleInletStart", real, "two-stroke ports; four-stroke engines have any number",
          kPlainDegree},
    Field{"AngleInletClose", real, "two-stroke ports; four-stroke engines have any number",
          kPlainDegree},
};
constexpr std::string_view kCylinderDampingMeaning =
    "cylinders to ground: first x (order x rpm) ^ second, N m s/rad";
constexpr std::string_view kCrankDampingMeaning =
    "the same across the crank throws, the shafts that end in `1` and the engine's id";
constexpr std::array kFormulaDamping = {
    Field{"CylAbsDamping", real, kCylinderDampingMeaning},
    Field{"ExpCylAbsDamping", real, kCylinderDampingMeaning},
    Field{"CrankRelDamping", real, kCrankDampingMeaning},
    Field{"ExpCrankRelDamping", real, kCrankDampingMeaning},
};
constexpr std::array kDieselLines = {
    plain("Id", kDieselHead),
    plain("McrPower, McrSpeed, nStroke, nCylinder, ExcitationPhase, isVengine, Vangle",
          kDieselRating),
    plain("Cylinders", kCylinders),
    plain("FiringAngleA", kFiringAngleA),
    plain("FiringAngleB", kFiringAngleB),
    plain("FiringStatusA", kFiringStatusA),
    plain("FiringStatusB", kFiringStatusB),
    // Users know the lines of percents by the names of the statuses.
    plain("FiringStatusA", kFiringPercentA),
    plain("FiringStatusB", kFiringPercentB),
    plain("Bore, Stroke, ConrodRatio, RecipMass, Me, isTheoreticalPresure, VeeFiringType, "
          "isFormulaDamping",
          kDieselGeometry),
    Line{"NormalHarmonicFile", kNormalHarmonicFile, {"isTheoreticalPresure", Is::clear}},
    Line{"MisHarmonicFile", kMisHarmonicFile, {"isTheoreticalPresure", Is::clear}},
    Line{"PMax, PComp, CompExp, ExpaExp, CompRatio, PChargeAir, TChargeAir",
         kPressures,
         {"isTheoreticalPresure", Is::set}},
    Line{"Te, FormFactor, AngleIgnition, AngleEndOfComb, AngleExhaustStart, AngleInletStart, "
         "AngleInletClose",
         kCombustion,
         {"isTheoreticalPresure", Is::set}},
    Line{"CylAbsDamping, ExpCylAbsDamping, CrankRelDamping, ExpCrankRelDamping",
         kFormulaDamping,
         {"isFormulaDamping", Is::set}},
};

// Machines on one inertia

constexpr std::array kMachineId = {id("number of the machine")};
constexpr std::string_view kNodeMeaning = "id of its inertia";
constexpr Field kRatedPower{"McrPower", real, "rated power", kKilowatt};
constexpr Field kRatedSpeed{"McrSpeed", real, "rated speed", kRpm};
constexpr std::string_view kOrderCountMeaning = "orders in use, 0 to 4: the first ones of the four";
constexpr std::string_view kOrderMeaning = "the unused slots have a value too, say 0";
constexpr std::string_view kAmplitudeMeaning =
    "of the torque in the load case; of the rated torque if constant";

constexpr Field orders(std::string_view name) {
  return {name, real, kOrderMeaning, kBare, kFourPlaces};
}
constexpr Field amplitudes(std::string_view name) {
  return {name, real, kAmplitudeMeaning, kPercent, kFourPlaces};
}

constexpr std::array kElectricMotorFields = {
    Field{"ElectricMotorNode", integer, kNodeMeaning},
    kRatedPower,
    kRatedSpeed,
    Field{"ExcitationType", integer, "0: speed and torque of the load case excite; else constant"},
    Field{"ConstExcitationFreq", real, "speed of which the orders of a constant excitation count",
          kRpm},
    Field{"MotorOrderNumber", orderCount, kOrderCountMeaning},
};
constexpr std::array kMotorOrder = {orders("MotorOrder")};
constexpr std::array kMotorTorquePercent = {amplitudes("MotorTorquePercent")};
constexpr std::array kElectricMotorLines = {
    plain("Id", kMachineId),
    plain("ElectricMotorNode, McrPower, McrSpeed, ExcitationType, ConstExcitationFreq, "
          "MotorOrderNumber",
          kElectricMotorFields),
    plain("Electric motor order", kMotorOrder),
    plain("Electric motor torque amplitude", kMotorTorquePercent),
};

constexpr std::array kGeneratorFields = {
    Field{"GeneratorNode", integer, kNodeMeaning}, kRatedPower, kRatedSpeed,
    Field{"GeneratorOrderNumber", orderCount, kOrderCountMeaning}};
constexpr std::array kGeneratorOrder = {orders("GeneratorOrder")};
constexpr std::array kGeneratorTorquePercent = {amplitudes("GeneratorTorquePercent")};
constexpr std::array kGeneratorLines = {
    plain("Id", kMachineId),
    plain("GeneratorNode, McrPower, McrSpeed, GeneratorOrderNumber", kGeneratorFields),
    plain("Generator torque order", kGeneratorOrder),
    plain("Generator torque amplitude", kGeneratorTorquePercent),
};

constexpr std::array kCentrifugalPumpFields = {
    Field{"CentrifugalPumpNode", integer, kNodeMeaning}, kRatedPower, kRatedSpeed,
    Field{"CentrifugalPumpOrderNumber", orderCount, kOrderCountMeaning},
    Field{"CentrifugalPumpPhaseAngle", real, "phase of the excitation", kDegree}};
constexpr std::array kCentrifugalPumpOrder = {orders("CentrifugalPumpOrder")};
constexpr std::array kCentrifugalPumpTorquePercent = {amplitudes("CentrifugalPumpTorquePercent")};
constexpr std::array kCentrifugalPumpLines = {
    plain("Id", kMachineId),
    plain("CentrifugalPumpNode, McrPower, McrSpeed, CentrifugalPumpOrderNumber, "
          "CentrifugalPumpPhaseAngle",
          kCentrifugalPumpFields),
    plain("Centrifugal pump torque order", kCentrifugalPumpOrder),
    plain("Centrifugal pump torque amplitude", kCentrifugalPumpTorquePercent),
};

constexpr std::array kGasTurbineFields = {Field{"GasTurbineNode", integer, kNodeMeaning},
                                          kRatedPower, kRatedSpeed};
constexpr std::array kGasTurbineLines = {
    plain("Id", kMachineId), plain("GasTurbineNode, McrPower, McrSpeed", kGasTurbineFields)};

constexpr std::array kSteamTurbineFields = {Field{"SteamTurbineNode", integer, kNodeMeaning},
                                            kRatedPower, kRatedSpeed};
constexpr std::array kSteamTurbineLines = {
    plain("Id", kMachineId), plain("SteamTurbineNode, McrPower, McrSpeed", kSteamTurbineFields)};

// Propeller

constexpr std::array kPropellerId = {id("number of the propeller")};
constexpr std::string_view kPropellerRatingMeaning = "rating, at the propeller's speed";
constexpr std::string_view kPropellerInertiaMeaning =
    "of the propeller and of the water that it drags along";
constexpr std::string_view kPropellerDiameterMeaning = "diameter of the boss and of the propeller";
constexpr std::string_view kPropellerRatioMeaning =
    "pitch over diameter, expanded area over disc area";
constexpr std::string_view kMethodNumberMeaning =
    "for the methods of these names; 20 to 50, 1 to 5";
constexpr std::string_view kBladeTorqueMeaning =
    "excitation at `nBlade` times the speed and twice that, of the mean torque";
constexpr std::array kPropellerFields = {
    Field{"PropellerNode", integer,
          "id of its inertia; `InertiaAir` and `InertiaWater` replace the value there"},
    Field{"McrPower", real, kPropellerRatingMeaning, kKilowatt},
    Field{"McrSpeed", real, kPropellerRatingMeaning, kRpm},
    Field{"nBlade", integer, "number of blades"},
    Field{"InertiaAir", real, kPropellerInertiaMeaning, kInertia},
    Field{"InertiaWater", real, kPropellerInertiaMeaning, kInertia},
    Field{"isDucted", flag, "Schwanecke's damping times 1.3"},
};
constexpr std::array kPropellerGeometry = {
    Field{"Db", real, kPropellerDiameterMeaning, kMillimetre},
    Field{"Di", real, kPropellerDiameterMeaning, kMillimetre},
    Field{"PitchRatio", real, kPropellerRatioMeaning},
    Field{"ExpAreaRatio", real, kPropellerRatioMeaning},
    Field{"isFixedPitch", flag, "0: Schwanecke's damping times `PitchPercent`"},
    Field{"PitchPercent", real, "pitch setting", kPercent},
    Field{"DynMagnifier", real, "for the methods `MANUAL` and `VARIABLE`"},
};
constexpr std::array<std::string_view, 5> kMethodWords = {"SCHWANEKE", "ARCHER", "FRAHM", "MANUAL",
                                                          "VARIABLE"};
constexpr std::array kPropellerDamping = {
    choiceOf("Method", choice, kMethodWords, "damping of the propeller"),
    Field{"ArcherNumber", real, kMethodNumberMeaning},
    Field{"FrahmNumber", real, kMethodNumberMeaning},
    Field{"KnucklePoint", real, "of `McrSpeed`, for the method `VARIABLE`", kPlainPercent},
    Field{"TorquePercent1", real, kBladeTorqueMeaning, kPercent},
    Field{"TorquePercent2", real, kBladeTorqueMeaning, kPercent},
    Field{"ExcitationPhase", real, "phase of the excitation", kDegree},
    Field{"ConsiderPhaseAngle", flag, "0: the phase is unknown and the worst one is assumed"},
};
constexpr std::array kWaterFlag = {
    Field{"isVariablePropellerEntrainedWater", flag, "the water of each load case from a file"}};
constexpr std::array kWaterFile = {
    path("VariableEntrainedWaterFile", word, "entrained water file")};
constexpr std::array kPropellerLines = {
    plain("Id", kPropellerId),
    plain("PropellerNode, McrPower, McrSpeed, nBlade, InertiaAir, InertiaWater, isDucted",
          kPropellerFields),
    plain("Db, Di, PitchRatio, ExpAreaRatio, isFixedPitch, PitchPercent, DynMagnifier",
          kPropellerGeometry),
    plain("ArcherNumber, FrahmNumber,  KnucklePoint, TorquePercent1, TorquePercent2, "
          "ExcitationPhase, ConsiderPhaseAngle",
          kPropellerDamping),
    plain("isVariablePropellerEntrainedWater", kWaterFlag),
    Line{"isVariablePropellerEntrainedWater",
         kWaterFile,
         {"isVariablePropellerEntrainedWater", Is::set}},
};

constexpr std::array kPropellerIceId = {id("not looked at")};
constexpr std::array kIceFlag = {
    Field{"isTmaxCorrectedWithActualSpeed", flag, "10 speed ratios in the ice file; else 2"}};
constexpr std::array kIceFile = {path("ExcitationFile", wholeLine, "ice file")};
constexpr std::array kPropellerIceLines = {
    plain("PropellerIce Id", kPropellerIceId),
    plain("isTmaxCorrectedWithActualSpeed", kIceFlag),
    plain("ExcitationFile", kIceFile),
};

// Reciprocating pump

constexpr std::array kPumpHead = {id("number of the pump"), name()};
constexpr std::array kPumpRating = {
    Field{"McrPower", real, "rating", kKilowatt},
    Field{"McrSpeed", real, "rating", kRpm},
    Field{"nPumpCylinder", integer, "cylinder rows, 1 to 20"},
    Field{"ExcitationPhase", real, "added to every discharge angle", kDegree},
    Field{"isOpposite", flag, "each row has a second cylinder, half a turn behind"},
    Field{"isDoubleActing", flag, "both sides of a piston work"},
};
constexpr std::array kPumpCylinders = {
    Field{"Cylinders", integer, "id of the inertia of each row", kBare, kEachPumpCylinder}};
constexpr std::array kDischargeAngleA = {
    Field{"DischargeAngleA", real, "crank angle at which each row is at top dead centre", kDegree,
          kEachPumpCylinder}};
constexpr std::array kDischargeAngleB = {
    Field{"DischargeAngleB", real,
          "of the opposite cylinders; kept only behind a V engine, and without effect", kDegree,
          kEachPumpCylinder}};
constexpr std::array kPumpGeometry = {
    Field{"Bore", real, "", kMillimetre},
    Field{"Stroke", real, "", kMillimetre},
    Field{"ConrodRatio", real, "crank radius over rod length"},
    Field{"RecipMass", real, "reciprocating mass of a cylinder", kKilogram},
    Field{"isSimplifiedPressure", flag, "excitation by orders; else by a harmonic data file"},
};
constexpr std::array kPumpHarmonicFile = {
    path("PumpHarmonicFile", wholeLine, "harmonic data file")};
constexpr std::array kPumpOrderNumber = {
    Field{"ReciprocatingPumpOrderNumber", orderCount, "orders in use, 0 to 4"}};
constexpr std::array kPumpOrder = {
    Field{"ReciprocatingPumpOrder", real,
          "an order counts by its integer part, the later of two equal ones holds; one outside 1 "
          "to 20 is left out with a warning",
          kBare, kFourPlaces}};
constexpr std::array kPumpTorquePercent = {
    Field{"ReciprocatingPumpTorquePercent", real,
          "of the pump's torque in the load case, for every cylinder row and side", kPercent,
          kFourPlaces}};
constexpr std::array kReciprocatingPumpLines = {
    plain("Id, PumpName", kPumpHead),
    plain("McrPower, McrSpeed, nPumpCylinder, ExcitationPhase, isOpposite, isDoubleActing",
          kPumpRating),
    plain("PumpCylinders", kPumpCylinders),
    plain("DischargeAngleA", kDischargeAngleA),
    plain("DischargeAngleB", kDischargeAngleB),
    plain("Bore, Stroke, ConrodRatio, RecipMass, isSimplifiedPresure", kPumpGeometry),
    Line{"PumpHarmonicFile", kPumpHarmonicFile, {"isSimplifiedPressure", Is::clear}},
    Line{"ReciprocatingPumpOrderNumber", kPumpOrderNumber, {"isSimplifiedPressure", Is::set}},
    Line{"Reciprocating pump torque order", kPumpOrder, {"isSimplifiedPressure", Is::set}},
    Line{"Reciprocating pump torque amplitude",
         kPumpTorquePercent,
         {"isSimplifiedPressure", Is::set}},
};

constexpr std::array kAngleBasedLines = {plain("", {})};

constexpr std::array kSections = {
    Section{kAngleBasedKeyword, kAngleBasedLines},
    Section{"INERTIA", kInertiaLines},
    Section{"SHAFT", kShaftLines},
    Section{"VISCOUSDAMPER", kViscousDamperLines},
    Section{"RUBBERDAMPER", kRubberDamperLines},
    Section{"STEELSPRINGDAMPER", kSteelSpringDamperLines},
    Section{"LINEARCOUPLING", kLinearCouplingLines},
    Section{"PROGRESSIVECOUPLING", kProgressiveCouplingLines},
    Section{"GEISLINGERCOUPLING", kGeislingerCouplingLines},
    Section{"DIESEL", kDieselLines},
    Section{"ELECTRICMOTOR", kElectricMotorLines},
    Section{"GASTURBINE", kGasTurbineLines},
    Section{"STEAMTURBINE", kSteamTurbineLines},
    Section{"PROPELLER", kPropellerLines},
    Section{"PROPELLERICE", kPropellerIceLines},
    Section{"GENERATOR", kGeneratorLines},
    Section{"CENTRIFUGALPUMP", kCentrifugalPumpLines},
    Section{"RECIPROCATINGPUMP", kReciprocatingPumpLines},
};

/// Whether every condition and count names a value that stands on a line before it.
constexpr bool namesAreKnown(const Section& section) {
  const auto stands = [&section](std::string_view name, std::size_t before) {
    for (const Line& line : section.lines.first(before)) {
      for (const Field& field : line.fields) {
        if (field.name == name) {
          return true;
        }
      }
    }
    return false;
  };
  for (std::size_t i = 0; i < section.lines.size(); ++i) {
    const Line& line = section.lines[i];
    if (line.when.is != Is::always && !stands(line.when.field, i)) {
      return false;
    }
    for (const Field& field : line.fields) {
      if (!field.repeat.countedBy.empty() && !stands(field.repeat.countedBy, i)) {
        return false;
      }
    }
  }
  return true;
}
static_assert(std::all_of(kSections.begin(), kSections.end(), namesAreKnown));

}  // namespace

std::span<const Section> sections() { return kSections; }

const Section* findSection(std::string_view keyword) {
  const auto* const found = std::find_if(kSections.begin(), kSections.end(),
                                         [=](const Section& s) { return s.keyword == keyword; });
  return found == kSections.end() ? nullptr : found;
}

}  // namespace verenwick::input
