#include <gtest/gtest.h>

#include "ComponentTables/Global_RubberDamper.h"
#include "ComponentTables/Global_SteelSpringDamper.h"
#include "ComponentTables/Global_ViscousDamper.h"
#include "InputAndChecking/DataChecking.h"
#include "Matrices/MassStffnessAndDampingMatrix.h"
#include "RunControl/Constants.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using test::ReadModel;

/// A damper on a free end: ring 1, casing 2, mass 3; link 1, shaft 2. The damper runs at twice the
/// reference speed.
std::string viscousDamperLine(const std::string& flagAndFile) {
  return "INERTIA 1 2.0 6.0 0.0 0.0\nINERTIA 2 2.0 4.0 0.0 0.0\nINERTIA 3 1.0 50.0 0.0 0.0\n"
         "SHAFT 1 1 2 2.0 0.0 900.0 0.0 0.0 0.0 0 0\nSHAFT 2 2 3 1.0 1e6 0 0 0 0 0 0\n"
         "VISCOUSDAMPER 7\n2 1 900.0 " +
         flagAndFile + "\n";
}

/// A model whose damper has the table of a file.
class WithTable {
 public:
  explicit WithTable(const std::string& file) {
    read_.directory().write("table.txt", file);
    read_.read(viscousDamperLine("1\n@DIR@/table.txt"));
    isLoaded_ = read_.isOk() && LOADCUSTOMDAMPINGFILE(read_.model.viscousDamper);
  }
  bool isLoaded() const { return isLoaded_; }
  ModelBundle& model() { return read_.model; }
  VISCOUSDAMPER_TABLE& table() { return read_.model.viscousDamper; }
  std::string log() const { return read_.log(); }
  std::string path() const { return read_.directory().file("table.txt"); }

 private:
  ReadModel read_;
  bool isLoaded_ = false;
};

TEST(ViscousDamper, TakesDampingAndStiffnessFromItsTable) {
  // At 600 rpm order q is 10 q Hz.
  WithTable with("Hz\tNms/rad Nm/rad\n10 1000 100\n\t20,0 800 300\n40 500 1100\n\n");
  ASSERT_TRUE(with.isLoaded()) << with.log();
  SET_VISCOUSDAMPER_SPEED(with.table(), 1, 600.0);
  EXPECT_TRUE(GET_VISCOUSDAMPER_ISCUSTOMSTIFFNESS(with.table(), 1));
  EXPECT_EQ(GET_VISCOUSDAMPER_NFREQUENCY(with.table(), 1), 3);
  struct Case {
    double order;
    double damping;
    double stiffness;
  };
  for (const Case& c : {Case{1.0, 1000.0, 100.0},  // on rows
                        {2.0, 800.0, 300.0},
                        {4.0, 500.0, 1100.0},
                        {1.5, 900.0, 200.0},  // between them
                        {3.0, 650.0, 700.0},
                        {0.5, 1100.0, 0.0},  // beyond them, without a limit
                        {6.0, 200.0, 1900.0},
                        {8.0, -100.0, 2700.0}}) {
    EXPECT_DOUBLE_EQ(CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(with.table(), 1, c.order), c.damping)
        << c.order;
    EXPECT_DOUBLE_EQ(CALCULATE_VISCOUSDAMPER_CUSTOMSTIFFNESS(with.table(), 1, c.order), c.stiffness)
        << c.order;
  }
}

TEST(ViscousDamper, TableMayBeOneRowOrNone) {
  WithTable one("frequency damping\n25 700\n");
  ASSERT_TRUE(one.isLoaded()) << one.log();
  EXPECT_FALSE(GET_VISCOUSDAMPER_ISCUSTOMSTIFFNESS(one.table(), 1));
  SET_VISCOUSDAMPER_SPEED(one.table(), 1, 600.0);
  for (const double order : {0.0, 1.0, 12.0}) {
    EXPECT_EQ(CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(one.table(), 1, order), 700.0);
  }
  WithTable none("frequency damping stiffness\n");
  ASSERT_TRUE(none.isLoaded()) << none.log();
  EXPECT_EQ(CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(none.table(), 1, 3.0), 900.0);
  EXPECT_EQ(CALCULATE_VISCOUSDAMPER_CUSTOMSTIFFNESS(none.table(), 1, 3.0), 0.0);
}

