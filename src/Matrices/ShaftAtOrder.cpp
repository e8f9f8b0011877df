#include "Matrices/ShaftAtOrder.h"

namespace verenwick {
namespace {

/// Position of the engine whose formula damps a row of its own; 0 if there is none.
std::int32_t formulaDampingEngine(const ModelBundle& model, ComponentType type, std::int32_t id) {
  const std::int32_t iDiesel =
      type == ComponentType::diesel ? GET_DIESEL_IDIESEL(model.diesel, id) : 0;
  return iDiesel >= 1 && GET_DIESEL_ISFORMULADAMPING(model.diesel, iDiesel) ? iDiesel : 0;
}

/// Position of the viscous damper whose table over frequency holds for its link; 0 if there is
/// none.
std::int32_t customViscousDamper(const ModelBundle& model, ComponentType type, std::int32_t id) {
  const std::int32_t damper = type == ComponentType::viscousDamper
                                  ? GET_VISCOUSDAMPER_IVISCOUSDAMPER(model.viscousDamper, id)
                                  : 0;
  return damper > 0 && GET_VISCOUSDAMPER_ISCUSTOMDAMPING(model.viscousDamper, damper) ? damper : 0;
}

/// A coupling knows its shaft by the shaft's id, all else is known by the shaft.
std::int32_t positionOfComponent(const ModelBundle& model, const SHAFT_RECORD& shaft,
                                 std::int32_t shaftId) {
  switch (shaft.SHAFTTYPE) {
    case ShaftType::linearCoupling:
      return GET_LINEARCOUPLING_ILINEARCOUPLING_SHAFTNODE(model.linearCoupling, shaftId);
    case ShaftType::progressiveCoupling:
      return GET_PROGRESSIVECOUPLING_IPROGRESSIVECOUPLING_SHAFTNODE(model.progressiveCoupling,
                                                                    shaftId);
    case ShaftType::geislingerCoupling:
      return GET_GEISLINGERCOUPLING_IGEISLINGERCOUPLING_SHAFTNODE(model.geislingerCoupling,
                                                                  shaftId);
    case ShaftType::viscousDamperLink:
      return customViscousDamper(model, shaft.COMPONENTTYPE, shaft.COMPONENTID);
    case ShaftType::rubberDamperLink:
      return GET_RUBBERDAMPER_IRUBBERDAMPER(model.rubberDamper, shaft.COMPONENTID);
    case ShaftType::crankThrow:
      return formulaDampingEngine(model, shaft.COMPONENTTYPE, shaft.COMPONENTID);
    case ShaftType::plain:
    case ShaftType::steelSpringDamperLink:
      break;
  }
  return 0;
}

}  // namespace

bool dependsOnOrder(const ModelBundle& model) {
  return model.geislingerCoupling.isAllocated() ||
         (model.diesel.isAllocated() && GET_DIESEL_CONTAINFORMULADAMPING(model.diesel)) ||
         (model.viscousDamper.isAllocated() &&
          GET_VISCOUSDAMPER_CONTAINCUSTOMDAMPING(model.viscousDamper));
}

std::int32_t cylinderFormulaEngine(const ModelBundle& model, std::int32_t inertia) {
  const MASS_RECORD& mass = model.mass.at(inertia);
  return mass.MASSTYPE == MassType::dieselCylinder
             ? formulaDampingEngine(model, mass.COMPONENTTYPE, mass.COMPONENTID)
             : 0;
}

void setExcitationSpeed(ModelBundle& model, double speed) {
  for (std::int32_t i = 1; i <= model.geislingerCoupling.number(); ++i) {
    SET_GEISLINGERCOUPLING_SPEEDEXCITATION(model.geislingerCoupling, i, speed);
  }
}

ShaftAtOrder::ShaftAtOrder(const ModelBundle& model, std::int32_t shaft)
    : model_(model),
      row_(shaft),
      shaft_(model.shaft.at(shaft)),
      position_(positionOfComponent(model, shaft_, model.shaft.id(shaft))) {}

double ShaftAtOrder::stiffness(double order) const {
  if (is(ShaftType::geislingerCoupling)) {
    return CALCULATE_GEISLINGERCOUPLING_STIFFNESSDYNAMIC(model_.geislingerCoupling, position_,
                                                         order);
  }
  if (is(ShaftType::viscousDamperLink) &&
      GET_VISCOUSDAMPER_ISCUSTOMSTIFFNESS(model_.viscousDamper, position_)) {
    return CALCULATE_VISCOUSDAMPER_CUSTOMSTIFFNESS(model_.viscousDamper, position_, order);
  }
  return shaft_.STIFFNESSDYNAMIC;
}

double ShaftAtOrder::damping(double order) const {
  if (is(ShaftType::geislingerCoupling)) {
    return CALCULATE_GEISLINGERCOUPLING_DAMPING(model_.geislingerCoupling, position_, magnifier(),
                                                order);
  }
  if (is(ShaftType::crankThrow)) {
    return CALCULATE_DIESEL_DAMPING_CRANKTHROW(model_.diesel, position_, order);
  }
  if (is(ShaftType::viscousDamperLink)) {
    return CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(model_.viscousDamper, position_, order);
  }
  return shaft_.ABSDAMPING;
}

DampingElement ShaftAtOrder::dampingElement() const {
  if (GET_SHAFT_ISDAMPER(model_.shaft, row_, model_.viscousDamper, model_.rubberDamper,
                         model_.steelSpringDamper)) {
    return DampingElement::damper;
  }
  return GET_SHAFT_ISCOUPLING(model_.shaft, row_, model_.linearCoupling, model_.progressiveCoupling,
                              model_.geislingerCoupling)
             ? DampingElement::coupling
             : DampingElement::none;
}

double ShaftAtOrder::torqueDamping(DampingElement element, double order) const {
  if (element == DampingElement::none || order == 0.0) {
    return 0.0;
  }
  if (element == DampingElement::damper) {
    if (is(ShaftType::rubberDamperLink)) {
      return CALCULATE_RUBBERDAMPER_DAMPING(model_.rubberDamper, position_, magnifier(), order);
    }
    return is(ShaftType::viscousDamperLink) ? damping(order) : shaft_.ABSDAMPING;
  }
  if (is(ShaftType::geislingerCoupling)) {
    return damping(order);
  }
  if (is(ShaftType::linearCoupling)) {
    return CALCULATE_LINEARCOUPLING_DAMPING(model_.linearCoupling, position_, magnifier(), order);
  }
  if (is(ShaftType::progressiveCoupling)) {
    return CALCULATE_PROGRESSIVECOUPLING_DAMPING(model_.progressiveCoupling, position_, magnifier(),
                                                 order);
  }
  return 0.0;
}

bool ShaftAtOrder::isLossless() const {
  double damping = shaft_.ABSDAMPING;
  if (is(ShaftType::geislingerCoupling)) {
    damping = GET_GEISLINGERCOUPLING_DAMPING(model_.geislingerCoupling, position_);
  } else if (is(ShaftType::crankThrow)) {
    damping = GET_DIESEL_CRANKRELDAMPING(model_.diesel, position_);
  } else if (is(ShaftType::viscousDamperLink)) {
    return false;
  }
  return damping == 0.0 && magnifier() == 0.0;
}

double ShaftAtOrder::lossStiffness(double order) const {
  return is(ShaftType::geislingerCoupling) ? stiffness(order) : shaft_.STIFFNESSDYNAMIC;
}

double ShaftAtOrder::lossDamping(double circularSpeed, double order) const {
  const double own = damping(order);
  return own > 0.0 ? own : lossStiffness(order) / (magnifier() * circularSpeed * order);
}

}  // namespace verenwick
