#include "ForcedVibration/PropellerIceResults.h"

#include <algorithm>

#include "ForcedVibration/ShaftPower.h"

namespace verenwick {
namespace {

ADJNODE towardsOrigin(const ModelBundle& model) {
  ADJNODE graph(model.mass.number());
  for (std::int32_t s = 1; s <= model.shaft.number(); ++s) {
    const ShaftEnds ends = shaftEnds(model, s);
    graph.set(ends.des, ends.org);
  }
  return graph;
}

/// Speed ratio that stands for the propeller: that of the inertia row whose number is the
/// propeller's id, or of the propeller's own inertia where there is no such row.
double propellerRatio(const ModelBundle& model, std::int32_t propeller) {
  std::int32_t row = GET_PROPELLER_ID(model.propeller, propeller);
  if (row < 1 || row > model.mass.number()) {
    row = GET_MASS_IMASS(model.mass, GET_PROPELLER_PROPELLERNODE(model.propeller, propeller));
  }
  return row > 0 ? GET_MASS_RPMRATIO(model.mass, row) : 1.0;
}

}  // namespace

std::optional<PhaseTable> propellerPhases(const FamilyResults& propeller) {
  const double smallest = *std::min_element(propeller.OMEGA.begin(), propeller.OMEGA.end());
  const double BASE = smallest > 0.0 ? smallest : slowest(propeller.OMEGA);
  return BASE != 0.0 ? std::optional(PhaseTable(Family::propeller, propeller, BASE)) : std::nullopt;
}

void SINGLELOADCASEPROPELLERICESYNTHESIS(const FamilyResults& propeller, Quantity quantity,
                                         const PhaseTable* phases, std::span<double> result) {
  for (std::size_t j = 0; j < result.size(); ++j) {
    result[j] = phases != nullptr
                    ? familyAmplitude(Family::propeller, propeller, quantity, j, *phases)
                    : 0.0;
  }
}

PropellerIce::PropellerIce(const ModelBundle& model)
    : shaftInertiaRatio(CALCULATESHAFTINERTIARATIO(model)),
      graph(towardsOrigin(model)),
      PROPELLERSHAFTMARKS(asSize(model.shaft.number())) {}

double SINGLELOADCASEPROPELLERICEZEROORDERTORQUE(const ModelBundle& model, std::int32_t shaft,
                                                 std::int32_t loadCase, PropellerIce& ice) {
  if (GET_PROPELLER_NUMBER(model.propeller) != 1) {
    return 0.0;
  }
  const std::size_t s = index(shaft);
  const ShaftEnds ends = shaftEnds(model, shaft);
  const double ratio = propellerRatio(model, 1);
  if (loadCase == 1) {
    const bool isOnLine =
        ISDESNODELOCATEDONPROPELLERSHAFT(model.propeller, model.mass, ice.graph, ends.des).isOnLine;
    const bool turnsWithIt = GET_MASS_RPMRATIO(model.mass, ends.org) == ratio &&
                             GET_MASS_RPMRATIO(model.mass, ends.des) == ratio;
    ice.PROPELLERSHAFTMARKS[s] = isOnLine && turnsWithIt ? 1.0 : 2.0;
  }
  if (!GET_PROPELLER_HASICEEXCITATION(model.propeller, 1)) {
    return 0.0;
  }
  return GET_PROPELLER_ICEZEROORDERCOEFFICIENT(model.propeller, 1) * ice.shaftInertiaRatio[s] *
         ratio / GET_SHAFT_RPMRATIO(model.shaft, shaft);
}

}  // namespace verenwick
