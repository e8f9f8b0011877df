#include "ComponentTables/Global_LoadCaseGenset.h"

namespace verenwick {
namespace {

/// Position of the record of a diesel in a load case; 0 if there is none.
std::int32_t positionOf(const LOADCASEGENSET_TABLE& table, std::int32_t dieselId,
                        std::int32_t loadCase) {
  const std::int32_t first = GET_LOADCASEGENSET_ILOADCASEGENSET(table, dieselId);
  const bool isFound = first > 0 && first < table.number();
  return isFound && loadCase <= table.number() - first + 1 ? first + loadCase - 1 : 0;
}

}  // namespace

double GET_LOADCASEGENSET_PRESSUREMAX(const LOADCASEGENSET_TABLE& table, std::int32_t dieselId,
                                      std::int32_t loadCase) {
  const std::int32_t position = positionOf(table, dieselId, loadCase);
  return position > 0 ? GET_LOADCASEGENSET_PRESSUREMAX(table, position) : 0.0;
}

double GET_LOADCASEGENSET_PRESSURECOMP(const LOADCASEGENSET_TABLE& table, std::int32_t dieselId,
                                       std::int32_t loadCase) {
  const std::int32_t position = positionOf(table, dieselId, loadCase);
  return position > 0 ? GET_LOADCASEGENSET_PRESSURECOMP(table, position) : 0.0;
}

}  // namespace verenwick
