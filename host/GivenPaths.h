#pragma once

#include <filesystem>
#include <string_view>

/// Paths that a person gives, looked at before anything is made, removed or read. A link is not
/// followed as the file itself (folders on the way may be links), and nothing is opened that a
/// program would wait for. All throw std::runtime_error with words that name the path.
namespace verenwick::host {

/// Throws: the path and what is wrong with it.
[[noreturn]] void refusePath(const std::filesystem::path& path, std::string_view words);

/// A file to read: a regular file that opens.
void checkReadable(const std::filesystem::path& path);

/// Nothing stands there yet, or a regular file; else the words say what doesn't happen.
void checkPlain(const std::filesystem::path& path, std::string_view otherwise);

/// A file to write: nothing stands there yet, or a regular file.
void checkTarget(const std::filesystem::path& path);

}  // namespace verenwick::host
