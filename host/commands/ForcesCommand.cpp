#include <fmt/format.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "host/Units.h"
#include "host/UsageError.h"
#include "host/commands/Commands.h"
#include "host/commands/CylinderOptions.h"
#include "host/commands/OptionChecks.h"

namespace verenwick::host {
namespace {

struct ForcesOptions {
  explicit ForcesOptions(CLI::App& command) : engine(command) {}
  CylinderOptions engine;
  std::optional<double> recipMass;
  double rotatingMass = 0;
  double referencePressure = 1;  ///< bar
};

void printForces(ForcesOptions& options) {
  const Cylinder cylinder = options.engine.cylinder();
  if (!options.recipMass)
    throw UsageError("--recip-mass is missing");
  const CrankLoad load{*options.recipMass, options.rotatingMass, options.referencePressure * kBar};
  const std::vector<double> curve = toldPressureCurve(cylinder);
  if (options.engine.harmonics() > 0) {
    fmt::print("order,gas sine [N],gas cosine [N],mass sine [N],mass cosine [N]\n");
    for (const auto& [order, gas, mass] :
         forceHarmonics(cylinder, load, curve, options.engine.harmonics())) {
      printRow({order, gas.sine, gas.cosine, mass.sine, mass.cosine});
    }
    return;
  }
  const CrankForces forces = crankForces(cylinder, load, curve);
  fmt::print(
      "angle [deg],pressure [bar],tangential [N],tangential mass [N],tangential gas [N],"
      "radial [N],radial mass [N],radial gas [N]\n");
  for (std::size_t i = 0; i < curve.size(); ++i) {
    printRow({static_cast<double>(i) - 180, curve[i] / kBar, forces.tangential[i],
              forces.tangentialMass[i], forces.tangentialGas[i], forces.radial[i],
              forces.radialMass[i], forces.radialGas[i]});
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
