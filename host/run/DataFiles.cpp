#include "host/run/DataFiles.h"

#include <algorithm>
#include <set>
#include <string>
#include <system_error>
#include <utility>

#include "host/plant/InputLines.h"

namespace verenwick::host {
namespace {

namespace fs = std::filesystem;

/// What the line of a data file may hold: the name alone, or a first word, which may be quoted.
std::vector<std::string> namesIn(std::string_view line) {
  std::vector<std::string> names = {std::string(line)};
  if (line.starts_with('"') || line.starts_with('\'')) {
    names.emplace_back(line.substr(1, line.find(line[0], 1) - 1));
  } else if (const std::size_t blank = line.find(' '); blank != std::string_view::npos) {
    names.emplace_back(line.substr(0, blank));
  }
  return names;
}

/// As the solver opens it.
fs::path pathOf(std::string name) {
  if constexpr (fs::path::preferred_separator == '/') {
    std::replace(name.begin(), name.end(), '\\', '/');
  }
  return name;
}

}  // namespace

StartFolder startFolder(const fs::path& input) {
  std::error_code error;
  StartFolder beside{input.parent_path(), {}};
  StartFolder current{fs::current_path(error), {}};
  bool foundBeside = false;
  std::set<std::string> seen;
  const auto find = [&seen, &error](StartFolder& from, const std::string& name) {
    const fs::path path = (from.path / pathOf(name)).lexically_normal();
    if (!fs::is_regular_file(path, error)) {
      return false;
    }
    from.dataFiles.push_back({name, path, {}});
    return true;
  };
  InputLines lines(input);
  // Behind the keyword of the load cases no file is named; of the lines before nearly all are those
  // of inertias and shafts.
  while (lines.next() && !lines.startsWith("LOADCASE")) {
    if (lines.blank() || lines.startsWith("INERTIA") || lines.startsWith("SHAFT")) {
      continue;
    }
    for (const std::string& name : namesIn(lines.treated())) {
      if (!seen.insert(name).second) {
        continue;
      }
      const bool found = find(beside, name);
      foundBeside = foundBeside || (found && pathOf(name).is_relative());
      if (!current.path.empty()) {
        find(current, name);
      }
    }
  }
  return foundBeside || current.dataFiles.empty() ? std::move(beside) : std::move(current);
}

}  // namespace verenwick::host
