#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/plant/ShaftLine.h"
#include "host/run/OpenResults.h"
#include "results/ResultReader.h"

/// All results of a directory in the formats of other programs, with the remark on them.
namespace verenwick::host {

/// What the numbers of the result files stand for, where an input file tells.
using Names = std::optional<ShaftLine>;

/// A result file as a table: numbers that name a row, then its values. Files of one value a place
/// spread their last axis over the columns; files of a family have a row a place and the columns
/// amplitude, angle, real and imaginary part.
class ExportTable {
 public:
  ExportTable(results::ResultValues values, const Names& names);

  [[nodiscard]] const results::ResultFile& file() const { return values_.file(); }
  [[nodiscard]] const std::vector<std::string>& header() const { return header_; }
  /// The columns at the start of a row that name it.
  [[nodiscard]] std::size_t labels() const { return header_.size() - width_; }
  [[nodiscard]] std::int64_t rows() const;

  /// The texts that name the next row, and its values; false behind the last row.
  bool next(std::vector<std::string>& labels, std::vector<double>& values);

 private:
  [[nodiscard]] std::string label(const results::Axis& axis, std::int64_t number) const;
  /// What the names add to the number of an axis: the speed of a load case, the order at a place.
  [[nodiscard]] std::string_view meaning(const results::Axis& axis) const;
  [[nodiscard]] std::string meaningOf(const results::Axis& axis) const;

  results::ResultValues values_;
  const Names* names_;
  std::vector<results::Axis> rowAxes_;
  std::vector<std::string> header_;
  std::size_t width_;          ///< values of a row
  results::Position place_;    ///< of the next row
  std::int64_t row_ = 0;       ///< the next row, from 0
  std::vector<double> block_;  ///< the values of some rows
  std::int64_t blockEnd_ = 0;  ///< the row behind them
};

/// Every binary file that the directory holds.
std::vector<const results::ResultFile*> binaryFiles(const results::ResultDirectory& directory);

/// A file of comma separated values for each result file, into a directory that is made, and one
/// for the remark.
void exportCsv(const OpenedResults& opened, const Names& names,
               const std::filesystem::path& output);

/// A workbook with a sheet for each result file; a long one goes on in further sheets.
void exportWorkbook(const OpenedResults& opened, const Names& names,
                    const std::filesystem::path& output);

/// An HDF5 file with a data set for each result file and its units as attributes.
void exportHdf5(const OpenedResults& opened, const Names& names,
                const std::filesystem::path& output);

/// A format as the command line names it.
struct ExportFormat {
  std::string_view name;
  /// Behind the name of the result directory, the name of an export that is given none.
  std::string_view ending;
  std::string_view makes;
  void (*write)(const OpenedResults&, const Names&, const std::filesystem::path&);
};

inline constexpr std::array<ExportFormat, 3> kExportFormats = {
    {{"csv", "-csv", "a directory of files", exportCsv},
     {"xlsx", ".xlsx", "a workbook", exportWorkbook},
     {"hdf5", ".h5", "a file of data sets", exportHdf5}}};

}  // namespace verenwick::host
