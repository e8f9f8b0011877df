#include <gtest/gtest.h>

#include "InputAndChecking/CouplingPowerPrepare.h"
#include "ShaftLineGraph/BranchPower.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using test::ReadModel;

std::string inertias(int count) {
  std::string text;
  for (int i = 1; i <= count; ++i) {
    text += "INERTIA " + std::to_string(i) + " 1.0 10.0 0.0 0.0\n";
  }
  return text;
}

std::string shaft(int id, int org, int des) {
  return "SHAFT " + std::to_string(id) + " " + std::to_string(org) + " " + std::to_string(des) +
         " 1.0 1.0E6 0.0 0.0 0.0 0.0 0 0\n";
}

std::string linearCoupling(int id, int shaftId) {
  return "LINEARCOUPLING " + std::to_string(id) + "\n" + std::to_string(shaftId) +
         " 1000.0 1.0E6\n";
}

std::string turbine(int id, int node) {
  return "GASTURBINE " + std::to_string(id) + "\n" + std::to_string(node) + " 1000.0 1000.0\n";
}

std::string propeller(int id, int node) {
  return "PROPELLER " + std::to_string(id) + "\n" + std::to_string(node) +
         " 1000.0 1000.0 4 1.0 1.0 0\n1 2 1 1 1 100 0\nARCHER 30 0 0 4 1 0 0\n0\n";
}

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
};

TEST(CouplingPower, IsWhatPassesTheShaft) {
  // Turbine and first propeller on one side of the coupling, second propeller on the other.
  struct Case {
    const char* what;
    double turbine, propeller1, propeller2, coupling;  // kW, kW, kW, W
  };
  for (const Case& c : {Case{"balance", 1000, 1000, 0, 0},
                        {"surplus on the side of the source", 1000, 700, 300, 300e3},
                        {"surplus beyond the need of the other side", 1000, 100, 300, 900e3},
                        {"consumers on both sides, the larger one", 0, 700, 300, 700e3},
                        {"sources on both sides, the larger one", 500, 0, -800, 800e3},
                        {"nothing runs", 0, 0, 0, 0}}) {
    const Prepared plant(inertias(3) + shaft(1, 1, 2) + shaft(2, 2, 3) + linearCoupling(1, 2) +
                         turbine(1, 1) + propeller(1, 2) + propeller(2, 3) +
                         "LOADCASE\nRPM 1 1 2\nGASTURBINE PROPELLER PROPELLER\n100 " +
                         std::to_string(c.turbine) + " " + std::to_string(c.propeller1) + " " +
                         std::to_string(c.propeller2) + "\n");
    EXPECT_EQ(plant.column(ComponentType::linearCoupling, 1), 4) << c.what;
    EXPECT_DOUBLE_EQ(plant.power(ComponentType::linearCoupling, 1), c.coupling) << c.what;
  }
}

TEST(CouplingPower, ColumnsFollowTheOrderOfKindsAndKeepWhatTheFileGave) {
  std::string text = inertias(10);
  for (int i = 1; i < 7; ++i) {
    text += shaft(i, i, i + 1);
  }
  // Dampers hang on the first inertia, which the turbine makes its own again.
  text += shaft(7, 1, 8) + shaft(8, 1, 9) + shaft(9, 1, 10) +
          "STEELSPRINGDAMPER 3\n10 1 5.0\nRUBBERDAMPER 3\n9 1 5.0\nVISCOUSDAMPER 3\n1 8 5.0 0\n"
          "GEISLINGERCOUPLING 5\n5 1.0 1 1 1\nGENERALDAMPING\n"
          "PROGRESSIVECOUPLING 5\n3 1.0 1 2 3 4 5\n" +
          linearCoupling(8, 1) + linearCoupling(2, 2) + linearCoupling(9, 4) + turbine(1, 1) +
          propeller(1, 7);
  const Prepared plant(text +
                       "LOADCASE\nRPM 1 2 1\nGASTURBINE LINEARCOUPLING PROPELLER\n"
                       "50 100 77 100\n100 230 88 200\n");
  struct Added {
    ComponentType type;
    std::int32_t id;
    double power;  ///< of the second load case, W
  };
  // Behind the columns of the file; the surplus of the second load case passes to the dampers too.
  const Added added[] = {
      {ComponentType::linearCoupling, 8, 230e3},      {ComponentType::linearCoupling, 9, 230e3},
      {ComponentType::progressiveCoupling, 5, 230e3}, {ComponentType::geislingerCoupling, 5, 230e3},
      {ComponentType::viscousDamper, 3, 30e3},        {ComponentType::rubberDamper, 3, 30e3},
      {ComponentType::steelSpringDamper, 3, 30e3}};
  std::int32_t column = 3;
  for (const Added& component : added) {
    EXPECT_EQ(plant.column(component.type, component.id), ++column);
    EXPECT_EQ(plant.power(component.type, component.id, 2), component.power) << column;
  }
  EXPECT_EQ(GET_LOADCASE_COMPONENTNUMBER(plant.model.loadCase), column);
  EXPECT_EQ(plant.power(ComponentType::progressiveCoupling, 5, 1), 100e3);
  EXPECT_EQ(plant.power(ComponentType::viscousDamper, 3, 1), 0.0);
  EXPECT_EQ(plant.power(ComponentType::linearCoupling, 2, 1), 77e3);
  EXPECT_EQ(plant.power(ComponentType::linearCoupling, 2, 2), 88e3);
}

