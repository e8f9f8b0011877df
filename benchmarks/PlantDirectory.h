#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <vector>

#include "verenwick.hpp"

namespace verenwick::plant {

/// A plant's input file and a directory for its results, removed at the end.
class PlantDirectory {
 public:
  explicit PlantDirectory(const std::string& inputText)
      : path_(std::filesystem::temp_directory_path() / "verenwick-whole-run") {
    std::filesystem::create_directories(results());
    std::ofstream(path_ / "input.txt") << inputText;
  }
  ~PlantDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  PlantDirectory(const PlantDirectory&) = delete;
  PlantDirectory& operator=(const PlantDirectory&) = delete;

  std::filesystem::path results() const { return path_ / "results"; }

  /// Runs free and forced vibration; false if the plant was not accepted.
  bool run() const {
    return api::solve(path_.string(), "input.txt", results().string(), api::Mode::both);
  }

  /// Bytes of all files that the run left.
  std::uintmax_t bytes() const {
    std::uintmax_t sum = 0;
    for (const auto& entry : std::filesystem::directory_iterator(results())) {
      sum += entry.file_size();
    }
    return sum;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace verenwick::plant
