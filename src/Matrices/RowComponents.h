#pragma once

#include <cstdint>

#include "ComponentTables/ModelBundle.h"

/// Components whose stiffness or damping on a row of the line goes with the excitation frequency.
/// All return the component's position in its table, 0 if the row has none.
namespace verenwick {

/// Engine with formula damping that an inertia is a cylinder of.
std::int32_t cylinderFormulaEngine(const ModelBundle& model, std::int32_t inertia);

/// Engine with formula damping that a shaft is a crank throw of.
std::int32_t crankThrowFormulaEngine(const ModelBundle& model, std::int32_t shaft);

/// Geislinger coupling on a shaft.
std::int32_t geislingerCouplingOfShaft(const ModelBundle& model, std::int32_t shaft);

/// Viscous damper whose table over frequency holds for a shaft.
std::int32_t customViscousDamper(const ModelBundle& model, std::int32_t shaft);

}  // namespace verenwick
