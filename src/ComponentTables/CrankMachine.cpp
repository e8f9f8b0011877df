#include "ComponentTables/CrankMachine.h"

#include <algorithm>

#include "ComputationsSrc/OscillatingMassFourierCoefficients.h"

namespace verenwick {

void store(const Coefficients& coefficients, StoredCoefficients& field) {
  std::copy(coefficients.begin() + 1, coefficients.end(), field.begin());
}

Coefficients withMean(const StoredCoefficients& field, std::size_t nOrders) {
  Coefficients coefficients(nOrders + 1);
  std::copy_n(field.begin(), nOrders, coefficients.begin() + 1);
  return coefficients;
}

void addTo(Coefficients& sum, const Coefficients& share) {
  for (std::size_t k = 0; k < sum.size(); ++k) {
    sum[k] += share[k];
  }
}

void storeMassFactor(std::span<const double> phi, double conrodRatio, std::size_t nOrders,
                     StoredCoefficients& field) {
  Coefficients mass(nOrders + 1);
  OSCILLATINGMASSFOURIERCOEFFICIENTS(mass, phi, conrodRatio);
  store(mass, field);
}

}  // namespace verenwick
