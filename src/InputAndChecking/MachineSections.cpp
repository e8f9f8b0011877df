#include "InputAndChecking/InputSections.h"

namespace verenwick {
namespace {

/// Takes what every machine on one inertia has: its id, its rating and the inertia's mark.
template <class Table>
auto& placeMachine(const SectionValues& values, ModelBundle& model, Table& table,
                   std::int32_t position, std::int32_t node, MassType type, ComponentType machine) {
  const std::int32_t id = values.integer("Id");
  table.setId(position, id);
  auto& record = table.at(position);
  record.MCRPOWER = values.real("McrPower");
  record.MCRSPEED = values.real("McrSpeed");
  record.MCRTORQUE = ratedTorque(record.MCRPOWER, record.MCRSPEED);
  markInertia(model, node, type, machine, id);
  return record;
}

}  // namespace

void fillElectricMotor(const SectionValues& values, ModelBundle& model, std::int32_t position,
                       InputReader& /*in*/) {
  const std::int32_t node = values.integer("ElectricMotorNode");
  ELECTRICMOTOR_RECORD& motor = placeMachine(values, model, model.electricMotor, position, node,
                                             MassType::electricMotor, ComponentType::electricMotor);
  motor.ELECTRICMOTORNODE = node;
  motor.EXCITATIONTYPE = values.integer("ExcitationType");
  motor.CONSTEXCITATIONFREQ = values.real("ConstExcitationFreq");
  motor.MOTORORDERNUMBER = values.integer("MotorOrderNumber");
  values.copyReals("MotorOrder", motor.MOTORORDER);
  values.copyReals("MotorTorquePercent", motor.MOTORTORQUEPERCENT);
}

void fillGenerator(const SectionValues& values, ModelBundle& model, std::int32_t position,
                   InputReader& /*in*/) {
  const std::int32_t node = values.integer("GeneratorNode");
  GENERATOR_RECORD& generator = placeMachine(values, model, model.generator, position, node,
                                             MassType::generator, ComponentType::generator);
  generator.GENERATORNODE = node;
  generator.GENERATORORDERNUMBER = values.integer("GeneratorOrderNumber");
  values.copyReals("GeneratorOrder", generator.GENERATORORDER);
  values.copyReals("GeneratorTorquePercent", generator.GENERATORTORQUEPERCENT);
}

void fillCentrifugalPump(const SectionValues& values, ModelBundle& model, std::int32_t position,
                         InputReader& /*in*/) {
  const std::int32_t node = values.integer("CentrifugalPumpNode");
  CENTRIFUGALPUMP_RECORD& pump =
      placeMachine(values, model, model.centrifugalPump, position, node, MassType::centrifugalPump,
                   ComponentType::centrifugalPump);
  pump.CENTRIFUGALPUMPNODE = node;
  pump.CENTRIFUGALPUMPORDERNUMBER = values.integer("CentrifugalPumpOrderNumber");
  pump.CENTRIFUGALPUMPPHASEANGLE = values.real("CentrifugalPumpPhaseAngle");
  values.copyReals("CentrifugalPumpOrder", pump.CENTRIFUGALPUMPORDER);
  values.copyReals("CentrifugalPumpTorquePercent", pump.CENTRIFUGALPUMPTORQUEPERCENT);
}

void fillGasTurbine(const SectionValues& values, ModelBundle& model, std::int32_t position,
                    InputReader& /*in*/) {
  const std::int32_t node = values.integer("GasTurbineNode");
  placeMachine(values, model, model.gasTurbine, position, node, MassType::gasTurbine,
               ComponentType::gasTurbine)
      .GASTURBINENODE = node;
}

void fillSteamTurbine(const SectionValues& values, ModelBundle& model, std::int32_t position,
                      InputReader& /*in*/) {
  const std::int32_t node = values.integer("SteamTurbineNode");
  placeMachine(values, model, model.steamTurbine, position, node, MassType::steamTurbine,
               ComponentType::steamTurbine)
      .STEAMTURBINENODE = node;
}

}  // namespace verenwick
