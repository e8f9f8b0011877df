#include "InputAndChecking/DataFiles.h"

#include "ComponentTables/PropellerFiles.h"
#include "RunControl/Log.h"

namespace verenwick {
namespace {

bool needsHarmonicFile(const DIESEL_TABLE& table) {
  return firstPosition(table, [&](std::int32_t iDiesel) {
           return !GET_DIESEL_ISTHEORETICALPRESURE(table, iDiesel);
         }) > 0;
}

/// Lines of all ice and entrained water files together; a line of ice takes some 170 bytes.
constexpr std::int64_t kMostPropellerLines = 2'000'000;

/// Whether the files of the propellers, as long as their counts make them, find room.
bool canHold(const PROPELLER_TABLE& table) {
  std::int64_t lines = 0;
  for (std::int32_t p = 1; p <= table.number(); ++p) {
    const PROPELLER_RECORD& propeller = table.at(p);
    if (propeller.HASICEEXCITATION) {
      lines += GET_PROPELLER_NICEFOURIERORDERS(table, p);
    }
    if (propeller.ISVARIABLEENTRAINEDWATER) {
      lines += propeller.NLOADCASE;
    }
  }
  if (lines > kMostPropellerLines) {
    appendToLog("Error: The data files of the propellers have", lines, " lines, at most",
                kMostPropellerLines, " can be read");
  }
  return lines <= kMostPropellerLines;
}

bool loadPropellerFiles(PROPELLER_TABLE& table) {
  if (!canHold(table)) {
    return false;
  }
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
