#pragma once

#include <filesystem>

#include "host/check/Finding.h"

namespace verenwick::host {

/// Looks at a plant as its input file states it, before it is calculated. Throws std::runtime_error
/// if the file can't be read.
Findings checkPlant(const std::filesystem::path& input);

/// The same, and what the solver says to the plant: calculates it in a temporary directory. Peaks
/// that the load cases step over are warnings. Throws std::runtime_error if the calculation can't
/// begin.
Findings checkByCalculation(const std::filesystem::path& input);

}  // namespace verenwick::host
