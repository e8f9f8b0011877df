#pragma once

#include <filesystem>
#include <vector>

#include "host/run/RunRecord.h"

namespace verenwick::host {

/// Where a run starts, and the data files that it finds from there.
struct StartFolder {
  std::filesystem::path path;
  std::vector<ReadFile> dataFiles;  ///< without their states
};

/// The folder of the input file, beside which its data files lie; the current one where none of
/// the names that the input gives is found beside it, but some from there.
StartFolder startFolder(const std::filesystem::path& input);

}  // namespace verenwick::host
