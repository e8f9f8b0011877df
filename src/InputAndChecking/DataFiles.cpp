#include "InputAndChecking/DataFiles.h"

#include "ComponentTables/PropellerFiles.h"

namespace verenwick {
namespace {

bool needsHarmonicFile(const DIESEL_TABLE& table) {
  return firstPosition(table, [&](std::int32_t iDiesel) {
           return !GET_DIESEL_ISTHEORETICALPRESURE(table, iDiesel);
         }) > 0;
}

bool loadPropellerFiles(PROPELLER_TABLE& table) {
  bool isInputOk = true;
  for (std::int32_t p = 1; p <= table.number(); ++p) {
    if (GET_PROPELLER_HASICEEXCITATION(table, p)) {
      isInputOk = LOAD_PROPELLER_EXCITATIONFILE(table, p) && isInputOk;
    }
    if (GET_PROPELLER_ISVARIABLEENTRAINEDWATER(table, p)) {
      isInputOk = LOAD_PROPELLER_VARIABLEENTRAINEDWATERFILE(table, p) && isInputOk;
    }
  }
  return isInputOk;
}

bool needsHarmonicFile(const RECIPROCATINGPUMP_TABLE& table) {
  return firstPosition(table, [&](std::int32_t iPump) {
           return !GET_RECIPROCATINGPUMP_ISSIMPLIFIEDPRESSURE(table, iPump);
         }) > 0;
}

}  // namespace

bool loadDataFiles(ModelBundle& model) {
  bool isInputOk = true;
  // One call reads the files of all engines.
  if (needsHarmonicFile(model.diesel)) {
    bool status = true;
    LOADHALDORINFILE(model.diesel, status);
    isInputOk = isInputOk && status;
  }
  isInputOk = loadPropellerFiles(model.propeller) && isInputOk;
  if (needsHarmonicFile(model.reciprocatingPump)) {
    bool status = true;
    LOADHALDORINPUMPFILE(model.reciprocatingPump, status);
    isInputOk = isInputOk && status;
  }
  return isInputOk;
}

}  // namespace verenwick
