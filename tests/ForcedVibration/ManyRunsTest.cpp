#include <gtest/gtest.h>

#include <fstream>
#include <map>

#include "ForcedVibration/EveryKind.h"

namespace verenwick {
namespace {

std::ptrdiff_t openFiles() {
  const std::filesystem::directory_iterator files("/proc/self/fd");
  return std::distance(begin(files), end(files));
}

/// Memory of this process that is in use, kB.
double residentMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    if (double kilobytes = 0.0; word == "VmRSS:" && status >> kilobytes) {
      return kilobytes;
    }
  }
  return 0.0;
}

TEST(ManyRuns, TakeNoMoreThanAFewAndGiveTheSame) {
  test::SolverRun run;
  const std::string plant = test::everyKindPlant(run.directory());
  const auto runs = [&](int count) {
    for (int i = 0; i < count; ++i) {
      run.start(plant + "600.0 many\n", 3);
      EXPECT_EQ(run.status(), 0);
      run.start(plant, 3);
      EXPECT_EQ(run.status(), 1);
    }
    std::map<std::string, std::string> contents;
    for (const std::string& name : test::filesIn(run.results())) {
      contents[name] = test::readText(run.results() / name);
    }
    return contents;
  };
  const auto first = runs(5);
  EXPECT_GT(first.size(), 50U);
  EXPECT_EQ(runs(5), first);
  const std::ptrdiff_t files = openFiles();
  const double memory = residentMemory();
  EXPECT_EQ(runs(100), first);
  EXPECT_EQ(openFiles(), files);
#ifndef __SANITIZE_ADDRESS__  // which keeps what is freed, and finds what is lost by itself
  EXPECT_LT(residentMemory(), memory + 500.0);
#endif
  EXPECT_GT(memory, 0.0);
}

}  // namespace
}  // namespace verenwick
