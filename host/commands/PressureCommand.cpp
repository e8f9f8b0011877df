#include <fmt/format.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "host/Units.h"
#include "host/commands/Commands.h"
#include "host/commands/CylinderOptions.h"

namespace verenwick::host {
namespace {

void printPressure(CylinderOptions& options) {
  const Cylinder cylinder = options.cylinder();
  const std::vector<double> curve = toldPressureCurve(cylinder);
  if (options.harmonics() > 0) {
    fmt::print("order,sine [bar],cosine [bar]\n");
    std::int32_t k = 0;
    for (const auto& [sine, cosine] : tangentialHarmonics(cylinder, curve, options.harmonics())) {
      printRow({cylinder.order(++k), sine / kBar, cosine / kBar});
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
  const auto options = std::make_shared<CylinderOptions>(*command);
  command->callback([options, &status] {
    printPressure(*options);
    status = 0;
  });
}

}  // namespace verenwick::host
