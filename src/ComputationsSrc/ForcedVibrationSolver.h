#pragma once

#include <complex>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "RunControl/Positions.h"

/// The complex linear solve of the forced vibration: one system per harmonic order at one speed.
namespace verenwick::ForcedVibrationSolver {

/// Whether the dynamic stiffness is held as a band or as three diagonals; off, it is a full matrix.
/// The band forms leave out the damping given by magnifiers. They are not part of a run.
inline constexpr bool UseBandStorage = false;

/// The arrays of one system. Coordinate entries 1 to N are the diagonal, the others follow in pairs
/// (i, j), (j, i). Indices count from 1. The views do not own their arrays.
struct SystemArrays {
  std::int32_t N = 0;                    ///< order of the system
  std::span<const std::int32_t> ROWIND;  ///< first index of each entry
  std::span<const std::int32_t> COLIND;  ///< second index of each entry
  std::span<const double> KDY;           ///< stiffness entries, N m/rad
  std::span<const double> MDY;           ///< diagonal inertia, kg m2
  std::span<const double> CR;            ///< relative damping entries, N m s/rad
  std::span<const double> CRR;           ///< relative damping by magnifiers, N m/rad
  std::span<const double> CA;            ///< absolute damping, N m s/rad
  std::span<const double> CAR;           ///< absolute damping by magnifiers, kg m2
};

/// How the dynamic stiffness is stored.
enum class MatrixKind : std::int32_t { general = 0, banded = 1, tridiagonal = 2 };

/// One system to solve.
struct ForcedSolverRecord {
  std::int32_t error = 0;  ///< INFO of a failed LAPACK call
  SystemArrays system;
  std::int32_t IsDamped = 0;       ///< 1: the matrix has damping, 0: it has none
  std::int32_t KL = 0;             ///< lower bandwidth, with band storage
  std::int32_t KU = 0;             ///< upper bandwidth, with band storage
  std::vector<std::int32_t> PERM;  ///< permutation, with band storage
  std::vector<std::int32_t> INVP;  ///< its inverse
  bool bandStorage = UseBandStorage;
};

/// A matrix in column-major order, elements from 1.
struct ComplexMatrix {
  std::int32_t rows = 0;
  std::vector<std::complex<double>> values;
  std::complex<double>& operator()(std::int32_t row, std::int32_t column) {
    return values[index(column) * asSize(rows) + index(row)];
  }
};

/// What acts on the system: NEXC points at NORDERS harmonic orders.
struct Excitation {
  std::span<const double> EXFO;                        ///< harmonic orders; may be 0 or a fraction
  std::span<const std::complex<double>> coefficients;  ///< (p - 1) NORDERS + k, N m
  std::span<const double> phase;                       ///< of each point, rad
  std::span<const std::int32_t> dof;                   ///< of each point, from 1
};

/// The response of all inertias, index (k - 1) N + i for order k and inertia i.
struct Response {
  std::span<double> XAMP;    ///< twice the modulus of the complex value, rad
  std::span<double> XANGLE;  ///< negative argument of the complex value, 0 to 2 pi
  std::span<double> XRE;     ///< real part
  std::span<double> XIM;     ///< imaginary part
};

/// Gives the arrays of a system whose stiffness and damping depend on the frequency, built for one
/// harmonic order; they live until the next call. Empty where nothing depends on the frequency.
using ArraysOfOrder = std::function<SystemArrays(double order)>;

/// Makes a new record. An array that is not there is an empty view; CRR needs CAR to count.
/// Throws RunStopped when the structure of the matrix can't be made out.
void INITIALIZE(std::unique_ptr<ForcedSolverRecord>& record, const SystemArrays& system,
                std::optional<std::int32_t> IsDamped = std::nullopt,
                bool bandStorage = UseBandStorage);

/// Fills PERM, INVP, KL and KU; does nothing without band storage.
void PREPAREMATRIXSTRUCTURE(ForcedSolverRecord& record);

/// Releases a record, if there is one.
void DESTROY(std::unique_ptr<ForcedSolverRecord>& record);

/// INFO of a failed LAPACK call, 0 for none. Not part of a run.
std::int32_t GETERRORFVS(const ForcedSolverRecord& record);

/// The form in which the record's matrix is stored.
MatrixKind matrixKind(const ForcedSolverRecord& record);

/// Adds the excitation of one order to F; several points on one inertia add up.
void EXCITATION(std::span<std::complex<double>> F,
                std::span<const std::complex<double>> coefficients, double order,
                std::span<const double> phase, std::span<const std::int32_t> dof);

/// Enters the dynamic stiffness at an order into a cleared matrix. Stiffness entries are assigned,
/// inertia is added.
void MAKEMATRIX(const ForcedSolverRecord& record, MatrixKind kind, double omega, double order,
                ComplexMatrix& A);

/// Solves A x = F; x replaces F, and A is spent. Throws RunStopped when LAPACK fails.
void SOLVELINEARSYSTEM(ForcedSolverRecord& record, MatrixKind kind, ComplexMatrix& A,
                       std::span<std::complex<double>> F, std::span<std::int32_t> IPIV);

/// The response to every order. An order of 0 or less has no solve: its response is the excitation.
/// @param omega circular speed at order 1, rad/s
void SOLVEFORCED(std::unique_ptr<ForcedSolverRecord>& record, double omega,
                 const Excitation& excitation, const Response& response,
                 const ArraysOfOrder& arraysOfOrder);

}  // namespace verenwick::ForcedVibrationSolver
