#include "ComponentTables/Global_LinearCoupling.h"

namespace verenwick {

std::int32_t GET_LINEARCOUPLING_ILINEARCOUPLING_SHAFTNODE(const LINEARCOUPLING_TABLE& table,
                                                          std::int32_t shaftId) {
  return firstPosition(
      table, [&](std::int32_t i) { return GET_LINEARCOUPLING_SHAFTNODE(table, i) == shaftId; });
}

}  // namespace verenwick
