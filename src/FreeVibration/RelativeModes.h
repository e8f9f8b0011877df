#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "ComponentTables/ModelBundle.h"

/// What follows from the mode shapes: modes 2 to N, the rigid-body mode left out.
namespace verenwick {

/// Deflection of each inertia at its own speed, scaled so that a reference inertia has exactly +1:
/// the cylinder that moves most, without engines the propeller that moves most, without these the
/// first inertia. Writes "RelativeDeflection.bin".
/// @param N order of the free problem
/// @param V mode shapes, N x N, mode after mode
/// @returns element (mode - 2) x inertias + inertia; rings of viscous dampers stay 0. A reference
///          that doesn't move gives infinities and not-a-numbers.
std::vector<double> RELATIVEINERTIADEFLECTION(const ModelBundle& model, std::int32_t N,
                                              std::span<const double> V);

/// Torque in each shaft per unit of the relative deflections, N m/rad. Writes "RelativeTorque.bin".
/// @returns element (mode - 2) x shafts + shaft; links of viscous dampers stay 0
std::vector<double> RELATIVEINERTIATORQUE(const ModelBundle& model, std::int32_t N,
                                          std::span<const double> RELATIVEDEFLECTION);

}  // namespace verenwick
