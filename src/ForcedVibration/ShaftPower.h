#pragma once

#include <vector>

#include "ComponentTables/ModelBundle.h"

namespace verenwick {

/// Power that every shaft carries in every load case, W, element (L - 1) NSHAFT + s.
std::vector<double> CALCULATELOADCASESHAFTPOWER(const ModelBundle& model);

/// Share of the inertia that lies on the side of each shaft away from the propeller. It is 1 unless
/// the line has exactly one propeller.
std::vector<double> CALCULATESHAFTINERTIARATIO(const ModelBundle& model);

}  // namespace verenwick
