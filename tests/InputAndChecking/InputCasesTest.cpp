#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "InputAndChecking/DataChecking.h"
#include "RunControl/NumberText.h"
#include "Support/ReadModel.h"

/// Cases that stand in text files: a change of the plant with every kind, and what comes out.
///
///   # what the cases are about
///   - a line of the plant, there once, is taken out
///   + a line is put in its place
///    Error: a line of the log. The log holds just these, and the plant is refused
///   + another line is put there instead: the next case
///   accepted   before lines of the log, if any: the plant is good
///   reads      before fields that records hold when it is read, such as " DIESEL 17 NSTROKE=4"
namespace verenwick::test {
namespace {

using Lines = std::vector<std::string>;

enum class Fields { all, changed };

std::string valueText(const std::string& value) { return std::string("\"").append(value) + "\""; }
std::string valueText(std::int32_t value) { return std::to_string(value); }
std::string valueText(double value) { return shortestText(value); }
template <class Kind>
requires std::is_enum_v<Kind> std::string valueText(Kind value) {
  return std::to_string(static_cast<std::int32_t>(value));
}
template <class Value, std::size_t N>
requires std::is_arithmetic_v<Value> std::string valueText(const std::array<Value, N>& values) {
  std::size_t count = N;
  while (count > 0 && values[count - 1] == Value{}) {
    --count;
  }
  std::ostringstream text;
  for (std::size_t i = 0; i < count; ++i) {
    text << (i > 0 ? "," : "") << valueText(values[i]);
  }
  return text.str();
}

template <class Value>
concept Showable = requires(const Value& value) {
  valueText(value);
};

/// Writes a line for each record.
/// @param fieldsOf calls the function it is given with name and value of each field of a record,
///                 and the value of a new record
template <class Record, class FieldsOf>
void showTable(std::ostream& out, const char* kind, const ComponentTable<Record>& table,
               Fields wanted, FieldsOf fieldsOf) {
  for (std::int32_t i = 1; i <= table.number(); ++i) {
    out << kind << ' ' << table.id(i);
    fieldsOf(table.at(i), Record{}, [&](const char* name, const auto& value, const auto& plain) {
      if constexpr (Showable<decltype(value)>) {
        if (wanted == Fields::all || value != plain) {
          out << ' ' << name << '=' << valueText(value);
        }
      }
    });
    out << '\n';
  }
}

void showLoadCases(std::ostream& out, const ModelBundle& model) {
  for (std::int32_t column = 1; column <= model.loadCase.number(); ++column) {
    out << "COLUMN " << column
        << " TYPE=" << valueText(GET_LOADCASE_COMPONENTTYPE(model.loadCase, column))
        << " ID=" << GET_LOADCASE_COMPONENTID(model.loadCase, column) << '\n';
  }
  for (std::int32_t loadCase = 1; loadCase <= model.loadCaseSpeed.number(); ++loadCase) {
    out << "LOADCASE " << loadCase << " SPEED=" << shortestText(model.loadCaseSpeed.at(loadCase))
        << " POWER=";
    for (std::int32_t column = 1; column <= model.loadCase.number(); ++column) {
      out << (column > 1 ? "," : "") << shortestText(model.loadCasePower.at(column, loadCase));
    }
    out << '\n';
  }
}

/// The tables of a model as text, a line a record: "DIESEL 17 NSTROKE=4 MCRPOWER=1000000 ...".
/// Arrays are shown up to their last value that isn't zero.
/// @param fields all of them, or those that differ from a new record
std::string tableText(const ModelBundle& model, Fields fields) {
  std::ostringstream out;
#define SHOW_FIELD(X, type, name, ...) show(#name, record.name, plain.name);
#define SHOW_TABLE(X, table)                                                   \
  showTable(out, #X, model.table, fields,                                      \
            [](const X##_RECORD& record, const X##_RECORD& plain, auto show) { \
              X##_FIELDS(SHOW_FIELD, SHOW_FIELD, SHOW_FIELD, X)                \
            });
  SHOW_TABLE(MASS, mass)
  SHOW_TABLE(SHAFT, shaft)
  SHOW_TABLE(VISCOUSDAMPER, viscousDamper)
  SHOW_TABLE(RUBBERDAMPER, rubberDamper)
  SHOW_TABLE(STEELSPRINGDAMPER, steelSpringDamper)
  SHOW_TABLE(LINEARCOUPLING, linearCoupling)
  SHOW_TABLE(PROGRESSIVECOUPLING, progressiveCoupling)
  SHOW_TABLE(GEISLINGERCOUPLING, geislingerCoupling)
  SHOW_TABLE(DIESEL, diesel)
  SHOW_TABLE(ELECTRICMOTOR, electricMotor)
  SHOW_TABLE(GASTURBINE, gasTurbine)
  SHOW_TABLE(STEAMTURBINE, steamTurbine)
  SHOW_TABLE(PROPELLER, propeller)
  SHOW_TABLE(GENERATOR, generator)
  SHOW_TABLE(CENTRIFUGALPUMP, centrifugalPump)
  SHOW_TABLE(RECIPROCATINGPUMP, reciprocatingPump)
#undef SHOW_TABLE
#undef SHOW_FIELD
  showLoadCases(out, model);
  return out.str();
}

Lines linesOf(const std::string& text) {
  Lines lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    lines.push_back(line);
  }
  return lines;
}

/// A case as it is gathered line by line.
struct Case {
  Lines plant = linesOf(everyKindInput());
  Lines::difference_type at = 0;  ///< where the next line is put
  std::string outcome = "refused";
  Lines expected;

