#include "InputAndChecking/InputSections.h"

namespace verenwick {

bool readInertia(InputReader& in, ModelBundle& model, std::int32_t position) {
  MASS_RECORD& inertia = model.mass.at(position);
  std::int32_t id = 0;
  if (!in.keywordLine(integer(id), real(inertia.RPMRATIO), real(inertia.INERTIA),
                      real(inertia.ABSDAMPING), real(inertia.DYNMAGNIFIER))) {
    return false;
  }
  SET_MASS_ID(model.mass, position, id);
  inertia.MASSTYPE = MassType::plain;
  inertia.COMPONENTTYPE = ComponentType::plainInertia;
  inertia.COMPONENTID = id;
  return true;
}

bool readShaft(InputReader& in, ModelBundle& model, std::int32_t position) {
  SHAFT_RECORD& shaft = model.shaft.at(position);
  std::int32_t id = 0;
  std::int32_t shaftTypeFlag = 0;
  std::int32_t componentIdFlag = 0;
  if (!in.keywordLine(integer(id), integer(shaft.ORGNODE), integer(shaft.DESNODE),
                      real(shaft.RPMRATIO), real(shaft.STIFFNESS), real(shaft.ABSDAMPING),
                      real(shaft.DYNMAGNIFIER), millimetre(shaft.OUTERDI),
                      millimetre(shaft.INNERDI), integer(shaftTypeFlag),
                      integer(componentIdFlag))) {
    return false;
  }
  SET_SHAFT_ID(model.shaft, position, id);
  in.state.shafts.set(position, shaft.ORGNODE, shaft.DESNODE);
  if (shaftTypeFlag == 1 && componentIdFlag > 0) {
    markShaft(model, position, ShaftType::crankThrow, ComponentType::diesel, componentIdFlag);
  } else {
    markShaft(model, position, ShaftType::plain, ComponentType::plainShaft, id);
  }
  return true;
}

}  // namespace verenwick
