#include "ComponentTables/Global_ReciprocatingPump.h"

#include "Excitation/Engine_functions.h"
#include "RunControl/Constants.h"
#include "RunControl/StringOperation.h"

// Lookups and operating point of reciprocating pumps.
namespace verenwick {
namespace {

constexpr std::int32_t kPumpOrders = results::kWholeOrders;
/// Strokes of a working cycle, one revolution.
constexpr std::int32_t kStrokes = 2;

}  // namespace

std::int32_t GET_RECIPROCATINGPUMP_NCYLFOURIERCOEFFICIENTS(const RECIPROCATINGPUMP_TABLE& table) {
  return table.number() > 0 ? kPumpOrders : 0;
}

std::vector<double> GET_RECIPROCATINGPUMP_HARMONICORDER(const RECIPROCATINGPUMP_TABLE& table,
                                                        std::int32_t /*iPump*/) {
  std::vector<double> orders;
  for (std::int32_t k = 1; k <= GET_RECIPROCATINGPUMP_NCYLFOURIERCOEFFICIENTS(table); ++k) {
    orders.push_back(k);
  }
  return orders;
}

std::int32_t GET_RECIPROCATINGPUMP_ICYLINDER(const RECIPROCATINGPUMP_TABLE& table,
                                             std::int32_t iPump, std::int32_t inertiaId) {
  const RECIPROCATINGPUMP_RECORD& pump = table.at(iPump);
  for (std::int32_t row = 1; row <= pump.NCYLINDER; ++row) {
    if (pump.CYLINDERS[index(row)] == inertiaId) {
      return row;
    }
  }
  return 0;
}

void LOADHALDORINPUMPFILE(RECIPROCATINGPUMP_TABLE& table, bool& status) {
  HarmonicFileLoader files(kPumpHarmonicFile);
  for (std::int32_t iPump = 1; iPump <= table.number(); ++iPump) {
    RECIPROCATINGPUMP_RECORD& pump = table.at(iPump);
    if (isBlank(pump.PUMPHARMONICFILE)) {
      continue;
    }
    status = files.load(pump.PUMPHARMONICFILE, pump.NORMAL);
    if (!status) {
      return;
    }
  }
}

std::vector<std::complex<double>> GETRECIPROCATINGPUMPHARMONICDATA(
    const RECIPROCATINGPUMP_TABLE& table, std::int32_t iPump, double speedPercentage) {
  return interpolateHarmonics(GET_RECIPROCATINGPUMP_NORMAL(table, iPump), speedPercentage);
}

void CALCULATE_RECIPROCATINGPUMP_SPEEDPERCENTAGE(RECIPROCATINGPUMP_TABLE& table,
                                                 std::int32_t iPump) {
  RECIPROCATINGPUMP_RECORD& pump = table.at(iPump);
  pump.SPEEDPERCENTAGE = pump.SPEED / pump.MCRSPEED;
}

void CALCULATE_RECIPROCATINGPUMP_TORQUE(RECIPROCATINGPUMP_TABLE& table, std::int32_t iPump) {
  RECIPROCATINGPUMP_RECORD& pump = table.at(iPump);
  pump.TORQUE = pump.POWER / angularSpeed(pump.SPEED);
}

void CALCULATE_RECIPROCATINGPUMP_LOADPERCENTAGE(RECIPROCATINGPUMP_TABLE& table,
                                                std::int32_t iPump) {
  RECIPROCATINGPUMP_RECORD& pump = table.at(iPump);
  pump.LOADPERCENTAGE = pump.TORQUE / pump.MCRTORQUE;
}

double CALCULATE_RECIPROCATINGPUMP_MEPMCR(const RECIPROCATINGPUMP_TABLE& table,
                                          std::int32_t iPump) {
  const RECIPROCATINGPUMP_RECORD& pump = table.at(iPump);
  const std::int32_t sides =
      pump.NCYLINDER * (pump.ISOPPOSITE ? 2 : 1) * (pump.ISDOUBLEACTING ? 2 : 1);
  return CALCULATE_MEP(pump.MCRPOWER / sides, pump.MCRSPEED, pump.BORE, kStrokes,
                       pump.STROKELENGTH);
}

void CALCULATE_RECIPROCATINGPUMP_LOADCASESETTING(RECIPROCATINGPUMP_TABLE& table, std::int32_t iPump,
                                                 std::int32_t /*iCylinder*/) {
  RECIPROCATINGPUMP_RECORD& pump = table.at(iPump);
  const double power = pump.ISDOUBLEACTING ? pump.POWERPERCYL * 0.5 : pump.POWERPERCYL;
  pump.MIPRPM =
      power / ((pump.SPEED / 60.0) * kPi * pump.BORE * pump.BORE * 0.25 * pump.STROKELENGTH);
  if (!pump.ISSIMPLIFIEDPRESSURE) {
    return;
  }
  pump.RECIPROCATINGPUMPTORQUEAMP =
      torqueAmplitudes(pump.TORQUE, pump.RECIPROCATINGPUMPTORQUEPERCENT);
  const auto inUse = static_cast<std::size_t>(std::max(pump.RECIPROCATINGPUMPORDERNUMBER, 0));
  for (std::size_t j = 0; j < inUse; ++j) {
    const double order = pump.RECIPROCATINGPUMPORDER[j];
    if (!isPumpOrder(order)) {
      continue;
    }
    // Two orders with the same integer part share an index: the later one counts.
    const auto k = static_cast<std::size_t>(order) - 1;
    pump.SIMPLIFIEDORDER[k] = order;
    pump.TORQUEAMP[k] = {
        0.0, roundedToSingle(-(pump.TORQUE * 0.5 * pump.RECIPROCATINGPUMPTORQUEPERCENT[j]))};
  }
}

bool isPumpOrder(double order) { return order >= 1.0 && order < kPumpOrders + 1; }

}  // namespace verenwick
