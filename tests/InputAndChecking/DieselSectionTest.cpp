#include <gtest/gtest.h>

#include <sstream>

#include "Excitation/HarmonicFileText.h"
#include "InputAndChecking/DataFiles.h"
#include "InputAndChecking/ImportInputFile.h"
#include "RunControl/Constants.h"
#include "RunControl/Global_Parameter.h"
#include "Support/SolverRun.h"

namespace verenwick {
namespace {

/// A V engine with two rows on inertias 11 and 12, its lines from the keyword line on.
using Lines = std::vector<std::string>;
Lines vEngine() {
  return {"diesel 7 MainEngineOfTheFerryPort",
          "1000.0 100.0 4 2 90.0 1 765.0 1 1.25 remark",
          "11 12",
          "0.0 180.0",
          "45.0 225.0",
          "1 2",
          "5 3",
          "100.0 50.0",
          "60.0 40.0",
          "320.0 400.0 0.24 105.0 92.5 1 7 1",
          "200.0 160.0 1.36 1.28 15.5 4.5 50.0",
          "45.0 0.75 -5.0 60.0 125.0 140.0 220.0",
          "120.0 0.5 30.0 -1.5"};
}

const std::string kInertias =
    "INERTIA 11 2.5 1.0 0.0 0.0\nINERTIA 12 1.0 1.0 0.0 0.0\nSHAFT 1 11 12 1.0 1e6 0 0 0 0 1 7\n";
const std::string kLoadCases = "LOADCASE\nRPM 7\nDIESEL\n100 1000\n50 125\n";

/// The two inertias with an engine.
std::string plant(const Lines& engine, const std::string& loadCases = "") {
  std::string text = kInertias;
  for (const std::string& line : engine) {
    text.append(line).append("\n");
  }
  return text.append(loadCases);
}

/// Reads input texts into a model.
class DieselSection : public testing::Test {
 protected:
  DieselSection() {
    std::string results = directory_.path().string();
    SETRESULTFILEDIR(results, static_cast<std::int32_t>(results.size()));
    directory_.write("Genset.txt", "");
  }
  bool read(const std::string& text) {
    return READINPUTFILE(directory_.write("input.txt", text), model_);
  }
  DIESEL_RECORD& diesel() { return model_.diesel.at(1); }
  std::string log() const { return test::readText(directory_.path() / "Verenwick.log"); }

