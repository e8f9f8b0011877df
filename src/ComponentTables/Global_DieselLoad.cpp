#include <algorithm>
#include <cmath>

#include "ComponentTables/Global_Diesel.h"
#include "Excitation/Engine_functions.h"
#include "RunControl/Constants.h"

// Operating point and damping of diesel engines.
namespace verenwick {
namespace {

/// A power law of the speed that the order makes of the engine's, for an engine that has one.
double formulaDamping(const DIESEL_TABLE& table, std::int32_t iDiesel, double speedFactor,
                      double DIESEL_RECORD::*coefficient, double DIESEL_RECORD::*exponent) {
  if (iDiesel < 1) {
    return 0.0;
  }
  const DIESEL_RECORD& diesel = table.at(iDiesel);
  if (!diesel.ISFORMULADAMPING) {
    return 0.0;
  }
  return diesel.*coefficient * std::pow(speedFactor * diesel.SPEED, diesel.*exponent);
}

}  // namespace

void CALCULATE_DIESEL_TORQUE(DIESEL_TABLE& table, std::int32_t iDiesel) {
  DIESEL_RECORD& diesel = table.at(iDiesel);
  diesel.TORQUE = diesel.POWER / angularSpeed(diesel.SPEED);
}

void CALCULATE_DIESEL_LOADPERCENTAGE(DIESEL_TABLE& table, std::int32_t iDiesel) {
  DIESEL_RECORD& diesel = table.at(iDiesel);
  diesel.LOADPERCENTAGE = diesel.TORQUE / diesel.MCRTORQUE;
}

double CALCULATE_DIESEL_NORMALCYLPOWER(const DIESEL_TABLE& table, std::int32_t iDiesel) {
  const DIESEL_RECORD& diesel = table.at(iDiesel);
  if (diesel.NCYLINDER < 1) {
    return 0.0;
  }
  const double powerA =
      *std::max_element(diesel.CYLPOWERA.begin(), diesel.CYLPOWERA.begin() + diesel.NCYLINDER);
  const double powerB =
      *std::max_element(diesel.CYLPOWERB.begin(), diesel.CYLPOWERB.begin() + diesel.NCYLINDER);
  return diesel.ISVENGINE ? std::max(powerA, powerB) : powerA;
}

double CALCULATE_DIESEL_MEPMCR(const DIESEL_TABLE& table, std::int32_t iDiesel,
                               bool useFiringCount) {
  const DIESEL_RECORD& diesel = table.at(iDiesel);
  const std::int32_t cylinders = useFiringCount ? GET_DIESEL_NFIRINGCYLINDER(table, iDiesel)
                                                : diesel.NCYLINDER * (diesel.ISVENGINE ? 2 : 1);
  return CALCULATE_MEP(diesel.MCRPOWER / cylinders, diesel.MCRSPEED, diesel.BORE, diesel.NSTROKE,
                       diesel.STROKE);
}

void CALCULATE_DIESEL_LOADCASESETTING(DIESEL_TABLE& table, std::int32_t iDiesel,
                                      const LOADCASEGENSET_TABLE& genset, std::int32_t iCylinder,
                                      bool isBankA) {
  DIESEL_RECORD& diesel = table.at(iDiesel);
  const double ratedPower = diesel.MCRPOWER / diesel.NCYLINDER * (diesel.ISVENGINE ? 0.5 : 1.0);
  const double power = atFiringStatus(table, iDiesel, iCylinder, isBankA, diesel.POWERPERCYL);
  if (diesel.ISTHEORETICALPRESURE) {
    diesel.PCHARGEAIRRPM = CALCULATE_PINLET(ratedPower, diesel.MCRSPEED, power, diesel.SPEED,
                                            diesel.PCHARGEAIR, diesel.NSTROKE);
    diesel.PCOMPRPM =
        CALCULATE_PCOMP(ratedPower, diesel.MCRSPEED, power, diesel.SPEED, diesel.PCOMP);
    diesel.PMAXRPM = CALCULATE_PMAX(ratedPower, diesel.MCRSPEED, power, diesel.SPEED, diesel.PMAX,
                                    diesel.PCOMPRPM, diesel.NSTROKE);
    if (diesel.ISGENSET) {
      const std::int32_t id = GET_DIESEL_ID(table, iDiesel);
      diesel.PCOMPRPM = GET_LOADCASEGENSET_PRESSURECOMP(genset, id, diesel.ILOADCASE);
      diesel.PMAXRPM = GET_LOADCASEGENSET_PRESSUREMAX(genset, id, diesel.ILOADCASE);
    }
  }
  // The same as CALCULATE_MEP but for its pi.
  const double mep = power / ((diesel.SPEED / (diesel.NSTROKE * 60.0 * 0.5)) * kPi * diesel.BORE *
                              diesel.BORE * 0.25 * diesel.STROKE);
  // Taken for a cylinder that makes up for the others, whichever this one is.
  const double mepFiring =
      atFiringStatus(table, iDiesel, 0, isBankA, CALCULATE_DIESEL_MEPMCR(table, iDiesel, true));
  const double mepAll = CALCULATE_DIESEL_MEPMCR(table, iDiesel, false);
  const double mipMax = CALCULATE_MIP_MAX(mepAll, diesel.ME, diesel.MIPLIMIT);
  diesel.MEPRPM = mep;
  diesel.MIPRPM = CALCULATE_MIP(mep, mepFiring, diesel.LOADPERCENTAGE, diesel.ME, mipMax);
}

double CALCULATE_DIESEL_DAMPING_CYLINDER(const DIESEL_TABLE& table, std::int32_t iDiesel,
                                         double speedFactor) {
  return formulaDamping(table, iDiesel, speedFactor, &DIESEL_RECORD::CYLABSDAMPING,
                        &DIESEL_RECORD::EXPCYLABSDAMPING);
}

double CALCULATE_DIESEL_DAMPING_CRANKTHROW(const DIESEL_TABLE& table, std::int32_t iDiesel,
                                           double speedFactor) {
  return formulaDamping(table, iDiesel, speedFactor, &DIESEL_RECORD::CRANKRELDAMPING,
                        &DIESEL_RECORD::EXPCRANKRELDAMPING);
}

}  // namespace verenwick
