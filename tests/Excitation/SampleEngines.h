#pragma once

#include "Excitation/TheoreticalPressure.h"

/// Plausible engines at full load.
namespace verenwick::sample {

/// A large two-stroke: 0.6 m bore, 2.4 m stroke, 105 rpm.
inline CylinderPressureInput twoStroke() {
  return {.nStroke = 2,
          .bore = 0.6,
          .stroke = 2.4,
          .lambda = 0.42,
          .compRatio = 17,
          .pInlet = 3.6e5,
          .tCharge = 40,
          .speed = 105,
          .power = 2.4e6,
          .pMax = 1.6e7,
          .pComp = 1.3e7,
          .Te = 0.52,
          .me = 0.93,
          .FormFactor = 0.5,
          .AngleIgnition = 0,
          .AngleEndOfComb = 45,
          .AngleExhaustStart = 115,
          .AngleInletStart = 140,
          .AngleInletClose = 220};
}

/// A medium speed four-stroke: 0.32 m bore, 0.4 m stroke, 750 rpm.
inline CylinderPressureInput fourStroke() {
  return {.nStroke = 4,
          .bore = 0.32,
          .stroke = 0.40,
          .lambda = 0.22,
          .compRatio = 15,
          .pInlet = 3.5e5,
          .tCharge = 45,
          .speed = 750,
          .power = 4.8e5,
          .pMax = 1.85e7,
          .pComp = 1.4e7,
          .Te = 0.5,
          .me = 0.92,
          .FormFactor = 0.5,
          .AngleIgnition = -6,
          .AngleEndOfComb = 60,
          .AngleExhaustStart = 125,
          .AngleInletStart = 300,
          .AngleInletClose = 560};
}

}  // namespace verenwick::sample
