#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "Support/SolverRun.h"
#include "input/SectionTable.h"
#include "input/Words.h"

namespace verenwick::input {
namespace {

using ::testing::Contains;
using ::testing::StartsWith;

/// What the docs say under one heading.
struct Chapter {
  struct Row {
    std::string type, unit, meaning;
  };
  std::vector<std::string> layout;  ///< lines between fences
  std::multimap<std::string, Row> rows;
};

std::vector<std::string> splitAt(const std::string& text, const std::string& mark) {
  std::vector<std::string> parts;
  std::size_t start = 0;
  for (std::size_t end = text.find(mark); end != std::string::npos; end = text.find(mark, start)) {
    parts.push_back(text.substr(start, end - start));
    start = end + mark.size();
  }
  parts.push_back(text.substr(start));
  return parts;
}

/// A row of a table of values may name several: "| `A`, `B` | real | kW, rpm | both |".
void readRow(const std::string& line, Chapter& chapter) {
  constexpr std::size_t wanted = 4;
  std::vector<std::string> cells;
  for (const std::string& cell : splitAt(line.substr(1), "|")) {
    cells.emplace_back(trimmed(cell));
  }
  if (cells.size() != wanted + 1 || !cells[0].starts_with('`')) {
    return;
  }
  const std::vector<std::string> names = splitAt(cells[0], ", ");
  const std::vector<std::string> units = splitAt(cells[2], ", ");
  for (std::size_t i = 0; i < names.size(); ++i) {
    chapter.rows.emplace(
        names[i].substr(1, names[i].size() - 2),
        Chapter::Row{cells[1], units[units.size() == names.size() ? i : 0], cells[3]});
  }
}

/// The chapters of docs/input-file.md by the keywords in their headings.
std::map<std::string, Chapter> chapters() {
  std::map<std::string, Chapter> byHeading;
  std::istringstream text(test::readText(VERENWICK_TESTS "/../docs/input-file.md"));
  std::string heading;
  bool fenced = false;
  for (std::string line; std::getline(text, line);) {
    if (line.starts_with("```")) {
      fenced = !fenced;
    } else if (fenced) {
      byHeading[heading].layout.push_back(line);
    } else if (line.starts_with("## ")) {
      heading = line.substr(3);
      byHeading.emplace(heading, Chapter{});
    } else if (line.starts_with("One line: `")) {
      // The layout of a section that is one line stands in a sentence, over two lines.
      std::string layout = line.substr(line.find('`') + 1);
      if (layout.find('`') == std::string::npos) {
        std::getline(text, line);
        layout.append(1, ' ').append(line);
      }
      byHeading[heading].layout.push_back(layout.substr(0, layout.find('`')));
    } else if (line.starts_with("|")) {
      readRow(line, byHeading[heading]);
    }
  }
  std::map<std::string, Chapter> byKeyword;
  for (const auto& [words, chapter] : byHeading) {
    for (const std::string& keyword : splitAt(words, ", ")) {
      byKeyword[keyword] = chapter;
    }
  }
  return byKeyword;
}

std::string typeOf(const Field& field) {
  const std::string several = field.repeat.times == 1 ? "" : "s";
  const std::string number = field.repeat.times == 1 || !field.repeat.countedBy.empty()
                                 ? ""
                                 : std::to_string(field.repeat.times) + " ";
  switch (field.type) {
    case Type::integer:
    case Type::orderCount:
      return number + "integer" + several;
    case Type::flag:
      return "flag";
    case Type::real:
      return number + "real" + several;
    case Type::word:
    case Type::choice:
    case Type::lineChoice:
      return "word";
    default:
      return "path";
  }
}

/// How the docs show a line: the names of its values, behind the keyword on the first line.
std::string layoutOf(const Section& section, const Line& line) {
  std::string layout = &line == section.lines.data() ? std::string(section.keyword) : "";
  for (const Field& field : line.fields) {
    if (!layout.empty()) {
      layout.push_back(' ');
    }
    layout.append(field.name);
  }
  return layout;
}

TEST(InputFileDocs, SayWhatTheTableOfSectionsSays) {
  const auto byKeyword = chapters();
  for (const Section& section : sections()) {
    SCOPED_TRACE(section.keyword);
    const auto chapter = byKeyword.find(std::string(section.keyword));
    ASSERT_TRUE(chapter != byKeyword.end());
    for (const Line& line : section.lines) {
      if (section.keyword != kAngleBasedKeyword) {
        EXPECT_THAT(chapter->second.layout, Contains(StartsWith(layoutOf(section, line))));
      }
      for (const Field& field : line.fields) {
        const auto [first, last] = chapter->second.rows.equal_range(std::string(field.name));
        EXPECT_TRUE(std::any_of(first, last,
                                [&](const auto& row) {
                                  return row.second.type == typeOf(field) &&
                                         row.second.unit == field.unit.text &&
                                         row.second.meaning.starts_with(field.meaning);
                                }))
            << field.name << " | " << typeOf(field) << " | " << field.unit.text << " | "
            << field.meaning;
      }
    }
  }
}

}  // namespace
}  // namespace verenwick::input
