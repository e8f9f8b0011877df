#include "results/ResultReader.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <span>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace verenwick::results {

struct Extent {
  Index index;
  std::string_view name;
  std::optional<std::int64_t> size;
  std::int64_t first = 1;
};

namespace {

constexpr std::int64_t kBlockRecords = 8192;
/// What the solver reads of an input file at most.
constexpr std::int64_t kMostSections = 400'000;
constexpr std::int64_t kMostLoadCases = 1'000'000;

[[noreturn]] void fail(std::string_view name, const std::string& text) {
  throw std::runtime_error(std::string(name) + ": " + text);
}

std::string counted(std::int64_t count, std::string_view what) {
  return std::to_string(count) + " " + std::string(what) + (count == 1 ? "" : "s");
}

/// Records of a file; its size must be a whole number of them.
std::int64_t recordsOf(std::string_view name, const std::filesystem::path& path) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) {
    fail(name, "there is no such file in the result directory");
  }
  const auto bytes = static_cast<std::int64_t>(std::filesystem::file_size(path, error));
  if (error) {
    fail(name, error.message());
  }
  if (bytes % kRecordBytes != 0) {
    fail(name, "broken, its " + counted(bytes, "byte") + " are no whole number of 8-byte records");
  }
  return bytes / kRecordBytes;
}

/// Multiplies sizes that a broken file may have made absurd.
std::int64_t product(std::string_view name, std::int64_t a, std::int64_t b) {
  if (a != 0 && b > std::numeric_limits<std::int64_t>::max() / a) {
    fail(name, "the counts in SystemInfo.bin are absurd");
  }
  return a * b;
}

double decode(std::span<const unsigned char, kRecordBytes> bytes) {
  std::uint64_t bits = 0;
  for (std::size_t i = kRecordBytes; i-- > 0;) {
    bits = bits << 8U | bytes[i];
  }
  return std::bit_cast<double>(bits);
}

void readRecords(std::ifstream& stream, std::string_view name, std::int64_t before,
                 std::span<double> values) {
  std::vector<unsigned char> bytes(values.size() * kRecordBytes);
  stream.clear();
  stream.seekg(before * kRecordBytes);
  stream.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  if (!stream) {
    fail(name, "can't be read");
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] = decode(std::span(bytes).subspan(i * kRecordBytes).first<kRecordBytes>());
  }
}

std::ifstream openStream(std::string_view name, const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) {
    fail(name, "can't be opened");
  }
  return stream;
}

/// Whether a model can have so many; a broken file may hold anything.
bool isCount(SystemCount count, double value) {
  if (count == SystemCount::dieselOrders) {
    return value == 0 || value == kWholeOrders || value == kHalfOrders;
  }
  const std::int64_t most = count == SystemCount::loadCases ? kMostLoadCases : kMostSections;
  return value >= 0 && value <= static_cast<double>(most) && value == std::floor(value);
}

SystemCount countOf(Family family) {
  switch (family) {
    case Family::diesel:
      return SystemCount::diesels;
    case Family::propeller:
      return SystemCount::propellers;
    case Family::generator:
      return SystemCount::generators;
    case Family::centrifugalPump:
      return SystemCount::centrifugalPumps;
    case Family::reciprocatingPump:
      return SystemCount::reciprocatingPumps;
    case Family::electricMotor:
      break;
  }
  return SystemCount::electricMotors;
}

std::string_view wordOf(Family family) {
  switch (family) {
    case Family::diesel:
      return "diesel";
    case Family::propeller:
      return "propeller";
    case Family::generator:
      return "generator";
    case Family::centrifugalPump:
      return "centrifugal pump";
    case Family::reciprocatingPump:
      return "reciprocating pump";
    case Family::electricMotor:
      break;
  }
  return "electric motor";
}

std::int64_t valuesAtPosition(const ResultFile& file) {
  return file.layout == Layout::family ? kComponents : 1;
}

