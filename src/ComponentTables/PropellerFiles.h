#pragma once

#include "ComponentTables/Global_Propeller.h"

/// The data files of a propeller. A blank file name means no file. A line that can't be read is
/// named in the log, and values read before it stay.
namespace verenwick {

/// Reads the ice excitation file of a row: speed ratios, then cosine and sine of each harmonic at
/// each of them, as many lines as the blades ask for. NSPEEDRATIO stands before.
[[nodiscard]] bool LOAD_PROPELLER_EXCITATIONFILE(PROPELLER_TABLE& table, std::int32_t row);

/// Reads the entrained water of a row, one line a load case: a word, then the inertia in kg m2.
[[nodiscard]] bool LOAD_PROPELLER_VARIABLEENTRAINEDWATERFILE(PROPELLER_TABLE& table,
                                                             std::int32_t row);

}  // namespace verenwick
