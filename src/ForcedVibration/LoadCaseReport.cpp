#include "ForcedVibration/LoadCaseReport.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "Matrices/LoadCaseSetting.h"
#include "RunControl/Constants.h"
#include "RunControl/Files.h"
#include "RunControl/NumberText.h"

namespace verenwick {
namespace {

using Lines = std::span<const std::string_view>;

constexpr std::array<std::string_view, 3> kDieselHeader = {
    "Case     Speed     Power     P.Max    P.Inlet   P.Comp       MIP       MEP",
    "         [rpm]  [kW/cyl]     [bar]      [bar]    [bar]     [bar]     [bar]",
    "--------------------------------------------------------------------------"};
constexpr std::array<std::string_view, 4> kPropellerInformationHeader = {
    "                              Propeller information",
    "Case  Engine speed  Blade freq.   Power     Damping",
    "             [rpm]      [min-1]    [kW]   [Nms/rad]",
    "---------------------------------------------------"};
constexpr std::array<std::string_view, 4> kPropellerExcitationHeader = {
    "                                                    Propeller excitation",
    "Case  Engine speed  Blade freq.   Power     Damping  1st order  2nd order",
    "             [rpm]      [min-1]    [kW]   [Nms/rad]       [Nm]       [Nm]",
    "-------------------------------------------------------------------------"};
constexpr std::array<std::string_view, 3> kElasticHeader = {
    "Case          Speed       Stiffness       Damping",
    "              [rpm]        [Nm/rad]     [Nms/rad]",
    "-----------------------------------------------"};
constexpr std::array<std::string_view, 3> kMachineHeader = {"Case          Speed          Power",
                                                            "              [rpm]           [kW]",
                                                            "--------------------------------"};
constexpr std::array<std::string_view, 3> kReciprocatingPumpHeader = {
    "Case     Speed        Speed       Power       T_rpm       T_mcr     T_ratio",
    "         [rpm]  [%MCRSpeed]    [kW/cyl]       [kNm]       [kNm]         [%]",
    "--------------------------------------------------------------------------"};

// "basing on" is how hosts know these lines.
constexpr std::string_view kDampingNote =
    "Note: The listed damping values are calculated basing on shaft order";
constexpr std::string_view kStiffnessAndDampingNote =
    "Note: The listed stiffness and damping values are calculated basing on shaft order";

/// Orders at which the report takes what depends on the frequency.
constexpr double kShaftOrder = 1.0;
constexpr double kKilo = 1000;

/// The shaft of an element in the load case in force.
struct ElementShaft {
  double stiffness = 0.0;  ///< as the model has it, N m/rad
  double magnifier = 0.0;
};

ElementShaft shaftAt(const ModelBundle& model, std::int32_t position) {
  if (position < 1) {
    return {};
  }
  return {GET_SHAFT_STIFFNESS(model.shaft, position),
          GET_SHAFT_DYNMAGNIFIER(model.shaft, position)};
}

ElementShaft shaftOf(const ModelBundle& model, std::int32_t shaftId) {
  return shaftAt(model, GET_SHAFT_ISHAFT(model.shaft, shaftId));
}

ElementShaft shaftBetween(const ModelBundle& model, std::int32_t node1, std::int32_t node2) {
  return shaftAt(model, GET_SHAFT_ISHAFTBYNODE(model.shaft, node1, node2));
}

// The columns of each kind behind the case number; the component is at its operating point.

std::string dieselRow(ModelBundle& model, std::int32_t position) {
  CALCULATE_DIESEL_LOADCASESETTING(model.diesel, position, model.loadCaseGenset, 0, true);
  const DIESEL_RECORD& diesel = model.diesel.at(position);
  const double power =
      diesel.POWERPERCYL * GET_DIESEL_POWERCYLPERCENTINCREASED(model.diesel, position);
  std::string row = fixedField(diesel.SPEED, 10, 1) + fixedField(power / kKilo, 10, 1);
  for (const double pressure :
       {diesel.PMAXRPM, diesel.PCHARGEAIRRPM, diesel.PCOMPRPM, diesel.MIPRPM, diesel.MEPRPM}) {
    row += fixedField(pressure / kBar, 10, 1);
  }
  return row;
}

std::string propellerRow(ModelBundle& model, std::int32_t position) {
  CALCULATE_PROPELLER_LOADCASESETTING(model.propeller, position);
  const PROPELLER_RECORD& propeller = model.propeller.at(position);
  std::string row =
      fixedField(propeller.SPEED, 14, 1) + fixedField(propeller.BLADEFREQUENCY, 13, 1) +
      fixedField(propeller.POWER / kKilo, 8, 1) + scientificField(propeller.DAMPING, 12, 3, 2);
  if (!propeller.HASICEEXCITATION) {
    row += scientificField(propeller.TORQUEAMP1, 11, 3, 2) +
           scientificField(propeller.TORQUEAMP2, 11, 3, 2);
  }
  return row;
}

std::string elasticRow(double speed, double stiffness, double damping) {
  return fixedField(speed, 15, 1) + scientificField(stiffness, 15, 3, 3) +
         scientificField(damping, 15, 3, 3);
}

std::string linearCouplingRow(ModelBundle& model, std::int32_t position) {
  const LINEARCOUPLING_RECORD& coupling = model.linearCoupling.at(position);
  CALCULATE_LINEARCOUPLING_LOADCASESETTING(model.linearCoupling, position,
                                           shaftOf(model, coupling.SHAFTNODE).magnifier);
  return elasticRow(coupling.SPEED, coupling.STIFFNESS, coupling.DAMPING);
}

std::string progressiveCouplingRow(ModelBundle& model, std::int32_t position) {
  const PROGRESSIVECOUPLING_RECORD& coupling = model.progressiveCoupling.at(position);
  CALCULATE_PROGRESSIVECOUPLING_LOADCASESETTING(model.progressiveCoupling, position,
                                                shaftOf(model, coupling.SHAFTNODE).magnifier);
  return elasticRow(coupling.SPEED, coupling.STIFFNESS, coupling.DAMPING);
}

std::string geislingerCouplingRow(ModelBundle& model, std::int32_t position) {
  GEISLINGERCOUPLING_RECORD& coupling = model.geislingerCoupling.at(position);
  coupling.SPEEDEXCITATION = coupling.SPEED;
  CALCULATE_GEISLINGERCOUPLING_LOADCASESETTING(model.geislingerCoupling, position,
                                               shaftOf(model, coupling.SHAFTNODE).magnifier,
                                               kShaftOrder);
  return elasticRow(coupling.SPEED, coupling.STIFFNESS, coupling.DAMPING);
}

std::string viscousDamperRow(ModelBundle& model, std::int32_t position) {
  const VISCOUSDAMPER_RECORD& damper = model.viscousDamper.at(position);
  CALCULATE_VISCOUSDAMPER_LOADCASESETTING(
      model.viscousDamper, position,
      shaftBetween(model, damper.CASINGNODE, damper.RINGNODE).stiffness);
  double stiffness = damper.STIFFNESS;
  double damping = damper.DAMPING;
  if (damper.ISCUSTOMDAMPING) {
    damping = CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(model.viscousDamper, position, kShaftOrder);
    if (damper.ISCUSTOMSTIFFNESS) {
      stiffness =
          CALCULATE_VISCOUSDAMPER_CUSTOMSTIFFNESS(model.viscousDamper, position, kShaftOrder);
    }
  }
  return elasticRow(damper.SPEED, stiffness == kNearlyFreeLink ? 0.0 : stiffness, damping);
}

std::string steelSpringDamperRow(ModelBundle& model, std::int32_t position) {
  const STEELSPRINGDAMPER_RECORD& damper = model.steelSpringDamper.at(position);
  CALCULATE_STEELSPRINGDAMPER_LOADCASESETTING(
      model.steelSpringDamper, position,
      shaftBetween(model, damper.OUTERMEMBERNODE, damper.INNERMEMBERNODE).stiffness);
  return elasticRow(damper.SPEED, damper.STIFFNESS, damper.DAMPING);
}

std::string rubberDamperRow(ModelBundle& model, std::int32_t position) {
  const RUBBERDAMPER_RECORD& damper = model.rubberDamper.at(position);
  const ElementShaft shaft = shaftBetween(model, damper.TURNINGMASSNODE, damper.DRIVEPLATENODE);
  CALCULATE_RUBBERDAMPER_LOADCASESETTING(model.rubberDamper, position, shaft.stiffness,
                                         shaft.magnifier, kShaftOrder);
  return elasticRow(damper.SPEED, damper.STIFFNESS, damper.DAMPING);
}

template <auto Table>
std::string machineRow(ModelBundle& model, std::int32_t position) {
  const auto& machine = (model.*Table).at(position);
  return fixedField(machine.SPEED, 15, 1) + fixedField(machine.POWER / kKilo, 15, 1);
}

std::string reciprocatingPumpRow(ModelBundle& model, std::int32_t position) {
  CALCULATE_RECIPROCATINGPUMP_LOADCASESETTING(model.reciprocatingPump, position, 0);
  const RECIPROCATINGPUMP_RECORD& pump = model.reciprocatingPump.at(position);
  // Speed and torque ratio are printed as fractions, whatever the header says.
  return fixedField(pump.SPEED, 10, 1) + fixedField(pump.SPEEDPERCENTAGE, 13, 2) +
         fixedField(pump.POWER / pump.NCYLINDER / kKilo, 12, 1) +
         fixedField(pump.TORQUE / kKilo, 12, 1) + fixedField(pump.MCRTORQUE / kKilo, 12, 1) +
         fixedField(pump.LOADPERCENTAGE, 12, 2);
}

// What a section begins with, where it depends on the component.

Lines propellerHeader(const ModelBundle& model, std::int32_t position) {
  return GET_PROPELLER_HASICEEXCITATION(model.propeller, position)
             ? Lines(kPropellerInformationHeader)
             : Lines(kPropellerExcitationHeader);
}

std::string_view viscousDamperNote(const ModelBundle& model, std::int32_t position) {
  if (!GET_VISCOUSDAMPER_ISCUSTOMDAMPING(model.viscousDamper, position)) {
    return {};
  }
  return GET_VISCOUSDAMPER_ISCUSTOMSTIFFNESS(model.viscousDamper, position)
             ? kStiffnessAndDampingNote
             : kDampingNote;
}

template <const auto& kLines>
Lines header(const ModelBundle& /*model*/, std::int32_t /*position*/) {
  return kLines;
}

template <const std::string_view& kWords>
std::string_view note(const ModelBundle& /*model*/, std::int32_t /*position*/) {
  return kWords;
}

std::string_view noNote(const ModelBundle& /*model*/, std::int32_t /*position*/) { return {}; }

/// The section of one kind of component.
struct Section {
  ComponentType type;
  std::string_view title;
  Lines (*header)(const ModelBundle& model, std::int32_t position);
  std::string_view (*note)(const ModelBundle& model, std::int32_t position);
  std::string (*row)(ModelBundle& model, std::int32_t position);
};

using M = ModelBundle;

constexpr std::array kSections = {
    Section{ComponentType::diesel, "Diesel ", header<kDieselHeader>, noNote, dieselRow},
    Section{ComponentType::propeller, "Propeller ", propellerHeader, noNote, propellerRow},
    Section{ComponentType::linearCoupling, "Linear coupling ", header<kElasticHeader>,
            note<kDampingNote>, linearCouplingRow},
    Section{ComponentType::progressiveCoupling, "Progressive coupling ", header<kElasticHeader>,
            note<kDampingNote>, progressiveCouplingRow},
    Section{ComponentType::geislingerCoupling, "Geislinger coupling ", header<kElasticHeader>,
            note<kStiffnessAndDampingNote>, geislingerCouplingRow},
    Section{ComponentType::viscousDamper, "Viscous damper ", header<kElasticHeader>,
            viscousDamperNote, viscousDamperRow},
    Section{ComponentType::steelSpringDamper, "Steel spring damper ", header<kElasticHeader>,
            noNote, steelSpringDamperRow},
    Section{ComponentType::rubberDamper, "Rubber damper ", header<kElasticHeader>,
            note<kDampingNote>, rubberDamperRow},
    Section{ComponentType::electricMotor, "Electric motor ", header<kMachineHeader>, noNote,
            machineRow<&M::electricMotor>},
    Section{ComponentType::generator, "Generator ", header<kMachineHeader>, noNote,
            machineRow<&M::generator>},
    Section{ComponentType::gasTurbine, "Gas turbine ", header<kMachineHeader>, noNote,
            machineRow<&M::gasTurbine>},
    Section{ComponentType::steamTurbine, "Steam turbine ", header<kMachineHeader>, noNote,
            machineRow<&M::steamTurbine>},
    Section{ComponentType::centrifugalPump, "Centrifugal pump ", header<kMachineHeader>, noNote,
            machineRow<&M::centrifugalPump>},
    Section{ComponentType::reciprocatingPump, "Reciprocating pump ",
            header<kReciprocatingPumpHeader>, noNote, reciprocatingPumpRow},
};

void writeSection(TextWriter& report, const Section& section, ModelBundle& model,
                  std::int32_t column, std::int32_t position) {
  report.writeLine("");
  const std::int32_t id = GET_LOADCASE_COMPONENTID(model.loadCase, column);
  report.writeLine(std::string(section.title) + integerField(id, 3));
  if (const std::string_view words = section.note(model, position); !words.empty()) {
    report.writeLine(words);
  }
  for (const std::string_view line : section.header(model, position)) {
    report.writeLine(line);
  }
  for (std::int32_t loadCase = 1; loadCase <= model.loadCaseSpeed.number(); ++loadCase) {
    setOperatingPoint(model, column, loadCase);
    report.writeLine(integerField(loadCase, 4) + section.row(model, position));
  }
}

}  // namespace

void WRITELOADCASESETTING(ModelBundle& model) {
  TextWriter report(resultFileAddress(results::resultFile("LoadCaseSetting.txt")),
                    Opening::replace);
  for (std::int32_t column = 1; column <= model.loadCase.number(); ++column) {
    const ComponentType type = GET_LOADCASE_COMPONENTTYPE(model.loadCase, column);
    const auto section = std::find_if(kSections.begin(), kSections.end(),
                                      [&](const Section& s) { return s.type == type; });
    const std::int32_t position = componentOfColumn(model, column);
    if (section != kSections.end() && position > 0) {
      writeSection(report, *section, model, column, position);
    }
  }
  report.close();
}

}  // namespace verenwick
