#pragma once

#include "ComponentTables/ModelBundle.h"

namespace verenwick {

/// Writes "SystemInfo.bin": the sizes of the model, by which a reader of the result files finds its
/// way. A file that can't be written is told in the log and stops nothing.
void OUTPUTSYSTEMINFO(const ModelBundle& model);

/// Writes "Overview.txt": the firing status of every cylinder. No engine, no file; one that can't
/// be written is told in the log and stops nothing.
void OUTPUTDIESELFIRINGSTATUS(const DIESEL_TABLE& diesel);

}  // namespace verenwick
