#pragma once

#include <cstdint>
#include <vector>

#include "ComponentTables/Global_Diesel.h"
#include "RunControl/Constants.h"

/// Engines set to an operating point, as a load case sets them.
namespace verenwick::sample {

/// The six-cylinder four-stroke engine of Mendes, Meirelles and Zampieri (2008), firing order
/// 1-5-3-6-2-4; power and pressures are chosen to give its peak pressure of 152 bar.
inline DIESEL_RECORD sixCylinderFourStroke() {
  DIESEL_RECORD d;
  d.NSTROKE = 4;
  d.NCYLINDER = 6;
  d.MCRPOWER = 200e3;
  d.MCRSPEED = 2000.0;
  d.MCRTORQUE = d.MCRPOWER / angularSpeed(d.MCRSPEED);
  d.MIPLIMIT = 1.2;
  d.BORE = 0.105;
  d.STROKE = 0.137;
  d.CONRODRATIO = 0.0685 / 0.207;
  d.RECIPMASS = 2.521;
  d.ME = 0.9;
  d.ISTHEORETICALPRESURE = true;
  d.PMAX = 151e5;
  d.PCOMP = 110e5;
  d.COMPRATIO = 16.0;
  d.PCHARGEAIR = 3.2e5;
  d.TCHARGEAIR = 45.0;
  d.TE = 0.45;
  d.FORMFACTOR = 0.8;
  d.ANGLEIGNITION = -8.0;
  d.ANGLEENDOFCOMB = 60.0;
  d.ANGLEEXHAUSTSTART = 130.0;
  d.FIRINGSTATUSA.fill(normalFiring);
  d.FIRINGPERCENTA.fill(100.0);
  const std::vector<double> firingDegrees{0, 480, 240, 600, 120, 360};
  for (std::size_t row = 0; row < firingDegrees.size(); ++row) {
    d.FIRINGANGLEA[row] = firingDegrees[row] * kPi / 180.0;
    d.CYLINDERS[row] = static_cast<std::int32_t>(row) + 3;
  }
  return d;
}

/// A five-cylinder two-stroke engine of a ship: 6350 kW at 99 rpm, firing order 1-4-3-2-5, with the
/// published peak pressure of 160.7 bar.
inline DIESEL_RECORD fiveCylinderTwoStroke() {
  DIESEL_RECORD d;
  d.NSTROKE = 2;
  d.NCYLINDER = 5;
  d.MCRPOWER = 6350e3;
  d.MCRSPEED = 99.0;
  d.MCRTORQUE = d.MCRPOWER / angularSpeed(d.MCRSPEED);
  d.MIPLIMIT = 1.2;
  d.BORE = 0.5;
  d.STROKE = 2.05;
  d.CONRODRATIO = 0.5;
  d.RECIPMASS = 2475.0;
  d.ME = 0.95;
  d.ISTHEORETICALPRESURE = true;
  d.PMAX = 159.7e5;
  d.PCOMP = 140e5;
  d.COMPRATIO = 18.0;
  d.PCHARGEAIR = 3.6e5;
  d.TCHARGEAIR = 40.0;
  d.TE = 0.5;
  d.FORMFACTOR = 0.8;
  d.ANGLEIGNITION = 2.0;
  d.ANGLEENDOFCOMB = 45.0;
  d.ANGLEEXHAUSTSTART = 113.0;
  d.ANGLEINLETSTART = 140.0;
  d.ANGLEINLETCLOSE = 220.0;
  d.FIRINGSTATUSA.fill(normalFiring);
  d.FIRINGPERCENTA.fill(100.0);
  const std::vector<double> firingDegrees{0, 216, 144, 72, 288};
  for (std::size_t row = 0; row < firingDegrees.size(); ++row) {
    d.FIRINGANGLEA[row] = firingDegrees[row] * kPi / 180.0;
    d.CYLINDERS[row] = static_cast<std::int32_t>(row) + 3;
  }
  return d;
}

/// Makes a V engine of a row engine: bank B follows bank A by the V angle, in degrees.
inline void addBankB(DIESEL_RECORD& d, double vAngle) {
  d.ISVENGINE = true;
  d.VANGLE = vAngle;
  d.FIRINGSTATUSB = d.FIRINGSTATUSA;
  d.FIRINGPERCENTB = d.FIRINGPERCENTA;
  for (std::size_t row = 0; row < d.FIRINGANGLEB.size(); ++row) {
    d.FIRINGANGLEB[row] = d.FIRINGANGLEA[row] + vAngle * kPi / 180.0;
  }
  d.MCRPOWER *= 2.0;
  d.MCRTORQUE *= 2.0;
}

inline DIESEL_TABLE tableOf(const std::vector<DIESEL_RECORD>& engines) {
  DIESEL_TABLE table;
  ALLOCATE_DIESEL_TABLE(table, static_cast<std::int32_t>(engines.size()));
  for (std::size_t i = 0; i < engines.size(); ++i) {
    const auto position = static_cast<std::int32_t>(i) + 1;
    table.at(position) = engines[i];
    SET_DIESEL_ID(table, position, position);
  }
  return table;
}

/// Sets an engine to a speed in rpm and a load as a fraction of the rated torque.
inline void setLoad(DIESEL_TABLE& table, std::int32_t iDiesel, double rpm, double load) {
  DIESEL_RECORD& d = table.at(iDiesel);
  d.ILOADCASE = 1;
  d.SPEED = rpm;
  d.POWER = load * d.MCRTORQUE * angularSpeed(rpm);
  d.POWERPERCYL = d.POWER / GET_DIESEL_NFIRINGCYLINDER(table, iDiesel);
  d.CYLPOWERA.fill(d.POWERPERCYL);
  d.CYLPOWERB.fill(d.POWERPERCYL);
  CALCULATE_DIESEL_TORQUE(table, iDiesel);
  CALCULATE_DIESEL_LOADPERCENTAGE(table, iDiesel);
}

}  // namespace verenwick::sample
