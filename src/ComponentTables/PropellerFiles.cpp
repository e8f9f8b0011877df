#include "ComponentTables/PropellerFiles.h"

#include "RunControl/DataFile.h"
#include "RunControl/StringOperation.h"

namespace verenwick {
namespace {

/// Headings before the parts of an ice file.
constexpr int kLinesBeforeRatios = 4;
constexpr int kLinesBeforeMean = 3;
constexpr int kLinesBeforeCosines = 4;
constexpr int kLinesBeforeSines = 4;

/// Takes the lines of an ice file into the record.
class IceFile {
 public:
  IceFile(DataFile& file, PROPELLER_RECORD& propeller)
      : file_(file),
        propeller_(propeller),
        ratios_(static_cast<std::size_t>(propeller.NSPEEDRATIO)) {}

  /// @param lines number of lines of the table, from the mean term on
  [[nodiscard]] bool read(std::int32_t lines) {
    propeller_.ICEHARMONICORDER.clear();
    propeller_.ICECOSINE.clear();
    propeller_.ICESINE.clear();
    return file_.skipLines(kLinesBeforeRatios) &&
           file_.numbers(std::span(propeller_.SPEEDRATIO).first(ratios_)) &&
           file_.skipLines(kLinesBeforeMean) && readCosines(1) &&
           file_.skipLines(kLinesBeforeCosines) && readCosines(lines - 1) &&
           file_.skipLines(kLinesBeforeSines) && readSines();
  }

 private:
  /// Each line adds one to the table; the sine of the mean term and of a line not yet read is zero.
  [[nodiscard]] bool readCosines(std::int32_t lines) {
    for (std::int32_t i = 0; i < lines; ++i) {
      std::vector<double> values(ratios_);
      double order = 0.0;
      if (!file_.numbers(order, values)) {
        return false;
      }
      propeller_.ICEHARMONICORDER.push_back(order);
      propeller_.ICECOSINE.insert(propeller_.ICECOSINE.end(), values.begin(), values.end());
      propeller_.ICESINE.resize(propeller_.ICECOSINE.size(), 0.0);
    }
    return true;
  }

  [[nodiscard]] bool readSines() {
    const std::size_t lines = propeller_.ICEHARMONICORDER.size();
    for (std::size_t o = 1; o < lines; ++o) {
      if (!file_.numbers(propeller_.ICEHARMONICORDER[o],
                         std::span(propeller_.ICESINE).subspan(o * ratios_, ratios_))) {
        return false;
      }
    }
    return true;
  }

  DataFile& file_;
  PROPELLER_RECORD& propeller_;
  std::size_t ratios_;
};

}  // namespace

bool LOAD_PROPELLER_EXCITATIONFILE(PROPELLER_TABLE& table, std::int32_t row) {
  PROPELLER_RECORD& propeller = table.at(row);
  if (isBlank(propeller.EXCITATIONFILE)) {
    return true;
  }
  DataFile file(propeller.EXCITATIONFILE);
  return IceFile(file, propeller).read(GET_PROPELLER_NICEFOURIERORDERS(table, row)) ||
         file.reportFailure();
}

bool LOAD_PROPELLER_VARIABLEENTRAINEDWATERFILE(PROPELLER_TABLE& table, std::int32_t row) {
  PROPELLER_RECORD& propeller = table.at(row);
  if (isBlank(propeller.VARIABLEENTRAINEDWATERFILE) || propeller.NLOADCASE <= 0) {
    return true;
  }
  DataFile file(propeller.VARIABLEENTRAINEDWATERFILE);
  propeller.VARIABLEENTRAINEDWATERTABLE.clear();
  for (std::int32_t loadCase = 1; loadCase <= propeller.NLOADCASE; ++loadCase) {
    double inertia = 0.0;
    if (!file.nextLine()) {
      return file.reportFailure();
    }
    std::string line = file.line();
    STRINGWITHOUTFIRSTWORD(line);
    if (!FreeFormat(line).read(inertia)) {
      return file.reportFailure();
    }
    propeller.VARIABLEENTRAINEDWATERTABLE.push_back(inertia);
  }
  return true;
}

}  // namespace verenwick
