#pragma once

#include <filesystem>

#include "results/ResultReader.h"

namespace verenwick::host {

/// What a run has calculated.
struct Steps {
  bool free;
  bool forced;
};

/// Prints what an engineer wants to see of a run first, from the files that the run has left: the
/// sizes of the model, the natural frequencies with the node counts of their mode shapes, the
/// critical speeds of the engines, and the largest values of each load case.
void printRunSummary(const std::filesystem::path& input, const results::ResultDirectory& directory,
                     Steps steps);

}  // namespace verenwick::host
