#include <gtest/gtest.h>

#include "InputAndChecking/DataChecking.h"
#include "Matrices/MassStffnessAndDampingMatrix.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using test::ReadModel;

/// A damper on a free end: ring 1, casing 2, mass 3; link 1, shaft 2. The damper runs at twice the
/// reference speed.
const std::string kDamperLine =
    "INERTIA 1 2.0 6.0 0.0 0.0\nINERTIA 2 2.0 4.0 0.0 0.0\nINERTIA 3 1.0 50.0 0.0 0.0\n"
    "SHAFT 1 1 2 2.0 0.0 900.0 0.0 0.0 0.0 0 0\nSHAFT 2 2 3 1.0 1e6 0 0 0 0 0 0\n"
    "VISCOUSDAMPER 7\n2 1 900.0 ";

/// The line with a damper that has the table of a file, at 600 rpm: order q is 10 q Hz.
struct WithTable : ReadModel {
  explicit WithTable(const char* file) {
    directory().write("table.txt", file);
    read(kDamperLine + "1\n@DIR@/table.txt\n");
    isLoaded = isOk() && DATACHECKING(model, 1);
    SET_VISCOUSDAMPER_SPEED(table(), 1, 600.0);
  }
  VISCOUSDAMPER_TABLE& table() { return model.viscousDamper; }
  bool isLoaded = false;
};

TEST(ViscousDamper, TakesDampingAndStiffnessFromItsTable) {
  struct Case {
    const char* file;
    double order;
    double damping;
    double stiffness;
  };
  const char* three = "Hz\tNms/rad Nm/rad\n10 1000 100\n\t20,0 800 300\n40 500 1100\n\n";
  const char* one = "frequency damping\n25 700\n";
  for (const Case& c : {Case{three, 2.0, 800.0, 300.0},  // on a row
                        {three, 8.0, -100.0, 2700.0},    // beyond them, without a limit
                        {one, 12.0, 700.0, 0.0},
                        {"no rows, only\n", 3.0, 900.0, 0.0}}) {
    WithTable damper(c.file);
    ASSERT_TRUE(damper.isLoaded) << damper.log();
    EXPECT_EQ(GET_VISCOUSDAMPER_ISCUSTOMSTIFFNESS(damper.table(), 1), c.file != one);
    EXPECT_DOUBLE_EQ(CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(damper.table(), 1, c.order), c.damping)
        << c.order;
    EXPECT_DOUBLE_EQ(CALCULATE_VISCOUSDAMPER_CUSTOMSTIFFNESS(damper.table(), 1, c.order),
                     c.stiffness)
        << c.order;
  }
}

TEST(ViscousDamper, TableThatCannotBeReadNamesFileAndLine) {
  struct Case {
    const char* what;
    const char* file;
    int line;
  };
  for (const Case& c : {Case{"empty file", "", 1},
                        {"blank line between rows", "Hz Nms\n10 1\n\n20 2\n", 3},
                        {"no stiffness", "Hz Nms Nm\n10 1 5\n20 2\n", 3},
                        {"a heading of one word asks for stiffness", "table\n10 1\n", 2},
                        {"no number", "Hz Nms\n10 1\n20 2\n30 x\n", 4}}) {
    const WithTable damper(c.file);
    EXPECT_FALSE(damper.isLoaded) << c.what;
    EXPECT_EQ(damper.log(), " Error occurs when reading " + damper.directory().file("table.txt") +
                                " in line " + std::to_string(c.line) + "\n")
        << c.what;
  }
}

TEST(ViscousDamper, RingRidesOnTheCasingInTheFreeProblem) {
  ReadModel read(kDamperLine + "0\n");
  ShaftLineMatrices system;
  MASSANDSHAFTTABLEPREPARATION(Vibration::free, read.model, 1);
  BUILDMASSSTIFFNESSANDDAMPINGMATRIX(Vibration::free, read.model, 1.0, system);
  EXPECT_EQ(system.M, (std::vector{4.0 * (0.5 * 6.0 + 4.0), 50.0}));
  EXPECT_EQ(system.K, (std::vector{1e6, 1e6, -1e6, -1e6}));
  MASSANDSHAFTTABLEPREPARATION(Vibration::forced, read.model, 1);
  BUILDMASSSTIFFNESSANDDAMPINGMATRIX(Vibration::forced, read.model, 1.0, system);
  EXPECT_EQ(system.M, (std::vector{4.0 * 6.0, 4.0 * 4.0, 50.0}));
  EXPECT_EQ(system.CR, (std::vector<double>{3600, 3600, 0, -3600, -3600, 0, 0}));
}

TEST(ViscousDamper, ALinkWithATableKeepsWhatTheTableLacks) {
  WithTable damper("Hz damping stiffness\n0 1000 0\n100 0 5000\n");
  ASSERT_TRUE(damper.isLoaded) << damper.log();
  MASSANDSHAFTTABLEPREPARATION(Vibration::forced, damper.model, 1);
  const auto link = [&] {
    ShaftLineMatrices system;
    BUILDMASSSTIFFNESSANDDAMPINGMATRIX(Vibration::forced, damper.model, 4.0, system);
    return std::array{system.CR[0], system.K[0], system.CRR[0]};
  };
  // The link turns at twice the reference speed: its values count four times.
  EXPECT_EQ(link(), (std::array{4.0 * 600.0, 4.0 * 2000.0, 0.0}));
  // A magnifier on the link takes the place of the damping, at the table's stiffness.
  SET_SHAFT_DYNMAGNIFIER(damper.model.shaft, 1, 10.0);
  EXPECT_EQ(link(), (std::array{0.0, 4.0 * 2000.0, 4.0 * 200.0}));
  SET_SHAFT_DYNMAGNIFIER(damper.model.shaft, 1, 0.0);
  SET_SHAFT_STIFFNESSDYNAMIC(damper.model.shaft, 1, 25.0);
  SET_VISCOUSDAMPER_ISCUSTOMSTIFFNESS(damper.table(), 1, false);
  EXPECT_EQ(link(), (std::array{4.0 * 600.0, 4.0 * 25.0, 0.0}));
}

}  // namespace
}  // namespace verenwick
