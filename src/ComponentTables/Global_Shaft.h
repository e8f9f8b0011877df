#pragma once

#include "ComponentTables/ComponentTable.h"
#include "ComponentTables/ComponentType.h"
#include "ComponentTables/Global_GeislingerCoupling.h"
#include "ComponentTables/Global_LinearCoupling.h"
#include "ComponentTables/Global_ProgressiveCoupling.h"
#include "ComponentTables/Global_RubberDamper.h"
#include "ComponentTables/Global_SteelSpringDamper.h"
#include "ComponentTables/Global_ViscousDamper.h"

/// The shafts between the inertias.
namespace verenwick {

// clang-format off
#define SHAFT_FIELDS(VALUE, ARRAY, LIST, X)                                                          \
  VALUE(X, ShaftType, SHAFTTYPE, ShaftType::plain, "what this shaft is")                             \
  VALUE(X, ComponentType, COMPONENTTYPE, ComponentType::plainShaft, "kind of the owning component")  \
  VALUE(X, std::int32_t, COMPONENTID, 0, "id of the owning component")                               \
  VALUE(X, std::int32_t, ORGNODE, 0, "id of the inertia at one end")                                 \
  VALUE(X, std::int32_t, DESNODE, 0, "id of the inertia at the other end")                           \
  VALUE(X, double, RPMRATIO, 1.0, "speed relative to the reference speed")                           \
  VALUE(X, double, STIFFNESS, 0.0, "static stiffness, N m/rad")                                      \
  VALUE(X, double, STIFFNESSDYNAMIC, 0.0, "stiffness in force for the load case, N m/rad")           \
  VALUE(X, double, ABSDAMPING, 0.0, "damping across the shaft, N m s/rad")                           \
  VALUE(X, double, DYNMAGNIFIER, 0.0, "dynamic magnifier; 0 lets ABSDAMPING act")                    \
  VALUE(X, double, OUTERDI, 0.0, "outer diameter, m")                                                \
  VALUE(X, double, INNERDI, 0.0, "inner diameter, m")                                                \
  VALUE(X, double, SPEED, 0.0, "speed in the load case, rpm")
// clang-format on

VERENWICK_TABLE(SHAFT, SHAFT_FIELDS)
VERENWICK_TABLE_ID(SHAFT, ISHAFT)

/// Position of the shaft between two inertias, whichever way round they are given. If no shaft
/// joins them it is the last position, and not 0; 0 only for a table without shafts.
std::int32_t GET_SHAFT_ISHAFTBYNODE(const SHAFT_TABLE& table, std::int32_t node1,
                                    std::int32_t node2);

/// The shafts by the inertias that they join: the same answers as GET_SHAFT_ISHAFTBYNODE, for where
/// very many dampers each look for their shaft.
class ShaftsByNodes {
 public:
  ShaftsByNodes() = default;
  explicit ShaftsByNodes(const SHAFT_TABLE& table);
  /// Follows a change of the ends of a shaft.
  void set(std::int32_t position, std::int32_t orgNode, std::int32_t desNode);
  std::int32_t between(std::int32_t node1, std::int32_t node2) const;

 private:
  PositionIndex<std::pair<std::int32_t, std::int32_t>> ends_;  ///< the lower id first
};

/// Whether the shaft is the link of a damper; a damper knows its shaft by the two inertias.
bool GET_SHAFT_ISDAMPER(const SHAFT_TABLE& table, std::int32_t position,
                        const VISCOUSDAMPER_TABLE& viscousDamper,
                        const RUBBERDAMPER_TABLE& rubberDamper,
                        const STEELSPRINGDAMPER_TABLE& steelSpringDamper);

/// Whether the shaft carries a coupling; a coupling knows its shaft by the shaft's id.
bool GET_SHAFT_ISCOUPLING(const SHAFT_TABLE& table, std::int32_t position,
                          const LINEARCOUPLING_TABLE& linearCoupling,
                          const PROGRESSIVECOUPLING_TABLE& progressiveCoupling,
                          const GEISLINGERCOUPLING_TABLE& geislingerCoupling);

}  // namespace verenwick
