#include "ShaftLineGraph/BranchPower.h"

#include <algorithm>
#include <cmath>

namespace verenwick {
namespace {

/// Into how many shares the power of an inertia's machine goes, negative for a sink; 0 for an
/// inertia without a machine.
double shareDivisor(const ModelBundle& model, PumpPower pumps, ComponentType type,
                    std::int32_t id) {
  switch (type) {
    case ComponentType::diesel: {
      const std::int32_t diesel = GET_DIESEL_IDIESEL(model.diesel, id);
      return diesel > 0 ? GET_DIESEL_NCYLINDER(model.diesel, diesel) : 0.0;
    }
    case ComponentType::reciprocatingPump: {
      const std::int32_t pump =
          GET_RECIPROCATINGPUMP_IRECIPROCATINGPUMP(model.reciprocatingPump, id);
      if (pump == 0) {
        return 0.0;
      }
      return pumps == PumpPower::eachCylinderWhole
                 ? -1.0
                 : -GET_RECIPROCATINGPUMP_NCYLINDER(model.reciprocatingPump, pump);
    }
    case ComponentType::electricMotor:
    case ComponentType::gasTurbine:
    case ComponentType::steamTurbine:
      return 1.0;
    case ComponentType::propeller:
    case ComponentType::generator:
    case ComponentType::centrifugalPump:
      return -1.0;
    default:
      return 0.0;
  }
}

}  // namespace

BranchPower::BranchPower(const ModelBundle& model, PumpPower pumps) {
  for (std::int32_t node = 1; node <= model.mass.number(); ++node) {
    const ComponentType type = GET_MASS_COMPONENTTYPE(model.mass, node);
    const std::int32_t id = GET_MASS_COMPONENTID(model.mass, node);
    const double divisor = shareDivisor(model, pumps, type, id);
    if (divisor != 0.0) {
      shares_.push_back({node, GET_LOADCASE_ICOMPONENT(model.loadCase, type, id), divisor});
    }
  }
}

double BranchPower::sum(const VISITEDNODE& side, const LOADCASE_POWER& power,
                        std::int32_t loadCase) const {
  double total = 0.0;
  for (const Share& share : shares_) {
    if (side.at(share.node)) {
      total += power.at(share.column, loadCase) / share.divisor;
    }
  }
  return total;
}

double BranchPower::passing(const TwoBranches& sides, const LOADCASE_POWER& power,
                            std::int32_t loadCase) const {
  const double org = sum(sides.ORGVISITEDNODE, power, loadCase);
  const double des = sum(sides.DESVISITEDNODE, power, loadCase);
  const double larger = std::max(org, des);
  return std::abs(larger <= 0.0 ? std::min(org, des) : larger);
}

}  // namespace verenwick
