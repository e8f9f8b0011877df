#pragma once

#include <span>

#include "Excitation/TangentialRadialForce.h"

namespace verenwick {

/// Whether CALCULATETANGENTIALRADIALFORCE leaves its diagnostic report. Off in a delivered library.
inline constexpr bool kWritesGasMassForceReport = false;

/// Replaces "GasMassForce.txt" in the result directory: the drive, and the forces per degree from
/// -180 on. Throws RunStopped when the file can't be written.
void writeGasMassForceReport(const CrankDrive& drive, std::span<const double> CYLINDERPRESSURES,
                             const CrankForces& forces);

}  // namespace verenwick
