#pragma once

#include "ComponentTables/ModelBundle.h"

namespace verenwick {

/// Forced vibration of the line in every load case: the response to every order of every source,
/// what each shaft undergoes by it, and the synthesis of all. Leaves the report of the load case
/// settings and the forced result files in the result directory.
/// Throws RunStopped when a system can't be solved or a file can't be written.
void FORCEDVIBRATIONCALCULATION(ModelBundle& model);

}  // namespace verenwick
