#pragma once

#include <cstdint>
#include <span>

#include "ComponentTables/ModelBundle.h"

namespace verenwick {

/// How strongly the cylinders of each engine work together on each mode, order by order. Writes
/// "VectorSum.bin", "VectorSumRpm.bin" and "VectorSumAngle.bin": the sum and its phase relative to
/// the largest order of the mode, and the speed at which the order meets the natural frequency.
/// A mode that moves no cylinder has not-a-numbers.
/// @param N                  order of the free problem
/// @param D                  natural angular frequencies, rad/s
/// @param RELATIVEDEFLECTION element (mode - 2) x inertias + inertia, modes 2 to N
void VECTORSUMS(const MASS_TABLE& mass, const DIESEL_TABLE& diesel, std::int32_t N,
                std::span<const double> D, std::span<const double> RELATIVEDEFLECTION);

}  // namespace verenwick
