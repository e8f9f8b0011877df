#include "Excitation/TangentialRadialForce.h"

#include <cstddef>

#include "ComputationsSrc/CylinderExcitations.h"
#include "Excitation/GasMassForceReport.h"
#include "RunControl/CallerArguments.h"
#include "RunControl/Constants.h"
#include "verenwick.h"

namespace verenwick {

void CALCULATETANGENTIALRADIALFORCE(const CrankDrive& drive, std::span<const double> phi,
                                    std::span<const double> CYLINDERPRESSURES,
                                    const CrankForces& forces) {
  const double omega = angularSpeed(drive.speed);
  const double area = drive.diameter * 0.5 * drive.diameter * 0.5 * kPi;
  for (std::size_t i = 0; i < phi.size(); ++i) {
    forces.TANGENTIALGASFORCE[i] = CYLINDERPRESSURES[i] - drive.referencePressure;
    forces.RADIALGASFORCE[i] = forces.TANGENTIALGASFORCE[i];
  }
  TANGENTIALFORCEGAS(forces.TANGENTIALGASFORCE, phi, drive.lambda);
  RADIALFORCEGAS(forces.RADIALGASFORCE, phi, drive.lambda);
  TANGENTIALOSCILLATINGMASS(forces.TANGENTIALMASSFORCE, phi, drive.lambda);
  RADIALOSCILLATINGMASS(forces.RADIALMASSFORCE, phi, drive.lambda);

  const double radialAcceleration = omega * omega * drive.stroke * 0.5;
  for (std::size_t i = 0; i < phi.size(); ++i) {
    double& tangentialMass = forces.TANGENTIALMASSFORCE[i];
    double& radialMass = forces.RADIALMASSFORCE[i];
    tangentialMass = -(radialAcceleration * drive.recipMass * tangentialMass);
    // The rotating mass has no tangential force at constant speed.
    radialMass = -(radialAcceleration * (radialMass * drive.recipMass + drive.rotatingMass));
    forces.TANGENTIALGASFORCE[i] *= area;
    forces.RADIALGASFORCE[i] *= area;
    forces.tangentialForce[i] = forces.TANGENTIALGASFORCE[i] + tangentialMass;
    forces.radialForce[i] = forces.RADIALGASFORCE[i] + radialMass;
  }
}

extern "C" VERENWICK_API void CALCULATETANGENTIALRADIALFORCE(
    const double* rotatingMass, const double* recipMass, const void* /*unused*/,
    const double* referencePressure, const double* lambda, const double* speed,
    const double* stroke, const double* diameter, const std::int32_t* nPoints, const double* phi,
    const double* CYLINDERPRESSURES, double* tangentialForce, double* TANGENTIALMASSFORCE,
    double* TANGENTIALGASFORCE, double* radialForce, double* RADIALMASSFORCE,
    double* RADIALGASFORCE) {
  if (isAnyMissing(rotatingMass, recipMass, referencePressure, lambda, speed, stroke, diameter,
                   nPoints, phi, CYLINDERPRESSURES, tangentialForce, TANGENTIALMASSFORCE,
                   TANGENTIALGASFORCE, radialForce, RADIALMASSFORCE, RADIALGASFORCE)) {
    return;
  }
  const CrankDrive drive{.rotatingMass = *rotatingMass,
                         .recipMass = *recipMass,
                         .referencePressure = *referencePressure,
                         .lambda = *lambda,
                         .speed = *speed,
                         .stroke = *stroke,
                         .diameter = *diameter};
  const std::span<const double> pressures = callerArray(CYLINDERPRESSURES, *nPoints);
  const CrankForces forces{.tangentialForce = callerArray(tangentialForce, *nPoints),
                           .TANGENTIALMASSFORCE = callerArray(TANGENTIALMASSFORCE, *nPoints),
                           .TANGENTIALGASFORCE = callerArray(TANGENTIALGASFORCE, *nPoints),
                           .radialForce = callerArray(radialForce, *nPoints),
                           .RADIALMASSFORCE = callerArray(RADIALMASSFORCE, *nPoints),
                           .RADIALGASFORCE = callerArray(RADIALGASFORCE, *nPoints)};
  CALCULATETANGENTIALRADIALFORCE(drive, callerArray(phi, *nPoints), pressures, forces);
  if constexpr (kWritesGasMassForceReport) {
    try {
      writeGasMassForceReport(drive, pressures, forces);
    } catch (...) {  // the forces are good without their report
      return;
    }
  }
}

}  // namespace verenwick
