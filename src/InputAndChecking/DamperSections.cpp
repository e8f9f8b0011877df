#include "InputAndChecking/InputSections.h"

namespace verenwick {
namespace {

/// A member of a damper.
struct Member {
  std::int32_t node;
  MassType type;
};

/// Makes the two members and the shaft between them part of a damper.
void markDamper(const ShaftsByNodes& shafts, ModelBundle& model, const Member& first,
                const Member& second, ShaftType link, ComponentType damper, std::int32_t id) {
  for (const Member& member : {first, second}) {
    markInertia(model, member.node, member.type, damper, id);
  }
  markShaft(model, shafts.between(first.node, second.node), link, damper, id);
}

/// Takes the next line as the path of a damper's table over frequency.
bool readTablePath(InputReader& in, std::string& path) {
  if (!in.nextLine()) {
    return in.fail("CustomDampingFile");
  }
  path = withoutTrailingBlanks(trimmed(in.line()).substr(0, kPathLength));
  return true;
}

}  // namespace

bool readViscousDamper(InputReader& in, ModelBundle& model, std::int32_t position) {
  VISCOUSDAMPER_RECORD& damper = model.viscousDamper.at(position);
  std::int32_t id = 0;
  if (!in.keywordLine(integer(id)) ||
      !in.line("CasingNode, RingNode, AbsDamping", integer(damper.CASINGNODE),
               integer(damper.RINGNODE), real(damper.ABSDAMPING), flag(damper.ISCUSTOMDAMPING))) {
    return false;
  }
  SET_VISCOUSDAMPER_ID(model.viscousDamper, position, id);
  markDamper(in.state.shafts, model, {damper.CASINGNODE, MassType::viscousDamperCasing},
             {damper.RINGNODE, MassType::viscousDamperRing}, ShaftType::viscousDamperLink,
             ComponentType::viscousDamper, id);
  return !damper.ISCUSTOMDAMPING || readTablePath(in, damper.CUSTOMDAMPINGFILE);
}

bool readRubberDamper(InputReader& in, ModelBundle& model, std::int32_t position) {
  RUBBERDAMPER_RECORD& damper = model.rubberDamper.at(position);
  std::int32_t id = 0;
  if (!in.keywordLine(integer(id)) ||
      !in.line("TurningMassNode, DrivePlateNode, AbsDamping", integer(damper.TURNINGMASSNODE),
               integer(damper.DRIVEPLATENODE), real(damper.ABSDAMPING))) {
    return false;
  }
  SET_RUBBERDAMPER_ID(model.rubberDamper, position, id);
  markDamper(in.state.shafts, model, {damper.TURNINGMASSNODE, MassType::rubberDamperTurningMass},
             {damper.DRIVEPLATENODE, MassType::rubberDamperDrivePlate}, ShaftType::rubberDamperLink,
             ComponentType::rubberDamper, id);
  return true;
}

bool readSteelSpringDamper(InputReader& in, ModelBundle& model, std::int32_t position) {
  STEELSPRINGDAMPER_RECORD& damper = model.steelSpringDamper.at(position);
  std::int32_t id = 0;
  if (!in.keywordLine(integer(id)) ||
      !in.line("OuterMemberNode, InnerMemberNode, AbsDamping", integer(damper.OUTERMEMBERNODE),
               integer(damper.INNERMEMBERNODE), real(damper.ABSDAMPING))) {
    return false;
  }
  SET_STEELSPRINGDAMPER_ID(model.steelSpringDamper, position, id);
  markDamper(in.state.shafts, model,
             {damper.OUTERMEMBERNODE, MassType::steelSpringDamperOuterMember},
             {damper.INNERMEMBERNODE, MassType::steelSpringDamperInnerMember},
             ShaftType::steelSpringDamperLink, ComponentType::steelSpringDamper, id);
  return true;
}

}  // namespace verenwick
