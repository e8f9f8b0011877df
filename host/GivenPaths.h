#pragma once

#include <filesystem>
#include <string_view>

/// Paths that a person gives, looked at before anything is made, removed or read. A link is not
/// followed as the file itself (folders on the way may be links), and nothing is opened that a
/// program would wait for. All throw std::runtime_error with words that name the path.
namespace verenwick::host {

/// A file to read: a regular file that opens.
void checkReadable(const std::filesystem::path& path);

/// The input file of a run: readable, under a name that reaches the solver as it is.
void checkInput(const std::filesystem::path& input);

/// A directory for the results of a run: its name reaches the solver as it is, and what stands
/// under the names of result files and of the others that a run writes is a regular file.
void checkResultDirectory(const std::filesystem::path& directory);

/// A result directory to read: what stands under the names of result files and of the run record is
/// a regular file.
void checkResultFiles(const std::filesystem::path& directory);

/// A file to write: nothing stands there yet, or a regular file.
void checkTarget(const std::filesystem::path& path);

}  // namespace verenwick::host
