#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "ComponentTables/Global_Diesel.h"
#include "ComputationsSrc/CylinderExcitations.h"
#include "ComputationsSrc/DiscreteFourierTransform.h"
#include "ComputationsSrc/PressureFourierCoefficients.h"
#include "Excitation/CrankAngles.h"
#include "Excitation/Engine_functions.h"
#include "Excitation/TheoreticalPressure.h"
#include "RunControl/Constants.h"

// Excitation of diesel engines: pressure and mass coefficients at the operating point, and the
// torque coefficients of a cylinder row.
namespace verenwick {
namespace {

/// One working cycle of the system: its orders, and its crank angles in whole degrees from top dead
/// centre. One revolution while all engines are two-stroke, else two.
struct Cycle {
  std::size_t nOrders;
  std::vector<double> phi;  ///< rad

  explicit Cycle(const DIESEL_TABLE& table)
      : nOrders(static_cast<std::size_t>(GET_DIESEL_NCYLFOURIERCOEFFICIENTS(table))),
        phi(crankAngles(nOrders == results::kWholeOrders ? kRevolution : 2 * kRevolution)) {}
  Coefficients zeros() const { return Coefficients(nOrders + 1); }
};

/// Coefficients of the tangential gas pressure of a cylinder, Pa.
struct Gas {
  Coefficients normal;
  Coefficients misfiring;
};

/// Coefficients of the tangential pressure of a theoretical pressure curve.
Coefficients curveCoefficients(const CylinderPressureInput& input, const Cycle& cycle) {
  std::array<double, kPressurePoints> curve{};
  double mip = 0.0;
  bool status = false;
  CALCULATEDPRESSURE(input, curve, mip, status);
  // From the curve's start at bottom dead centre to top dead centre.
  const auto length =
      static_cast<std::ptrdiff_t>(input.nStroke == 2 ? kRevolution : cycle.phi.size());
  std::rotate(curve.begin(), curve.begin() + kRevolution / 2, curve.begin() + length);
  if (input.nStroke == 2) {
    // Both revolutions of a four-stroke system are alike.
    std::copy_n(curve.begin(), kRevolution, curve.begin() + kRevolution);
  }
  Coefficients coefficients = cycle.zeros();
  PRESSUREFOURIERCOEFFICIENTS(coefficients, std::span(curve).first(cycle.phi.size()), cycle.phi,
                              input.lambda);
  return coefficients;
}

/// The curves computed so far, by their inputs: cylinders that run alike share one.
class CurveMemory {
 public:
  const Gas& gas(const CylinderPressureInput& input, const Cycle& cycle) {
    const auto known = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const auto& entry) { return entry.first == input; });
    if (known != entries_.end()) {
      return known->second;
    }
    CylinderPressureInput misfiring = input;
    misfiring.misfire = true;
    Gas gas{curveCoefficients(input, cycle), curveCoefficients(misfiring, cycle)};
    return entries_.emplace_back(input, std::move(gas)).second;
  }

 private:
  std::vector<std::pair<CylinderPressureInput, Gas>> entries_;
};

Gas theoreticalGas(const DIESEL_RECORD& diesel, const Cycle& cycle, CurveMemory& memory) {
  // Partial firing acts through the pressures only; the power is that of a firing cylinder.
  return memory.gas({.misfire = false,
                     .nStroke = diesel.NSTROKE,
                     .bore = diesel.BORE,
                     .stroke = diesel.STROKE,
                     .lambda = diesel.CONRODRATIO,
                     .compRatio = diesel.COMPRATIO,
                     .pInlet = diesel.PCHARGEAIRRPM,
                     .tCharge = diesel.TCHARGEAIR,
                     .speed = diesel.SPEED,
                     .power = diesel.POWERPERCYL,
                     .pMax = diesel.PMAXRPM,
                     .pComp = diesel.PCOMPRPM,
                     .CompExp = diesel.COMPEXP,
                     .ExpaExp = diesel.EXPAEXP,
                     .Te = diesel.TE,
                     .me = diesel.ME,
                     .FormFactor = diesel.FORMFACTOR,
                     .AngleIgnition = diesel.ANGLEIGNITION,
                     .AngleEndOfComb = diesel.ANGLEENDOFCOMB,
                     .AngleExhaustStart = diesel.ANGLEEXHAUSTSTART,
                     .AngleInletStart = diesel.ANGLEINLETSTART,
                     .AngleInletClose = diesel.ANGLEINLETCLOSE},
                    cycle);
}

