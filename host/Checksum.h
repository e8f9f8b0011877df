#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

/// What tells whether a file is still the one that it was.
namespace verenwick::host {

/// Size and checksum of a file.
struct FileState {
  std::uintmax_t bytes = 0;
  std::string checksum;  ///< hexadecimal

  bool operator==(const FileState&) const = default;
};

enum class Checksum {
  sha256,  ///< cryptographic: for inputs, which are small
  xxh3     ///< as fast as a file is read: for results, which may be large; 64 bits
};

/// Reads a file through. Only regular files are read; throws std::runtime_error if it can't be.
FileState stateOf(const std::filesystem::path& path, Checksum kind);

/// XXH3 of a text.
std::string checksumOf(const std::string& text);

}  // namespace verenwick::host
