#include "host/GivenPaths.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

#include "host/RunLock.h"
#include "host/RunRecord.h"
#include "results/ResultFileTable.h"

namespace verenwick::host {
namespace {

namespace fs = std::filesystem;

/// Characters of a path that the C interface takes.
constexpr std::size_t kPathLength = 1000;

constexpr std::size_t kLongestName =
    std::max_element(results::kResultFiles.begin(), results::kResultFiles.end(),
                     [](const auto& a, const auto& b) { return a.name.size() < b.name.size(); })
        -> name.size();

[[noreturn]] void refuse(const fs::path& path, std::string_view words) {
  throw std::runtime_error(fmt::format("{} {}", path.string(), words));
}

/// What stands at a path, whose last link isn't followed; not_found also where that can't be told.
fs::file_type typeOf(const fs::path& path) {
  std::error_code error;
  const fs::file_type type = fs::symlink_status(path, error).type();
  return type == fs::file_type::none ? fs::file_type::not_found : type;
}

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

bool begins(const fs::path& name, char c) { return name.string().starts_with(c); }
bool ends(const fs::path& name, char c) { return name.string().ends_with(c); }

/// Refuses what the C interface would change: it cuts blanks at both ends of a name, reads a
/// backslash as the separator, and cuts a long path. A name that breaks a line can't be shown.
void checkWords(const fs::path& path, std::size_t room) {
  const std::string text = path.string();
  if (std::any_of(text.begin(), text.end(),
                  [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; })) {
    std::string shown = text;
    std::replace_if(
        shown.begin(), shown.end(),
        [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, '?');
    refuse(shown, "can't be taken: its name holds a control character");
  }
  if (fs::path::preferred_separator == '/' && text.find('\\') != std::string::npos) {
    refuse(path, "can't be taken: its name holds a backslash, which the solver reads as a slash");
  }
  if (begins(path.filename(), ' ') || ends(path.filename(), ' ') || ends(path.parent_path(), ' ')) {
    refuse(path, "can't be taken: a name begins or ends with a blank, which the solver cuts off");
  }
  if (text.size() > room) {
    refuse(path, fmt::format("can't be taken: its path has {} characters, {} are the most",
                             text.size(), room));
  }
}

}  // namespace

void checkReadable(const fs::path& path) {
  std::error_code error;
  const fs::file_type type = fs::symlink_status(path, error).type();
  if (type == fs::file_type::not_found || type == fs::file_type::none) {
    refuse(path, "can't be read: " + error.message());
  }
  if (type != fs::file_type::regular) {
    const bool leads = type == fs::file_type::symlink && fs::exists(path, error);
    refuse(path, kindOf(path, type) + (leads ? ": name that file itself" : ""));
  }
  errno = 0;
  if (!std::ifstream(path).is_open()) {
    refuse(path, "can't be read: " + std::generic_category().message(errno));
  }
}

void checkInput(const fs::path& input) {
  checkWords(fs::absolute(input), kPathLength);
  checkReadable(input);
}

void checkResultDirectory(const fs::path& directory) {
  fs::path whole = fs::absolute(directory);
  if (!whole.has_filename()) {
    whole = whole.parent_path();
  }
  checkWords(whole, kPathLength - kLongestName - 1);
  for (const results::ResultFile& file : results::kResultFiles) {
    checkTarget(whole / file.name);
  }
  checkTarget(whole / kRecordName);
  checkTarget(whole / kLockName);
}

void checkResultFiles(const fs::path& directory) {
  const auto check = [&directory](std::string_view name) {
    const fs::path path = directory / name;
    const fs::file_type type = typeOf(path);
    if (type != fs::file_type::not_found && type != fs::file_type::regular) {
      refuse(path, kindOf(path, type) + "; it is not read");
    }
  };
  check(kRecordName);
  for (const results::ResultFile& file : results::kResultFiles) {
    check(file.name);
  }
}

void checkTarget(const fs::path& path) {
  const fs::file_type type = typeOf(path);
  if (type != fs::file_type::not_found && type != fs::file_type::regular) {
    refuse(path, kindOf(path, type) + "; nothing is written there");
  }
}

}  // namespace verenwick::host
