#pragma once

#include <cstdint>

#include "ComponentTables/ModelBundle.h"
#include "Matrices/MassStffnessAndDampingMatrix.h"

namespace verenwick {

/// Warns in the log where rounding leaves a natural frequency fewer than six digits: how many
/// digits the lowest elastic mode has left, and which shaft or inertia lies too far from the
/// others. Says so too where the eigenproblem failed and no frequency was found at all. A healthy
/// line gets no line.
/// @param system with the calculated frequencies in D, rad/s
/// @param error  INFO of the eigenproblem, 0 for one that was solved
void warnOfUncertainFrequencies(const ModelBundle& model, const ShaftLineMatrices& system,
                                std::int32_t error);

}  // namespace verenwick
