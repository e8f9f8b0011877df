#include "InputAndChecking/InputSections.h"

namespace verenwick {
namespace {

/// A propeller keeps the damping values of its method: one of another method would act beside
/// them, and a magnifier replaces any damping.
void keepValuesOfMethod(const SectionValues& values, PROPELLER_RECORD& propeller) {
  switch (static_cast<PropellerDamping>(propeller.DAMPINGMETHOD)) {
    case PropellerDamping::schwanecke:
      break;
    case PropellerDamping::archer:
      propeller.ARCHERNUMBER = values.real("ArcherNumber");
      break;
    case PropellerDamping::frahm:
      propeller.FRAHMNUMBER = values.real("FrahmNumber");
      break;
    case PropellerDamping::manual:
      propeller.DYNMAGNIFIER = values.real("DynMagnifier");
      break;
    case PropellerDamping::variable:
      propeller.DYNMAGNIFIERFORKNUCKLEPOINT = values.real("DynMagnifier");
      propeller.DYNMAGNIFIER = values.real("DynMagnifier");
      propeller.KNUCKLEPOINT = values.real("KnucklePoint");
      break;
  }
}

}  // namespace

void fillPropeller(const SectionValues& values, ModelBundle& model, std::int32_t position,
                   InputReader& in) {
  PROPELLER_RECORD& p = model.propeller.at(position);
  const std::int32_t id = values.integer("Id");
  SET_PROPELLER_ID(model.propeller, position, id);
  p.PROPELLERNODE = values.integer("PropellerNode");
  p.MCRPOWER = values.real("McrPower");
  p.MCRSPEED = values.real("McrSpeed");
  p.MCRTORQUE = ratedTorque(p.MCRPOWER, p.MCRSPEED);
  p.NBLADE = values.integer("nBlade");
  p.INERTIAAIR = values.real("InertiaAir");
  p.INERTIAWATER = values.real("InertiaWater");
  p.ISDUCTED = values.flag("isDucted");
  p.DB = values.real("Db");
  p.DI = values.real("Di");
  p.PITCHRATIO = values.real("PitchRatio");
  p.EXPAREARATIO = values.real("ExpAreaRatio");
  p.ISFIXEDPITCH = values.flag("isFixedPitch");
  p.PITCHPERCENT = values.real("PitchPercent");
  p.DAMPINGMETHOD = values.integer("Method");
  keepValuesOfMethod(values, p);
  p.TORQUEPERCENT1 = values.real("TorquePercent1");
  p.TORQUEPERCENT2 = values.real("TorquePercent2");
  p.EXCITATIONPHASE = values.real("ExcitationPhase");
  p.CONSIDERPHASEANGLE = values.flag("ConsiderPhaseAngle");
  p.ISVARIABLEENTRAINEDWATER = values.flag("isVariablePropellerEntrainedWater");
  if (p.ISVARIABLEENTRAINEDWATER) {
    p.VARIABLEENTRAINEDWATERFILE = values.text("VariableEntrainedWaterFile");
  }
  p.NLOADCASE = in.state.loadCases;
  in.state.propeller = position;
  markInertia(model, p.PROPELLERNODE, MassType::propeller, ComponentType::propeller, id);
}

void fillPropellerIce(const SectionValues& values, ModelBundle& model, std::int32_t /*position*/,
                      InputReader& in) {
  constexpr std::int32_t kRatiosCorrectedWithSpeed = 10;
  constexpr std::int32_t kRatiosPlain = 2;
  PROPELLER_RECORD& p = model.propeller.at(in.state.propeller);
  p.ISTMAXCORRECTEDWITHACTUALSPEED = values.flag("isTmaxCorrectedWithActualSpeed");
  p.EXCITATIONFILE = values.text("ExcitationFile");
  p.NSPEEDRATIO = p.ISTMAXCORRECTEDWITHACTUALSPEED ? kRatiosCorrectedWithSpeed : kRatiosPlain;
  p.HASICEEXCITATION = true;
}

}  // namespace verenwick
