#include "ComponentTables/Global_Diesel.h"

#include "RunControl/StringOperation.h"

namespace verenwick {
namespace {

bool isFiring(std::int32_t status) { return status == normalFiring || status == partialFiring; }

/// Calls visit(status, percent) for every cylinder, bank by bank.
template <class Visit>
void forEachCylinder(const DIESEL_TABLE& table, std::int32_t iDiesel, Visit visit) {
  const DIESEL_RECORD& diesel = table.at(iDiesel);
  for (std::int32_t row = 1; row <= diesel.NCYLINDER; ++row) {
    visit(diesel.FIRINGSTATUSA[index(row)], diesel.FIRINGPERCENTA[index(row)]);
  }
  if (!diesel.ISVENGINE) {
    return;
  }
  for (std::int32_t row = 1; row <= diesel.NCYLINDER; ++row) {
    visit(diesel.FIRINGSTATUSB[index(row)], diesel.FIRINGPERCENTB[index(row)]);
  }
}

}  // namespace

std::int32_t GET_DIESEL_IDIESEL_BASEDON_CYLINDERINDEX(const DIESEL_TABLE& table,
                                                      std::int32_t inertiaId) {
  for (std::int32_t iDiesel = table.number(); iDiesel >= 1; --iDiesel) {
    if (GET_DIESEL_ICYLINDER(table, iDiesel, inertiaId) > 0) {
      return iDiesel;
    }
  }
  return 0;
}

std::int32_t GET_DIESEL_ICYLINDER(const DIESEL_TABLE& table, std::int32_t iDiesel,
                                  std::int32_t inertiaId) {
  const DIESEL_RECORD& diesel = table.at(iDiesel);
  for (std::int32_t row = 1; row <= diesel.NCYLINDER; ++row) {
    if (diesel.CYLINDERS[index(row)] == inertiaId) {
      return row;
    }
  }
  return 0;
}

bool GET_DIESEL_CONTAINFORMULADAMPING(const DIESEL_TABLE& table) {
  return firstPosition(table, [&](std::int32_t iDiesel) {
           return GET_DIESEL_ISFORMULADAMPING(table, iDiesel);
         }) > 0;
}

std::int32_t GET_DIESEL_NFIRINGCYLINDER(const DIESEL_TABLE& table, std::int32_t iDiesel) {
  std::int32_t firing = 0;
  forEachCylinder(table, iDiesel, [&](std::int32_t status, double /*percent*/) {
    firing += isFiring(status) ? 1 : 0;
  });
  return firing;
}

double GET_DIESEL_POWERCYLPERCENTINCREASED(const DIESEL_TABLE& table, std::int32_t iDiesel) {
  const std::int32_t firing = GET_DIESEL_NFIRINGCYLINDER(table, iDiesel);
  std::int32_t partial = 0;
  double share = 0.0;
  forEachCylinder(table, iDiesel, [&](std::int32_t status, double percent) {
    if (status == partialFiring) {
      ++partial;
      share += percent / 100.0;
    }
  });
  return firing == partial ? 1.0 : (firing - share) / (firing - partial);
}

double atFiringStatus(const DIESEL_TABLE& table, std::int32_t iDiesel, std::int32_t iCylinder,
                      bool isBankA, double value) {
  const DIESEL_RECORD& diesel = table.at(iDiesel);
  if (!diesel.HASPARTIALFIRING) {
    return value;
  }
  if (iCylinder == 0 || diesel.FIRINGSTATUSA[index(iCylinder)] != partialFiring) {
    return value * GET_DIESEL_POWERCYLPERCENTINCREASED(table, iDiesel);
  }
  const double percent =
      (isBankA ? diesel.FIRINGPERCENTA : diesel.FIRINGPERCENTB)[index(iCylinder)];
  return value * percent / 100.0;
}

std::int32_t GET_DIESEL_NCYLFOURIERCOEFFICIENTS(const DIESEL_TABLE& table) {
  if (table.number() == 0) {
    return 0;
  }
  const std::int32_t fourStroke = firstPosition(
      table, [&](std::int32_t iDiesel) { return GET_DIESEL_NSTROKE(table, iDiesel) != 2; });
  return fourStroke > 0 ? results::kHalfOrders : results::kWholeOrders;
}

std::vector<double> GET_DIESEL_HARMONICORDER(const DIESEL_TABLE& table) {
  const std::int32_t nOrders = GET_DIESEL_NCYLFOURIERCOEFFICIENTS(table);
  std::vector<double> orders;
  for (std::int32_t k = 1; k <= nOrders; ++k) {
    orders.push_back(k * results::orderStep(nOrders));
  }
  return orders;
}

void LOADHALDORINFILE(DIESEL_TABLE& table, bool& status) {
  HarmonicFileLoader files(kEngineHarmonicFile);
  for (std::int32_t iDiesel = 1; iDiesel <= table.number(); ++iDiesel) {
    DIESEL_RECORD& diesel = table.at(iDiesel);
    const auto load = [&](const std::string& name, SharedHarmonicData& data) {
      if (!isBlank(name)) {
        status = files.load(name, data);
        return status;
      }
      return true;
    };
    if (!load(diesel.NORMALHARMONICFILE, diesel.NORMAL) ||
        !load(diesel.MISHARMONICFILE, diesel.MISFIRING)) {
      return;
    }
  }
}

std::vector<std::complex<double>> GETNORMALFIRINGHARMONICDATA(const DIESEL_TABLE& table,
                                                              std::int32_t iDiesel, double mip) {
  return interpolateHarmonics(GET_DIESEL_NORMAL(table, iDiesel), mip);
}

std::vector<std::complex<double>> GETMISFIRINGHARMONICDATA(const DIESEL_TABLE& table,
                                                           std::int32_t iDiesel, double mip) {
  return interpolateHarmonics(GET_DIESEL_MISFIRING(table, iDiesel), mip);
}

}  // namespace verenwick
