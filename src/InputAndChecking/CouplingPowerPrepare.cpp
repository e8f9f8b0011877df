#include "InputAndChecking/CouplingPowerPrepare.h"

#include <set>
#include <utility>

#include "Matrices/MassStffnessAndDampingMatrix.h"
#include "ShaftLineGraph/BranchPower.h"

namespace verenwick {
namespace {

/// Ids of the two inertias that a component lies between.
using Nodes = std::pair<std::int32_t, std::int32_t>;

/// Adds load case columns for what lies between two inertias.
class ColumnWriter {
 public:
  explicit ColumnWriter(ModelBundle& model)
      : model_(model),
        graph_(model.mass, model.shaft),
        power_(model, PumpPower::pumpPower),
        columns_(GET_LOADCASE_COMPONENTNUMBER(model.loadCase)) {
    for (std::int32_t i = 1; i <= GET_LOADCASE_NCOMPONENT(model.loadCase); ++i) {
      components_.emplace(GET_LOADCASE_COMPONENTTYPE(model.loadCase, i),
                          GET_LOADCASE_COMPONENTID(model.loadCase, i));
    }
  }

  /// Adds a column for each record of a table that has none.
  template <class Table, class NodesOf>
  void add(ComponentType type, const Table& table, NodesOf nodesOf) {
    for (std::int32_t i = 1; i <= table.number(); ++i) {
      if (components_.emplace(type, table.id(i)).second) {
        addColumn(type, table.id(i), nodesOf(i));
      }
    }
  }

 private:
  void addColumn(ComponentType type, std::int32_t id, const Nodes& nodes) {
    const TwoBranches sides =
        UNDIRECTEDGRAPH_TWOBRANCH(graph_, GET_MASS_IMASS(model_.mass, nodes.first),
                                  GET_MASS_IMASS(model_.mass, nodes.second));
    if (++columns_ > GET_LOADCASE_NCOMPONENT(model_.loadCase)) {
      model_.loadCase.append();
    }
    SET_LOADCASE_COMPONENTTYPE(model_.loadCase, columns_, type);
    SET_LOADCASE_COMPONENTID(model_.loadCase, columns_, id);
    for (std::int32_t loadCase = 1; loadCase <= model_.loadCaseSpeed.number(); ++loadCase) {
      model_.loadCasePower.set(columns_, loadCase,
                               power_.passing(sides, model_.loadCasePower, loadCase));
    }
  }

  ModelBundle& model_;
  ADJNODE graph_;
  BranchPower power_;
  std::int32_t columns_;                                         ///< in use
  std::set<std::pair<ComponentType, std::int32_t>> components_;  ///< that have a column
};

}  // namespace

void COUPLINGPOWERPREPARE(ModelBundle& model) {
  // Every column walks the whole line: not for one that the forced calculation will refuse.
  if (GET_LOADCASE_COMPONENTNUMBER(model.loadCase) == GET_LOADCASE_NCOMPONENT(model.loadCase) ||
      model.mass.number() > kLargestOrder) {
    return;
  }
  ColumnWriter columns(model);
  const auto endsOfShaft = [&](std::int32_t shaftId) {
    const std::int32_t row = GET_SHAFT_ISHAFT(model.shaft, shaftId);
    return row > 0 ? Nodes(GET_SHAFT_ORGNODE(model.shaft, row), GET_SHAFT_DESNODE(model.shaft, row))
                   : Nodes();
  };
  const auto ofCoupling = [&](const auto& table) {
    return [&](std::int32_t i) { return endsOfShaft(table.at(i).SHAFTNODE); };
  };
  columns.add(ComponentType::linearCoupling, model.linearCoupling,
              ofCoupling(model.linearCoupling));
  columns.add(ComponentType::progressiveCoupling, model.progressiveCoupling,
              ofCoupling(model.progressiveCoupling));
  columns.add(ComponentType::geislingerCoupling, model.geislingerCoupling,
              ofCoupling(model.geislingerCoupling));
  columns.add(ComponentType::viscousDamper, model.viscousDamper, [&](std::int32_t i) {
    const VISCOUSDAMPER_RECORD& damper = model.viscousDamper.at(i);
    return Nodes(damper.CASINGNODE, damper.RINGNODE);
  });
  columns.add(ComponentType::rubberDamper, model.rubberDamper, [&](std::int32_t i) {
    const RUBBERDAMPER_RECORD& damper = model.rubberDamper.at(i);
    return Nodes(damper.TURNINGMASSNODE, damper.DRIVEPLATENODE);
  });
  columns.add(ComponentType::steelSpringDamper, model.steelSpringDamper, [&](std::int32_t i) {
    const STEELSPRINGDAMPER_RECORD& damper = model.steelSpringDamper.at(i);
    return Nodes(damper.OUTERMEMBERNODE, damper.INNERMEMBERNODE);
  });
}

}  // namespace verenwick
