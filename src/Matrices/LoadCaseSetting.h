#pragma once

#include <cstdint>

#include "ComponentTables/ModelBundle.h"

namespace verenwick {

/// Puts one load case on the whole line: speed of every inertia and shaft; power, speed and torque
/// of every component that has a column; and what follows from these of each component's
/// excitation.
void LOADCASESETTING(ModelBundle& model, std::int32_t loadCase);

/// Puts power, speed and torque of a load case on the component of one column, without computing
/// its excitation. A column that is unused, names a component that isn't there or names one a
/// second time changes nothing.
void setOperatingPoint(ModelBundle& model, std::int32_t column, std::int32_t loadCase);

}  // namespace verenwick
