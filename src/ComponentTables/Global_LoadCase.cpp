#include "ComponentTables/Global_LoadCase.h"

namespace verenwick {

std::int32_t GET_LOADCASE_ICOMPONENT(const LOADCASE_TABLE& table, ComponentType type,
                                     std::int32_t id) {
  return firstPosition(table, [&](std::int32_t i) {
    return GET_LOADCASE_COMPONENTTYPE(table, i) == type && GET_LOADCASE_COMPONENTID(table, i) == id;
  });
}

std::int32_t GET_LOADCASE_COMPONENTNUMBER(const LOADCASE_TABLE& table) {
  std::int32_t count = 0;
  for (std::int32_t i = 1; i <= table.number(); ++i) {
    count += GET_LOADCASE_COMPONENTTYPE(table, i) != ComponentType::none ? 1 : 0;
  }
  return count;
}

}  // namespace verenwick
