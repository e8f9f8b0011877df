#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "RunControl/Positions.h"
#include "results/RecordNumbers.h"
#include "results/ResultFileTable.h"

/// What one load case leaves, family by family. Writing, summing and synthesis go over these arrays
/// alike for all six families.
namespace verenwick {

using results::Family;
using results::Quantity;

/// Amplitude of a complex value: twice its modulus.
inline double amplitudeOf(double re, double im) { return 2 * std::sqrt(re * re + im * im); }

/// Angle of a complex value as shaft results have it, rad from -pi to pi; deflections have another.
inline double shaftAngleOf(double re, double im) { return std::atan2(re, -im); }

/// A complex quantity over orders and points.
struct ComplexSection {
  std::span<double> AMP;
  std::span<double> ANGLE;
  std::span<double> RE;
  std::span<double> IM;
};

/// A complex quantity of all sources of a family, element (s - 1) NO P + (k - 1) P + i.
struct ComplexArrays {
  std::vector<double> AMP;
  std::vector<double> ANGLE;
  std::vector<double> RE;
  std::vector<double> IM;

  void clear(std::size_t elements) {
    for (auto* values : {&AMP, &ANGLE, &RE, &IM}) {
      values->assign(elements, 0.0);
    }
  }
  ComplexSection section(std::size_t first, std::size_t count) {
    return {std::span(AMP).subspan(first, count), std::span(ANGLE).subspan(first, count),
            std::span(RE).subspan(first, count), std::span(IM).subspan(first, count)};
  }
};

/// The sizes of a load case's arrays.
struct PointCounts {
  std::int32_t inertias = 0;
  std::int32_t shafts = 0;
  std::int32_t of(Quantity quantity) const {
    return results::pointsOf(quantity) == results::Points::inertias ? inertias : shafts;
  }
};

/// The place of one source in the arrays of its family, all its orders.
struct SourceResults {
  std::span<double> EXFO;  ///< harmonic orders
  double& OMEGA;           ///< of the first order, rad/s
  std::array<ComplexSection, results::kQuantities> quantities;

  const ComplexSection& of(Quantity quantity) const {
    return quantities[static_cast<std::size_t>(quantity)];
  }
};

/// The arrays of one family in one load case.
struct FamilyResults {
  PointCounts points;
  std::int32_t sources = 0;   ///< number of sources of the family
  std::int32_t orders = 0;    ///< order count of each source
  std::vector<double> EXFO;   ///< harmonic orders, overwritten by each source in turn
  std::vector<double> OMEGA;  ///< circular frequency of the first order of each source, rad/s
  std::array<ComplexArrays, results::kQuantities> quantities;

  const ComplexArrays& of(Quantity quantity) const {
    return quantities[static_cast<std::size_t>(quantity)];
  }

  /// Sets all arrays to zero for a load case.
  void clear();

  /// The part of source s, from 1.
  SourceResults source(std::int32_t s);
};

/// All six families, in their order.
using LoadCaseResults = std::array<FamilyResults, results::kFamilies>;

}  // namespace verenwick
