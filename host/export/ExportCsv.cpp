#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <iterator>
#include <optional>
#include <stdexcept>

#include "host/Ending.h"
#include "host/WholeFile.h"
#include "host/export/Export.h"

namespace verenwick::host {
namespace {

namespace fs = std::filesystem;

/// The file beside the tables for what must be said of them.
constexpr const char* kRemarkName = "verenwick-remark.txt";

/// A directory that was made for the tables: it goes away with them if they don't come to stay.
class NewDirectory {
 public:
  explicit NewDirectory(fs::path path) : path_(std::move(path)) {
    if (!path_.empty()) {
      unfinished_.emplace(path_);
    }
  }
  NewDirectory(const NewDirectory&) = delete;
  NewDirectory& operator=(const NewDirectory&) = delete;
  ~NewDirectory() {
    if (std::error_code error; !path_.empty()) {
      fs::remove(path_, error);  // unless it holds something
    }
  }

 private:
  fs::path path_;
  std::optional<Unfinished> unfinished_;
};

/// With as many digits as read back the same number.
void append(std::string& line, double value) {
  if (std::isnan(value)) {
    line += "nan";  // its sign means nothing
  } else {
    fmt::format_to(std::back_inserter(line), "{}", value);
  }
}

void writeTable(ExportTable table, WholeFile& file) {
  std::string line;
  const auto end = [&file, &line] {
    line.back() = '\n';
    file.write(line);
    line.clear();
  };
  for (const std::string& word : table.header()) {
    line += word + ',';
  }
  end();
  std::vector<std::string> labels;
  std::vector<double> values;
  while (table.next(labels, values)) {
    for (const std::string& label : labels) {
      line += label + ',';
    }
    for (const double value : values) {
      append(line, value);
      line += ',';
    }
    end();
  }
  file.close();
}

std::string nameOf(const results::ResultFile& file) {
  return fs::path(file.name).stem().string() + ".csv";
}

}  // namespace

void exportCsv(const OpenedResults& opened, const Names& names, const fs::path& output) {
  static_assert(results::kResultFiles.size() + 2 < kUnfinishedFiles);
  std::error_code error;
  if (fs::is_symlink(fs::symlink_status(output, error))) {
    throw std::runtime_error(fmt::format(
        "{} is a link, which is not followed; nothing is written there", output.string()));
  }
  const std::vector<const results::ResultFile*> exported = binaryFiles(opened.directory);
  // What these results don't have of an earlier export; whatever else is there stays.
  std::vector<fs::path> stale;
  for (const results::ResultFile& each : results::kResultFiles) {
    if (each.layout != results::Layout::text &&
        std::find(exported.begin(), exported.end(), &each) == exported.end()) {
      stale.push_back(output / nameOf(each));
    }
  }
  if (opened.remark.empty()) {
    stale.push_back(output / kRemarkName);
  }
  const NewDirectory made(fs::exists(output, error) ? fs::path() : output);
  fs::create_directories(output, error);
  if (!fs::is_directory(output, error)) {
    throw std::runtime_error(fmt::format("{} can't be made a directory", output.string()));
  }
  // All of them are written before the first takes the place of an earlier one.
  std::deque<WholeFile> files;
  for (const results::ResultFile* each : exported) {
    writeTable({opened.directory.open(*each), names}, files.emplace_back(output / nameOf(*each)));
  }
  if (!opened.remark.empty()) {
    WholeFile& file = files.emplace_back(output / kRemarkName);
    file.write(opened.remark + '\n');
    file.close();
  }
  const HeldSignals held;
  for (WholeFile& file : files) {
    file.finish();
  }
  for (const fs::path& path : stale) {
    if (fs::is_regular_file(fs::symlink_status(path, error)) && !fs::remove(path, error)) {
      throw std::runtime_error(fmt::format("{} of an earlier export can't be removed: {}",
                                           path.string(), error.message()));
    }
  }
}

}  // namespace verenwick::host
