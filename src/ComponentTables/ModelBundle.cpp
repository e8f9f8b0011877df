#include "ComponentTables/ModelBundle.h"

namespace verenwick {

std::int32_t componentPosition(const ModelBundle& model, ComponentType kind, std::int32_t id) {
  switch (kind) {
    case ComponentType::diesel:
      return model.diesel.positionOf(id);
    case ComponentType::propeller:
      return model.propeller.positionOf(id);
    case ComponentType::electricMotor:
      return model.electricMotor.positionOf(id);
    case ComponentType::generator:
      return model.generator.positionOf(id);
    case ComponentType::gasTurbine:
      return model.gasTurbine.positionOf(id);
    case ComponentType::steamTurbine:
      return model.steamTurbine.positionOf(id);
    case ComponentType::viscousDamper:
      return model.viscousDamper.positionOf(id);
    case ComponentType::steelSpringDamper:
      return model.steelSpringDamper.positionOf(id);
    case ComponentType::rubberDamper:
      return model.rubberDamper.positionOf(id);
    case ComponentType::linearCoupling:
      return model.linearCoupling.positionOf(id);
    case ComponentType::progressiveCoupling:
      return model.progressiveCoupling.positionOf(id);
    case ComponentType::geislingerCoupling:
      return model.geislingerCoupling.positionOf(id);
    case ComponentType::centrifugalPump:
      return model.centrifugalPump.positionOf(id);
    case ComponentType::reciprocatingPump:
      return model.reciprocatingPump.positionOf(id);
    case ComponentType::none:
    case ComponentType::plainInertia:
    case ComponentType::plainShaft:
      break;
  }
  return 0;
}

std::int32_t componentOfColumn(const ModelBundle& model, std::int32_t column) {
  const ComponentType kind = GET_LOADCASE_COMPONENTTYPE(model.loadCase, column);
  const std::int32_t id = GET_LOADCASE_COMPONENTID(model.loadCase, column);
  return GET_LOADCASE_ICOMPONENT(model.loadCase, kind, id) == column
             ? componentPosition(model, kind, id)
             : 0;
}

}  // namespace verenwick