/// Mean indicated pressure at which a cylinder's harmonic data are taken, Pa.
double harmonicFilePressure(const DIESEL_TABLE& table, std::int32_t iDiesel, std::int32_t iCylinder,
                            bool isBankA) {
  const DIESEL_RECORD& diesel = table.at(iDiesel);
  const auto ofCylinder = [&](double value) {
    return atFiringStatus(table, iDiesel, iCylinder, isBankA, value);
  };
  const double power = ofCylinder(diesel.POWERPERCYL);
  const double mepFiring = ofCylinder(CALCULATE_DIESEL_MEPMCR(table, iDiesel, true));
  const double mepAll = CALCULATE_DIESEL_MEPMCR(table, iDiesel, false);
  const double mipMax = CALCULATE_MIP_MAX(mepAll, diesel.ME, diesel.MIPLIMIT);
  const double mep = CALCULATE_MEP(power, diesel.SPEED, diesel.BORE, diesel.NSTROKE, diesel.STROKE);
  return CALCULATE_MIP(mep, mepFiring, diesel.LOADPERCENTAGE, diesel.ME, mipMax);
}

/// The rows of a harmonic file as coefficients: rows beyond the orders are dropped, orders beyond
/// the rows are zero.
Coefficients byOrderIndex(const std::vector<std::complex<double>>& rows, const Cycle& cycle) {
  Coefficients coefficients = cycle.zeros();
  std::copy_n(rows.begin(), std::min(rows.size(), cycle.nOrders), coefficients.begin() + 1);
  return coefficients;
}

Gas harmonicFileGas(const DIESEL_TABLE& table, std::int32_t iDiesel, std::int32_t iCylinder,
                    bool isBankA, const Cycle& cycle) {
  const double mip = harmonicFilePressure(table, iDiesel, iCylinder, isBankA);
  return {byOrderIndex(GETNORMALFIRINGHARMONICDATA(table, iDiesel, mip), cycle),
          byOrderIndex(GETMISFIRINGHARMONICDATA(table, iDiesel, mip), cycle)};
}

void storeMass(DIESEL_RECORD& diesel, const Cycle& cycle) {
  storeMassFactor(cycle.phi, diesel.CONRODRATIO, cycle.nOrders, diesel.MASSFC);
}

void storeGas(DIESEL_TABLE& table, std::int32_t iDiesel, const LOADCASEGENSET_TABLE& genset,
              std::int32_t iCylinder, bool isBankA, const Cycle& cycle, CurveMemory& memory) {
  DIESEL_RECORD& diesel = table.at(iDiesel);
  Gas gas;
  if (diesel.ISTHEORETICALPRESURE) {
    CALCULATE_DIESEL_LOADCASESETTING(table, iDiesel, genset, iCylinder, isBankA);
    gas = theoreticalGas(diesel, cycle, memory);
  } else {
    gas = harmonicFileGas(table, iDiesel, iCylinder, isBankA, cycle);
  }
  diesel.GASFCPERCYLINDER.resize(static_cast<std::size_t>(diesel.NCYLINDER));
  CylinderGas& row = diesel.GASFCPERCYLINDER[index(iCylinder)];
  store(gas.normal, isBankA ? row.NORMALGASFCBANKBANKA : row.NORMALGASFCBANKB);
  store(gas.misfiring, isBankA ? row.MISFIRINGGASFCBANKBANKA : row.MISFIRINGGASFCBANKB);
}

/// What drives the crank of one cylinder, by its firing status.
struct BankShare {
  Coefficients mass;
  Coefficients gas;
};

