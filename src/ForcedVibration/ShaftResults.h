#pragma once

#include <cstdint>
#include <span>

#include "ComponentTables/ModelBundle.h"
#include "ForcedVibration/FamilyResults.h"

/// What each shaft undergoes. The angles are atan2(Re, -Im), from -pi to pi, unlike those of the
/// deflections.
namespace verenwick {

struct PropellerIce;

/// Vibratory torque of every shaft, N m, from the deflections of one source, rad: stiffness times
/// twist, the far end brought over to the speed of the near one.
void SINGLELOADCASESHAFTTORQUE(const ModelBundle& model, std::span<const double> EXFO,
                               const ComplexSection& deflection, const ComplexSection& torque);

/// Vibratory stress of every shaft, Pa; 0 without an outer diameter. A hollow shaft is taken with
/// the difference of the cubes of its diameters.
void SINGLELOADCASESHAFTSTRESS(const SHAFT_TABLE& shaft, const ComplexSection& torque,
                               const ComplexSection& stress);

/// Torque through the damping element of every damper and coupling, N m, from the velocities of one
/// source, rad/s; 0 for other shafts, and for an order of 0.
void SINGLELOADCASESHAFTDAMPINGTORQUE(const ModelBundle& model, std::span<const double> EXFO,
                                      const ComplexSection& velocity,
                                      const ComplexSection& dampingTorque);

/// Mean torque of every shaft, N m, with what ice on the propeller adds.
/// @param shaftPower power that each shaft carries in the load case, W
/// @param ice        null for a line without ice excitation; gets its marks in load case 1
void SINGLELOADCASENOMINALTORQUE(const ModelBundle& model, std::span<const double> shaftPower,
                                 std::int32_t loadCase, std::span<double> NOMTORQUE,
                                 PropellerIce* ice);

/// Mean stress of every shaft, Pa; 0 for an outer diameter of 0.
void SINGLELOADCASENOMINALSTRESS(const SHAFT_TABLE& shaft, std::span<const double> NOMTORQUE,
                                 std::span<double> NOMSTRESS);

}  // namespace verenwick
