#pragma once

#include <cstdint>

#include "ComponentTables/ModelBundle.h"

namespace verenwick {

/// Looks at the filled tables before anything is calculated, and loads the data files that the
/// input file names. Goes on behind a fault: the log gets a line for everything that is wrong.
/// Makes one repair, to the stiffness of a viscous damper's link.
/// @param calculationMode run mode; in modes 2 and 3 every machine needs a load case column
/// @returns true if there is nothing but warnings
[[nodiscard]] bool DATACHECKING(ModelBundle& model, std::int32_t calculationMode);

}  // namespace verenwick
