#include <algorithm>
#include <span>

#include "ComponentTables/Global_ReciprocatingPump.h"
#include "ComputationsSrc/CylinderExcitations.h"
#include "ComputationsSrc/DiscreteFourierTransform.h"
#include "Excitation/CrankAngles.h"
#include "RunControl/Constants.h"

// Excitation of reciprocating pumps: pressure and mass coefficients at the operating point, and the
// torque coefficients of a cylinder row.
namespace verenwick {
namespace {

constexpr double kPeriod = 360.0;  ///< degrees

std::size_t numberOfOrders(const RECIPROCATINGPUMP_TABLE& table) {
  return static_cast<std::size_t>(GET_RECIPROCATINGPUMP_NCYLFOURIERCOEFFICIENTS(table));
}

/// Sum over what works on one crank: the cylinder, the opposite one, and the other sides of
/// double-acting pistons. The mean stands in front.
Coefficients sumOverRow(const RECIPROCATINGPUMP_RECORD& pump, const StoredCoefficients& first,
                        const StoredCoefficients& opposite, std::size_t nOrders) {
  const auto shifted = [&](const StoredCoefficients& stored, double degrees) {
    Coefficients coefficients = withMean(stored, nOrders);
    FOURIERCOEFFICIENTTRANSFORM(coefficients, coefficients, degrees, kPeriod, 0);
    return coefficients;
  };
  Coefficients sum = withMean(first, nOrders);
  Coefficients bankB(nOrders + 1);
  std::int32_t shifts = 0;
  if (pump.ISOPPOSITE) {
    ++shifts;
    bankB = shifted(opposite, pump.VANGLE);
    addTo(sum, bankB);
  }
  if (pump.ISDOUBLEACTING) {
    ++shifts;
    // The opposite cylinder stands for its own other side: it counts twice.
    addTo(sum, bankB);
    addTo(sum, shifted(first, pump.VANGLE * shifts));
  }
  return sum;
}

}  // namespace

void CALCULATE_RECIPROCATINGPUMP_FOURIERCOEFFICIENT(RECIPROCATINGPUMP_TABLE& table,
                                                    std::int32_t iPump, std::int32_t iCylinder,
                                                    bool isBankA) {
  RECIPROCATINGPUMP_RECORD& pump = table.at(iPump);
  const std::size_t nOrders = numberOfOrders(table);
  storeMassFactor(crankAngles(kRevolution), pump.CONRODRATIO, nOrders, pump.MASSFC);
  StoredCoefficients gas{};
  if (pump.ISSIMPLIFIEDPRESSURE) {
    CALCULATE_RECIPROCATINGPUMP_LOADCASESETTING(table, iPump, iCylinder);
  } else {
    const auto rows = GETRECIPROCATINGPUMPHARMONICDATA(table, iPump, pump.SPEEDPERCENTAGE);
    std::copy_n(rows.begin(), std::min(rows.size(), nOrders), gas.begin());
  }
  pump.GASFCPERCYLINDER.resize(static_cast<std::size_t>(pump.NCYLINDER));
  PumpCylinderGas& row = pump.GASFCPERCYLINDER[index(iCylinder)];
  (isBankA ? row.NORMALGASFCBANKA : row.NORMALGASFCBANKB) = gas;
}

std::vector<std::complex<double>> CALCULATE_RECIPROCATINGPUMP_CYLFOURIERCOEFFICIENTS(
    const RECIPROCATINGPUMP_TABLE& table, std::int32_t iPump, std::int32_t iCylinder) {
  const RECIPROCATINGPUMP_RECORD& pump = table.at(iPump);
  const std::size_t nOrders = numberOfOrders(table);
  const double radius = pump.STROKELENGTH * 0.5;
  const double omega = angularSpeed(pump.SPEED);
  const Coefficients mass = sumOverRow(pump, pump.MASSFC, pump.MASSFC, nOrders);
  const auto orders = [](const Coefficients& withMean) { return std::span(withMean).subspan(1); };
  Coefficients torque(nOrders);
  if (pump.ISSIMPLIFIEDPRESSURE) {
    const Coefficients load = sumOverRow(pump, pump.TORQUEAMP, pump.TORQUEAMP, nOrders);
    CYLINDERSIMPLIFIEDEXCITATION(torque, orders(load), orders(mass), radius, omega, pump.RECIPMASS);
    return torque;
  }
  // A pump that no load case names has no stored pressures.
  const PumpCylinderGas none;
  const auto stored = index(iCylinder);
  const PumpCylinderGas& row =
      stored < pump.GASFCPERCYLINDER.size() ? pump.GASFCPERCYLINDER[stored] : none;
  const Coefficients gas = sumOverRow(pump, row.NORMALGASFCBANKA, row.NORMALGASFCBANKB, nOrders);
  const double area = pump.BORE * pump.BORE * kPi * 0.25;
  CYLINDEREXCITATION(torque, orders(gas), orders(mass), radius, area, omega, pump.RECIPMASS);
  return torque;
}

}  // namespace verenwick
