#include <gtest/gtest.h>

#include <sstream>

#include "Support/SolverRun.h"

namespace verenwick {
namespace {

/// A plant with every kind of component around one flywheel (inertia 5), and its dampers on the
/// engine's free end. The load cases are full load at 600 rpm and the cube of the speed at 480.
const std::string kPlant = R"(
INERTIA 1 1.0 20 0 0  ring of damper 1
INERTIA 2 1.0 10 0 0  casing of damper 1
INERTIA 21 1.0 20 0 0  ring of damper 2
INERTIA 22 1.0 10 0 0  casing of damper 2
INERTIA 31 1.0 20 0 0  ring of damper 3
INERTIA 32 1.0 10 0 0  casing of damper 3
INERTIA 3 1.0 80 0 50 cylinder 1
INERTIA 4 1.0 80 0 50 cylinder 2
INERTIA 5 1.0 500 0 0 flywheel
INERTIA 6 1.0 10 0 0  drive plate
INERTIA 7 1.0 20 0 0  turning mass
INERTIA 8 1.0 10 0 0  inner member
INERTIA 9 1.0 30 0 0  outer member
INERTIA 10 0.25 900 0 0 propeller 1
INERTIA 11 0.2 700 0 0  propeller 2
INERTIA 12 2.5 20 0 0 generator
INERTIA 13 2.0 15 0 0 motor
INERTIA 14 10.0 1 0 0 gas turbine
INERTIA 15 5.0 2 0 0  steam turbine
INERTIA 16 2.5 5 0 0  centrifugal pump
INERTIA 17 0.5 60 0 50 crank throws of the reciprocating pump
INERTIA 18 0.5 60 0 50

SHAFT 1 1 2 1.0 0.0 1500 0 0 0 0 0
SHAFT 2 22 2 1.0 8e7 0 100 0 0 0 0
SHAFT 3 21 22 1.0 5e4 700 0 0 0 0 0
SHAFT 4 32 22 1.0 8e7 0 100 0 0 0 0
SHAFT 5 31 32 1.0 6e4 800 0 0 0 0 0
SHAFT 6 32 3 1.0 8e7 0 100 0 0 0 0
SHAFT 7 3 4 1.0 8e7 0 100 0 0 1 1
SHAFT 8 4 5 1.0 8e7 0 100 200 0 0 0
SHAFT 9 5 6 1.0 8e7 0 100 0 0 0 0
SHAFT 10 6 7 1.0 82000 0 6.5 0 0 0 0
SHAFT 11 5 8 1.0 8e7 0 100 0 0 0 0
SHAFT 12 8 9 1.0 3e6 2400 0 0 0 0 0
SHAFT 13 5 10 0.25 1e6 0 10 150 0 0 0
SHAFT 14 5 11 0.2 1e6 0 100 150 0 0 0
SHAFT 15 5 12 2.5 1e5 0 8 100 0 0 0
SHAFT 16 5 13 2.0 4e5 0 5 100 0 0 0
SHAFT 17 5 14 10.0 1e5 0 100 50 0 0 0
SHAFT 18 5 15 5.0 2e5 0 100 60 0 0 0
SHAFT 19 5 16 2.5 2e5 0 100 80 0 0 0
SHAFT 20 5 17 0.5 1e7 0 100 180 0 0 0
SHAFT 21 17 18 0.5 1e7 0 100 180 0 0 0

VISCOUSDAMPER 1
2 1 1500 0
VISCOUSDAMPER 2
22 21 700 1
@DIR@/damping.txt
VISCOUSDAMPER 3
32 31 800 1
@DIR@/stiffness.txt
RUBBERDAMPER 1
7 6 60
STEELSPRINGDAMPER 1
9 8 2400
LINEARCOUPLING 1
13 50000 2e6
PROGRESSIVECOUPLING 1
16 4000 2e5 3e5 5e5 8e5 9e5
GEISLINGERCOUPLING 1
15 5000 1e5 78.53981634 40
GEISLINGERDAMPING
WITHPRESSURIZED
DIESEL 1 Engine
1000 600 4 2 0 0 0 0 1.2
3 4
0 360
0 0
1 1
0 0
100 100
100 100
400 500 0.25 80 90 1 0 0
150 100 1.35 1.3 15 3 45
45 0.8 -5 60 125 0 0
PROPELLER 1
10 600 150 4 700 200 0
400 2500 0.8 0.6 1 100 0
ARCHER 30 0 0 5 2 0 0
0
PROPELLER 2
11 200 120 5 500 200 0
400 2500 0.8 0.6 1 100 0
FRAHM 0 3 0 5 2 0 0
0
PROPELLERICE 2
0
@DIR@/ice.txt
ELECTRICMOTOR 1
13 200 1200 0 0 1
1 0 0 0
1 0 0 0
GENERATOR 1
12 400 1500 1
1 0 0 0
1 0 0 0
GASTURBINE 1
14 300 6000
STEAMTURBINE 1
15 100 3000
CENTRIFUGALPUMP 1
16 100 1500 1 0
1 0 0 0
1 0 0 0
RECIPROCATINGPUMP 1 Pump
500 400 2 0 0 0
17 18
0 180
0 0
100 200 0.2 30 1
1
1 0 0 0
5 0 0 0

LOADCASE
RPM 1 1 2 1 1 1 1 1 1
DIESEL PROPELLER PROPELLER ELECTRICMOTOR GENERATOR GASTURBINE STEAMTURBINE CENTRIFUGALPUMP RECIPROCATINGPUMP
600 1000 600   200   200   400   300   100  100  300
480 512  307.2 102.4 102.4 204.8 153.6 51.2 51.2 153.6
)";

/// An ice file of a five-bladed propeller at two speed ratios.
std::string iceFile() {
  std::ostringstream text;
  text << "1\n2\n3\n4\n0.5 1.0\n6\n7\n8\n0 1000 2000\n";
  for (const char* block : {"cosine", "sine"}) {
    text << "\n\n" << block << "\n\n";
    for (int order = 1; order <= 20; ++order) {
      text << order << " 100 200\n";
    }
  }
  return text.str();
}

// Engine: 500 kW a cylinder are a mean effective pressure of 500e3 / (5 / s x pi / 4 x 0.4^2 x 0.5)
// = 15.92 bar, over 90 % efficiency 17.68 bar. At 480 rpm the torque is 0.64 of the rated one:
// peak 150 (1 - 0.8 x 0.36), inlet 3 (1 - 1.28 x 0.36), compression 100 (1 - 1.32 x 0.36),
// mean indicated 1.592 + 0.64 (17.684 - 1.592).
// Propeller 1: torque 600e3 / (5 pi) = 38197 N m at 150 rpm; Archer 30 x 38197 / 150; 5 and 2 % of
// the torque. Propeller 2: Frahm 3 x 1666.7 / 120^2 x 91.25 x 120.
// Linear coupling: 2e6 / (10 x 5 pi). Progressive: 200e3 / (40 pi) = 1591.5 N m lies between 1000
// and 2000 N m, 3e5 + 2e5 x 0.59155; over 5 x 40 pi. Spring coupling: order 1 of 1500 rpm is twice
// the reference frequency of 78.54 rad/s: 1e5 (1.1 + 0.27 x 2), damping 0.7 x that / (50 pi).
// Dampers 2 and 3: 10 Hz and 8 Hz in their tables from 5 to 15 Hz. Rubber: 82000 / (6.5 x 20 pi).
// Reciprocating pump: 300e3 / (10 pi) = 9549 N m of 500e3 / (400 / 30 pi) = 11937 N m.
constexpr const char* kReport = R"(
Diesel   1
Case     Speed     Power     P.Max    P.Inlet   P.Comp       MIP       MEP
         [rpm]  [kW/cyl]     [bar]      [bar]    [bar]     [bar]     [bar]
--------------------------------------------------------------------------
   1     600.0     500.0     150.0       3.0     100.0      17.7      15.9
   2     480.0     256.0     106.8       1.6      52.5      11.9      10.2

Propeller   1
                                                    Propeller excitation
Case  Engine speed  Blade freq.   Power     Damping  1st order  2nd order
             [rpm]      [min-1]    [kW]   [Nms/rad]       [Nm]       [Nm]
-------------------------------------------------------------------------
   1         150.0        600.0   600.0   7.639E+03  1.910E+03  7.639E+02
   2         120.0        480.0   307.2   6.112E+03  1.222E+03  4.889E+02

Propeller   2
                              Propeller information
Case  Engine speed  Blade freq.   Power     Damping
             [rpm]      [min-1]    [kW]   [Nms/rad]
---------------------------------------------------
   1         120.0        600.0   200.0   3.802E+03
   2          96.0        480.0   102.4   3.042E+03

Electric motor   1
Case          Speed          Power
              [rpm]           [kW]
--------------------------------
   1         1200.0          200.0
   2          960.0          102.4

Generator   1
Case          Speed          Power
              [rpm]           [kW]
--------------------------------
   1         1500.0          400.0
   2         1200.0          204.8

Gas turbine   1
Case          Speed          Power
              [rpm]           [kW]
--------------------------------
   1         6000.0          300.0
   2         4800.0          153.6

Steam turbine   1
Case          Speed          Power
              [rpm]           [kW]
--------------------------------
   1         3000.0          100.0
   2         2400.0           51.2

Centrifugal pump   1
Case          Speed          Power
              [rpm]           [kW]
--------------------------------
   1         1500.0          100.0
   2         1200.0           51.2

Reciprocating pump   1
Case     Speed        Speed       Power       T_rpm       T_mcr     T_ratio
         [rpm]  [%MCRSpeed]    [kW/cyl]       [kNm]       [kNm]         [%]
--------------------------------------------------------------------------
   1     300.0         0.75       150.0         9.5        11.9        0.80
   2     240.0         0.60        76.8         6.1        11.9        0.51

Linear coupling   1
Note: The listed damping values are calculated basing on shaft order
Case          Speed       Stiffness       Damping
              [rpm]        [Nm/rad]     [Nms/rad]
-----------------------------------------------
   1          150.0     2.000E+006     1.273E+004
   2          120.0     2.000E+006     1.592E+004

Progressive coupling   1
Note: The listed damping values are calculated basing on shaft order
Case          Speed       Stiffness       Damping
              [rpm]        [Nm/rad]     [Nms/rad]
-----------------------------------------------
   1         1200.0     4.183E+005     6.658E+002
   2          960.0     3.037E+005     6.042E+002

Geislinger coupling   1
Note: The listed stiffness and damping values are calculated basing on shaft order
Case          Speed       Stiffness       Damping
              [rpm]        [Nm/rad]     [Nms/rad]
-----------------------------------------------
   1         1500.0     1.640E+005     7.308E+002
   2         1200.0     1.532E+005     8.534E+002

Viscous damper   1
Case          Speed       Stiffness       Damping
              [rpm]        [Nm/rad]     [Nms/rad]
-----------------------------------------------
   1          600.0     0.000E+000     1.500E+003
   2          480.0     0.000E+000     1.500E+003

Viscous damper   2
Note: The listed damping values are calculated basing on shaft order
Case          Speed       Stiffness       Damping
              [rpm]        [Nm/rad]     [Nms/rad]
-----------------------------------------------
   1          600.0     5.000E+004     1.500E+003
   2          480.0     5.000E+004     1.300E+003

Viscous damper   3
Note: The listed stiffness and damping values are calculated basing on shaft order
Case          Speed       Stiffness       Damping
              [rpm]        [Nm/rad]     [Nms/rad]
-----------------------------------------------
   1          600.0     2.000E+004     3.000E+002
   2          480.0     1.600E+004     3.400E+002

Rubber damper   1
Note: The listed damping values are calculated basing on shaft order
Case          Speed       Stiffness       Damping
              [rpm]        [Nm/rad]     [Nms/rad]
-----------------------------------------------
   1          600.0     8.200E+004     2.008E+002
   2          480.0     8.200E+004     2.510E+002

Steel spring damper   1
Case          Speed       Stiffness       Damping
              [rpm]        [Nm/rad]     [Nms/rad]
-----------------------------------------------
   1          600.0     3.000E+006     2.400E+003
   2          480.0     3.000E+006     2.400E+003
)";

TEST(LoadCaseReport, StatesEveryKindOfComponentUnderItsHeader) {
  test::SolverRun run;
  run.directory().write("damping.txt", "Hz Nms/rad\n5 1000\n15 2000\n");
  run.directory().write("stiffness.txt", "Hz Nms/rad Nm/rad\n5 400 1e4\n15 200 3e4\n");
  run.directory().write("ice.txt", iceFile());
  run.start(kPlant, 3);
  ASSERT_EQ(run.status(), 1) << run.log();
  EXPECT_EQ(test::readText(run.results() / "LoadCaseSetting.txt"), kReport);
}

}  // namespace
}  // namespace verenwick
