#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "RunControl/Constants.h"
#include "RunControl/DataFile.h"
#include "RunControl/Log.h"
#include "RunControl/NumberText.h"
#include "RunControl/StringOperation.h"
#include "Support/SolverRun.h"

namespace verenwick {
namespace {

TEST(StringOperation, ChangesFieldsInPlace) {
  struct Case {
    void (*operation)(std::string&);
    std::string before;
    std::string after;
  };
  for (const Case& c : {Case{STRINGDELETETAB, "a,b\t1,5", "a.b 1.5"},
                        {STRINGFIRSTWORD, "   INERTIA 1", "INERTIA"},
                        {STRINGFIRSTWORD, "   ", ""},
                        {STRINGFIRSTWORD, "word", "word"},
                        {STRINGWITHOUTFIRSTWORD, "  INERTIA 1 2", "1 2"},
                        {STRINGWITHOUTFIRSTWORD, "  INERTIA   ", ""},
                        {STRINGWITHOUTFIRSTWORD, "", ""},
                        {STRINGUPCASE, "aZ[09]z\xE4", "AZ[09]Z\xE4"},
                        {STRINGADJUST, " 1 2  3 ", "123"},
                        {shiftLeft, "  ab c ", "ab c   "}}) {
    std::string text = c.before;
    c.operation(text);
    EXPECT_EQ(text, c.after) << "from '" << c.before << "'";
  }
}

TEST(StringOperation, CountsWordsInTheFirstHundredCharacters) {
  EXPECT_EQ(STRINGSPLITCOUNT("    "), 0);
  EXPECT_EQ(STRINGSPLITCOUNT(" Frequency  Damping Stiffness "), 3);
  EXPECT_EQ(STRINGSPLITCOUNT(std::string(99, ' ') + "x y"), 1);
  EXPECT_EQ(STRINGSPLITCOUNT(std::string(100, ' ') + "x"), 0);
}

TEST(FreeFormat, ReadsRealsOfEveryFormAndRefusesTheRest) {
  for (const auto& [token, value] : {std::pair{"1", 1.0},
                                     {"-1.", -1.0},
                                     {"+.5", 0.5},
                                     {"1e3", 1000.0},
                                     {"1.5D-2", 0.015},
                                     {"2d+1", 20.0},
                                     {"007", 7.0}}) {
    double read = 0.0;
    EXPECT_TRUE(FreeFormat(token).read(read)) << token;
    EXPECT_EQ(read, value) << token;
  }
  for (const char* token : {"nan", "inf", "-Infinity", "1e999", "1e", "1.2.3", "0x10", "1,5x",
                            "+-1", "--1", ".", "", "2*3", "1/2"}) {
    double kept = 42.0;
    EXPECT_FALSE(FreeFormat(token).read(kept)) << token;
    EXPECT_EQ(kept, 42.0) << token;
  }
}

TEST(FreeFormat, ReadsIntegersOfDigitsOnly) {
  std::int32_t value = 0;
  EXPECT_TRUE(FreeFormat(" -12 rest").read(value));
  EXPECT_EQ(value, -12);
  for (const char* token : {"1.5", "1e3", "1.", "2147483648", "one", ""}) {
    EXPECT_FALSE(FreeFormat(token).read(value)) << token;
  }
}

TEST(FreeFormat, WordsMayBeQuotedAndDoNotEndAtASlash) {
  FreeFormat line("3 'Main engine' /data/ice.txt 1.5 remark");
  std::int32_t number = 0;
  std::string name;
  std::string path;
  double real = 0.0;
  ASSERT_TRUE(line.read(number) && line.read(name) && line.read(path) && line.read(real));
  EXPECT_EQ(name, "Main engine");
  EXPECT_EQ(path, "/data/ice.txt");
  EXPECT_EQ(real, 1.5);
  EXPECT_FALSE(FreeFormat("'never closed").read(name));
}

TEST(NumberText, FillsFieldsAsReportsDo) {
  EXPECT_EQ(fixedField(-3.14159, 8, 1), "    -3.1");
  EXPECT_EQ(scientificField(1.5e-120, 12, 3, 2), "   1.500-120");
  EXPECT_EQ(scientificField(0.0, 12, 3, 2), "   0.000E+00");
  EXPECT_EQ(scientificField(-1.0, 8, 3, 2), "********");
  EXPECT_EQ(fixedField(std::nan(""), 6, 1), "   NaN");
  EXPECT_EQ(shortestText(0.1), "0.1");
}

TEST(Constants, RoundToTheNearestSingle) {
  constexpr double kLargest = 0x1.fffffep127;
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  for (const auto& [value, rounded] : {std::pair{0.1, 0.10000000149011612},
                                       {0x1.000001p0, 1.0},  // half way goes to the even one
                                       {1e-50, 0.0},
                                       {kLargest, kLargest},
                                       {0x1.fffffefffffffp127, kLargest},
                                       {0x1.ffffffp127, kInfinite},
                                       {1e300, kInfinite},
                                       {kInfinite, kInfinite}}) {
    EXPECT_EQ(roundedToSingle(value), rounded) << value;
    EXPECT_EQ(roundedToSingle(-value), -rounded) << value;
  }
  EXPECT_TRUE(std::isnan(roundedToSingle(std::nan(""))));
}

TEST(Log, PutsOneBlankBeforeNumbersExceptBehindABracket) {
  const test::TemporaryDirectory directory;
  std::string path = directory.path().string();
  SETRESULTFILEDIR(path, static_cast<std::int32_t>(path.size()));
  {
    Log log(Opening::replace);
    log.record("Error: Shaft", 4, " has a zero or negative Stiffness (", 0.0, ")");
    log.record("in line ", 12, " (Diesel ", 3, " is not defined)");
  }
  appendToLog("Error: Diesel", 1, " (", 1.5e7, "<=", 2e-7, ")");
  EXPECT_EQ(test::readText(directory.path() / "Verenwick.log"),
            " Error: Shaft 4 has a zero or negative Stiffness (0)\n"
            " in line 12 (Diesel 3 is not defined)\n"
            " Error: Diesel 1 (1.5e+07<= 2e-07)\n");
}

}  // namespace
}  // namespace verenwick
