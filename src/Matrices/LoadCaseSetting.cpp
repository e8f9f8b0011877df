#include "Matrices/LoadCaseSetting.h"

#include <algorithm>
#include <array>

#include "RunControl/Constants.h"

namespace verenwick {
namespace {

/// What a load case puts on a component.
struct Operation {
  std::int32_t position;  ///< of the component in its table
  std::int32_t loadCase;
  double power;           ///< W
  double referenceSpeed;  ///< rpm
};

/// How the components of one kind take a load case.
struct LoadKind {
  ComponentType type;
  std::int32_t (*find)(const ModelBundle& model, std::int32_t id);
  void (*operate)(ModelBundle& model, const Operation& operation);
  /// Computes the excitation at the operating point; null for a kind without any.
  void (*excite)(ModelBundle& model, const Operation& operation);
};

template <auto Table>
std::int32_t find(const ModelBundle& model, std::int32_t id) {
  return (model.*Table).positionOf(id);
}

template <auto Table>
void operate(ModelBundle& model, const Operation& operation) {
  auto& component = (model.*Table).at(operation.position);
  const double speed = operation.referenceSpeed * component.RPMRATIO;
  component.POWER = operation.power;
  component.SPEED = speed;
  component.TORQUE = operation.power / angularSpeed(speed);
}

void excitePropeller(ModelBundle& model, const Operation& operation) {
  if (GET_PROPELLER_HASICEEXCITATION(model.propeller, operation.position)) {
    CALCULATE_PROPELLER_FOURIERCOEFFICIENT(model.propeller, operation.position);
  }
}

/// A cylinder of either bank has the full share of the cylinders that fire.
void operateDiesel(ModelBundle& model, const Operation& operation) {
  DIESEL_RECORD& diesel = model.diesel.at(operation.position);
  const double powerPerCylinder =
      operation.power / GET_DIESEL_NFIRINGCYLINDER(model.diesel, operation.position);
  diesel.ILOADCASE = operation.loadCase;
  std::fill_n(diesel.CYLPOWERA.begin(), diesel.NCYLINDER, powerPerCylinder);
  if (diesel.ISVENGINE) {
    std::fill_n(diesel.CYLPOWERB.begin(), diesel.NCYLINDER, powerPerCylinder);
  }
  diesel.SPEED = operation.referenceSpeed * diesel.RPMRATIO;
  diesel.POWER = operation.power;
  diesel.POWERPERCYL = powerPerCylinder;
  CALCULATE_DIESEL_TORQUE(model.diesel, operation.position);
  CALCULATE_DIESEL_LOADPERCENTAGE(model.diesel, operation.position);
}

void exciteDiesel(ModelBundle& model, const Operation& operation) {
  CALCULATE_DIESEL_FOURIERCOEFFICIENTS(model.diesel, operation.position, model.loadCaseGenset);
}

template <auto Table>
constexpr LoadKind kind(ComponentType type,
                        void (*excite)(ModelBundle&, const Operation&) = nullptr) {
  return {type, find<Table>, operate<Table>, excite};
}

using M = ModelBundle;

constexpr std::array kLoadKinds = {
    LoadKind{ComponentType::diesel, find<&M::diesel>, operateDiesel, exciteDiesel},
    kind<&M::propeller>(ComponentType::propeller, excitePropeller),
    kind<&M::electricMotor>(ComponentType::electricMotor),
    kind<&M::generator>(ComponentType::generator),
    kind<&M::gasTurbine>(ComponentType::gasTurbine),
    kind<&M::steamTurbine>(ComponentType::steamTurbine),
    kind<&M::viscousDamper>(ComponentType::viscousDamper),
    kind<&M::steelSpringDamper>(ComponentType::steelSpringDamper),
    kind<&M::rubberDamper>(ComponentType::rubberDamper),
    kind<&M::linearCoupling>(ComponentType::linearCoupling),
    kind<&M::progressiveCoupling>(ComponentType::progressiveCoupling),
    kind<&M::geislingerCoupling>(ComponentType::geislingerCoupling),
    kind<&M::centrifugalPump>(ComponentType::centrifugalPump),
};

/// Calls use(kind, operation) for the component of a column, if it has one.
template <class Use>
void withComponent(const ModelBundle& model, std::int32_t column, std::int32_t loadCase, Use use) {
  const ComponentType type = GET_LOADCASE_COMPONENTTYPE(model.loadCase, column);
  const std::int32_t id = GET_LOADCASE_COMPONENTID(model.loadCase, column);
  const auto* kind = std::find_if(kLoadKinds.begin(), kLoadKinds.end(),
                                  [&](const LoadKind& k) { return k.type == type; });
  // A component that the header names twice keeps its first column.
  if (kind == kLoadKinds.end() || GET_LOADCASE_ICOMPONENT(model.loadCase, type, id) != column) {
    return;
  }
  const std::int32_t position = kind->find(model, id);
  if (position > 0) {
    use(*kind, Operation{position, loadCase, model.loadCasePower.at(column, loadCase),
                         model.loadCaseSpeed.at(loadCase)});
  }
}

}  // namespace

void LOADCASESETTING(ModelBundle& model, std::int32_t loadCase) {
  const double rpm = model.loadCaseSpeed.at(loadCase);
  for (std::int32_t i = 1; i <= model.mass.number(); ++i) {
    SET_MASS_SPEED(model.mass, i, rpm * GET_MASS_RPMRATIO(model.mass, i));
  }
  for (std::int32_t s = 1; s <= model.shaft.number(); ++s) {
    SET_SHAFT_SPEED(model.shaft, s, rpm * GET_SHAFT_RPMRATIO(model.shaft, s));
  }
  for (std::int32_t column = 1; column <= GET_LOADCASE_NCOMPONENT(model.loadCase); ++column) {
    withComponent(model, column, loadCase, [&](const LoadKind& kind, const Operation& operation) {
      kind.operate(model, operation);
      if (kind.excite != nullptr) {
        kind.excite(model, operation);
      }
    });
  }
}

void setOperatingPoint(ModelBundle& model, std::int32_t column, std::int32_t loadCase) {
  withComponent(model, column, loadCase, [&](const LoadKind& kind, const Operation& operation) {
    kind.operate(model, operation);
  });
}

}  // namespace verenwick
