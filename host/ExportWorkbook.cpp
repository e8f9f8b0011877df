#include <fmt/format.h>
#include <xlsxwriter.h>

#include <charconv>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "host/Export.h"

namespace verenwick::host {
namespace {

constexpr std::int64_t kSheetRows = LXW_ROW_MAX;
constexpr std::size_t kSheetColumns = LXW_COL_MAX;
constexpr std::size_t kSheetName = 31;
constexpr double kColumnWidth = 14;

void check(lxw_error error) {
  if (error != LXW_NO_ERROR) {
    throw std::runtime_error(fmt::format("the workbook can't be written: {}", lxw_strerror(error)));
  }
}

/// A workbook under construction; what isn't closed is thrown away.
class Workbook {
 public:
  explicit Workbook(const std::filesystem::path& path) : path_(path.string()) {
    // Rows go to the disk as they are written.
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    book_ = workbook_new_opt(path_.c_str(), &options);
    if (book_ == nullptr) {
      throw std::runtime_error(fmt::format("{} can't be written", path_));
    }
    bold_ = workbook_add_format(book_);
    format_set_bold(bold_);
  }
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;
  ~Workbook() {
    if (book_ != nullptr) {
      lxw_workbook_free(book_);
    }
  }

  lxw_worksheet* addSheet(const std::string& name) {
    lxw_worksheet* sheet = workbook_add_worksheet(book_, name.c_str());
    if (sheet == nullptr) {
      throw std::runtime_error(fmt::format("no sheet {} can be added", name));
    }
    return sheet;
  }
  [[nodiscard]] lxw_format* bold() const { return bold_; }

  void close() { check(workbook_close(std::exchange(book_, nullptr))); }

 private:
  std::string path_;
  lxw_workbook* book_ = nullptr;
  lxw_format* bold_ = nullptr;
};

/// A label is a number where it reads as one.
void writeLabel(lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, const std::string& label) {
  double number = 0;
  const char* end = label.data() + label.size();
  const auto [rest, error] = std::from_chars(label.data(), end, number);
  check(error == std::errc() && rest == end
            ? worksheet_write_number(sheet, row, column, number, nullptr)
            : worksheet_write_string(sheet, row, column, label.c_str(), nullptr));
}

/// A sheet has no not-a-number and no infinity: they stand as words.
void writeValue(lxw_worksheet* sheet, lxw_row_t row, lxw_col_t column, double value) {
  if (std::isfinite(value)) {
    check(worksheet_write_number(sheet, row, column, value, nullptr));
  } else {
    const char* word = std::isnan(value) ? "nan" : value > 0 ? "inf" : "-inf";
    check(worksheet_write_string(sheet, row, column, word, nullptr));
  }
}

/// What the file holds, the header, and the panes that keep header and labels in view.
void writeHead(const Workbook& book, lxw_worksheet* sheet, const ExportTable& table) {
  worksheet_set_column(sheet, 0, static_cast<lxw_col_t>(table.header().size() - 1), kColumnWidth,
                       nullptr);
  check(worksheet_write_string(sheet, 0, 0, std::string(table.file().holds).c_str(), nullptr));
  lxw_col_t column = 0;
  for (const std::string& word : table.header()) {
    check(worksheet_write_string(sheet, 1, column++, word.c_str(), book.bold()));
  }
  worksheet_freeze_panes(sheet, 2, static_cast<lxw_col_t>(table.labels()));
}

void writeTable(Workbook& book, ExportTable table) {
  constexpr lxw_row_t firstRow = 2;
  const std::string name = std::filesystem::path(table.file().name).stem().string();
  if (table.header().size() > kSheetColumns) {
    throw std::runtime_error(
        fmt::format("{} has more columns than a sheet: export it as csv or hdf5", name));
  }
  std::vector<std::string> labels;
  std::vector<double> values;
  int sheets = 0;
  lxw_worksheet* sheet = nullptr;
  std::int64_t row = kSheetRows;
  do {
    if (row == kSheetRows || sheet == nullptr) {
      const std::string suffix = ++sheets == 1 ? "" : fmt::format(" {}", sheets);
      sheet = book.addSheet(name.substr(0, kSheetName - suffix.size()) + suffix);
      writeHead(book, sheet, table);
      row = firstRow;
    }
    if (!table.next(labels, values)) {
      break;
    }
    lxw_col_t column = 0;
    for (const std::string& label : labels) {
      writeLabel(sheet, static_cast<lxw_row_t>(row), column++, label);
    }
    for (const double value : values) {
      writeValue(sheet, static_cast<lxw_row_t>(row), column++, value);
    }
    ++row;
  } while (true);
}

}  // namespace

void exportWorkbook(const results::ResultDirectory& directory, const Names& names,
                    const std::filesystem::path& output) {
  Workbook book(output);
  for (const results::ResultFile* file : binaryFiles(directory)) {
    writeTable(book, {directory.open(*file), names});
  }
  book.close();
}

}  // namespace verenwick::host
