#include "ComponentTables/Global_Shaft.h"

#include <algorithm>

namespace verenwick {

std::int32_t GET_SHAFT_ISHAFTBYNODE(const SHAFT_TABLE& table, std::int32_t node1,
                                    std::int32_t node2) {
  const std::int32_t n = table.number();
  for (std::int32_t position = 1; position < n; ++position) {
    const std::int32_t org = GET_SHAFT_ORGNODE(table, position);
    const std::int32_t des = GET_SHAFT_DESNODE(table, position);
    if ((org == node1 && des == node2) || (org == node2 && des == node1)) {
      return position;
    }
  }
  return n;
}

ShaftsByNodes::ShaftsByNodes(const SHAFT_TABLE& table) {
  ends_.allocate(table.number());
  for (std::int32_t position = 1; position <= table.number(); ++position) {
    set(position, GET_SHAFT_ORGNODE(table, position), GET_SHAFT_DESNODE(table, position));
  }
}

void ShaftsByNodes::set(std::int32_t position, std::int32_t orgNode, std::int32_t desNode) {
  ends_.set(position, std::minmax(orgNode, desNode));
}

std::int32_t ShaftsByNodes::between(std::int32_t node1, std::int32_t node2) const {
  const std::int32_t position = ends_.first(std::minmax(node1, node2));
  return position > 0 ? position : ends_.number();
}

bool GET_SHAFT_ISDAMPER(const SHAFT_TABLE& table, std::int32_t position,
                        const VISCOUSDAMPER_TABLE& viscousDamper,
                        const RUBBERDAMPER_TABLE& rubberDamper,
                        const STEELSPRINGDAMPER_TABLE& steelSpringDamper) {
  if (!table.isAllocated()) {
    return false;
  }
  for (std::int32_t i = 1; i <= viscousDamper.number(); ++i) {
    if (GET_SHAFT_ISHAFTBYNODE(table, GET_VISCOUSDAMPER_CASINGNODE(viscousDamper, i),
                               GET_VISCOUSDAMPER_RINGNODE(viscousDamper, i)) == position) {
      return true;
    }
  }
  for (std::int32_t i = 1; i <= rubberDamper.number(); ++i) {
    if (GET_SHAFT_ISHAFTBYNODE(table, GET_RUBBERDAMPER_DRIVEPLATENODE(rubberDamper, i),
                               GET_RUBBERDAMPER_TURNINGMASSNODE(rubberDamper, i)) == position) {
      return true;
    }
  }
  for (std::int32_t i = 1; i <= steelSpringDamper.number(); ++i) {
    if (GET_SHAFT_ISHAFTBYNODE(table, GET_STEELSPRINGDAMPER_OUTERMEMBERNODE(steelSpringDamper, i),
                               GET_STEELSPRINGDAMPER_INNERMEMBERNODE(steelSpringDamper, i)) ==
        position) {
      return true;
    }
  }
  return false;
}

bool GET_SHAFT_ISCOUPLING(const SHAFT_TABLE& table, std::int32_t position,
                          const LINEARCOUPLING_TABLE& linearCoupling,
                          const PROGRESSIVECOUPLING_TABLE& progressiveCoupling,
                          const GEISLINGERCOUPLING_TABLE& geislingerCoupling) {
  if (!table.isAllocated()) {
    return false;
  }
  const std::int32_t id = GET_SHAFT_ID(table, position);
  return GET_LINEARCOUPLING_ILINEARCOUPLING_SHAFTNODE(linearCoupling, id) > 0 ||
         GET_PROGRESSIVECOUPLING_IPROGRESSIVECOUPLING_SHAFTNODE(progressiveCoupling, id) > 0 ||
         GET_GEISLINGERCOUPLING_IGEISLINGERCOUPLING_SHAFTNODE(geislingerCoupling, id) > 0;
}

}  // namespace verenwick
