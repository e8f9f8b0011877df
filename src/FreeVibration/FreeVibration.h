#pragma once

#include "ComponentTables/ModelBundle.h"

namespace verenwick {

/// Natural frequencies and mode shapes of the shaft line at nominal stiffness, written to the free
/// vibration files. Leaves INERTIAEFFECTIVE and STIFFNESSDYNAMIC with their free values.
void FREEVIBRATIONCALCULATION(ModelBundle& model);

}  // namespace verenwick
