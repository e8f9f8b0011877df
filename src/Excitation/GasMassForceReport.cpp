#include "Excitation/GasMassForceReport.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "RunControl/Files.h"
#include "RunControl/NumberText.h"

namespace verenwick {

void writeGasMassForceReport(const CrankDrive& drive, std::span<const double> CYLINDERPRESSURES,
                             const CrankForces& forces) {
  TextWriter report(resultFileAddress("GasMassForce.txt"), Opening::replace);
  // A text and numbers with one blank before each; every line begins with a blank.
  const auto write = [&report](std::string_view text, std::initializer_list<double> numbers) {
    std::string line = " ";
    line += text;
    for (const double number : numbers) {
      line += ' ';
      line += shortestText(number);
    }
    report.writeLine(line);
  };
  const std::string rule(112, '-');

  write("ConnectingRodRatio(-)          ", {drive.lambda});
  write("LengthofStroke(m)              ", {drive.stroke});
  write("CylinderDiameter(m)            ", {drive.diameter});
  write("EngineSpeed(rpm)              ", {drive.speed});
  write("RatatingMassofConnectingRod(kg)", {drive.rotatingMass});
  write("ReciprocatingMass(kg)          ", {drive.recipMass});
  write(rule, {});
  write(
      "Angle(deg)  CylinderPressure(Pa)           tangentialGasForce(Pa)      "
      "radialGasForce(Pa)     tangentialMassForce(Pa)    radialMassForce(Pa)",
      {});
  for (std::size_t i = 0; i < CYLINDERPRESSURES.size(); ++i) {
    write(std::to_string(static_cast<std::int64_t>(i) - 180),
          {CYLINDERPRESSURES[i], forces.TANGENTIALGASFORCE[i], forces.RADIALGASFORCE[i],
           forces.TANGENTIALMASSFORCE[i], forces.RADIALMASSFORCE[i]});
  }
  write(rule, {});
  report.close();
}

}  // namespace verenwick
