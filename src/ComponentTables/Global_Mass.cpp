#include "ComponentTables/Global_Mass.h"

namespace verenwick {

double GET_MASS_INERTIAEQUIVALENTTOTAL(const MASS_TABLE& table) {
  double total = 0.0;
  for (std::int32_t i = 1; i <= table.number(); ++i) {
    const double ratio = GET_MASS_RPMRATIO(table, i);
    total += ratio * ratio * GET_MASS_INERTIA(table, i);
  }
  return total;
}

std::int32_t GET_MASS_NUMBERNONEVISCOUSDAMPERRINGMASS(const MASS_TABLE& table) {
  return GET_MASS_NNOTVISCOUSDAMPERRINGMASS(table, table.number());
}

std::int32_t GET_MASS_NNOTVISCOUSDAMPERRINGMASS(const MASS_TABLE& table, std::int32_t position) {
  std::int32_t count = 0;
  for (std::int32_t i = 1; i <= position; ++i) {
    count += GET_MASS_MASSTYPE(table, i) != MassType::viscousDamperRing ? 1 : 0;
  }
  return count;
}

std::int32_t GET_MASS_NNOTVISCOUSDAMPERRINGSHAFT(const MASS_TABLE& table, std::int32_t id) {
  const std::int32_t position = GET_MASS_IMASS(table, id);
  return GET_MASS_NNOTVISCOUSDAMPERRINGMASS(table, position > 0 ? position : table.number());
}

}  // namespace verenwick