  bool isComplete() const { return outcome != "refused" || !expected.empty(); }
  void takeOut(const std::string& line) {
    ASSERT_EQ(std::count(plant.begin(), plant.end(), line), 1) << line;
    const auto found = std::find(plant.begin(), plant.end(), line);
    at = found - plant.begin();
    plant.erase(found);
  }
  void putIn(const std::string& line) { plant.insert(plant.begin() + at++, line); }
  std::string input() const {
    std::string text;
    for (const std::string& line : plant) {
      text += line + "\n";
    }
    return text;
  }
};

/// Expects the fields of each line in the record that it names.
void expectFields(const ModelBundle& model, const Lines& expected) {
  const Lines records = linesOf(tableText(model, Fields::all));
  for (const std::string& line : expected) {
    // " DIESEL 17 NSTROKE=4": kind, id and a blank, then fields.
    const std::size_t fields = line.find(' ', line.find(' ', 1) + 1) + 1;
    const std::string kindAndId = line.substr(1, fields - 1);
    const auto record = std::find_if(records.begin(), records.end(), [&](const std::string& r) {
      return r.starts_with(kindAndId);
    });
    ASSERT_NE(record, records.end()) << line;
    std::istringstream words(line.substr(fields));
    for (std::string field; words >> field;) {
      EXPECT_THAT(*record + " ", testing::HasSubstr(" " + field + " "));
    }
  }
}

void expectOutcome(const Case& c) {
  ReadModel read(c.input());
  if (c.outcome == "reads") {
    ASSERT_TRUE(read.isOk()) << read.log();
    ASSERT_FALSE(c.expected.empty());
    expectFields(read.model, c.expected);
    return;
  }
  ASSERT_TRUE(c.outcome == "accepted" || c.outcome == "refused") << c.outcome;
  EXPECT_EQ(read.isOk() && DATACHECKING(read.model, 2), c.outcome == "accepted");
  EXPECT_EQ(linesOf(replaced(read.log(), read.directory().path().string(), "@DIR@")), c.expected);
}

class InputCases : public testing::TestWithParam<const char*> {};

TEST_P(InputCases, ComeOutAsTheyShould) {
  const std::string name = GetParam();
  const Lines lines = linesOf(readText(VERENWICK_TESTS "/InputAndChecking/" + name));
  ASSERT_FALSE(lines.empty());
  const Case untouched;
  Case shortened;  // the plant without the lines taken out
  Case current;
  const auto finish = [&](std::size_t line, const Case& next) {
    if (current.isComplete()) {
      SCOPED_TRACE(name + ":" + std::to_string(line));
      expectOutcome(current);
      current = next;
    }
  };
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string& line = lines[i];
    if (line.starts_with("- ")) {
      finish(i, untouched);
      current.takeOut(line.substr(2));
      shortened = current;
    } else if (line.starts_with("+")) {
      finish(i, shortened);
      current.putIn(line.size() > 2 ? line.substr(2) : "");
    } else if (line.starts_with(" ")) {
      current.expected.push_back(line);
    } else if (!line.empty() && !line.starts_with("#")) {
      current.outcome = line;
    }
  }
  finish(lines.size(), untouched);
}

INSTANTIATE_TEST_SUITE_P(, InputCases,
                         testing::Values("read-values.txt", "unreadable-lines.txt",
                                         "data-checks.txt"));

// Every value of the input in its field, in SI units; inertias and shafts with their marks.
TEST(EveryKind, FillsTheTables) {
  EXPECT_EQ(tableText(ReadModel(everyKindInput()).model, Fields::changed),
            readText(VERENWICK_TESTS "/InputAndChecking/every-kind-tables.txt"));
}

// The line that is missing is named, whatever section it belongs to.
TEST(EveryKind, CutAfterAnyLineIsReadOrRefusedAtTheNext) {
  const std::string input = everyKindInput();
  int line = 0;
  int refused = 0;
  for (std::size_t end = 0; end < input.find("LOADCASE\n"); end = input.find('\n', end) + 1) {
    const ReadModel read(input.substr(0, end));
    if (!read.isOk()) {
      ++refused;
      EXPECT_THAT(read.log(),
                  testing::EndsWith("\" in input file line " + std::to_string(line + 1) + "\n"));
    }
    ++line;
  }
  EXPECT_EQ(refused, 44) << "lines behind the keyword lines of sections";
}

}  // namespace
}  // namespace verenwick::test
