#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "results/RecordNumbers.h"
#include "results/ResultFileTable.h"

/// Reads a result directory by the table of files. Functions throw std::runtime_error, with a text
/// that names the file, where a file is missing, broken or not of the size that the model calls
/// for.
namespace verenwick::results {

/// What a number along an axis counts. A source is one row of a family, in the vector sums an
/// engine; a point is an inertia or a shaft.
enum class Index { loadCase, source, mode, order, point, step };
inline constexpr int kIndices = 6;

/// A place in a file. A number for which the file has no axis is ignored.
class Position {
 public:
  std::int64_t& operator[](Index index) { return numbers_[static_cast<std::size_t>(index)]; }
  std::int64_t operator[](Index index) const { return numbers_[static_cast<std::size_t>(index)]; }

 private:
  std::array<std::int64_t, kIndices> numbers_{};
};

/// One axis of the values of a file: the numbers from first to last, none if last is below first.
struct Axis {
  Index index;
  std::string_view name;  ///< "load case", "diesel", "mode", "order", "shaft", ...
  std::int64_t first;
  std::int64_t last;

  [[nodiscard]] std::int64_t size() const { return last - first + 1; }
};

/// One of the values that stand side by side at a position.
struct Column {
  std::string_view name;
  std::string_view unit;
};

/// The words for the counts of "SystemInfo.bin", in the order of its records.
inline constexpr std::array<std::string_view, kSystemCounts> kSystemCountNames = {
    "inertias",
    "shafts",
    "viscous dampers",
    "rubber dampers",
    "spring dampers",
    "linear couplings",
    "progressive couplings",
    "diesels",
    "electric motors",
    "gas turbines",
    "steam turbines",
    "propellers",
    "generators",
    "load cases",
    "orders of a diesel",
    "Geislinger couplings",
    "centrifugal pumps",
    "reciprocating pumps"};

/// An open binary result file. It reads as it is asked, so the file may be larger than memory.
class ResultValues {
 public:
  /// Opens the file and holds its size against the axes, slowest first.
  ResultValues(const ResultFile& file, const std::filesystem::path& path, std::vector<Axis> axes);

  [[nodiscard]] const ResultFile& file() const { return *file_; }
  /// Slowest first: neighbouring records differ in the last one.
  [[nodiscard]] const std::vector<Axis>& axes() const { return axes_; }
  /// The axis along which the index counts; null if there is none.
  [[nodiscard]] const Axis* axis(Index index) const;
  /// Amplitude, angle, real and imaginary part in files of a family, one column in all others.
  [[nodiscard]] const std::vector<Column>& columns() const { return columns_; }
  /// What a number along an axis is called: the number itself, or the words of a count.
  [[nodiscard]] std::string label(const Axis& axis, std::int64_t number) const;

  /// The record at a position; columns count from 1. Throws outside the axes.
  [[nodiscard]] std::int64_t record(const Position& position, std::int64_t column = 1) const;
  /// The value of that record.
  [[nodiscard]] double value(const Position& position, std::int64_t column = 1);
  /// Reads neighbouring records, from one on that counts from 1. Throws outside the file.
  void read(std::int64_t record, std::span<double> values);
  [[nodiscard]] std::int64_t records() const { return records_; }

 private:
  [[nodiscard]] std::int64_t sizeOf(Index index) const;

  const ResultFile* file_;
  std::ifstream stream_;
  std::vector<Axis> axes_;
  std::vector<Column> columns_;
  std::int64_t records_;
  std::vector<double> block_;    ///< the records around the one read last
  std::int64_t blockStart_ = 0;  ///< records before the block
};

/// An axis whose size may be unknown.
struct Extent;

/// Sizes that stand in no file of the directory, from who knows the run.
struct KnownOrders {
  std::optional<std::int64_t> propeller;  ///< places of orders in the files of the propellers
};

/// A result directory.
class ResultDirectory {
 public:
  explicit ResultDirectory(std::filesystem::path path, KnownOrders orders = {});

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  [[nodiscard]] bool has(const ResultFile& file) const;
  /// A count of "SystemInfo.bin"; nothing if the directory doesn't hold that file.
  [[nodiscard]] std::optional<std::int64_t> count(SystemCount count) const;
  /// The number of modes, the rigid-body mode among them, by the size of "NaturalFrequency.bin";
  /// nothing if the directory doesn't hold that file.
  [[nodiscard]] std::optional<std::int64_t> modes() const;
  /// Opens a binary file. Without "SystemInfo.bin" one size is found from the file's own. Orders of
  /// propellers that aren't known are believed where all files of whole load cases agree on them.
  [[nodiscard]] ResultValues open(const ResultFile& file) const;
  /// The records that a binary file has when it is whole; nothing where only its own size tells.
  [[nodiscard]] std::optional<std::int64_t> expectedRecords(const ResultFile& file) const;
  /// A text file, as it is.
  [[nodiscard]] std::string text(const ResultFile& file) const;

 private:
  [[nodiscard]] std::filesystem::path pathOf(const ResultFile& file) const;
  [[nodiscard]] std::int64_t records(const ResultFile& file) const;
  [[nodiscard]] std::vector<Extent> extents(const ResultFile& file) const;
  [[nodiscard]] std::optional<std::int64_t> points(Points points) const;
  [[nodiscard]] std::optional<std::int64_t> orders(Family family) const;
  [[nodiscard]] std::int64_t agreedOrders(Family family) const;

  std::filesystem::path path_;
  KnownOrders orders_;
};

}  // namespace verenwick::results
