#pragma once

#include <cstdint>

namespace verenwick {

/// Kind of a component, as inertias, shafts and load case columns name their owner. A model holds
/// whatever number it was given: 0 marks an unused load case column.
enum class ComponentType : std::int32_t {
  none = 0,
  plainInertia = 1,
  plainShaft = 9,
  diesel = 15,
  propeller = 16,
  electricMotor = 17,
  generator = 18,
  gasTurbine = 19,
  steamTurbine = 20,
  viscousDamper = 21,
  steelSpringDamper = 22,
  rubberDamper = 23,
  linearCoupling = 24,
  progressiveCoupling = 25,
  geislingerCoupling = 26,
  centrifugalPump = 28,
  reciprocatingPump = 30
};

/// What an inertia is.
enum class MassType : std::int32_t {
  plain = 1,
  dieselCylinder = 2,
  viscousDamperRing = 3,
  viscousDamperCasing = 4,
  rubberDamperTurningMass = 5,
  rubberDamperDrivePlate = 6,
  steelSpringDamperOuterMember = 7,
  steelSpringDamperInnerMember = 8,
  propeller = 16,
  electricMotor = 17,
  generator = 18,
  gasTurbine = 19,
  steamTurbine = 20,
  centrifugalPump = 28,
  reciprocatingPumpCylinder = 29
};

/// What a shaft is.
enum class ShaftType : std::int32_t {
  plain = 9,
  linearCoupling = 10,
  progressiveCoupling = 11,
  viscousDamperLink = 12,
  rubberDamperLink = 13,
  steelSpringDamperLink = 14,
  geislingerCoupling = 27,
  crankThrow = 31
};

}  // namespace verenwick
