#pragma once

#include <span>

namespace verenwick {

/// A cylinder's crank drive at one speed.
struct CrankDrive {
  double rotatingMass{};       ///< of the connecting rod, kg
  double recipMass{};          ///< kg
  double referencePressure{};  ///< on the other side of the piston, Pa
  double lambda{};             ///< crank radius divided by rod length
  double speed{};              ///< rpm
  double stroke{};             ///< m
  double diameter{};           ///< of the cylinder, m
};

/// Forces on the crank pin over a grid of crank angles, N.
struct CrankForces {
  std::span<double> tangentialForce;  ///< gas plus mass
  std::span<double> TANGENTIALMASSFORCE;
  std::span<double> TANGENTIALGASFORCE;
  std::span<double> radialForce;  ///< gas plus mass
  std::span<double> RADIALMASSFORCE;
  std::span<double> RADIALGASFORCE;
};

/// Fills the forces at the crank angles phi (rad from top dead centre) from the cylinder pressures
/// (Pa) there. All arrays have the same length.
void CALCULATETANGENTIALRADIALFORCE(const CrankDrive& drive, std::span<const double> phi,
                                    std::span<const double> CYLINDERPRESSURES,
                                    const CrankForces& forces);

}  // namespace verenwick
