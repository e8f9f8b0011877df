#pragma once

#include <vector>

#include "host/plant/Plant.h"
#include "host/plant/ShaftLine.h"

namespace verenwick::host {

/// The machines, couplings and dampers of a plant, in the order of its input file.
std::vector<Component> componentsOf(const Plant& plant);

}  // namespace verenwick::host
