#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/WholeFile.h"
#include "host/export/Export.h"
#include "host/export/ZipFile.h"
#include "host/run/ChildProcess.h"

// A workbook is a zip archive of XML parts. They go into the archive piece by piece, so that it may
// be larger than memory, with no other file on the way.
namespace verenwick::host {
namespace {

constexpr std::int64_t kSheetRows = 1048576;
constexpr std::size_t kSheetColumns = 16384;
constexpr std::size_t kSheetName = 31;
constexpr int kHeadRows = 2;
constexpr int kColumnWidth = 14;
constexpr std::size_t kBlockBytes = 1 << 16;

constexpr std::string_view kDeclaration =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>)"
    "\n";
constexpr std::string_view kSchemas = "http://schemas.openxmlformats.org/";
constexpr std::string_view kTypeOfPart =
    "application/vnd.openxmlformats-officedocument.spreadsheetml.";

/// Cell formats: 0 is plain, 1 is bold.
constexpr std::string_view kStyles =
    R"(<fonts count="2"><font><sz val="11"/><name val="Calibri"/></font>)"
    R"(<font><b/><sz val="11"/><name val="Calibri"/></font></fonts>)"
    R"(<fills count="2"><fill><patternFill patternType="none"/></fill>)"
    R"(<fill><patternFill patternType="gray125"/></fill></fills>)"
    R"(<borders count="1"><border><left/><right/><top/><bottom/><diagonal/></border></borders>)"
    R"(<cellStyleXfs count="1"><xf numFmtId="0" fontId="0" fillId="0" borderId="0"/></cellStyleXfs>)"
    R"(<cellXfs count="2"><xf numFmtId="0" fontId="0" fillId="0" borderId="0" xfId="0"/>)"
    R"(<xf numFmtId="0" fontId="1" fillId="0" borderId="0" xfId="0" applyFont="1"/></cellXfs>)"
    R"(<cellStyles count="1"><cellStyle name="Normal" xfId="0" builtinId="0"/></cellStyles>)";

/// A text as XML shows it; characters that it can't hold become question marks.
std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += static_cast<unsigned char>(c) < ' ' ? '?' : c;
    }
  }
  return result;
}

/// A, B, ... Z, AA, ... for columns from 0.
std::string columnName(std::size_t column) {
  constexpr std::size_t letters = 26;
  const std::string last(1, static_cast<char>('A' + column % letters));
  return column < letters ? last : columnName(column / letters - 1) + last;
}

/// A workbook under construction.
class Workbook {
 public:
  explicit Workbook(WholeFile& file) : zip_(file) {}

  /// Ends the sheet before and begins the next, with its column widths and the panes that keep the
  /// head and the labels in view.
  void beginSheet(const std::string& name, std::size_t columns, std::size_t labels) {
    endSheet();
    names_.push_back(name);
    for (std::size_t column = columns_.size(); column < columns; ++column) {
      columns_.push_back(columnName(column));
    }
    zip_.begin(partOf(names_.size()));
    row_ = 0;
    text_ = fmt::format(
        R"({}<worksheet xmlns="{}spreadsheetml/2006/main">)"
        R"(<sheetViews><sheetView{} workbookViewId="0"><pane xSplit="{}" ySplit="{}" )"
        R"(topLeftCell="{}{}" activePane="bottomRight" state="frozen"/></sheetView></sheetViews>)"
        R"(<sheetFormatPr defaultRowHeight="15"/>)"
        R"(<cols><col min="1" max="{}" width="{}" customWidth="1"/></cols><sheetData>)",
        kDeclaration, kSchemas, names_.size() == 1 ? R"( tabSelected="1")" : "", labels, kHeadRows,
        columnName(labels), kHeadRows + 1, columns, kColumnWidth);
  }

  void beginRow() {
    ++row_;
    column_ = 0;
    fmt::format_to(std::back_inserter(text_), R"(<row r="{}">)", row_);
  }

  void addNumber(double value) {
    fmt::format_to(std::back_inserter(text_), R"(<c r="{}{}"><v>{}</v></c>)", columns_[column_++],
                   row_, value);
  }

  void addText(std::string_view text, bool bold = false) {
    fmt::format_to(std::back_inserter(text_),
                   R"(<c r="{}{}"{} t="inlineStr"><is><t>{}</t></is></c>)", columns_[column_++],
                   row_, bold ? R"( s="1")" : "", escaped(text));
  }

  void endRow() {
    text_ += "</row>";
    if (text_.size() > kBlockBytes) {
      flush();
    }
  }

