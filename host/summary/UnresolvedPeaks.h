#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host/plant/ShaftLine.h"
#include "results/ResultReader.h"

/// Peaks that fall between two load cases, so that the largest values of the results are too small.
namespace verenwick::host {

/// Peaks of an order at speeds that differ by a smaller share are one.
inline constexpr double kSamePeak = 0.01;

/// A critical speed between the speeds of two load cases, at which a shaft bears more than in any
/// load case.
struct UnresolvedPeak {
  /// Rows of the components that excite it: several where equal sources turn together.
  std::vector<std::size_t> components;
  double order = 0;
  std::int64_t mode = 0;
  double speed = 0;       ///< reference speed, rpm
  double below = 0;       ///< that of the next slower load case in which the source runs
  double above = 0;       ///< that of the next faster one
  std::size_t shaft = 0;  ///< row of the shaft that suffers most, from 0
  double torque = 0;      ///< what its synthesised torque comes to there, N m; an estimate
  double stated = 0;      ///< its largest synthesised torque in the load cases, N m
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
