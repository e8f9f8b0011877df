#include "InputAndChecking/InputSections.h"

namespace verenwick {
namespace {

/// Gives each record the ratio of the row of another table that its node names; a node that isn't
/// there leaves the default.
template <class Table, class Rows, class Node>
void copyRatios(Table& table, const Rows& rows, Node nodeOf) {
  for (std::int32_t i = 1; i <= table.number(); ++i) {
    const std::int32_t row = rows.positionOf(nodeOf(table, i));
    if (row > 0) {
      table.at(i).RPMRATIO = rows.at(row).RPMRATIO;
    }
  }
}

}  // namespace

void copySpeedRatios(ModelBundle& model) {
  const MASS_TABLE& mass = model.mass;
  const SHAFT_TABLE& shaft = model.shaft;
  // A crank machine turns with the inertia of its first cylinder.
  const auto firstCylinder = [](const auto& table, std::int32_t i) {
    return table.at(i).CYLINDERS[0];
  };
  copyRatios(model.diesel, mass, firstCylinder);
  copyRatios(model.reciprocatingPump, mass, firstCylinder);
  copyRatios(model.electricMotor, mass, GET_ELECTRICMOTOR_ELECTRICMOTORNODE);
  copyRatios(model.gasTurbine, mass, GET_GASTURBINE_GASTURBINENODE);
  copyRatios(model.steamTurbine, mass, GET_STEAMTURBINE_STEAMTURBINENODE);
  copyRatios(model.generator, mass, GET_GENERATOR_GENERATORNODE);
  copyRatios(model.centrifugalPump, mass, GET_CENTRIFUGALPUMP_CENTRIFUGALPUMPNODE);
  copyRatios(model.propeller, mass, GET_PROPELLER_PROPELLERNODE);
  copyRatios(model.linearCoupling, shaft, GET_LINEARCOUPLING_SHAFTNODE);
  copyRatios(model.progressiveCoupling, shaft, GET_PROGRESSIVECOUPLING_SHAFTNODE);
  copyRatios(model.geislingerCoupling, shaft, GET_GEISLINGERCOUPLING_SHAFTNODE);
  copyRatios(model.rubberDamper, mass, GET_RUBBERDAMPER_TURNINGMASSNODE);
  copyRatios(model.steelSpringDamper, mass, GET_STEELSPRINGDAMPER_OUTERMEMBERNODE);
  copyRatios(model.viscousDamper, mass, GET_VISCOUSDAMPER_CASINGNODE);
}

}  // namespace verenwick
