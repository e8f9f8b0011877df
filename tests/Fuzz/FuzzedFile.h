#pragma once

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "RunControl/Global_Parameter.h"

namespace verenwick::fuzz {

/// Puts the fuzzer's bytes into a file of this process's own directory, which is the result
/// directory too, and gives the file's path. The log of the input before is removed.
inline std::string fuzzedFile(const std::uint8_t* data, std::size_t size,
                              const std::string& name = "fuzzed.txt") {
  static const std::string directory = [] {
    const auto path =
        std::filesystem::temp_directory_path() / ("verenwick-fuzz-" + std::to_string(getpid()));
    std::filesystem::create_directories(path);
    return path.string();
  }();
  std::string resultDirectory = directory;
  SETRESULTFILEDIR(resultDirectory, static_cast<std::int32_t>(resultDirectory.size()));
  std::filesystem::remove(directory + "/Verenwick.log");
  const std::string path = directory + "/" + name;
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
  return path;
}

}  // namespace verenwick::fuzz