  test::TemporaryDirectory directory_;
  ModelBundle model_;
};

TEST_F(DieselSection, EveryValueGoesToItsFieldInSiUnits) {
  ASSERT_TRUE(read(plant(vEngine(), kLoadCases))) << log();
  const DIESEL_RECORD& d = diesel();
  EXPECT_EQ(GET_DIESEL_ID(model_.diesel, 1), 7);
  EXPECT_EQ(d.NAME, "MainEngineOfTheFerry");
  EXPECT_EQ(d.MCRPOWER, 1e6);
  EXPECT_EQ(d.MCRSPEED, 100.0);
  EXPECT_DOUBLE_EQ(d.MCRTORQUE, 1000000.0 / (kPi * 100.0 / 30.0));
  EXPECT_EQ(d.NSTROKE, 4);
  EXPECT_EQ(d.NCYLINDER, 2);
  EXPECT_DOUBLE_EQ(d.EXCITATIONPHASE, kPi / 2);
  EXPECT_TRUE(d.ISVENGINE);
  EXPECT_EQ(d.VANGLE, 45.0);
  EXPECT_TRUE(d.ISGENSET);
  EXPECT_EQ(d.MIPLIMIT, 1.25);
  EXPECT_EQ(d.NLOADCASE, 2);
  EXPECT_EQ(d.RPMRATIO, 2.5) << "of the first cylinder";
  EXPECT_EQ(d.CYLINDERS[1], 12);
  EXPECT_DOUBLE_EQ(d.FIRINGANGLEA[1], kPi);
  EXPECT_DOUBLE_EQ(d.FIRINGANGLEB[0], kPi / 4);
  EXPECT_EQ(d.FIRINGSTATUSA[1], onlyCompression);
  EXPECT_EQ(d.FIRINGSTATUSB[0], partialFiring);
  EXPECT_EQ(d.FIRINGPERCENTA[1], 50.0);
  EXPECT_EQ(d.FIRINGPERCENTB[0], 60.0);
  EXPECT_TRUE(d.HASPARTIALFIRING);
  EXPECT_EQ(d.BORE, 0.32);
  EXPECT_EQ(d.STROKE, 0.4);
  EXPECT_EQ(d.CONRODRATIO, 0.24);
  EXPECT_EQ(d.RECIPMASS, 105.0);
  EXPECT_EQ(d.ME, 0.925);
  EXPECT_TRUE(d.ISTHEORETICALPRESURE);
  EXPECT_EQ(d.VEEFIRINGTYPE, 2);
  EXPECT_EQ(d.PMAX, 2e7);
  EXPECT_EQ(d.PCOMP, 1.6e7);
  EXPECT_EQ(d.COMPEXP, 1.36);
  EXPECT_EQ(d.EXPAEXP, 1.28);
  EXPECT_EQ(d.COMPRATIO, 15.5);
  EXPECT_EQ(d.PCHARGEAIR, 4.5e5);
  EXPECT_EQ(d.TCHARGEAIR, 50.0);
  EXPECT_EQ(d.TE, 0.45);
  EXPECT_EQ(d.FORMFACTOR, 0.75);
  EXPECT_EQ(d.ANGLEIGNITION, -5.0);
  EXPECT_EQ(d.ANGLEENDOFCOMB, 60.0);
  EXPECT_EQ(d.ANGLEEXHAUSTSTART, 125.0);
  EXPECT_EQ(d.ANGLEINLETSTART, 140.0);
  EXPECT_EQ(d.ANGLEINLETCLOSE, 220.0);
  EXPECT_TRUE(d.ISFORMULADAMPING);
  EXPECT_EQ(d.CYLABSDAMPING, 120.0);
  EXPECT_EQ(d.EXPCYLABSDAMPING, 0.5);
  EXPECT_EQ(d.CRANKRELDAMPING, 30.0);
  EXPECT_EQ(d.EXPCRANKRELDAMPING, -1.5);
  for (std::int32_t i = 1; i <= 2; ++i) {
    EXPECT_EQ(GET_MASS_MASSTYPE(model_.mass, i), MassType::dieselCylinder);
    EXPECT_EQ(GET_MASS_COMPONENTTYPE(model_.mass, i), ComponentType::diesel);
    EXPECT_EQ(GET_MASS_COMPONENTID(model_.mass, i), 7);
  }
}

TEST_F(DieselSection, TheBankAngleLiesWithinOnePeriod) {
  struct Case {
    std::string strokes, isVengine, angle;
    double stored;
  };
  for (const Case& c :
       {Case{"4", "1", "765.0", 45.0}, Case{"4", "1", "720", 0.0},
        Case{"4", "1", "-30.1", 720 - 30.1}, Case{"2", "1", "-30.0", 330.0},
        Case{"2", "1", "360.0", 0.0}, Case{"3", "1", "400.0", 400.0}, Case{"4", "1", "-1e-30", 0.0},
        Case{"4", "1", "1e300", std::fmod(1e300, 720.0)}, Case{"4", "0", "-30.0", -30.0},
        Case{"4", "2", "1000.5", 280.5}}) {
    Lines lines = vEngine();
    lines[1] = "1000 100 " + c.strokes + " 2 0 " + c.isVengine + " " + c.angle + " 0 1.25";
    ASSERT_TRUE(read(plant(lines))) << log();
    EXPECT_EQ(diesel().VANGLE, c.stored) << c.angle;
  }
}

TEST_F(DieselSection, BankBIsKeptForAFlagOfExactlyOne) {
  for (const std::string flag : {"0", "2", "-1"}) {
    Lines lines = vEngine();
    lines[1] = std::string("1000 100 4 2 0 ").append(flag).append(" 45 2 1.25");
    ASSERT_TRUE(read(plant(lines, kLoadCases))) << log();
    EXPECT_EQ(diesel().ISVENGINE, flag != "0");
    EXPECT_TRUE(diesel().ISGENSET);
    EXPECT_FALSE(model_.loadCaseGenset.isAllocated()) << "the genset file is for a flag of one";
    EXPECT_EQ(diesel().FIRINGANGLEB[0], 0.0);
    EXPECT_EQ(diesel().FIRINGSTATUSB[0], 0);
    EXPECT_EQ(diesel().FIRINGPERCENTB[0], 0.0);
    EXPECT_FALSE(diesel().HASPARTIALFIRING);
  }
}

TEST_F(DieselSection, HarmonicFilesAreNamedByWholeLines) {
  Lines lines = vEngine();
  lines[9] = "320.0 400.0 0.24 105.0 92.5 0 1 0";
  lines[10] = "C:\\data files\\normal.har";
  lines[11] = "";
  lines.pop_back();
  ASSERT_TRUE(read(plant(lines))) << log();
  EXPECT_EQ(diesel().NORMALHARMONICFILE, "C:\\data files\\normal.har");
  EXPECT_EQ(diesel().MISHARMONICFILE, "");
  EXPECT_EQ(diesel().VEEFIRINGTYPE, 1);
  EXPECT_EQ(diesel().PMAX, 0.0);
}

TEST_F(DieselSection, AnUnknownCylinderIsStoredAndMarksNothing) {
  Lines lines = vEngine();
  lines[2] = "99 12";
  ASSERT_TRUE(read(plant(lines))) << log();
  EXPECT_EQ(diesel().CYLINDERS[0], 99);
  EXPECT_EQ(GET_MASS_MASSTYPE(model_.mass, 1), MassType::plain);
  EXPECT_EQ(GET_MASS_MASSTYPE(model_.mass, 2), MassType::dieselCylinder);
}

TEST_F(DieselSection, CylinderCountsOutsideTheLimits) {
  // None: the lists are empty, their lines still stand there.
  for (const std::string count : {"0", "-5"}) {
    Lines lines = vEngine();
    lines[1] = "1000 100 4 " + count + " 0 1 45 0 1.25";
    ASSERT_TRUE(read(plant(lines))) << log();
    EXPECT_EQ(diesel().CYLINDERS[0], 0);
    EXPECT_EQ(diesel().BORE, 0.32);
  }
  const auto list = [](std::size_t count) {
    std::string line;
    for (std::size_t i = 0; i < count; ++i) {
      line += "1 ";
    }
    return line;
  };
  for (const std::size_t count : {20U, 21U}) {
    Lines lines = vEngine();
    lines[1] = "1000 100 4 " + std::to_string(count) + " 0 1 45 0 1.25";
    for (std::size_t line = 2; line <= 8; ++line) {
      lines[line] = list(count);
    }
    EXPECT_EQ(read(plant(lines)), count == 20) << count;
  }
  EXPECT_EQ(log(), " Error occurs when reading \"Cylinders\" in input file line 6\n");
}

TEST_F(DieselSection, ALineThatCannotBeReadNamesItsFields) {
  struct Case {
    std::size_t line, tokens;
    std::string fields;
  };
  // A line cut to one token less than it needs.
  for (const Case& c : {
           Case{0, 2, "Id"},
           Case{1, 8, "McrPower, McrSpeed, nStroke, nCylinder, ExcitationPhase, isVengine, Vangle"},
           Case{2, 1, "Cylinders"},
           Case{3, 1, "FiringAngleA"},
           Case{4, 1, "FiringAngleB"},
           Case{5, 1, "FiringStatusA"},
           Case{6, 1, "FiringStatusB"},
           Case{7, 1, "FiringStatusA"},
           Case{8, 1, "FiringStatusB"},
           Case{9, 7,
                "Bore, Stroke, ConrodRatio, RecipMass, Me, isTheoreticalPresure, VeeFiringType, "
                "isFormulaDamping"},
           Case{10, 6, "PMax, PComp, CompExp, ExpaExp, CompRatio, PChargeAir, TChargeAir"},
           Case{11, 6,
                "Te, FormFactor, AngleIgnition, AngleEndOfComb, AngleExhaustStart, "
                "AngleInletStart, AngleInletClose"},
           Case{12, 3, "CylAbsDamping, ExpCylAbsDamping, CrankRelDamping, ExpCrankRelDamping"},
       }) {
    Lines lines = vEngine();
    std::istringstream words(lines[c.line]);
    std::string cut;
    for (std::size_t i = 0; i < c.tokens; ++i) {
      std::string word;
      words >> word;
      cut += word + ' ';
    }
    lines[c.line] = cut;
    const std::string message = " Error occurs when reading \"" + c.fields +
                                "\" in input file line " + std::to_string(4 + c.line) + '\n';
    EXPECT_FALSE(read(plant(lines)));
    EXPECT_EQ(log(), message);
    // The file may also end there.
    lines.resize(c.line);
    if (!lines.empty()) {
      EXPECT_FALSE(read(plant(lines)));
      EXPECT_EQ(log(), message);
    }
  }
}

TEST_F(DieselSection, DataFilesAreReadForEnginesWithoutAPressureModel) {
  test::HarmonicFileText file;
  file.columns = {5.0, 20.0};
  file.resultant = {{1.0, 2.0}};
  file.phase = {{0.0, 0.0}};
  const std::string good = directory_.write("normal.har", file.text());
  Lines lines = vEngine();
  lines[9] = "320.0 400.0 0.24 105.0 92.5 0 1 0";
  lines[10] = good;
  lines[11] = directory_.file("none.har");
  lines.pop_back();
  ASSERT_TRUE(read(plant(lines))) << log();
  EXPECT_FALSE(loadDataFiles(model_));
  EXPECT_EQ(log(), " Error occurs when reading " + directory_.file("none.har") + " in line1\n");
  EXPECT_EQ(GETNORMALFIRINGHARMONICDATA(model_.diesel, 1, 5e5).size(), 1U);
  diesel().ISTHEORETICALPRESURE = true;
  EXPECT_TRUE(loadDataFiles(model_)) << "no engine needs the files";
  ModelBundle empty;
  EXPECT_TRUE(loadDataFiles(empty));
}

TEST_F(DieselSection, ABrokenDataFileEndsTheRun) {
  const test::SolverRun run(kInertias +
                            "DIESEL 7 E\n1000 100 4 2 0 0 0 0 1.2\n11 12\n0 0\n0 0\n1 1\n0 0\n"
                            "100 100\n100 100\n320 400 0.24 105 92 0 0 0\n@DIR@/none.har\n\n");
  EXPECT_EQ(run.status(), 0);
  EXPECT_NE(run.log().find("none.har in line1"), std::string::npos) << run.log();
  EXPECT_FALSE(std::filesystem::exists(run.results() / "NaturalFrequency.bin"));
}

}  // namespace
}  // namespace verenwick
