#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ctime>
#include <map>
#include <random>
#include <sstream>

#include "InputAndChecking/InputSections.h"
#include "Support/ReadModel.h"

// Files that no engineer writes. Reading and checking them ends with a status, and words where it
// is 0, within seconds.
namespace verenwick {
namespace {

using testing::AnyOf;
using testing::HasSubstr;

/// A few seconds of the processor, and what sanitizers make of them; sections of one kind, with
/// the inertias and shafts in front of them a hundred thousand.
#ifdef __SANITIZE_ADDRESS__
constexpr double kLongestRead = 60.0;
constexpr int kEach = 3'300;
#else
constexpr double kLongestRead = 5.0;
constexpr int kEach = 33'000;
#endif

/// The answer to an input file whose data files, if it names any, lie in a directory.
struct Answer {
  std::int32_t status = -1;
  std::string log;
  double seconds = 0.0;
};

Answer answerTo(const std::string& inputText, const test::TemporaryDirectory& directory = {}) {
  directory.write("input.txt", inputText);
  const std::clock_t start = std::clock();
  Answer answer;
  answer.status =
      test::callSolver(directory.path().string(), "input.txt", directory.path().string(), 0);
  answer.seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  answer.log = test::readText(directory.file("Verenwick.log"));
  EXPECT_THAT(answer.status, AnyOf(0, 1));
  EXPECT_TRUE(answer.status == 1 || !answer.log.empty());
  EXPECT_LT(answer.seconds, kLongestRead);
  return answer;
}

/// The plant with every kind, without its load cases.
std::string shaftLine() {
  const std::string plant = test::everyKindInput();
  return plant.substr(0, plant.find("LOADCASE"));
}

/// The first section of each kind in it, by keyword.
std::map<std::string, std::string> sections() {
  std::map<std::string, std::string> found;
  std::string* section = nullptr;
  std::istringstream text(shaftLine());
  for (std::string line; std::getline(text, line);) {
    const std::string word{firstWord(line)};
    const auto kinds = inputSections();
    if (std::any_of(kinds.begin(), kinds.end(), [&](const auto& k) { return k.keyword == word; })) {
      section = &found[word];
      if (!section->empty()) {
        section = nullptr;
      }
    }
    if (section != nullptr) {
      *section += line + '\n';
    }
  }
  return found;
}

TEST(HostileInput, AHundredThousandSections) {
  // A long line in front of the plant's own inertias and shafts: they are the last to be found.
  std::string longLine;
  for (int i = 1001; i <= 1000 + kEach; ++i) {
    const std::string id = std::to_string(i);
    const std::string next = i < 1000 + kEach ? std::to_string(i + 1) : "205";
    longLine.append("INERTIA ").append(id).append(" 1.0 10.0 0.0 0.0\nSHAFT ").append(id);
    longLine.append(" ").append(id).append(" ").append(next).append(" 1.0 1e6 0 0 0 0 0 0\n");
  }
  const std::string plant = longLine + shaftLine();
  auto kinds = sections();
  ASSERT_EQ(kinds.size(), inputSections().size() - 2);  // one has no data, the other needs a file
  kinds["OUTPUTANGLEBASEDRESULTS"] = "OUTPUTANGLEBASEDRESULTS\n";
  for (const auto& [keyword, section] : kinds) {
    SCOPED_TRACE(keyword);
    const std::size_t idStart = section.find(' ');
    const std::size_t idEnd = std::min(section.find_first_of(" \n", idStart + 1), section.size());
    std::string text = plant;
    for (int i = 1; i <= kEach; ++i) {
      const int id = keyword == "INERTIA" ? 500 : 100'000 + i;  // one kind shares an id
      text += idStart == std::string::npos
                  ? section
                  : section.substr(0, idStart + 1) + std::to_string(id) + section.substr(idEnd);
    }
    EXPECT_THAT(answerTo(text).log, Not(HasSubstr("Error occurs when reading")));
  }
}

TEST(HostileInput, MoreThanFindsRoom) {
  const auto kinds = sections();
  const auto times = [](std::size_t count, const std::string& text) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
      all += text;
    }
    return all;
  };
  const std::string loadCases = "LOADCASE\nRPM 20\nGASTURBINE\n";
  const std::string turbine = kinds.at("GASTURBINE") + loadCases;
  const std::string engine =
      test::replaced(kinds.at("DIESEL"), "1 765.0 0 1.25", "0 0.0 1 1.25") + '\n';
  const std::string ice = test::replaced(kinds.at("PROPELLER"), " 4 20000.0", " 2147483647 1.0") +
                          "PROPELLERICE 1\n0\n@DIR@/Genset.txt\n";
  struct Case {
    std::string input, dataFile, words;
  };
  for (const auto& [input, dataFile, words] :
       {Case{times(400'001, "SHAFT\n"), "", "has 400001 sections, at most 400000"},
        {turbine + times(1'000'001, "1\n"), "", "lines behind LOADCASE, at most 1000000"},
        {times(20, engine) + turbine + times(100'000, "1\n"), "",
         "2000000 genset records are more than 1000000"},
        {times(20'000, engine) + turbine + times(20, "1\n"), times(400'000, "17 150 120\n"),
         "cylinder node not listed"},
        {times(21, ice), "", "have 2100000 lines, at most 2000000"},
        {"VISCOUSDAMPER 11\n202 201 1600.0 1\n@DIR@/Genset.txt\n", times(5'000'002, "1 1\n"),
         "more than 5000000 rows"}}) {
    SCOPED_TRACE(words);
    const test::TemporaryDirectory directory;
    directory.write("Genset.txt", dataFile);
    const Answer answer =
        answerTo(test::replaced(input, "@DIR@", directory.path().string()), directory);
    EXPECT_EQ(answer.status, 0);
    EXPECT_NE(answer.log.find(words), std::string::npos) << answer.log.substr(0, 200);
  }
}

TEST(HostileInput, EveryIntegerAtItsLimits) {
  const std::string plant = test::everyKindInput();
  std::size_t integers = 0;
  for (std::size_t begin = 0; begin < plant.size();) {
    const std::size_t end = std::min(plant.find_first_of(" \n", begin), plant.size());
    if (end > begin &&
        plant.substr(begin, end - begin).find_first_not_of("0123456789") == std::string::npos) {
      ++integers;
      for (const char* value : {"-1", "0", "2147483647"}) {
        SCOPED_TRACE("byte " + std::to_string(begin) + " is " + value);
        answerTo(plant.substr(0, begin) + value + plant.substr(end));
      }
    }
    begin = end + 1;
  }
  EXPECT_GT(integers, 150U);
}

TEST(HostileInput, BytesThatAreNoText) {
  constexpr std::size_t kMegabyte = 1 << 20;
  std::mt19937 generator(1);
  std::string noise(kMegabyte, '\0');
  for (char& byte : noise) {
    byte = static_cast<char>(generator());
  }
  const std::string longNumbers = [] {
    std::string text;
    while (text.size() < 10 * kMegabyte) {
      text += "1.5 ";
    }
    return text;
  }();
  // Places where the plant names a data file. Some files may say nothing: a table of a damper
  // without rows, pressures that end before the first.
  struct Place {
    std::string user, line, lineWithFile;
    bool mayBeEmpty;
  };
  const std::vector<Place> places = {
      {"engine",
       "1 7 1\n180.0 120.0 1.36 1.28 15.5 4.5 50.0\n45.0 0.75 -5.0 60.0 125.0 140.0 220.0\n"
       "120.0 0.5 30.0 -1.5\n",
       "0 7 0\n@DIR@/Genset.txt\n@DIR@/Genset.txt\n", false},
      {"pressures", " 0 1.25\n", " 1 1.25\n", true},
      {"pump", "62.0 1\n3\n3.0 6.0 9.0 12.0\n6.0 3.0 1.2 5.0\n", "62.0 0\n@DIR@/Genset.txt\n",
       false},
      {"damper", "202 201 1600.0 0\n", "202 201 1600.0 1\n@DIR@/Genset.txt\n", true},
      {"ice", "90.0 1\n0\n", "90.0 1\n0\nPROPELLERICE 22\n0\n@DIR@/Genset.txt\n", false},
      {"water", "90.0 1\n0\n", "90.0 1\n1\n@DIR@/Genset.txt\n", false}};
  const std::string plant = test::everyKindInput();
  for (const auto& [what, bytes] : {std::pair{"nothing", std::string()},
                                    {"noise", noise},
                                    {"zeros", std::string(kMegabyte, '\0')},
                                    {"one long word", std::string(10 * kMegabyte, 'I')},
                                    {"one long line", longNumbers},
                                    {"lines without end", std::string(kMegabyte, '\n')},
                                    {"an inertia and no end", "INERTIA " + longNumbers}}) {
    SCOPED_TRACE(what);
    EXPECT_EQ(answerTo(bytes).status, 0);
    for (const Place& place : places) {
      SCOPED_TRACE(place.user);
      const test::TemporaryDirectory directory;
      directory.write("Genset.txt", bytes);
      const std::string input = test::replaced(plant, place.line, place.lineWithFile);
      ASSERT_NE(input, plant);
      const Answer answer =
          answerTo(test::replaced(input, "@DIR@", directory.path().string()), directory);
      EXPECT_TRUE(place.mayBeEmpty || answer.status == 0);
      EXPECT_TRUE(answer.status == 1 || answer.log.find("Genset.txt in line") != std::string::npos)
          << answer.log.substr(0, 200);
    }
  }
}

}  // namespace
}  // namespace verenwick
