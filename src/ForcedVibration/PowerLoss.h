#pragma once

#include <span>

#include "ComponentTables/ModelBundle.h"
#include "ForcedVibration/FamilyResults.h"

namespace verenwick {

/// Power that every shaft dissipates, W: work per vibration cycle over the time of a cycle, summed
/// over all orders of all families. Speed and orders of a family are those of its first source.
void SINGLELOADCASESHAFTPOWERLOSS(ModelBundle& model, const LoadCaseResults& results,
                                  std::span<double> SHAFTPOWERLOSS);

}  // namespace verenwick
