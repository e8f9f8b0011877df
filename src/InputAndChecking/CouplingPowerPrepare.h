#pragma once

#include "ComponentTables/ModelBundle.h"

namespace verenwick {

/// Gives each coupling and damper without a load case column one of its own: the power that passes
/// the shaft line there in each load case. Only where the load case table has entries to fill.
void COUPLINGPOWERPREPARE(ModelBundle& model);

}  // namespace verenwick