TEST(ViscousDamper, TableMayBeLong) {
  std::string file = "Hz Nms/rad\n";
  for (int i = 1; i <= 12000; ++i) {
    file += std::to_string(i) + " " + std::to_string(3 * i) + "\n";
  }
  WithTable with(file);
  ASSERT_TRUE(with.isLoaded()) << with.log();
  EXPECT_EQ(GET_VISCOUSDAMPER_NFREQUENCY(with.table(), 1), 12000);
  SET_VISCOUSDAMPER_SPEED(with.table(), 1, 60.0);
  EXPECT_DOUBLE_EQ(CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(with.table(), 1, 11999.5), 35998.5);
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
    const WithTable with(c.file);
    EXPECT_FALSE(with.isLoaded()) << c.what;
    EXPECT_EQ(with.log(), " Error occurs when reading " + with.path() + " in line " +
                              std::to_string(c.line) + "\n")
        << c.what;
  }
}

TEST(ViscousDamper, LoaderStopsAtTheFirstTableThatCannotBeRead) {
  ReadModel read;
  read.directory().write("good.txt", "Hz Nms\n10 1\n");
  VISCOUSDAMPER_TABLE table;
  ALLOCATE_VISCOUSDAMPER_TABLE(table, 4);
  SET_VISCOUSDAMPER_CUSTOMDAMPINGFILE(table, 2, read.directory().file("good.txt"));
  SET_VISCOUSDAMPER_CUSTOMDAMPINGFILE(table, 3, read.directory().file("missing.txt"));
  SET_VISCOUSDAMPER_CUSTOMDAMPINGFILE(table, 4, read.directory().file("good.txt"));
  EXPECT_FALSE(LOADCUSTOMDAMPINGFILE(table));
  EXPECT_EQ(GET_VISCOUSDAMPER_NFREQUENCY(table, 1), 0);
  EXPECT_EQ(GET_VISCOUSDAMPER_NFREQUENCY(table, 2), 1);
  EXPECT_EQ(GET_VISCOUSDAMPER_NFREQUENCY(table, 4), 0);
  EXPECT_EQ(read.log(),
            " Error occurs when reading " + read.directory().file("missing.txt") + " in line 1\n");
}

TEST(ViscousDamper, TablesAreLoadedOnceByTheChecksOfTheModel) {
  const auto twoDampers = [](const char* secondFile) {
    return viscousDamperLine("1\n@DIR@/table.txt") +
           "INERTIA 4 1.0 6.0 0.0 0.0\nINERTIA 5 1.0 4.0 0.0 0.0\n"
           "SHAFT 3 4 5 1.0 0.0 900.0 0.0 0.0 0.0 0 0\nSHAFT 4 3 5 1.0 1e6 0 0 0 0 0 0\n"
           "VISCOUSDAMPER 8\n5 4 900.0 1\n@DIR@/" +
           secondFile + "\n";
  };
  for (const auto& [secondFile, isSound] : {std::pair{"table.txt", true}, {"missing.txt", false}}) {
    ReadModel read;
    read.directory().write("table.txt", "Hz Nms\n10 1\n");
    read.read(twoDampers(secondFile));
    ASSERT_TRUE(read.isOk()) << read.log();
    EXPECT_EQ(DATACHECKING(read.model, 1), isSound);
    EXPECT_EQ(read.log(), isSound ? ""
                                  : " Error occurs when reading " +
                                        read.directory().file("missing.txt") + " in line 1\n");
    EXPECT_EQ(GET_VISCOUSDAMPER_NFREQUENCY(read.model.viscousDamper, 1), 1);
  }
}

