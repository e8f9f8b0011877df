#include <gtest/gtest.h>

#include <algorithm>
#include <span>

#include "ForcedVibration/ResultFiles.h"
#include "Support/ReadModel.h"

namespace verenwick::test {
namespace {

/// A value that tells where it belongs.
double mark(std::initializer_list<int> place) {
  double value = 0;
  for (const int digits : place) {
    value = value * 100 + digits;
  }
  return value;
}

constexpr PointCounts kPoints = {3, 2};
constexpr std::array<std::int32_t, 6> kSources = {2, 1, 3, 1, 2, 0};
constexpr std::array<std::int32_t, 6> kOrders = {24, 2, 4, 4, 20, 4};
constexpr int kLoadCases = 3;

/// Calls use(source, order, point, element) for all elements of a quantity of family f.
template <class Use>
void forEachElement(std::size_t f, int q, Use use) {
  std::size_t e = 0;
  for (int s = 1; s <= kSources[f]; ++s) {
    for (int k = 1; k <= kOrders[f]; ++k) {
      for (int i = 1; i <= (q < 3 ? 3 : 2); ++i) {
        use(s, k, i, e++);
      }
    }
  }
}

TEST(ForcedResultFiles, EveryValueOfAFamilyStandsAtTheRecordOfItsPlace) {
  const ReadModel directoryOfResults;
  const auto& directory = directoryOfResults.directory();
  ForcedResultFiles files({.hasCouplingOrDamper = true});
  for (int L = 1; L <= kLoadCases; ++L) {
    for (std::size_t f = 0; f < 6; ++f) {
      FamilyResults results{kPoints, kSources[f], kOrders[f], {}, {}, {}};
      results.clear();
      for (int q = 0; q < 6; ++q) {
        const int F = static_cast<int>(f);
        ComplexArrays& values = results.quantities[asSize(q)];
        forEachElement(f, q, [&](int s, int k, int i, std::size_t e) {
          values.AMP[e] = mark({L, F, q, s, k, i, 1});
          values.ANGLE[e] = mark({L, F, q, s, k, i, 2});
          values.RE[e] = mark({L, F, q, s, k, i, 3});
          values.IM[e] = mark({L, F, q, s, k, i, 4});
        });
      }
      files.writeFamily(L, static_cast<Family>(f), results);
    }
  }
  files.close();
  const std::array<std::string, 6> words = {
      "Diesel", "Propeller", "Generator", "CentrifugalPump", "ReciprocatingPump", "ElectricMotor"};
  const std::array<std::string, 6> endings = {"Deflection.bin", "Velocity.bin",
                                              "Accele.bin",     "Torque.bin",
                                              "Stress.bin",     "DampingTorque.bin"};
  for (std::size_t f = 0; f < 6; ++f) {
    for (int q = 0; q < 6; ++q) {
      const std::string name = words[f] + endings[asSize(q)];
      std::vector<double> expected;
      for (int L = 1; L <= kLoadCases; ++L) {
        forEachElement(f, q, [&](int s, int k, int i, std::size_t) {
          for (int component = 1; component <= 4; ++component) {
            expected.push_back(mark({L, static_cast<int>(f), q, s, k, i, component}));
          }
        });
      }
      EXPECT_TRUE(readRecords(directory.file(name)) == expected) << name;
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
    const ReadModel directoryOfResults;
    ForcedResultFiles(conditions).close();
    EXPECT_EQ(filesIn(directoryOfResults.directory().path()).size(), files);
  }
}

}  // namespace
}  // namespace verenwick::test
