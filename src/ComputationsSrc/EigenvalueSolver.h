#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <vector>

/// The undamped free vibration problem K x = lambda M x, solved as a dense real symmetric definite
/// generalised eigenproblem.
namespace verenwick::EigenvalueSolver {

/// The problem. Views do not own their arrays.
struct EP {
  std::int32_t error = 0;                ///< INFO of a failed solve
  std::int32_t N = 0;                    ///< order of the system
  std::int32_t problemKind = 0;          ///< FLUSHRESULTS prints frequencies for 0 and 1
  std::span<const std::int32_t> ROWIND;  ///< row of each entry, from 1
  std::span<const std::int32_t> COLIND;  ///< column of each entry, from 1
  std::span<const double> K;             ///< stiffness of each entry, N m/rad
  std::span<const double> M;             ///< N, diagonal inertia, kg m2
  std::span<double> EIGVALREAL;          ///< N, ascending, (rad/s)2
  std::vector<double> EIGVALIMAG;        ///< N, not filled by a real solve
  std::span<double> RIGHTEIGVECREAL;     ///< N x N, mode j in column j, so that x' M x = 1
};

/// What SOLVER is asked for.
inline constexpr std::int32_t kEigenvaluesOnly = 1;
inline constexpr std::int32_t kEigenvaluesAndVectors = 2;

/// A new problem on the coordinate entries of K and the diagonal M.
std::unique_ptr<EP> INITIALIZE(std::int32_t N, std::span<const std::int32_t> ROWIND,
                               std::span<const std::int32_t> COLIND, std::span<const double> K,
                               std::span<const double> M, std::int32_t problemKind);
void INITIALIZEREALEIGENVALUES(EP& problem, std::span<double> eigenvalues);
void INITIALIZEREALEIGENVECTORS(EP& problem, std::span<double> eigenvectors);

/// Solves with LAPACK's DSYGV. A failed solve leaves its INFO as the error and both outputs as they
/// were.
void SOLVER(EP& problem, std::optional<std::int32_t> COMPUTE = std::nullopt);

std::int32_t GETERRORGEP(const EP& problem);

/// Prints what the eigenvalue array holds now, as angular frequencies in rad/s and in rpm, and
/// above print level 1 the eigenvectors; nothing at level 0.
void FLUSHRESULTS(std::FILE* unit, std::int32_t printLevel, const EP& problem);

/// Releases the problem; the arrays of the views stay with their owners.
void DESTROY(std::unique_ptr<EP>& problem);

}  // namespace verenwick::EigenvalueSolver
