#include <gtest/gtest.h>

#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <locale>

#include "ForcedVibration/EveryKind.h"

/// The solver inside a host that writes numbers as its country does.
namespace verenwick::test {
namespace {

/// Digits in groups of three with full stops between them, and a decimal comma.
struct CommaNumbers : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

/// The same for the C library, which takes its numbers from a compiled file: a magic number, the
/// number of items, their offsets, then decimal point, separator and grouping as texts, the first
/// two again as wide characters, and the name of the character set. No locale of the machine is
/// needed.
std::string compiledNumbers() {
  constexpr std::array<std::uint32_t, 8> kHead = {0x20031115U ^ 1U, 6, 32, 34, 36, 40, 44, 48};
  std::string bytes(reinterpret_cast<const char*>(kHead.data()), sizeof kHead);
  bytes += std::string(",\0.\0\3\0\0\0", 8);
  for (const std::uint32_t wide : {std::uint32_t{','}, std::uint32_t{'.'}}) {
    bytes += std::string(reinterpret_cast<const char*>(&wide), sizeof wide);
  }
  return bytes + std::string("UTF-8\0", 6);
}

class CommaLocale {
 public:
  CommaLocale() : before_(std::locale::global(std::locale(std::locale(), new CommaNumbers))) {
    std::filesystem::create_directory(directory_.path() / "comma");
    directory_.write("comma/LC_NUMERIC", compiledNumbers());
    setenv("LOCPATH", directory_.path().c_str(), 1);
    std::setlocale(LC_NUMERIC, "comma");
  }
  ~CommaLocale() {
    std::setlocale(LC_NUMERIC, "C");
    unsetenv("LOCPATH");
    std::locale::global(before_);
  }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

 private:
  TemporaryDirectory directory_;
  std::locale before_;
};

/// Runs the plant with a component of every kind, and one whose log has words and numbers.
void runPlants(SolverRun& everyKind, SolverRun& warned) {
  everyKind.start(everyKindPlant(everyKind.directory()), 3);
  EXPECT_EQ(everyKind.status(), 1) << everyKind.log();
  warned.start(
      "INERTIA 1 1.0 1234567.5 0.0 0.0\nINERTIA 2 1.0 4.25 0.0 0.0\nINERTIA 3 1.0 1e-12 0.0 0.0\n"
      "SHAFT 1 1 2 1.0 9e15 30.0 0.0 80.0 0.0 0 0\nSHAFT 2 2 3 1.0 1e4 30.0 0.0 80.0 0.0 0 0\n"
      "ELECTRICMOTOR 1\n1 1000.0 1500.0 0 0.0 1\n2.5 0.0 0.0 0.0\n10.0 0.0 0.0 0.0\n"
      "LOADCASE\nRPM 1\nELECTRICMOTOR\n9000.5 123456.75 1\n",
      3);
  EXPECT_EQ(warned.status(), 1) << warned.log();
}

TEST(Locale, NoFileKnowsHowTheHostWritesNumbers) {
  SolverRun everyKind;
  SolverRun warned;
  runPlants(everyKind, warned);
  SolverRun otherEveryKind;
  SolverRun otherWarned;
  {
    const CommaLocale locale;
#ifdef __GLIBC__
    std::array<char, 20> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), "%.1f", 0.5));
    ASSERT_STREQ(text.data(), "0,5");
#endif
    runPlants(otherEveryKind, otherWarned);
  }
  EXPECT_NE(warned.log(), "");
  for (const auto& [run, other] :
       {std::pair{&everyKind, &otherEveryKind}, {&warned, &otherWarned}}) {
    EXPECT_EQ(filesIn(run->results()), filesIn(other->results()));
    for (const std::string& file : filesIn(run->results())) {
      EXPECT_TRUE(readText(run->results() / file) == readText(other->results() / file)) << file;
    }
  }
}

}  // namespace
}  // namespace verenwick::test
