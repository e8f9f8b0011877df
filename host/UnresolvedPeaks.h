#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/ShaftLine.h"
#include "results/ResultReader.h"

/// Peaks that fall between two load cases, so that the largest values of the results are too small.
namespace verenwick::host {

/// A critical speed between the speeds of two load cases, at which a shaft bears more than in any
/// load case.
struct UnresolvedPeak {
  /// Rows of the components that excite it: several where equal sources turn together.
  std::vector<std::size_t> components;
  double order;
  std::int64_t mode;
  double speed;       ///< reference speed, rpm
  double below;       ///< that of the next slower load case in which the source runs
  double above;       ///< that of the next faster one
  std::size_t shaft;  ///< row of the shaft that suffers most, from 0
  double torque;      ///< what its synthesised torque comes to there, N m; an estimate
  double stated;      ///< its largest synthesised torque in the load cases, N m
};

/// The peaks that matter, the worst first. Each order's response at the two load cases next to a
/// critical speed is taken apart by modes; the mode that it meets grows by the ratio of its
/// resonance curve, with the damping of the line, the rest lies between. A peak counts where it
/// lifts the synthesised torque of a shaft by more than a tenth above all load cases, in a shaft
/// that then has a tenth of the plant's largest torque or stress. A resolved peak thus doesn't
/// count, since a load case stands on its curve already. None where the results lack free or forced
/// vibration, and none for a source that has one speed in all load cases. Throws
/// std::runtime_error where a result file is broken.
std::vector<UnresolvedPeak> unresolvedPeaks(const ShaftLine& line,
                                            const results::ResultDirectory& directory);

/// The peak in words: order, sources, speeds, shaft and torque.
std::string wordsOf(const UnresolvedPeak& peak, const ShaftLine& line);

}  // namespace verenwick::host
