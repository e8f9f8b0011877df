#include "ComputationsSrc/OscillatingMassFourierCoefficients.h"

#include <cstddef>
#include <vector>

#include "ComputationsSrc/CylinderExcitations.h"
#include "ComputationsSrc/DiscreteFourierTransform.h"
#include "RunControl/CallerArguments.h"
#include "verenwick.h"

namespace verenwick {

void OSCILLATINGMASSFOURIERCOEFFICIENTS(std::span<std::complex<double>> coefficients,
                                        std::span<const double> phi, double lambda) {
  std::vector<double> factor(phi.size());
  TANGENTIALOSCILLATINGMASS(factor, phi, lambda);
  DISCRETEFOURIERTRANSFORM(coefficients, factor);
}

extern "C" VERENWICK_API void OSCILLATINGMASSFOURIERCOEFFICIENTS(const std::int32_t* nPoints,
                                                                 const std::int32_t* nFC,
                                                                 double* coefficients,
                                                                 const double* phi,
                                                                 const double* lambda) {
  if (isAnyMissing(nPoints, nFC, coefficients, phi, lambda))
    return;
  try {
    std::vector<std::complex<double>> result(callerArray(coefficients, *nFC).size());
    OSCILLATINGMASSFOURIERCOEFFICIENTS(result, callerArray(phi, *nPoints), *lambda);
    for (std::size_t k = 0; k < result.size(); ++k) {
      coefficients[2 * k] = result[k].real();
      coefficients[2 * k + 1] = result[k].imag();
    }
  } catch (...) {  // no memory: nothing was written
    return;
  }
}

}  // namespace verenwick
