#include "host/commands/ShowTable.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "host/UsageError.h"
#include "host/commands/CommandLine.h"
#include "host/commands/Commands.h"
#include "host/commands/OptionChecks.h"
#include "host/plant/PlaceNames.h"
#include "host/plant/Readings.h"

namespace verenwick::host {
namespace {

using results::Axis;
using results::Column;
using results::Index;
using results::kResultFiles;
using results::Layout;
using results::Position;
using results::ResultDirectory;
using results::ResultFile;
using results::ResultValues;
using results::Step;

constexpr std::size_t kGap = 2;

void write(const std::string& text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
    throw std::runtime_error("the output can't be written");
  }
}

/// What must be said of the results: at the head of a table, beside one that a program reads.
void writeRemark(const TableForm& form) {
  if (form.remark.empty()) {
    return;
  }
  if (form.csv) {
    fmt::print(stderr, "{}\n", form.remark);
  } else {
    write(fmt::format("({})\n", form.remark));
  }
}

/// A number as short as it reads back.
std::string plain(double value) { return fmt::format("{}", value); }

/// Numbers of which there may be many.
std::string listedIds(const std::vector<std::int64_t>& numbers) {
  constexpr std::size_t kShown = 20;
  std::vector<std::string> words;
  for (std::size_t i = 0; i < std::min(kShown, numbers.size()); ++i) {
    words.push_back(std::to_string(numbers[i]));
  }
  if (numbers.size() > kShown) {
    return fmt::format("{}, ... {}", fmt::join(words, ", "), numbers.back());
  }
  return listed(words);
}

/// The rows of a file that a choice leaves, with words for what isn't there.
class Selection {
 public:
  Selection(const ResultValues& values, const PlaceNames& names, const Choice& choice)
      : values_(values), names_(names), axes_(values.axes()) {
    keep("--case", Index::loadCase, choice.loadCase);
    keep("--mode", Index::mode, choice.mode);
    keep("--step", Index::step, choice.step);
    keepId("--source", Index::source, choice.source);
    keepId("--point", Index::point, choice.point);
    if (choice.order) {
      keepOrder(*choice.order);
    }
  }

  [[nodiscard]] const std::vector<Axis>& axes() const { return axes_; }
  [[nodiscard]] bool has(const Position& at) const {
    return !order_ || names_.order(at[Index::source], at[Index::order]) == *order_;
  }

 private:
  Axis& axisOf(const char* option, Index index) {
    const auto axis = std::find_if(axes_.begin(), axes_.end(),
                                   [index](const Axis& each) { return each.index == index; });
    if (axis == axes_.end()) {
      throw UsageError(fmt::format("{} has nothing to choose by {}", values_.file().name, option));
    }
    if (axis->size() == 0) {
      throw UsageError(fmt::format("{} has no {}", values_.file().name, axis->name));
    }
    return *axis;
  }

  void keep(const char* option, Index index, const std::optional<std::int64_t>& number) {
    if (!number) {
      return;
    }
    Axis& axis = axisOf(option, index);
    if (*number < axis.first || *number > axis.last) {
      throw UsageError(fmt::format("{} has no {} {}, but {} to {}", values_.file().name, axis.name,
                                   *number, axis.first, axis.last));
    }
    axis.first = axis.last = *number;
  }

  /// Ids where they are known, else numbers, and that is said.
  void keepId(const char* option, Index index, const std::optional<std::int64_t>& id) {
    if (!id || names_.ids(index).empty()) {
      keep(option, index, id);
      if (id && values_.file().layout != Layout::systemInfo) {
        fmt::print(stderr,
                   "{} {} is taken as the number of the {} in the order of the input file, not as "
                   "an id: the input file of these results isn't known (--input names it)\n",
                   option, *id, axisOf(option, index).name);
      }
      return;
    }
    const Axis& axis = axisOf(option, index);
    const auto number = names_.numberOf(index, *id);
    if (!number) {
      throw UsageError(fmt::format("{} has no {} with the id {}, but {}", values_.file().name,
                                   axis.name, *id, listedIds(names_.ids(index))));
    }
    keep(option, index, number);
  }

