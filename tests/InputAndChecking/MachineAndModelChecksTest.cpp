#include <gtest/gtest.h>

#include "Support/DataCheckCases.h"
#include "Support/EveryKindModel.h"
#include "Support/SolverRun.h"

namespace verenwick::test {
namespace {

TEST(DataChecking, ReciprocatingPump) {
  const auto pump = [](Model & m) -> auto& { return m.reciprocatingPump.at(1); };
  expectLogs({
      {[](Model& m) { addCopy(m.reciprocatingPump); },
       {" Error: ReciprocatingPump 18 has a index (18) used by another one"}},
      {[&](Model& m) { pump(m).MCRPOWER = 0.0; },
       {" Error: ReciprocatingPump 18 has a zero or negative mcr power (0)"}},
      {[&](Model& m) { pump(m).MCRSPEED = 0.0; },
       {" Error: ReciprocatingPump 18 has a zero or negative mcr speed (0)"}},
      {[&](Model& m) { pump(m).NCYLINDER = -2; },
       {" Error: Reciprocating pump 18 has a zero or negative number of cylinders (-2)"}},
      {[&](Model& m) { pump(m).CYLINDERS[0] = 99; },
       {" Error: Reciprocating pump 18 has cylinder node not listed in Inertia table (99)"}},
      {[&](Model& m) { pump(m).BORE = 0.0; },
       {" Error: Reciprocating pump 18 has a zero or negative cylinder diameter (0)"}},
      {[&](Model& m) { pump(m).STROKELENGTH = 0.0; },
       {" Error: Reciprocating pump 18 has a zero or negative stroke length (0)"}},
      {[&](Model& m) { pump(m).CONRODRATIO = 1.5; },
       {" Error: Reciprocating pump 18 has a non-positive or no less than 1.0 connecting rod ratio "
        "(1.5)"}},
      {[&](Model& m) { pump(m).RECIPMASS = -1.0; },
       {" Error: Reciprocating pump 18 has a negative reciprocating mass (-1)"}},
      {[&](Model& m) { pump(m).ISSIMPLIFIEDPRESSURE = false; },
       {" Error: Reciprocating pump 18 must specify the address of harmonic component file",
        " Error: Reciprocating pump 18 has a harmonic file unaccessable ()"}},
      {[&](Model& m) {
         pump(m).ISSIMPLIFIEDPRESSURE = false;
         pump(m).PUMPHARMONICFILE = "/nowhere/pump.txt";
       },
       {" Error: Reciprocating pump 18 has a harmonic file unaccessable (/nowhere/pump.txt)",
        " Error occurs when reading /nowhere/pump.txt in line1"}},
  });
}

/// The checks that machines on one inertia share.
template <class Machine>
void expectMachineLogs(ComponentTable<Machine> Model::*table, std::int32_t Machine::*node,
                       const std::string& idKind, const std::string& kind,
                       const std::string& nodeName) {
  const auto machine = [=](Model& m) -> Machine& { return (m.*table).at(1); };
  const std::string it = " Error: " + kind;
  expectLogs({
      {[=](Model& m) { addCopy(m.*table); },
       {" Error: " + idKind + " has a index (" + idKind.substr(idKind.size() - 2) +
        ") used by another one"}},
      {[=](Model& m) { machine(m).*node = 99; },
       {it + " has a " + nodeName + " node not listed in Inertia table (99)"}},
      {[=](Model& m) { machine(m).MCRPOWER = 0.0; },
       {it + " has a zero or negative mcr power (0)"}},
      {[=](Model& m) { machine(m).MCRSPEED = -0.25; },
       {it + " has a zero or negative mcr speed (-0.25)"}},
  });
}

TEST(DataChecking, RotatingMachines) {
  expectMachineLogs(&Model::electricMotor, &ELECTRICMOTOR_RECORD::ELECTRICMOTORNODE,
                    "Electric motor 19", "Eletric motor 19", "electric motor");
  expectMachineLogs(&Model::gasTurbine, &GASTURBINE_RECORD::GASTURBINENODE, "Gas turbine 20",
                    "Gas turbine 20", "electric motor");
  expectMachineLogs(&Model::steamTurbine, &STEAMTURBINE_RECORD::STEAMTURBINENODE,
                    "Steam turbine 21", "Steam turbine 21", "electric motor");
  expectMachineLogs(&Model::generator, &GENERATOR_RECORD::GENERATORNODE, "Generator 23",
                    "Generator 23", "electric motor");
  expectMachineLogs(&Model::centrifugalPump, &CENTRIFUGALPUMP_RECORD::CENTRIFUGALPUMPNODE,
                    "Centrifugal pump 24", "Centrifugal pump 24", "Centrifugal pump");
  // Orders in use only; the motor of the plant has two below zero that aren't.
  expectLogs({
      {[](Model& m) { m.electricMotor.at(1).MOTORORDERNUMBER = 3; },
       {" Error: Eletric motor 19 has a negative order (-3)"}},
      {[](Model& m) {
         m.generator.at(1).GENERATORORDER = {-1.5, 2.0, 3.0, -6.0};
       },
       {" Error: Generator 23 has a negative order (-1.5)",
        " Error: Generator 23 has a negative order (-6)"}},
      {[](Model& m) { m.centrifugalPump.at(1).CENTRIFUGALPUMPORDER[0] = -7.0; },
       {" Error: Centrifugal pump 24 has a negative order (-7)"}},
  });
}

TEST(DataChecking, Propeller) {
  const auto propeller = [](Model & m) -> auto& { return m.propeller.at(1); };
  const auto method = [&](std::int32_t number, double PROPELLER_RECORD::*field, double value) {
    return [=](Model& m) {
      propeller(m).DAMPINGMETHOD = number;
      propeller(m).*field = value;
    };
  };
  constexpr auto kArcher = &PROPELLER_RECORD::ARCHERNUMBER;
  constexpr auto kFrahm = &PROPELLER_RECORD::FRAHMNUMBER;
  constexpr auto kKnuckle = &PROPELLER_RECORD::KNUCKLEPOINT;
  expectLogs({
      {[](Model& m) { addCopy(m.propeller); },
       {" Error: Propeller 22 has a index (22) used by another one"}},
      {[&](Model& m) { propeller(m).PROPELLERNODE = 99; },
       {" Error: Propeller 22 has a propeller node not listed in Inertia table (99)"}},
      {[&](Model& m) { propeller(m).MCRPOWER = 0.0; },
       {" Error: Propeller 22 has a zero or negative mcr power (0)"}},
      {[&](Model& m) { propeller(m).MCRSPEED = 0.0; },
       {" Error: Propeller 22 has a zero or negative mcr speed (0)"}},
      {[&](Model& m) { propeller(m).NBLADE = 0; },
       {" Error: Propeller 22 has a zero or negative number of blades (0)"}},
      {[&](Model& m) { propeller(m).DB = -1.0; },
       {" Error: Propeller 22 has a negative boss diameter (-1)"}},
      {[&](Model& m) { propeller(m).DI = -1.0; },
       {" Error: Propeller 22 has a negative propeller diameter (-1)"}},
      {[&](Model& m) { propeller(m).PITCHRATIO = -1.0; },
       {" Error: Propeller 22 has a negative pitch ratio (-1)"}},
      {[&](Model& m) { propeller(m).EXPAREARATIO = 2.0; }, {}},
      {[&](Model& m) { propeller(m).EXPAREARATIO = -2.0; }, {}},
      {method(2, kArcher, 19.5),
       {" Error: Propeller 22 has a Archer number no greater than 20.0 or no less than 50.0"
        "(19.5)"}},
      {method(2, kArcher, 20.0), {}},
      {method(2, kArcher, 50.5),
       {" Error: Propeller 22 has a Archer number no greater than 20.0 or no less than 50.0"
        "(50.5)"}},
      {method(3, kArcher, 1.0),  // another method's number isn't looked at
       {" Error: Propeller 22 has a Frahm number no greater than 1.0 or no less than 5.0(0)"}},
      {method(3, kFrahm, 5.0), {}},
      {method(5, kKnuckle, 100.0), {}},
      {method(5, kKnuckle, 110.0),
       {" Error: Propeller 22 has a KnucklePoint no greater than 0 or no less than 1.2(110)"}},
      {method(5, kKnuckle, -1.0),
       {" Error: Propeller 22 has a KnucklePoint no greater than 0 or no less than 1.2(-1)"}},
      {[&](Model& m) { propeller(m).PITCHPERCENT = 1.25; },
       {" Error: Propeller 22 has a negative or larger than 100% pitch percent (1.25)"}},
      {[&](Model& m) { propeller(m).DYNMAGNIFIER = -1.0; },
       {" Error: Propeller 22 has a negative dynamic magnifier (-1)"}},
      {[&](Model& m) { propeller(m).ABSDAMPING = -1.0; },
       {" Error: Propeller 22 has a negative absolute damping (-1)"}},
      {[&](Model& m) { propeller(m).TORQUEPERCENT1 = -0.5; },
       {" Error: Propeller 22 has a negative 1st order torque amplitude (-0.5)"}},
      {[&](Model& m) { propeller(m).TORQUEPERCENT2 = -0.5; },
       {" Error: Propeller 22 has a negative 2nd order torque amplitude (-0.5)"}},
      {[&](Model& m) { propeller(m).TORQUEPERCENT1 = propeller(m).TORQUEPERCENT2 = 0.0; },
       {" Warning: Propeller excitation data missing for Propeller 22's 1st order excitation",
        " Warning: Propeller excitation data missing for Propeller 22's 2nd order excitation"}},
  });
}

TEST(DataChecking, InertiaAndShaft) {
  const auto inertia = [](Model & m) -> auto& { return m.mass.at(5); };
  const auto shaft = [](Model & m) -> auto& { return m.shaft.at(15); };
  expectLogs({
      {[](Model& m) { addCopy(m.mass); },
       {" Error: Inertia 201 has a index (201) used by another one"}},
      {[&](Model& m) { inertia(m).RPMRATIO = 0.0; },
       {" Error: Inertia 205 has a zero or negative rpm ratio (0)"}},
      {[&](Model& m) { inertia(m).INERTIA = 0.0; },
       {" Error: Inertia 205 has a zero or negative Inertia (0)"}},
      {[&](Model& m) { inertia(m).ABSDAMPING = -1.0; },
       {" Error: Inertia 205 has a negative AbsDamping (-1)"}},
      {[&](Model& m) { inertia(m).DYNMAGNIFIER = -1.0; },
       {" Error: Inertia 205 has a negative DynMagnifier (-1)"}},

      {[](Model& m) { addCopy(m.shaft); },
       {" Error: Shaft 301 has a index (301) used by another one"}},
      {[&](Model& m) { shaft(m).ORGNODE = 99; },
       {" Error: Shaft 315 has an orginal node not listed in Inertia table (99)"}},
      {[&](Model& m) { shaft(m).DESNODE = 99; },
       {" Error: Shaft 315 has a destinational node not listed in Inertia table (99)"}},
      {[&](Model& m) { shaft(m).RPMRATIO = -1.0; },
       {" Error: Shaft 315 has a zero or negative rpm ratio (-1)"}},
      {[&](Model& m) { shaft(m).STIFFNESS = 0.0; },
       {" Error: Shaft 315 has a zero or negative Stiffness (0)"}},
      {[&](Model& m) { shaft(m).ABSDAMPING = -1.0; },
       {" Error: Shaft 315 has a negative AbsDamping (-1)"}},
      {[&](Model& m) { shaft(m).DYNMAGNIFIER = -1.0; },
       {" Error: Shaft 315 has a negative DynMagnifier (-1)"}},
      {[&](Model& m) { shaft(m).OUTERDI = -0.5; },
       {" Error: Shaft 315 has a negative outer diameter (-0.5)",
        " Error: Shaft 315 has a outer diameter less than or equal to its inner diameter "
        "(-0.5<= 0.1)"}},
      {[&](Model& m) { shaft(m).INNERDI = -0.5; },
       {" Error: Shaft 315 has a negative inner diameter (-0.5)"}},
      {[&](Model& m) { shaft(m).OUTERDI = 0.1; },
       {" Error: Shaft 315 has a outer diameter less than or equal to its inner diameter "
        "(0.1<= 0.1)"}},
      {[&](Model& m) { shaft(m).OUTERDI = 0.0; }, {}},
  });
}

TEST(DataChecking, ShaftLineMustBeATree) {
  const std::string apart =
      " Error: Not all the inertias are connneted through a certain set of shafts";
  const std::string ringed = " Error: There is at least one cycle in the inertia-shaft system";
  expectLogs({
      // Shaft 315 goes off the pump: one inertia alone, then beside shaft 314.
      {[](Model& m) { m.shaft.at(15).DESNODE = impeller; }, {apart}},
      {[](Model& m) {
         addCopy(m.shaft);
         m.shaft.setId(16, 316);
         m.shaft.at(16) = m.shaft.at(15);
       },
       {ringed}},
      // Any fault of a table keeps the graph from being looked at.
      {[](Model& m) {
         m.shaft.at(15).DESNODE = impeller;
         m.shaft.at(15).STIFFNESS = 0.0;
       },
       {" Error: Shaft 315 has a zero or negative Stiffness (0)"}},
  });
}

TEST(DataChecking, EmptyModelNamesBothTables) {
  Model model;
  EXPECT_EQ(check(model, 0).log,
            (Lines{" Error: No inertia is defined", " Error: No stiffness is defined"}));
}

TEST(DataChecking, EveryMachineNeedsALoadCaseColumn) {
  const Lines missing = {" Error: Diesel 17 does't have load case setting",
                         " Error: Propeller 22 does't have load case setting",
                         " Error: Generator 23 does't have load case setting",
                         " Error: Centrifugal pump 24 does't have load case setting",
                         " Error: Reciprocating pump 18 does't have load case setting",
                         " Error: SteamTurbine 21 does't have load case setting",
                         " Error: GasTurbine 20 does't have load case setting",
                         " Error: ElectricMotor 19 does't have load case setting"};
  for (const std::int32_t mode : {-1, 0, 1, 2, 3, 4, 7}) {
    Model model = everyKindModel();
    model.loadCase.allocate(14);
    EXPECT_EQ(check(model, mode).log, mode == 2 || mode == 3 ? missing : Lines()) << mode;
  }
  expectLogs({
      // Kind and id together make the column.
      {[](Model& m) { m.loadCase.at(1).COMPONENTTYPE = ComponentType::generator; }, {missing[0]}},
      {[](Model& m) { m.loadCase.at(6).COMPONENTID = 17; }, {missing[1]}},
      {[](Model& m) { m.loadCase.deallocate(); }, {}},
      {[](Model& m) { m.loadCaseSpeed.set(2, 0.0); }, {" Warning: Load case 2 has a speed of 0"}},
  });
}

TEST(DataChecking, GensetEngineWithoutPressuresInALoadCase) {
  const auto genset = [](double second) {
    return [=](Model& m) {
      m.diesel.at(1).ISGENSET = true;
      m.loadCaseGenset.allocate(3);
      for (std::int32_t i = 1; i <= 3; ++i) {
        m.loadCaseGenset.at(i) = {.DIESELID = 17, .PRESSUREMAX = i == 2 ? second : 15e6};
      }
    };
  };
  const auto missing = [](const std::string& loadCase) {
    return " Warning: Diesel 17 has no pressures of load case " + loadCase + " in Genset.txt";
  };
  expectLogs({
      {[](Model& m) { m.diesel.at(1).ISGENSET = true; },
       {missing("1"), missing("2"), missing("3")}},
      {genset(0.0), {missing("2")}},
      {genset(16e6), {}},
      // Harmonic files take the place of the pressures.
      {[](Model& m) {
         m.diesel.at(1).ISGENSET = true;
         m.diesel.at(1).ISTHEORETICALPRESURE = false;
         m.diesel.at(1).NORMALHARMONICFILE = "/nowhere/normal.txt";
       },
       {" Error: Diesel 17 has a normal firing harmonic file unaccessable (/nowhere/normal.txt)",
        " Error occurs when reading /nowhere/normal.txt in line1"}},
  });
}

TEST(DataChecking, AllFaultsOfAModelAreNamedInOrder) {
  expectLogs({{[](Model& m) {
                 m.shaft.at(15).RPMRATIO = 0.0;
                 m.shaft.at(15).DYNMAGNIFIER = -1.0;
                 m.mass.at(16).INERTIA = 0.0;
                 m.centrifugalPump.at(1).MCRSPEED = 0.0;
                 m.generator.at(1).MCRSPEED = 0.0;
                 m.propeller.at(1).TORQUEPERCENT1 = 0.0;
                 m.steamTurbine.at(1).MCRSPEED = 0.0;
                 m.gasTurbine.at(1).MCRSPEED = 0.0;
                 m.electricMotor.at(1).MCRSPEED = 0.0;
                 m.reciprocatingPump.at(1).BORE = 0.0;
                 m.diesel.at(1).BORE = 0.0;
                 m.diesel.at(1).MCRSPEED = 0.0;
                 m.geislingerCoupling.at(1).OILVISCOSITY = 0.0;
                 m.progressiveCoupling.at(1).SHAFTNODE = 99;
                 m.linearCoupling.at(1).SHAFTNODE = 99;
                 m.steelSpringDamper.at(1).ABSDAMPING = -1.0;
                 m.rubberDamper.at(1).ABSDAMPING = -1.0;
                 m.viscousDamper.at(1).ABSDAMPING = -1.0;
                 m.loadCase.at(1).COMPONENTID = 99;
               },
               {" Error: Viscous damper 11 has a negative AbsDamping (-1)",
                " Error: Rubber damper 12 has a negative AbsDamping (-1)",
                " Error: Steel spring damper 13 has a negative AbsDamping (-1)",
                " Error: Linear coupling 14 has a shaft node not listed in Shaft table (99)",
                " Error: Progressive coupling 15 has a shaft node not listed in Shaft table (99)",
                " Error: Geislinger coupling 16 has a zero or negative Oil Viscosity (0)",
                " Error: Diesel 17 has a zero or negative mcr speed (0)",
                " Error: Diesel 17 has a zero or negative cylinder diameter (0)",
                " Error: Reciprocating pump 18 has a zero or negative cylinder diameter (0)",
                " Error: Eletric motor 19 has a zero or negative mcr speed (0)",
                " Error: Gas turbine 20 has a zero or negative mcr speed (0)",
                " Error: Steam turbine 21 has a zero or negative mcr speed (0)",
                " Warning: Propeller excitation data missing for Propeller 22's 1st order "
                "excitation",
                " Error: Generator 23 has a zero or negative mcr speed (0)",
                " Error: Centrifugal pump 24 has a zero or negative mcr speed (0)",
                " Error: Inertia 216 has a zero or negative Inertia (0)",
                " Error: Shaft 315 has a zero or negative rpm ratio (0)",
                " Error: Shaft 315 has a negative DynMagnifier (-1)",
                " Error: Diesel 17 does't have load case setting"}}});
}

TEST(DataChecking, SharedIdsNameEveryEarlierRecord) {
  const std::string words = " Error: Generator 23 has a index (23) used by another one";
  expectLogs(
      {{[](Model& m) {
          addCopy(m.generator);
          addCopy(m.generator);
          m.generator.at(2).MCRSPEED = 0.0;
        },
        {words, " Error: Generator 23 has a zero or negative mcr speed (0)", words, words}}});
  // 1 + 2 + ... + 199 matches among 200 records.
  Model model = everyKindModel();
  for (int i = 1; i < 200; ++i) {
    addCopy(model.generator);
  }
  const Lines log = check(model).log;
  ASSERT_EQ(log.size(), 10001U);
  EXPECT_EQ(log[9999], words);
  EXPECT_EQ(log[10000], " Error: Generator indices are used by another one in 9900 more cases");
}

TEST(DataChecking, RepairsTheLinkOfAViscousDamperInEveryMode) {
  for (const std::int32_t mode : {0, 1, 2, 3, 7}) {
    for (const double stiffness : {0.0, -5.0, 1e-9}) {
      Model model = everyKindModel();
      model.shaft.at(1).STIFFNESS = stiffness;
      const CheckOutcome outcome = check(model, mode);
      EXPECT_TRUE(outcome.isSound);
      EXPECT_EQ(outcome.log, Lines());
      EXPECT_EQ(model.shaft.at(1).STIFFNESS, stiffness > 0.0 ? stiffness : 9.999999974752427e-07);
    }
  }
}

}  // namespace
}  // namespace verenwick::test
