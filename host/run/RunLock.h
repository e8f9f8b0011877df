#pragma once

#include <filesystem>

namespace verenwick::host {

/// The name of the lock file in a result directory; it is there while a run is on.
inline constexpr const char* kLockName = "run.lock";

/// Keeps a result directory to one run. The system frees the lock when the process ends, in
/// whatever way.
class RunLock {
 public:
  /// Throws std::runtime_error if another run holds the directory, or if the lock can't be made.
  explicit RunLock(const std::filesystem::path& directory);
  RunLock(const RunLock&) = delete;
  RunLock& operator=(const RunLock&) = delete;
  ~RunLock();

  /// Whether a run holds the directory.
  static bool isHeld(const std::filesystem::path& directory);

 private:
  std::filesystem::path path_;
  int file_ = -1;
};

}  // namespace verenwick::host
