#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "ComponentTables/ModelBundle.h"
#include "RunControl/Log.h"
#include "ShaftLineGraph/GraphTheory.h"

/// The form of the checks: each is one statement that says what is wrong, in which words, and the
/// value that is to blame. The words of a check with values end in "(".
namespace verenwick {

/// More messages of one kind than anyone reads.
inline constexpr std::int64_t kMostMessages = 10'000;

/// Where the checks of a run write what they find. Their words are the system's own, by which hosts
/// know them: "orginal", "connneted", "unaccessable" and "Eletric" stay.
class CheckLog {
 public:
  template <class... Pieces>
  void error(const Pieces&... pieces) {
    log_->record("Error: ", pieces...);
    passed_ = false;
  }
  /// Something that an engineer should look at, but that refuses no model.
  template <class... Pieces>
  void warning(const Pieces&... pieces) {
    log_->record("Warning: ", pieces...);
  }
  /// Runs a loader of a data file, which writes its own messages, with the log closed.
  template <class Loader>
  void load(Loader succeeds) {
    log_.reset();
    passed_ = succeeds() && passed_;
    log_.emplace(Opening::append);
  }
  /// Whether there was no error so far.
  bool passed() const { return passed_; }

 private:
  std::optional<Log> log_{Opening::append};
  bool passed_ = true;
};

/// The checks of one record of a table.
class RecordChecks {
 public:
  /// @param kind the record's kind as its messages name it
  RecordChecks(CheckLog& log, std::string_view kind, std::int32_t id)
      : log_(log), kind_(kind), id_(id) {}

  template <class... Values>
  void error(bool isWrong, std::string_view words, const Values&... values) {
    if (isWrong) {
      log_.error(kind_, id_, words, values..., end(values...));
    }
  }
  template <class... Values>
  void warning(bool isWrong, std::string_view words, const Values&... values) {
    if (isWrong) {
      log_.warning(kind_, id_, words, values..., end(values...));
    }
  }
  /// An error, or a warning where it does not stand in the way of the run.
  template <class... Values>
  void errorOrWarning(bool isError, bool isWrong, std::string_view words, const Values&... values) {
    error(isWrong && isError, words, values...);
    warning(isWrong && !isError, words, values...);
  }
  CheckLog& log() { return log_; }
  std::int32_t id() const { return id_; }

 private:
  template <class... Values>
  static std::string_view end(const Values&... /*values*/) {
    return sizeof...(Values) > 0 ? ")" : "";
  }

  CheckLog& log_;
  std::string_view kind_;
  std::int32_t id_;
};

/// Finds ids that records of one kind share. Every record names every earlier one of the same id,
/// which grows with the square of their number: beyond a limit only the number is told.
class SharedIds {
 public:
  SharedIds(CheckLog& log, std::string_view kind) : log_(log), kind_(kind) {}
  void check(std::int32_t id);
  /// Tells how many messages there would have been beyond the limit.
  void reportRest();

 private:
  CheckLog& log_;
  std::string_view kind_;
  std::unordered_map<std::int32_t, std::int64_t> records_;
  std::int64_t matches_ = 0;
};

/// Goes through a table: first the record's id, then the checks of its kind.
/// @param kind   the kind as its messages name it
/// @param checks called with the record's checks and its position
template <class Table, class Checks>
void checkRecords(CheckLog& log, std::string_view kind, const Table& table, Checks checks) {
  SharedIds ids(log, kind);
  for (std::int32_t position = 1; position <= table.number(); ++position) {
    const std::int32_t id = table.id(position);
    ids.check(id);
    RecordChecks record(log, kind, id);
    checks(record, position);
  }
  ids.reportRest();
}

inline bool isInertia(const ModelBundle& model, std::int32_t id) {
  return GET_MASS_IMASS(model.mass, id) > 0;
}

inline bool isShaft(const ModelBundle& model, std::int32_t id) {
  return GET_SHAFT_ISHAFT(model.shaft, id) > 0;
}

/// A number of orders below 0 means none.
inline void warnOfNegativeCount(std::int32_t orders, RecordChecks& it) {
  it.warning(orders < 0, " has a negative number of orders, none is in use (", orders);
}

// The checks of each kind, in their order.
/// @param hasFreeProblem whether the run calculates natural frequencies
void checkViscousDampers(ModelBundle& model, const ADJNODE& graph, const ShaftsByNodes& shafts,
                         bool hasFreeProblem, CheckLog& log);
void checkRubberDampers(const ModelBundle& model, const ADJNODE& graph, const ShaftsByNodes& shafts,
                        CheckLog& log);
void checkSteelSpringDampers(const ModelBundle& model, const ADJNODE& graph,
                             const ShaftsByNodes& shafts, CheckLog& log);
void checkLinearCouplings(const ModelBundle& model, CheckLog& log);
void checkProgressiveCouplings(const ModelBundle& model, CheckLog& log);
void checkGeislingerCouplings(const ModelBundle& model, CheckLog& log);
void checkDiesels(const ModelBundle& model, CheckLog& log);
void checkReciprocatingPumps(const ModelBundle& model, CheckLog& log);
void checkElectricMotors(const ModelBundle& model, CheckLog& log);
void checkGasTurbines(const ModelBundle& model, CheckLog& log);
void checkSteamTurbines(const ModelBundle& model, CheckLog& log);
void checkPropellers(const ModelBundle& model, CheckLog& log);
void checkGenerators(const ModelBundle& model, CheckLog& log);
void checkCentrifugalPumps(const ModelBundle& model, CheckLog& log);
void checkInertias(const ModelBundle& model, CheckLog& log);
void checkShafts(const ModelBundle& model, CheckLog& log);
/// All inertias joined by shafts, without a ring.
void checkShaftLine(const ModelBundle& model, CheckLog& log);
/// A load case column for every machine.
void checkLoadCaseColumns(const ModelBundle& model, CheckLog& log);
/// A speed in every load case.
void checkLoadCaseSpeeds(const ModelBundle& model, CheckLog& log);
/// Pressures in every load case for engines that take them from the genset file.
void checkGensetPressures(const ModelBundle& model, CheckLog& log);

}  // namespace verenwick
