#include <array>

#include "InputAndChecking/InputSections.h"
#include "RunControl/DataFile.h"

namespace verenwick {
namespace {

/// A kind of component that can have a column in the load case table.
struct LoadKind {
  std::string_view keyword;  ///< in the type row
  std::string_view name;     ///< in messages
  ComponentType type;
  std::int32_t (*find)(const ModelBundle& model, std::int32_t id);
};

using M = ModelBundle;
using enum ComponentType;

constexpr std::array kLoadKinds = {
    LoadKind{"DIESEL", "Diesel", diesel, positionById<&M::diesel>},
    LoadKind{"RECIPROCATINGPUMP", "ReciprocatingPump", reciprocatingPump,
             positionById<&M::reciprocatingPump>},
    LoadKind{"PROPELLER", "Propeller", propeller, positionById<&M::propeller>},
    LoadKind{"LINEARCOUPLING", "LinearCoupling", linearCoupling, positionById<&M::linearCoupling>},
    LoadKind{"PROGRESSIVECOUPLING", "ProgressiveCoupling", progressiveCoupling,
             positionById<&M::progressiveCoupling>},
    LoadKind{"GEISLINGERCOUPLING", "GeislingerCoupling", geislingerCoupling,
             positionById<&M::geislingerCoupling>},
    LoadKind{"ELECTRICMOTOR", "ElectricMotor", electricMotor, positionById<&M::electricMotor>},
    LoadKind{"GENERATOR", "Generator", generator, positionById<&M::generator>},
    LoadKind{"CENTRIFUGALPUMP", "CentrifugalPump", centrifugalPump,
             positionById<&M::centrifugalPump>},
    LoadKind{"GASTURBINE", "GasTurbine", gasTurbine, positionById<&M::gasTurbine>},
    LoadKind{"STEAMTURBINE", "SteamTurbine", steamTurbine, positionById<&M::steamTurbine>},
};

constexpr std::string_view kMessage =
    "Error occurs when reading loadcase settings in input file line ";

/// Takes the first word of a line, in upper case, away from it.
std::string takeWord(std::string& line) {
  std::string word{firstWord(line)};
  STRINGUPCASE(word);
  STRINGWITHOUTFIRSTWORD(line);
  return word;
}

template <class Value>
bool readWord(const std::string& word, Value& value) {
  return FreeFormat(word).read(value);
}

/// Reads the ids behind "RPM" and the kinds in the row below it. All messages name the id row.
bool readColumns(InputReader& in, ModelBundle& model, std::string ids, std::string kinds,
                 std::int32_t idLine) {
  std::int32_t column = 0;
  takeWord(ids);
  while (!isBlank(ids)) {
    const std::string idWord = takeWord(ids);
    const std::string kindWord = takeWord(kinds);
    std::int32_t id = 0;
    if (!readWord(idWord, id)) {
      in.log().record(
          "Error occurs when reading \"ArcherNumber, FrahmNumber,  KnucklePoint, TorquePercent1, "
          "TorquePercent2, ExcitationPhase, ConsiderPhaseAngle\" in input file line ",
          idLine);
      return false;
    }
    const auto* kind = std::find_if(kLoadKinds.begin(), kLoadKinds.end(),
                                    [&](const LoadKind& k) { return k.keyword == kindWord; });
    if (kind == kLoadKinds.end()) {
      in.log().record(kMessage, idLine);
      in.log().record("Warning: Load case column", id, " has the unknown kind ", kindWord,
                      ", it is dropped and the powers move up by one column");
      continue;
    }
    if (kind->find(model, id) == 0) {
      in.log().record(kMessage, idLine, " (", kind->name, " ", id, " is not defined)");
      return false;
    }
    if (GET_LOADCASE_ICOMPONENT(model.loadCase, kind->type, id) > 0) {
      in.log().record("Warning: ", kind->name, id,
                      " has more than one load case column, the first one counts");
    }
    if (++column <= GET_LOADCASE_NCOMPONENT(model.loadCase)) {
      SET_LOADCASE_COMPONENTTYPE(model.loadCase, column, kind->type);
      SET_LOADCASE_COMPONENTID(model.loadCase, column, id);
    }
  }
  return true;
}

/// Reads one row: the speed, then one power in kilowatts a column.
bool readRow(InputReader& in, ModelBundle& model, std::int32_t loadCase, std::int32_t idLine) {
  std::string words = in.line();
  double rpm = 0.0;
  if (!readWord(takeWord(words), rpm)) {
    in.log().record("Error occurs when reading \"LoadCase_Speed\" in input file line ", idLine);
    return false;
  }
  model.loadCaseSpeed.set(loadCase, rpm);
  const std::int32_t columns = GET_LOADCASE_NCOMPONENT(model.loadCase);
  for (std::int32_t column = 1; column <= columns && !isBlank(words); ++column) {
    double kilowatts = 0.0;
    if (!readWord(takeWord(words), kilowatts)) {
      in.log().record(
          "Error occurs when reading \"Id, SubId, LoadCase_Power(iLoadCase,:)\" in input file "
          "line ",
          idLine);
      return false;
    }
    model.loadCasePower.set(column, loadCase, kilowatts * 1000.0);
  }
  return true;
}

}  // namespace

bool readLoadCases(InputReader& in, ModelBundle& model) {
  const std::int32_t loadCases = in.state.loadCases;
  if (loadCases <= 0) {
    in.log().record(kMessage, in.lineNumber(), " : No load case defined");
    return false;
  }
  model.loadCaseSpeed.allocate(loadCases);
  model.loadCasePower.allocate(loadCases);
  std::string keyword;
  do {
    if (!in.nextLine()) {
      return true;
    }
    keyword = firstWord(in.line());
    STRINGUPCASE(keyword);
  } while (keyword != "RPM");
  const std::int32_t idLine = in.lineNumber();
  const std::string ids = in.line();
  const std::string kinds = in.nextLine() ? in.line() : std::string();
  if (!readColumns(in, model, ids, kinds, idLine)) {
    return false;
  }
  for (std::int32_t loadCase = 1; loadCase <= loadCases && in.nextLine(); ++loadCase) {
    if (isBlank(in.line())) {
      in.log().record("Warning: Load case table ends at a blank line, load case", loadCase,
                      " and those behind it have speed and power 0");
      break;
    }
    if (!readRow(in, model, loadCase, idLine)) {
      return false;
    }
  }
  return true;
}

bool readGensetFile(ModelBundle& model) {
  DataFile file(resultFileAddress(results::resultFile("Genset.txt").name));
  if (!file.isOpen()) {
    return file.nextLine() || file.reportFailure();
  }
  // One record for each diesel in each load case; a host may not size them by counts alone.
  constexpr std::int64_t kMostRecords = 10'000'000;
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
    if (!integer(record.DIESELID).readFrom(line) || !bar(record.PRESSUREMAX).readFrom(line) ||
        !bar(record.PRESSURECOMP).readFrom(line)) {
      return file.reportFailure();
    }
  }
  return true;
}

}  // namespace verenwick
