#include "Support/EveryKindModel.h"

#include <numbers>
#include <utility>

namespace verenwick::test {
namespace {

/// Sizes a table for one record and gives it an id.
template <class Table>
auto& oneRecord(Table& table, std::int32_t id) {
  table.allocate(1);
  table.setId(1, id);
  return table.at(1);
}

void addInertias(MASS_TABLE& mass) {
  mass.allocate(16);
  for (std::int32_t i = 1; i <= 16; ++i) {
    mass.setId(i, 200 + i);
    mass.at(i).INERTIA = 10.0 * i;
    mass.at(i).COMPONENTID = 200 + i;
  }
  mass.at(GET_MASS_IMASS(mass, ring)).MASSTYPE = MassType::viscousDamperRing;
}

/// Everything hangs on the flywheel, the engine by its own line.
void addShafts(SHAFT_TABLE& shaft) {
  constexpr std::pair<Inertia, Inertia> kEnds[] = {
      {ring, casing},           {casing, cylinder1},        {cylinder1, cylinder2},
      {cylinder2, flywheel},    {flywheel, drivePlate},     {drivePlate, turningMass},
      {flywheel, innerMember},  {innerMember, outerMember}, {flywheel, screw},
      {flywheel, alternator},   {flywheel, motor},          {flywheel, gasTurbine},
      {flywheel, steamTurbine}, {flywheel, impeller},       {flywheel, pumpCylinder}};
  shaft.allocate(15);
  std::int32_t position = 0;
  for (const auto& [org, des] : kEnds) {
    ++position;
    shaft.setId(position, 300 + position);
    SHAFT_RECORD& record = shaft.at(position);
    record.ORGNODE = org;
    record.DESNODE = des;
    record.STIFFNESS = 1e6;
    record.OUTERDI = 0.2;
    record.INNERDI = 0.1;
    record.COMPONENTID = 300 + position;
  }
}

void mark(SHAFT_TABLE& shaft, Shaft id, ShaftType type, ComponentType owner, std::int32_t ownerId) {
  SHAFT_RECORD& record = shaft.at(GET_SHAFT_ISHAFT(shaft, id));
  record.SHAFTTYPE = type;
  record.COMPONENTTYPE = owner;
  record.COMPONENTID = ownerId;
}

void addDampersAndCouplings(ModelBundle& m) {
  auto& viscous = oneRecord(m.viscousDamper, 11);
  viscous.CASINGNODE = casing;
  viscous.RINGNODE = ring;
  viscous.ABSDAMPING = 1000.0;
  auto& rubber = oneRecord(m.rubberDamper, 12);
  rubber.TURNINGMASSNODE = turningMass;
  rubber.DRIVEPLATENODE = drivePlate;
  auto& spring = oneRecord(m.steelSpringDamper, 13);
  spring.OUTERMEMBERNODE = outerMember;
  spring.INNERMEMBERNODE = innerMember;
  auto& linear = oneRecord(m.linearCoupling, 14);
  linear.SHAFTNODE = linearShaft;
  linear.NOMINALSTIFFNESS = 1e6;
  auto& progressive = oneRecord(m.progressiveCoupling, 15);
  progressive.SHAFTNODE = progressiveShaft;
  progressive.NOMINALTORQUE = {0.0, 250.0, 500.0, 750.0, 1000.0};
  progressive.NOMINALSTIFFNESS = {1e5, 2e5, 3e5, 4e5, 5e5};
  auto& geislinger = oneRecord(m.geislingerCoupling, 16);
  geislinger.SHAFTNODE = geislingerShaft;
  geislinger.NOMINALTORQUE = 1000.0;
  geislinger.STATICSTIFFNESS = 1e6;
  geislinger.CHARACTERISTICFREQUENCY = 50.0;
  geislinger.OILVISCOSITY = 40.0;
  using enum ComponentType;
  mark(m.shaft, viscousLink, ShaftType::viscousDamperLink, viscousDamper, 11);
  mark(m.shaft, rubberLink, ShaftType::rubberDamperLink, rubberDamper, 12);
  mark(m.shaft, springLink, ShaftType::steelSpringDamperLink, steelSpringDamper, 13);
  mark(m.shaft, linearShaft, ShaftType::linearCoupling, linearCoupling, 14);
  mark(m.shaft, progressiveShaft, ShaftType::progressiveCoupling, progressiveCoupling, 15);
  mark(m.shaft, geislingerShaft, ShaftType::geislingerCoupling, geislingerCoupling, 16);
}

/// A V engine of two rows on the pressure model.
void addDiesel(DIESEL_TABLE& table) {
  auto& engine = oneRecord(table, 17);
  engine.NAME = "MainEngine";
  engine.NSTROKE = 4;
  engine.MCRPOWER = 1e6;
  engine.MCRSPEED = 750.0;
  engine.NCYLINDER = 2;
  engine.CYLINDERS[0] = cylinder1;
  engine.CYLINDERS[1] = cylinder2;
  engine.ISVENGINE = true;
  engine.VANGLE = 45.0;
  engine.VEEFIRINGTYPE = 0;
  engine.FIRINGANGLEA = {std::numbers::pi, 2.0};
  engine.FIRINGANGLEB = {std::numbers::pi * 0.75, 2.0 - std::numbers::pi * 0.25};
  engine.FIRINGSTATUSA = {1, 1};
  engine.FIRINGSTATUSB = {1, 1};
  engine.BORE = 0.3;
  engine.STROKE = 0.4;
  engine.CONRODRATIO = 0.25;
  engine.RECIPMASS = 100.0;
  engine.ME = 0.9;
  engine.ISTHEORETICALPRESURE = true;
  engine.PMAX = 1.8e7;
  engine.PCOMP = 1.2e7;
  engine.COMPRATIO = 14.0;
  engine.PCHARGEAIR = 3e5;
  engine.TE = 0.5;
  engine.ANGLEEXHAUSTSTART = 120.0;
}

template <class Machine>
void rate(Machine& machine) {
  machine.MCRPOWER = 5e5;
  machine.MCRSPEED = 750.0;
}

void addMachines(ModelBundle& m) {
  auto& pump = oneRecord(m.reciprocatingPump, 18);
  rate(pump);
  pump.NCYLINDER = 1;
  pump.CYLINDERS[0] = pumpCylinder;
  pump.BORE = 0.1;
  pump.STROKELENGTH = 0.2;
  pump.CONRODRATIO = 0.2;
  pump.ISSIMPLIFIEDPRESSURE = true;
  auto& electric = oneRecord(m.electricMotor, 19);
  rate(electric);
  electric.ELECTRICMOTORNODE = motor;
  electric.MOTORORDERNUMBER = 2;
  electric.MOTORORDER = {1.0, 0.0, -3.0, -4.0};
  auto& gas = oneRecord(m.gasTurbine, 20);
  rate(gas);
  gas.GASTURBINENODE = gasTurbine;
  auto& steam = oneRecord(m.steamTurbine, 21);
  rate(steam);
  steam.STEAMTURBINENODE = steamTurbine;
  auto& propeller = oneRecord(m.propeller, 22);
  rate(propeller);
  propeller.PROPELLERNODE = screw;
  propeller.NBLADE = 4;
  propeller.DAMPINGMETHOD = 1;
  propeller.PITCHPERCENT = 1.0;
  propeller.TORQUEPERCENT1 = 0.05;
  propeller.TORQUEPERCENT2 = 0.01;
  auto& generator = oneRecord(m.generator, 23);
  rate(generator);
  generator.GENERATORNODE = alternator;
  generator.GENERATORORDERNUMBER = 4;
  generator.GENERATORORDER = {1.0, 2.0, 3.0, 4.0};
  auto& centrifugal = oneRecord(m.centrifugalPump, 24);
  rate(centrifugal);
  centrifugal.CENTRIFUGALPUMPNODE = impeller;
  centrifugal.CENTRIFUGALPUMPORDERNUMBER = 1;
  centrifugal.CENTRIFUGALPUMPORDER = {7.0, 0.0, 0.0, 0.0};
}

void addLoadCases(ModelBundle& m) {
  using enum ComponentType;
  constexpr std::pair<ComponentType, std::int32_t> kColumns[] = {
      {diesel, 17},       {reciprocatingPump, 18}, {electricMotor, 19}, {gasTurbine, 20},
      {steamTurbine, 21}, {propeller, 22},         {generator, 23},     {centrifugalPump, 24}};
  m.loadCase.allocate(14);
  std::int32_t column = 0;
  for (const auto& [type, id] : kColumns) {
    ++column;
    m.loadCase.at(column).COMPONENTTYPE = type;
    m.loadCase.at(column).COMPONENTID = id;
  }
  m.loadCaseSpeed.allocate(3);
  m.loadCasePower.allocate(3);
  for (std::int32_t i = 1; i <= 3; ++i) {
    m.loadCaseSpeed.set(i, 250.0 * i);
  }
}

}  // namespace

ModelBundle everyKindModel() {
  ModelBundle model;
  addInertias(model.mass);
  addShafts(model.shaft);
  addDampersAndCouplings(model);
  addDiesel(model.diesel);
  addMachines(model);
  addLoadCases(model);
  return model;
}

}  // namespace verenwick::test
