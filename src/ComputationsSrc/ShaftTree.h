#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// A second road to the natural frequencies of a shaft line, for judging those of the dense solve.
namespace verenwick {

/// Inertias joined to a tree by shafts. Its frequencies follow from the dynamic stiffness of the
/// branches, taken from the tips to the root without a subtraction of large numbers: each is exact
/// for a line whose every stiffness and inertia is off by some roundings, however far apart they
/// lie. A dense solve is only exact to a rounding of its largest eigenvalue.
class ShaftTree {
 public:
  /// A tree from the coordinate entries of the stiffness and the diagonal inertia; none if the
  /// entries make no tree, or a stiffness or inertia isn't finite and above 0.
  static std::optional<ShaftTree> of(std::span<const std::int32_t> ROWIND,
                                     std::span<const std::int32_t> COLIND,
                                     std::span<const double> K, std::span<const double> M);

  /// Number of modes below an eigenvalue, (rad/s)2, the rigid-body mode included.
  std::int32_t modesBelow(double eigenvalue) const;

  /// Natural angular frequency of a mode from 2 on, rad/s, right but for some roundings; infinite
  /// where its square is beyond the range of a double.
  double frequency(std::int32_t mode) const;

  std::vector<double> stiffness;  ///< of each shaft in the order of the entries, N m/rad
  std::vector<double> inertia;    ///< of each degree of freedom, kg m2

 private:
  /// A degree of freedom, and the shaft that joins it to the next one towards the root.
  struct Joint {
    std::size_t node;
    std::size_t parent;
    std::size_t shaft;
  };
  static constexpr std::size_t kNone = SIZE_MAX;

  std::vector<Joint> joints_;  ///< from the tips to the root; the root has no parent
};

}  // namespace verenwick
