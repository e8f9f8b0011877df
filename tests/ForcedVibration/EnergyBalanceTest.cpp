#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <filesystem>
#include <numbers>

#include "ForcedVibration/AllFamiliesPlant.h"
#include "ForcedVibration/LoadCaseReport.h"
#include "ForcedVibration/PowerLoss.h"
#include "ForcedVibration/PreparedModel.h"
#include "ForcedVibration/ShaftResults.h"
#include "Matrices/LoadCaseSetting.h"
#include "Matrices/RowComponents.h"

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

std::vector<Complex> sines(const std::array<double, 4>& amplitudes) {
  std::vector<Complex> torque;
  torque.reserve(amplitudes.size());
  for (const double amplitude : amplitudes) {
    torque.emplace_back(0, -amplitude / 2);
  }
  return torque;
}

/// What the source of a family does to the line, stated from its tables.
std::vector<Point> excitation(const ModelBundle& model, Family family, std::int32_t row) {
  std::vector<Point> points;
  switch (family) {
    case Family::diesel:
      for (std::int32_t c = 1; c <= GET_DIESEL_NCYLINDER(model.diesel, row); ++c) {
        points.push_back({GET_DIESEL_CYLINDERS(model.diesel, row, c),
                          GET_DIESEL_FIRINGANGLEA(model.diesel, row, c) +
                              GET_DIESEL_EXCITATIONPHASE(model.diesel, row),
                          CALCULATE_DIESEL_CYLFOURIERCOEFFICIENTS(model.diesel, row, c)});
      }
      break;
    case Family::propeller: {
      const PROPELLER_RECORD& propeller = model.propeller.at(row);
      const std::vector<Complex> blades = {{0, -propeller.TORQUE * propeller.TORQUEPERCENT1 / 2},
                                           {0, -propeller.TORQUE * propeller.TORQUEPERCENT2 / 2}};
      points.push_back({propeller.PROPELLERNODE,
                        GET_PROPELLER_ISMODELCONSIDERPHASEANGLE(model.propeller)
                            ? propeller.EXCITATIONPHASE
                            : 0.0,
                        propeller.HASICEEXCITATION ? propeller.ICEFOURIERCOEFFICIENT : blades});
      break;
    }
    case Family::generator:
      points.push_back({GET_GENERATOR_GENERATORNODE(model.generator, row), 0.0,
                        sines(model.generator.at(row).GENTORQUEAMP)});
      break;
    case Family::centrifugalPump:
      points.push_back({GET_CENTRIFUGALPUMP_CENTRIFUGALPUMPNODE(model.centrifugalPump, row),
                        GET_CENTRIFUGALPUMP_CENTRIFUGALPUMPPHASEANGLE(model.centrifugalPump, row),
                        sines(model.centrifugalPump.at(row).CENTRIFUGALPUMPTORQUEAMP)});
      break;
    case Family::reciprocatingPump:
      for (std::int32_t c = 1; c <= GET_RECIPROCATINGPUMP_NCYLINDER(model.reciprocatingPump, row);
           ++c) {
        points.push_back(
            {GET_RECIPROCATINGPUMP_CYLINDERS(model.reciprocatingPump, row, c),
             GET_RECIPROCATINGPUMP_DISCHARGEANGLEA(model.reciprocatingPump, row, c) +
                 GET_RECIPROCATINGPUMP_EXCITATIONPHASE(model.reciprocatingPump, row),
             CALCULATE_RECIPROCATINGPUMP_CYLFOURIERCOEFFICIENTS(model.reciprocatingPump, row, c)});
      }
      break;
    case Family::electricMotor:
      points.push_back({GET_ELECTRICMOTOR_ELECTRICMOTORNODE(model.electricMotor, row), 0.0,
                        sines(model.electricMotor.at(row).MOTORTORQUEAMP)});
      break;
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

  Complex deflection(std::int32_t inertia) const {
    return at(Quantity::deflection, static_cast<std::size_t>(inertia));
  }
  Complex velocity(std::int32_t inertia) const {
    return at(Quantity::velocity, static_cast<std::size_t>(inertia));
  }
  Complex at(Quantity quantity, std::size_t inertia) const {
    const std::size_t e = k * static_cast<std::size_t>(model.mass.number()) + inertia - 1;
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
    return 2 * c * std::norm(velocity(i));
  }

  /// Power that a shaft takes out, W; its twist is taken at its own speed.
  double lossInShaft(std::int32_t s) const {
    const SHAFT_RECORD& shaft = model.shaft.at(s);
    const auto [org, des] = shaftEnds(model, s);
    const Complex twist = (deflection(org) / GET_MASS_RPMRATIO(model.mass, org) -
                           deflection(des) / GET_MASS_RPMRATIO(model.mass, des)) *
                          shaft.RPMRATIO;
    double k0 = shaft.STIFFNESSDYNAMIC;
    double c = shaft.ABSDAMPING;
    if (const std::int32_t row = geislingerCouplingOfShaft(model, s); row > 0) {
      k0 = CALCULATE_GEISLINGERCOUPLING_STIFFNESSDYNAMIC(model.geislingerCoupling, row, order);
      c = CALCULATE_GEISLINGERCOUPLING_DAMPING(model.geislingerCoupling, row, shaft.DYNMAGNIFIER,
                                               order);
    } else if (const std::int32_t engine = crankThrowFormulaEngine(model, s); engine > 0) {
      c = CALCULATE_DIESEL_DAMPING_CRANKTHROW(model.diesel, engine, order);
    } else if (const std::int32_t damper = customViscousDamper(model, s); damper > 0) {
      c = CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(model.viscousDamper, damper, order);
    }
    if (shaft.DYNMAGNIFIER != 0) {
      c = k0 / (shaft.DYNMAGNIFIER * w);
    }
    return 2 * c * w * w * std::norm(twist);
  }
};

/// The smallest order above zero.
double firstOrder(std::span<const double> orders) {
  double first = INFINITY;
  for (const double order : orders) {
    first = order > 0 ? std::min(first, order) : first;
  }
  return first;
}

/// Checks the balance of every order of every source in every load case; returns how many orders
/// moved the line.
int expectBalance(ModelBundle& model, const std::string& plant) {
  int orders = 0;
  for (std::int32_t L = 1; L <= model.loadCaseSpeed.number(); ++L) {
    LOADCASESETTING(model, L);
    for (int f = 0; f < results::kFamilies; ++f) {
      const auto family = static_cast<Family>(f);
      FamilyResults results = emptyResults(model, family);
      for (std::int32_t s = 1; s <= results.sources; ++s) {
        const SourceResults source = results.source(s);
        kSourceFamilies[static_cast<std::size_t>(f)].respond(model, s, L, source);
        const auto points = excitation(model, family, s);
        const double frequency = source.OMEGA / firstOrder(source.EXFO);
        for (std::size_t k = 0; k < source.EXFO.size(); ++k) {
          const OrderResponse response{model, source, k, source.EXFO[k],
                                       frequency * source.EXFO[k]};
          double in = 0;
          double scale = 0;
          for (const Point& point : points) {
            const Complex power =
                2.0 * point.torque[k] * std::polar(1.0, -source.EXFO[k] * point.phase) *
                std::conj(response.velocity(GET_MASS_IMASS(model.mass, point.node)));
            in += power.real();
            scale += std::abs(power);
          }
          double out = 0;
          for (std::int32_t i = 1; i <= model.mass.number(); ++i) {
            out += response.lossAtInertia(i);
          }
          for (std::int32_t shaft = 1; shaft <= model.shaft.number(); ++shaft) {
            out += response.lossInShaft(shaft);
          }
          if (source.EXFO[k] > 0) {
            EXPECT_NEAR(in, out, 1e-10 * scale) << plant << ", load case " << L << ", family " << f
                                                << ", source " << s << ", order " << source.EXFO[k];
            orders += in > 0 ? 1 : 0;
          }
        }
      }
    }
  }
  return orders;
}

TEST(EnergyBalance, PlantWithSourcesOfAllFamilies) {
  PreparedModel plant(kAllFamiliesPlant);
  WRITELOADCASESETTING(plant.model);
  EXPECT_EQ(expectBalance(plant.model, "all families"), 3 * (24 + 2 + 3 + 2 + 20 + 2));
}

/// The plant with what depends on the frequency by tables and power laws: engine damping by
/// formula, a ring whose link follows a table.
std::string frequencyDependentPlant() {
  std::string text = kAllFamiliesPlant;
  const auto replace = [&](const std::string& from, const std::string& to) {
    const auto at = text.find(from);
    ASSERT_NE(at, std::string::npos) << from;
    text.replace(at, from.size(), to);
  };
  replace("105.0 91.0 1 0 0", "105.0 91.0 1 0 1");
  replace("60.0 125.0 0.0 0.0\n", "60.0 125.0 0.0 0.0\n2.0 0.3 40.0 0.5\n");
  replace("50000000.0 0.0 80.0 250.0 60.0 0 0", "50000000.0 1.0 0.0 250.0 60.0 1 1");
  replace("7 18 800.0 0", "7 18 800.0 1\n@DIR@/ring.txt");
  return text;
}

TEST(EnergyBalance, DampingByFormulaAndByTable) {
  const TemporaryDirectory data;
  data.write("ring.txt", "Hz damping stiffness\n0.0 900.0 2000.0\n300.0 500.0 4000.0\n");
  PreparedModel plant(frequencyDependentPlant(), data.path().string());
  EXPECT_GT(expectBalance(plant.model, "by formula and table"), 150);
}

TEST(EnergyBalance, EveryExamplePlant) {
  int orders = 0;
  for (const auto& entry : std::filesystem::directory_iterator(VERENWICK_EXAMPLES)) {
    const std::string name = entry.path().filename().string();
    if (std::filesystem::exists(entry.path() / "input.txt")) {
      PreparedModel plant(exampleInput(name));
      orders += expectBalance(plant.model, name);
    }
  }
  EXPECT_GT(orders, 0);
}

/// Loss of every shaft by the twists of all families, the engine's first order index being 0.5.
void expectLoss(ModelBundle& model) {
  WRITELOADCASESETTING(model);
  LOADCASESETTING(model, 2);
  LoadCaseResults results;
  std::vector<double> expected(static_cast<std::size_t>(model.shaft.number()));
  for (int f = 0; f < results::kFamilies; ++f) {
    const auto family = static_cast<Family>(f);
    FamilyResults& arrays = results[static_cast<std::size_t>(f)];
    arrays = emptyResults(model, family);
    const SourceResults source = arrays.source(1);
    kSourceFamilies[static_cast<std::size_t>(f)].respond(model, 1, 2, source);
    SINGLELOADCASESHAFTTORQUE(model, source.EXFO, source.of(Quantity::deflection),
                              source.of(Quantity::torque));
    // The loss takes a motor of constant excitation at its running speed.
    const double frequency = family == Family::electricMotor
                                 ? GET_ELECTRICMOTOR_SPEED(model.electricMotor, 1) * pi / 30
                                 : source.OMEGA / firstOrder(source.EXFO);
    for (std::size_t k = 0; k < source.EXFO.size(); ++k) {
      if (source.EXFO[k] == 0) {
        continue;
      }
      const OrderResponse response{model, source, k, source.EXFO[k], frequency * source.EXFO[k]};
      for (std::int32_t s = 1; s <= model.shaft.number(); ++s) {
        // The twist is taken at the speed of the near end.
        const double toNearEnd = GET_MASS_RPMRATIO(model.mass, shaftEnds(model, s).org) /
                                 GET_SHAFT_RPMRATIO(model.shaft, s);
        expected[static_cast<std::size_t>(s) - 1] +=
            response.lossInShaft(s) * toNearEnd * toNearEnd;
      }
    }
  }
  std::vector<double> loss(expected.size());
  SINGLELOADCASESHAFTPOWERLOSS(model, results, loss);
  for (std::size_t s = 0; s < loss.size(); ++s) {
    EXPECT_NEAR(loss[s], expected[s], 1e-9 * expected[s]) << "shaft row " << s + 1;
  }
}

TEST(EnergyBalance, PowerLossIsWhatTheShaftsTakeOutOfAllSources) {
  PreparedModel plant(kAllFamiliesPlant);
  expectLoss(plant.model);
}

TEST(EnergyBalance, PowerLossTakesFrequencyDependentDampingAtEachOrder) {
  const TemporaryDirectory data;
  data.write("ring.txt", "Hz damping stiffness\n0.0 900.0 2000.0\n300.0 500.0 4000.0\n");
  PreparedModel plant(frequencyDependentPlant(), data.path().string());
  expectLoss(plant.model);
}

}  // namespace
}  // namespace verenwick::test
