#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <span>

#include "ForcedVibration/ResultFiles.h"
#include "Support/ReadModel.h"

namespace verenwick::test {
namespace {

TEST(ForcedResultFiles, EveryElementOfAFamilyHasFourRecordsInTheOrderOfTheLoadCases) {
  const std::array<std::string, 6> words = {
      "Diesel", "Propeller", "Generator", "CentrifugalPump", "ReciprocatingPump", "ElectricMotor"};
  const std::array<std::string, 6> endings = {"Deflection.bin", "Velocity.bin",
                                              "Accele.bin",     "Torque.bin",
                                              "Stress.bin",     "DampingTorque.bin"};
  const std::array<std::int32_t, 6> sources = {2, 1, 3, 1, 2, 0};
  const std::array<std::int32_t, 6> orders = {24, 2, 4, 4, 20, 4};
  std::map<std::string, std::vector<double>> expected;
  const ReadModel place;
  ForcedResultFiles files({.hasCouplingOrDamper = true});
  double value = 0;
  for (int L = 1; L <= 3; ++L) {
    for (std::size_t f = 0; f < 6; ++f) {
      FamilyResults results{{3, 2}, sources[f], orders[f], {}, {}, {}};
      results.clear();
      for (std::size_t q = 0; q < 6; ++q) {
        ComplexArrays& values = results.quantities[q];
        EXPECT_EQ(values.AMP.size(), asSize(sources[f] * orders[f] * (q < 3 ? 3 : 2)));
        for (std::size_t e = 0; e < values.AMP.size(); ++e) {
          for (auto* component : {&values.AMP, &values.ANGLE, &values.RE, &values.IM}) {
            (*component)[e] = ++value;
            expected[words[f] + endings[q]].push_back(value);
          }
        }
      }
      files.writeFamily(L, static_cast<Family>(f), results);
    }
  }
  files.close();
  for (const std::string& word : words) {
    for (const std::string& ending : endings) {
      EXPECT_TRUE(readRecords(place.directory().file(word + ending)) == expected[word + ending])
          << word << ending;
    }
  }
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
                                          {{true, true, false}, 53},
                                          {{false, false, true}, 48},
                                          {{true, true, true}, 63}}) {
    const ReadModel place;
    ForcedResultFiles(conditions).close();
    EXPECT_EQ(filesIn(place.directory().path()).size(), files);
  }
}

}  // namespace
}  // namespace verenwick::test
