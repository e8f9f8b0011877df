#include "ForcedVibration/ShaftPower.h"

#include <cmath>

#include "RunControl/Constants.h"
#include "ShaftLineGraph/BranchPower.h"
#include "ShaftLineGraph/GraphTheory.h"

namespace verenwick {
namespace {

/// How far the two sides of a cut may miss the whole line, kg m2.
constexpr double kInertiaTolerance = single(1e-6F);

/// Calls use(s, sides) for the two sides of every shaft.
template <class Use>
void forEachCut(const ModelBundle& model, Use use) {
  const ADJNODE graph(model.mass, model.shaft);
  for (std::int32_t s = 1; s <= model.shaft.number(); ++s) {
    const auto [org, des] = shaftEnds(model, s);
    use(s, UNDIRECTEDGRAPH_TWOBRANCH(graph, org, des));
  }
}

/// Inertia of one side at the reference speed, kg m2.
double inertiaOf(const MASS_TABLE& mass, const VISITEDNODE& side) {
  double sum = 0.0;
  for (std::int32_t i = 1; i <= mass.number(); ++i) {
    if (side.at(i)) {
      const double ratio = GET_MASS_RPMRATIO(mass, i);
      sum += ratio * ratio * GET_MASS_INERTIA(mass, i);
    }
  }
  return sum;
}

}  // namespace

std::vector<double> CALCULATELOADCASESHAFTPOWER(const ModelBundle& model) {
  const std::int32_t loadCases = model.loadCaseSpeed.number();
  const std::size_t shafts = asSize(model.shaft.number());
  std::vector<double> power(asSize(loadCases) * shafts);
  const BranchPower machines(model, PumpPower::eachCylinderWhole);
  forEachCut(model, [&](std::int32_t s, const TwoBranches& sides) {
    for (std::int32_t loadCase = 1; loadCase <= loadCases; ++loadCase) {
      power[index(loadCase) * shafts + index(s)] =
          machines.passing(sides, model.loadCasePower, loadCase);
    }
  });
  return power;
}

std::vector<double> CALCULATESHAFTINERTIARATIO(const ModelBundle& model) {
  std::vector<double> ratio(asSize(model.shaft.number()), 1.0);
  if (model.propeller.number() != 1) {
    return ratio;
  }
  const std::int32_t propeller =
      GET_MASS_IMASS(model.mass, GET_PROPELLER_PROPELLERNODE(model.propeller, 1));
  const double total = GET_MASS_INERTIAEQUIVALENTTOTAL(model.mass);
  forEachCut(model, [&](std::int32_t s, const TwoBranches& sides) {
    const double org = inertiaOf(model.mass, sides.ORGVISITEDNODE);
    const double des = inertiaOf(model.mass, sides.DESVISITEDNODE);
    if (std::abs(org + des - total) >= kInertiaTolerance || org + des <= 0.0) {
      return;
    }
    const bool isBehindDestination = propeller > 0 && sides.DESVISITEDNODE.at(propeller);
    ratio[index(s)] = (isBehindDestination ? org : des) / (org + des);
  });
  return ratio;
}

}  // namespace verenwick