  void keepOrder(double order) {
    constexpr const char* option = "--order";
    if (!names_.knowsOrders()) {
      if (order != std::floor(order)) {
        throw UsageError(fmt::format(
            "{} {} must be a place in the list of orders here: which orders they are, only the "
            "input file of the results tells (--input names it)",
            option, plain(order)));
      }
      keep(option, Index::order, static_cast<std::int64_t>(order));
      fmt::print(stderr,
                 "{} {} is taken as the place in the list of orders: the input file of these "
                 "results isn't known (--input names it)\n",
                 option, plain(order));
      return;
    }
    const Axis places = axisOf(option, Index::order);
    const Axis sources = axisOf("--source", Index::source);
    std::optional<double> near;
    for (std::int64_t source = sources.first; source <= sources.last; ++source) {
      for (std::int64_t place = places.first; place <= places.last; ++place) {
        const double each = names_.order(source, place);
        if (each > 0 && (!near || std::abs(each - order) < std::abs(*near - order))) {
          near = each;
        }
      }
    }
    if (!near) {
      throw UsageError(fmt::format("{} has no orders in use", values_.file().name));
    }
    if (*near != order) {
      throw UsageError(fmt::format("{} has no order {}; the nearest is {}", values_.file().name,
                                   plain(order), plain(*near)));
    }
    order_ = order;
  }

  const ResultValues& values_;
  const PlaceNames& names_;
  std::vector<Axis> axes_;
  std::optional<double> order_;
};

/// Lines of a table, in columns or separated by commas.
class Lines {
 public:
  explicit Lines(bool csv) : csv_(csv) {}

  void addColumn(std::string name, std::size_t width) {
    widths_.push_back(std::max(name.size(), width) + kGap);
    header_.push_back(std::move(name));
  }
  void writeHeader() {
    for (const std::string& name : header_) {
      add(name);
    }
    end();
  }
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
      add(csv_ ? plain(value) : fmt::format("{:.8g}", value));
    }
  }
  void end() {
    line_ += '\n';
    write(line_);
    line_.clear();
    column_ = 0;
  }

 private:
  bool csv_;
  std::vector<std::string> header_;
  std::vector<std::size_t> widths_;
  std::string line_;
  std::size_t column_ = 0;
};

/// The words of an axis that say what its numbers are.
std::string nameOf(const Axis& axis, const PlaceNames& names, bool isCount) {
  switch (axis.index) {
    case Index::point:
      return fmt::format("{}{}", axis.name, isCount ? "" : " row");
    case Index::source:
      return fmt::format("{} number", axis.name);
    case Index::order:
      return names.knowsOrders() ? "order" : "order place";
    default:
      return std::string(axis.name);
  }
}

void addColumns(const Axis& axis, const ResultValues& values, const PlaceNames& names,
                Lines& lines) {
  const bool isCount = values.file().layout == Layout::systemInfo;
  if (const auto& ids = names.ids(axis.index); !ids.empty()) {
    lines.addColumn(fmt::format("{} id", axis.name), 0);
  }
  std::size_t width = 0;
  for (std::int64_t number = axis.first; isCount && number <= axis.last; ++number) {
    width = std::max(width, values.label(axis, number).size());
  }
  lines.addColumn(nameOf(axis, names, isCount), width);
  if (axis.index == Index::loadCase && !names.speeds().empty()) {
    lines.addColumn("speed [rpm]", 0);
  }
}

void addPlace(const Axis& axis, const Position& at, const ResultValues& values,
              const PlaceNames& names, Lines& lines) {
  const std::int64_t number = at[axis.index];
  if (const auto id = names.id(axis.index, number)) {
    lines.add(std::to_string(*id));
  }
  if (axis.index == Index::order && names.knowsOrders()) {
    lines.add(plain(names.order(at[Index::source], number)));
  } else {
    lines.add(values.label(*values.axis(axis.index), number));
  }
  if (axis.index == Index::loadCase && !names.speeds().empty()) {
    lines.add(plain(names.speeds().at(static_cast<std::size_t>(number - 1))));
  }
}

