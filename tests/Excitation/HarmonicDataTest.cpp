#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <string>
#include <vector>

#include "ComponentTables/Global_Diesel.h"
#include "Excitation/HarmonicData.h"
#include "Excitation/HarmonicFileText.h"
#include "RunControl/Constants.h"
#include "RunControl/Global_Parameter.h"
#include "Support/SolverRun.h"

namespace verenwick {
namespace {

using test::HarmonicFileText;

/// Harmonic files and the log in a directory of their own.
class HarmonicDataTest : public testing::Test {
 protected:
  HarmonicDataTest() {
    std::string results = directory_.path().string();
    SETRESULTFILEDIR(results, static_cast<std::int32_t>(results.size()));
  }
  std::string write(const std::string& text) { return directory_.write("engine.har", text); }
  std::string log() const { return test::readText(directory_.path() / "Verenwick.log"); }
  SharedHarmonicData loaded(const std::string& text) {
    HarmonicData data;
    EXPECT_TRUE(loadHarmonicFile(write(text), kEngineHarmonicFile, data)) << log();
    return std::make_shared<HarmonicData>(std::move(data));
  }

  test::TemporaryDirectory directory_;
};

/// A file of tangential pressure curves p(angle) = sum of R_h sin(h angle + F_h).
const HarmonicFileText kCurves{
    .columns = {8.0, 12.0, 20.0},
    .resultant = {{1.0, 1.5, 2.25}, {0.5, 0.75, 1.0}, {0.2, 0.125, 0.25}},
    .phase = {{10.0, 20.0, 40.0}, {-95.0, -90.0, -80.0}, {170.0, 180.0, 200.0}}};

TEST_F(HarmonicDataTest, InterpolatesResultantAndPhaseAndGoesOnBeyondTheColumns) {
  const SharedHarmonicData data = loaded(kCurves.text());
  const auto expectRow = [&](double bar, std::size_t h, double resultant, double phase) {
    // R sin(h angle + F) has the coefficient -i/2 R exp(i F).
    const auto expected =
        std::complex<double>(0, -0.5e6 * resultant) * std::polar(1.0, phase * kPi / 180);
    const auto row = interpolateHarmonics(data, bar * 1e5).at(h);
    EXPECT_LT(std::abs(row - expected), 0.1) << bar << " bar, row " << h + 1;
    EXPECT_EQ(row.real(), roundedToSingle(row.real())) << "seven digits are kept";
    EXPECT_EQ(row.imag(), roundedToSingle(row.imag()));
  };
  for (std::size_t h = 0; h < 3; ++h) {
    for (std::size_t c = 0; c < 3; ++c) {
      expectRow(kCurves.columns[c], h, kCurves.resultant[h][c], kCurves.phase[h][c]);
    }
  }
  expectRow(10, 0, 1.25, 15);
  expectRow(16, 0, 1.875, 30);
  // Beyond the ends the outermost pair goes on, down to a negative resultant.
  expectRow(24, 0, 2.625, 50);
  expectRow(-4, 0, -0.5, -20);
}

TEST_F(HarmonicDataTest, OneColumnMeetsTheNextRowAtZero) {
  const HarmonicFileText file{
      .columns = {10.0}, .resultant = {{1.0}, {0.5}}, .phase = {{90.0}, {90.0}}};
  const auto rows = interpolateHarmonics(loaded(file.text()), 5e5);
  // Row 1 lies between 1.0 at 10 bar and row 2's value at zero, row 2 between 0.5 and nothing.
  EXPECT_NEAR(rows[0].real(), 0.5e6 * 0.75, 0.1);
  EXPECT_NEAR(rows[1].real(), 0.5e6 * 0.25 * std::sin(kPi / 4), 0.1);
}

TEST_F(HarmonicDataTest, TheLargestFileIsReadToItsEnd) {
  HarmonicFileText file{.columns = std::vector<double>(100, 1.0),
                        .resultant = {24, std::vector<double>(100, 1.5)},
                        .phase = {24, std::vector<double>(100, 30.0)}};
  file.columns.back() = 100;
  file.resultant.back().back() = 2.5;
  const SharedHarmonicData data = loaded(file.text());
  EXPECT_EQ(data->resultant.at(2399), 2.5e6);
  EXPECT_NEAR(data->cosine.at(2399), 1.25e6, 2);
  EXPECT_EQ(data->harmonicOrder.at(23), 24);
  EXPECT_EQ(data->columnValues.at(99), 1e7);
}

TEST_F(HarmonicDataTest, ReadsByPositionAndKeywordOnly) {
  // Blanks don't count in the labels, words and remarks may stand anywhere else, a comma is a
  // decimal point, and the last block's column values count.
  const SharedHarmonicData data = loaded(
      "COSINE SINE\n"
      "  O r d e r s :  2\n"
      "N MI P 2\n"
      "a COSINE in line 4 is not looked at\n"
      "free text\n"
      "*** COSINE components ***\n#\n 9 9.5 bar\n#\n#\n1 0.1 0.2 remark\n2 0.3 0.4\n"
      "free text\nSINE\n#\n#\n#\n#\n1 0.5 0.6\n2\t0.7\t0.8\n"
      "RESULTANT\n#\n9 9.5\n#\n#\n1 1,25 1.5\n2 1D0 +2E-1\nfree text\n"
      "PHASE\n#\n10 20\n#\n#\n0.5 90 90\n1.0 180 0\n");
  EXPECT_EQ(data->columnValues, (std::vector{10e5, 20e5}));
  EXPECT_EQ(data->harmonicOrder, (std::vector{0.5, 1.0}));
  EXPECT_EQ(data->sine, (std::vector{0.5e6, 0.6e6, 0.7e6, 0.8e6}));
  EXPECT_EQ(data->resultant, (std::vector{1.25e6, 1.5e6, 1e6, 0.2e6}));
  EXPECT_DOUBLE_EQ(data->phaseAngle[2], kPi);
}

TEST_F(HarmonicDataTest, FailuresHaveTheirWords) {
  const std::string good = kCurves.text();
  const auto line = [this](int number) {
    return "Error occurs when reading " + directory_.file("engine.har") + " in line" +
           std::to_string(number);
  };
  struct Case {
    std::string from, to, words;
    HarmonicFileKind kind = kEngineHarmonicFile;
  };
  for (const Case& c : {
           Case{good, "", line(1)},
           Case{good, "one line\n", line(2)},
           Case{"Orders:3", "Orders:", line(2)},
           Case{"Orders:3", "Ord 3", line(2)},
           Case{"Orders:3", "Orders:3.5", line(2)},
           Case{"Orders:3", "Orders:-1", line(2)},
           Case{"Orders:3", "Orders:25",
                "Number of harmonic orders exceeds the max allowable number"},
           Case{"Orders:3", "Orders:20000000000", line(2)},
           Case{"NMIP3", "NMIP0", line(3)},
           Case{"NMIP3", "NMIP101",
                "Number of mean indicated pressure exceeds the max allowable number"},
           Case{"NMIP3", "SpeedPercentage:101",
                "Number of speed percentage exceeds the max allowable number", kPumpHarmonicFile},
           Case{"8 12 20", "8 12", line(7)},
           Case{"0.173648177667", "nan", line(10)},
           // Without its keyword a block is searched up to the end of the file: line 37 is none.
           Case{"COSINE", "cosine", line(37)},
           Case{"\nSINE", "\nsine", line(37)},
           Case{"RESULTANT", "Resultant", line(37)},
           Case{"PHASE", "Phase", line(37)},
           Case{good.substr(good.rfind("\n3 ")), "\n", line(36)},
       }) {
    std::filesystem::remove(directory_.path() / "Verenwick.log");
    HarmonicData data;
    EXPECT_FALSE(loadHarmonicFile(write(test::replaced(good, c.from, c.to)), c.kind, data));
    EXPECT_EQ(log(), " " + c.words + "\n") << c.from << " " << c.to;
  }
}

TEST_F(HarmonicDataTest, AFileWithoutOrdersIsReadWithAWarning) {
  HarmonicFileText none = kCurves;
  none.resultant.clear();
  none.phase.clear();
  const SharedHarmonicData data = loaded(none.text());
  EXPECT_EQ(log(), " Warning: " + directory_.file("engine.har") +
                       " has no harmonic orders, its pressures excite nothing\n");
  EXPECT_TRUE(interpolateHarmonics(data, 10e5).empty());
}

TEST_F(HarmonicDataTest, OneCallReadsTheFilesOfAllEngines) {
  const std::string good = write(kCurves.text());
  DIESEL_TABLE table;
  ALLOCATE_DIESEL_TABLE(table, 3);
  bool status = false;
  LOADHALDORINFILE(table, status);
  EXPECT_FALSE(status) << "blank names leave it alone";

  table.at(1).NORMALHARMONICFILE = good;
  table.at(2).MISHARMONICFILE = good;
  LOADHALDORINFILE(table, status);
  EXPECT_TRUE(status);
  EXPECT_TRUE(GETMISFIRINGHARMONICDATA(table, 1, 9e5).empty());
  EXPECT_EQ(GETMISFIRINGHARMONICDATA(table, 2, 9e5), GETNORMALFIRINGHARMONICDATA(table, 1, 9e5));
  EXPECT_EQ(GET_DIESEL_NORMAL(table, 1), GET_DIESEL_MISFIRING(table, 2)) << "memory is shared";

  // The first failure ends the walk.
  const std::string missing = directory_.file("none.har");
  table.at(1).MISHARMONICFILE = ' ' + missing + "  ";
  table.at(3).NORMALHARMONICFILE = good;
  LOADHALDORINFILE(table, status);
  EXPECT_FALSE(status);
  EXPECT_EQ(log(), " Error occurs when reading " + missing + " in line1\n");
  EXPECT_EQ(GET_DIESEL_NORMAL(table, 3), nullptr);
}

}  // namespace
}  // namespace verenwick
