#include "ComponentTables/Global_GeislingerCoupling.h"

namespace verenwick {

std::int32_t GET_GEISLINGERCOUPLING_IGEISLINGERCOUPLING_SHAFTNODE(
    const GEISLINGERCOUPLING_TABLE& table, std::int32_t shaftId) {
  return firstPosition(
      table, [&](std::int32_t i) { return GET_GEISLINGERCOUPLING_SHAFTNODE(table, i) == shaftId; });
}

}  // namespace verenwick
