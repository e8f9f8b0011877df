#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "ForcedVibration/FamilyResults.h"

/// From orders back to time: the waveform of every family over one period of the base frequency,
/// and the amplitude of the whole.
namespace verenwick {

inline constexpr std::size_t kAngleSteps = static_cast<std::size_t>(results::kAngleSteps);

/// The base frequency of a load case, rad/s: the smallest first order of all sources. A family of
/// machines with a source that did not run is left out. Where this leaves no base above 0, it is
/// that of the slowest source that ran; 0 if none ran.
double baseFrequency(const LoadCaseResults& results);

/// The first order nearest to 0 of the sources that ran, rad/s, below 0 for one that turns
/// backwards; 0 if none ran.
double slowest(std::span<const double> OMEGA);

/// Cosines and sines of all orders and angle steps of a load case, made once and shared by all
/// points and quantities, and by all sources of equal first order.
class PhaseTable {
 public:
  /// @param BASE base frequency, rad/s; not 0
  PhaseTable(const LoadCaseResults& results, double BASE);
  /// The phases of one family alone.
  PhaseTable(Family family, const FamilyResults& results, double BASE);

  struct Phases {
    std::span<const double> cosine;  ///< kAngleSteps values
    std::span<const double> sine;
  };
  /// Phases of order index k of source s of a family, both from 1.
  Phases of(Family family, std::int32_t s, std::int32_t k) const;

 private:
  /// Cosines and sines of order index 1, 2, ... of a first order, kAngleSteps each.
  struct Rows {
    double OMEGA;
    std::vector<double> cosine;
    std::vector<double> sine;
  };
  void add(Family family, const FamilyResults& results, double BASE);

  std::vector<Rows> rows_;
  std::array<std::vector<std::size_t>, results::kFamilies> rowsOfSource_;
};

/// Half the peak-to-peak range of a family's waveform of a quantity.
/// @param point from 0
double familyAmplitude(Family which, const FamilyResults& family, Quantity quantity,
                       std::size_t point, const PhaseTable& phases);

/// Waveforms of the families, (j - 1) 360 + m for point j and step m. A family without sources has
/// none.
using Waveforms = std::array<std::vector<double>, results::kFamilies>;

/// The phase between diesels and propellers. Where it is known their waveforms add up as such; all
/// else adds up in its worst phase.
enum class PropellerPhase { unknown, known };

/// Amplitude of a quantity at every point: half the peak-to-peak range of the families' waveforms.
/// @param phases        null for a base frequency of 0: the result is 0 then
/// @param result        one value a point
/// @param waveforms     left empty unless keepWaveforms
void SINGLELOADCASESYNTHESIS(const LoadCaseResults& results, Quantity quantity,
                             const PhaseTable* phases, PropellerPhase propellerPhase,
                             std::span<double> result, Waveforms& waveforms, bool keepWaveforms);

/// Amplitude of torque and damping torque together at every shaft.
void CALCULATERESULTANTTORQUE(PropellerPhase propellerPhase, std::span<double> RESULTANTTORQUE,
                              const Waveforms& torque, const Waveforms& dampingTorque);

}  // namespace verenwick
