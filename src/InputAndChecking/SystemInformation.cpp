#include "InputAndChecking/SystemInformation.h"

#include <array>
#include <string>
#include <utility>

#include "RunControl/Files.h"
#include "RunControl/Log.h"
#include "RunControl/RunStopped.h"
#include "results/RecordNumbers.h"

namespace verenwick {
namespace {

/// What is wrong with these files is no reason to withhold the calculation.
template <class Write>
void writeOrWarn(Write write) {
  try {
    write();
  } catch (const RunStopped& failure) {
    appendToLog("Warning: ", failure.what());
  }
}

constexpr std::array<std::string_view, 5> kFiringStatus = {
    "Normal firing", "Only compression", "Exhaust valve open", "Piston removed", "Partial firing"};

/// One row of the overview, or none for a status that has no name.
void writeCylinder(TextWriter& overview, const DIESEL_RECORD& engine, std::int32_t node, char bank,
                   std::int32_t status) {
  constexpr std::size_t kNameWidth = 20;
  constexpr std::size_t kIdWidth = 7;
  if (status < 1 || status > static_cast<std::int32_t>(kFiringStatus.size())) {
    return;
  }
  std::string row = " " + engine.NAME;
  row.resize(1 + kNameWidth, ' ');
  const std::string id = std::to_string(node);
  // An id too long for its column pushes the row to the right rather than losing digits.
  row.append(id.size() <= kIdWidth ? kIdWidth - id.size() : 1, ' ');
  row += id + "          " + bank + "       ";
  row += kFiringStatus[index(status)];
  overview.writeLine(row);
}

}  // namespace

void OUTPUTSYSTEMINFO(const ModelBundle& model) {
  using enum results::SystemCount;
  const std::array<std::pair<results::SystemCount, std::int32_t>, results::kSystemCounts> counts = {
      {{inertias, GET_MASS_NUMBER(model.mass)},
       {shafts, GET_SHAFT_NUMBER(model.shaft)},
       {viscousDampers, GET_VISCOUSDAMPER_NUMBER(model.viscousDamper)},
       {rubberDampers, GET_RUBBERDAMPER_NUMBER(model.rubberDamper)},
       {steelSpringDampers, GET_STEELSPRINGDAMPER_NUMBER(model.steelSpringDamper)},
       {linearCouplings, GET_LINEARCOUPLING_NUMBER(model.linearCoupling)},
       {progressiveCouplings, GET_PROGRESSIVECOUPLING_NUMBER(model.progressiveCoupling)},
       {diesels, GET_DIESEL_NUMBER(model.diesel)},
       {electricMotors, GET_ELECTRICMOTOR_NUMBER(model.electricMotor)},
       {gasTurbines, GET_GASTURBINE_NUMBER(model.gasTurbine)},
       {steamTurbines, GET_STEAMTURBINE_NUMBER(model.steamTurbine)},
       {propellers, GET_PROPELLER_NUMBER(model.propeller)},
       {generators, GET_GENERATOR_NUMBER(model.generator)},
       {loadCases, model.loadCaseSpeed.number()},
       {dieselOrders, GET_DIESEL_NCYLFOURIERCOEFFICIENTS(model.diesel)},
       {geislingerCouplings, GET_GEISLINGERCOUPLING_NUMBER(model.geislingerCoupling)},
       {centrifugalPumps, GET_CENTRIFUGALPUMP_NUMBER(model.centrifugalPump)},
       {reciprocatingPumps, GET_RECIPROCATINGPUMP_NUMBER(model.reciprocatingPump)}}};
  writeOrWarn([&] {
    DirectAccessFile file(results::resultFile("SystemInfo.bin"));
    for (const auto& [record, count] : counts) {
      file.write(static_cast<std::int64_t>(record), count);
    }
    file.close();
  });
}

void OUTPUTDIESELFIRINGSTATUS(const DIESEL_TABLE& diesel) {
  if (!diesel.isAllocated()) {
    return;
  }
  writeOrWarn([&] {
    TextWriter overview(resultFileAddress(results::resultFile("Overview.txt")), Opening::replace);
    overview.writeLine(" Engine                  Cyl       Bank       Firing Status");
    overview.writeLine(" ----------------------------------------------------------");
    for (std::int32_t i = 1; i <= GET_DIESEL_NUMBER(diesel); ++i) {
      const DIESEL_RECORD& engine = diesel.at(i);
      for (std::int32_t row = 0; row < engine.NCYLINDER; ++row) {
        const auto c = static_cast<std::size_t>(row);
        writeCylinder(overview, engine, engine.CYLINDERS[c], 'A', engine.FIRINGSTATUSA[c]);
        if (engine.ISVENGINE) {
          writeCylinder(overview, engine, engine.CYLINDERS[c], 'B', engine.FIRINGSTATUSB[c]);
        }
      }
    }
    overview.close();
  });
}

}  // namespace verenwick
