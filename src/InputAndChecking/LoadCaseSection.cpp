#include <algorithm>
#include <array>
#include <utility>

#include "InputAndChecking/InputSections.h"

namespace verenwick {
namespace {

/// A kind of component that can have a column in the load case table.
struct LoadKind {
  std::string_view keyword;  ///< in the type row
  std::string_view name;     ///< in messages
  ComponentType type;
};

using enum ComponentType;

constexpr std::array kLoadKinds = {
    LoadKind{"DIESEL", "Diesel", diesel},
    LoadKind{"RECIPROCATINGPUMP", "ReciprocatingPump", reciprocatingPump},
    LoadKind{"PROPELLER", "Propeller", propeller},
    LoadKind{"LINEARCOUPLING", "LinearCoupling", linearCoupling},
    LoadKind{"PROGRESSIVECOUPLING", "ProgressiveCoupling", progressiveCoupling},
    LoadKind{"GEISLINGERCOUPLING", "GeislingerCoupling", geislingerCoupling},
    LoadKind{"ELECTRICMOTOR", "ElectricMotor", electricMotor},
    LoadKind{"GENERATOR", "Generator", generator},
    LoadKind{"CENTRIFUGALPUMP", "CentrifugalPump", centrifugalPump},
    LoadKind{"GASTURBINE", "GasTurbine", gasTurbine},
    LoadKind{"STEAMTURBINE", "SteamTurbine", steamTurbine},
};

static_assert(std::equal(kLoadKinds.begin(), kLoadKinds.end(), input::kColumnKinds.begin(),
                         input::kColumnKinds.end(),
                         [](const LoadKind& kind, std::string_view word) {
                           return kind.keyword == word;
                         }));

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
  return input::FreeFormat(word).read(value);
}

/// Reads the ids behind "RPM" and the kinds in the row below it. All messages name the id row.
/// @param named out: number of columns, those of unknown kinds included
bool readColumns(InputReader& in, ModelBundle& model, std::string ids, std::string kinds,
                 std::int32_t idLine, std::int32_t& named) {
  std::int32_t column = 0;
  takeWord(ids);
  for (named = 0; !isBlank(ids); ++named) {
    const std::string idWord = takeWord(ids);
    const std::string kindWord = takeWord(kinds);
    std::int32_t id = 0;
    if (!readWord(idWord, id)) {
      // No slip: users know a fault of this row by the words of the propeller's line.
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
    if (componentPosition(model, kind->type, id) == 0) {
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
/// @param powers out: number of powers in the row
bool readRow(InputReader& in, ModelBundle& model, std::int32_t loadCase, std::int32_t idLine,
             std::int32_t& powers) {
  std::string words = in.line();
  double rpm = 0.0;
  if (!readWord(takeWord(words), rpm)) {
    in.log().record("Error occurs when reading \"LoadCase_Speed\" in input file line ", idLine);
    return false;
  }
  model.loadCaseSpeed.set(loadCase, rpm);
  const std::int32_t columns = GET_LOADCASE_NCOMPONENT(model.loadCase);
  for (powers = 0; !isBlank(words); ++powers) {
    double kilowatts = 0.0;
    if (!readWord(takeWord(words), kilowatts)) {
      in.log().record(
          "Error occurs when reading \"Id, SubId, LoadCase_Power(iLoadCase,:)\" in input file "
          "line ",
          idLine);
      return false;
    }
    if (powers < columns) {
      model.loadCasePower.set(powers + 1, loadCase, kilowatts * 1000.0);
    }
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
  std::int32_t columns = 0;
  if (!readColumns(in, model, ids, kinds, idLine, columns)) {
    return false;
  }
  bool hasWarned = false;
  for (std::int32_t loadCase = 1; loadCase <= loadCases && in.nextLine(); ++loadCase) {
    if (isBlank(in.line())) {
      in.log().record("Warning: Load case table ends at a blank line, load case", loadCase,
                      " and those behind it have speed and power 0");
      break;
    }
    std::int32_t powers = 0;
    if (!readRow(in, model, loadCase, idLine, powers)) {
      return false;
    }
    if (powers > columns && !std::exchange(hasWarned, true)) {
      in.log().record("Warning: Load case", loadCase, " has", powers, " powers for", columns,
                      " columns, the surplus is left out here and in the rows behind");
    }
  }
  return true;
}

}  // namespace verenwick
