#include "InputAndChecking/InputSections.h"

#include <array>

namespace verenwick {
namespace {

/// Table sizing of a kind by its member of the bundle.
template <auto Table>
void allocate(ModelBundle& model, std::int32_t count) {
  (model.*Table).allocate(count);
}

bool nothingToRead(InputReader& /*in*/, ModelBundle& /*model*/, std::int32_t /*position*/) {
  return true;
}

using M = ModelBundle;

constexpr std::array kSections = {
    InputSection{kAngleBasedKeyword, "", false, nullptr, nothingToRead},
    InputSection{"INERTIA", "Id, RpmRatio, Inertia, AbsDamping, DynMagnifier", false,
                 allocate<&M::mass>, readInertia},
    InputSection{"SHAFT",
                 "Id, OrgNode, DesNode, RpmRatio, Stiffness, AbsDamping, DynMagnifier, OuterDi, "
                 "InnerDi, ShaftTypeFlag, ComponentIdFlag",
                 false, allocate<&M::shaft>, readShaft},
    InputSection{"VISCOUSDAMPER", "Id", true, allocate<&M::viscousDamper>, readViscousDamper},
    InputSection{"RUBBERDAMPER", "Id", true, allocate<&M::rubberDamper>, readRubberDamper},
    InputSection{"STEELSPRINGDAMPER", "Id", true, allocate<&M::steelSpringDamper>,
                 readSteelSpringDamper},
    InputSection{"LINEARCOUPLING", "Id", true, allocate<&M::linearCoupling>, readLinearCoupling},
    InputSection{"PROGRESSIVECOUPLING", "Id", true, allocate<&M::progressiveCoupling>,
                 readProgressiveCoupling},
    InputSection{"GEISLINGERCOUPLING", "Id", true, allocate<&M::geislingerCoupling>,
                 readGeislingerCoupling},
    InputSection{"DIESEL", "Id", true, allocate<&M::diesel>, readDiesel},
    InputSection{"ELECTRICMOTOR", "Id", true, allocate<&M::electricMotor>, readElectricMotor},
    InputSection{"GASTURBINE", "Id", true, allocate<&M::gasTurbine>, readGasTurbine},
    InputSection{"STEAMTURBINE", "Id", true, allocate<&M::steamTurbine>, readSteamTurbine},
    InputSection{"PROPELLER", "Id", true, allocate<&M::propeller>, readPropeller},
    InputSection{"PROPELLERICE", "PropellerIce Id", false, nullptr, readPropellerIce},
    InputSection{"GENERATOR", "Id", true, allocate<&M::generator>, readGenerator},
    InputSection{"CENTRIFUGALPUMP", "Id", true, allocate<&M::centrifugalPump>, readCentrifugalPump},
    InputSection{"RECIPROCATINGPUMP", "Id, PumpName", true, allocate<&M::reciprocatingPump>,
                 readReciprocatingPump},
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
