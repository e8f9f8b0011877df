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
  void (*operate)(ModelBundle& model, const Operation& operation);
  /// Computes the excitation at the operating point; null for a kind without any.
  void (*excite)(ModelBundle& model, const Operation& operation);
};

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

/// The two cylinders of an opposite pump's row share the power of the row.
void operateReciprocatingPump(ModelBundle& model, const Operation& operation) {
  RECIPROCATINGPUMP_RECORD& pump = model.reciprocatingPump.at(operation.position);
  const double powerPerCylinder = operation.power / pump.NCYLINDER * (pump.ISOPPOSITE ? 0.5 : 1.0);
  pump.ILOADCASE = operation.loadCase;
  const auto rows = std::max(pump.NCYLINDER, 0);
  std::fill_n(pump.CYLPOWERA.begin(), rows, powerPerCylinder);
  if (pump.ISOPPOSITE) {
    std::fill_n(pump.CYLPOWERB.begin(), rows, powerPerCylinder);
  }
  pump.SPEED = operation.referenceSpeed * pump.RPMRATIO;
  pump.POWER = operation.power;
  pump.POWERPERCYL = powerPerCylinder;
  CALCULATE_RECIPROCATINGPUMP_TORQUE(model.reciprocatingPump, operation.position);
  CALCULATE_RECIPROCATINGPUMP_LOADPERCENTAGE(model.reciprocatingPump, operation.position);
  CALCULATE_RECIPROCATINGPUMP_SPEEDPERCENTAGE(model.reciprocatingPump, operation.position);
}

void exciteReciprocatingPump(ModelBundle& model, const Operation& operation) {
  RECIPROCATINGPUMP_TABLE& table = model.reciprocatingPump;
  const std::int32_t iPump = operation.position;
  for (std::int32_t row = 1; row <= GET_RECIPROCATINGPUMP_NCYLINDER(table, iPump); ++row) {
    CALCULATE_RECIPROCATINGPUMP_FOURIERCOEFFICIENT(table, iPump, row, true);
    if (GET_RECIPROCATINGPUMP_ISOPPOSITE(table, iPump)) {
      CALCULATE_RECIPROCATINGPUMP_FOURIERCOEFFICIENT(table, iPump, row, false);
    }
  }
}

/// Excites a machine whose harmonic torques follow from its torque alone.
template <auto Table, auto CalculateTorques>
void exciteMachine(ModelBundle& model, const Operation& operation) {
  CalculateTorques(model.*Table, operation.position);
}

template <auto Table>
constexpr LoadKind kind(ComponentType type,
                        void (*excite)(ModelBundle&, const Operation&) = nullptr) {
  return {type, operate<Table>, excite};
}

using M = ModelBundle;

constexpr std::array kLoadKinds = {
    LoadKind{ComponentType::diesel, operateDiesel, exciteDiesel},
    kind<&M::propeller>(ComponentType::propeller, excitePropeller),
    kind<&M::electricMotor>(
        ComponentType::electricMotor,
        exciteMachine<&M::electricMotor, CALCULATE_ELECTRICMOTOR_LOADCASESETTING>),
    kind<&M::generator>(ComponentType::generator,
                        exciteMachine<&M::generator, CALCULATE_GENERATOR_LOADCASESETTING>),
    kind<&M::gasTurbine>(ComponentType::gasTurbine),
    kind<&M::steamTurbine>(ComponentType::steamTurbine),
    kind<&M::viscousDamper>(ComponentType::viscousDamper),
    kind<&M::steelSpringDamper>(ComponentType::steelSpringDamper),
    kind<&M::rubberDamper>(ComponentType::rubberDamper),
    kind<&M::linearCoupling>(ComponentType::linearCoupling),
    kind<&M::progressiveCoupling>(ComponentType::progressiveCoupling),
    kind<&M::geislingerCoupling>(ComponentType::geislingerCoupling),
    kind<&M::centrifugalPump>(
        ComponentType::centrifugalPump,
        exciteMachine<&M::centrifugalPump, CALCULATE_CENTRIFUGALPUMP_LOADCASESETTING>),
    LoadKind{ComponentType::reciprocatingPump, operateReciprocatingPump, exciteReciprocatingPump},
};

/// Calls use(kind, operation) for the component of a column, if it has one.
template <class Use>
void withComponent(const ModelBundle& model, std::int32_t column, std::int32_t loadCase, Use use) {
  const ComponentType type = GET_LOADCASE_COMPONENTTYPE(model.loadCase, column);
  const auto* kind = std::find_if(kLoadKinds.begin(), kLoadKinds.end(),
                                  [&](const LoadKind& k) { return k.type == type; });
  const std::int32_t position = componentOfColumn(model, column);
  if (kind != kLoadKinds.end() && position > 0) {
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
