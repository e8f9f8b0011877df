#include "ForcedVibration/ForcedVibration.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "ForcedVibration/FamilyResults.h"
#include "ForcedVibration/LoadCaseReport.h"
#include "ForcedVibration/PowerLoss.h"
#include "ForcedVibration/PropellerIceResults.h"
#include "ForcedVibration/ResultFiles.h"
#include "ForcedVibration/ShaftPower.h"
#include "ForcedVibration/ShaftResults.h"
#include "ForcedVibration/SourceResponse.h"
#include "ForcedVibration/Synthesis.h"
#include "Matrices/LoadCaseSetting.h"
#include "Matrices/MassStffnessAndDampingMatrix.h"
#include "RunControl/RunStopped.h"

namespace verenwick {
namespace {

using results::ResultFile;
using results::resultFile;

/// Most room for the arrays of a load case and the power of the shafts, doubles: 2 GB.
constexpr double kMostDoubles = 250e6;

/// Where the synthesis of each quantity goes.
constexpr std::array<const ResultFile*, results::kQuantities> kSynthesisFiles = {
    &resultFile("SynthesisDeflection.bin"),   &resultFile("SynthesisVelocity.bin"),
    &resultFile("SynthesisAcceleration.bin"), &resultFile("SynthesisTorque.bin"),
    &resultFile("SynthesisStress.bin"),       &resultFile("SynthesisDampingTorque.bin")};

/// The same of what the propellers alone cause, for a line in ice.
constexpr std::array<const ResultFile*, results::kQuantities> kIceSynthesisFiles = {
    &resultFile("SynPropIceDeflection.bin"), &resultFile("SynPropIceVelocity.bin"),
    &resultFile("SynPropIceAccele.bin"),     &resultFile("SynPropIceTorque.bin"),
    &resultFile("SynPropIceStress.bin"),     &resultFile("SynPropIceDampingTorque.bin")};

/// What is the same for all load cases.
struct ForcedModel {
  explicit ForcedModel(const ModelBundle& model)
      : points{model.mass.number(), model.shaft.number()},
        propellerPhase(GET_PROPELLER_ISMODELCONSIDERPHASEANGLE(model.propeller)
                           ? PropellerPhase::known
                           : PropellerPhase::unknown) {
    conditions.hasCouplingOrDamper =
        model.steelSpringDamper.number() + model.viscousDamper.number() +
            model.rubberDamper.number() + model.geislingerCoupling.number() +
            model.linearCoupling.number() + model.progressiveCoupling.number() >
        0;
    conditions.hasIce = hasIceExcitation(model.propeller);
    conditions.isAngleBased = GET_OUTPUTANGLEBASEDRESULTS() && model.diesel.number() > 0;
    if (points.inertias < 1 || points.inertias > kLargestOrder) {
      throw RunStopped("** The forced vibration calculation takes 1 to " +
                       std::to_string(kLargestOrder) + " inertias, not " +
                       std::to_string(points.inertias));
    }
  }

