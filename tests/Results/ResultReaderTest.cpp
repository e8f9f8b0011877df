#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <numeric>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Support/SolverRun.h"
#include "results/ResultReader.h"

namespace verenwick::results {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::ThrowsMessage;

// A model with all sizes different, so that no two of them can be mixed up.
constexpr int kInertias = 5, kShafts = 4, kLoadCases = 3, kDiesels = 2, kPropellers = 1,
              kGenerators = 3, kModes = 6, kDieselOrders = 24;

/// The bytes of records, lowest first, made without regard to the machine's own order.
std::string records(const std::vector<double>& values) {
  std::string bytes;
  for (const double value : values) {
    auto bits = std::bit_cast<std::uint64_t>(value);
    for (int i = 0; i < 8; ++i, bits >>= 8U) bytes.push_back(static_cast<char>(bits & 0xFFU));
  }
  return bytes;
}

/// Records that hold their own numbers, from 1.
std::string numbered(std::size_t count) {
  std::vector<double> values(count);
  std::iota(values.begin(), values.end(), 1.0);
  return records(values);
}

class ResultReader : public testing::Test {
 protected:
  /// The bytes of the model's counts, one of them changed.
  static std::string systemInfo(std::pair<std::size_t, double> changed = {1, kInertias}) {
    std::vector<double> counts = {
        kInertias,  kShafts,       0, 0, 0, 0, 0, kDiesels, 0, 0, 0, kPropellers, kGenerators,
        kLoadCases, kDieselOrders, 0, 0, 0};
    counts.at(changed.first - 1) = changed.second;
    return records(counts);
  }
  ResultDirectory reader() const { return ResultDirectory(directory_.path()); }
  ResultValues open(const std::string& name) const { return reader().open(*findResultFile(name)); }
  void expectFault(const std::string& name, const char* words) const {
    EXPECT_THAT([&] { open(name); }, ThrowsMessage<std::runtime_error>(HasSubstr(words)));
  }

