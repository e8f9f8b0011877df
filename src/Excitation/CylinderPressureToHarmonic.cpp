#include "Excitation/CylinderPressureToHarmonic.h"

#include <cmath>
#include <complex>
#include <cstddef>
#include <vector>

#include "ComputationsSrc/DiscreteFourierTransform.h"
#include "ComputationsSrc/PressureFourierCoefficients.h"
#include "RunControl/CallerArguments.h"
#include "RunControl/Constants.h"
#include "include/verenwick.h"

namespace verenwick {

void CYLINDERPRESSURETOHARMONIC(std::span<double> pressure, std::span<const double> phi,
                                double lambda, std::span<double> SINECOMPONENT,
                                std::span<double> COSINECOMPONENT) {
  std::vector<std::complex<double>> coefficients(SINECOMPONENT.size() + 1);
  PRESSUREFOURIERCOEFFICIENTS(coefficients, pressure, phi, lambda);
  for (std::size_t k = 0; k < SINECOMPONENT.size(); ++k) {
    COSINECOMPONENT[k] = coefficients[k + 1].real() * 2.0;
    SINECOMPONENT[k] = -(coefficients[k + 1].imag() * 2.0);
  }
}

void HARMONICTOCYLINDERPRESSURE(std::span<double> pressure, std::span<const double> phi,
                                double lambda, std::span<const double> SINECOMPONENT,
                                std::span<const double> COSINECOMPONENT) {
  std::vector<std::complex<double>> coefficients(SINECOMPONENT.size());
  if (pressure.size() == 360 || pressure.size() == 720) {
    for (std::size_t k = 0; k < coefficients.size(); ++k) {
      coefficients[k] = {roundedToSingle(0.5 * COSINECOMPONENT[k]),
                         roundedToSingle(-(0.5 * SINECOMPONENT[k]))};
    }
  }
  INVERSEDISCRETEFOURIERTRANSFORM(coefficients, pressure);

  const auto rodAngle = [&](std::size_t i) { return std::asin(lambda * std::sin(phi[i])); };
  const auto rodSine = [&](std::size_t i) { return std::sin(phi[i] + rodAngle(i)); };
  const auto cylinderPressure = [&](std::size_t i) {
    return pressure[i] / (rodSine(i) / std::cos(rodAngle(i)));
  };
  for (std::size_t i = 0; i < pressure.size(); ++i) {
    if (rodSine(i) != 0.0) {
      pressure[i] = cylinderPressure(i);
    } else if (i > 0) {
      pressure[i] = cylinderPressure(i - 1);
    } else if (pressure.size() > 1) {
      pressure[i] = cylinderPressure(1);
    }
  }
}

extern "C" VERENWICK_API void CYLINDERPRESSURETOHARMONIC(
    const std::int32_t* nPoints, const std::int32_t* nOrders, double* pressure, const double* phi,
    const double* lambda, double* SINECOMPONENT, double* COSINECOMPONENT) {
  if (isAnyMissing(nPoints, nOrders, pressure, phi, lambda, SINECOMPONENT, COSINECOMPONENT))
    return;
  try {
    CYLINDERPRESSURETOHARMONIC(callerArray(pressure, *nPoints), callerArray(phi, *nPoints), *lambda,
                               callerArray(SINECOMPONENT, *nOrders),
                               callerArray(COSINECOMPONENT, *nOrders));
  } catch (...) {  // no memory: nothing was written
    return;
  }
}

}  // namespace verenwick