/// Finds the one unknown size, if there is one, from the number of records.
std::vector<Axis> resolved(std::string_view name, std::vector<Extent> extents,
                           std::int64_t valuesAtPosition, std::int64_t records) {
  std::int64_t known = valuesAtPosition;
  Extent* unknown = nullptr;
  for (Extent& extent : extents) {
    if (extent.size) {
      known = product(name, known, *extent.size);
    } else if (unknown == nullptr) {
      unknown = &extent;
    } else {
      fail(name, "the sizes of its axes \"" + std::string(unknown->name) + "\" and \"" +
                     std::string(extent.name) +
                     "\" are unknown without the other files of the run");
    }
  }
  if (unknown != nullptr) {
    const bool divides = known == 0 ? records == 0 : records % known == 0;
    if (!divides) {
      fail(name, "broken, its " + counted(records, "record") + " are no multiple of " +
                     std::to_string(known) + ", as the counts in SystemInfo.bin want it");
    }
    unknown->size = known == 0 ? 0 : records / known;
  }
  std::vector<Axis> axes;
  axes.reserve(extents.size());
  for (const Extent& extent : extents) {
    axes.push_back({extent.index, extent.name, extent.first, extent.first + *extent.size - 1});
  }
  return axes;
}

}  // namespace

ResultValues::ResultValues(const ResultFile& file, const std::filesystem::path& path,
                           std::vector<Axis> axes)
    : file_(&file),
      stream_(openStream(file.name, path)),
      axes_(std::move(axes)),
      records_(recordsOf(file.name, path)) {
  if (file.layout == Layout::family) {
    columns_ = {{"amplitude", file.unit},
                {"angle", "rad"},
                {"real part", file.unit},
                {"imaginary part", file.unit}};
  } else {
    columns_ = {{"value", file.unit}};
  }
  auto expected = static_cast<std::int64_t>(columns_.size());
  for (const Axis& each : axes_) {
    expected = product(file.name, expected, each.size());
  }
  if (records_ != expected) {
    fail(file.name, "broken or of another run, it holds " + counted(records_, "record") +
                        " where the counts in SystemInfo.bin call for " + std::to_string(expected));
  }
}

const Axis* ResultValues::axis(Index index) const {
  const auto found = std::find_if(axes_.begin(), axes_.end(),
                                  [index](const Axis& each) { return each.index == index; });
  return found == axes_.end() ? nullptr : &*found;
}

std::string ResultValues::label(const Axis& axis, std::int64_t number) const {
  if (file_->layout == Layout::systemInfo) {
    return std::string(kSystemCountNames.at(static_cast<std::size_t>(number - axis.first)));
  }
  return std::to_string(number);
}

std::int64_t ResultValues::sizeOf(Index index) const {
  const Axis* found = axis(index);
  return found == nullptr ? 1 : found->size();
}

std::int64_t ResultValues::record(const Position& position, std::int64_t column) const {
  for (const Axis& each : axes_) {
    const std::int64_t number = position[each.index];
    if (number < each.first || number > each.last) {
      fail(file_->name,
           std::string(each.name) + " " + std::to_string(number) + " is outside the file");
    }
  }
  if (column < 1 || column > static_cast<std::int64_t>(columns_.size())) {
    fail(file_->name, "column " + std::to_string(column) + " is outside the file");
  }
  const std::int64_t loadCase = position[Index::loadCase];
  const std::int64_t point = position[Index::point];
  const std::int64_t points = sizeOf(Index::point);
  switch (file_->layout) {
    case Layout::mode:
      return position[Index::mode];
    case Layout::modePoint:
      return recordOfModePoint(position[Index::mode], points, point);
    case Layout::engineModeOrder:
      return recordOfEngineModeOrder(position[Index::source], sizeOf(Index::mode) + 1,
                                     position[Index::mode], sizeOf(Index::order),
                                     position[Index::order]);
    case Layout::family:
      return recordOfFamilyElement(loadCase, sizeOf(Index::source), sizeOf(Index::order), points,
                                   position[Index::source], position[Index::order], point, column);
    case Layout::loadCase:
      return recordOfLoadCasePoint(loadCase, points, point);
    case Layout::angle:
      return recordOfAngleStep(loadCase, points, point, position[Index::step]);
    case Layout::text:
    case Layout::systemInfo:
    case Layout::marks:
      break;
  }
  return point;
}

