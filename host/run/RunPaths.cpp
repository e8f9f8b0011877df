#include "host/run/RunPaths.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>

#include "host/GivenPaths.h"
#include "host/run/RunLock.h"
#include "host/run/RunRecord.h"
#include "results/ResultFileTable.h"
#include "verenwick.h"

namespace verenwick::host {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestName =
    std::max_element(results::kResultFiles.begin(), results::kResultFiles.end(),
                     [](const auto& a, const auto& b) { return a.name.size() < b.name.size(); })
        -> name.size();

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
    refusePath(shown, "can't be taken: its name holds a control character");
  }
  if (fs::path::preferred_separator == '/' && text.find('\\') != std::string::npos) {
    refusePath(path,
               "can't be taken: its name holds a backslash, which the solver reads as a slash");
  }
  if (begins(path.filename(), ' ') || ends(path.filename(), ' ') || ends(path.parent_path(), ' ')) {
    refusePath(path,
               "can't be taken: a name begins or ends with a blank, which the solver cuts off");
  }
  if (text.size() > room) {
    refusePath(path, fmt::format("can't be taken: its path has {} characters, {} are the most",
                                 text.size(), room));
  }
}

}  // namespace

void checkInput(const fs::path& input) {
  checkWords(fs::absolute(input), VERENWICK_TEXT_LENGTH);
  checkReadable(input);
}

void checkResultDirectory(const fs::path& directory) {
  fs::path whole = fs::absolute(directory);
  if (!whole.has_filename()) {
    whole = whole.parent_path();
  }
  checkWords(whole, VERENWICK_TEXT_LENGTH - kLongestName - 1);
  for (const results::ResultFile& file : results::kResultFiles) {
    checkTarget(whole / file.name);
  }
  checkTarget(whole / kRecordName);
  checkTarget(whole / kLockName);
}

void checkResultFiles(const fs::path& directory) {
  constexpr std::string_view otherwise = "it is not read";
  checkPlain(directory / kRecordName, otherwise);
  for (const results::ResultFile& file : results::kResultFiles) {
    checkPlain(directory / file.name, otherwise);
  }
}

}  // namespace verenwick::host
