#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <filesystem>
#include <limits>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "Support/SolverRun.h"
#include "results/ResultReader.h"

namespace verenwick::results {
namespace {

using testing::HasSubstr;

// A model with all sizes different, so that no two of them can be mixed up.
constexpr int kInertias = 5;
constexpr int kShafts = 4;
constexpr int kLoadCases = 3;
constexpr int kDiesels = 2;
constexpr int kPropellers = 1;
constexpr int kGenerators = 3;
constexpr int kModes = 6;
constexpr int kDieselOrders = 24;
constexpr int kPropellerOrders = 7;
constexpr int kVectorOrders = 20;

/// The bytes of a record, lowest first, made without regard to the machine's own order.
std::string record(double value) {
  auto bits = std::bit_cast<std::uint64_t>(value);
  std::string bytes;
  for (int i = 0; i < 8; ++i, bits >>= 8U) {
    bytes.push_back(static_cast<char>(bits & 0xFFU));
  }
  return bytes;
}

std::string zeroRecords(int count) {
  return std::string(static_cast<std::size_t>(count) * 8, '\0');
}

/// A value that tells its place: three digits an index.
double code(std::int64_t a, std::int64_t b = 0, std::int64_t c = 0, std::int64_t d = 0,
            std::int64_t e = 0) {
  return static_cast<double>((((a * 1000 + b) * 1000 + c) * 1000 + d) * 1000 + e);
}

Position position(std::int64_t loadCase, std::int64_t source, std::int64_t mode, std::int64_t order,
                  std::int64_t point, std::int64_t step = 0) {
  Position at;
  at[Index::loadCase] = loadCase;
  at[Index::source] = source;
  at[Index::mode] = mode;
  at[Index::order] = order;
  at[Index::point] = point;
  at[Index::step] = step;
  return at;
}

class ResultReader : public testing::Test {
 protected:
  std::string systemInfo(std::vector<double> changed = {}) const {
    std::vector<double> counts = {
        kInertias,  kShafts,       0, 0, 0, 0, 0, kDiesels, 0, 0, 0, kPropellers, kGenerators,
        kLoadCases, kDieselOrders, 0, 0, 0};
    if (changed.size() == 2) {
      counts.at(static_cast<std::size_t>(changed[0]) - 1) = changed[1];
    }
    std::string bytes;
    for (const double count : counts) {
      bytes += record(count);
    }
    return bytes;
  }

  void write(const std::string& name, const std::string& bytes) const {
    directory_.write(name, bytes);
  }

  void writeModel() const {
    write("SystemInfo.bin", systemInfo());
    write("NaturalFrequency.bin", zeroRecords(kModes));
  }

  ResultDirectory reader() const { return ResultDirectory(directory_.path()); }
  ResultValues open(const std::string& name) const { return reader().open(*findResultFile(name)); }

