#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

#include "ForcedVibration/EveryKind.h"
#include "ForcedVibration/LoadCaseReport.h"
#include "ForcedVibration/PowerLoss.h"
#include "ForcedVibration/ShaftResults.h"
#include "ForcedVibration/SourceResponse.h"
#include "InputAndChecking/CouplingPowerPrepare.h"
#include "InputAndChecking/DataChecking.h"
#include "Matrices/LoadCaseSetting.h"
#include "Matrices/ShaftAtOrder.h"
#include "ShaftLineGraph/GraphTheory.h"
#include "Support/ReadModel.h"

/// What the sources put into a line is what its damping takes out.
namespace verenwick::test {
namespace {

using Complex = std::complex<double>;
using std::numbers::pi;

/// One point of excitation: where, and with what torque, N m, against the orders in their phase.
struct Point {
  std::int32_t node;
  double phase;
  std::vector<Complex> torque;
};

/// What an engine or a propeller in ice does to the line, stated from its tables; none for the
/// sources whose torques have closed formulas.
std::vector<Point> excitation(const ModelBundle& model, Family family, std::int32_t row) {
  std::vector<Point> points;
  if (family == Family::propeller && hasIceExcitation(model.propeller)) {
    const PROPELLER_RECORD& propeller = model.propeller.at(row);
    const bool considersPhase = GET_PROPELLER_ISMODELCONSIDERPHASEANGLE(model.propeller);
    points = {
        {propeller.PROPELLERNODE, considersPhase ? propeller.EXCITATIONPHASE : 0.0,
         propeller.HASICEEXCITATION ? propeller.ICEFOURIERCOEFFICIENT : std::vector<Complex>(16)}};
  }
  for (std::int32_t c = 1; family == Family::diesel && c <= model.diesel.at(row).NCYLINDER; ++c) {
    points.push_back({GET_DIESEL_CYLINDERS(model.diesel, row, c),
                      GET_DIESEL_FIRINGANGLEA(model.diesel, row, c) +
                          GET_DIESEL_EXCITATIONPHASE(model.diesel, row),
                      CALCULATE_DIESEL_CYLFOURIERCOEFFICIENTS(model.diesel, row, c)});
  }
  return points;
}

/// The response to one source at one order.
struct OrderResponse {
  const ModelBundle& model;
  SourceResults source;
  std::size_t k;  ///< order index from 0
  double order;
  double w;  ///< circular frequency, rad/s

  Complex at(Quantity quantity, std::int32_t inertia) const {
    const std::size_t e = k * asSize(model.mass.number()) + asSize(inertia) - 1;
    return {source.of(quantity).RE[e], source.of(quantity).IM[e]};
  }

  /// Power into ground at an inertia, W.
  double lossAtInertia(std::int32_t i) const {
    const MASS_RECORD& inertia = model.mass.at(i);
    double c = inertia.DYNMAGNIFIER == 0 ? inertia.ABSDAMPING
                                         : w * inertia.INERTIAEFFECTIVE / inertia.DYNMAGNIFIER;
    if (const std::int32_t engine = cylinderFormulaEngine(model, i); engine > 0) {
      c = CALCULATE_DIESEL_DAMPING_CYLINDER(model.diesel, engine, order);
    }
    return 2 * c * std::norm(at(Quantity::velocity, i));
  }

  /// Power that a shaft takes out, W; its twist is taken at its own speed.
  double lossInShaft(std::int32_t s) const {
    const SHAFT_RECORD& shaft = model.shaft.at(s);
    const auto [org, des] = shaftEnds(model, s);
    const Complex twist = (at(Quantity::deflection, org) / GET_MASS_RPMRATIO(model.mass, org) -
                           at(Quantity::deflection, des) / GET_MASS_RPMRATIO(model.mass, des)) *
                          shaft.RPMRATIO;
    const ShaftAtOrder atOrder(model, s);
    const double c = shaft.DYNMAGNIFIER != 0 ? atOrder.stiffness(order) / (shaft.DYNMAGNIFIER * w)
                                             : atOrder.damping(order);
    return 2 * c * w * w * std::norm(twist);
  }

