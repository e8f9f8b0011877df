#include <array>
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

/// The cylinder lines of a section. Those of bank B stand there for every engine.
struct CylinderLines {
  std::array<double, kMaxCylinders> firingAngleB{};
  std::array<std::int32_t, kMaxCylinders> firingStatusB{};
  std::array<double, kMaxCylinders> firingPercentB{};
};

bool readCylinderLines(InputReader& in, DIESEL_RECORD& diesel, CylinderLines& lines) {
  constexpr std::string_view kCylinders = "Cylinders";
  if (diesel.NCYLINDER > kMaxCylinders) {
    static_cast<void>(in.nextLine());
    return in.fail(kCylinders);
  }
  const auto count = static_cast<std::size_t>(std::max(diesel.NCYLINDER, 0));
  const auto rows = [&](auto& values) { return std::span(values).first(count); };
  return in.line(kCylinders, integers(rows(diesel.CYLINDERS))) &&
         in.line("FiringAngleA", degree(rows(diesel.FIRINGANGLEA))) &&
         in.line("FiringAngleB", degree(rows(lines.firingAngleB))) &&
         in.line("FiringStatusA", integers(rows(diesel.FIRINGSTATUSA))) &&
         in.line("FiringStatusB", integers(rows(lines.firingStatusB))) &&
         in.line("FiringStatusA", real(rows(diesel.FIRINGPERCENTA))) &&
         in.line("FiringStatusB", real(rows(lines.firingPercentB)));
}

bool readPressureLines(InputReader& in, DIESEL_RECORD& d) {
  if (!d.ISTHEORETICALPRESURE) {
    return in.textLine("NormalHarmonicFile", d.NORMALHARMONICFILE) &&
           in.textLine("MisHarmonicFile", d.MISHARMONICFILE);
  }
  return in.line("PMax, PComp, CompExp, ExpaExp, CompRatio, PChargeAir, TChargeAir", bar(d.PMAX),
                 bar(d.PCOMP), real(d.COMPEXP), real(d.EXPAEXP), real(d.COMPRATIO),
                 bar(d.PCHARGEAIR), real(d.TCHARGEAIR)) &&
         in.line(
             "Te, FormFactor, AngleIgnition, AngleEndOfComb, AngleExhaustStart, AngleInletStart, "
             "AngleInletClose",
             percent(d.TE), real(d.FORMFACTOR), real(d.ANGLEIGNITION), real(d.ANGLEENDOFCOMB),
             real(d.ANGLEEXHAUSTSTART), real(d.ANGLEINLETSTART), real(d.ANGLEINLETCLOSE));
}

}  // namespace

bool readDiesel(InputReader& in, ModelBundle& model, std::int32_t position) {
  DIESEL_RECORD& d = model.diesel.at(position);
  ReaderState& state = in.state;
  CylinderLines lines;
  std::int32_t id = 0;
  std::int32_t veeFiringType = 0;
  if (!in.keywordLine(integer(id), word(d.NAME, kNameLength)) ||
      !in.line("McrPower, McrSpeed, nStroke, nCylinder, ExcitationPhase, isVengine, Vangle",
               kilowatt(d.MCRPOWER), real(d.MCRSPEED), integer(d.NSTROKE), integer(d.NCYLINDER),
               degree(d.EXCITATIONPHASE), integer(state.isVengine), real(d.VANGLE),
               integer(state.isGenset), real(d.MIPLIMIT)) ||
      !readCylinderLines(in, d, lines) ||
      !in.line("Bore, Stroke, ConrodRatio, RecipMass, Me, isTheoreticalPresure, VeeFiringType, "
               "isFormulaDamping",
               millimetre(d.BORE), millimetre(d.STROKE), real(d.CONRODRATIO), real(d.RECIPMASS),
               percent(d.ME), flag(d.ISTHEORETICALPRESURE), integer(veeFiringType),
               flag(d.ISFORMULADAMPING))) {
    return false;
  }
  SET_DIESEL_ID(model.diesel, position, id);
  d.ISVENGINE = state.isVengine != 0;
  d.ISGENSET = state.isGenset != 0;
  d.NLOADCASE = state.loadCases;
  d.MCRTORQUE = ratedTorque(d.MCRPOWER, d.MCRSPEED);
  d.VEEFIRINGTYPE = veeFiringType;
  if (d.ISVENGINE) {
    d.VANGLE = withinPeriod(d.VANGLE, d.NSTROKE == 2 ? 360.0 : 720.0);
  }
  // A flag that is true but not 1 leaves bank B as it was.
  const bool hasBankB = state.isVengine == 1;
  if (hasBankB) {
    d.FIRINGANGLEB = lines.firingAngleB;
    d.FIRINGSTATUSB = lines.firingStatusB;
    d.FIRINGPERCENTB = lines.firingPercentB;
  }
  for (std::int32_t i = 1; i <= d.NCYLINDER; ++i) {
    d.HASPARTIALFIRING = d.HASPARTIALFIRING ||
                         GET_DIESEL_FIRINGSTATUSA(model.diesel, position, i) == partialFiring ||
                         GET_DIESEL_FIRINGSTATUSB(model.diesel, position, i) == partialFiring;
    markInertia(model, GET_DIESEL_CYLINDERS(model.diesel, position, i), MassType::dieselCylinder,
                ComponentType::diesel, id);
  }
  return readPressureLines(in, d) &&
         (!d.ISFORMULADAMPING ||
          in.line("CylAbsDamping, ExpCylAbsDamping, CrankRelDamping, ExpCrankRelDamping",
                  real(d.CYLABSDAMPING), real(d.EXPCYLABSDAMPING), real(d.CRANKRELDAMPING),
                  real(d.EXPCRANKRELDAMPING)));
}

}  // namespace verenwick
