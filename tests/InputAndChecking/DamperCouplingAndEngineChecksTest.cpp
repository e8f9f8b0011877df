#include <gtest/gtest.h>

#include "Support/DataCheckCases.h"
#include "Support/EveryKindModel.h"

namespace verenwick::test {
namespace {

TEST(DataChecking, SoundModelLeavesNothingInTheLog) {
  expectLogs({{[](Model&) {}, {}}});
}

TEST(DataChecking, ViscousDamper) {
  const auto damper = [](Model & m) -> auto& { return m.viscousDamper.at(1); };
  const auto link = [](Model & m) -> auto& { return m.shaft.at(1); };
  expectLogs({
      {[](Model& m) { addCopy(m.viscousDamper); },
       {" Error: Viscous damper 11 has a index (11) used by another one"}},
      {[&](Model& m) { damper(m).CASINGNODE = 99; },
       {" Error: Viscous damper 11 has a casing node not listed in Inertia table (99)"}},
      {[&](Model& m) { damper(m).RINGNODE = 99; },
       {" Error: Viscous damper 11 has a ring node not listed in Inertia table (99)"}},
      {[&](Model& m) { damper(m).ABSDAMPING = -0.5; },
       {" Error: Viscous damper 11 has a negative AbsDamping (-0.5)"}},
      {[&](Model& m) { link(m).STIFFNESS = damper(m).ABSDAMPING = 0.0; },
       {" Error: Viscous damper 11 has zero AbsDamping and Stiffness"}},
      {[&](Model& m) { m.shaft.at(2).ORGNODE = ring; },
       {" Error: Viscous damper 11 has the ring linked to other inertia"}},
      {[&](Model& m) { link(m).COMPONENTID = 12; },
       {" Error: Viscous damper 11 has a link not marked as its own, Shaft (301)"}},
      {[&](Model& m) { link(m).SHAFTTYPE = ShaftType::plain; },
       {" Error: Viscous damper 11 has a link not marked as its own, Shaft (301)"}},
      {[](Model& m) { m.mass.at(1).MASSTYPE = MassType::plain; },
       {" Error: Viscous damper 11 has a ring not marked as such, Inertia (201)"}},
      // The files of all dampers are read where the first damper with a file is checked.
      {[&](Model& m) {
         damper(m).ISCUSTOMDAMPING = true;
         damper(m).CUSTOMDAMPINGFILE = "/nowhere/damping.txt";
         addCopy(m.viscousDamper);
         m.rubberDamper.at(1).ABSDAMPING = -1.0;
       },
       {" Error occurs when reading /nowhere/damping.txt in line 1",
        " Error: Viscous damper 11 has a index (11) used by another one",
        " Error: Rubber damper 12 has a negative AbsDamping (-1)"}},
  });
}

TEST(DataChecking, RubberDamper) {
  const auto damper = [](Model & m) -> auto& { return m.rubberDamper.at(1); };
  expectLogs({
      {[](Model& m) { addCopy(m.rubberDamper); },
       {" Error: Rubber damper 12 has a index (12) used by another one"}},
      {[&](Model& m) { damper(m).TURNINGMASSNODE = 99; },
       {" Error: Rubber damper 12 has a turning node not listed in Inertia table (99)"}},
      {[&](Model& m) { damper(m).DRIVEPLATENODE = 99; },
       {" Error: Rubber damper 12 has a drive plate node not listed in Inertia table (99)"}},
      {[&](Model& m) { damper(m).ABSDAMPING = -1e-12; },
       {" Error: Rubber damper 12 has a negative AbsDamping (-1e-12)"}},
      {[](Model& m) { m.shaft.at(9).ORGNODE = turningMass; },
       {" Error: Rubber damper 12 has the turning mass linked to other inertia"}},
      {[](Model& m) { m.shaft.at(6).COMPONENTTYPE = ComponentType::steelSpringDamper; },
       {" Warning: Rubber damper 12 has a link not marked as its own, Shaft (306)"}},
  });
}

TEST(DataChecking, SteelSpringDamper) {
  const auto damper = [](Model & m) -> auto& { return m.steelSpringDamper.at(1); };
  expectLogs({
      {[](Model& m) { addCopy(m.steelSpringDamper); },
       {" Error: Steel spring damper 13 has a index (13) used by another one"}},
      {[&](Model& m) { damper(m).OUTERMEMBERNODE = 99; },
       {" Error: Steel spring damper 13 has a outer member node not listed in Inertia table (99)"}},
      {[&](Model& m) { damper(m).INNERMEMBERNODE = 99; },
       {" Error: Steel spring damper 13 has a inner member node not listed in Inertia table (99)"}},
      {[&](Model& m) { damper(m).ABSDAMPING = -1.0; },
       {" Error: Steel spring damper 13 has a negative AbsDamping (-1)"}},
      {[](Model& m) { m.shaft.at(9).ORGNODE = outerMember; },
       {" Error: Steel spring damper 13 has the outer member linked to other inertia"}},
      {[](Model& m) { m.shaft.at(8).SHAFTTYPE = ShaftType::rubberDamperLink; },
       {" Warning: Steel spring damper 13 has a link not marked as its own, Shaft (308)"}},
  });
}

TEST(DataChecking, Couplings) {
  const auto linear = [](Model & m) -> auto& { return m.linearCoupling.at(1); };
  const auto progressive = [](Model & m) -> auto& { return m.progressiveCoupling.at(1); };
  const auto geislinger = [](Model & m) -> auto& { return m.geislingerCoupling.at(1); };
  expectLogs({
      {[](Model& m) { addCopy(m.linearCoupling); },
       {" Error: Linear coupling 14 has a index (14) used by another one"}},
      {[&](Model& m) { linear(m).SHAFTNODE = 99; },
       {" Error: Linear coupling 14 has a shaft node not listed in Shaft table (99)"}},
      {[&](Model& m) { linear(m).NOMINALSTIFFNESS = 0.0; },
       {" Error: Linear coupling 14 has a zero or negative nominal stiffness (0)"}},
      {[](Model& m) { m.shaft.at(4).COMPONENTID = 15; },
       {" Warning: Linear coupling 14 has a link not marked as its own, Shaft (304)"}},

      {[](Model& m) { addCopy(m.progressiveCoupling); },
       {" Error: Progressive coupling 15 has a index (15) used by another one"}},
      {[&](Model& m) { progressive(m).SHAFTNODE = 99; },
       {" Error: Progressive coupling 15 has a shaft node not listed in Shaft table (99)"}},
      {[&](Model& m) { progressive(m).NOMINALTORQUE = {}; },
       {" Error: Progressive coupling 15 has a zero or negative nominal torque (0)"}},
      {[&](Model& m) { progressive(m).NOMINALSTIFFNESS[4] = -1.0; },
       {" Error: Progressive coupling 15 has a negative nominal stiffness"}},
      {[&](Model& m) { progressive(m).NOMINALSTIFFNESS = {}; }, {}},
      {[](Model& m) { m.shaft.at(10).SHAFTTYPE = ShaftType::plain; },
       {" Warning: Progressive coupling 15 has a link not marked as its own, Shaft (310)"}},

      {[](Model& m) { addCopy(m.geislingerCoupling); },
       {" Error: Geislinger coupling 16 has a index (16) used by another one"}},
      {[&](Model& m) { geislinger(m).SHAFTNODE = 99; },
       {" Error: Geislinger coupling 16 has a shaft node not listed in Shaft table (99)"}},
      {[&](Model& m) { geislinger(m).NOMINALTORQUE = -2.5; },
       {" Error: Geislinger coupling 16 has a zero or negative nominal torque (-2.5)"}},
      {[&](Model& m) { geislinger(m).STATICSTIFFNESS = 0.0; },
       {" Error: Geislinger coupling 16 has a zero or negative Static Stiffness (0)"}},
      {[&](Model& m) { geislinger(m).CHARACTERISTICFREQUENCY = 0.0; },
       {" Error: Geislinger coupling 16 has a zero or negative Characteristic Frequency (0)"}},
      {[&](Model& m) { geislinger(m).OILVISCOSITY = 0.0; },
       {" Error: Geislinger coupling 16 has a zero or negative Oil Viscosity (0)"}},
      {[](Model& m) { m.shaft.at(9).COMPONENTTYPE = ComponentType::linearCoupling; },
       {" Warning: Geislinger coupling 16 has a link not marked as its own, Shaft (309)"}},
  });
}

TEST(DataChecking, Diesel) {
  const auto engine = [](Model & m) -> auto& { return m.diesel.at(1); };
  expectLogs({
      {[](Model& m) { addCopy(m.diesel); },
       {" Error: Diesel 17 has a index (17) used by another one"}},
      {[&](Model& m) { engine(m).NSTROKE = 3; },
       {" Error: Diesel 17 has a number of stroke not equal to 2 or 4 (3)"}},
      {[&](Model& m) { engine(m).NSTROKE = 2; }, {}},
      {[&](Model& m) { engine(m).MCRPOWER = 0.0; },
       {" Error: Diesel 17 has a zero or negative mcr power (0)"}},
      {[&](Model& m) { engine(m).MCRSPEED = -750.0; },
       {" Error: Diesel 17 has a zero or negative mcr speed (-750)"}},
      {[&](Model& m) { engine(m).NCYLINDER = 0; },
       {" Error: Diesel 17 has a zero or negative number of cylinders (0)",
        " Error: Diesel 17 has no normal firing cylinders"}},
      {[&](Model& m) {
         engine(m).CYLINDERS = {98, 99};
       },
       {" Error: Diesel 17 has cylinder node not listed in Inertia table (98)",
        " Error: Diesel 17 has cylinder node not listed in Inertia table (99)"}},
      {[&](Model& m) { engine(m).BORE = 0.0; },
       {" Error: Diesel 17 has a zero or negative cylinder diameter (0)"}},
      {[&](Model& m) { engine(m).STROKE = 0.0; },
       {" Error: Diesel 17 has a zero or negative stroke length (0)"}},
      {[&](Model& m) { engine(m).CONRODRATIO = 0.0; },
       {" Error: Diesel 17 has a non-positive or no less than 1.0 connecting rod ratio (0)"}},
      {[&](Model& m) { engine(m).CONRODRATIO = 1.0; }, {}},
      {[&](Model& m) { engine(m).CONRODRATIO = 1.01; },
       {" Error: Diesel 17 has a non-positive or no less than 1.0 connecting rod ratio (1.01)"}},
      {[&](Model& m) { engine(m).RECIPMASS = -1.0; },
       {" Error: Diesel 17 has a negative reciprocating mass (-1)"}},
      {[&](Model& m) { engine(m).ME = 0.0; },
       {" Error: Diesel 17 has a zero, negative or larger than 100% mechanical efficiency (0)"}},
      {[&](Model& m) { engine(m).ME = 1.1; },
       {" Error: Diesel 17 has a zero, negative or larger than 100% mechanical efficiency (1.1)"}},
      {[&](Model& m) {
         engine(m).FIRINGSTATUSA = engine(m).FIRINGSTATUSB = {2, 5};
       },
       {" Error: Diesel 17 has no normal firing cylinders"}},
      {[&](Model& m) { engine(m).CYLINDERS[1] = engine(m).CYLINDERS[0]; },
       {" Warning: Diesel 17 has more than one cylinder row on Inertia (" +
        std::to_string(everyKindModel().diesel.at(1).CYLINDERS[0]) + ")"}},
      // Bank B fires, but only a V engine has one.
      {[&](Model& m) { engine(m).FIRINGSTATUSA = {}; }, {}},
      {[&](Model& m) {
         engine(m).FIRINGSTATUSA = {};
         engine(m).ISVENGINE = false;
       },
       {" Error: Diesel 17 has no normal firing cylinders"}},
      {[&](Model& m) { engine(m).PMAX = engine(m).PCOMP; },
       {" Error: Diesel 17 has a maximum pressure no greater than compression pressure "
        "(1.2e+07<= 1.2e+07)"}},
      {[&](Model& m) { engine(m).PCOMP = -1.0; },
       {" Error: Diesel 17 has a negative compression pressure (-1)"}},
      {[&](Model& m) { engine(m).COMPRATIO = 0.75; },
       {" Error: Diesel 17 has a no greater than 1.0 compression ratio (0.75)"}},
      {[&](Model& m) { engine(m).COMPRATIO = 1.0; }, {}},
      {[&](Model& m) { engine(m).PCHARGEAIR = -1.0; },
       {" Error: Diesel 17 has a negative charge air pressure (-1)"}},
      {[&](Model& m) { engine(m).TE = 0.0; },
       {" Error: Diesel 17 has a zero, negative or larger than 100% thermal efficiency (0)"}},
      {[&](Model& m) { engine(m).TE = 1.5; },
       {" Error: Diesel 17 has a zero, negative or larger than 100% thermal efficiency (1.5)"}},
      {[&](Model& m) { engine(m).ANGLEEXHAUSTSTART = 90.9; },
       {" Error: Diesel 17 has a exhaust start angle no greater than 90 or no less than 180"
        "(90.9)"}},
      {[&](Model& m) { engine(m).ANGLEEXHAUSTSTART = 179.9; }, {}},
      {[&](Model& m) { engine(m).ANGLEEXHAUSTSTART = 1e300; },
       {" Error: Diesel 17 has a exhaust start angle no greater than 90 or no less than 180"
        "(1e+300)"}},
  });
}

TEST(DataChecking, DieselHarmonicFiles) {
  const auto engine = [](Model & m) -> auto& { return m.diesel.at(1); };
  const auto files = [&](Model& m, const std::string& normal, const std::string& misfiring) {
    engine(m).ISTHEORETICALPRESURE = false;
    engine(m).PMAX = 0.0;  // the pressure model's values aren't looked at
    engine(m).NORMALHARMONICFILE = normal;
    engine(m).MISHARMONICFILE = misfiring;
  };
  expectLogs({
      {[&](Model& m) { files(m, "  ", ""); },
       {" Error: Diesel 17 must specify the address of harmonic component file for normal firing "
        "cylinders"}},
      {[&](Model& m) {
         files(m, "", "");
         engine(m).FIRINGSTATUSB[1] = 2;
       },
       {" Error: Diesel 17 must specify the address of harmonic component file for normal firing "
        "cylinders",
        " Error: Diesel 17 must specify the address of harmonic component file for misfiring "
        "cylinders"}},
      // The loader is tried all the same, and has its say after the checks.
      {[&](Model& m) { files(m, " /nowhere/normal.txt", ""); },
       {" Error: Diesel 17 has a normal firing harmonic file unaccessable (/nowhere/normal.txt)",
        " Error occurs when reading /nowhere/normal.txt in line1"}},
      {[&](Model& m) {
         files(m, "", "/nowhere/mis.txt");
         engine(m).FIRINGSTATUSA = engine(m).FIRINGSTATUSB = {2, 2};
       },
       {" Error: Diesel 17 has no normal firing cylinders",
        " Error: Diesel 17 has a misfiring harmonic file unaccessable (/nowhere/mis.txt)",
        " Error occurs when reading /nowhere/mis.txt in line1"}},
  });
}

TEST(DataChecking, BankAnglesWarnPerCylinder) {
  const auto shiftBy = [](double offset, std::int32_t type, double turn = 0.0) {
    return [=](Model& m) {
      DIESEL_RECORD& engine = m.diesel.at(1);
      engine.VEEFIRINGTYPE = type;
      engine.FIRINGANGLEB[0] -= offset + turn;
      engine.FIRINGANGLEB[1] -= turn;
    };
  };
  constexpr double kTurn = 2.0 * 3.141592653589793;
  const std::string first = " Warning: Bank B of Diesel 17 Cylinder No. 1";
  const std::string second = " Warning: Bank B of Diesel 17 Cylinder No. 2";
  expectLogs({
      {shiftBy(0.05, 0), {}},
      {shiftBy(0.2, 0), {first + " doesn't fire consecutively after Bank A"}},
      {shiftBy(-0.2, 0), {first + " doesn't fire consecutively after Bank A"}},
      {shiftBy(0.0, 1),
       {first + " doesn't fire non-consecutively after Bank A",
        second + " doesn't fire non-consecutively after Bank A"}},
      {shiftBy(0.05, 1, kTurn), {}},
      {shiftBy(0.0, 2), {}},
      {shiftBy(0.0, 2, kTurn), {}},
      {shiftBy(0.2, 2), {first + " neither fire consecutively nor non-consecutively after Bank A"}},
      {[&](Model& m) {
         shiftBy(0.2, 0)(m);
         m.diesel.at(1).ISVENGINE = false;
       },
       {}},
  });
}

}  // namespace
}  // namespace verenwick::test
