#pragma once

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string_view>

#include "host/Ending.h"

namespace verenwick::host {

/// A file that appears whole or not at all. It is written under a temporary name beside its target
/// and takes its place, and that of an earlier file there, when it is finished; otherwise the
/// temporary file goes away. All throw std::runtime_error with the name of the target and the
/// reason.
class WholeFile {
 public:
  /// Makes the temporary file. A target that is there and is no plain file, as a link, a directory
  /// or a pipe, is refused.
  explicit WholeFile(std::filesystem::path target);
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;
  ~WholeFile();

  void write(std::string_view text);
  /// Waits until what was written is on the disk, so that the name never stands for less.
  void bringToDisk();
  /// Closes the temporary file, whose last bytes may fail only now.
  void close();
  /// Closes it and puts it in the place of the target.
  void finish();

  [[nodiscard]] const std::filesystem::path& target() const { return target_; }
  /// The temporary name, for a library that writes a file by its name; to be closed before.
  [[nodiscard]] const std::filesystem::path& temporary() const { return temporary_; }
  /// Throws for such a library, with the reason if the system has just told one.
  [[noreturn]] void fail() const;

 private:
  [[noreturn]] void fail(int error) const;

  std::filesystem::path target_;
  std::filesystem::path temporary_;
  std::optional<Unfinished> unfinished_;
  std::FILE* stream_ = nullptr;
};

}  // namespace verenwick::host
