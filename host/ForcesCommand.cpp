#include <fmt/format.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "host/Commands.h"
#include "host/EngineData.h"
#include "host/OptionChecks.h"
#include "host/Units.h"
#include "verenwick.h"

namespace verenwick::host {
namespace {

struct ForcesOptions {
  explicit ForcesOptions(CLI::App& command) : engine(command) {}
  EngineData engine;
  std::optional<double> recipMass;
  double rotatingMass = 0;
  double referencePressure = 1;  ///< bar
};

/// Harmonics of the tangential force, gas and mass, N.
void printHarmonics(const ForcesOptions& options, std::vector<double> pressure) {
  const EngineData& engine = options.engine;
  const double omega = engine[kSpeed] * kPi / 30;
  const double area = engine[kBore] * engine[kBore] * kPi / 4;
  const double inertia = *options.recipMass * omega * omega * engine[kStroke] / 2;

  for (double& p : pressure) p -= options.referencePressure * kBar;
  const std::vector<Harmonic> gas = tangentialHarmonics(engine, pressure);
  const std::int32_t points = engine.points();
  const std::int32_t coefficients = engine.harmonics() + 1;
  const std::vector<double> phi = engine.crankAngles(0);
  std::vector<double> mass(2 * (gas.size() + 1));
  OSCILLATINGMASSFOURIERCOEFFICIENTS(&points, &coefficients, mass.data(), phi.data(),
                                     &engine[kConrodRatio]);
  fmt::print("order,gas sine [N],gas cosine [N],mass sine [N],mass cosine [N]\n");
  for (std::size_t k = 1; k <= gas.size(); ++k) {
    // The inertia force is the negative of the force that accelerates the mass.
    printRow({engine.order(static_cast<std::int32_t>(k)), gas[k - 1].sine * area,
              gas[k - 1].cosine * area, 2 * mass[2 * k + 1] * inertia, -2 * mass[2 * k] * inertia});
  }
}

void printForces(ForcesOptions& options) {
  EngineData& engine = options.engine;
  engine.complete();
  if (!options.recipMass)
    throw UsageError("--recip-mass is missing");
  const std::vector<double> curve = engine.pressureCurve();
  if (engine.harmonics() > 0) {
    printHarmonics(options, curve);
    return;
  }
  const std::int32_t points = engine.points();
  const std::vector<double> phi = engine.crankAngles(-180);
  const double reference = options.referencePressure * kBar;
  std::array<std::vector<double>, 6> forces;
  forces.fill(std::vector<double>(curve.size()));
  CALCULATETANGENTIALRADIALFORCE(&options.rotatingMass, &*options.recipMass, nullptr, &reference,
                                 &engine[kConrodRatio], &engine[kSpeed], &engine[kStroke],
                                 &engine[kBore], &points, phi.data(), curve.data(),
                                 forces[0].data(), forces[1].data(), forces[2].data(),
                                 forces[3].data(), forces[4].data(), forces[5].data());
  fmt::print(
      "angle [deg],pressure [bar],tangential [N],tangential mass [N],tangential gas [N],"
      "radial [N],radial mass [N],radial gas [N]\n");
  for (std::size_t i = 0; i < curve.size(); ++i) {
    std::vector<double> row{static_cast<double>(i) - 180, curve[i] / kBar};
    for (const std::vector<double>& force : forces) row.push_back(force[i]);
    printRow(row);
  }
}

}  // namespace

void addForcesCommand(CLI::App& program, int& status) {
  CLI::App* command =
      program.add_subcommand("forces", "Print the forces on the crank pin of a cylinder as CSV");
  const auto options = std::make_shared<ForcesOptions>(*command);
  const auto addNumber = [command](const char* name, auto& value, const char* unit,
                                   const char* help) {
    command->add_option(name, value, help)->check(finiteNumber())->type_name(unit);
  };
  addNumber("--recip-mass", options->recipMass, "KG", "Reciprocating mass");
  addNumber("--rotating-mass", options->rotatingMass, "KG",
            "Rotating mass of the connecting rod; 0 if not given");
  addNumber("--reference-pressure", options->referencePressure, "BAR",
            "On the other side of the piston, absolute; 1 if not given");
  command->callback([options, &status] {
    printForces(*options);
    status = 0;
  });
}

}  // namespace verenwick::host