TEST(CouplingPower, AddsRoomWhereAComponentNamedTwiceHasTakenIt) {
  const std::string text = inertias(4) + shaft(1, 1, 2) + shaft(2, 2, 3) + shaft(3, 3, 4) +
                           turbine(1, 1) + propeller(1, 4) + linearCoupling(1, 1) +
                           linearCoupling(2, 2) + linearCoupling(3, 3);
  const Prepared plant(text +
                       "LOADCASE\nRPM 1 1 1\nGASTURBINE GASTURBINE PROPELLER\n"
                       "50 100 999 100\n");
  EXPECT_EQ(GET_LOADCASE_NCOMPONENT(plant.model.loadCase), 6);
  for (const std::int32_t id : {1, 2, 3}) {
    EXPECT_EQ(plant.column(ComponentType::linearCoupling, id), 3 + id);
    EXPECT_EQ(plant.power(ComponentType::linearCoupling, id), 100e3);
  }
}

// The geared twin-engine plant of the examples: engine 1 and 2 have columns 1 and 2, the propeller
// 3, the generator 4.
TEST(CouplingPower, OfAGearedTwinEnginePlantIsThatOfItsMachines) {
  const Prepared plant(test::readText(VERENWICK_EXAMPLES "/twin-engine-gear/input.txt"));
  const ModelBundle& model = plant.model;
  const ADJNODE graph(model.mass, model.shaft);
  const BranchPower machines(model, PumpPower::pumpPower);
  ASSERT_EQ(model.loadCaseSpeed.number(), 5);
  for (std::int32_t loadCase = 1; loadCase <= 5; ++loadCase) {
    const auto machine = [&](std::int32_t column) {
      return model.loadCasePower.at(column, loadCase);
    };
    EXPECT_NEAR(plant.power(ComponentType::progressiveCoupling, 1, loadCase), machine(1), 1e-6);
    EXPECT_NEAR(plant.power(ComponentType::progressiveCoupling, 2, loadCase), machine(2), 1e-6);
    EXPECT_NEAR(plant.power(ComponentType::geislingerCoupling, 1, loadCase), machine(4), 1e-6);
    for (std::int32_t s = 1; s <= model.shaft.number(); ++s) {
      const TwoBranches sides = UNDIRECTEDGRAPH_TWOBRANCH(
          graph, GET_MASS_IMASS(model.mass, GET_SHAFT_ORGNODE(model.shaft, s)),
          GET_MASS_IMASS(model.mass, GET_SHAFT_DESNODE(model.shaft, s)));
      EXPECT_NEAR(machines.sum(sides.ORGVISITEDNODE, model.loadCasePower, loadCase) +
                      machines.sum(sides.DESVISITEDNODE, model.loadCasePower, loadCase),
                  0.0, 1e-6)
          << s;
    }
  }
}

