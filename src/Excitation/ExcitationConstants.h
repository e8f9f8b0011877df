#pragma once

#include "RunControl/Constants.h"

/// Constants of the engine functions and of the theoretical cylinder pressure. They are held in
/// single precision, and results carry that.
namespace verenwick {

// Engine functions at part load.
constexpr double kTorqueRatioLimit = single(1.1F);
constexpr double kPeakOverCompression = single(1.1F);
constexpr double kPeakSlopeTwoStroke = single(0.64F);
constexpr double kPeakSlopeFourStroke = single(0.8F);
constexpr double kLowestShareOfRated = single(0.3F);
constexpr double kInletSlopeTwoStroke = single(1.24F);
constexpr double kInletSlopeFourStroke = single(1.28F);
constexpr double kCompressionSlope = single(1.3199999F);  ///< one step below 1.32

// Theoretical cylinder pressure.
constexpr double kGasConstant = single(286.72F);          ///< J/(kg K)
constexpr double kToleranceTwoStroke = single(0.02F);     ///< of work and peak pressure
constexpr double kToleranceFourStroke = single(0.005F);   ///< of work and peak pressure
constexpr double kVibe = single(6.9F);                    ///< leaves 0.1 % of the fuel unburnt
constexpr double kSpecificHeatSlope = single(0.2177F);    ///< J/(kg K2)
constexpr double kSpecificHeatBase = single(921.1F);      ///< J/(kg K)
constexpr double kExpansionExponentDrop = single(0.06F);  ///< below the compression exponent
constexpr double kExhaustLevelShare = single(0.4F);       ///< of the pressure at opening
constexpr double kExhaustExponent = single(0.167F);
constexpr double kMisfireExponent = single(1.36F);
constexpr double kMisfireCap = single(0.9F);  ///< of the compression pressure
constexpr double kFormFactorStep = single(0.6F);
constexpr double kFormFactorFloor = single(0.01F);

constexpr double kChargeHeating = 50.0;  ///< K, of the charge air on its way in
constexpr double kKelvinOfCelsius = 273.0;
constexpr double kShortestCombustion = 5.0;  ///< degrees

}  // namespace verenwick
