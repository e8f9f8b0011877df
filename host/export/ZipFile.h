#pragma once

#include <set>
#include <string>
#include <string_view>

#include "host/WholeFile.h"

namespace verenwick::host {

/// A zip archive under construction in a closed file, one member after the other. All throw
/// std::runtime_error where the archive can't be written. Its library breaks the process where it
/// gets no memory.
class ZipFile {
 public:
  explicit ZipFile(WholeFile& file);
  ZipFile(const ZipFile&) = delete;
  ZipFile& operator=(const ZipFile&) = delete;
  ~ZipFile();

  /// Ends the member before and begins the next.
  void begin(const std::string& member);
  /// Goes on with the member that was begun last.
  void write(std::string_view text);
  /// Ends the archive and reads it back by the checksums of its members.
  void finish();

 private:
  void end();
  void check(int status) const;

  WholeFile* file_;
  std::set<std::string> members_;
  void* archive_;
  bool open_ = false;  ///< a member is
};

}  // namespace verenwick::host
