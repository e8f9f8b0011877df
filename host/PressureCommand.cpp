#include <fmt/format.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "host/Commands.h"
#include "host/EngineData.h"

namespace verenwick::host {
namespace {

struct PressureOptions {
  explicit PressureOptions(CLI::App& command) : engine(command) {}
  EngineData engine;
  std::int32_t harmonics = 0;
};

void printPressure(PressureOptions& options) {
  EngineData& engine = options.engine;
  engine.complete();
  const std::vector<double> curve = engine.pressureCurve();
  if (options.harmonics > 0) {
    fmt::print("order,sine [bar],cosine [bar]\n");
    std::int32_t k = 0;
    for (const auto& [sine, cosine] : tangentialHarmonics(engine, curve, options.harmonics)) {
      printRow({engine.order(++k), sine / kBar, cosine / kBar});
    }
    return;
  }
  fmt::print("angle [deg],pressure [bar]\n");
  double angle = -180;
  for (const double pressure : curve) printRow({angle++, pressure / kBar});
}

}  // namespace

void addPressureCommand(CLI::App& program, int& status) {
  CLI::App* command =
      program.add_subcommand("pressure", "Print the pressure curve of a cylinder as CSV");
  const auto options = std::make_shared<PressureOptions>(*command);
  command
      ->add_option("--harmonics", options->harmonics,
                   "Print so many harmonics of the tangential pressure instead")
      ->check(CLI::Range(1, 360));
  command->callback([options, &status] {
    printPressure(*options);
    status = 0;
  });
}

}  // namespace verenwick::host
