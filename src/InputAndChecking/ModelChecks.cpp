#include <array>
#include <set>
#include <utility>

#include "InputAndChecking/CheckList.h"

namespace verenwick {
namespace {

using LoadColumns = std::set<std::pair<ComponentType, std::int32_t>>;

/// Every machine of a kind needs a column in the load case table.
template <class Table>
void checkColumns(const LoadColumns& columns, std::string_view kind, ComponentType type,
                  const Table& table, CheckLog& log) {
  for (std::int32_t i = 1; i <= table.number(); ++i) {
    const std::int32_t id = table.id(i);
    RecordChecks(log, kind, id)
        .error(!columns.contains({type, id}), " does't have load case setting");
  }
}

}  // namespace

void checkInertias(const ModelBundle& model, CheckLog& log) {
  if (!model.mass.isAllocated()) {
    log.error("No inertia is defined");
  }
  checkRecords(log, "Inertia", model.mass, [&](RecordChecks& it, std::int32_t i) {
    const MASS_RECORD& inertia = model.mass.at(i);
    it.error(inertia.RPMRATIO <= 0.0, " has a zero or negative rpm ratio (", inertia.RPMRATIO);
    it.error(inertia.INERTIA <= 0.0, " has a zero or negative Inertia (", inertia.INERTIA);
    it.error(inertia.ABSDAMPING < 0.0, " has a negative AbsDamping (", inertia.ABSDAMPING);
    it.error(inertia.DYNMAGNIFIER < 0.0, " has a negative DynMagnifier (", inertia.DYNMAGNIFIER);
  });
}

void checkShafts(const ModelBundle& model, CheckLog& log) {
  if (!model.shaft.isAllocated()) {
    log.error("No stiffness is defined");
  }
  checkRecords(log, "Shaft", model.shaft, [&](RecordChecks& it, std::int32_t i) {
    const SHAFT_RECORD& shaft = model.shaft.at(i);
    it.error(!isInertia(model, shaft.ORGNODE), " has an orginal node not listed in Inertia table (",
             shaft.ORGNODE);
    it.error(!isInertia(model, shaft.DESNODE),
             " has a destinational node not listed in Inertia table (", shaft.DESNODE);
    it.error(shaft.RPMRATIO <= 0.0, " has a zero or negative rpm ratio (", shaft.RPMRATIO);
    it.error(shaft.STIFFNESS <= 0.0, " has a zero or negative Stiffness (", shaft.STIFFNESS);
    it.error(shaft.ABSDAMPING < 0.0, " has a negative AbsDamping (", shaft.ABSDAMPING);
    it.error(shaft.DYNMAGNIFIER < 0.0, " has a negative DynMagnifier (", shaft.DYNMAGNIFIER);
    it.error(shaft.OUTERDI < 0.0, " has a negative outer diameter (", shaft.OUTERDI);
    it.error(shaft.INNERDI < 0.0, " has a negative inner diameter (", shaft.INNERDI);
    it.error(shaft.OUTERDI != 0.0 && !(shaft.OUTERDI > shaft.INNERDI),
             " has a outer diameter less than or equal to its inner diameter (", shaft.OUTERDI,
             "<=", shaft.INNERDI);
  });
}

void checkShaftLine(const ModelBundle& model, CheckLog& log) {
  const GraphCheck line = MASSSHAFTGRAPHCHECK(model.mass, model.shaft);
  if (!line.isConnected) {
    log.error("Not all the inertias are connneted through a certain set of shafts");
  } else if (line.hasCycle) {
    log.error("There is at least one cycle in the inertia-shaft system");
  }
}

void checkLoadCaseColumns(const ModelBundle& model, CheckLog& log) {
  LoadColumns columns;
  for (std::int32_t i = 1; i <= GET_LOADCASE_NCOMPONENT(model.loadCase); ++i) {
    columns.emplace(GET_LOADCASE_COMPONENTTYPE(model.loadCase, i),
                    GET_LOADCASE_COMPONENTID(model.loadCase, i));
  }
  using enum ComponentType;
  checkColumns(columns, "Diesel", diesel, model.diesel, log);
  checkColumns(columns, "Propeller", propeller, model.propeller, log);
  checkColumns(columns, "Generator", generator, model.generator, log);
  checkColumns(columns, "Centrifugal pump", centrifugalPump, model.centrifugalPump, log);
  checkColumns(columns, "Reciprocating pump", reciprocatingPump, model.reciprocatingPump, log);
  checkColumns(columns, "SteamTurbine", steamTurbine, model.steamTurbine, log);
  checkColumns(columns, "GasTurbine", gasTurbine, model.gasTurbine, log);
  checkColumns(columns, "ElectricMotor", electricMotor, model.electricMotor, log);
}

void checkLoadCaseSpeeds(const ModelBundle& model, CheckLog& log) {
  for (std::int32_t i = 1; i <= model.loadCaseSpeed.number(); ++i) {
    if (model.loadCaseSpeed.at(i) == 0.0) {
      log.warning("Load case", i, " has a speed of 0");
    }
  }
}

void checkGensetPressures(const ModelBundle& model, CheckLog& log) {
  std::int32_t warnings = 0;
  for (std::int32_t d = 1; d <= model.diesel.number(); ++d) {
    const DIESEL_RECORD& engine = model.diesel.at(d);
    const std::int32_t id = model.diesel.id(d);
    const bool takesPressures = engine.ISGENSET && engine.ISTHEORETICALPRESURE;
    for (std::int32_t i = 1; takesPressures && i <= model.loadCaseSpeed.number(); ++i) {
      if (GET_LOADCASEGENSET_PRESSUREMAX(model.loadCaseGenset, id, i) <= 0.0) {
        log.warning("Diesel", id, " has no pressures of load case", i, " in Genset.txt");
        if (++warnings == kMostMessages) {
          log.warning("More may be missing in Genset.txt");
          return;
        }
      }
    }
  }
}

}  // namespace verenwick
