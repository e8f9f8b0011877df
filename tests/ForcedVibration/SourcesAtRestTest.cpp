#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>

#include "ForcedVibration/EveryKind.h"

/// Load cases in which a source stands still or has no orders: what the others do to the line must
/// still be summed, and as large as their own files say.
namespace verenwick::test {
namespace {

using std::numbers::pi;

constexpr std::size_t kInertias = 5;

/// Two machines hang on the middle of three inertias in a row, one of them by a gear.
const std::string kLine =
    "INERTIA 1 1.0 10.0 1.0 0.0\nINERTIA 2 1.0 4.1 3.0 0.0\nINERTIA 3 1.0 7.3 2.0 0.0\n"
    "INERTIA 4 2.0 0.7 0.1 0.0\nINERTIA 5 1.0 2.3 0.4 0.0\n"
    "SHAFT 1 1 2 1.0 91234.5 30.0 0.0 80.0 0.0 0 0\nSHAFT 2 2 3 1.0 70123.4 30.0 0.0 80.0 0.0 0 0\n"
    "SHAFT 3 2 4 1.0 60123.4 10.0 0.0 80.0 0.0 0 0\nSHAFT 4 2 5 1.0 50123.4 10.0 0.0 80.0 0.0 0 "
    "0\n";

/// A machine with the orders 2 and 5, or without any.
std::string machine(const std::string& kind, int id, int node, int orders, double constantRpm = 0) {
  const std::string rated = std::to_string(node) + " 1000 1500 ";
  std::string middle;
  if (kind == "ELECTRICMOTOR") {
    middle = (constantRpm > 0 ? "1 " : "0 ") + std::to_string(constantRpm) + ' ';
  }
  return kind + ' ' + std::to_string(id) + '\n' + rated + middle + std::to_string(orders) +
         (kind == "CENTRIFUGALPUMP" ? " 0\n" : "\n") + "2 5 0 0\n10 4 0 0\n";
}

const std::string kEngine =
    "DIESEL 1 Engine\n100 1500 4 2 0 0 0 0 50\n3 5\n0 180\n0 0\n1 1\n1 1\n100 100\n100 100\n"
    "100 120 0.25 2 90 1 0 0\n120 80 1.3 1.3 14 2 320\n40 1 -10 60 120 300 220\n";

std::string propeller(int id, int node) {
  return "PROPELLER " + std::to_string(id) + '\n' + std::to_string(node) +
         " 200 1000 4 10 0 0\n400 2500 0.8 0.6 1 100 0\nMANUAL 0 0 0 5 2 15 1\n0\n";
}

/// The first orders of the sources of a family in a load case, rad/s, and how many orders each has.
struct Ran {
  std::string family;
  std::size_t orders;
  std::vector<double> firstOrders;
};

/// Half the range of the waveform that the records of a family make over a turn of the slowest
/// source, summed over the families; at most as far from the truth as a step is wide.
double totalOf(const SolverRun& run, const std::string& quantity, const std::vector<Ran>& families,
               std::size_t points, std::size_t point, std::size_t L) {
  constexpr int kSteps = 7200;
  double slowest = 0;
  for (const Ran& ran : families) {
    for (const double first : ran.firstOrders) {
      const double speed = std::fabs(first);
      slowest = speed > 0 && (slowest == 0 || speed < slowest) ? speed : slowest;
    }
  }
  double total = 0;
  for (const auto& [family, orders, firstOrders] : families) {
    const auto records = run.records(family + quantity);
    std::vector<double> waveform(kSteps);
    for (std::size_t s = 0; s < firstOrders.size(); ++s) {
      for (std::size_t k = 0; k < orders; ++k) {
        const std::size_t at = (((L * firstOrders.size() + s) * orders + k) * points + point) * 4;
        const std::complex<double> value(records.at(at + 2), records.at(at + 3));
        const double turns = static_cast<double>(k + 1) * firstOrders[s] / slowest;
        for (std::size_t m = 0; m < kSteps; ++m) {
          const double angle = 2 * pi * turns * static_cast<double>(m) / kSteps;
          waveform[m] += 2 * (value * std::polar(1.0, angle)).real();
        }
      }
    }
    const auto [least, most] = std::minmax_element(waveform.begin(), waveform.end());
    total += (*most - *least) / 2;
  }
  return total;
}

struct Case {
  const char* what;
  std::string components;
  std::string loadCases;
  std::vector<Ran> ran;  ///< in the last load case
  std::int32_t mode = 2;
};

constexpr double kRpm = pi / 30;

TEST(SourcesAtRest, TotalsAreThoseOfTheSourcesThatRan) {
  for (const Case& c : {
           Case{"a generator without orders beside one with orders",
                "GASTURBINE 1\n1 1000 1500\n" + machine("GENERATOR", 1, 3, 0) +
                    machine("GENERATOR", 2, 4, 2),
                "RPM 1 1 2\nGASTURBINE GENERATOR GENERATOR\n600 90 40 50\n700 90 40 50\n",
                {{"Generator", 4, {0, 2 * 2 * 700 * kRpm}}}},
           {"a motor without orders driving pumps",
            machine("ELECTRICMOTOR", 1, 1, 0) + machine("CENTRIFUGALPUMP", 1, 3, 2) +
                machine("CENTRIFUGALPUMP", 2, 5, 0),
            "RPM 1 1 2\nELECTRICMOTOR CENTRIFUGALPUMP CENTRIFUGALPUMP\n600 90 40 50\n",
            {{"CentrifugalPump", 4, {2 * 600 * kRpm, 0}}}},
           {"a converter at its own frequency while the line stands still",
            machine("ELECTRICMOTOR", 1, 1, 2, 300) + kEngine,
            "RPM 1 1\nELECTRICMOTOR DIESEL\n600 90 40\n0 0 0\n",
            {{"ElectricMotor", 4, {2 * 300 * kRpm}}, {"Diesel", 24, {0}}}},
           {"an engine without a column beside a motor",
            machine("ELECTRICMOTOR", 1, 1, 2) + kEngine,
            "RPM 1\nELECTRICMOTOR\n600 90\n",
            {{"ElectricMotor", 4, {2 * 600 * kRpm}}, {"Diesel", 24, {0}}},
            7},
           {"a propeller without a column beside one, and generators of which one has orders",
            propeller(1, 3) + propeller(2, 4) + machine("GENERATOR", 1, 1, 0) +
                machine("GENERATOR", 2, 5, 2),
            "RPM 2 1 2\nPROPELLER GENERATOR GENERATOR\n600 90 10 10\n",
            {{"Propeller", 2, {0, 4 * 2 * 600 * kRpm}}, {"Generator", 4, {0, 2 * 600 * kRpm}}},
            7},
           {"a line that turns backwards, a motor on it slower than the generator",
            machine("ELECTRICMOTOR", 1, 1, 2) + machine("GENERATOR", 1, 4, 2),
            "RPM 1 1\nELECTRICMOTOR GENERATOR\n-600 90 40\n",
            {{"ElectricMotor", 4, {-2 * 600 * kRpm}}, {"Generator", 4, {-2 * 2 * 600 * kRpm}}}},
       }) {
    const SolverRun run(kLine + c.components + "LOADCASE\n" + c.loadCases, c.mode);
    ASSERT_EQ(run.status(), 1) << c.what << run.log();
    ASSERT_EQ(run.log().find("**"), std::string::npos) << c.what << run.log();
    for (const auto& [total, own, points] :
         {std::tuple{"SynthesisDeflection.bin", "Deflection.bin", kInertias},
          {"SynthesisAcceleration.bin", "Accele.bin", kInertias},
          {"SynthesisTorque.bin", "Torque.bin", kInertias - 1}}) {
      const auto totals = run.records(total);
      const std::size_t L = totals.size() / points - 1;
      for (std::size_t p = 0; p < points; ++p) {
        const double expected = totalOf(run, own, c.ran, points, p, L);
        EXPECT_GT(expected, 0) << c.what << total << p;
        EXPECT_NEAR(totals.at(L * points + p), expected, 5e-3 * expected) << c.what << total << p;
      }
    }
  }
}

TEST(SourcesAtRest, WhatOnePropellerCausesInIceIsKnownWhileTheOtherHasNoColumn) {
  const std::string ice = "PROPELLERICE 2\n0\n@DIR@/ice.txt\n";
  SolverRun run;
  std::filesystem::copy(kEveryKind / "ice.txt", run.directory().path());
  run.start(
      kLine + propeller(1, 3) + propeller(2, 4) + ice + "LOADCASE\nRPM 2\nPROPELLER\n300 90\n", 7);
  ASSERT_EQ(run.status(), 1) << run.log();
  const std::vector<Ran> ran = {{"Propeller", 16, {0, 2 * 300 * kRpm}}};
  for (const auto& [total, own, points] :
       {std::tuple{"SynPropIceVelocity.bin", "Velocity.bin", kInertias},
        {"SynPropIceTorque.bin", "Torque.bin", kInertias - 1}}) {
    for (std::size_t p = 0; p < points; ++p) {
      const double expected = totalOf(run, own, ran, points, p, 0);
      EXPECT_GT(expected, 0) << total << p;
      EXPECT_NEAR(run.records(total).at(p), expected, 5e-3 * expected) << total << p;
    }
  }
}

}  // namespace
}  // namespace verenwick::test