  test::TemporaryDirectory directory_;
};

TEST(ResultFileTable, HoldsEveryFileOnceWithTheCountsOfItsKinds) {
  const std::vector<std::string> families = {
      "Diesel", "Propeller", "Generator", "CentrifugalPump", "ReciprocatingPump", "ElectricMotor"};
  const std::vector<std::pair<std::string, std::string>> quantities = {
      {"Deflection", "rad"}, {"Velocity", "rad/s"}, {"Accele", "rad/s2"},
      {"Torque", "N m"},     {"Stress", "Pa"},      {"DampingTorque", "N m"}};
  for (std::size_t f = 0; f < families.size(); ++f) {
    for (std::size_t q = 0; q < quantities.size(); ++q) {
      const ResultFile& file = familyFile(static_cast<Family>(f), static_cast<Quantity>(q));
      EXPECT_EQ(file.name, families[f] + quantities[q].first + ".bin");
      EXPECT_EQ(file.unit, quantities[q].second) << file.name;
    }
  }
  std::set<std::string_view> names;
  std::array<int, 9> layouts{};
  for (const ResultFile& file : kResultFiles) {
    names.insert(file.name);
    ++layouts.at(static_cast<std::size_t>(file.layout));
    EXPECT_EQ(file.unit.empty(), file.layout == Layout::text) << file.name;
  }
  EXPECT_EQ(names.size(), kResultFiles.size());
  // text, system, mode, mode and point, engine, family, load case, marks, angle
  EXPECT_THAT(layouts, ElementsAre(4, 1, 1, 2, 3, 36, 16, 1, 10));
  EXPECT_EQ(findResultFile("DieselAcceleration.bin"), nullptr);
}

// Files are written here with their record numbers; the reader has to find every value by its
// indices, the last axis fastest.
TEST_F(ResultReader, FindsEveryValueOfEveryLayout) {
  struct Case {
    const char* name;
    const char* axes;
    int records;
    bool isSizeKnown = true;
  };
  directory_.write("SystemInfo.bin", systemInfo());
  directory_.write("NaturalFrequency.bin", numbered(kModes));
  for (const Case& file : {
           Case{"NaturalFrequency.bin", "mode 1-6", 6},
           Case{"RelativeTorque.bin", "mode 2-6, shaft 1-4", 20},
           Case{"VectorSumRpm.bin", "engine 1-2, mode 2-6, order 1-24", 240},
           Case{"SynthesisDeflection.bin", "load case 1-3, inertia 1-5", 15},
           Case{"TorqueAngleBasedDiesel.bin", "load case 1-3, shaft 1-4, step 1-360", 4320},
           Case{"PropellerShaftMarks.bin", "shaft 1-4", 4},
           Case{"DieselAccele.bin", "load case 1-3, diesel 1-2, order 1-24, inertia 1-5", 2880},
           Case{"PropellerStress.bin", "load case 1-3, propeller 1-1, order 1-7, shaft 1-4", 336,
                false},
           Case{"GeneratorVelocity.bin", "load case 1-3, generator 1-3, order 1-4, inertia 1-5",
                720},
           Case{"CentrifugalPumpStress.bin",
                "load case 1-3, centrifugal pump 1-0, order 1-4, shaft 1-4", 0},
           Case{"ElectricMotorVelocity.bin",
                "load case 1-3, electric motor 1-0, order 1-4, inertia 1-5", 0},
           Case{"ReciprocatingPumpTorque.bin",
                "load case 1-3, reciprocating pump 1-0, order 1-20, shaft 1-4", 0},
       }) {
    EXPECT_EQ(reader().expectedRecords(*findResultFile(file.name)),
              file.isSizeKnown ? std::optional(file.records) : std::nullopt)
        << file.name;
    directory_.write(file.name, numbered(static_cast<std::size_t>(file.records)));
    ResultValues values = open(file.name);
    std::string axes;
    for (const Axis& axis : values.axes()) {
      axes += (axes.empty() ? "" : ", ") + std::string(axis.name) + " " +
              std::to_string(axis.first) + "-" + std::to_string(axis.last);
    }
    ASSERT_EQ(axes, file.axes) << file.name;
    Position at;
    const auto columns = static_cast<int>(values.columns().size());
    for (int i = 0; i < file.records; ++i) {
      std::int64_t row = i / columns;
      for (auto axis = values.axes().rbegin(); axis != values.axes().rend(); ++axis) {
        const std::int64_t size = axis->last - axis->first + 1;
        at[axis->index] = axis->first + row % size;
        row /= size;
      }
      ASSERT_EQ(values.value(at, i % columns + 1), i + 1) << file.name;
    }
    EXPECT_THROW(static_cast<void>(values.value(at, columns + 1)), std::runtime_error);
    at[values.axes().back().index] = 0;
    EXPECT_THROW(static_cast<void>(values.value(at)), std::runtime_error);
  }
  Position loadCases;
  loadCases[Index::point] = 14;
  EXPECT_EQ(open("SystemInfo.bin").value(loadCases), kLoadCases);
}

TEST_F(ResultReader, ReadsFarPlacesOfALargeFile) {
  constexpr int cases = 9000;
  directory_.write("SystemInfo.bin", systemInfo({14, cases}));
  directory_.write("NominalTorque.bin", numbered(cases * kShafts));
  ResultValues values = open("NominalTorque.bin");
  Position at;
  at[Index::point] = kShafts;
  for (const int loadCase : {cases, 1, 8999, 2048, 2049, 5}) {
    at[Index::loadCase] = loadCase;
    EXPECT_EQ(values.value(at), loadCase * kShafts);
  }
  // Neighbouring records at once.
  std::vector<double> three(3);
  values.read(cases * kShafts - 2, three);
  EXPECT_THAT(three, ElementsAre(cases * kShafts - 2, cases * kShafts - 1, cases * kShafts));
  for (const std::int64_t first : {0, cases * kShafts - 1}) {
    EXPECT_THAT([&] { values.read(first, three); },
                ThrowsMessage<std::runtime_error>(HasSubstr("outside the file")));
  }
}

TEST_F(ResultReader, FindsSizesWithoutSystemInfo) {
  directory_.write("NaturalFrequency.bin", numbered(3));
  directory_.write("RelativeDeflection.bin", numbered(2 * 7));
  directory_.write("SynthesisVelocity.bin", numbered(4 * 7));
  directory_.write("DieselTorque.bin", numbered(4));
  EXPECT_EQ(open("RelativeDeflection.bin").axis(Index::point)->last, 7);
  EXPECT_EQ(open("SynthesisVelocity.bin").axis(Index::loadCase)->last, 4);
  EXPECT_EQ(reader().count(SystemCount::shafts), std::nullopt);
  expectFault("DieselTorque.bin", "unknown");
}

TEST_F(ResultReader, NamesWhatIsWrongWithAFile) {
  struct Case {
    std::string systemInfo, bytes;
    const char* words;
    const char* name = "NominalTorque.bin";
  };
  const std::string whole = numbered(kLoadCases * kShafts);
  for (const Case& each : {
           Case{systemInfo(), numbered(13), "13 records"},
           Case{systemInfo(), whole.substr(32), "8 records where the counts in SystemInfo.bin"},
           Case{systemInfo(), whole, "12 records", "ElectricMotorTorque.bin"},
           Case{systemInfo().substr(8), whole, "17 records"},
           Case{systemInfo({14, 2.5}), whole, "load cases"},
           Case{systemInfo({2, -1}), whole, "shafts"},
           Case{systemInfo({2, std::nan("")}), whole, "shafts"},
           Case{systemInfo({14, 1e300}), whole, "SystemInfo.bin: broken"},
           Case{systemInfo({2, 1e9}), whole, "SystemInfo.bin: broken"},
           Case{systemInfo({15, 23}), whole, "SystemInfo.bin: broken", "DieselTorque.bin"},
           Case{systemInfo({2, 4e5}), whole, "12 records where the counts in SystemInfo.bin"},
           Case{systemInfo(), whole, "no multiple of 48", "PropellerTorque.bin"},
           Case{systemInfo(), "", "no record", "NaturalFrequency.bin"},
           Case{systemInfo(), "words", "text", "Overview.txt"},
       }) {
    directory_.write("SystemInfo.bin", each.systemInfo);
    directory_.write(each.name, each.bytes);
    expectFault(each.name, each.words);
  }
  EXPECT_EQ(reader().text(resultFile("Overview.txt")), "words");
}

// A run that stops leaves whole orders of fewer load cases, which looks like fewer orders.
TEST_F(ResultReader, DoesNotGuessTheOrdersOfPropellers) {
  constexpr int torques = kPropellers * kShafts * 4;
  const auto open = [this](std::int64_t orders) {
    static_cast<void>(
        ResultDirectory(directory_.path(), {orders}).open(resultFile("PropellerTorque.bin")));
  };
  directory_.write("SystemInfo.bin", systemInfo());
  directory_.write("PropellerTorque.bin", numbered(kLoadCases * 2 * torques));
  expectFault("PropellerTorque.bin", "no totals of whole load cases");
  directory_.write("SynthesisTorque.bin", numbered(kLoadCases * kShafts));
  EXPECT_EQ(this->open("PropellerTorque.bin").axis(Index::order)->last, 2);
  EXPECT_NO_THROW(open(2));
  EXPECT_THAT([&] { open(8); }, ThrowsMessage<std::runtime_error>(HasSubstr("call for 384")));
  // Six orders, of which the first load case is there.
  directory_.write("PropellerTorque.bin", numbered(6 * torques));
  directory_.write("SynthesisTorque.bin", numbered(kShafts));
  expectFault("PropellerTorque.bin", "SynthesisTorque.bin");
  EXPECT_THAT([&] { open(6); }, ThrowsMessage<std::runtime_error>(HasSubstr("call for 288")));
  directory_.write("SynthesisTorque.bin", numbered(kLoadCases * kShafts));
  directory_.write("PropellerStress.bin", numbered(kLoadCases * torques));
  expectFault("PropellerTorque.bin", "another number of orders");
}

}  // namespace
}  // namespace verenwick::results
