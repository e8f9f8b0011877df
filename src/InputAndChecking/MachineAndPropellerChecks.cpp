#include <algorithm>
#include <span>

#include "InputAndChecking/CheckList.h"
#include "RunControl/StringOperation.h"

namespace verenwick {
namespace {

/// What all machines that sit on one inertia share.
template <class Machine>
void checkRotatingMachine(const ModelBundle& model, const Machine& machine, std::int32_t node,
                          std::string_view nodeWords, RecordChecks& it) {
  it.error(!isInertia(model, node), nodeWords, node);
  it.error(machine.MCRPOWER <= 0.0, " has a zero or negative mcr power (", machine.MCRPOWER);
  it.error(machine.MCRSPEED <= 0.0, " has a zero or negative mcr speed (", machine.MCRSPEED);
}

/// The orders in use excite in positive direction of time.
void checkOrders(std::span<const double> orders, std::int32_t inUse, RecordChecks& it) {
  warnOfNegativeCount(inUse, it);
  const auto count = static_cast<std::size_t>(std::max(inUse, 0));
  for (const double order : orders.first(std::min(count, orders.size()))) {
    it.error(order < 0.0, " has a negative order (", order);
  }
}

void warnOfNoExcitation(double torquePercent, std::string_view words, RecordChecks& it) {
  if (torquePercent == 0.0) {
    it.log().warning("Propeller excitation data missing for Propeller", it.id(), words);
  }
}

// Most kinds share the words of the electric motor.
constexpr std::string_view kNodeNotListed =
    " has a electric motor node not listed in Inertia table (";

}  // namespace

void checkElectricMotors(const ModelBundle& model, CheckLog& log) {
  checkRecords(log, "Electric motor", model.electricMotor, [&](RecordChecks& id, std::int32_t i) {
    const ELECTRICMOTOR_RECORD& motor = model.electricMotor.at(i);
    RecordChecks it(log, "Eletric motor", id.id());  // spelled so
    checkRotatingMachine(model, motor, motor.ELECTRICMOTORNODE, kNodeNotListed, it);
    checkOrders(motor.MOTORORDER, motor.MOTORORDERNUMBER, it);
  });
}

void checkGasTurbines(const ModelBundle& model, CheckLog& log) {
  checkRecords(log, "Gas turbine", model.gasTurbine, [&](RecordChecks& it, std::int32_t i) {
    const GASTURBINE_RECORD& turbine = model.gasTurbine.at(i);
    checkRotatingMachine(model, turbine, turbine.GASTURBINENODE, kNodeNotListed, it);
  });
}

void checkSteamTurbines(const ModelBundle& model, CheckLog& log) {
  checkRecords(log, "Steam turbine", model.steamTurbine, [&](RecordChecks& it, std::int32_t i) {
    const STEAMTURBINE_RECORD& turbine = model.steamTurbine.at(i);
    checkRotatingMachine(model, turbine, turbine.STEAMTURBINENODE, kNodeNotListed, it);
  });
}

void checkPropellers(const ModelBundle& model, CheckLog& log) {
  checkRecords(log, "Propeller", model.propeller, [&](RecordChecks& it, std::int32_t i) {
    const PROPELLER_RECORD& propeller = model.propeller.at(i);
    const auto method = static_cast<PropellerDamping>(propeller.DAMPINGMETHOD);
    const double knuckle = propeller.KNUCKLEPOINT / 100.0;
    checkRotatingMachine(model, propeller, propeller.PROPELLERNODE,
                         " has a propeller node not listed in Inertia table (", it);
    it.error(propeller.NBLADE < 1, " has a zero or negative number of blades (", propeller.NBLADE);
    it.error(propeller.DB < 0.0, " has a negative boss diameter (", propeller.DB);
    it.error(propeller.DI < 0.0, " has a negative propeller diameter (", propeller.DI);
    it.error(propeller.PITCHRATIO < 0.0, " has a negative pitch ratio (", propeller.PITCHRATIO);
    // No value is both: an expanded area ratio above 1 is a wide bladed propeller, and passes.
    it.error(propeller.EXPAREARATIO < 0.0 && propeller.EXPAREARATIO > 1.0,
             " has a negative or larger than 100% expansive area ratio (", propeller.EXPAREARATIO);
    it.error(method == PropellerDamping::archer &&
                 (propeller.ARCHERNUMBER < 20.0 || propeller.ARCHERNUMBER > 50.0),
             " has a Archer number no greater than 20.0 or no less than 50.0(",
             propeller.ARCHERNUMBER);
    it.error(method == PropellerDamping::frahm &&
                 (propeller.FRAHMNUMBER < 1.0 || propeller.FRAHMNUMBER > 5.0),
             " has a Frahm number no greater than 1.0 or no less than 5.0(", propeller.FRAHMNUMBER);
    it.error(method == PropellerDamping::variable && (knuckle < 0.0 || knuckle > 1.0),
             " has a KnucklePoint no greater than 0 or no less than 1.2(", propeller.KNUCKLEPOINT);
    it.error(propeller.PITCHPERCENT < 0.0 || propeller.PITCHPERCENT > 1.0,
             " has a negative or larger than 100% pitch percent (", propeller.PITCHPERCENT);
    it.error(propeller.DYNMAGNIFIER < 0.0, " has a negative dynamic magnifier (",
             propeller.DYNMAGNIFIER);
    it.error(propeller.ABSDAMPING < 0.0, " has a negative absolute damping (",
             propeller.ABSDAMPING);
    it.error(propeller.TORQUEPERCENT1 < 0.0, " has a negative 1st order torque amplitude (",
             propeller.TORQUEPERCENT1);
    warnOfNoExcitation(propeller.TORQUEPERCENT1, "'s 1st order excitation", it);
    it.error(propeller.TORQUEPERCENT2 < 0.0, " has a negative 2nd order torque amplitude (",
             propeller.TORQUEPERCENT2);
    warnOfNoExcitation(propeller.TORQUEPERCENT2, "'s 2nd order excitation", it);
    it.warning(propeller.HASICEEXCITATION && isBlank(propeller.EXCITATIONFILE),
               " has ice excitation without a file, the ice gives no torque");
  });
}

void checkGenerators(const ModelBundle& model, CheckLog& log) {
  checkRecords(log, "Generator", model.generator, [&](RecordChecks& it, std::int32_t i) {
    const GENERATOR_RECORD& generator = model.generator.at(i);
    checkRotatingMachine(model, generator, generator.GENERATORNODE, kNodeNotListed, it);
    checkOrders(generator.GENERATORORDER, generator.GENERATORORDERNUMBER, it);
  });
}

void checkCentrifugalPumps(const ModelBundle& model, CheckLog& log) {
  checkRecords(
      log, "Centrifugal pump", model.centrifugalPump, [&](RecordChecks& it, std::int32_t i) {
        const CENTRIFUGALPUMP_RECORD& pump = model.centrifugalPump.at(i);
        checkRotatingMachine(model, pump, pump.CENTRIFUGALPUMPNODE,
                             " has a Centrifugal pump node not listed in Inertia table (", it);
        checkOrders(pump.CENTRIFUGALPUMPORDER, pump.CENTRIFUGALPUMPORDERNUMBER, it);
      });
}

}  // namespace verenwick
