#include "ComponentTables/Global_ProgressiveCoupling.h"

namespace verenwick {

std::int32_t GET_PROGRESSIVECOUPLING_IPROGRESSIVECOUPLING_SHAFTNODE(
    const PROGRESSIVECOUPLING_TABLE& table, std::int32_t shaftId) {
  return firstPosition(table, [&](std::int32_t i) {
    return GET_PROGRESSIVECOUPLING_SHAFTNODE(table, i) == shaftId;
  });
}

}  // namespace verenwick