  PointCounts points;
  ResultConditions conditions;
  PropellerPhase propellerPhase;
};

/// Empty results of all families; throws RunStopped where their arrays would not find room.
LoadCaseResults sizedResults(const ModelBundle& model, const ForcedModel& forced) {
  LoadCaseResults results;
  double doubles = 1.0 * forced.points.shafts * model.loadCaseSpeed.number();
  for (std::size_t f = 0; f < results.size(); ++f) {
    results[f].points = forced.points;
    results[f].sources = kSourceFamilies[f].sources(model);
    results[f].orders = std::max(kSourceFamilies[f].orders(model), 0);
    doubles += static_cast<double>(results::kComponents) * results[f].sources * results[f].orders *
               (3.0 * forced.points.inertias + 3.0 * forced.points.shafts);
  }
  if (doubles > kMostDoubles) {
    throw RunStopped("** The model has too many sources, orders, inertias or load cases");
  }
  return results;
}

/// The response to every source of a family and what the shafts undergo by it.
void respondToFamily(ModelBundle& model, const ForcedModel& forced, std::int32_t loadCase,
                     const SourceFamily& family, FamilyResults& results) {
  for (std::int32_t s = 1; s <= results.sources; ++s) {
    if (!family.isRunning(model, s)) {
      continue;
    }
    const SourceResults source = results.source(s);
    family.respond(model, s, loadCase, source);
    SINGLELOADCASESHAFTTORQUE(model, source.EXFO, source.of(Quantity::deflection),
                              source.of(Quantity::torque));
    SINGLELOADCASESHAFTSTRESS(model.shaft, source.of(Quantity::torque),
                              source.of(Quantity::stress));
    if (forced.conditions.hasCouplingOrDamper) {
      SINGLELOADCASESHAFTDAMPINGTORQUE(model, source.EXFO, source.of(Quantity::velocity),
                                       source.of(Quantity::dampingTorque));
    }
  }
}

/// Sums the orders of all quantities and writes the sums.
void synthesise(const ForcedModel& forced, std::int32_t loadCase, const LoadCaseResults& results,
                ForcedResultFiles& files) {
  const double base = baseFrequency(results);
  std::optional<PhaseTable> phases;
  if (base != 0.0) {
    phases.emplace(results, base);
  }
  Waveforms torque;
  Waveforms dampingTorque;
  Waveforms other;
  std::vector<double> synthesis;
  for (int q = 0; q < results::kQuantities; ++q) {
    const auto quantity = static_cast<Quantity>(q);
    if (quantity == Quantity::dampingTorque && !forced.conditions.hasCouplingOrDamper) {
      continue;
    }
    const bool isTorque = quantity == Quantity::torque;
    const bool isDampingTorque = quantity == Quantity::dampingTorque;
    Waveforms& waveforms = isTorque ? torque : isDampingTorque ? dampingTorque : other;
    synthesis.resize(asSize(forced.points.of(quantity)));
    const bool keepWaveforms = isTorque || isDampingTorque || forced.conditions.isAngleBased;
    SINGLELOADCASESYNTHESIS(results, quantity, phases ? &*phases : nullptr, forced.propellerPhase,
                            synthesis, waveforms, keepWaveforms);
    files.writePoints(loadCase, *kSynthesisFiles[asSize(q)], synthesis);
    files.writeWaveforms(loadCase, quantity, forced.points.of(quantity), waveforms);
  }
  if (forced.conditions.hasCouplingOrDamper) {
    CALCULATERESULTANTTORQUE(forced.propellerPhase, synthesis, torque, dampingTorque);
    files.writePoints(loadCase, resultFile("ResultantTorque.bin"), synthesis);
  }
}

/// Writes what the propellers alone cause.
void synthesiseIce(const ForcedModel& forced, std::int32_t loadCase, const LoadCaseResults& results,
                   ForcedResultFiles& files) {
  const FamilyResults& propeller = results[static_cast<std::size_t>(Family::propeller)];
  const std::optional<PhaseTable> phases = propellerPhases(propeller);
  std::vector<double> synthesis;
  for (int q = 0; q < results::kQuantities; ++q) {
    const auto quantity = static_cast<Quantity>(q);
    if (quantity == Quantity::dampingTorque && !forced.conditions.hasCouplingOrDamper) {
      continue;
    }
    synthesis.resize(asSize(forced.points.of(quantity)));
    SINGLELOADCASEPROPELLERICESYNTHESIS(propeller, quantity, phases ? &*phases : nullptr,
                                        synthesis);
    files.writePoints(loadCase, *kIceSynthesisFiles[asSize(q)], synthesis);
  }
}

}  // namespace

void FORCEDVIBRATIONCALCULATION(ModelBundle& model) {
  const ForcedModel forced(model);
  const std::size_t shafts = asSize(forced.points.shafts);
  LoadCaseResults results = sizedResults(model, forced);
  ForcedResultFiles files(forced.conditions);
  WRITELOADCASESETTING(model);
  const std::vector<double> shaftPower = CALCULATELOADCASESHAFTPOWER(model);
  std::optional<PropellerIce> ice;
  if (forced.conditions.hasIce) {
    ice.emplace(model);
  }
  std::vector<double> SHAFTPOWERLOSS(shafts);
  std::vector<double> NOMTORQUE(shafts);
  std::vector<double> NOMSTRESS(shafts);
  for (std::int32_t L = 1; L <= model.loadCaseSpeed.number(); ++L) {
    LOADCASESETTING(model, L);
    for (std::size_t f = 0; f < results.size(); ++f) {
      results[f].clear();
      respondToFamily(model, forced, L, kSourceFamilies[f], results[f]);
      files.writeFamily(L, static_cast<Family>(f), results[f]);
    }
    SINGLELOADCASESHAFTPOWERLOSS(model, results, SHAFTPOWERLOSS);
    synthesise(forced, L, results, files);
    SINGLELOADCASENOMINALTORQUE(model, std::span(shaftPower).subspan(index(L) * shafts, shafts), L,
                                NOMTORQUE, ice ? &*ice : nullptr);
    SINGLELOADCASENOMINALSTRESS(model.shaft, NOMTORQUE, NOMSTRESS);
    files.writePoints(L, resultFile("ShaftPowerLoss.bin"), SHAFTPOWERLOSS);
    files.writePoints(L, resultFile("NominalTorque.bin"), NOMTORQUE);
    files.writePoints(L, resultFile("NominalStress.bin"), NOMSTRESS);
    if (ice) {
      synthesiseIce(forced, L, results, files);
      if (L == 1) {
        files.writePoints(L, resultFile("PropellerShaftMarks.bin"), ice->PROPELLERSHAFTMARKS);
      }
    }
  }
  files.close();
}

}  // namespace verenwick
