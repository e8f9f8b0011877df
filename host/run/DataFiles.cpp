#include "host/run/DataFiles.h"

#include <algorithm>
#include <set>
#include <string>
#include <system_error>
#include <utility>

#include "host/plant/Plant.h"
#include "input/LineRules.h"

namespace verenwick::host {
namespace {

namespace fs = std::filesystem;

/// As the solver opens it.
fs::path pathOf(std::string name) {
  if constexpr (fs::path::preferred_separator == '/') {
    std::replace(name.begin(), name.end(), '\\', '/');
  }
  return name;
}

}  // namespace

StartFolder startFolder(const fs::path& input) { return startFolder(input, readDocument(input)); }

StartFolder startFolder(const fs::path& input, const input::InputDocument& document) {
  std::error_code error;
  StartFolder beside{input.parent_path(), {}};
  StartFolder current{fs::current_path(error), {}};
  bool foundBeside = false;
  std::set<std::string> seen;
  const auto find = [&error](StartFolder& from, const std::string& name) {
    const fs::path path = (from.path / pathOf(name)).lexically_normal();
    if (!fs::is_regular_file(path, error)) {
      return false;
    }
    from.dataFiles.push_back({name, path, {}});
    return true;
  };
  for (const input::SectionValues& section : document.sections()) {
    for (const input::Value& value : section.values()) {
      if (value.text.empty() || section.fieldOf(value).length != input::kPathLength ||
          !seen.insert(value.text).second) {
        continue;
      }
      const bool found = find(beside, value.text);
      foundBeside = foundBeside || (found && pathOf(value.text).is_relative());
      if (!current.path.empty()) {
        find(current, value.text);
      }
    }
  }
  return foundBeside || current.dataFiles.empty() ? std::move(beside) : std::move(current);
}

}  // namespace verenwick::host
