#include "Support/EveryKindModel.h"

#include <stdexcept>

#include "InputAndChecking/ImportInputFile.h"
#include "RunControl/Global_Parameter.h"
#include "Support/SolverRun.h"

namespace verenwick::test {
namespace {

constexpr const char* kShaftLine = R"(
INERTIA 201 1.0 10.0 0.0 0.0   ring of the viscous damper
INERTIA 202 1.0 20.0 0.0 0.0   its casing
INERTIA 203 1.0 30.0 0.0 0.0   cylinder row 1
INERTIA 204 1.0 40.0 0.0 0.0   cylinder row 2
INERTIA 205 1.0 50.0 0.0 0.0   flywheel, where all else hangs on
INERTIA 206 1.0 60.0 0.0 0.0   turning mass of the rubber damper
INERTIA 207 1.0 70.0 0.0 0.0   its drive plate
INERTIA 208 1.0 80.0 0.0 0.0   outer member of the steel spring damper
INERTIA 209 1.0 90.0 0.0 0.0   its inner member
INERTIA 210 1.0 100.0 0.0 0.0  propeller
INERTIA 211 1.0 110.0 0.0 0.0  generator
INERTIA 212 1.0 120.0 0.0 0.0  electric motor
INERTIA 213 1.0 130.0 0.0 0.0  gas turbine
INERTIA 214 1.0 140.0 0.0 0.0  steam turbine
INERTIA 215 1.0 150.0 0.0 0.0  centrifugal pump
INERTIA 216 1.0 160.0 0.0 0.0  reciprocating pump

SHAFT 301 201 202 1.0 1e6 0.0 0.0 200.0 100.0 0 0
SHAFT 302 202 203 1.0 1e6 0.0 0.0 200.0 100.0 0 0
SHAFT 303 203 204 1.0 1e6 0.0 0.0 200.0 100.0 1 17
SHAFT 304 204 205 1.0 1e6 0.0 0.0 200.0 100.0 0 0
SHAFT 305 205 207 1.0 1e6 0.0 0.0 200.0 100.0 0 0
SHAFT 306 207 206 1.0 1e6 0.0 0.0 200.0 100.0 0 0
SHAFT 307 205 209 1.0 1e6 0.0 0.0 200.0 100.0 0 0
SHAFT 308 209 208 1.0 1e6 0.0 0.0 200.0 100.0 0 0
SHAFT 309 205 210 1.0 1e6 0.0 0.0 200.0 100.0 0 0
SHAFT 310 205 211 1.0 1e6 0.0 0.0 200.0 100.0 0 0
SHAFT 311 205 212 1.0 1e6 0.0 0.0 200.0 100.0 0 0
SHAFT 312 205 213 1.0 1e6 0.0 0.0 200.0 100.0 0 0
SHAFT 313 205 214 1.0 1e6 0.0 0.0 200.0 100.0 0 0
SHAFT 314 205 215 1.0 1e6 0.0 0.0 200.0 100.0 0 0
SHAFT 315 205 216 1.0 1e6 0.0 0.0 200.0 100.0 0 0

VISCOUSDAMPER 11
202 201 1000.0 0
RUBBERDAMPER 12
206 207 100.0
STEELSPRINGDAMPER 13
208 209 100.0
LINEARCOUPLING 14
304 1000.0 1e6
PROGRESSIVECOUPLING 15
310 1000.0 1e5 2e5 3e5 4e5 5e5
GEISLINGERCOUPLING 16
309 1000.0 1e6 50.0 40.0
GEISLINGERDAMPING
WITHPRESSURIZED

DIESEL 17 MainEngine
1000.0 750.0 4 2 0.0 1 45.0 0 1.0
203 204
180.0 114.0
135.0 69.0
1 1
1 1
100.0 100.0
100.0 100.0
300.0 400.0 0.25 100.0 90.0 1 0 0
180.0 120.0 1.35 1.3 14.0 3.0 45.0
50.0 1.0 -2.0 50.0 120.0 300.0 560.0

RECIPROCATINGPUMP 18 Mud
500.0 750.0 1 0.0 0 0
216
0.0
0.0
100.0 200.0 0.2 10.0 1
1
3.0 0.0 0.0 0.0
10.0 0.0 0.0 0.0
ELECTRICMOTOR 19
212 500.0 750.0 0 0.0 2
1.0 0.0 -3.0 -4.0
1.0 1.0 1.0 1.0
GASTURBINE 20
213 500.0 750.0
STEAMTURBINE 21
214 500.0 750.0
PROPELLER 22
210 500.0 750.0 4 80.0 20.0 0
300.0 2000.0 0.8 0.6 1 100.0 0.0
SCHWANEKE 0.0 0.0 0.0 5.0 1.0 0.0 0
0
GENERATOR 23
211 500.0 750.0 4
1.0 2.0 3.0 4.0
1.0 1.0 1.0 1.0
CENTRIFUGALPUMP 24
215 500.0 750.0 1 0.0
7.0 0.0 0.0 0.0
1.0 0.0 0.0 0.0
)";

constexpr const char* kLoadCases = R"(
LOADCASE
RPM    17     18                19            20         21           22        23        24
       DIESEL RECIPROCATINGPUMP ELECTRICMOTOR GASTURBINE STEAMTURBINE PROPELLER GENERATOR CENTRIFUGALPUMP
250.0  100.0  50.0              50.0          50.0       50.0         50.0      100.0     50.0
500.0  200.0  100.0             100.0         100.0      100.0        100.0     200.0     100.0
750.0  300.0  150.0             150.0         150.0      150.0        150.0     300.0     150.0
)";

}  // namespace

std::string everyKindShaftLine() { return kShaftLine; }

std::string everyKindInput() { return everyKindShaftLine() + kLoadCases; }

ModelBundle everyKindModel() {
  const TemporaryDirectory directory;
  std::string path = directory.path().string();
  SETRESULTFILEDIR(path, static_cast<std::int32_t>(path.size()));
  ModelBundle model;
  if (!READINPUTFILE(directory.write("input.txt", everyKindInput()), model)) {
    throw std::runtime_error(readText(directory.file("Verenwick.log")));
  }
  return model;
}

}  // namespace verenwick::test