/// The sizes of a file, in words.
std::string sizesOf(const ResultFile& file, const ResultDirectory& directory) {
  const auto counted = [](std::int64_t count, std::string_view what) {
    return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
  };
  if (file.layout == Layout::text) {
    return counted(static_cast<std::int64_t>(directory.text(file).size()), "byte");
  }
  std::vector<std::string> sizes;
  const ResultValues values = directory.open(file);
  for (const Axis& axis : values.axes()) {
    sizes.push_back(counted(axis.size(), axis.name));
  }
  return fmt::format("{}", fmt::join(sizes, ", "));
}

/// The name of a file as `show` takes it.
std::string_view shortName(const ResultFile& file) {
  return file.name.substr(0, file.name.rfind('.'));
}

}  // namespace

void showTable(ResultValues values, const ResultDirectory& directory, const KnownLine& line,
               const Choice& choice, const TableForm& form) {
  constexpr std::size_t kValueWidth = 14;
  const PlaceNames names(values, directory, line);
  const Selection selection(values, names, choice);
  Lines lines(form.csv);
  for (const Axis& axis : selection.axes()) {
    addColumns(axis, values, names, lines);
  }
  for (const Column& column : values.columns()) {
    lines.addColumn(fmt::format("{} [{}]", column.name, column.unit), kValueWidth);
  }
  if (!form.csv) {
    write(fmt::format("{}: {}\n", values.file().name, values.file().holds));
  }
  writeRemark(form);
  lines.writeHeader();
  Position at;
  for (const Axis& axis : selection.axes()) {
    if (axis.size() == 0) {
      return;
    }
    at[axis.index] = axis.first;
  }
  do {
    if (!selection.has(at)) {
      continue;
    }
    for (const Axis& axis : selection.axes()) {
      addPlace(axis, at, values, names, lines);
    }
    for (std::size_t column = 1; column <= values.columns().size(); ++column) {
      lines.add(values.value(at, static_cast<std::int64_t>(column)));
    }
    lines.end();
  } while (advance(at, selection.axes()));
}

void showList(const ResultDirectory& directory, const std::string& about, const TableForm& form) {
  std::vector<const ResultFile*> files;
  std::size_t width = 0;
  for (const Step step : {Step::run, Step::free, Step::forced}) {
    for (const ResultFile& file : kResultFiles) {
      if (file.step == step && directory.has(file)) {
        files.push_back(&file);
        width = std::max(width, shortName(file).size());
      }
    }
  }
  if (files.empty()) {
    throw std::runtime_error(fmt::format("{} holds no results", directory.path().string()));
  }
  constexpr std::size_t kUnitWidth = 9;
  constexpr std::size_t kLineWidth = 80;
  if (form.csv) {
    write("file,unit,size,holds\n");
  } else {
    write(about + "\n");
  }
  writeRemark(form);
  std::optional<Step> heading;
  for (const ResultFile* file : files) {
    std::string sizes;
    try {
      sizes = sizesOf(*file, directory);
    } catch (const std::exception& fault) {
      sizes = fault.what();
    }
    if (form.csv) {
      write(fmt::format("{},{},\"{}\",\"{}\"\n", file->name, file->unit, sizes, file->holds));
      continue;
    }
    if (heading != file->step) {
      heading = file->step;
      write(file->step == Step::run    ? "\nThe run\n"
            : file->step == Step::free ? "\nFree vibration\n"
                                       : "\nForced vibration\n");
    }
    const std::size_t before = kGap + width + kGap + kUnitWidth;
    write(fmt::format("  {:<{}}{:<{}}{}\n      {}\n", shortName(*file), width + kGap,
                      file->layout == Layout::text ? "text" : file->unit, kUnitWidth,
                      filled(sizes, kLineWidth - before, before), file->holds));
  }
  if (!form.csv) {
    write("\nverenwick show DIRECTORY NAME prints one of them.\n");
  }
}

}  // namespace verenwick::host