/// A two-cylinder and a one-cylinder engine drive a propeller and a pump of two cylinders.
TEST(BranchPower, BalancesEveryCutOfATree) {
  ReadModel read;
  ModelBundle& m = read.model;
  ALLOCATE_MASS_TABLE(m.mass, 6);
  ALLOCATE_SHAFT_TABLE(m.shaft, 5);
  ALLOCATE_DIESEL_TABLE(m.diesel, 2);
  ALLOCATE_RECIPROCATINGPUMP_TABLE(m.reciprocatingPump, 1);
  ALLOCATE_LOADCASE_TABLE(m.loadCase, 5);
  m.loadCaseSpeed.allocate(1);
  m.loadCasePower.allocate(1);
  struct Owner {
    ComponentType type;
    std::int32_t id;
  };
  const Owner owners[] = {{ComponentType::diesel, 1},
                          {ComponentType::diesel, 1},
                          {ComponentType::diesel, 2},
                          {ComponentType::propeller, 1},
                          {ComponentType::reciprocatingPump, 1},
                          {ComponentType::reciprocatingPump, 1}};
  for (std::int32_t i = 1; i <= 6; ++i) {
    SET_MASS_ID(m.mass, i, i);
    SET_MASS_COMPONENTTYPE(m.mass, i, owners[i - 1].type);
    SET_MASS_COMPONENTID(m.mass, i, owners[i - 1].id);
  }
  // 1 - 2 - 4 - 5 - 6 with 3 on 4.
  const std::pair<std::int32_t, std::int32_t> shafts[] = {{1, 2}, {2, 4}, {4, 3}, {4, 5}, {5, 6}};
  for (std::int32_t s = 1; s <= 5; ++s) {
    SET_SHAFT_ID(m.shaft, s, s);
    SET_SHAFT_ORGNODE(m.shaft, s, shafts[s - 1].first);
    SET_SHAFT_DESNODE(m.shaft, s, shafts[s - 1].second);
  }
  SET_DIESEL_ID(m.diesel, 1, 1);
  SET_DIESEL_ID(m.diesel, 2, 2);
  SET_DIESEL_NCYLINDER(m.diesel, 1, 2);
  SET_DIESEL_NCYLINDER(m.diesel, 2, 1);
  SET_RECIPROCATINGPUMP_ID(m.reciprocatingPump, 1, 1);
  SET_RECIPROCATINGPUMP_NCYLINDER(m.reciprocatingPump, 1, 2);
  const std::pair<Owner, double> columns[] = {
      {owners[3], 900.0}, {owners[0], 600.0}, {owners[2], 500.0}, {owners[4], 200.0}};
  for (std::int32_t c = 1; c <= 4; ++c) {
    SET_LOADCASE_COMPONENTTYPE(m.loadCase, c, columns[c - 1].first.type);
    SET_LOADCASE_COMPONENTID(m.loadCase, c, columns[c - 1].first.id);
    m.loadCasePower.set(c, 1, columns[c - 1].second);
  }
  const ADJNODE graph(m.mass, m.shaft);
  const BranchPower shares(m, PumpPower::pumpPower);
  const BranchPower whole(m, PumpPower::eachCylinderWhole);
  const double passing[] = {300.0, 600.0, 500.0, 200.0, 100.0};
  for (std::int32_t s = 1; s <= 5; ++s) {
    const auto [org, des] = shafts[s - 1];
    const TwoBranches sides = UNDIRECTEDGRAPH_TWOBRANCH(graph, org, des);
    const double orgPower = shares.sum(sides.ORGVISITEDNODE, m.loadCasePower, 1);
    EXPECT_DOUBLE_EQ(orgPower + shares.sum(sides.DESVISITEDNODE, m.loadCasePower, 1), 0.0) << s;
    EXPECT_DOUBLE_EQ(shares.passing(sides, m.loadCasePower, 1), passing[s - 1]) << s;
  }
  // A pump cylinder that counts with the power of the pump: 200 W pass to the last one.
  const TwoBranches last = UNDIRECTEDGRAPH_TWOBRANCH(graph, 5, 6);
  EXPECT_DOUBLE_EQ(whole.sum(last.DESVISITEDNODE, m.loadCasePower, 1), -200.0);
  EXPECT_DOUBLE_EQ(whole.sum(last.ORGVISITEDNODE, m.loadCasePower, 1), 0.0);
  EXPECT_DOUBLE_EQ(whole.passing(last, m.loadCasePower, 1), 200.0);
}

}  // namespace
}  // namespace verenwick
