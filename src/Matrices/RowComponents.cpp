#include "Matrices/RowComponents.h"

namespace verenwick {
namespace {

/// Position of the engine whose formula damps a row of its own; 0 if there is none.
std::int32_t formulaDampingEngine(const ModelBundle& model, std::int32_t id) {
  const std::int32_t iDiesel = GET_DIESEL_IDIESEL(model.diesel, id);
  return iDiesel >= 1 && GET_DIESEL_ISFORMULADAMPING(model.diesel, iDiesel) ? iDiesel : 0;
}

}  // namespace

std::int32_t cylinderFormulaEngine(const ModelBundle& model, std::int32_t inertia) {
  const bool isCylinder = GET_MASS_MASSTYPE(model.mass, inertia) == MassType::dieselCylinder &&
                          GET_MASS_COMPONENTTYPE(model.mass, inertia) == ComponentType::diesel;
  return isCylinder ? formulaDampingEngine(model, GET_MASS_COMPONENTID(model.mass, inertia)) : 0;
}

std::int32_t crankThrowFormulaEngine(const ModelBundle& model, std::int32_t shaft) {
  const bool isThrow = GET_SHAFT_SHAFTTYPE(model.shaft, shaft) == ShaftType::crankThrow &&
                       GET_SHAFT_COMPONENTTYPE(model.shaft, shaft) == ComponentType::diesel;
  return isThrow ? formulaDampingEngine(model, GET_SHAFT_COMPONENTID(model.shaft, shaft)) : 0;
}

std::int32_t geislingerCouplingOfShaft(const ModelBundle& model, std::int32_t shaft) {
  return GET_SHAFT_SHAFTTYPE(model.shaft, shaft) == ShaftType::geislingerCoupling
             ? GET_GEISLINGERCOUPLING_IGEISLINGERCOUPLING_SHAFTNODE(
                   model.geislingerCoupling, GET_SHAFT_ID(model.shaft, shaft))
             : 0;
}

std::int32_t customViscousDamper(const ModelBundle& model, std::int32_t shaft) {
  if (GET_SHAFT_SHAFTTYPE(model.shaft, shaft) != ShaftType::viscousDamperLink ||
      GET_SHAFT_COMPONENTTYPE(model.shaft, shaft) != ComponentType::viscousDamper) {
    return 0;
  }
  const std::int32_t damper = GET_VISCOUSDAMPER_IVISCOUSDAMPER(
      model.viscousDamper, GET_SHAFT_COMPONENTID(model.shaft, shaft));
  return damper > 0 && GET_VISCOUSDAMPER_ISCUSTOMDAMPING(model.viscousDamper, damper) ? damper : 0;
}

}  // namespace verenwick
