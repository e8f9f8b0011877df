#include "InputAndChecking/InputSections.h"

namespace verenwick {
namespace {

/// Completes a machine that sits on one inertia: its id, its rated torque and the inertia's mark.
template <class Table>
void placeMachine(ModelBundle& model, Table& table, std::int32_t position, std::int32_t id,
                  std::int32_t node, MassType type, ComponentType machine) {
  table.setId(position, id);
  auto& record = table.at(position);
  record.MCRTORQUE = ratedTorque(record.MCRPOWER, record.MCRSPEED);
  markInertia(model, node, type, machine, id);
}

}  // namespace

bool readElectricMotor(InputReader& in, ModelBundle& model, std::int32_t position) {
  ELECTRICMOTOR_RECORD& motor = model.electricMotor.at(position);
  std::int32_t id = 0;
  if (!in.keywordLine(integer(id)) ||
      !in.line("ElectricMotorNode, McrPower, McrSpeed, ExcitationType, ConstExcitationFreq, "
               "MotorOrderNumber",
               integer(motor.ELECTRICMOTORNODE), kilowatt(motor.MCRPOWER), real(motor.MCRSPEED),
               integer(motor.EXCITATIONTYPE), real(motor.CONSTEXCITATIONFREQ),
               orderCount(motor.MOTORORDERNUMBER)) ||
      !in.line("Electric motor order", real(motor.MOTORORDER)) ||
      !in.line("Electric motor torque amplitude", percent(motor.MOTORTORQUEPERCENT))) {
    return false;
  }
  placeMachine(model, model.electricMotor, position, id, motor.ELECTRICMOTORNODE,
               MassType::electricMotor, ComponentType::electricMotor);
  return true;
}

bool readGenerator(InputReader& in, ModelBundle& model, std::int32_t position) {
  GENERATOR_RECORD& generator = model.generator.at(position);
  std::int32_t id = 0;
  if (!in.keywordLine(integer(id)) ||
      !in.line("GeneratorNode, McrPower, McrSpeed, GeneratorOrderNumber",
               integer(generator.GENERATORNODE), kilowatt(generator.MCRPOWER),
               real(generator.MCRSPEED), orderCount(generator.GENERATORORDERNUMBER)) ||
      !in.line("Generator torque order", real(generator.GENERATORORDER)) ||
      !in.line("Generator torque amplitude", percent(generator.GENERATORTORQUEPERCENT))) {
    return false;
  }
  placeMachine(model, model.generator, position, id, generator.GENERATORNODE, MassType::generator,
               ComponentType::generator);
  return true;
}

bool readCentrifugalPump(InputReader& in, ModelBundle& model, std::int32_t position) {
  CENTRIFUGALPUMP_RECORD& pump = model.centrifugalPump.at(position);
  std::int32_t id = 0;
  if (!in.keywordLine(integer(id)) ||
      !in.line("CentrifugalPumpNode, McrPower, McrSpeed, CentrifugalPumpOrderNumber, "
               "CentrifugalPumpPhaseAngle",
               integer(pump.CENTRIFUGALPUMPNODE), kilowatt(pump.MCRPOWER), real(pump.MCRSPEED),
               orderCount(pump.CENTRIFUGALPUMPORDERNUMBER),
               degree(pump.CENTRIFUGALPUMPPHASEANGLE)) ||
      !in.line("Centrifugal pump torque order", real(pump.CENTRIFUGALPUMPORDER)) ||
      !in.line("Centrifugal pump torque amplitude", percent(pump.CENTRIFUGALPUMPTORQUEPERCENT))) {
    return false;
  }
  placeMachine(model, model.centrifugalPump, position, id, pump.CENTRIFUGALPUMPNODE,
               MassType::centrifugalPump, ComponentType::centrifugalPump);
  return true;
}

bool readGasTurbine(InputReader& in, ModelBundle& model, std::int32_t position) {
  GASTURBINE_RECORD& turbine = model.gasTurbine.at(position);
  std::int32_t id = 0;
  if (!in.keywordLine(integer(id)) ||
      !in.line("GasTurbineNode, McrPower, McrSpeed", integer(turbine.GASTURBINENODE),
               kilowatt(turbine.MCRPOWER), real(turbine.MCRSPEED))) {
    return false;
  }
  placeMachine(model, model.gasTurbine, position, id, turbine.GASTURBINENODE, MassType::gasTurbine,
               ComponentType::gasTurbine);
  return true;
}

bool readSteamTurbine(InputReader& in, ModelBundle& model, std::int32_t position) {
  STEAMTURBINE_RECORD& turbine = model.steamTurbine.at(position);
  std::int32_t id = 0;
  if (!in.keywordLine(integer(id)) ||
      !in.line("SteamTurbineNode, McrPower, McrSpeed", integer(turbine.STEAMTURBINENODE),
               kilowatt(turbine.MCRPOWER), real(turbine.MCRSPEED))) {
    return false;
  }
  placeMachine(model, model.steamTurbine, position, id, turbine.STEAMTURBINENODE,
               MassType::steamTurbine, ComponentType::steamTurbine);
  return true;
}

}  // namespace verenwick
