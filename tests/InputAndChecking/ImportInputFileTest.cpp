#include <gtest/gtest.h>

#include "InputAndChecking/ImportInputFile.h"
#include "RunControl/Global_Parameter.h"
#include "Support/SolverRun.h"
#include "verenwick.h"

namespace verenwick {
namespace {

using test::SolverRun;

constexpr const char* kInertiaFields = "Id, RpmRatio, Inertia, AbsDamping, DynMagnifier";
constexpr const char* kShaftFields =
    "Id, OrgNode, DesNode, RpmRatio, Stiffness, AbsDamping, DynMagnifier, OuterDi, InnerDi, "
    "ShaftTypeFlag, ComponentIdFlag";

const std::string kTwoInertias =
    "INERTIA 1 1.0 100.0 0.0 0.0\nINERTIA 2 1.0 50.0 0.0 0.0\n"
    "SHAFT 1 1 2 1.0 1000000.0 0.0 0.0 200.0 0.0 0 0\n";
const std::string kTurbine = kTwoInertias + "GASTURBINE 1\n1 5000.0 3000.0\n";

std::string lineFailure(const std::string& fields, int line) {
  return " Error occurs when reading \"" + fields + "\" in input file line " +
         std::to_string(line) + "\n";
}

TEST(ReadInputFile, RefusesALineWithItsFieldsAndNumber) {
  struct Case {
    const char* what;
    std::string input;
    std::string log;
  };
  for (const Case& c : {
           Case{"too few numbers", "\ntitle\nINERTIA 1 1.0 100.0 0.0\n",
                lineFailure(kInertiaFields, 3)},
           {"a real for an integer", "INERTIA 1.5 1.0 100.0 0.0 0.0\n",
            lineFailure(kInertiaFields, 1)},
           {"a comment that begins with a keyword", kTwoInertias + "Shaft line of the ship\n",
            lineFailure(kShaftFields, 4)},
           {"not a number", "INERTIA 1 1.0 nan 0.0 0.0\n", lineFailure(kInertiaFields, 1)},
           {"out of range", "INERTIA 1 1.0 1e999 0.0 0.0\n", lineFailure(kInertiaFields, 1)},
           {"short shaft", kTwoInertias + "SHAFT 2 1 2 1.0 1e6 0 0 0 0 0\n",
            lineFailure(kShaftFields, 4)},
           {"load cases without a component", kTwoInertias + "LOADCASE\nRPM\n\n100\n",
            " Error occurs when reading loadcase settings data : No load setting defined\n"},
       }) {
    const SolverRun run(c.input);
    EXPECT_EQ(run.status(), 0) << c.what;
    EXPECT_EQ(run.log(), c.log) << c.what;
    EXPECT_EQ(test::filesIn(run.results()), std::vector<std::string>{"Verenwick.log"}) << c.what;
  }
}

/// The load case table behind a plant with a gas turbine of id 1; LOADCASE stands on line 6.
TEST(ReadInputFile, RefusesALoadCaseTableNamingItsIdRow) {
  const std::string prefix = " Error occurs when reading loadcase settings in input file line ";
  struct Case {
    const char* what;
    std::string table;
    std::string log;
  };
  for (const Case& c : {
           Case{"no rows", "LOADCASE\nRPM 1\nGASTURBINE\n", prefix + "6 : No load case defined\n"},
           {"undefined id", "LOADCASE\nfree text\nRPM 9\nGASTURBINE\n3000 5000\n",
            prefix + "8 (GasTurbine 9 is not defined)\n"},
           {"kind without a section", "LOADCASE\nRPM 1\nDIESEL\n3000 5000\n",
            prefix + "7 (Diesel 1 is not defined)\n"},
           {"id is no integer", "LOADCASE\nRPM one\nGASTURBINE\n3000 5000\n",
            lineFailure("ArcherNumber, FrahmNumber,  KnucklePoint, TorquePercent1, "
                        "TorquePercent2, ExcitationPhase, ConsiderPhaseAngle",
                        7)},
           {"speed is no number", "LOADCASE\nRPM 1\nGASTURBINE\nfast 5000\n",
            lineFailure("LoadCase_Speed", 7)},
           {"power is no number", "LOADCASE\nRPM 1\nGASTURBINE\n3000 5000\n2500 much\n",
            lineFailure("Id, SubId, LoadCase_Power(iLoadCase,:)", 7)},
       }) {
    const SolverRun run(kTurbine + c.table);
    EXPECT_EQ(run.status(), 0) << c.what;
    EXPECT_EQ(run.log(), c.log) << c.what;
    EXPECT_EQ(test::filesIn(run.results()), std::vector<std::string>{"Verenwick.log"}) << c.what;
  }
}

/// Reads a model without running it.
class ReadModel : public testing::Test {
 protected:
  bool read(const std::string& text) {
    std::string path = directory_.path().string();
    SETRESULTFILEDIR(path, static_cast<std::int32_t>(path.size()));
    return READINPUTFILE(directory_.write("input.txt", text), model_);
  }
  std::string log() const { return test::readText(directory_.path() / "Verenwick.log"); }