TEST(ViscousDamper, RingRidesOnTheCasingInTheFreeProblem) {
  ReadModel read(viscousDamperLine("0"));
  ASSERT_TRUE(read.isOk()) << read.log();
  ShaftLineMatrices system;
  MASSANDSHAFTTABLEPREPARATION(true, read.model, 1);
  BUILDMASSSTIFFNESSANDDAMPINGMATRIX(true, read.model, 1.0, system);
  EXPECT_EQ(system.N, 2);
  EXPECT_EQ(system.M, (std::vector<double>{4.0 * (0.5 * 6.0 + 4.0), 50.0}));
  EXPECT_EQ(system.K, (std::vector<double>{1e6, 1e6, -1e6, -1e6}));
  MASSANDSHAFTTABLEPREPARATION(false, read.model, 1);
  BUILDMASSSTIFFNESSANDDAMPINGMATRIX(false, read.model, 1.0, system);
  EXPECT_EQ(system.N, 3);
  EXPECT_EQ(system.M, (std::vector<double>{4.0 * 6.0, 4.0 * 4.0, 50.0}));
  EXPECT_EQ(system.CR, (std::vector<double>{3600, 3600, 0, -3600, -3600, 0, 0}));
}

TEST(ViscousDamper, TableActsInTheForcedProblemAtTheOrderSolved) {
  WithTable with("Hz damping stiffness\n0 1000 0\n100 0 5000\n");
  ASSERT_TRUE(with.isLoaded()) << with.log();
  ModelBundle& model = with.model();
  SET_VISCOUSDAMPER_SPEED(model.viscousDamper, 1, 600.0);
  MASSANDSHAFTTABLEPREPARATION(false, model, 1);
  const auto link = [&](double order) {
    ShaftLineMatrices system;
    BUILDMASSSTIFFNESSANDDAMPINGMATRIX(false, model, order, system);
    return std::array{system.CR[0], system.K[0], system.CRR[0]};
  };
  // The link turns at twice the reference speed: its values count four times.
  EXPECT_EQ(link(1.0), (std::array{4.0 * 900.0, 4.0 * 500.0, 0.0}));
  EXPECT_EQ(link(4.0), (std::array{4.0 * 600.0, 4.0 * 2000.0, 0.0}));
  // A magnifier on the link takes the place of the damping, at the table's stiffness.
  SET_SHAFT_DYNMAGNIFIER(model.shaft, 1, 10.0);
  EXPECT_EQ(link(4.0), (std::array{0.0, 4.0 * 2000.0, 4.0 * 200.0}));
  SET_SHAFT_DYNMAGNIFIER(model.shaft, 1, 0.0);
  // Stiffness from the table comes with damping from the table or not at all.
  SET_VISCOUSDAMPER_ISCUSTOMDAMPING(model.viscousDamper, 1, false);
  EXPECT_EQ(link(4.0), (std::array{4.0 * 900.0, 0.0, 0.0}));
}

TEST(ViscousDamper, IsFoundByItsNodesEitherWayRound) {
  VISCOUSDAMPER_TABLE viscous;
  RUBBERDAMPER_TABLE rubber;
  EXPECT_FALSE(GET_VISCOUSDAMPER_CONTAINCUSTOMDAMPING(viscous));
  EXPECT_EQ(GET_VISCOUSDAMPER_IVISCOUSDAMPER_NODE(viscous, 1, 2), 0);
  ALLOCATE_VISCOUSDAMPER_TABLE(viscous, 3);
  ALLOCATE_RUBBERDAMPER_TABLE(rubber, 3);
  for (std::int32_t i = 1; i <= 3; ++i) {
    SET_VISCOUSDAMPER_CASINGNODE(viscous, i, 10 * i + 1);
    SET_VISCOUSDAMPER_RINGNODE(viscous, i, 10 * i + 2);
    SET_RUBBERDAMPER_TURNINGMASSNODE(rubber, i, 10 * i + 1);
    SET_RUBBERDAMPER_DRIVEPLATENODE(rubber, i, 10 * i + 2);
  }
  EXPECT_EQ(GET_VISCOUSDAMPER_IVISCOUSDAMPER_NODE(viscous, 21, 22), 2);
  EXPECT_EQ(GET_VISCOUSDAMPER_IVISCOUSDAMPER_NODE(viscous, 32, 31), 3);
  EXPECT_EQ(GET_VISCOUSDAMPER_IVISCOUSDAMPER_NODE(viscous, 21, 32), 0);
  // A rubber damper is found with its turning mass named first only.
  EXPECT_EQ(GET_RUBBERDAMPER_IRUBBERDAMPER_NODE(rubber, 21, 22), 2);
  EXPECT_EQ(GET_RUBBERDAMPER_IRUBBERDAMPER_NODE(rubber, 22, 21), 0);
  EXPECT_FALSE(GET_VISCOUSDAMPER_CONTAINCUSTOMDAMPING(viscous));
  SET_VISCOUSDAMPER_ISCUSTOMDAMPING(viscous, 3, true);
  EXPECT_TRUE(GET_VISCOUSDAMPER_CONTAINCUSTOMDAMPING(viscous));
}

