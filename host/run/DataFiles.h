#pragma once

#include <filesystem>
#include <vector>

#include "host/run/RunRecord.h"
#include "input/InputDocument.h"

namespace verenwick::host {

/// Holds the pressures of genset engines; lies beside the input, which doesn't name it, and goes
/// into the result directory with the run.
inline constexpr const results::ResultFile& kGensetFile = results::resultFile("Genset.txt");

/// Where a run starts, and the data files that it finds from there.
struct StartFolder {
  std::filesystem::path path;
  std::vector<ReadFile> dataFiles;  ///< without their states
};

/// The folder of the input file, beside which its data files lie; the current one where none of
/// the names that the input gives is found beside it, but some from there.
StartFolder startFolder(const std::filesystem::path& input);

/// The same where the text of the input has been read.
StartFolder startFolder(const std::filesystem::path& input, const input::InputDocument& document);

}  // namespace verenwick::host
