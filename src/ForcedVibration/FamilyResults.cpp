#include "ForcedVibration/FamilyResults.h"

namespace verenwick {

void FamilyResults::clear() {
  EXFO.assign(asSize(orders), 0.0);
  OMEGA.assign(asSize(sources), 0.0);
  for (int q = 0; q < results::kQuantities; ++q) {
    const auto quantity = static_cast<Quantity>(q);
    quantities[asSize(q)].clear(asSize(sources) * asSize(orders) * asSize(points.of(quantity)));
  }
}

SourceResults FamilyResults::source(std::int32_t s) {
  SourceResults source{EXFO, OMEGA[index(s)], {}};
  for (int q = 0; q < results::kQuantities; ++q) {
    const std::size_t count = asSize(orders) * asSize(points.of(static_cast<Quantity>(q)));
    source.quantities[asSize(q)] = quantities[asSize(q)].section(index(s) * count, count);
  }
  return source;
}

}  // namespace verenwick
