#include "host/GivenPaths.h"

#include <fmt/format.h>

#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

namespace verenwick::host {
namespace {

namespace fs = std::filesystem;

/// What stands at a path in place of a regular file.
std::string kindOf(const fs::path& path, fs::file_type type) {
  switch (type) {
    case fs::file_type::directory:
      return "is a directory";
    case fs::file_type::fifo:
      return "is a pipe";
    case fs::file_type::block:
    case fs::file_type::character:
      return "is a device";
    case fs::file_type::socket:
      return "is a socket";
    case fs::file_type::symlink: {
      std::error_code error;
      const fs::path end = fs::canonical(path, error);
      return error ? fmt::format("is a link that leads nowhere ({})",
                                 fs::read_symlink(path, error).string())
                   : fmt::format("is a link to {}, which is not followed", end.string());
    }
    default:
      return "is no regular file";
  }
}

}  // namespace

void refusePath(const fs::path& path, std::string_view words) {
  throw std::runtime_error(fmt::format("{} {}", path.string(), words));
}

void checkReadable(const fs::path& path) {
  std::error_code error;
  const fs::file_type type = fs::symlink_status(path, error).type();
  if (type == fs::file_type::not_found || type == fs::file_type::none) {
    refusePath(path, "can't be read: " + error.message());
  }
  if (type != fs::file_type::regular) {
    const bool leads = type == fs::file_type::symlink && fs::exists(path, error);
    refusePath(path, kindOf(path, type) + (leads ? ": name that file itself" : ""));
  }
  errno = 0;
  if (!std::ifstream(path).is_open()) {
    refusePath(path, "can't be read: " + std::generic_category().message(errno));
  }
}

void checkPlain(const fs::path& path, std::string_view otherwise) {
  std::error_code error;
  const fs::file_type type = fs::symlink_status(path, error).type();
  if (type != fs::file_type::not_found && type != fs::file_type::none &&
      type != fs::file_type::regular) {
    refusePath(path, fmt::format("{}; {}", kindOf(path, type), otherwise));
  }
}

void checkTarget(const fs::path& path) { checkPlain(path, "nothing is written there"); }

}  // namespace verenwick::host
