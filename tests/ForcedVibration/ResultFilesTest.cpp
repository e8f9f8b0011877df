#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <regex>
#include <span>

#include "ForcedVibration/EveryKind.h"
#include "ForcedVibration/ResultFiles.h"
#include "Support/ReadModel.h"

namespace verenwick::test {
namespace {

TEST(ForcedResultFiles, LoadCasesFollowEachOtherAndTheirSourcesToo) {
  SolverRun both, first, second;
  for (const auto& [run, left] :
       {std::pair{&both, "no line"}, {&first, "480 512 .*\n"}, {&second, "600 1000 .*\n"}}) {
    const std::string plant = "OUTPUTANGLEBASEDRESULTS\n" + everyKindPlant(run->directory());
    run->start(std::regex_replace(plant, std::regex(left), ""), 2);
    ASSERT_EQ(run->status(), 1) << run->log();
  }
  // The first load case leaves the speed ratios to the second one with an error of rounding.
  const auto isNear = [](double a, double b) {
    return std::fabs(a - b) <= 1e-9 * std::fabs(b) || (std::isnan(a) && std::isnan(b));
  };
  for (const std::string& file : filesIn(both.results())) {
    if (file.ends_with(".bin") && file != "PropellerShaftMarks.bin" && file != "SystemInfo.bin") {
      std::vector<double> records = first.records(file);
      std::ranges::copy(second.records(file), std::back_inserter(records));
      EXPECT_TRUE(std::ranges::equal(both.records(file), records, isNear)) << file;
    }
  }
  // The second propeller, in open water, has no orders in ice.
  const auto torque = both.records("PropellerTorque.bin");
  constexpr std::size_t kSource = std::size_t{16} * 21 * 4;
  ASSERT_EQ(torque.size(), 4 * kSource);
  EXPECT_NE(torque[kSource - 4], 0.0);
  EXPECT_EQ(torque[kSource], 0.0);
}

/// The waveforms of diesel and propeller make up the synthesis, point by point; a family without
/// sources stands still.
TEST(ForcedResultFiles, WaveformsFollowTheLoadCasesAndPoints) {
  const SolverRun ship("OUTPUTANGLEBASEDRESULTS\n" + exampleInput("two-stroke-ship"), 2);
  const SolverRun pump(exampleInput("fire-pump"), 2);
  for (const auto& [word, sum] : {std::pair<std::string, const char*>{"AngularDef", "Deflection"},
                                  {"AngularVel", "Velocity"},
                                  {"AngularAcce", "Acceleration"},
                                  {"Torque", "Torque"},
                                  {"Stress", "Stress"}}) {
    const auto diesel = ship.records(word + "AngleBasedDiesel.bin");
    const auto propeller = ship.records(word + "AngleBasedPropeller.bin");
    const auto synthesis = ship.records("Synthesis" + std::string(sum) + ".bin");
    ASSERT_EQ(diesel.size(), 360 * synthesis.size());
    ASSERT_EQ(propeller.size(), diesel.size());
    for (std::size_t at = 0; at < synthesis.size(); ++at) {
      const auto range = [&](std::span<const double> waveform) {
        const auto [low, high] = std::ranges::minmax(waveform.subspan(360 * at, 360));
        return high - low;
      };
      EXPECT_EQ((range(diesel) + range(propeller)) / 2, synthesis[at]) << word << at;
    }
    const std::size_t records = pump.records(word + "AngleBasedDiesel.bin").size();
    EXPECT_EQ(pump.records(word + "AngleBasedPropeller.bin"), std::vector<double>(records));
  }
}

TEST(ForcedResultFiles, OnlyTheFilesThatTheModelCallsForAreMade) {
  // 30 of the families, 8 of the load cases; 6 + 2 with damping torque, 6 + 1 in ice, 10 over
  // angle.
  for (const auto& [conditions, files] : {std::pair{ResultConditions{false, false, false}, 38U},
                                          {{true, false, false}, 46},
                                          {{false, true, false}, 44},
                                          {{true, true, true}, 63}}) {
    const ReadModel place;
    ForcedResultFiles(conditions).close();
    EXPECT_EQ(filesIn(place.directory().path()).size(), files);
  }
}

}  // namespace
}  // namespace verenwick::test
