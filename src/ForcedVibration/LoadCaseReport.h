#pragma once

#include "ComponentTables/ModelBundle.h"

namespace verenwick {

/// Writes "LoadCaseSetting.txt": what each component with a load case column does in each load
/// case. On the way it puts the load cases on the components; what the last one leaves there is
/// used by the calculation, as the stiffness of a rubber damper and the damping from which the loss
/// of a Geislinger coupling starts.
void WRITELOADCASESETTING(ModelBundle& model);

}  // namespace verenwick
