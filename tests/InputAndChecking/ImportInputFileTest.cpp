#include <gtest/gtest.h>

#include "InputAndChecking/ImportInputFile.h"
#include "RunControl/Global_Parameter.h"
#include "Support/ReadModel.h"
#include "verenwick.h"

namespace verenwick::test {
namespace {

const std::string kTwoInertias =
    "INERTIA 1 1.0 100.0 0.0 0.0\nINERTIA 2 1.0 50.0 0.0 0.0\n"
    "SHAFT 1 1 2 1.0 1000000.0 0.0 0.0 200.0 0.0 0 0\n";

TEST(ReadInputFile, SizesOnlyTheTablesThatTheFileNeeds) {
  ReadModel read(kTwoInertias + "OutputAngleBasedResults\n");
  EXPECT_TRUE(read.isOk()) << read.log();
  EXPECT_TRUE(GET_OUTPUTANGLEBASEDRESULTS());
  read.read(kTwoInertias);
  EXPECT_FALSE(GET_OUTPUTANGLEBASEDRESULTS()) << "of the run before";
  EXPECT_EQ(read.model.mass.number(), 2);
  EXPECT_FALSE(read.model.diesel.isAllocated());
  EXPECT_FALSE(read.model.loadCase.isAllocated());
  EXPECT_FALSE(read.model.loadCaseSpeed.isAllocated());
  read.read(kTwoInertias + "LOADCASE\nRPM\n\n100\n");
  EXPECT_FALSE(read.isOk());
  EXPECT_EQ(read.log(),
            " Error occurs when reading loadcase settings data : No load setting defined\n");
}

TEST(VerenwickSolver, AnUnreadableInputFileLeavesOnlyTheLog) {
  const TemporaryDirectory directory;
  const std::string here = directory.path().string();
  std::filesystem::create_directory(directory.path() / "folder");
  for (const char* name : {"missing.txt", "folder"}) {
    EXPECT_EQ(callSolver(here, name, here, 3), 0);
    EXPECT_EQ(readText(directory.path() / "Verenwick.log"),
              " error occurs when accessing the input file" + here + "\\" + name + "\n");
  }
}

TEST(VerenwickSolver, RefusesTextsThatAreTooLongOrNoPlaceForResults) {
  const TemporaryDirectory directory;
  const std::string here = directory.path().string();
  directory.write("input.txt", kTwoInertias);
  EXPECT_EQ(callSolver(here, "input.txt", here + "/no/such/place", 1), 0);
  EXPECT_EQ(callSolver(here, "input.txt", std::string(1001, 'x'), 1), 0);
  // A path that would be cut inside a file name, and one that the platform would cut.
  EXPECT_EQ(callSolver(here, "input.txt", here + std::string(970, '/'), 1), 0);
  EXPECT_EQ(callSolver(here, "input.txt", here + std::string("/\0x", 3), 1), 0);
  EXPECT_EQ(filesIn(directory.path()), std::vector<std::string>{"input.txt"});
  EXPECT_EQ(callSolver(std::string(1001, 'x'), "input.txt", here, 1), 0);
  EXPECT_EQ(readText(directory.path() / "Verenwick.log"),
            " Error: Input file path is missing, longer than 1000 characters or holds a null "
            "character\n");
  // The longest texts: blanks behind a path don't count.
  const std::string closed = here + "\\";
  EXPECT_EQ(callSolver(here, "input.txt", closed + std::string(1000 - closed.size(), ' '), 1), 1);
  EXPECT_EQ(callSolver(here + std::string(1000 - here.size(), ' '), "input.txt", here, 1), 1);
}

}  // namespace
}  // namespace verenwick::test
