#pragma once

#include "ComponentTables/ComponentTable.h"
#include "ComponentTables/ComponentType.h"
#include "RunControl/Positions.h"

/// The columns of the load case table: one entry a load-carrying component.
namespace verenwick {

// clang-format off
#define LOADCASE_FIELDS(VALUE, ARRAY, LIST, X)                                                                         \
  VALUE(X, ComponentType, COMPONENTTYPE, ComponentType::none, "kind of the component; none while the entry is unused") \
  VALUE(X, std::int32_t, COMPONENTID, 0, "id of the component in its own table")
// clang-format on

VERENWICK_TABLE(LOADCASE, LOADCASE_FIELDS)

/// Size of the table, unused entries included.
inline std::int32_t GET_LOADCASE_NCOMPONENT(const LOADCASE_TABLE& table) { return table.number(); }

/// First position that holds both the kind and the id, 0 if there is none.
std::int32_t GET_LOADCASE_ICOMPONENT(const LOADCASE_TABLE& table, ComponentType type,
                                     std::int32_t id);

/// Number of entries in use.
std::int32_t GET_LOADCASE_COMPONENTNUMBER(const LOADCASE_TABLE& table);

/// Speed of each load case, rpm; no value while no load case section has been read.
class LOADCASE_SPEED {
 public:
  void allocate(std::int32_t loadCases) {
    speeds_.emplace(static_cast<std::size_t>(std::max(loadCases, 0)), 0.0);
  }
  bool isAllocated() const { return speeds_.has_value(); }
  /// Number of load cases, 0 if unallocated.
  std::int32_t number() const { return speeds_ ? static_cast<std::int32_t>(speeds_->size()) : 0; }
  double at(std::int32_t loadCase) const { return (*speeds_)[index(loadCase)]; }
  void set(std::int32_t loadCase, double rpm) { (*speeds_)[index(loadCase)] = rpm; }

 private:
  std::optional<std::vector<double>> speeds_;
};

/// Power in W of each component in each load case. Only what was set takes room; every other
/// element is zero.
class LOADCASE_POWER {
 public:
  void allocate(std::int32_t loadCases) {
    rows_.assign(static_cast<std::size_t>(std::max(loadCases, 0)), {});
  }
  /// @param component position in LOADCASE_TABLE; 0, the result of a failed search, has no power
  double at(std::int32_t component, std::int32_t loadCase) const {
    const auto& row = rows_[index(loadCase)];
    return component >= 1 && index(component) < row.size() ? row[index(component)] : 0.0;
  }
  void set(std::int32_t component, std::int32_t loadCase, double watts) {
    auto& row = rows_[index(loadCase)];
    if (row.size() <= index(component)) {
      row.resize(index(component) + 1, 0.0);
    }
    row[index(component)] = watts;
  }

 private:
  std::vector<std::vector<double>> rows_;
};

}  // namespace verenwick
