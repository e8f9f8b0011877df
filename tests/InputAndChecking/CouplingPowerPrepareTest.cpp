#include <gtest/gtest.h>

#include "InputAndChecking/CouplingPowerPrepare.h"
#include "ShaftLineGraph/BranchPower.h"
#include "Support/ReadModel.h"

namespace verenwick::test {
namespace {

/// A model with the columns of its machines, before and after the preparation.
struct Prepared : ReadModel {
  explicit Prepared(const std::string& text) : ReadModel(text) {
    EXPECT_TRUE(isOk()) << log();
    COUPLINGPOWERPREPARE(model);
  }
  std::int32_t column(ComponentType type, std::int32_t id) const {
    return GET_LOADCASE_ICOMPONENT(model.loadCase, type, id);
  }
  double power(ComponentType type, std::int32_t id, std::int32_t loadCase = 1) const {
    return model.loadCasePower.at(column(type, id), loadCase);
  }
  double passing(std::int32_t coupling) const {
    return power(ComponentType::linearCoupling, coupling);
  }
};

const std::string kPropeller = " 1000 1000 4 1 1 0\n1 2 1 1 1 100 0\nARCHER 30 0 0 4 1 0 0\n0\n";

/// Turbine 1 and propeller 1 on one side of coupling 1, propeller 2 on the other.
const std::string kTwoPropellers =
    "INERTIA 1 1 10 0 0\nINERTIA 2 1 10 0 0\nINERTIA 3 1 10 0 0\n"
    "SHAFT 1 1 2 1 1e6 0 0 0 0 0 0\nSHAFT 2 2 3 1 1e6 0 0 0 0 0 0\n"
    "LINEARCOUPLING 1\n2 1000 1e6\nGASTURBINE 1\n1 1000 1000\n"
    "PROPELLER 1\n2" +
    kPropeller + "PROPELLER 2\n3" + kPropeller;

TEST(CouplingPower, IsWhatPassesTheShaft) {
  struct Case {
    const char* what;
    const char* powers;  ///< of the turbine and the propellers, kW
    double coupling;     ///< W
  };
  for (const Case& c : {Case{"balance", "1000 1000 0", 0.0},
                        {"surplus beyond the need of the other side", "1000 100 300", 900e3},
                        {"consumers on both sides, the larger one", "0 700 300", 700e3},
                        {"sources on both sides, the larger one", "500 0 -800", 800e3}}) {
    const Prepared plant(kTwoPropellers +
                         "LOADCASE\nRPM 1 1 2\nGASTURBINE PROPELLER PROPELLER\n100 " + c.powers);
    EXPECT_EQ(plant.column(ComponentType::linearCoupling, 1), 4) << c.what;
    EXPECT_DOUBLE_EQ(plant.passing(1), c.coupling) << c.what;
  }
}

TEST(CouplingPower, AddsRoomWhereAComponentNamedTwiceHasTakenIt) {
  const Prepared plant(kTwoPropellers +
                       "LINEARCOUPLING 2\n1 1000.0 1.0E6\n"
                       "LOADCASE\nRPM 1 1 1 2\nGASTURBINE GASTURBINE PROPELLER PROPELLER\n"
                       "50 100 999 20 80\n");
  EXPECT_EQ(GET_LOADCASE_NCOMPONENT(plant.model.loadCase), 6);
  EXPECT_EQ(plant.column(ComponentType::linearCoupling, 1), 5);
  EXPECT_EQ(plant.column(ComponentType::linearCoupling, 2), 6);
  EXPECT_EQ(plant.passing(1), 80e3);
  EXPECT_EQ(plant.passing(2), 100e3);
}

TEST(CouplingPower, ColumnsFollowTheOrderOfKindsAndKeepWhatTheFileGave) {
  // The progressive coupling has a column in the file, with any power.
  std::string input =
      replaced(everyKindInput(), "CENTRIFUGALPUMP\n", "CENTRIFUGALPUMP PROGRESSIVECOUPLING\n");
  input =
      replaced(replaced(input, "23        24\n", "23 24 15\n"), "     55.0\n", "     55.0 77.0\n");
  const Prepared plant(input);
  using enum ComponentType;
  EXPECT_EQ(plant.column(progressiveCoupling, 15), 9);
  EXPECT_EQ(plant.column(linearCoupling, 14), 10);
  EXPECT_EQ(plant.column(geislingerCoupling, 16), 11);
  EXPECT_EQ(plant.column(viscousDamper, 11), 12);
  EXPECT_EQ(plant.column(rubberDamper, 12), 13);
  EXPECT_EQ(plant.column(steelSpringDamper, 13), 14);
  EXPECT_EQ(plant.power(progressiveCoupling, 15), 77e3);
  EXPECT_EQ(plant.power(progressiveCoupling, 15, 2), 0.0);
  // All machines together take 3 kW more than they give.
  EXPECT_EQ(plant.power(linearCoupling, 14), 100e3);
  EXPECT_EQ(plant.power(geislingerCoupling, 16, 3), 151e3) << "the propeller takes 154 kW";
  // No machine sits on the free member of a damper.
  EXPECT_EQ(plant.power(viscousDamper, 11), 3e3);
  EXPECT_EQ(plant.power(rubberDamper, 12), 3e3);
  EXPECT_EQ(plant.power(steelSpringDamper, 13), 3e3);
}

// Engines 1 and 2 have columns 1 and 2, the propeller 3, the generator 4.
TEST(CouplingPower, OfAGearedTwinEnginePlantIsThatOfItsMachines) {
  const Prepared plant(exampleInput("twin-engine-gear"));
  const ModelBundle& model = plant.model;
  ASSERT_EQ(model.loadCaseSpeed.number(), 5);
  for (std::int32_t loadCase = 1; loadCase <= 5; ++loadCase) {
    const auto machine = [&](std::int32_t column) {
      return model.loadCasePower.at(column, loadCase);
    };
    EXPECT_NEAR(plant.power(ComponentType::progressiveCoupling, 1, loadCase), machine(1), 1e-6);
    EXPECT_NEAR(plant.power(ComponentType::progressiveCoupling, 2, loadCase), machine(2), 1e-6);
    EXPECT_NEAR(plant.power(ComponentType::geislingerCoupling, 1, loadCase), machine(4), 1e-6);
  }
}

// The cylinders of an engine or pump share its power; a cylinder that counts with the power of
// the pump takes it whole.
TEST(BranchPower, PassesHalfOfATwoCylinderPumpToItsLastCylinder) {
  const ModelBundle model = ReadModel(everyKindInput()).model;
  const BranchPower shares(model, PumpPower::pumpPower);
  const BranchPower whole(model, PumpPower::eachCylinderWhole);
  const ADJNODE graph(model.mass, model.shaft);
  const TwoBranches engine = UNDIRECTEDGRAPH_TWOBRANCH(graph, 3, 4);
  EXPECT_EQ(shares.sum(engine.ORGVISITEDNODE, model.loadCasePower, 1), 50e3);
  EXPECT_EQ(shares.sum(engine.DESVISITEDNODE, model.loadCasePower, 1), -53e3);
  EXPECT_EQ(shares.passing(engine, model.loadCasePower, 1), 50e3);
  const TwoBranches pump = UNDIRECTEDGRAPH_TWOBRANCH(graph, 16, 17);
  EXPECT_EQ(shares.sum(pump.DESVISITEDNODE, model.loadCasePower, 1), -25e3);
  EXPECT_EQ(shares.passing(pump, model.loadCasePower, 1), 22e3);
  EXPECT_EQ(whole.sum(pump.DESVISITEDNODE, model.loadCasePower, 1), -50e3);
}

}  // namespace
}  // namespace verenwick::test
