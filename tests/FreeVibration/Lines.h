#pragma once

#include <sstream>
#include <string>

namespace verenwick::test {

/// The line of a six-cylinder four-stroke engine of Mendes, Meirelles and Zampieri (Proc. IMechE
/// Part K, 2008): pulley, gear train, six cylinders, flywheel; every shaft has the loss factor
/// 0.035. Printed natural frequencies: 216.584, 592.74, 984.923 and 1171.02 Hz.
inline const std::string kSixCylinderLine = R"(
INERTIA 1 1 0.017 0 0
INERTIA 2 1 0.009 0 0
INERTIA 3 1 0.0467 2 0
INERTIA 4 1 0.0327 2 0
INERTIA 5 1 0.0467 2 0
INERTIA 6 1 0.0467 2 0
INERTIA 7 1 0.0327 2 0
INERTIA 8 1 0.0487 2 0
INERTIA 9 1 2.075 0 0
SHAFT 1 1 2 1 1106000 0 28.571428571428573 0 0 0 0
SHAFT 2 2 3 1 1631000 0 28.571428571428573 0 0 0 0
SHAFT 3 3 4 1 1253000 0 28.571428571428573 0 0 0 0
SHAFT 4 4 5 1 1253000 0 28.571428571428573 0 0 0 0
SHAFT 5 5 6 1 1678000 0 28.571428571428573 0 0 0 0
SHAFT 6 6 7 1 1253000 0 28.571428571428573 0 0 0 0
SHAFT 7 7 8 1 1253000 0 28.571428571428573 0 0 0 0
SHAFT 8 8 9 1 1976000 0 28.571428571428573 0 0 0 0
)";

/// Inertias of 2 kg m2 one behind the other on shafts of 3 MN m/rad; ids count from 1.
inline std::string uniformChain(int inertias) {
  std::ostringstream text;
  text << "INERTIA 1 1 2 0 0\n";
  for (int i = 2; i <= inertias; ++i) {
    text << "INERTIA " << i << " 1 2 0 0\nSHAFT " << i << ' ' << i - 1 << ' ' << i
         << " 1 3e6 0 0 0 0 0 0\n";
  }
  return text.str();
}

}  // namespace verenwick::test
