#include <fmt/format.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "host/Commands.h"
#include "host/EngineData.h"
#include "host/Units.h"

namespace verenwick::host {
namespace {

void printPressure(EngineData& engine) {
  engine.complete();
  const std::vector<double> curve = engine.pressureCurve();
  if (engine.harmonics() > 0) {
    fmt::print("order,sine [bar],cosine [bar]\n");
    std::int32_t k = 0;
    for (const auto& [sine, cosine] : tangentialHarmonics(engine, curve)) {
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
  const auto engine = std::make_shared<EngineData>(*command);
  command->callback([engine, &status] {
    printPressure(*engine);
    status = 0;
  });
}

}  // namespace verenwick::host
