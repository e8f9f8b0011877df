#pragma once

#include <cstdint>

#include "ComponentTables/ModelBundle.h"
#include "ForcedVibration/FamilyResults.h"

/// Steady response of the whole line to one source of excitation in the load case in force.
namespace verenwick {

// Each routine refers the line to its source's speed for its own duration, rebuilds and solves the
// system, and fills orders, deflection, velocity, acceleration and OMEGA of the source. They throw
// RunStopped when the system can't be solved.

void CALCULATE_DIESEL_FORCEDVIBRATION(ModelBundle& model, std::int32_t row, std::int32_t loadCase,
                                      const SourceResults& results);
void CALCULATE_PROPELLER_FORCEDVIBRATION(ModelBundle& model, std::int32_t row,
                                         std::int32_t loadCase, const SourceResults& results);
void CALCULATE_GENERATOR_FORCEDVIBRATION(ModelBundle& model, std::int32_t row,
                                         std::int32_t loadCase, const SourceResults& results);
void CALCULATE_CENTRIFUGALPUMP_FORCEDVIBRATION(ModelBundle& model, std::int32_t row,
                                               std::int32_t loadCase, const SourceResults& results);
void CALCULATE_RECIPROCATINGPUMP_FORCEDVIBRATION(ModelBundle& model, std::int32_t row,
                                                 std::int32_t loadCase,
                                                 const SourceResults& results);
void CALCULATE_ELECTRICMOTOR_FORCEDVIBRATION(ModelBundle& model, std::int32_t row,
                                             std::int32_t loadCase, const SourceResults& results);

/// How the driver goes through a family.
struct SourceFamily {
  std::int32_t (*sources)(const ModelBundle& model);
  std::int32_t (*orders)(const ModelBundle& model);
  /// Whether a source excites the line at all; one that doesn't keeps its zeros.
  bool (*isRunning)(const ModelBundle& model, std::int32_t row);
  void (*respond)(ModelBundle& model, std::int32_t row, std::int32_t loadCase,
                  const SourceResults& results);
};

/// The six families, in their order.
extern const std::array<SourceFamily, results::kFamilies> kSourceFamilies;

}  // namespace verenwick
