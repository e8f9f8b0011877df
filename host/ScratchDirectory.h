#pragma once

#include <filesystem>

namespace verenwick::host {

/// A directory of its own among the temporary files of the system; it goes away with all that is in
/// it. Throws std::runtime_error if it can't be made.
class ScratchDirectory {
 public:
  ScratchDirectory();
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;
  ~ScratchDirectory();

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace verenwick::host
