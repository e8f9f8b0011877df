#include "InputAndChecking/InputSections.h"

namespace verenwick {

void fillInertia(const SectionValues& values, ModelBundle& model, std::int32_t position,
                 InputReader& /*in*/) {
  MASS_RECORD& inertia = model.mass.at(position);
  const std::int32_t id = values.integer("Id");
  SET_MASS_ID(model.mass, position, id);
  inertia.RPMRATIO = values.real("RpmRatio");
  inertia.INERTIA = values.real("Inertia");
  inertia.ABSDAMPING = values.real("AbsDamping");
  inertia.DYNMAGNIFIER = values.real("DynMagnifier");
  inertia.MASSTYPE = MassType::plain;
  inertia.COMPONENTTYPE = ComponentType::plainInertia;
  inertia.COMPONENTID = id;
}

void fillShaft(const SectionValues& values, ModelBundle& model, std::int32_t position,
               InputReader& in) {
  SHAFT_RECORD& shaft = model.shaft.at(position);
  const std::int32_t id = values.integer("Id");
  SET_SHAFT_ID(model.shaft, position, id);
  shaft.ORGNODE = values.integer("OrgNode");
  shaft.DESNODE = values.integer("DesNode");
  shaft.RPMRATIO = values.real("RpmRatio");
  shaft.STIFFNESS = values.real("Stiffness");
  shaft.ABSDAMPING = values.real("AbsDamping");
  shaft.DYNMAGNIFIER = values.real("DynMagnifier");
  shaft.OUTERDI = values.real("OuterDi");
  shaft.INNERDI = values.real("InnerDi");
  in.state.shafts.set(position, shaft.ORGNODE, shaft.DESNODE);
  const std::int32_t engine = values.integer("ComponentIdFlag");
  if (values.integer("ShaftTypeFlag") == 1 && engine > 0) {
    markShaft(model, position, ShaftType::crankThrow, ComponentType::diesel, engine);
  } else {
    markShaft(model, position, ShaftType::plain, ComponentType::plainShaft, id);
  }
}

}  // namespace verenwick