  /// The words of the failure to open a file.
  std::string fault(const std::string& name) const {
    try {
      static_cast<void>(open(name));
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return "";
  }

 private:
  test::TemporaryDirectory directory_;
};

TEST(ResultFileTable, NamesEveryFamilyFileByItsFamilyAndQuantity) {
  const std::vector<std::string> families = {
      "Diesel", "Propeller", "Generator", "CentrifugalPump", "ReciprocatingPump", "ElectricMotor"};
  const std::vector<std::pair<std::string, std::string>> quantities = {
      {"Deflection", "rad"}, {"Velocity", "rad/s"}, {"Accele", "rad/s2"},
      {"Torque", "N m"},     {"Stress", "Pa"},      {"DampingTorque", "N m"}};
  for (std::size_t f = 0; f < families.size(); ++f) {
    for (std::size_t q = 0; q < quantities.size(); ++q) {
      const std::string name = families[f] + quantities[q].first + ".bin";
      const ResultFile& file = familyFile(static_cast<Family>(f), static_cast<Quantity>(q));
      EXPECT_EQ(file.name, name);
      EXPECT_EQ(file.unit, quantities[q].second) << name;
      EXPECT_EQ(file.points, q < 3 ? Points::inertias : Points::shafts) << name;
      EXPECT_EQ(file.needs, q == 5 ? Needs::couplingOrDamper : Needs::nothing) << name;
    }
  }
}

TEST(ResultFileTable, HoldsEveryFileOnceWithTheCountsOfItsKinds) {
  std::set<std::string_view> names;
  std::array<int, 9> layouts{};
  int forced = 0;
  for (const ResultFile& file : kResultFiles) {
    names.insert(file.name);
    ++layouts.at(static_cast<std::size_t>(file.layout));
    forced += file.step == Step::forced && file.layout != Layout::text ? 1 : 0;
    EXPECT_EQ(file.unit.empty(), file.layout == Layout::text) << file.name;
  }
  EXPECT_EQ(names.size(), kResultFiles.size());
  EXPECT_EQ(forced, 63);
  // text, system, mode, mode and point, engine, family, load case, marks, angle
  EXPECT_THAT(layouts, testing::ElementsAre(4, 1, 1, 2, 3, 36, 16, 1, 10));
  EXPECT_EQ(findResultFile("DieselAcceleration.bin"), nullptr);
}

// Files are written here in the order of nested loops, slowest index outside; the reader has to
// find every value by its indices.
TEST_F(ResultReader, FindsEveryValueOfEveryLayout) {
  writeModel();
  std::string shapes;
  for (int mode = 2; mode <= kModes; ++mode) {
    for (int point = 1; point <= kShafts; ++point) {
      shapes += record(code(mode, point));
    }
  }
  write("RelativeTorque.bin", shapes);
  std::string sums;
  for (int engine = 1; engine <= kDiesels; ++engine) {
    for (int mode = 2; mode <= kModes; ++mode) {
      for (int order = 1; order <= kVectorOrders; ++order) {
        sums += record(code(engine, mode, order));
      }
    }
  }
  write("VectorSumRpm.bin", sums);
  std::string cases;
  std::string angles;
  for (int loadCase = 1; loadCase <= kLoadCases; ++loadCase) {
    for (int point = 1; point <= kInertias; ++point) {
      cases += record(code(loadCase, point));
      for (int step = 1; step <= 360; ++step) {
        angles += record(code(loadCase, point, step));
      }
    }
  }
  write("SynthesisDeflection.bin", cases);
  write("AngularVelAngleBasedPropeller.bin", angles);
  std::string marks;
  for (int point = 1; point <= kShafts; ++point) {
    marks += record(point);
  }
  write("PropellerShaftMarks.bin", marks);

  ResultValues torque = open("RelativeTorque.bin");
  for (int mode = 2; mode <= kModes; ++mode) {
    for (int point = 1; point <= kShafts; ++point) {
      EXPECT_EQ(torque.value(position(0, 0, mode, 0, point)), code(mode, point));
    }
  }
  ResultValues speed = open("VectorSumRpm.bin");
  EXPECT_EQ(speed.axis(Index::order)->last, kVectorOrders);
  for (int engine = 1; engine <= kDiesels; ++engine) {
    for (int mode = 2; mode <= kModes; ++mode) {
      for (int order = 1; order <= kVectorOrders; ++order) {
        EXPECT_EQ(speed.value(position(0, engine, mode, order, 0)), code(engine, mode, order));
      }
    }
  }
  ResultValues synthesis = open("SynthesisDeflection.bin");
  ResultValues waves = open("AngularVelAngleBasedPropeller.bin");
  for (int loadCase = kLoadCases; loadCase >= 1; --loadCase) {
    for (int point = 1; point <= kInertias; ++point) {
      EXPECT_EQ(synthesis.value(position(loadCase, 0, 0, 0, point)), code(loadCase, point));
      for (const int step : {1, 2, 180, 360}) {
        EXPECT_EQ(waves.value(position(loadCase, 0, 0, 0, point, step)),
                  code(loadCase, point, step));
      }
    }
  }
  EXPECT_EQ(open("PropellerShaftMarks.bin").value(position(0, 0, 0, 0, 3)), 3);
  EXPECT_EQ(open("SystemInfo.bin").value(position(0, 0, 0, 0, 14)), kLoadCases);
  EXPECT_EQ(reader().count(SystemCount::generators), kGenerators);
}

TEST_F(ResultReader, FindsEveryValueOfFamilies) {
  struct Case {
    const char* name;
    int sources, orders, points;
  };
  const std::vector<Case> files = {
      {"DieselAccele.bin", kDiesels, kDieselOrders, kInertias},
      {"DieselDampingTorque.bin", kDiesels, kDieselOrders, kShafts},
      {"PropellerStress.bin", kPropellers, kPropellerOrders, kShafts},
      {"GeneratorVelocity.bin", kGenerators, 4, kInertias},
      {"ReciprocatingPumpTorque.bin", 0, 20, kShafts},
  };
  writeModel();
  for (const Case& file : files) {
    std::string bytes;
    for (int loadCase = 1; loadCase <= kLoadCases; ++loadCase) {
      for (int source = 1; source <= file.sources; ++source) {
        for (int order = 1; order <= file.orders; ++order) {
          for (int point = 1; point <= file.points; ++point) {
            for (int component = 1; component <= 4; ++component) {
              bytes += record(code(loadCase, source, order, point, component));
            }
          }
        }
      }
    }
    write(file.name, bytes);
    ResultValues values = open(file.name);
    EXPECT_EQ(values.axis(Index::order)->size(), file.orders) << file.name;
    for (int loadCase = kLoadCases; loadCase >= 1; --loadCase) {
      for (int source = 1; source <= file.sources; ++source) {
        for (int order = file.orders; order >= 1; --order) {
          for (int point = 1; point <= file.points; ++point) {
            for (int component = 1; component <= 4; ++component) {
              ASSERT_EQ(values.value(position(loadCase, source, 0, order, point), component),
                        code(loadCase, source, order, point, component))
                  << file.name;
            }
          }
        }
      }
    }
    EXPECT_THROW(static_cast<void>(values.value(position(kLoadCases + 1, 1, 0, 1, 1))),
                 std::runtime_error);
    EXPECT_THROW(static_cast<void>(values.value(position(1, 1, 0, 1, 0))), std::runtime_error);
    EXPECT_THROW(static_cast<void>(values.value(position(1, 1, 0, 1, 1), 5)), std::runtime_error);
  }
}

TEST_F(ResultReader, ReadsFarPlacesOfALargeFile) {
  write("SystemInfo.bin", systemInfo({14, 9000}));
  std::string bytes;
  for (int i = 1; i <= 9000 * kShafts; ++i) {
    bytes += record(i);
  }
  write("NominalTorque.bin", bytes);
  ResultValues values = open("NominalTorque.bin");
  for (const std::int64_t loadCase : {9000, 1, 8999, 2048, 2049, 5}) {
    EXPECT_EQ(values.value(position(loadCase, 0, 0, 0, kShafts)),
              static_cast<double>(loadCase * kShafts));
  }

  // Neighbouring records at once.
  std::vector<double> three(3);
  values.read(9000 * kShafts - 2, three);
  EXPECT_THAT(three, testing::ElementsAre(9000 * kShafts - 2, 9000 * kShafts - 1, 9000 * kShafts));
  EXPECT_THROW(values.read(9000 * kShafts - 1, three), std::runtime_error);
  EXPECT_THROW(values.read(0, three), std::runtime_error);
}

TEST_F(ResultReader, KnowsTheSizeOfAFileBeforeItIsWritten) {
  writeModel();
  const auto expected = [this](const char* name) {
    return reader().expectedRecords(*findResultFile(name));
  };
  EXPECT_EQ(expected("DieselTorque.bin"), kLoadCases * kDiesels * kDieselOrders * kShafts * 4);
  EXPECT_EQ(expected("ElectricMotorVelocity.bin"), 0);
  EXPECT_EQ(expected("SynthesisVelocity.bin"), kLoadCases * kInertias);
  EXPECT_EQ(expected("RelativeTorque.bin"), (kModes - 1) * kShafts);
  EXPECT_EQ(expected("TorqueAngleBasedDiesel.bin"), kLoadCases * kShafts * 360);
  EXPECT_EQ(expected("PropellerTorque.bin"), std::nullopt);
  EXPECT_EQ(expected("VectorSum.bin"), std::nullopt);
}

TEST_F(ResultReader, FindsSizesWithoutSystemInfo) {
  write("NaturalFrequency.bin", zeroRecords(3));
  write("RelativeDeflection.bin", zeroRecords(2 * 7));
  write("SynthesisVelocity.bin", zeroRecords(4 * 7));
  write("DieselTorque.bin", zeroRecords(4));
  EXPECT_EQ(reader().modes(), 3);
  EXPECT_EQ(open("RelativeDeflection.bin").axis(Index::point)->last, 7);
  EXPECT_EQ(open("SynthesisVelocity.bin").axis(Index::loadCase)->last, 4);
  EXPECT_EQ(reader().count(SystemCount::shafts), std::nullopt);
  EXPECT_THAT(fault("DieselTorque.bin"), HasSubstr("unknown"));
}

TEST_F(ResultReader, KeepsValuesThatAreNoNumbers) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  write("NaturalFrequency.bin", record(-0.0) + record(std::nan("")) + record(-infinity));
  ResultValues values = open("NaturalFrequency.bin");
  EXPECT_TRUE(std::signbit(values.value(position(0, 0, 1, 0, 0))));
  EXPECT_TRUE(std::isnan(values.value(position(0, 0, 2, 0, 0))));
  EXPECT_EQ(values.value(position(0, 0, 3, 0, 0)), -infinity);
}

TEST_F(ResultReader, NamesWhatIsWrongWithAFile) {
  struct Case {
    const char* what;
    const char* name;
    std::string systemInfo;
    std::string bytes;
    const char* words;
  };
  const std::string whole = zeroRecords(kLoadCases * kShafts);
  const std::vector<Case> cases = {
      {"cut in a record", "NominalTorque.bin", systemInfo(), whole.substr(1), "95 bytes"},
      {"a record too many", "NominalTorque.bin", systemInfo(), whole + record(1), "13 records"},
      {"a load case missing", "NominalTorque.bin", systemInfo(), whole.substr(32),
       "8 records where the model calls for 12"},
      {"no whole orders", "PropellerTorque.bin", systemInfo(), whole, "no multiple of 48"},
      {"sources of an empty family", "ElectricMotorTorque.bin", systemInfo(), whole, "12 records"},
      {"short system info", "NominalTorque.bin", systemInfo().substr(8), whole, "17 records"},
      {"half a load case", "NominalTorque.bin", systemInfo({14, 2.5}), whole, "load cases"},
      {"negative count", "NominalTorque.bin", systemInfo({2, -1}), whole, "shafts"},
      {"count that is no number", "NominalTorque.bin", systemInfo({2, std::nan("")}), whole,
       "shafts"},
      {"huge count", "NominalTorque.bin", systemInfo({14, 1e300}), whole, "load cases"},
      {"sizes beyond any file", "DieselTorque.bin",
       systemInfo({14, 1e9}).replace(56, 8, record(1e9)).replace(8, 8, record(1e9)), whole,
       "absurd"},
  };
  for (const Case& each : cases) {
    write("SystemInfo.bin", each.systemInfo);
    write(each.name, each.bytes);
    EXPECT_THAT(fault(each.name), HasSubstr(each.words)) << each.what;
  }
  write("SystemInfo.bin", systemInfo());
  write("NaturalFrequency.bin", "");
  EXPECT_THAT(fault("NaturalFrequency.bin"), HasSubstr("no record"));
  EXPECT_THAT(fault("ResultantTorque.bin"), HasSubstr("no such file"));
  write("Overview.txt", "words");
  EXPECT_THAT(fault("Overview.txt"), HasSubstr("text"));
  EXPECT_EQ(reader().text(resultFile("Overview.txt")), "words");
  EXPECT_THROW(ResultDirectory("no such directory"), std::runtime_error);
}

}  // namespace
}  // namespace verenwick::results
