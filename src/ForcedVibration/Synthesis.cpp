#include "ForcedVibration/Synthesis.h"

#include <algorithm>
#include <cmath>

#include "RunControl/Constants.h"

namespace verenwick {
namespace {

using Waveform = std::array<double, kAngleSteps>;
using FamilyWaveforms = std::array<Waveform, results::kFamilies>;

double range(const Waveform& waveform) {
  const auto [smallest, largest] = std::minmax_element(waveform.begin(), waveform.end());
  return *largest - *smallest;
}

/// Half the sum of the ranges of the families.
double amplitudeOfAll(const FamilyWaveforms& waveforms, PropellerPhase propellerPhase) {
  const Waveform& diesel = waveforms[static_cast<std::size_t>(Family::diesel)];
  const Waveform& propeller = waveforms[static_cast<std::size_t>(Family::propeller)];
  double sum = 0.0;
  if (propellerPhase == PropellerPhase::known) {
    Waveform both{};
    for (std::size_t m = 0; m < kAngleSteps; ++m) {
      both[m] = diesel[m] + propeller[m];
    }
    sum = range(both);
  } else {
    sum = range(diesel) + range(propeller);
  }
  for (auto f = static_cast<std::size_t>(Family::generator); f < waveforms.size(); ++f) {
    sum += range(waveforms[f]);
  }
  return sum * 0.5;
}

/// Adds all sources and orders of a family at one point.
void addFamily(Family which, const FamilyResults& family, Quantity quantity, std::size_t point,
               const PhaseTable& phases, Waveform& waveform) {
  const ComplexArrays& values = family.of(quantity);
  const std::size_t points = asSize(family.points.of(quantity));
  for (std::int32_t s = 1; s <= family.sources; ++s) {
    for (std::int32_t k = 1; k <= family.orders; ++k) {
      const std::size_t e = (index(s) * asSize(family.orders) + index(k)) * points + point;
      const double a = values.RE[e];
      const double b = values.IM[e];
      if (a == 0.0 && b == 0.0) {
        continue;
      }
      const auto [cosine, sine] = phases.of(which, s, k);
      for (std::size_t m = 0; m < kAngleSteps; ++m) {
        waveform[m] += (a * cosine[m] - b * sine[m]) * 2.0;
      }
    }
  }
}

}  // namespace

double baseFrequency(const LoadCaseResults& results) {
  double base = 0.0;
  bool isFirst = true;
  for (int f = 0; f < results::kFamilies; ++f) {
    const FamilyResults& family = results[asSize(f)];
    if (family.OMEGA.empty()) {
      continue;
    }
    const double smallest = *std::min_element(family.OMEGA.begin(), family.OMEGA.end());
    const bool isDieselOrPropeller = static_cast<Family>(f) <= Family::propeller;
    if (isDieselOrPropeller || smallest > 0.0) {
      base = isFirst ? smallest : std::min(base, smallest);
      isFirst = false;
    }
  }
  if (base > 0.0) {
    return base;
  }
  // One source at rest hides those of its family, or an engine or propeller at rest all others.
  std::vector<double> all;
  for (const FamilyResults& family : results) {
    all.insert(all.end(), family.OMEGA.begin(), family.OMEGA.end());
  }
  return slowest(all);
}

double slowest(std::span<const double> OMEGA) {
  double slowest = 0.0;
  for (const double first : OMEGA) {
    if (first != 0.0 && (slowest == 0.0 || std::fabs(first) < std::fabs(slowest))) {
      slowest = first;
    }
  }
  return slowest;
}

PhaseTable::PhaseTable(const LoadCaseResults& results, double BASE) {
  for (std::size_t f = 0; f < results.size(); ++f) {
    add(static_cast<Family>(f), results[f], BASE);
  }
}

PhaseTable::PhaseTable(Family family, const FamilyResults& results, double BASE) {
  add(family, results, BASE);
}

void PhaseTable::add(Family family, const FamilyResults& results, double BASE) {
  for (const double OMEGA : results.OMEGA) {
    auto rows = std::find_if(rows_.begin(), rows_.end(),
                             [&](const Rows& other) { return other.OMEGA == OMEGA; });
    if (rows == rows_.end()) {
      rows = rows_.insert(rows, Rows{OMEGA, {}, {}});
    }
    rowsOfSource_[static_cast<std::size_t>(family)].push_back(
        static_cast<std::size_t>(rows - rows_.begin()));
    const auto known = static_cast<std::int32_t>(rows->cosine.size() / kAngleSteps);
    for (std::int32_t k = known + 1; k <= results.orders; ++k) {
      for (std::int32_t m = 1; m <= static_cast<std::int32_t>(kAngleSteps); ++m) {
        const double angle = radians(static_cast<double>(k * m) * OMEGA / BASE);
        rows->cosine.push_back(std::cos(angle));
        rows->sine.push_back(std::sin(angle));
      }
    }
  }
}

double familyAmplitude(Family which, const FamilyResults& family, Quantity quantity,
                       std::size_t point, const PhaseTable& phases) {
  Waveform waveform{};
  addFamily(which, family, quantity, point, phases, waveform);
  return range(waveform) * 0.5;
}

PhaseTable::Phases PhaseTable::of(Family family, std::int32_t s, std::int32_t k) const {
  const Rows& rows = rows_[rowsOfSource_[static_cast<std::size_t>(family)][index(s)]];
  const std::size_t first = index(k) * kAngleSteps;
  return {std::span(rows.cosine).subspan(first, kAngleSteps),
          std::span(rows.sine).subspan(first, kAngleSteps)};
}

void SINGLELOADCASESYNTHESIS(const LoadCaseResults& results, Quantity quantity,
                             const PhaseTable* phases, PropellerPhase propellerPhase,
                             std::span<double> result, Waveforms& waveforms, bool keepWaveforms) {
  std::fill(result.begin(), result.end(), 0.0);
  for (std::size_t f = 0; f < waveforms.size(); ++f) {
    const bool hasWaveform = keepWaveforms && results[f].sources > 0;
    waveforms[f].assign(hasWaveform ? result.size() * kAngleSteps : 0, 0.0);
  }
  if (phases == nullptr) {
    return;
  }
  for (std::size_t j = 0; j < result.size(); ++j) {
    FamilyWaveforms point{};
    for (std::size_t f = 0; f < point.size(); ++f) {
      addFamily(static_cast<Family>(f), results[f], quantity, j, *phases, point[f]);
      if (!waveforms[f].empty()) {
        std::copy(point[f].begin(), point[f].end(),
                  waveforms[f].begin() + static_cast<std::ptrdiff_t>(j * kAngleSteps));
      }
    }
    result[j] = amplitudeOfAll(point, propellerPhase);
  }
}

void CALCULATERESULTANTTORQUE(PropellerPhase propellerPhase, std::span<double> RESULTANTTORQUE,
                              const Waveforms& torque, const Waveforms& dampingTorque) {
  for (std::size_t j = 0; j < RESULTANTTORQUE.size(); ++j) {
    FamilyWaveforms point{};
    for (std::size_t f = 0; f < point.size(); ++f) {
      for (std::size_t m = 0; m < (torque[f].empty() ? 0 : kAngleSteps); ++m) {
        const std::size_t at = j * kAngleSteps + m;
        point[f][m] = torque[f][at] + dampingTorque[f][at];
      }
    }
    RESULTANTTORQUE[j] = amplitudeOfAll(point, propellerPhase);
  }
}

}  // namespace verenwick
