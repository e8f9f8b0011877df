#include "FreeVibration/FrequencyWarnings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "ComputationsSrc/ShaftTree.h"
#include "RunControl/Log.h"
#include "RunControl/Positions.h"

namespace verenwick {
namespace {

/// Digits that a frequency must have left. Those of usual plants have eight and more.
constexpr int kWantedDigits = 6;
/// Digits of a double.
constexpr int kAllDigits = 15;

/// A value that lies too far from the others of its kind.
struct Outlier {
  bool isShaft;
  bool isLarge;
  const char* words;
  std::size_t at = 0;  ///< shaft or degree of freedom, from 0
};

/// Brings the values that lie beyond the middle one to that; returns where the farthest was.
std::size_t clampToMiddle(std::vector<double>& values, bool isLarge) {
  const auto farthest = isLarge ? std::max_element(values.begin(), values.end())
                                : std::min_element(values.begin(), values.end());
  const auto at = static_cast<std::size_t>(farthest - values.begin());
  std::vector<double> sorted = values;
  std::sort(sorted.begin(), sorted.end());
  const std::size_t half = sorted.size() / 2;
  const double middle = std::sqrt(sorted[(sorted.size() - 1) / 2]) * std::sqrt(sorted[half]);
  for (double& value : values) {
    value = isLarge ? std::min(value, middle) : std::max(value, middle);
  }
  return at;
}

/// What the spread of the frequencies is due to: the kind of value that, brought to the middle of
/// its kind, narrows it most. Of two that do the same, the first is the more likely mistake.
Outlier outlierOf(const ShaftTree& tree) {
  constexpr double kClearly = 10.0;
  std::array<Outlier, 4> candidates = {{{true, true, " is too stiff beside the others ("},
                                        {false, false, " is too small beside the others ("},
                                        {true, false, " is too soft beside the others ("},
                                        {false, true, " is too large beside the others ("}}};
  const auto modes = static_cast<std::int32_t>(tree.inertia.size());
  const Outlier* found = candidates.data();
  double least = std::numeric_limits<double>::infinity();
  for (Outlier& candidate : candidates) {
    ShaftTree other = tree;
    candidate.at =
        clampToMiddle(candidate.isShaft ? other.stiffness : other.inertia, candidate.isLarge);
    const double spread = other.frequency(modes) / other.frequency(2);
    if (spread * kClearly < least) {
      found = &candidate;
      least = spread;
    }
  }
  return *found;
}

/// Position of the row behind a degree of freedom or a shaft of the free problem, which leaves out
/// what belongs to the rings of viscous dampers.
template <class IsLeftOut>
std::int32_t rowOf(std::size_t at, IsLeftOut isLeftOut) {
  std::int32_t row = 1;
  for (std::size_t left = at;; ++row) {
    if (!isLeftOut(row) && left-- == 0) {
      return row;
    }
  }
}

std::int32_t inertiaRow(const ModelBundle& model, std::size_t at) {
  return rowOf(at, [&](std::int32_t row) {
    return GET_MASS_MASSTYPE(model.mass, row) == MassType::viscousDamperRing;
  });
}

void warnOfOutlier(const ModelBundle& model, const Outlier& outlier, const std::string& before) {
  if (outlier.isShaft) {
    const std::int32_t row = rowOf(outlier.at, [&](std::int32_t s) {
      return GET_SHAFT_SHAFTTYPE(model.shaft, s) == ShaftType::viscousDamperLink;
    });
    appendToLog(before, ": Shaft", model.shaft.id(row), outlier.words,
                GET_SHAFT_STIFFNESSDYNAMIC(model.shaft, row), " N m/rad)");
  } else {
    const std::int32_t row = inertiaRow(model, outlier.at);
    appendToLog(before, ": Inertia", model.mass.id(row), outlier.words,
                GET_MASS_INERTIAEFFECTIVE(model.mass, row), " kg m2)");
  }
}

std::optional<ShaftTree> treeOf(const ShaftLineMatrices& system) {
  return ShaftTree::of(system.ROWIND, system.COLIND, system.K, system.M);
}

void warnOfFailure(const ModelBundle& model, const ShaftLineMatrices& system) {
  const std::string words = "Warning: Natural frequencies can't be calculated and are written as 0";
  for (std::int32_t i = 1; i <= system.N; ++i) {
    if (!(system.M[index(i)] > 0.0)) {
      const std::int32_t row = inertiaRow(model, index(i));
      appendToLog(words, ": Inertia", model.mass.id(row),
                  " is zero or negative in the calculation (",
                  GET_MASS_INERTIAEFFECTIVE(model.mass, row), " kg m2)");
      return;
    }
  }
  if (const auto tree = treeOf(system); tree && !tree->stiffness.empty()) {
    warnOfOutlier(model, outlierOf(*tree), words);
  } else {
    appendToLog(words);
  }
}

bool isFrequency(double omega) { return omega > 0.0 && std::isfinite(omega); }

/// Digits that two values have in common.
int commonDigits(double value, double exact) {
  const double difference = std::fabs(value - exact) / exact;
  if (!(difference < 1.0)) {
    return 0;
  }
  const double digits = std::floor(-std::log10(difference));
  return digits < kAllDigits ? static_cast<int>(digits) : kAllDigits;
}

}  // namespace

void warnOfUncertainFrequencies(const ModelBundle& model, const ShaftLineMatrices& system,
                                std::int32_t error) {
  if (error != 0) {
    warnOfFailure(model, system);
    return;
  }
  const std::optional<ShaftTree> tree = treeOf(system);
  const double tolerance = std::pow(10.0, -kWantedDigits);
  std::int32_t uncertain = 0;
  std::int32_t lost = 0;
  for (std::int32_t mode = 2; mode <= system.N; ++mode) {
    const double omega = system.D[index(mode)];
    const auto modesBelow = [&](double other) { return tree->modesBelow(other * other); };
    if (!isFrequency(omega)) {
      ++lost;
    } else if (tree && (modesBelow(omega * (1.0 - tolerance)) >= mode ||
                        modesBelow(omega * (1.0 + tolerance)) < mode)) {
      ++uncertain;
    }
  }
  if (uncertain + lost == 0) {
    return;
  }
  std::string words = "Warning: Natural frequencies are uncertain by rounding";
  if (tree) {
    const double lowest = system.D[index(2)];
    const int digits = isFrequency(lowest) ? commonDigits(lowest, tree->frequency(2)) : 0;
    words += ", mode 2 has " + std::to_string(digits) + " digits left";
  }
  words += ", " + std::to_string(uncertain + lost) + " of " + std::to_string(system.N - 1) +
           " modes have fewer than " + std::to_string(kWantedDigits);
  if (lost > 0) {
    words += ", " + std::to_string(lost) + " come out as 0 or as no number";
  }
  if (tree) {
    warnOfOutlier(model, outlierOf(*tree), words);
  } else {
    appendToLog(words);
  }
}

}  // namespace verenwick
