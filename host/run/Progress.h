#pragma once

#include <atomic>
#include <filesystem>
#include <string>
#include <thread>

namespace verenwick::host {

/// How far a run is, by the share of the forced results that it has written: "[####....]  17 %".
std::string progressOf(const std::filesystem::path& results);

/// While it lives, a line on standard error shows how far a run in this process is. It appears
/// after a second and goes away in the end; without a thread to draw it there is none.
class ProgressLine {
 public:
  explicit ProgressLine(std::filesystem::path results);
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;
  ~ProgressLine();

 private:
  void watch() const;

  std::filesystem::path results_;
  std::atomic<bool> ended_ = false;
  std::thread thread_;
};

}  // namespace verenwick::host
