#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ForcedVibration/ResultFiles.h"
#include "RunControl/RunStopped.h"
#include "Support/SolverRun.h"

namespace verenwick {
namespace {

using test::filesIn;
using test::readRecords;
using test::TemporaryDirectory;

/// Points the solver's result directory to a directory of the test.
void writeInto(const TemporaryDirectory& directory) {
  std::string name = directory.path().string();
  SETRESULTFILEDIR(name, static_cast<std::int32_t>(name.size()));
}

/// A value that tells where it belongs.
double mark(int loadCase, int family, int quantity, int source, int order, int point,
            int component) {
  double value = 0;
  for (const int digits : {loadCase, family, quantity, source, order, point, component}) {
    value = value * 100 + digits;
  }
  return value;
}

constexpr std::int32_t kInertias = 3;
constexpr std::int32_t kShafts = 2;
constexpr std::array<std::int32_t, 6> kSources = {2, 1, 3, 1, 2, 0};
constexpr std::array<std::int32_t, 6> kOrders = {24, 2, 4, 4, 20, 4};

FamilyResults markedFamily(int loadCase, int family) {
  FamilyResults results;
  results.points = {kInertias, kShafts};
  results.sources = kSources[static_cast<std::size_t>(family)];
  results.orders = kOrders[static_cast<std::size_t>(family)];
  results.clear();
  for (std::int32_t s = 1; s <= results.sources; ++s) {
    const SourceResults source = results.source(s);
    for (int q = 0; q < 6; ++q) {
      const std::int32_t points = q < 3 ? kInertias : kShafts;
      const ComplexSection& section = source.of(static_cast<Quantity>(q));
      for (std::int32_t k = 1; k <= results.orders; ++k) {
        for (std::int32_t i = 1; i <= points; ++i) {
          const auto at = static_cast<std::size_t>((k - 1) * points + i - 1);
          section.AMP[at] = mark(loadCase, family, q, s, k, i, 1);
          section.ANGLE[at] = mark(loadCase, family, q, s, k, i, 2);
          section.RE[at] = mark(loadCase, family, q, s, k, i, 3);
          section.IM[at] = mark(loadCase, family, q, s, k, i, 4);
        }
      }
    }
  }
  return results;
}

TEST(ForcedResultFiles, EveryValueOfAFamilyStandsAtTheRecordOfItsPlace) {
  const TemporaryDirectory directory;
  writeInto(directory);
  constexpr int kLoadCases = 3;
  ForcedResultFiles files({.hasCouplingOrDamper = true});
  for (int L = 1; L <= kLoadCases; ++L) {
    for (int f = 0; f < 6; ++f) {
      files.writeFamily(L, static_cast<Family>(f), markedFamily(L, f));
    }
  }
  files.close();
  const std::array<std::string, 6> words = {
      "Diesel", "Propeller", "Generator", "CentrifugalPump", "ReciprocatingPump", "ElectricMotor"};
  const std::array<std::string, 6> endings = {"Deflection.bin", "Velocity.bin",
                                              "Accele.bin",     "Torque.bin",
                                              "Stress.bin",     "DampingTorque.bin"};
  for (int f = 0; f < 6; ++f) {
    for (int q = 0; q < 6; ++q) {
      const std::string name =
          words[static_cast<std::size_t>(f)] + endings[static_cast<std::size_t>(q)];
      const auto records = readRecords(directory.path() / name);
      const int P = q < 3 ? kInertias : kShafts;
      const int S = kSources[static_cast<std::size_t>(f)];
      const int NO = kOrders[static_cast<std::size_t>(f)];
      const int E = S * NO * P;
      ASSERT_EQ(records.size(), static_cast<std::size_t>(4 * E * kLoadCases)) << name;
      int wrong = 0;
      for (int L = 1; L <= kLoadCases; ++L) {
        for (int s = 1; s <= S; ++s) {
          for (int k = 1; k <= NO; ++k) {
            for (int i = 1; i <= P; ++i) {
              const int e = (s - 1) * NO * P + (k - 1) * P + i;
              for (int c = 1; c <= 4; ++c) {
                const int r = ((L - 1) * E + e - 1) * 4 + c;
                wrong += records[static_cast<std::size_t>(r - 1)] != mark(L, f, q, s, k, i, c);
              }
            }
          }
        }
      }
      EXPECT_EQ(wrong, 0) << name;
    }
  }
}

TEST(ForcedResultFiles, PointsAndWaveformsFollowTheLoadCases) {
  const TemporaryDirectory directory;
  writeInto(directory);
  ForcedResultFiles files({.isAngleBased = true});
  Waveforms waveforms;
  for (int L = 1; L <= 2; ++L) {
    files.writePoints(L, results::resultFile("NominalTorque.bin"),
                      std::vector<double>{10.0 * L + 1, 10.0 * L + 2});
    files.writePoints(L, results::resultFile("ResultantTorque.bin"), std::vector<double>{1, 2});
    for (int q = 0; q < 6; ++q) {
      const int points = q < 3 ? kInertias : kShafts;
      waveforms[0].clear();
      for (int j = 1; j <= points; ++j) {
        for (int m = 1; m <= 360; ++m) {
          waveforms[0].push_back(mark(L, 0, q, 0, j, m / 100, m % 100));
        }
      }
      files.writeWaveforms(L, static_cast<Quantity>(q), points, waveforms);
    }
  }
  files.close();
  EXPECT_EQ(readRecords(directory.path() / "NominalTorque.bin"),
            (std::vector<double>{11, 12, 21, 22}));
  EXPECT_FALSE(std::filesystem::exists(directory.path() / "ResultantTorque.bin"));
  const std::array<std::string, 5> words = {"AngularDef", "AngularVel", "AngularAcce", "Torque",
                                            "Stress"};
  for (int q = 0; q < 5; ++q) {
    const std::string& word = words[static_cast<std::size_t>(q)];
    const auto records = readRecords(directory.path() / (word + "AngleBasedDiesel.bin"));
    const int P = q < 3 ? kInertias : kShafts;
    ASSERT_EQ(records.size(), static_cast<std::size_t>(2 * P * 360)) << word;
    for (const auto& [L, j, m] : {std::tuple{1, 1, 1}, std::tuple{1, 2, 199}, std::tuple{2, 1, 360},
                                  std::tuple{2, P, 360}}) {
      const int r = ((L - 1) * P + j - 1) * 360 + m;
      EXPECT_EQ(records[static_cast<std::size_t>(r - 1)], mark(L, 0, q, 0, j, m / 100, m % 100))
          << word;
    }
    // Propellers that don't excite stand still, and have their records.
    EXPECT_EQ(readRecords(directory.path() / (word + "AngleBasedPropeller.bin")),
              std::vector<double>(static_cast<std::size_t>(2 * P * 360)));
  }
}

TEST(ForcedResultFiles, OnlyTheFilesThatTheModelCallsForAreMade) {
  struct Case {
    ResultConditions conditions;
    std::size_t files;
  };
  // 30 of the families, 8 of the load cases; 6 + 2 with damping torque, 6 + 1 in ice, 10 over
  // angle.
  for (const auto& [conditions, files] :
       {Case{{false, false, false}, 38}, Case{{true, false, false}, 46},
        Case{{false, true, false}, 44}, Case{{true, true, false}, 53},
        Case{{false, false, true}, 48}, Case{{true, true, true}, 63}}) {
    const TemporaryDirectory directory;
    writeInto(directory);
    ForcedResultFiles(conditions).close();
    EXPECT_EQ(filesIn(directory.path()).size(), files);
  }
}

TEST(ForcedResultFiles, AFileThatCannotBeOpenedStopsTheRunByName) {
  const TemporaryDirectory directory;
  writeInto(directory);
  std::filesystem::create_directory(directory.path() / "GeneratorStress.bin");
  EXPECT_THAT([] { ForcedResultFiles files({}); },
              testing::ThrowsMessage<RunStopped>(testing::HasSubstr("GeneratorStress.bin")));
}

}  // namespace
}  // namespace verenwick
