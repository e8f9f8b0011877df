#pragma once

#include <cstdint>

#include "ComponentTables/ModelBundle.h"

/// What of the line goes with the excitation order in the forced problem.
namespace verenwick {

/// Whether stiffness or damping of some part of the line goes with the order. A table of Geislinger
/// couplings counts even if it is empty.
bool dependsOnOrder(const ModelBundle& model);

/// Position of the engine with formula damping that an inertia is a cylinder of; 0 if there is
/// none. Of the inertias these alone have a damping that goes with the order.
std::int32_t cylinderFormulaEngine(const ModelBundle& model, std::int32_t inertia);

/// Sets the speed of the source whose orders are taken from here on, rpm. Geislinger couplings go
/// by it; all other parts take an order as one of their own speed in the load case.
void setExcitationSpeed(ModelBundle& model, double speed);

/// The element of a shaft that has a damping torque of its own.
enum class DampingElement { none, damper, coupling };

/// A shaft of the forced problem at an excitation order, in the load case in force. Its component
/// is looked up once; a shaft whose component isn't in its table has the values of its row.
///
/// The matrices, the damping torque and the power loss don't take the same values:
///
///     kind of shaft             matrices and torque  damping torque        power loss
///     plain                     k and c of the row   none                  k and c of the row
///     crank throw with formula  c by the formula     none                  as the matrices
///     Geislinger coupling       k and c at order     c at order            as the matrices
///     linear, progressive       k and c of the row   c by the magnifier    k and c of the row
///     viscous damper by table   k and c at order     c at order            c at order, k row
///     rubber damper             k and c of the row   c by the magnifier    k and c of the row
///     other dampers             k and c of the row   c of the row          k and c of the row
///
/// k of the row is STIFFNESSDYNAMIC, into which MASSANDSHAFTTABLEPREPARATION puts the stiffness of
/// linear and progressive couplings at the load; c is ABSDAMPING. A magnifier stands before c in
/// the matrices, in the power loss c stands before the magnifier.
class ShaftAtOrder {
 public:
  /// @param shaft position of the shaft; the model must live as long as this
  ShaftAtOrder(const ModelBundle& model, std::int32_t shaft);

  /// Stiffness in the matrices, and by which the torque follows from the twist, N m/rad.
  double stiffness(double order) const;
  /// Damping in the matrices where there is no magnifier, N m s/rad.
  double damping(double order) const;
  /// 0 for none.
  double magnifier() const { return shaft_.DYNMAGNIFIER; }

  /// What damps in the shaft. Searches all dampers and couplings: ask once a shaft.
  DampingElement dampingElement() const;
  /// Damping of the damping torque, N m s/rad. The matrices have a magnifier as a stiffness; here
  /// it has become a damping at the speed of the element. 0 for an order of 0, which the formulas
  /// divide by.
  double torqueDamping(DampingElement element, double order) const;

  /// Whether the shaft counts as one without loss, at any order. A Geislinger coupling is judged by
  /// the damping that the report of load case settings left, a crank throw by the coefficient of
  /// its formula.
  bool isLossless() const;
  /// Stiffness by which the loss makes a twist of a torque, N m/rad. That of a damper's table is
  /// not taken: the twist of a damper follows from its deflections.
  double lossStiffness(double order) const;
  /// Damping of the loss, N m s/rad: that of the magnifier where there is no other.
  /// @param circularSpeed of the source, rad/s
  double lossDamping(double circularSpeed, double order) const;

 private:
  /// Whether the shaft is of a type and its component is in the table.
  bool is(ShaftType type) const { return position_ > 0 && shaft_.SHAFTTYPE == type; }

  const ModelBundle& model_;
  std::int32_t row_;
  const SHAFT_RECORD& shaft_;
  /// Of the component in the table that the shaft's type names, if its values go with the order.
  std::int32_t position_;
};

}  // namespace verenwick