  /// The same as the solver states it: with the twist at the speed of the near end, and a motor of
  /// constant excitation at its running speed.
  double statedLoss(std::int32_t s, Family family) const {
    const double toNearEnd =
        GET_MASS_RPMRATIO(model.mass, shaftEnds(model, s).org) / GET_SHAFT_RPMRATIO(model.shaft, s);
    OrderResponse stated = *this;
    if (family == Family::electricMotor) {
      stated.w = order * GET_ELECTRICMOTOR_SPEED(model.electricMotor, 1) * pi / 30;
    }
    return stated.lossInShaft(s) * toNearEnd * toNearEnd;
  }
};

/// Checks every order of every source in every load case, and what is stated as the loss of every
/// shaft where no two sources of a family excite it; returns how many orders moved the line.
int expectBalance(ReadModel& plant) {
  ModelBundle& model = plant.model;
  int orders = 0;
  EXPECT_TRUE(plant.isOk() && DATACHECKING(model, 2)) << plant.log();
  COUPLINGPOWERPREPARE(model);
  WRITELOADCASESETTING(model);
  for (std::int32_t L = 1; L <= model.loadCaseSpeed.number(); ++L) {
    LOADCASESETTING(model, L);
    LoadCaseResults results;
    bool isEachAlone = true;
    std::vector<double> losses(asSize(model.shaft.number()));
    for (int f = 0; f < results::kFamilies; ++f) {
      const SourceFamily& sources = kSourceFamilies[asSize(f)];
      FamilyResults& family = results[asSize(f)];
      family.points = {model.mass.number(), model.shaft.number()};
      family.sources = sources.sources(model);
      family.orders = sources.orders(model);
      family.clear();
      for (std::int32_t s = 1; s <= family.sources; ++s) {
        const SourceResults source = family.source(s);
        if (!sources.isRunning(model, s)) {
          continue;
        }
        sources.respond(model, s, L, source);
        SINGLELOADCASESHAFTTORQUE(model, source.EXFO, source.of(Quantity::deflection),
                                  source.of(Quantity::torque));
        const auto points = excitation(model, static_cast<Family>(f), s);
        const auto isMoving = [](double value) { return value > 0; };
        isEachAlone = isEachAlone && (s == 1 || std::ranges::none_of(
                                                    source.of(Quantity::deflection).AMP, isMoving));
        double first = INFINITY;
        for (const double order : source.EXFO) {
          first = order > 0 ? std::min(first, order) : first;
        }
        const double frequency = source.OMEGA / first;
        for (std::size_t k = 0; k < source.EXFO.size(); ++k) {
          const double order = source.EXFO[k];
          if (order == 0) {
            continue;
          }
          const OrderResponse response{model, source, k, order, frequency * order};
          double in = 0;
          double scale = 0;
          for (const Point& point : points) {
            const std::int32_t inertia = GET_MASS_IMASS(model.mass, point.node);
            const Complex power = 2.0 * point.torque[k] * std::polar(1.0, -order * point.phase) *
                                  std::conj(response.at(Quantity::velocity, inertia));
            in += power.real();
            scale += std::abs(power);
          }
          orders += in > 0 ? 1 : 0;
          double out = 0;
          for (std::int32_t i = 1; i <= model.mass.number(); ++i) {
            out += response.lossAtInertia(i);
          }
          for (std::int32_t i = 1; i <= model.shaft.number(); ++i) {
            out += response.lossInShaft(i);
            losses[asSize(i) - 1] += response.statedLoss(i, static_cast<Family>(f));
          }
          if (!points.empty()) {
            EXPECT_NEAR(in, out, 1e-10 * scale)
                << "load case " << L << ", family " << f << ", source " << s << ", order " << order;
          }
        }
      }
    }
    std::vector<double> stated(losses.size());
    SINGLELOADCASESHAFTPOWERLOSS(model, results, stated);
    for (std::size_t i = 0; i < losses.size() && isEachAlone; ++i) {
      EXPECT_NEAR(stated[i], losses[i], 1e-9 * losses[i]) << "load case " << L << ", shaft " << i;
    }
  }
  return orders;
}

TEST(EnergyBalance, OfEveryKindOfComponentAndOfTheExamplePlants) {
  ReadModel everyKind;
  everyKind.read(everyKindPlant(everyKind.directory()));
  EXPECT_EQ(expectBalance(everyKind), 2 * (24 + 16));
  // A two-stroke engine, a V engine, ice, a rubber damper, and twin engines on a gear with spring
  // couplings.
  for (const char* name :
       {"two-stroke-ship", "v-genset", "ice-ship", "fire-pump", "twin-engine-gear"}) {
    SCOPED_TRACE(name);
    ReadModel plant;
    plant.readExample(name);
    EXPECT_GT(expectBalance(plant), 0);
  }
}

}  // namespace
}  // namespace verenwick::test
