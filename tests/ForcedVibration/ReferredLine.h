#pragma once

#include <complex>
#include <cstddef>
#include <vector>

/// A shaft line written down from its physics, to hold the calculation against.
namespace verenwick::test {

using Complex = std::complex<double>;

/// An inertia at a gear ratio, damped to ground by a damper or by a magnifier.
struct LineInertia {
  double J = 0;
  double ratio = 1;
  double damping = 0;
  double magnifier = 0;
  /// Viscous coefficient that acts at circular frequency w, N m s/rad.
  double coefficient(double w) const { return magnifier == 0 ? damping : w * J / magnifier; }
};

struct LineShaft {
  std::size_t org = 0;  ///< from 0
  std::size_t des = 0;
  double k = 0;
  double ratio = 1;
  double damping = 0;
  double magnifier = 0;
  double coefficient(double w) const { return magnifier == 0 ? damping : k / (magnifier * w); }
};

struct ReferredLine {
  std::vector<LineInertia> inertias;
  std::vector<LineShaft> shafts;

  /// Complex deflection of every inertia at its own speed under harmonic torques, by the equations
  /// of motion in one common angle and elimination without any library.
  std::vector<Complex> deflection(double w, std::vector<Complex> torque) const {
    constexpr Complex i(0, 1);
    const std::size_t n = inertias.size();
    std::vector<std::vector<Complex>> a(n, std::vector<Complex>(n));
    for (std::size_t p = 0; p < n; ++p) {
      const LineInertia& inertia = inertias[p];
      const double r2 = inertia.ratio * inertia.ratio;
      a[p][p] += r2 * (-w * w * inertia.J + i * w * inertia.coefficient(w));
      torque[p] *= inertia.ratio;
    }
    for (const LineShaft& shaft : shafts) {
      const Complex k = shaft.ratio * shaft.ratio * (shaft.k + i * w * shaft.coefficient(w));
      a[shaft.org][shaft.org] += k;
      a[shaft.des][shaft.des] += k;
      a[shaft.org][shaft.des] -= k;
      a[shaft.des][shaft.org] -= k;
    }
    for (std::size_t c = 0; c < n; ++c) {
      for (std::size_t r = c + 1; r < n; ++r) {
        const Complex factor = a[r][c] / a[c][c];
        for (std::size_t m = c; m < n; ++m) {
          a[r][m] -= factor * a[c][m];
        }
        torque[r] -= factor * torque[c];
      }
    }
    for (std::size_t r = n; r-- > 0;) {
      for (std::size_t m = r + 1; m < n; ++m) {
        torque[r] -= a[r][m] * torque[m];
      }
      torque[r] /= a[r][r];
    }
    for (std::size_t p = 0; p < n; ++p) {
      torque[p] *= inertias[p].ratio;
    }
    return torque;
  }
};

}  // namespace verenwick::test
