#pragma once

#include <filesystem>
#include <string>

#include "host/check/Finding.h"
#include "results/ResultReader.h"

namespace verenwick::host {

/// Looks at a plant as its input file states it, before it is calculated. Throws std::runtime_error
/// if the file can't be read.
Findings checkPlant(const std::filesystem::path& input);

/// The same, and what the results of a run of the plant tell.
Findings checkRun(const std::filesystem::path& input, const results::ResultDirectory& directory);

/// The same of a run in a temporary directory, and what the solver says to the plant. Peaks that
/// the load cases step over are warnings. Throws std::runtime_error if the calculation can't begin.
Findings checkByCalculation(const std::filesystem::path& input);

/// Whether a warning of the solver is of the firing angles of two banks. It compares them the other
/// way round than they act, and so warns of every V engine; the look at the plant does it right.
bool isOfBanks(const std::string& message);

}  // namespace verenwick::host
