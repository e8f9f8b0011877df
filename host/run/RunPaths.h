#pragma once

#include <filesystem>

/// Paths of a run, looked at before anything is made, removed or read. All throw
/// std::runtime_error with words that name the path.
namespace verenwick::host {

/// The input file of a run: readable, under a name that reaches the solver as it is.
void checkInput(const std::filesystem::path& input);

/// A directory for the results of a run: its name reaches the solver as it is, and what stands
/// under the names of result files and of the others that a run writes is a regular file.
void checkResultDirectory(const std::filesystem::path& directory);

/// A result directory to read: what stands under the names of result files and of the run record is
/// a regular file.
void checkResultFiles(const std::filesystem::path& directory);

}  // namespace verenwick::host
