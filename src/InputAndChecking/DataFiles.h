#pragma once

#include "ComponentTables/ModelBundle.h"

namespace verenwick {

/// Reads the data files that the input file named, once a run. A file that can't be read doesn't
/// keep those of other kinds from being read.
/// @returns true if all could be read; the words of a failure are in the log
[[nodiscard]] bool loadDataFiles(ModelBundle& model);

}  // namespace verenwick
