#include <cmath>

#include "InputAndChecking/InputSections.h"

namespace verenwick {
namespace {

/// An angle in degrees brought to 0 up to but not including a period.
double withinPeriod(double angle, double period) {
  double remainder = std::fmod(angle, period);
  if (remainder < 0.0) {
    remainder += period;
  }
  // A tiny negative angle rounds up to the period itself.
  return remainder >= period ? 0.0 : remainder;
}

void fillCylinders(const SectionValues& values, DIESEL_RECORD& d) {
  d.NCYLINDER = values.integer("nCylinder");
  values.copyIntegers("Cylinders", d.CYLINDERS);
  values.copyReals("FiringAngleA", d.FIRINGANGLEA);
  values.copyIntegers("FiringStatusA", d.FIRINGSTATUSA);
  values.copyReals("FiringPercentA", d.FIRINGPERCENTA);
  // The lines of bank B stand there for every engine. A flag that is true but not 1 leaves the
  // bank as it was.
  if (values.integer("isVengine") == 1) {
    values.copyReals("FiringAngleB", d.FIRINGANGLEB);
    values.copyIntegers("FiringStatusB", d.FIRINGSTATUSB);
    values.copyReals("FiringPercentB", d.FIRINGPERCENTB);
  }
}

void fillPressure(const SectionValues& values, DIESEL_RECORD& d) {
  d.ISTHEORETICALPRESURE = values.flag("isTheoreticalPresure");
  if (!d.ISTHEORETICALPRESURE) {
    d.NORMALHARMONICFILE = values.text("NormalHarmonicFile");
    d.MISHARMONICFILE = values.text("MisHarmonicFile");
    return;
  }
  d.PMAX = values.real("PMax");
  d.PCOMP = values.real("PComp");
  d.COMPEXP = values.real("CompExp");
  d.EXPAEXP = values.real("ExpaExp");
  d.COMPRATIO = values.real("CompRatio");
  d.PCHARGEAIR = values.real("PChargeAir");
  d.TCHARGEAIR = values.real("TChargeAir");
  d.TE = values.real("Te");
  d.FORMFACTOR = values.real("FormFactor");
  d.ANGLEIGNITION = values.real("AngleIgnition");
  d.ANGLEENDOFCOMB = values.real("AngleEndOfComb");
  d.ANGLEEXHAUSTSTART = values.real("AngleExhaustStart");
  d.ANGLEINLETSTART = values.real("AngleInletStart");
  d.ANGLEINLETCLOSE = values.real("AngleInletClose");
}

void fillDamping(const SectionValues& values, DIESEL_RECORD& d) {
  d.ISFORMULADAMPING = values.flag("isFormulaDamping");
  if (d.ISFORMULADAMPING) {
    d.CYLABSDAMPING = values.real("CylAbsDamping");
    d.EXPCYLABSDAMPING = values.real("ExpCylAbsDamping");
    d.CRANKRELDAMPING = values.real("CrankRelDamping");
    d.EXPCRANKRELDAMPING = values.real("ExpCrankRelDamping");
  }
}

}  // namespace

void fillDiesel(const SectionValues& values, ModelBundle& model, std::int32_t position,
                InputReader& in) {
  DIESEL_RECORD& d = model.diesel.at(position);
  const std::int32_t id = values.integer("Id");
  SET_DIESEL_ID(model.diesel, position, id);
  d.NAME = values.text("Name");
  d.MCRPOWER = values.real("McrPower");
  d.MCRSPEED = values.real("McrSpeed");
  d.MCRTORQUE = ratedTorque(d.MCRPOWER, d.MCRSPEED);
  d.NSTROKE = values.integer("nStroke");
  d.EXCITATIONPHASE = values.real("ExcitationPhase");
  d.ISVENGINE = values.flag("isVengine");
  d.VANGLE = values.real("Vangle");
  if (d.ISVENGINE) {
    d.VANGLE = withinPeriod(d.VANGLE, d.NSTROKE == 2 ? 360.0 : 720.0);
  }
  d.VEEFIRINGTYPE = values.integer("VeeFiringType");
  d.ISGENSET = values.flag("isGenset");
  d.MIPLIMIT = values.real("MipLimit");
  d.NLOADCASE = in.state.loadCases;
  in.state.isVengine = values.integer("isVengine");
  in.state.isGenset = values.integer("isGenset");
  fillCylinders(values, d);
  d.BORE = values.real("Bore");
  d.STROKE = values.real("Stroke");
  d.CONRODRATIO = values.real("ConrodRatio");
  d.RECIPMASS = values.real("RecipMass");
  d.ME = values.real("Me");
  fillPressure(values, d);
  fillDamping(values, d);
  for (std::int32_t i = 1; i <= d.NCYLINDER; ++i) {
    d.HASPARTIALFIRING = d.HASPARTIALFIRING ||
                         GET_DIESEL_FIRINGSTATUSA(model.diesel, position, i) == partialFiring ||
                         GET_DIESEL_FIRINGSTATUSB(model.diesel, position, i) == partialFiring;
    markInertia(model, GET_DIESEL_CYLINDERS(model.diesel, position, i), MassType::dieselCylinder,
                ComponentType::diesel, id);
  }
}

}  // namespace verenwick
