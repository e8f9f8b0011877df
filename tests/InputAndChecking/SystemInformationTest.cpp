#include <gtest/gtest.h>

#include "InputAndChecking/SystemInformation.h"
#include "Support/ReadModel.h"

namespace verenwick::test {
namespace {

TEST(SystemInformation, CountsStandInTheirRecords) {
  const ReadModel directory;
  const auto records = [&](const ModelBundle& model) {
    OUTPUTSYSTEMINFO(model);
    return readRecords(directory.directory().path() / "SystemInfo.bin");
  };
  ModelBundle model;
  EXPECT_EQ(records(model), std::vector<double>(18, 0.0));

  std::int32_t size = 0;
  const auto allocate = [&](auto&... tables) { (tables.allocate(++size), ...); };
  allocate(model.mass, model.shaft, model.viscousDamper, model.rubberDamper,
           model.steelSpringDamper, model.linearCoupling, model.progressiveCoupling, model.diesel,
           model.electricMotor, model.gasTurbine, model.steamTurbine, model.propeller,
           model.generator, model.loadCaseSpeed);
  size = 15;
  allocate(model.geislingerCoupling, model.centrifugalPump, model.reciprocatingPump);
  EXPECT_EQ(records(model),
            (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 24, 16, 17, 18}));
}

TEST(SystemInformation, OverviewHasARowForEveryCylinderWithAKnownStatus) {
  const ReadModel directory;
  const std::filesystem::path overview = directory.directory().path() / "Overview.txt";
  DIESEL_TABLE diesel;
  OUTPUTDIESELFIRINGSTATUS(diesel);
  EXPECT_FALSE(std::filesystem::exists(overview));

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
  EXPECT_EQ(readText(overview),
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

TEST(SystemInformation, FilesThatCannotBeWrittenAreToldInTheLog) {
  const ReadModel directory;
  const std::string here = directory.directory().path().string();
  std::filesystem::create_directory(here + "/SystemInfo.bin");
  std::filesystem::create_directory(here + "/Overview.txt");
  ModelBundle model;
  model.diesel.allocate(1);
  OUTPUTSYSTEMINFO(model);
  OUTPUTDIESELFIRINGSTATUS(model.diesel);
  const std::string words = " Warning: ** Result file can't be written: " + here + "\\";
  EXPECT_EQ(directory.log(), words + "SystemInfo.bin\n" + words + "Overview.txt\n");
}

TEST(CheckedRun, ModeZeroDescribesThePlantAndCalculatesNothing) {
  const SolverRun run(everyKindInput(), 0);
  EXPECT_EQ(run.status(), 1);
  EXPECT_EQ(run.log(), "");
  EXPECT_EQ(filesIn(run.results()),
            (std::vector<std::string>{"Overview.txt", "SystemInfo.bin", "Verenwick.log"}));
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