TEST(RubberDamper, LosesTheSameShareOfItsEnergyAtEveryFrequency) {
  RUBBERDAMPER_TABLE table;
  ALLOCATE_RUBBERDAMPER_TABLE(table, 1);
  SET_RUBBERDAMPER_ABSDAMPING(table, 1, 55.0);
  SET_RUBBERDAMPER_SPEED(table, 1, 1500.0);
  CALCULATE_RUBBERDAMPER_LOADCASESETTING(table, 1, 82000.0, 6.5, 1.0);
  EXPECT_EQ(GET_RUBBERDAMPER_STIFFNESS(table, 1), 82000.0);
  EXPECT_EQ(GET_RUBBERDAMPER_DAMPING(table, 1), CALCULATE_RUBBERDAMPER_DAMPING(table, 1, 6.5, 1.0));
  // A magnifier M is a loss factor 1/M: the energy of a cycle, pi c w x^2, over the strain energy,
  // k x^2 / 2, is 2 pi / M.
  for (const double order : {0.5, 3.0, 7.5}) {
    const double c = CALCULATE_RUBBERDAMPER_DAMPING(table, 1, 6.5, order);
    const double w = order * angularSpeed(1500.0);
    EXPECT_NEAR(kPi * c * w / (82000.0 / 2), 2 * kPi / 6.5, 1e-14);
  }
  CALCULATE_RUBBERDAMPER_LOADCASESETTING(table, 1, 82000.0, 0.0, 0.0);
  EXPECT_EQ(GET_RUBBERDAMPER_DAMPING(table, 1), 55.0);
}

TEST(SteelSpringDamper, ReportsItsFixedDamping) {
  STEELSPRINGDAMPER_TABLE spring;
  VISCOUSDAMPER_TABLE viscous;
  ALLOCATE_STEELSPRINGDAMPER_TABLE(spring, 1);
  ALLOCATE_VISCOUSDAMPER_TABLE(viscous, 1);
  SET_STEELSPRINGDAMPER_ABSDAMPING(spring, 1, 2400.0);
  SET_VISCOUSDAMPER_ABSDAMPING(viscous, 1, 1600.0);
  CALCULATE_STEELSPRINGDAMPER_LOADCASESETTING(spring, 1, 3e6);
  CALCULATE_VISCOUSDAMPER_LOADCASESETTING(viscous, 1, 1e-6);
  EXPECT_EQ(GET_STEELSPRINGDAMPER_STIFFNESS(spring, 1), 3e6);
  EXPECT_EQ(GET_STEELSPRINGDAMPER_DAMPING(spring, 1), 2400.0);
  EXPECT_EQ(GET_VISCOUSDAMPER_STIFFNESS(viscous, 1), 1e-6);
  EXPECT_EQ(GET_VISCOUSDAMPER_DAMPING(viscous, 1), 1600.0);
}

}  // namespace
}  // namespace verenwick
