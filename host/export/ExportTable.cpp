#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/export/Export.h"
#include "host/plant/Readings.h"

namespace verenwick::host {

using results::Axis;
using results::Column;
using results::Index;
using results::kResultFiles;
using results::Layout;
using results::Points;
using results::ResultDirectory;
using results::ResultFile;
using results::ResultValues;

namespace {

/// Values that are read at once.
constexpr std::int64_t kBlockValues = 1 << 16;

std::string_view nameOf(const Axis& axis) {
  return axis.index == Index::order ? "order place" : axis.name;
}

}  // namespace

ExportTable::ExportTable(ResultValues values, const Names& names)
    : values_(std::move(values)), names_(&names), rowAxes_(values_.axes()) {
  // One value a place and more than one axis: the last axis runs along the row.
  const bool spread = values_.columns().size() == 1 && rowAxes_.size() > 1;
  const Axis along = rowAxes_.back();
  if (spread) {
    rowAxes_.pop_back();
  }
  for (const Axis& axis : rowAxes_) {
    place_[axis.index] = axis.first;
    header_.emplace_back(nameOf(axis));
    if (!meaning(axis).empty()) {
      header_.emplace_back(meaning(axis));
    }
  }
  const std::size_t labelled = header_.size();
  const std::string_view unit = values_.file().unit;
  if (spread) {
    for (std::int64_t number = along.first; number <= along.last; ++number) {
      header_.push_back(fmt::format("{} {} [{}]", nameOf(along), label(along, number), unit));
    }
  } else {
    for (const Column& column : values_.columns()) {
      header_.push_back(fmt::format("{} [{}]", column.name, column.unit));
    }
  }
  width_ = header_.size() - labelled;
}

std::string ExportTable::label(const Axis& axis, std::int64_t number) const {
  if (axis.index == Index::point && *names_ && values_.file().points != Points::none) {
    const auto row = static_cast<std::size_t>(number - axis.first);
    return std::to_string(values_.file().points == Points::inertias ? (*names_)->inertias.at(row).id
                                                                    : (*names_)->shafts.at(row).id);
  }
  return values_.label(axis, number);
}

std::int64_t ExportTable::rows() const {
  std::int64_t count = width_ > 0 ? 1 : 0;
  for (const Axis& axis : rowAxes_) {
    count *= axis.size();
  }
  return count;
}

std::string_view ExportTable::meaning(const Axis& axis) const {
  if (*names_ && axis.index == Index::loadCase) {
    return "speed [rpm]";
  }
  if (*names_ && axis.index == Index::order && values_.file().layout == Layout::family) {
    return "order";
  }
  return "";
}

std::string ExportTable::meaningOf(const Axis& axis) const {
  if (axis.index == Index::loadCase) {
    return fmt::format(
        "{}", (*names_)->loadCaseSpeeds.at(static_cast<std::size_t>(place_[axis.index] - 1)));
  }
  const results::Family family = values_.file().family;
  const auto row = sourceRow(**names_, family, place_[Index::source]);
  return row ? fmt::format("{}", orderAt((*names_)->components[*row], family, axis.size(),
                                         place_[axis.index]))
             : "";
}

bool ExportTable::next(std::vector<std::string>& labels, std::vector<double>& values) {
  if (row_ >= rows()) {
    return false;
  }
  labels.clear();
  for (const Axis& axis : rowAxes_) {
    labels.push_back(label(axis, place_[axis.index]));
    if (!meaning(axis).empty()) {
      labels.push_back(meaningOf(axis));
    }
  }
  advance(place_, rowAxes_);
  const auto width = static_cast<std::int64_t>(width_);
  if (row_ >= blockEnd_) {
    const std::int64_t count =
        std::min(rows() - row_, std::max<std::int64_t>(1, kBlockValues / width));
    block_.resize(static_cast<std::size_t>(count) * width_);
    values_.read(row_ * width + 1, block_);
    blockEnd_ = row_ + count;
  }
  const auto start = block_.end() - (blockEnd_ - row_) * width;
  values.assign(start, start + width);
  ++row_;
  return true;
}

std::vector<const ResultFile*> binaryFiles(const ResultDirectory& directory) {
  std::vector<const ResultFile*> files;
  for (const ResultFile& file : kResultFiles) {
    if (file.layout != Layout::text && directory.has(file)) {
      files.push_back(&file);
    }
  }
  return files;
}

}  // namespace verenwick::host
