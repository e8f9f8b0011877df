#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "ComponentTables/ModelBundle.h"
#include "ForcedVibration/FamilyResults.h"
#include "ForcedVibration/Synthesis.h"
#include "ShaftLineGraph/GraphTheory.h"

/// What a line with a propeller in ice gets beside the usual results.
namespace verenwick {

/// The phases of the propellers over one turn of the slowest that turns; none if all stand still.
std::optional<PhaseTable> propellerPhases(const FamilyResults& propeller);

/// Amplitude at every point of what the propellers alone cause: half the peak-to-peak range of
/// their waveform.
/// @param phases null for propellers that stand still: the result is 0 then
void SINGLELOADCASEPROPELLERICESYNTHESIS(const FamilyResults& propeller, Quantity quantity,
                                         const PhaseTable* phases, std::span<double> result);

/// Which way the steady part of the ice load goes, and what lies on the propeller's line.
struct PropellerIce {
  explicit PropellerIce(const ModelBundle& model);

  std::vector<double> shaftInertiaRatio;  ///< share of the ice load that each shaft carries
  ADJNODE graph;                          ///< element (destination, origin) of every shaft
  /// Of a line with one propeller 1 for a shaft between the propeller and the first branching that
  /// turns with the propeller's speed, else 2; without a single propeller 0.
  std::vector<double> PROPELLERSHAFTMARKS;
};

/// Steady torque that the ice adds to a shaft's mean torque, N m; 0 without a single propeller. In
/// load case 1 it also sets the shaft's mark.
double SINGLELOADCASEPROPELLERICEZEROORDERTORQUE(const ModelBundle& model, std::int32_t shaft,
                                                 std::int32_t loadCase, PropellerIce& ice);

}  // namespace verenwick
