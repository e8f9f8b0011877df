#include "ComputationsSrc/OscillatingMassFourierCoefficients.h"

#include <vector>

#include "ComputationsSrc/CylinderExcitations.h"
#include "ComputationsSrc/DiscreteFourierTransform.h"

namespace verenwick {

void OSCILLATINGMASSFOURIERCOEFFICIENTS(std::span<std::complex<double>> coefficients,
                                        std::span<const double> phi, double lambda) {
  std::vector<double> factor(phi.size());
  TANGENTIALOSCILLATINGMASS(factor, phi, lambda);
  DISCRETEFOURIERTRANSFORM(coefficients, factor);
}

}  // namespace verenwick
