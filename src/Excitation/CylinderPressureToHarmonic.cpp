#include "Excitation/CylinderPressureToHarmonic.h"

#include <complex>
#include <cstddef>
#include <vector>

#include "ComputationsSrc/CylinderExcitations.h"
#include "ComputationsSrc/DiscreteFourierTransform.h"
#include "ComputationsSrc/PressureFourierCoefficients.h"
#include "RunControl/CallerArguments.h"
#include "RunControl/Constants.h"
#include "verenwick.h"

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

  std::vector<double> factor(pressure.size(), 1.0);  // tangential pressure of a pressure of 1
  TANGENTIALFORCEGAS(factor, phi, lambda);
  for (std::size_t i = 0; i < pressure.size(); ++i) {
    if (factor[i] != 0.0) {
      pressure[i] = pressure[i] / factor[i];
    } else if (i > 0) {
      pressure[i] = pressure[i - 1] / factor[i - 1];
    } else if (pressure.size() > 1) {
      pressure[i] = pressure[1] / factor[1];
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
  } catch (...) {  // no memory: the components are as they were, the pressure may be changed
    return;
  }
}

}  // namespace verenwick
