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

}  // namespace

void fillViscousDamper(const SectionValues& values, ModelBundle& model, std::int32_t position,
                       InputReader& in) {
  VISCOUSDAMPER_RECORD& damper = model.viscousDamper.at(position);
  const std::int32_t id = values.integer("Id");
  SET_VISCOUSDAMPER_ID(model.viscousDamper, position, id);
  damper.CASINGNODE = values.integer("CasingNode");
  damper.RINGNODE = values.integer("RingNode");
  damper.ABSDAMPING = values.real("AbsDamping");
  damper.ISCUSTOMDAMPING = values.flag("isCustomDamping");
  if (damper.ISCUSTOMDAMPING) {
    damper.CUSTOMDAMPINGFILE = values.text("CustomDampingFile");
  }
  markDamper(in.state.shafts, model, {damper.CASINGNODE, MassType::viscousDamperCasing},
             {damper.RINGNODE, MassType::viscousDamperRing}, ShaftType::viscousDamperLink,
             ComponentType::viscousDamper, id);
}

void fillRubberDamper(const SectionValues& values, ModelBundle& model, std::int32_t position,
                      InputReader& in) {
  RUBBERDAMPER_RECORD& damper = model.rubberDamper.at(position);
  const std::int32_t id = values.integer("Id");
  SET_RUBBERDAMPER_ID(model.rubberDamper, position, id);
  damper.TURNINGMASSNODE = values.integer("TurningMassNode");
  damper.DRIVEPLATENODE = values.integer("DrivePlateNode");
  damper.ABSDAMPING = values.real("AbsDamping");
  markDamper(in.state.shafts, model, {damper.TURNINGMASSNODE, MassType::rubberDamperTurningMass},
             {damper.DRIVEPLATENODE, MassType::rubberDamperDrivePlate}, ShaftType::rubberDamperLink,
             ComponentType::rubberDamper, id);
}

void fillSteelSpringDamper(const SectionValues& values, ModelBundle& model, std::int32_t position,
                           InputReader& in) {
  STEELSPRINGDAMPER_RECORD& damper = model.steelSpringDamper.at(position);
  const std::int32_t id = values.integer("Id");
  SET_STEELSPRINGDAMPER_ID(model.steelSpringDamper, position, id);
  damper.OUTERMEMBERNODE = values.integer("OuterMemberNode");
  damper.INNERMEMBERNODE = values.integer("InnerMemberNode");
  damper.ABSDAMPING = values.real("AbsDamping");
  markDamper(in.state.shafts, model,
             {damper.OUTERMEMBERNODE, MassType::steelSpringDamperOuterMember},
             {damper.INNERMEMBERNODE, MassType::steelSpringDamperInnerMember},
             ShaftType::steelSpringDamperLink, ComponentType::steelSpringDamper, id);
}

}  // namespace verenwick
