#include "ComputationsSrc/PressureFourierCoefficients.h"

#include "ComputationsSrc/CylinderExcitations.h"
#include "ComputationsSrc/DiscreteFourierTransform.h"

namespace verenwick {

void PRESSUREFOURIERCOEFFICIENTS(std::span<std::complex<double>> coefficients,
                                 std::span<double> pressure, std::span<const double> phi,
                                 double lambda) {
  TANGENTIALFORCEGAS(pressure, phi, lambda);
  DISCRETEFOURIERTRANSFORM(coefficients, pressure);
}

}  // namespace verenwick
