#include "InputAndChecking/InputSections.h"
#include "RunControl/Constants.h"
#include "RunControl/DataFile.h"

namespace verenwick {

bool readGensetFile(ModelBundle& model) {
  DataFile file(resultFileAddress(results::resultFile("Genset.txt")));
  if (!file.isOpen()) {
    return file.nextLine() || file.reportFailure();
  }
  // One record for each diesel in each load case; a host may not size them by counts alone.
  constexpr std::int64_t kMostRecords = 1'000'000;
  const std::int64_t records =
      std::int64_t{model.loadCaseSpeed.number()} * GET_DIESEL_NUMBER(model.diesel);
  if (records > kMostRecords) {
    appendToLog("Error: ", records, " genset records are more than ", kMostRecords);
    return false;
  }
  ALLOCATE_LOADCASEGENSET_TABLE(model.loadCaseGenset, static_cast<std::int32_t>(records));
  for (std::int32_t position = 1; position <= records; ++position) {
    if (!file.nextLine() || isBlank(file.line())) {
      break;
    }
    LOADCASEGENSET_RECORD& record = model.loadCaseGenset.at(position);
    FreeFormat line(file.line());
    std::int32_t dieselId = 0;
    double maximum = 0.0;
    double compression = 0.0;
    if (!line.read(dieselId) || !line.read(maximum) || !line.read(compression)) {
      return file.reportFailure();
    }
    record.PRESSUREMAX = maximum * kBar;
    record.PRESSURECOMP = compression * kBar;
    SET_LOADCASEGENSET_DIESELID(model.loadCaseGenset, position, dieselId);
  }
  return true;
}

}  // namespace verenwick
