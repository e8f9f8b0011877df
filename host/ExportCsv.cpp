#include <fmt/format.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "host/Export.h"

namespace verenwick::host {
namespace {

/// With as many digits as read back the same number.
void append(std::string& line, double value) {
  if (std::isnan(value)) {
    line += "nan";  // its sign means nothing
  } else {
    fmt::format_to(std::back_inserter(line), "{}", value);
  }
}

void writeTable(ExportTable table, const std::filesystem::path& path) {
  std::ofstream stream(path, std::ios::binary);
  std::string line;
  const auto end = [&stream, &line] {
    line.back() = '\n';
    stream << line;
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
  stream.close();
  if (!stream) {
    throw std::runtime_error(fmt::format("{} can't be written", path.string()));
  }
}

}  // namespace

void exportCsv(const results::ResultDirectory& directory, const Names& names,
               const std::filesystem::path& output) {
  std::error_code error;
  std::filesystem::create_directories(output, error);
  if (!std::filesystem::is_directory(output, error)) {
    throw std::runtime_error(fmt::format("{} can't be made a directory", output.string()));
  }
  for (const results::ResultFile* file : binaryFiles(directory)) {
    const std::filesystem::path name = file->name;
    writeTable({directory.open(*file), names}, output / (name.stem().string() + ".csv"));
  }
}

}  // namespace verenwick::host