double ResultValues::value(const Position& position, std::int64_t column) {
  const std::int64_t before = record(position, column) - 1;
  if (before < blockStart_ || before >= blockStart_ + static_cast<std::int64_t>(block_.size())) {
    blockStart_ = before / kBlockRecords * kBlockRecords;
    block_.resize(static_cast<std::size_t>(std::min(kBlockRecords, records_ - blockStart_)));
    readRecords(stream_, file_->name, blockStart_, block_);
  }
  return block_[static_cast<std::size_t>(before - blockStart_)];
}

void ResultValues::read(std::int64_t record, std::span<double> values) {
  if (record < 1 || record - 1 > records_ - static_cast<std::int64_t>(values.size())) {
    fail(file_->name, "record " + std::to_string(record) + " is outside the file");
  }
  readRecords(stream_, file_->name, record - 1, values);
}

ResultDirectory::ResultDirectory(std::filesystem::path path, KnownOrders orders)
    : path_(std::move(path)), orders_(orders) {
  std::error_code error;
  if (!std::filesystem::is_directory(path_, error)) {
    throw std::runtime_error(path_.string() + ": there is no such directory");
  }
}

std::filesystem::path ResultDirectory::pathOf(const ResultFile& file) const {
  return path_ / file.name;
}

bool ResultDirectory::has(const ResultFile& file) const {
  std::error_code error;
  return std::filesystem::is_regular_file(pathOf(file), error);
}

std::int64_t ResultDirectory::records(const ResultFile& file) const {
  return recordsOf(file.name, pathOf(file));
}

std::optional<std::int64_t> ResultDirectory::count(SystemCount count) const {
  constexpr const ResultFile& file = resultFile("SystemInfo.bin");
  if (!has(file)) {
    return std::nullopt;
  }
  if (records(file) != kSystemCounts) {
    fail(file.name, "broken, it holds " + counted(records(file), "record") + " instead of " +
                        std::to_string(kSystemCounts));
  }
  std::ifstream stream = openStream(file.name, pathOf(file));
  double value = 0;
  readRecords(stream, file.name, static_cast<std::int64_t>(count) - 1, std::span(&value, 1));
  if (!isCount(count, value)) {
    fail(file.name, "broken, " + std::to_string(value) + " is no number of " +
                        std::string(kSystemCountNames.at(static_cast<std::size_t>(count) - 1)));
  }
  return static_cast<std::int64_t>(value);
}

std::optional<std::int64_t> ResultDirectory::modes() const {
  constexpr const ResultFile& file = resultFile("NaturalFrequency.bin");
  if (!has(file)) {
    return std::nullopt;
  }
  const std::int64_t modes = records(file);
  if (modes == 0) {
    fail(file.name, "broken, it holds no record");
  }
  return modes;
}

std::optional<std::int64_t> ResultDirectory::points(Points points) const {
  const bool inertias = points == Points::inertias;
  if (const auto known = count(inertias ? SystemCount::inertias : SystemCount::shafts)) {
    return known;
  }
  // A mode shape has a value a point.
  const ResultFile& shape =
      inertias ? resultFile("RelativeDeflection.bin") : resultFile("RelativeTorque.bin");
  const auto known = modes();
  if (!known || *known < 2 || !has(shape) || records(shape) % (*known - 1) != 0) {
    return std::nullopt;
  }
  return records(shape) / (*known - 1);
}

std::optional<std::int64_t> ResultDirectory::orders(Family family) const {
  switch (family) {
    case Family::diesel:
      return count(SystemCount::dieselOrders);
    case Family::propeller:
      return orders_.propeller;
    default:
      return fixedOrders(family);
  }
}

