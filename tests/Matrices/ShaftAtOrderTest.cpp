#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "Matrices/MassStffnessAndDampingMatrix.h"
#include "Matrices/ShaftAtOrder.h"
#include "Support/ReadModel.h"

namespace verenwick {
namespace {

using test::ReadModel;

constexpr double kTurn = 2 * 3.141592653589793 / 60;  ///< rad/s of 1 rpm

/// All values of a shaft at order 2 of a source that turns at 120 rpm.
struct ShaftValues {
  double stiffness;
  double damping;
  DampingElement element;
  double torqueDamping;
  bool isLossless;
  double lossStiffness;
  double lossDamping;
};

/// What differs from kind to kind stands side by side here: the shaft of the kind under test is
/// number 1, with stiffness 1000, damping 7 and magnifier 5 unless a row changes it.
TEST(ShaftAtOrder, TakesTheValuesOfItsKindInMatricesDampingTorqueAndLoss) {
  const std::string line =
      "INERTIA 1 1 10 0 0\nINERTIA 2 1 10 0 0\nSHAFT 1 1 2 1 1000 7 5 0 0 0 0\n";
  const std::string engine =
      "INERTIA 1 1 10 0 0\nINERTIA 2 1 10 0 0\nSHAFT 1 1 2 1 1000 7 5 0 0 1 3\n"
      "DIESEL 3 Engine\n100 100 4 2 0 0 0 0 1\n1 2\n0 0\n0 0\n1 1\n1 1\n100 100\n100 100\n"
      "100 100 0.2 1 90 0 0 1\n\n\n2 0.5 3 2\n";
  const std::string geislinger =
      "GEISLINGERCOUPLING 1\n1 1000 1000 100 40\nGEISLINGERDAMPING\nWITHPRESSURIZED\n";
  const auto asRead = [](ModelBundle&) {};
  const auto withoutMagnifier = [](ModelBundle& model) { model.shaft.at(1).DYNMAGNIFIER = 0; };
  const auto customTable = [](ModelBundle& model) {
    VISCOUSDAMPER_RECORD& damper = model.viscousDamper.at(1);
    damper.ISCUSTOMDAMPING = damper.ISCUSTOMSTIFFNESS = true;
    damper.SPEED = 60;  // order 2 is 2 Hz
    damper.FREQUENCIES = {1, 3};
    damper.CUSTOMDAMPING = {10, 30};
    damper.CUSTOMSTIFFNESS = {100, 300};
  };
  const double w = 120 * kTurn;
  const double r = 2 * w / 100;  // relative frequency of the Geislinger coupling
  const double k = 1000 * (1 + 0.37 * r);
  const double c = (1.1 * r + 0.02) * k / (2 * w);
  struct Case {
    const char* name;
    std::string input;
    std::function<void(ModelBundle&)> change;
    bool goesWithOrder;
    ShaftValues is;
  };
  using enum DampingElement;
  const double formula = 3 * std::pow(2 * 50, 2);
  for (const Case& it : {
           Case{"plain", line, asRead, false, {1000, 7, none, 0, false, 1000, 7}},
           {"plain, by magnifier alone",
            line,
            [](ModelBundle& model) { model.shaft.at(1).ABSDAMPING = 0; },
            false,
            {1000, 0, none, 0, false, 1000, 1000 / (5 * w * 2)}},
           {"crank throw with formula",
            engine,
            [](ModelBundle& model) { model.diesel.at(1).SPEED = 50; },
            true,
            {1000, formula, none, 0, false, 1000, formula}},
           {"crank throw without",
            engine,
            [](ModelBundle& model) { model.diesel.at(1).ISFORMULADAMPING = false; },
            false,
            {1000, 7, none, 0, false, 1000, 7}},
           {"crank throw with a coefficient of 0",
            engine,
            [](ModelBundle& model) {
              model.diesel.at(1).CRANKRELDAMPING = 0;
              model.shaft.at(1).DYNMAGNIFIER = 0;
            },
            true,
            {1000, 0, none, 0, true, 1000, INFINITY}},
           {"Geislinger", line + geislinger, asRead, true, {k, c, coupling, c, false, k, c}},
           {"Geislinger that the report left without damping",
            line + geislinger,
            withoutMagnifier,
            true,
            {k, c, coupling, c, true, k, c}},
           {"linear",
            line + "LINEARCOUPLING 1\n1 1 300\n",
            [](ModelBundle& model) { model.linearCoupling.at(1).SPEED = 60; },
            false,
            {300, 7, coupling, 300 / (5 * 60 * kTurn * 2), false, 300, 7}},
           {"progressive",
            line + "PROGRESSIVECOUPLING 1\n1 400 100 200 300 400 500\n",
            [](ModelBundle& model) {
              model.progressiveCoupling.at(1).SPEED = 60;
              model.progressiveCoupling.at(1).TORQUE = 150;
            },
            false,
            {250, 7, coupling, 250 / (5 * 60 * kTurn * 2), false, 250, 7}},
           {"viscous",
            line + "VISCOUSDAMPER 1\n1 2 7 0\n",
            asRead,
            false,
            {1000, 7, damper, 7, false, 1000, 7}},
           {"viscous by table",
            line + "VISCOUSDAMPER 1\n1 2 7 0\n",
            customTable,
            true,
            {200, 20, damper, 20, false, 1000, 20}},
           {"viscous by table without damping",
            line + "VISCOUSDAMPER 1\n1 2 7 0\n",
            [&](ModelBundle& model) {
              customTable(model);
              model.viscousDamper.at(1).CUSTOMDAMPING = {0, 0};
            },
            true,
            {200, 0, damper, 0, false, 1000, 1000 / (5 * w * 2)}},
           {"rubber",
            line + "RUBBERDAMPER 1\n1 2 7\n",
            [](ModelBundle& model) {
              model.rubberDamper.at(1).SPEED = 60;
              model.rubberDamper.at(1).STIFFNESS = 800;
            },
            false,
            {1000, 7, damper, 800 / (5 * 60 * kTurn * 2), false, 1000, 7}},
           {"steel spring",
            line + "STEELSPRINGDAMPER 1\n1 2 7\n",
            asRead,
            false,
            {1000, 7, damper, 7, false, 1000, 7}},
       }) {
    SCOPED_TRACE(it.name);
    ReadModel read(it.input);
    ASSERT_TRUE(read.isOk()) << read.log();
    SHAFT_RECORD& record = read.model.shaft.at(1);
    record.STIFFNESS = 1000;
    record.ABSDAMPING = 7;
    record.DYNMAGNIFIER = 5;
    it.change(read.model);
    setExcitationSpeed(read.model, 120);
    MASSANDSHAFTTABLEPREPARATION(Vibration::forced, read.model, 1);
    const ShaftAtOrder shaft(read.model, 1);
    const auto near = [](double value, double wanted) {
      return value == wanted || std::abs(value - wanted) < 1e-6 * std::abs(wanted);
    };
    EXPECT_PRED2(near, shaft.stiffness(2), it.is.stiffness);
    EXPECT_PRED2(near, shaft.damping(2), it.is.damping);
    EXPECT_EQ(shaft.dampingElement(), it.is.element);
    EXPECT_PRED2(near, shaft.torqueDamping(shaft.dampingElement(), 2), it.is.torqueDamping);
    EXPECT_EQ(shaft.torqueDamping(shaft.dampingElement(), 0), 0);
    EXPECT_EQ(shaft.isLossless(), it.is.isLossless);
    EXPECT_PRED2(near, shaft.lossStiffness(2), it.is.lossStiffness);
    EXPECT_PRED2(near, shaft.lossDamping(w, 2), it.is.lossDamping);
    EXPECT_EQ(dependsOnOrder(read.model), it.goesWithOrder);
  }
}

}  // namespace
}  // namespace verenwick
