#include <array>

#include "InputAndChecking/InputSections.h"

namespace verenwick {
namespace {

/// The damping methods by their word; an unknown word keeps the method in force.
void chooseMethod(std::string word, std::int32_t& method) {
  struct Method {
    std::string_view word;
    PropellerDamping damping;
  };
  constexpr std::array kMethods = {
      Method{"SCHWANEKE", PropellerDamping::schwanecke}, Method{"ARCHER", PropellerDamping::archer},
      Method{"FRAHM", PropellerDamping::frahm}, Method{"MANUAL", PropellerDamping::manual},
      Method{"VARIABLE", PropellerDamping::variable}};
  STRINGUPCASE(word);
  for (const Method& candidate : kMethods) {
    if (word == candidate.word) {
      method = static_cast<std::int32_t>(candidate.damping);
    }
  }
}

/// The damping values of a section, of which a propeller keeps those of its method.
struct DampingValues {
  double magnifier = 0.0;
  double archer = 0.0;
  double frahm = 0.0;
  double knucklePoint = 0.0;
};

/// A value of another method would act beside this one: a magnifier replaces any damping.
void keepValuesOfMethod(const DampingValues& values, PROPELLER_RECORD& propeller) {
  switch (static_cast<PropellerDamping>(propeller.DAMPINGMETHOD)) {
    case PropellerDamping::schwanecke:
      break;
    case PropellerDamping::archer:
      propeller.ARCHERNUMBER = values.archer;
      break;
    case PropellerDamping::frahm:
      propeller.FRAHMNUMBER = values.frahm;
      break;
    case PropellerDamping::manual:
      propeller.DYNMAGNIFIER = values.magnifier;
      break;
    case PropellerDamping::variable:
      propeller.DYNMAGNIFIERFORKNUCKLEPOINT = values.magnifier;
      propeller.DYNMAGNIFIER = values.magnifier;
      propeller.KNUCKLEPOINT = values.knucklePoint;
      break;
  }
}

}  // namespace

bool readPropeller(InputReader& in, ModelBundle& model, std::int32_t position) {
  constexpr std::string_view kWaterFlag = "isVariablePropellerEntrainedWater";
  PROPELLER_RECORD& p = model.propeller.at(position);
  std::int32_t id = 0;
  DampingValues values;
  std::string methodWord;
  if (!in.keywordLine(integer(id)) ||
      !in.line("PropellerNode, McrPower, McrSpeed, nBlade, InertiaAir, InertiaWater, isDucted",
               integer(p.PROPELLERNODE), kilowatt(p.MCRPOWER), real(p.MCRSPEED), integer(p.NBLADE),
               real(p.INERTIAAIR), real(p.INERTIAWATER), flag(p.ISDUCTED)) ||
      !in.line("Db, Di, PitchRatio, ExpAreaRatio, isFixedPitch, PitchPercent, DynMagnifier",
               millimetre(p.DB), millimetre(p.DI), real(p.PITCHRATIO), real(p.EXPAREARATIO),
               flag(p.ISFIXEDPITCH), percent(p.PITCHPERCENT), real(values.magnifier)) ||
      !in.line("ArcherNumber, FrahmNumber,  KnucklePoint, TorquePercent1, TorquePercent2, "
               "ExcitationPhase, ConsiderPhaseAngle",
               word(methodWord, kLineLength), real(values.archer), real(values.frahm),
               real(values.knucklePoint), percent(p.TORQUEPERCENT1), percent(p.TORQUEPERCENT2),
               degree(p.EXCITATIONPHASE), flag(p.CONSIDERPHASEANGLE)) ||
      !in.line(kWaterFlag, flag(p.ISVARIABLEENTRAINEDWATER))) {
    return false;
  }
  if (p.ISVARIABLEENTRAINEDWATER &&
      !in.line(kWaterFlag, word(p.VARIABLEENTRAINEDWATERFILE, kPathLength))) {
    return false;
  }
  SET_PROPELLER_ID(model.propeller, position, id);
  p.NLOADCASE = in.state.loadCases;
  p.MCRTORQUE = ratedTorque(p.MCRPOWER, p.MCRSPEED);
  chooseMethod(methodWord, in.state.propellerMethod);
  p.DAMPINGMETHOD = in.state.propellerMethod;
  keepValuesOfMethod(values, p);
  in.state.propeller = position;
  markInertia(model, p.PROPELLERNODE, MassType::propeller, ComponentType::propeller, id);
  return true;
}

bool readPropellerIce(InputReader& in, ModelBundle& model, std::int32_t /*position*/) {
  constexpr std::int32_t kRatiosCorrectedWithSpeed = 10;
  constexpr std::int32_t kRatiosPlain = 2;
  std::int32_t id = 0;
  if (!in.keywordLine(integer(id))) {
    return false;
  }
  if (in.state.propeller == 0) {
    return in.failKeywordLine();
  }
  PROPELLER_RECORD& p = model.propeller.at(in.state.propeller);
  if (!in.line("isTmaxCorrectedWithActualSpeed", flag(p.ISTMAXCORRECTEDWITHACTUALSPEED)) ||
      !in.textLine("ExcitationFile", p.EXCITATIONFILE)) {
    return false;
  }
  p.NSPEEDRATIO = p.ISTMAXCORRECTEDWITHACTUALSPEED ? kRatiosCorrectedWithSpeed : kRatiosPlain;
  p.HASICEEXCITATION = true;
  return true;
}

}  // namespace verenwick
