#include <gtest/gtest.h>

#include "InputAndChecking/SystemInformation.h"
#include "RunControl/Global_Parameter.h"
#include "Support/EveryKindModel.h"
#include "Support/SolverRun.h"

namespace verenwick::test {
namespace {

/// Directs result files into a directory of its own.
class SystemInformation : public testing::Test {
 protected:
  SystemInformation() {
    std::string path = directory_.path().string();
    SETRESULTFILEDIR(path, static_cast<std::int32_t>(path.size()));
  }
  std::filesystem::path file(const std::string& name) const { return directory_.path() / name; }

  TemporaryDirectory directory_;
};

TEST_F(SystemInformation, CountsStandInTheirRecords) {
  ModelBundle model;
  OUTPUTSYSTEMINFO(model);
  EXPECT_EQ(readRecords(file("SystemInfo.bin")), std::vector<double>(18, 0.0));

  model.mass.allocate(101);
  model.shaft.allocate(102);
  model.viscousDamper.allocate(3);
  model.rubberDamper.allocate(4);
  model.steelSpringDamper.allocate(5);
  model.linearCoupling.allocate(6);
  model.progressiveCoupling.allocate(7);
  model.geislingerCoupling.allocate(16);
  model.diesel.allocate(8);
  model.electricMotor.allocate(9);
  model.gasTurbine.allocate(10);
  model.steamTurbine.allocate(11);
  model.propeller.allocate(12);
  model.generator.allocate(13);
  model.centrifugalPump.allocate(17);
  model.reciprocatingPump.allocate(18);
  model.loadCaseSpeed.allocate(14);
  for (std::int32_t i = 1; i <= 8; ++i) {
    model.diesel.at(i).NSTROKE = 2;
  }
  const std::vector<double> expected = {101, 102, 3,  4,  5,  6,  7,  8,  9,
                                        10,  11,  12, 13, 14, 20, 16, 17, 18};
  OUTPUTSYSTEMINFO(model);
  EXPECT_EQ(readRecords(file("SystemInfo.bin")), expected);

  // One four-stroke engine brings half orders to all.
  model.diesel.at(8).NSTROKE = 4;
  OUTPUTSYSTEMINFO(model);
  EXPECT_EQ(readRecords(file("SystemInfo.bin"))[14], 24.0);
}

TEST_F(SystemInformation, OverviewHasARowForEveryCylinderWithAKnownStatus) {
  DIESEL_TABLE diesel;
  OUTPUTDIESELFIRINGSTATUS(diesel);
  EXPECT_FALSE(std::filesystem::exists(file("Overview.txt")));

  diesel.allocate(2);
  DIESEL_RECORD& line = diesel.at(1);
  line.NAME = "Ahead";
  line.NCYLINDER = 6;
  line.CYLINDERS = {3, 40, 500, 6000, 70000, 1234567};
  line.FIRINGSTATUSA = {1, 2, 0, 3, 4, 5};
  line.FIRINGSTATUSB = {1, 1, 1, 1, 1, 1};
  DIESEL_RECORD& vee = diesel.at(2);
  vee.NAME = "TwentyCharactersLong";
  vee.ISVENGINE = true;
  vee.NCYLINDER = 2;
  vee.CYLINDERS = {8, 123456789};
  vee.FIRINGSTATUSA = {1, 6};
  vee.FIRINGSTATUSB = {-1, 5};
  OUTPUTDIESELFIRINGSTATUS(diesel);
  EXPECT_EQ(readText(file("Overview.txt")),
            " Engine                  Cyl       Bank       Firing Status\n"
            " ----------------------------------------------------------\n"
            " Ahead                     3          A       Normal firing\n"
            " Ahead                    40          A       Only compression\n"
            " Ahead                  6000          A       Exhaust valve open\n"
            " Ahead                 70000          A       Piston removed\n"
            " Ahead               1234567          A       Partial firing\n"
            " TwentyCharactersLong      8          A       Normal firing\n"
            " TwentyCharactersLong 123456789          B       Partial firing\n");
}

TEST_F(SystemInformation, FilesThatCannotBeWrittenAreToldInTheLog) {
  std::filesystem::create_directory(file("SystemInfo.bin"));
  std::filesystem::create_directory(file("Overview.txt"));
  ModelBundle model;
  model.diesel.allocate(1);
  OUTPUTSYSTEMINFO(model);
  OUTPUTDIESELFIRINGSTATUS(model.diesel);
  const std::string log = readText(file("Verenwick.log"));
  EXPECT_TRUE(log.starts_with(" Warning: ")) << log;
  EXPECT_NE(log.find("SystemInfo.bin\n Warning: "), std::string::npos) << log;
  EXPECT_TRUE(log.ends_with("Overview.txt\n")) << log;
}

constexpr const char* kTurbineLine =
    "INERTIA 1 1.0 100.0 0.0 0.0\nINERTIA 2 1.0 50.0 0.0 0.0\n"
    "SHAFT 1 1 2 1.0 1000000.0 0.0 0.0 200.0 0.0 0 0\n";

TEST(CheckedRun, ModeZeroWritesReportsAndCalculatesNothing) {
  const SolverRun run(kTurbineLine, 0);
  EXPECT_EQ(run.status(), 1);
  EXPECT_EQ(filesIn(run.results()), (std::vector<std::string>{"SystemInfo.bin", "Verenwick.log"}));
  EXPECT_EQ(run.records("SystemInfo.bin")[1], 1.0);
}

TEST(CheckedRun, PlantWithEveryKindIsSoundAndDescribed) {
  const SolverRun run(everyKindInput(), 0);
  EXPECT_EQ(run.status(), 1);
  EXPECT_EQ(run.log(), "");
  EXPECT_EQ(run.records("SystemInfo.bin"),
            (std::vector<double>{16, 15, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 3, 24, 1, 1, 1}));
  EXPECT_EQ(readText(run.results() / "Overview.txt"),
            " Engine                  Cyl       Bank       Firing Status\n"
            " ----------------------------------------------------------\n"
            " MainEngine              203          A       Normal firing\n"
            " MainEngine              203          B       Normal firing\n"
            " MainEngine              204          A       Normal firing\n"
            " MainEngine              204          B       Normal firing\n");
}

TEST(CheckedRun, LoadCaseTableFaultsAreWarnings) {
  const SolverRun run(everyKindShaftLine() +
                          "LOADCASE\nRPM 17 22 23\nDIESEL SCREW GENERATOR\n250.0 100.0 100.0\n\n"
                          "500.0 200.0 200.0\n",
                      0);
  EXPECT_EQ(run.status(), 1);
  EXPECT_EQ(
      run.log(),
      " Error occurs when reading loadcase settings in input file line 94\n"
      " Warning: Load case column 22 has the unknown kind SCREW, it is dropped and the powers "
      "move up by one column\n"
      " Warning: Load case table ends at a blank line, load case 2 and those behind it have "
      "speed and power 0\n"
      " Warning: Load case 2 has a speed of 0\n");
}

TEST(CheckedRun, RefusedModelLeavesOnlyTheLog) {
  const SolverRun run(
      "INERTIA 1 1.0 100.0 0.0 0.0\nINERTIA 2 0.0 50.0 0.0 0.0\n"
      "SHAFT 4 1 2 1.0 0.0 0.0 0.0 200.0 0.0 0 0\n",
      3);
  EXPECT_EQ(run.status(), 0);
  EXPECT_EQ(run.log(),
            " Error: Inertia 2 has a zero or negative rpm ratio (0)\n"
            " Error: Shaft 4 has a zero or negative Stiffness (0)\n");
  EXPECT_EQ(filesIn(run.results()), (std::vector<std::string>{"Verenwick.log"}));
}

}  // namespace
}  // namespace verenwick::test
