#include "InputAndChecking/DataChecking.h"

#include "InputAndChecking/CheckList.h"
#include "InputAndChecking/DataFiles.h"
#include "RunControl/CalculationMode.h"

namespace verenwick {
namespace {

bool needsLoadCaseColumns(std::int32_t calculationMode) {
  return calculationMode == forcedOnly || calculationMode == both;
}

bool hasFreeProblem(std::int32_t calculationMode) {
  return calculationMode != reportsOnly && calculationMode != forcedOnly;
}

bool checkTables(ModelBundle& model, std::int32_t calculationMode) {
  CheckLog log;
  const ADJNODE graph(model.mass, model.shaft);
  const ShaftsByNodes shafts(model.shaft);
  checkViscousDampers(model, graph, shafts, hasFreeProblem(calculationMode), log);
  checkRubberDampers(model, graph, shafts, log);
  checkSteelSpringDampers(model, graph, shafts, log);
  checkLinearCouplings(model, log);
  checkProgressiveCouplings(model, log);
  checkGeislingerCouplings(model, log);
  checkDiesels(model, log);
  checkReciprocatingPumps(model, log);
  checkElectricMotors(model, log);
  checkGasTurbines(model, log);
  checkSteamTurbines(model, log);
  checkPropellers(model, log);
  checkGenerators(model, log);
  checkCentrifugalPumps(model, log);
  checkInertias(model, log);
  checkShafts(model, log);
  if (log.passed()) {
    checkShaftLine(model, log);
  }
  if (needsLoadCaseColumns(calculationMode) && model.loadCase.isAllocated()) {
    checkLoadCaseColumns(model, log);
  }
  checkLoadCaseSpeeds(model, log);
  checkGensetPressures(model, log);
  return log.passed();
}

}  // namespace

bool DATACHECKING(ModelBundle& model, std::int32_t calculationMode) {
  // The loaders open the log themselves.
  const bool isSound = checkTables(model, calculationMode);
  const bool isLoaded = loadDataFiles(model);
  return isSound && isLoaded;
}

}  // namespace verenwick