BankShare bankShare(const DIESEL_RECORD& diesel, std::int32_t status,
                    const StoredCoefficients& normal, const StoredCoefficients& misfiring,
                    std::size_t nOrders) {
  BankShare share{Coefficients(nOrders + 1), Coefficients(nOrders + 1)};
  if (status != pistonRemoved) {
    share.mass = withMean(diesel.MASSFC, nOrders);
  }
  if (status == normalFiring || status == partialFiring) {
    share.gas = withMean(normal, nOrders);
  } else if (status == onlyCompression) {
    share.gas = withMean(misfiring, nOrders);
  }
  return share;
}

}  // namespace

void CALCULATE_DIESEL_FOURIERCOEFFICIENT(DIESEL_TABLE& table, std::int32_t iDiesel,
                                         const LOADCASEGENSET_TABLE& genset, std::int32_t iCylinder,
                                         bool isBankA) {
  const Cycle cycle(table);
  CurveMemory memory;
  storeMass(table.at(iDiesel), cycle);
  storeGas(table, iDiesel, genset, iCylinder, isBankA, cycle, memory);
}

void CALCULATE_DIESEL_FOURIERCOEFFICIENTS(DIESEL_TABLE& table, std::int32_t iDiesel,
                                          const LOADCASEGENSET_TABLE& genset) {
  const Cycle cycle(table);
  CurveMemory memory;
  storeMass(table.at(iDiesel), cycle);
  const DIESEL_RECORD& diesel = table.at(iDiesel);
  for (std::int32_t row = 1; row <= diesel.NCYLINDER; ++row) {
    storeGas(table, iDiesel, genset, row, true, cycle, memory);
    if (diesel.ISVENGINE) {
      storeGas(table, iDiesel, genset, row, false, cycle, memory);
    }
  }
}

std::vector<std::complex<double>> CALCULATE_DIESEL_CYLFOURIERCOEFFICIENTS(const DIESEL_TABLE& table,
                                                                          std::int32_t iDiesel,
                                                                          std::int32_t iCylinder) {
  const DIESEL_RECORD& diesel = table.at(iDiesel);
  const auto nOrders = static_cast<std::size_t>(GET_DIESEL_NCYLFOURIERCOEFFICIENTS(table));
  // An engine that no load case names has no stored pressures.
  const CylinderGas none;
  const auto stored = index(iCylinder);
  const CylinderGas& row =
      stored < diesel.GASFCPERCYLINDER.size() ? diesel.GASFCPERCYLINDER[stored] : none;
  BankShare total = bankShare(diesel, diesel.FIRINGSTATUSA[stored], row.NORMALGASFCBANKBANKA,
                              row.MISFIRINGGASFCBANKBANKA, nOrders);
  if (diesel.ISVENGINE) {
    BankShare bankB = bankShare(diesel, diesel.FIRINGSTATUSB[stored], row.NORMALGASFCBANKB,
                                row.MISFIRINGGASFCBANKB, nOrders);
    // The mass of bank B follows the bank angle, its gas the firing angles: where the banks don't
    // fire consecutively the two differ by a revolution.
    const double period = nOrders == results::kWholeOrders ? 360.0 : 720.0;
    const double shiftGas =
        ((diesel.FIRINGANGLEB[stored] - diesel.FIRINGANGLEA[stored]) / kPi) * 180.0;
    FOURIERCOEFFICIENTTRANSFORM(bankB.mass, bankB.mass, diesel.VANGLE, period, 0);
    FOURIERCOEFFICIENTTRANSFORM(bankB.gas, bankB.gas, shiftGas, period, 0);
    addTo(total.mass, bankB.mass);
    addTo(total.gas, bankB.gas);
  }
  const double radius = diesel.STROKE * 0.5;
  const double area = diesel.BORE * diesel.BORE * kPi * 0.25;
  const double omega = angularSpeed(diesel.SPEED);
  // The mean drives the ship, it doesn't shake it.
  std::vector<std::complex<double>> torque(nOrders);
  CYLINDEREXCITATION(torque, std::span(total.gas).subspan(1), std::span(total.mass).subspan(1),
                     radius, area, omega, diesel.RECIPMASS);
  return torque;
}

}  // namespace verenwick
