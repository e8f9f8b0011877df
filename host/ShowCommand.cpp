#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/Commands.h"
#include "host/Readings.h"
#include "results/ResultReader.h"

namespace verenwick::host {
namespace {

using results::Axis;
using results::Column;
using results::findResultFile;
using results::Index;
using results::Layout;
using results::Position;
using results::ResultDirectory;
using results::ResultFile;
using results::ResultValues;

struct Filter {
  const char* option;
  const char* help;
  Index index;
  std::optional<std::int64_t> number;
};

struct ShowOptions {
  std::string directory;
  std::string name;
  bool csv = false;
  std::array<Filter, results::kIndices> filters{{
      {"--case", "Only this load case", Index::loadCase, {}},
      {"--source", "Only this source, or engine of the vector sums", Index::source, {}},
      {"--mode", "Only this mode", Index::mode, {}},
      {"--order", "Only this order, by its number in the list of orders", Index::order, {}},
      {"--point", "Only this inertia or shaft, by its row in the input file", Index::point, {}},
      {"--step", "Only this step of the period", Index::step, {}},
  }};
};

const ResultFile& fileOf(const std::string& name) {
  for (const char* ending : {"", ".bin", ".txt", ".log"}) {
    if (const ResultFile* file = findResultFile(name + ending)) {
      return *file;
    }
  }
  throw UsageError(fmt::format("{} is no result file", name));
}

/// The axes of a file, narrowed to what is asked for.
std::vector<Axis> narrowed(const ResultValues& values, const ShowOptions& options) {
  std::vector<Axis> axes = values.axes();
  for (const Filter& filter : options.filters) {
    if (!filter.number) {
      continue;
    }
    const auto axis = std::find_if(axes.begin(), axes.end(),
                                   [&](const Axis& each) { return each.index == filter.index; });
    if (axis == axes.end()) {
      throw UsageError(
          fmt::format("{} has nothing to choose by {}", values.file().name, filter.option));
    }
    if (*filter.number < axis->first || *filter.number > axis->last) {
      throw UsageError(axis->size() == 0
                           ? fmt::format("{} has no {}", values.file().name, axis->name)
                           : fmt::format("{} has the {}s {} to {}", values.file().name, axis->name,
                                         axis->first, axis->last));
    }
    axis->first = axis->last = *filter.number;
  }
  return axes;
}

/// Lines of a table, in columns or separated by commas.
class Lines {
 public:
  Lines(bool csv, std::vector<std::size_t> widths) : csv_(csv), widths_(std::move(widths)) {}

  void add(std::string_view text) {
    if (csv_) {
      fmt::format_to(std::back_inserter(line_), "{}{}", column_ == 0 ? "" : ",", text);
    } else {
      fmt::format_to(std::back_inserter(line_), "{:>{}}", text, widths_[column_]);
    }
    ++column_;
  }
  /// With all digits where a program reads them.
  void add(double value) {
    if (std::isnan(value)) {
      add("nan");  // its sign means nothing
    } else {
      add(csv_ ? fmt::format("{}", value) : fmt::format("{:.8g}", value));
    }
  }

  void end() {
    line_ += '\n';
    if (std::fwrite(line_.data(), 1, line_.size(), stdout) != line_.size()) {
      throw std::runtime_error("the output can't be written");
    }
    line_.clear();
    column_ = 0;
  }

 private:
  bool csv_;
  std::vector<std::size_t> widths_;
  std::string line_;
  std::size_t column_ = 0;
};

void showValues(ResultValues values, const ShowOptions& options) {
  constexpr std::size_t kGap = 2;
  constexpr std::size_t kValueWidth = 18;
  const std::vector<Axis> axes = narrowed(values, options);
  std::vector<std::string> header;
  std::vector<std::size_t> widths;
  for (const Axis& axis : axes) {
    std::size_t width = axis.name.size();
    if (values.file().layout == Layout::systemInfo) {
      for (std::int64_t number = axis.first; number <= axis.last; ++number) {
        width = std::max(width, values.label(axis, number).size());
      }
    } else {
      width = std::max(width, std::to_string(axis.last).size());
    }
    header.emplace_back(axis.name);
    widths.push_back(width + kGap);
  }
  for (const Column& column : values.columns()) {
    header.push_back(fmt::format("{} [{}]", column.name, column.unit));
    widths.push_back(std::max(header.back().size() + kGap, kValueWidth));
  }

  if (!options.csv) {
    fmt::print("{}: {}\n", values.file().name, values.file().holds);
  }
  Lines lines(options.csv, widths);
  for (const std::string& word : header) {
    lines.add(word);
  }
  lines.end();
  Position at;
  for (const Axis& axis : axes) {
    if (axis.size() == 0) {
      return;
    }
    at[axis.index] = axis.first;
  }
  do {
    for (const Axis& axis : axes) {
      lines.add(values.label(axis, at[axis.index]));
    }
    for (std::size_t column = 1; column <= values.columns().size(); ++column) {
      lines.add(values.value(at, static_cast<std::int64_t>(column)));
    }
    lines.end();
  } while (advance(at, axes));
}

void show(const ShowOptions& options) {
  const ResultFile& file = fileOf(options.name);
  const ResultDirectory directory(options.directory);
  if (file.layout == Layout::text) {
    const std::string text = directory.text(file);
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
      throw std::runtime_error("the output can't be written");
    }
    return;
  }
  showValues(directory.open(file), options);
}

}  // namespace

void addShowCommand(CLI::App& program, int& status) {
  CLI::App* command = program.add_subcommand("show", "Print a result file as a table");
  const auto options = std::make_shared<ShowOptions>();
  command->add_option("DIR", options->directory, "Result directory")->required();
  command->add_option("NAME", options->name, "Name of the file, with or without its ending")
      ->required();
  command->add_flag("--csv", options->csv, "Separate by commas and print all digits");
  for (Filter& filter : options->filters) {
    command->add_option(filter.option, filter.number, filter.help);
  }
  command->callback([options, &status] {
    show(*options);
    status = 0;
  });
}

}  // namespace verenwick::host
