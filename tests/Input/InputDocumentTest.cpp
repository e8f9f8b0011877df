#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <stdexcept>

#include "Support/SolverRun.h"
#include "input/InputDocument.h"

namespace verenwick::input {
namespace {

using ::testing::HasSubstr;

/// The texts of all example plants and of the plants with every kind of component.
std::vector<std::string> plants() {
  std::vector<std::string> texts;
  for (const auto& entry : std::filesystem::directory_iterator(VERENWICK_EXAMPLES)) {
    if (std::filesystem::exists(entry.path() / "input.txt")) {
      texts.push_back(test::readText(entry.path() / "input.txt"));
    }
  }
  texts.push_back(test::readText(VERENWICK_TESTS "/Support/every-kind.txt"));
  texts.push_back(test::readText(VERENWICK_TESTS "/ForcedVibration/EveryKind/input.txt"));
  texts.push_back(
      "RECIPROCATINGPUMP 1 P\n1 1 1 0 0 0\n9\n0\n0\n100 100 0.2 1 0\npump data.txt\n"
      "LOADCASE\nRPM 1\nRECIPROCATINGPUMP\n100 1\n");
  return texts;
}

std::string everyKind() { return test::readText(VERENWICK_TESTS "/Support/every-kind.txt"); }

/// A name for each value of a section.
std::vector<std::string> namesOf(const SectionValues& section) {
  std::vector<std::string> names;
  for (const Line& line : section.section().lines) {
    for (const Field& field : line.fields) {
      const std::string name = std::string(section.section().keyword) + " " +
                               std::to_string(section.integer("Id")) + " " +
                               std::string(field.name);
      const std::size_t count = section.all(field.name).size();
      for (std::size_t i = 1; i <= count; ++i) {
        names.push_back(field.repeat.times == 1 ? name : name + " " + std::to_string(i));
      }
    }
  }
  return names;
}

/// Another token of the same kind. Counts and flags that decide which lines stand keep their
/// meaning.
std::string otherToken(const Field& field, std::string_view token) {
  switch (field.type) {
    case Type::integer:
    case Type::flag:
    case Type::orderCount:
      return "+" + std::string(token);
    case Type::real:
      return "1.25D+2";
    case Type::choice:
      return std::string(field.words[3]);
    case Type::lineChoice: {
      // Another choice would have other lines behind it.
      std::string lower(token);
      std::transform(lower.begin(), lower.end(), lower.begin(),
                     [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
      return lower;
    }
    case Type::word:
      return "\"two words\"";
    case Type::wholeLine:
    case Type::trimmedLine:
      break;
  }
  return "C:\\other files\\of this kind.txt";
}

TEST(InputDocument, EveryPlantIsReadWhole) {
  for (const std::string& text : plants()) {
    const InputDocument document(text);
    EXPECT_FALSE(document.failure()) << document.failure()->line;
    EXPECT_FALSE(document.sections().empty());
    EXPECT_FALSE(document.loadCases().empty());
  }
}

TEST(InputDocument, AnyOneValueIsReplacedAndAllElseStays) {
  std::set<std::string_view> fields;
  for (std::string text : plants()) {
    // The marks of other programs: a byte order mark, carriage returns, tabs, decimal commas.
    for (const bool foreign : {false, true}) {
      if (foreign) {
        text =
            "\xEF\xBB\xBF" + test::replaced(test::replaced(text, "\n", "\r\n"), " 1.0 ", "\t1,0 ");
      }
      InputDocument document(text);
      ASSERT_FALSE(document.failure());
      for (std::size_t i = 0; i < document.sections().size(); ++i) {
        for (const std::string& name : namesOf(document.sections()[i])) {
          SCOPED_TRACE(name);
          const SectionValues& section = document.sections()[i];
          const std::string field = name.substr(name.find(' ', name.find(' ') + 1) + 1);
          const Field& kind =
              section.fieldOf(section.all(field.substr(0, field.find(' '))).front());
          // Another id would be another name.
          if (kind.name == "Id" || section.section().keyword == kAngleBasedKeyword) {
            continue;
          }
          const std::string before(document.token(name));
          const std::string other = otherToken(kind, before);
          document.replace(name, other);
          EXPECT_EQ(document.token(name), other);
          EXPECT_EQ(document.text().size() + before.size(), text.size() + other.size());
          document.replace(name, before);
          ASSERT_EQ(document.text(), text);
          fields.insert(kind.name);
        }
      }
    }
  }
  // Every name of the table, but for the ids, stands in one plant or another.
  for (const Section& section : sections()) {
    for (const Line& line : section.lines) {
      for (const Field& field : line.fields) {
        EXPECT_TRUE(field.name == "Id" || fields.contains(field.name)) << field.name;
      }
    }
  }
}

TEST(InputDocument, ValuesHaveTheirUnitsAndPlaces) {
  const InputDocument document(everyKind());
  for (const SectionValues& section : document.sections()) {
    if (section.section().keyword == "DIESEL") {
      EXPECT_EQ(section.text("Name"), "Main engine of the f");  // cut at 20 characters
      EXPECT_EQ(section.real("McrPower"), 1e6);
      EXPECT_EQ(section.real("Bore"), 0.3);
      EXPECT_EQ(section.all("FiringStatusA")[1].integer, 2);
      EXPECT_EQ(section.all("FiringPercentB")[0].real, 60.0);
      EXPECT_FALSE(section.has("NormalHarmonicFile"));
      EXPECT_THROW(static_cast<void>(section.real("Boer")), std::logic_error);
    }
  }
  EXPECT_EQ(document.title(), "A plant with one component of every kind");
  EXPECT_EQ(document.token("shaft 303 stiffness"), "1.2E6");
  EXPECT_EQ(document.token("DIESEL 17 FiringStatusA 2"), "2");
  const SectionValues& ring = document.sections().front();
  EXPECT_EQ(document.remarkBehind(ring.values().back().place), "ring of the viscous damper");
}

TEST(InputDocument, ALoadCaseRowIsReplacedWholeOrByItsValues) {
  const std::string text =
      "INERTIA 1 1.0 100.0 0.0 0.0\nGASTURBINE 1\n1 5000.0 3000.0\n\nLOADCASE\ntable of the plant\n"
      "RPM 1 5 1\nGASTURBINE ROWER STEAMTURBINE\n3000,0 5000.0 7 99\n2500.0 3000.0\n\n1 2 3\n";
  InputDocument document(text);
  ASSERT_EQ(document.loadCases().size(), 2U);
  ASSERT_EQ(document.columns().size(), 2U);  // the kind that is none has no column
  EXPECT_EQ(document.loadCases()[0].values[0].real, 3000.0);
  EXPECT_EQ(document.token("LOADCASE 1 STEAMTURBINE 1"), "7");
  document.replace("LOADCASE 1 RPM", "2999.5");
  document.replace("LOADCASE 2 GASTURBINE 1", "3100");
  EXPECT_EQ(document.text(), test::replaced(test::replaced(text, "3000,0 5000", "2999.5 5000"),
                                            "2500.0 3000.0", "2500.0 3100"));
  document.replace("LOADCASE 1", "10 20 30");
  EXPECT_EQ(document.token("LOADCASE 1 STEAMTURBINE 1"), "30");
  EXPECT_THAT(document.text(), HasSubstr("\n10 20 30 99\n"));
}

TEST(InputDocument, RefusesWhatWouldChangeMoreThanTheValue) {
  const std::string text = everyKind();
  InputDocument document(text);
  const std::vector<std::pair<std::string, std::string>> refused = {
      {"SHAFT 303 Stiffness", "stiff"},         // no number
      {"SHAFT 303 Stiffness", "1 2"},           // two values, the others move up
      {"SHAFT 303 Stiffness", ""},              // the others move down
      {"SHAFT 303 Stiffness", "1e6\n"},         // two lines
      {"DIESEL 17 isTheoreticalPresure", "0"},  // other lines stand
      {"DIESEL 17 nCylinder", "1"},             // the lists have more values than that
      {"DIESEL 17 Name", "two words"},          // without quotes
      {"DIESEL 17 Name", "\"one, two\""},       // a comma becomes a full stop
      {"GEISLINGERCOUPLING 16 DesignType", "TRIPLESPRING"},
      {"GENERATOR 23 GeneratorOrderNumber", "5"},
      {"SHAFT 303 Stiffness", std::string(2600, '1')},
      {"SHAFT 999 Stiffness", "1e6"},
      {"SHAFT 303 Stifness", "1e6"},
      {"SHAFT 303", "1e6"},
      {"DIESEL 17 FiringStatusA", "1"},
      {"DIESEL 17 FiringStatusA 3", "1"},
      {"DIESEL 17 NormalHarmonicFile", "a.txt"},
      {"LOADCASE 99 RPM", "100"},
      {"LOADCASE 1 DIESEL 99", "100"},
      {"LOADCASE 1 RPM", "fast"},
      {"LOADCASE 1", "100 200 idle"},
  };
  for (const auto& [name, token] : refused) {
    EXPECT_THROW(document.replace(name, token), std::runtime_error) << name << " " << token;
    EXPECT_EQ(document.text(), text);
  }
  InputDocument twice(text + "");
  twice.replace("SHAFT 302 Id", "303");
  EXPECT_THROW(static_cast<void>(twice.token("SHAFT 303 Stiffness")), std::runtime_error);
}

TEST(InputDocument, ALineThatCannotBeReadEndsTheReading) {
  const InputDocument document(test::replaced(everyKind(), "206 207 60.5", "206 207 sixty"));
  ASSERT_TRUE(document.failure());
  EXPECT_EQ(document.failure()->message, "TurningMassNode, DrivePlateNode, AbsDamping");
  EXPECT_EQ(document.line(document.failure()->line), "206 207 sixty");
  EXPECT_EQ(document.sections().back().section().keyword, "VISCOUSDAMPER");
  EXPECT_TRUE(InputDocument("").sections().empty());
}

}  // namespace
}  // namespace verenwick::input
