#pragma once

#include <cstddef>
#include <cstdint>

/// The LAPACK routines in use, declared once with their Fortran types: scalars by reference, the
/// hidden lengths of text arguments last. Callers own the workspace.
namespace verenwick::lapack {

using Length = std::size_t;

extern "C" {

/// A x = lambda B x for symmetric A and symmetric positive definite B (ITYPE 1).
void dsygv_(const std::int32_t& ITYPE, const char* JOBZ, const char* UPLO, const std::int32_t& N,
            double* A, const std::int32_t& LDA, double* B, const std::int32_t& LDB, double* W,
            double* WORK, const std::int32_t& LWORK, std::int32_t& INFO, Length jobzLength = 1,
            Length uploLength = 1);
}

}  // namespace verenwick::lapack