  /// Adds what binds the sheets together, and ends the archive.
  void finish() {
    endSheet();
    std::string types;
    std::string sheets;
    std::string links;
    for (std::size_t number = 1; number <= names_.size(); ++number) {
      types += fmt::format(R"(<Override PartName="/{}" ContentType="{}worksheet+xml"/>)",
                           partOf(number), kTypeOfPart);
      sheets += fmt::format(R"(<sheet name="{}" sheetId="{}" r:id="rId{}"/>)",
                            escaped(names_[number - 1]), number, number);
      links += link(number, "worksheet", fmt::format("worksheets/sheet{}.xml", number));
    }
    links += link(names_.size() + 1, "styles", "styles.xml");
    addPart(
        "[Content_Types].xml", "Types", "package/2006/content-types",
        fmt::format(R"(<Default Extension="rels" )"
                    R"(ContentType="application/vnd.openxmlformats-package.relationships+xml"/>)"
                    R"(<Default Extension="xml" ContentType="application/xml"/>)"
                    R"(<Override PartName="/xl/workbook.xml" ContentType="{0}sheet.main+xml"/>)"
                    R"(<Override PartName="/xl/styles.xml" ContentType="{0}styles+xml"/>{1})",
                    kTypeOfPart, types));
    addPart("_rels/.rels", "Relationships", "package/2006/relationships",
            link(1, "officeDocument", "xl/workbook.xml"));
    addPart("xl/workbook.xml", "workbook", "spreadsheetml/2006/main",
            fmt::format("<bookViews><workbookView/></bookViews><sheets>{}</sheets>", sheets));
    addPart("xl/_rels/workbook.xml.rels", "Relationships", "package/2006/relationships", links);
    addPart("xl/styles.xml", "styleSheet", "spreadsheetml/2006/main", kStyles);
    zip_.finish();
  }

 private:
  static std::string partOf(std::size_t sheet) {
    return fmt::format("xl/worksheets/sheet{}.xml", sheet);
  }

  static std::string link(std::size_t id, std::string_view type, std::string_view target) {
    return fmt::format(
        R"(<Relationship Id="rId{}" Type="{}officeDocument/2006/relationships/{}" Target="{}"/>)",
        id, kSchemas, type, target);
  }

  /// A part of one element in a schema.
  void addPart(const std::string& name, std::string_view element, std::string_view schema,
               std::string_view content) {
    zip_.begin(name);
    zip_.write(fmt::format(
        R"({0}<{1} xmlns="{2}{3}" xmlns:r="{2}officeDocument/2006/relationships">{4}</{1}>)",
        kDeclaration, element, kSchemas, schema, content));
  }

  void flush() {
    zip_.write(text_);
    text_.clear();
  }

  void endSheet() {
    if (!names_.empty()) {
      text_ += "</sheetData></worksheet>";
      flush();
    }
  }

  ZipFile zip_;
  std::vector<std::string> names_;
  std::vector<std::string> columns_;
  std::int64_t row_ = 0;
  std::size_t column_ = 0;
  std::string text_;  ///< of the sheet, not yet in the archive
};

/// A label is a number where it reads as one.
void addLabel(Workbook& book, const std::string& label) {
  double number = 0;
  const char* end = label.data() + label.size();
  const auto [rest, error] = std::from_chars(label.data(), end, number);
  if (error == std::errc() && rest == end) {
    book.addNumber(number);
  } else {
    book.addText(label);
  }
}

/// A sheet has no not-a-number and no infinity: they stand as words.
void addValue(Workbook& book, double value) {
  if (std::isfinite(value)) {
    book.addNumber(value);
  } else {
    book.addText(std::isnan(value) ? "nan" : value > 0 ? "inf" : "-inf");
  }
}

/// Begins a sheet with what the file holds and the remark on it, and the header.
void addHead(Workbook& book, const std::string& name, const ExportTable& table,
             const std::string& remark) {
  book.beginSheet(name, table.header().size(), table.labels());
  book.beginRow();
  book.addText(remark.empty() ? std::string(table.file().holds)
                              : fmt::format("{} ({})", table.file().holds, remark));
  book.endRow();
  book.beginRow();
  for (const std::string& word : table.header()) {
    book.addText(word, true);
  }
  book.endRow();
}

std::string otherFormats() {
  std::string names;
  for (const ExportFormat& format : kExportFormats) {
    if (format.write != exportWorkbook) {
      names += fmt::format("{}{}", names.empty() ? "" : " or ", format.name);
    }
  }
  return names;
}

void addTable(Workbook& book, ExportTable table, const std::string& remark) {
  const std::string name = std::filesystem::path(table.file().name).stem().string();
  if (table.header().size() > kSheetColumns) {
    throw std::runtime_error(
        fmt::format("{} has more columns than a sheet: export it as {}", name, otherFormats()));
  }
  std::vector<std::string> labels;
  std::vector<double> values;
  int sheets = 0;
  std::int64_t row = kSheetRows;
  do {
    if (row == kSheetRows) {
      const std::string suffix = ++sheets == 1 ? "" : fmt::format(" {}", sheets);
      addHead(book, name.substr(0, kSheetName - suffix.size()) + suffix, table, remark);
      row = kHeadRows;
    }
    if (!table.next(labels, values)) {
      break;
    }
    book.beginRow();
    for (const std::string& label : labels) {
      addLabel(book, label);
    }
    for (const double value : values) {
      addValue(book, value);
    }
    book.endRow();
    ++row;
  } while (true);
}

}  // namespace

void exportWorkbook(const OpenedResults& opened, const Names& names,
                    const std::filesystem::path& output) {
  WholeFile file(output);
  file.close();
  workApart([&] {
    Workbook book(file);
    for (const results::ResultFile* each : binaryFiles(opened.directory)) {
      addTable(book, {opened.directory.open(*each), names}, opened.remark);
    }
    book.finish();
  });
  file.finish();
}

}  // namespace verenwick::host