std::int64_t ResultDirectory::agreedOrders(Family family) const {
  // A run that stopped leaves whole orders of fewer load cases, which looks like fewer orders.
  bool wholeCases = false;
  for (const ResultFile& file : kResultFiles) {
    if (file.layout == Layout::loadCase && has(file)) {
      static_cast<void>(open(file));
      wholeCases = true;
    }
  }
  std::optional<std::int64_t> agreed;
  for (const ResultFile& file : kResultFiles) {
    if (file.layout != Layout::family || file.family != family || !has(file)) {
      continue;
    }
    std::vector<Extent> axes = extents(file);
    const auto resolvedAxes =
        resolved(file.name, std::move(axes), valuesAtPosition(file), records(file));
    const auto order = std::find_if(resolvedAxes.begin(), resolvedAxes.end(),
                                    [](const Axis& axis) { return axis.index == Index::order; });
    if (agreed.value_or(order->size()) != order->size()) {
      fail(file.name, "broken, it has another number of orders than the other files of its family");
    }
    agreed = order->size();
  }
  const std::int64_t orders = agreed.value_or(0);
  if (!wholeCases && orders > 0) {
    fail(familyFile(family, Quantity::deflection).name,
         "how many orders it has can't be told: there are no totals of whole load cases");
  }
  return orders;
}

std::vector<Extent> ResultDirectory::extents(const ResultFile& file) const {
  const auto loadCases = [this] {
    return Extent{Index::loadCase, "load case", count(SystemCount::loadCases)};
  };
  const auto pointsOf = [this, &file] {
    return Extent{Index::point, file.points == Points::inertias ? "inertia" : "shaft",
                  points(file.points)};
  };
  // The rigid-body mode has a frequency and no shape.
  const auto shapes = [this] {
    const auto all = modes();
    return Extent{Index::mode, "mode", all ? std::optional(*all - 1) : std::nullopt, 2};
  };
  switch (file.layout) {
    case Layout::text:
      fail(file.name, "a text file has no records");
    case Layout::systemInfo:
      return {{Index::point, "count", kSystemCounts}};
    case Layout::mode:
      return {{Index::mode, "mode", modes()}};
    case Layout::modePoint:
      return {shapes(), pointsOf()};
    case Layout::engineModeOrder:
      return {{Index::source, "engine", count(SystemCount::diesels)},
              shapes(),
              {Index::order, "order", count(SystemCount::dieselOrders)}};
    case Layout::family:
      return {loadCases(),
              {Index::source, wordOf(file.family), count(countOf(file.family))},
              {Index::order, "order", orders(file.family)},
              pointsOf()};
    case Layout::loadCase:
      return {loadCases(), pointsOf()};
    case Layout::marks:
      // Written with the first load case.
      if (count(SystemCount::loadCases) == 0) {
        return {{Index::point, "shaft", 0}};
      }
      return {pointsOf()};
    case Layout::angle:
      break;
  }
  return {loadCases(), pointsOf(), {Index::step, "step", kAngleSteps}};
}

ResultValues ResultDirectory::open(const ResultFile& file) const {
  std::vector<Extent> axes = extents(file);
  if (file.layout == Layout::family && !orders(file.family)) {
    const auto order = std::find_if(axes.begin(), axes.end(),
                                    [](const Extent& each) { return each.index == Index::order; });
    order->size = agreedOrders(file.family);
  }
  return {file, pathOf(file),
          resolved(file.name, std::move(axes), valuesAtPosition(file), records(file))};
}

std::optional<std::int64_t> ResultDirectory::expectedRecords(const ResultFile& file) const {
  std::int64_t expected = valuesAtPosition(file);
  for (const Extent& extent : extents(file)) {
    if (!extent.size) {
      return std::nullopt;
    }
    expected = product(file.name, expected, *extent.size);
  }
  return expected;
}

std::string ResultDirectory::text(const ResultFile& file) const {
  if (!has(file)) {
    fail(file.name, "there is no such file in the result directory");
  }
  std::ifstream stream = openStream(file.name, pathOf(file));
  std::string text{std::istreambuf_iterator<char>(stream), {}};
  if (stream.bad()) {
    fail(file.name, "can't be read");
  }
  return text;
}

}  // namespace verenwick::results
