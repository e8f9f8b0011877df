#pragma once

#include <complex>
#include <cstddef>
#include <cstdint>

/// The LAPACK routines in use, declared once with their Fortran types: scalars by reference, the
/// hidden lengths of text arguments last. Callers own the workspace.
namespace verenwick::lapack {

using Length = std::size_t;
using Complex = std::complex<double>;

extern "C" {

/// A x = lambda B x for symmetric A and symmetric positive definite B (ITYPE 1).
void dsygv_(const std::int32_t& ITYPE, const char* JOBZ, const char* UPLO, const std::int32_t& N,
            double* A, const std::int32_t& LDA, double* B, const std::int32_t& LDB, double* W,
            double* WORK, const std::int32_t& LWORK, std::int32_t& INFO, Length jobzLength = 1,
            Length uploLength = 1);

/// LU factorisation of a general matrix, and the solve by it.
void zgetrf_(const std::int32_t& M, const std::int32_t& N, Complex* A, const std::int32_t& LDA,
             std::int32_t* IPIV, std::int32_t& INFO);
void zgetrs_(const char* TRANS, const std::int32_t& N, const std::int32_t& NRHS, const Complex* A,
             const std::int32_t& LDA, const std::int32_t* IPIV, Complex* B, const std::int32_t& LDB,
             std::int32_t& INFO, Length transLength = 1);

/// LU factorisation of a band matrix, and the solve by it.
void zgbtrf_(const std::int32_t& M, const std::int32_t& N, const std::int32_t& KL,
             const std::int32_t& KU, Complex* AB, const std::int32_t& LDAB, std::int32_t* IPIV,
             std::int32_t& INFO);
void zgbtrs_(const char* TRANS, const std::int32_t& N, const std::int32_t& KL,
             const std::int32_t& KU, const std::int32_t& NRHS, const Complex* AB,
             const std::int32_t& LDAB, const std::int32_t* IPIV, Complex* B,
             const std::int32_t& LDB, std::int32_t& INFO, Length transLength = 1);

/// Solves a tridiagonal system; the diagonals are overwritten.
void zgtsv_(const std::int32_t& N, const std::int32_t& NRHS, Complex* DL, Complex* D, Complex* DU,
            Complex* B, const std::int32_t& LDB, std::int32_t& INFO);
}

/// Makes sure of the working memory of the library behind these routines before the first call of
/// one; throws RunStopped where it is not to be had.
void claimMemory();

}  // namespace verenwick::lapack
