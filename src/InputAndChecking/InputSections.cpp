#include "InputAndChecking/InputSections.h"

#include <array>

namespace verenwick {
namespace {

/// Table sizing of a kind by its member of the bundle.
template <auto Table>
void allocate(ModelBundle& model, std::int32_t count) {
  (model.*Table).allocate(count);
}

using M = ModelBundle;

constexpr std::array kSections = {
    InputSection{input::kAngleBasedKeyword, false, nullptr, nullptr},
    InputSection{"INERTIA", false, allocate<&M::mass>, fillInertia},
    InputSection{"SHAFT", false, allocate<&M::shaft>, fillShaft},
    InputSection{"VISCOUSDAMPER", true, allocate<&M::viscousDamper>, fillViscousDamper},
    InputSection{"RUBBERDAMPER", true, allocate<&M::rubberDamper>, fillRubberDamper},
    InputSection{"STEELSPRINGDAMPER", true, allocate<&M::steelSpringDamper>, fillSteelSpringDamper},
    InputSection{"LINEARCOUPLING", true, allocate<&M::linearCoupling>, fillLinearCoupling},
    InputSection{"PROGRESSIVECOUPLING", true, allocate<&M::progressiveCoupling>,
                 fillProgressiveCoupling},
    InputSection{"GEISLINGERCOUPLING", true, allocate<&M::geislingerCoupling>,
                 fillGeislingerCoupling},
    InputSection{"DIESEL", true, allocate<&M::diesel>, fillDiesel},
    InputSection{"ELECTRICMOTOR", true, allocate<&M::electricMotor>, fillElectricMotor},
    InputSection{"GASTURBINE", true, allocate<&M::gasTurbine>, fillGasTurbine},
    InputSection{"STEAMTURBINE", true, allocate<&M::steamTurbine>, fillSteamTurbine},
    InputSection{"PROPELLER", true, allocate<&M::propeller>, fillPropeller},
    InputSection{"PROPELLERICE", false, nullptr, fillPropellerIce},
    InputSection{"GENERATOR", true, allocate<&M::generator>, fillGenerator},
    InputSection{"CENTRIFUGALPUMP", true, allocate<&M::centrifugalPump>, fillCentrifugalPump},
    InputSection{"RECIPROCATINGPUMP", true, allocate<&M::reciprocatingPump>, fillReciprocatingPump},
};

}  // namespace

std::span<const InputSection> inputSections() { return kSections; }

void markInertia(ModelBundle& model, std::int32_t node, MassType massType, ComponentType owner,
                 std::int32_t ownerId) {
  const std::int32_t position = GET_MASS_IMASS(model.mass, node);
  if (position > 0) {
    SET_MASS_MASSTYPE(model.mass, position, massType);
    SET_MASS_COMPONENTTYPE(model.mass, position, owner);
    SET_MASS_COMPONENTID(model.mass, position, ownerId);
  }
}

void markShaft(ModelBundle& model, std::int32_t position, ShaftType shaftType, ComponentType owner,
               std::int32_t ownerId) {
  if (position > 0) {
    SET_SHAFT_SHAFTTYPE(model.shaft, position, shaftType);
    SET_SHAFT_COMPONENTTYPE(model.shaft, position, owner);
    SET_SHAFT_COMPONENTID(model.shaft, position, ownerId);
  }
}

}  // namespace verenwick
