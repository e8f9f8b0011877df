#include "ComputationsSrc/ForcedVibrationSolver.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "ComputationsSrc/Lapack.h"
#include "LinearSolverSrc/MatrixStructure.h"
#include "RunControl/Constants.h"
#include "RunControl/Positions.h"
#include "RunControl/RunStopped.h"

namespace verenwick::ForcedVibrationSolver {
namespace {

using Complex = std::complex<double>;

/// An element of an array that may be missing.
double optional(std::span<const double> values, std::size_t i) {
  return values.empty() ? 0.0 : values[i];
}

/// Where the matrix element of the entry (row, column) is stored.
Complex& place(const ForcedSolverRecord& record, MatrixKind kind, ComplexMatrix& A,
               std::int32_t row, std::int32_t column) {
  if (kind == MatrixKind::banded) {
    const std::int32_t at = record.INVP[index(row)];
    return A(record.INVP[index(column)] + record.KL + record.KU + 1 - at, at);
  }
  if (kind == MatrixKind::tridiagonal) {
    const std::int32_t at = record.INVP[index(row)];
    return A(at, record.INVP[index(column)] + 2 - at);
  }
  return A(column, row);
}

void check(ForcedSolverRecord& record, std::int32_t info, const char* words) {
  if (info != 0) {
    record.error = info;
    throw RunStopped(words);
  }
}

/// The negative argument of a complex value in the range 0 to 2 pi; not-a-number for 0.
double angleOf(double re, double im) {
  const double angle = std::atan(im / re);
  if (re < 0.0) {
    return kPi - angle;
  }
  return im < 0.0 ? -angle : 2 * kPi - angle;
}

}  // namespace

void INITIALIZE(std::unique_ptr<ForcedSolverRecord>& record, const SystemArrays& system,
                std::optional<std::int32_t> IsDamped, bool bandStorage) {
  record = std::make_unique<ForcedSolverRecord>();
  record->system = system;
  if (system.CAR.empty()) {
    record->system.CRR = {};
  }
  record->IsDamped = IsDamped.value_or(0);
  record->bandStorage = bandStorage;
  PREPAREMATRIXSTRUCTURE(*record);
  if (record->error != 0) {
    throw RunStopped("** PrepareMatrixStructure failed");
  }
}

void PREPAREMATRIXSTRUCTURE(ForcedSolverRecord& record) {
  if (!record.bandStorage) {
    return;
  }
  const std::int32_t N = record.system.N;
  std::vector<std::int32_t> XADJ;
  std::vector<std::int32_t> ADJ;
  COMPUTESYMMETRICADJACENCYSET(N, record.system.COLIND, record.system.ROWIND, XADJ, ADJ,
                               record.error);
  if (record.error != 0) {
    return;
  }
  // The order of the shaft line is kept.
  record.PERM.resize(static_cast<std::size_t>(N));
  std::iota(record.PERM.begin(), record.PERM.end(), 1);
  record.INVP = record.PERM;
  COMPUTEBANDWIDTH(N, XADJ, ADJ, record.PERM, record.INVP, record.KL, record.KU);
}

void DESTROY(std::unique_ptr<ForcedSolverRecord>& record) { record.reset(); }

std::int32_t GETERRORFVS(const ForcedSolverRecord& record) { return record.error; }

MatrixKind matrixKind(const ForcedSolverRecord& record) {
  if (!record.bandStorage) {
    return MatrixKind::general;
  }
  return record.KL == 1 && record.KU == 1 ? MatrixKind::tridiagonal : MatrixKind::banded;
}

void EXCITATION(std::span<Complex> F, std::span<const Complex> coefficients, double order,
                std::span<const double> phase, std::span<const std::int32_t> dof) {
  for (std::size_t p = 0; p < dof.size(); ++p) {
    const double c = std::cos(order * phase[p]);
    const double s = std::sin(order * phase[p]);
    const double a = coefficients[p].real();
    const double b = coefficients[p].imag();
    F[index(dof[p])] += Complex(c * a + s * b, c * b - s * a);
  }
}

void MAKEMATRIX(const ForcedSolverRecord& record, MatrixKind kind, double omega, double order,
                ComplexMatrix& A) {
  const SystemArrays& system = record.system;
  const bool isDamped = record.IsDamped == 1;
  const bool hasMagnifiers = isDamped && kind == MatrixKind::general;
  const double w = omega * order;
  const double q = -(w * w);
  for (std::size_t n = 0; n < system.KDY.size(); ++n) {
    double loss = isDamped ? w * optional(system.CR, n) : 0.0;
    if (hasMagnifiers) {
      loss = optional(system.CRR, n) + loss;
    }
    place(record, kind, A, system.ROWIND[n], system.COLIND[n]) = Complex(system.KDY[n], loss);
  }
  for (std::int32_t i = 1; i <= system.N; ++i) {
    const std::size_t at = index(i);
    Complex& diagonal = place(record, kind, A, i, i);
    if (!isDamped) {
      diagonal -= Complex(system.MDY[at] * q, 0.0);
      continue;
    }
    double loss = w * optional(system.CA, at);
    if (hasMagnifiers) {
      loss -= q * optional(system.CAR, at);
    }
    diagonal += Complex(q * system.MDY[at], loss);
  }
}

void SOLVELINEARSYSTEM(ForcedSolverRecord& record, MatrixKind kind, ComplexMatrix& A,
                       std::span<Complex> F, std::span<std::int32_t> IPIV) {
  constexpr std::int32_t kRightHandSides = 1;
  const std::int32_t N = record.system.N;
  std::int32_t info = 0;
  if (kind == MatrixKind::tridiagonal) {
    // Row i of the columns is row i of the matrix: its first element below the diagonal is in
    // row 2.
    lapack::zgtsv_(N, kRightHandSides, &A(2, 1), &A(1, 2), &A(1, 3), F.data(), N, info);
    check(record, info, "** CGTSV/ZGTSV failed");
  } else if (kind == MatrixKind::banded) {
    lapack::zgbtrf_(N, N, record.KL, record.KU, A.values.data(), A.rows, IPIV.data(), info);
    check(record, info, "** CGBTRF/ZGBTRF failed");
    lapack::zgbtrs_("N", N, record.KL, record.KU, kRightHandSides, A.values.data(), A.rows,
                    IPIV.data(), F.data(), N, info);
    check(record, info, "** CGBTRS/ZGBTRS failed");
  } else {
    lapack::zgetrf_(N, N, A.values.data(), A.rows, IPIV.data(), info);
    check(record, info, "** CGETRF/ZGETRF failed");
    lapack::zgetrs_("N", N, kRightHandSides, A.values.data(), A.rows, IPIV.data(), F.data(), N,
                    info);
    check(record, info, "** CGETRS/ZGETRS failed");
  }
}

void SOLVEFORCED(std::unique_ptr<ForcedSolverRecord>& record, double omega,
                 const Excitation& excitation, const Response& response,
                 const ArraysOfOrder& arraysOfOrder) {
  PREPAREMATRIXSTRUCTURE(*record);
  const MatrixKind kind = matrixKind(*record);
  const auto order = static_cast<std::size_t>(record->system.N);
  ComplexMatrix A;
  std::size_t columns = order;
  A.rows = record->system.N;
  if (kind == MatrixKind::tridiagonal) {
    columns = 3;
  } else if (kind == MatrixKind::banded) {
    A.rows = 2 * record->KL + record->KU + 1;
  }
  A.values.resize(static_cast<std::size_t>(A.rows) * columns);
  std::vector<std::int32_t> IPIV(order);
  std::vector<Complex> F(order);
  std::vector<Complex> coefficients(excitation.dof.size());
  const std::size_t orders = excitation.EXFO.size();
  for (std::size_t k = 0; k < orders; ++k) {
    const double EXFO = excitation.EXFO[k];
    if (arraysOfOrder) {
      INITIALIZE(record, arraysOfOrder(EXFO), 1, record->bandStorage);
    }
    std::fill(F.begin(), F.end(), Complex{});
    for (std::size_t p = 0; p < coefficients.size(); ++p) {
      coefficients[p] = excitation.coefficients[p * orders + k];
    }
    EXCITATION(F, coefficients, EXFO, excitation.phase, excitation.dof);
    std::fill(A.values.begin(), A.values.end(), Complex{});
    if (EXFO > 0.0) {
      MAKEMATRIX(*record, kind, omega, EXFO, A);
      SOLVELINEARSYSTEM(*record, kind, A, F, IPIV);
    }
    for (std::size_t i = 0; i < order; ++i) {
      const double re = F[i].real();
      const double im = F[i].imag();
      const std::size_t at = k * order + i;
      response.XRE[at] = re;
      response.XIM[at] = im;
      response.XAMP[at] = 2.0 * std::sqrt(im * im + re * re);
      response.XANGLE[at] = angleOf(re, im);
    }
  }
}

}  // namespace verenwick::ForcedVibrationSolver
