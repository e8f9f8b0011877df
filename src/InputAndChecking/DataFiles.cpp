#include "InputAndChecking/DataFiles.h"

namespace verenwick {
namespace {

bool needsHarmonicFile(const DIESEL_TABLE& table) {
  return firstPosition(table, [&](std::int32_t iDiesel) {
           return !GET_DIESEL_ISTHEORETICALPRESURE(table, iDiesel);
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
  return isInputOk;
}

}  // namespace verenwick