  test::TemporaryDirectory directory_;
  ModelBundle model_;
};

TEST_F(ReadModel, TakesTheFieldsInTheirUnits) {
  ASSERT_TRUE(
      read("A plant\n\n"
           "inertia\t7 2,0 12,5 0.1 3.0 trailing remark\n"
           "Inertia 8 1.0 1D+1 0 0\n"
           "SHAFT 4 7 8 2.0 1e6 5.0 50.0 200.0 100.0 1 3\n"
           "SHAFT 5 7 8 1.0 1e6 5.0 50.0 200.0 100.0 1 0\n"
           "OutputAngleBasedResults\n"))
      << log();
  EXPECT_EQ(log(), "");
  EXPECT_TRUE(GET_OUTPUTANGLEBASEDRESULTS());
  ASSERT_EQ(model_.mass.number(), 2);
  EXPECT_EQ(GET_MASS_ID(model_.mass, 1), 7);
  const MASS_RECORD& inertia = model_.mass.at(1);
  EXPECT_EQ(inertia.RPMRATIO, 2.0);
  EXPECT_EQ(inertia.INERTIA, 12.5);
  EXPECT_EQ(inertia.ABSDAMPING, 0.1);
  EXPECT_EQ(inertia.DYNMAGNIFIER, 3.0);
  EXPECT_EQ(inertia.COMPONENTID, 7);
  EXPECT_EQ(model_.mass.at(2).INERTIA, 10.0);
  ASSERT_EQ(model_.shaft.number(), 2);
  const SHAFT_RECORD& crankThrow = model_.shaft.at(1);
  EXPECT_EQ(crankThrow.ORGNODE, 7);
  EXPECT_EQ(crankThrow.DESNODE, 8);
  EXPECT_EQ(crankThrow.STIFFNESS, 1e6);
  EXPECT_EQ(crankThrow.ABSDAMPING, 5.0);
  EXPECT_EQ(crankThrow.DYNMAGNIFIER, 50.0);
  EXPECT_EQ(crankThrow.OUTERDI, 0.2);
  EXPECT_EQ(crankThrow.INNERDI, 0.1);
  EXPECT_EQ(crankThrow.SHAFTTYPE, ShaftType::crankThrow);
  EXPECT_EQ(crankThrow.COMPONENTTYPE, ComponentType::diesel);
  EXPECT_EQ(crankThrow.COMPONENTID, 3);
  EXPECT_EQ(model_.shaft.at(2).SHAFTTYPE, ShaftType::plain);
  EXPECT_EQ(model_.shaft.at(2).COMPONENTID, 5);
  EXPECT_FALSE(model_.loadCase.isAllocated());
  EXPECT_FALSE(model_.loadCaseSpeed.isAllocated());
  ASSERT_TRUE(read(kTwoInertias));
  EXPECT_FALSE(GET_OUTPUTANGLEBASEDRESULTS());
}

TEST_F(ReadModel, LoadCaseTableKeepsItsQuirks) {
  // The blank line ends the table but the row behind it still counts; the column of an unknown
  // kind is dropped and the powers move up; powers are kilowatts.
  ASSERT_TRUE(read(kTurbine + "LOADCASE\nRPM 5 1 1\nWINDMILL gasturbine GASTURBINE\n"
                              "3000 5000,5 1 2\n\n2500 3000\n"))
      << log();
  EXPECT_EQ(log(),
            " Error occurs when reading loadcase settings in input file line 7\n"
            " Warning: Load case column 5 has the unknown kind WINDMILL, it is dropped and the "
            "powers move up by one column\n"
            " Warning: GasTurbine 1 has more than one load case column, the first one counts\n"
            " Warning: Load case table ends at a blank line, load case 2 and those behind it have "
            "speed and power 0\n");
  ASSERT_EQ(model_.loadCase.number(), 1);
  EXPECT_EQ(GET_LOADCASE_ICOMPONENT(model_.loadCase, ComponentType::gasTurbine, 1), 1);
  ASSERT_EQ(model_.loadCaseSpeed.number(), 2);
  EXPECT_EQ(model_.loadCaseSpeed.at(1), 3000.0);
  EXPECT_EQ(model_.loadCasePower.at(1, 1), 5000500.0);
  EXPECT_EQ(model_.loadCaseSpeed.at(2), 0.0);
  EXPECT_EQ(model_.loadCasePower.at(1, 2), 0.0);
}

TEST_F(ReadModel, AFileThatEndsBeforeTheIdRowHasNoColumns) {
  ASSERT_TRUE(read(kTurbine + "LOADCASE\na\nb\nc\n")) << log();
  EXPECT_EQ(GET_LOADCASE_COMPONENTNUMBER(model_.loadCase), 0);
  ASSERT_EQ(model_.loadCaseSpeed.number(), 1);
  EXPECT_EQ(model_.loadCaseSpeed.at(1), 0.0);
}

/// A damper whose file name is the line behind it.
const std::string kCustomDamper = kTwoInertias + "VISCOUSDAMPER 1\n1 2 50.0 1\n";

TEST_F(ReadModel, KeywordsInsideASectionAreCountedAndLeaveRecordsAtTheirDefaults) {
  // Counted as a section, read as a file name.
  ASSERT_TRUE(read(kCustomDamper + "inertia damping.txt\n")) << log();
  EXPECT_EQ(model_.viscousDamper.at(1).CUSTOMDAMPINGFILE, "inertia damping.txt");
  ASSERT_EQ(model_.mass.number(), 3);
  EXPECT_EQ(GET_MASS_ID(model_.mass, 3), 0);
  EXPECT_EQ(model_.mass.at(3).RPMRATIO, 1.0);
  EXPECT_EQ(model_.mass.at(3).INERTIA, 0.0);
}

TEST_F(ReadModel, ASectionThatWasNotCountedFailsAtItsKeywordLine) {
  // The first pass takes the file name for the begin of the load case table and ends there.
  const std::string text = kCustomDamper + "LoadCase damping.txt\n";
  EXPECT_TRUE(read(text)) << log();
  EXPECT_FALSE(read(text + "INERTIA 3 1.0 100.0 0.0 0.0\n"));
  EXPECT_EQ(log(), lineFailure(kInertiaFields, 7));
}

TEST(VerenwickSolver, AnUnreadableInputFileLeavesOnlyTheLog) {
  const test::TemporaryDirectory directory;
  const std::string here = directory.path().string();
  EXPECT_EQ(test::callSolver(here, "missing.txt", here, 3), 0);
  EXPECT_EQ(test::readText(directory.path() / "Verenwick.log"),
            " error occurs when accessing the input file" + here + "\\missing.txt\n");
  std::filesystem::create_directory(directory.path() / "folder");
  EXPECT_EQ(test::callSolver(here, "folder", here, 3), 0);
}

TEST(VerenwickSolver, TwoRunsWriteToTheirOwnDirectories) {
  const SolverRun first(kTwoInertias);
  const auto before = test::filesIn(first.results());
  const SolverRun second("INERTIA 1 1.0 nonsense\n");
  EXPECT_EQ(first.status(), 1);
  EXPECT_EQ(second.status(), 0);
  EXPECT_EQ(test::filesIn(first.results()), before);
  EXPECT_EQ(test::filesIn(second.results()), std::vector<std::string>{"Verenwick.log"});
  EXPECT_EQ(first.log(), "");
}

TEST(VerenwickSolver, TextsThatAreTooLongAreRefused) {
  const test::TemporaryDirectory directory;
  const std::string here = directory.path().string();
  directory.write("input.txt", kTwoInertias);
  EXPECT_EQ(test::callSolver(std::string(1001, 'x'), "input.txt", here, 1), 0);
  EXPECT_EQ(test::readText(directory.path() / "Verenwick.log"),
            " Error: Input file path is missing, longer than 1000 characters or holds a null "
            "character\n");
  EXPECT_EQ(test::callSolver(here, "input.txt", std::string(1001, 'x'), 1), 0);
  // A path that would be cut inside a file name, and one that the platform would cut.
  EXPECT_EQ(test::callSolver(here, "input.txt", here + std::string(970, '/'), 1), 0);
  EXPECT_EQ(test::callSolver(here, "input.txt", here + std::string("/\0x", 3), 1), 0);
  // Blanks behind a backslash don't count.
  const std::string closed = here + "\\";
  EXPECT_EQ(test::callSolver(here, "input.txt", closed + std::string(1000 - closed.size(), ' '), 1),
            1);
  // The longest text: blanks behind a path don't count.
  EXPECT_EQ(test::callSolver(here + std::string(1000 - here.size(), ' '), "input.txt", here, 1), 1);
}

TEST(VerenwickSolver, AnUnwritableResultDirectoryIsRefused) {
  const test::TemporaryDirectory directory;
  const std::string here = directory.path().string();
  directory.write("input.txt", kTwoInertias);
  EXPECT_EQ(test::callSolver(here, "input.txt", here + "/no/such/place", 1), 0);
  EXPECT_EQ(test::filesIn(directory.path()), std::vector<std::string>{"input.txt"});
}

TEST(VerenwickSolver, OnlyTheLowestByteOfACharacterCounts) {
  const test::TemporaryDirectory directory;
  directory.write("input.txt", kTwoInertias);
  const std::string here = directory.path().string();
  std::vector<std::int32_t> dir(here.begin(), here.end());
  dir[0] += 0x7F00;
  dir[1] -= 256;
  const std::string name = "input.txt";
  const std::vector<std::int32_t> file(name.begin(), name.end());
  const auto dirLength = static_cast<std::int32_t>(dir.size());
  const auto fileLength = static_cast<std::int32_t>(file.size());
  const std::int32_t mode = 1;
  std::int32_t status = -1;
  VERENWICKSOLVER(dir.data(), &dirLength, file.data(), &fileLength, dir.data(), &dirLength, &status,
                  &mode);
  EXPECT_EQ(status, 1);
  EXPECT_TRUE(std::filesystem::exists(directory.path() / "NaturalFrequency.bin"));
}

}  // namespace
}  // namespace verenwick
