#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ComponentTables/PropellerFiles.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using test::ReadModel;

/// One blade, two speed ratios: lines 1 to 4 heading, 5 ratios, 6 to 8, 9 mean, 10 to 13, 14 to 17
/// cosines, 18 to 21, 22 to 25 sines, all with a remark behind.
std::vector<std::string> iceLines() {
  std::vector<std::string> lines(25, "heading 1.0");
  lines[4] = "\t0,6\t0.9 remark";
  lines[8] = "0 1000.0 2000.0 3000.0";
  for (std::size_t o = 1; o <= 4; ++o) {
    const std::string order = std::to_string(o);
    lines[12 + o] = "9" + order + " 1" + order + ".5 2" + order + ".5";
    lines[20 + o] = order + " -1" + order + ".25 -2" + order + ".25";
  }
  return lines;
}

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) {
    text += line + "\n";
  }
  return text;
}

PROPELLER_TABLE propellerOfOneBlade() {
  PROPELLER_TABLE table;
  ALLOCATE_PROPELLER_TABLE(table, 1);
  table.at(1).NBLADE = 1;
  table.at(1).NSPEEDRATIO = 2;
  table.at(1).NLOADCASE = 3;
  return table;
}

std::string failureIn(const std::string& file, std::size_t line) {
  return " Error occurs when reading " + file + " in line " + std::to_string(line) + "\n";
}

TEST(PropellerFiles, IceFileFillsTheTableLineByLine) {
  const ReadModel scratch;
  PROPELLER_TABLE table = propellerOfOneBlade();
  PROPELLER_RECORD& p = table.at(1);
  p.EXCITATIONFILE = scratch.directory().write("ice.txt", joined(iceLines()) + "not read");
  ASSERT_TRUE(LOAD_PROPELLER_EXCITATIONFILE(table, 1));
  EXPECT_EQ(p.SPEEDRATIO[0], 0.6);
  EXPECT_EQ(p.SPEEDRATIO[1], 0.9);
  // The orders that stand with the sines count.
  EXPECT_EQ(p.ICEHARMONICORDER, (std::vector<double>{0, 1, 2, 3, 4}));
  EXPECT_EQ(p.ICECOSINE,
            (std::vector<double>{1000, 2000, 11.5, 21.5, 12.5, 22.5, 13.5, 23.5, 14.5, 24.5}));
  EXPECT_EQ(p.ICESINE, (std::vector<double>{0, 0, -11.25, -21.25, -12.25, -22.25, -13.25, -23.25,
                                            -14.25, -24.25}));
}

TEST(PropellerFiles, IceFileThatBreaksNamesItsLine) {
  struct Case {
    const char* what;
    std::size_t line;         ///< that is broken
    const char* replacement;  ///< null: the file ends before it
  };
  for (const Case& c : {Case{"empty file", 1, nullptr},
                        {"one ratio only", 5, "0.6"},
                        {"ends in the headings", 8, nullptr},
                        {"a word in the mean", 9, "0 1000 much"},
                        {"too few cosines", 17, "94 14.5"},
                        {"blank line in the sines", 23, ""},
                        {"last line missing", 25, nullptr}}) {
    const ReadModel scratch;
    std::vector<std::string> lines = iceLines();
    if (c.replacement == nullptr) {
      lines.resize(c.line - 1);
    } else {
      lines[c.line - 1] = c.replacement;
    }
    PROPELLER_TABLE table = propellerOfOneBlade();
    const std::string file = scratch.directory().write("ice.txt", joined(lines));
    table.at(1).EXCITATIONFILE = "  " + file + "  ";
    EXPECT_FALSE(LOAD_PROPELLER_EXCITATIONFILE(table, 1)) << c.what;
    EXPECT_EQ(scratch.log(), failureIn(file, c.line)) << c.what;
    // What was read so far is a table that can be used.
    CALCULATE_PROPELLER_FOURIERCOEFFICIENT(table, 1);
  }
}

TEST(PropellerFiles, EntrainedWaterFileHasOneLineALoadCase) {
  const ReadModel scratch;
  PROPELLER_TABLE table = propellerOfOneBlade();
  PROPELLER_RECORD& p = table.at(1);
  ASSERT_TRUE(LOAD_PROPELLER_VARIABLEENTRAINEDWATERFILE(table, 1));
  p.VARIABLEENTRAINEDWATERFILE =
      scratch.directory().write("water.txt", "case1 4000,5\n 2\t4100 7\ncase3 4200.0\ncase4 x\n");
  ASSERT_TRUE(LOAD_PROPELLER_VARIABLEENTRAINEDWATERFILE(table, 1));
  EXPECT_EQ(p.VARIABLEENTRAINEDWATERTABLE, (std::vector<double>{4000.5, 4100.0, 4200.0}));

  p.NLOADCASE = 4;
  EXPECT_FALSE(LOAD_PROPELLER_VARIABLEENTRAINEDWATERFILE(table, 1));
  EXPECT_EQ(scratch.log(), failureIn(p.VARIABLEENTRAINEDWATERFILE, 4));
  EXPECT_EQ(p.VARIABLEENTRAINEDWATERTABLE.size(), 3U);

  p.NLOADCASE = 0;
  p.VARIABLEENTRAINEDWATERFILE = scratch.directory().file("missing.txt");
  EXPECT_TRUE(LOAD_PROPELLER_VARIABLEENTRAINEDWATERFILE(table, 1));
  p.NLOADCASE = 1;
  EXPECT_FALSE(LOAD_PROPELLER_VARIABLEENTRAINEDWATERFILE(table, 1));
}

TEST(PropellerFiles, ARunRefusesAModelWithABrokenFile) {
  const std::string plant =
      "INERTIA 1 1 100 0 0\nINERTIA 2 1 50 0 0\nSHAFT 1 1 2 1 1e6 0 0 0 0 0 0\n"
      "PROPELLER 1\n2 1000 120 1 40 10 0\n600 3000 0.8 0.6 1 100 0\n"
      "ARCHER 30 0 0 4 1 0 0\n1\n\"@DIR@/water.txt\"\nPROPELLERICE 1\n1\n@DIR@/ice.txt\n"
      "LOADCASE\nRPM 1\nPROPELLER\n60 125\n120 1000\n";
  std::vector<std::string> tenRatios = iceLines();
  for (std::string& line : tenRatios) {
    line += " 1 2 3 4 5 6 7 8";
  }
  tenRatios[4] = "0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9 1.0";
  for (const auto& [water, status] : {std::pair("a 1\nb 2\n", 1), std::pair("a 1\n", 0)}) {
    test::SolverRun run;
    run.directory().write("water.txt", water);
    run.directory().write("ice.txt", joined(tenRatios));
    run.start(plant, 0);
    EXPECT_EQ(run.status(), status) << run.log();
  }
}

}  // namespace
}  // namespace verenwick
