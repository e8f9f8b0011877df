#include "LinearSolverSrc/MatrixStructure.h"

#include <algorithm>
#include <cstddef>

#include "RunControl/Positions.h"

namespace verenwick {
void COMPUTESYMMETRICADJACENCYSET(std::int32_t N, std::span<const std::int32_t> A,
                                  std::span<const std::int32_t> B, std::vector<std::int32_t>& XADJ,
                                  std::vector<std::int32_t>& ADJ, std::int32_t& status) {
  if (A.size() != B.size()) {
    status = -1;
    return;
  }
  status = 0;
  XADJ.assign(index(N) + 2, 0);
  XADJ.front() = 1;
  for (std::size_t k = 0; k < A.size(); ++k) {
    XADJ[index(B[k]) + 1] += A[k] != B[k] ? 1 : 0;
  }
  for (std::int32_t j = 1; j <= N; ++j) {
    XADJ[index(j) + 1] += XADJ[index(j)];
  }
  ADJ.assign(index(XADJ.back()), 0);
  std::vector<std::int32_t> next(XADJ.begin(), XADJ.end() - 1);
  for (std::size_t k = 0; k < A.size(); ++k) {
    if (A[k] != B[k]) {
      ADJ[index(next[index(B[k])]++)] = A[k];
    }
  }
}

void COMPUTEBANDWIDTH(std::int32_t N, std::span<const std::int32_t> XADJ,
                      std::span<const std::int32_t> ADJ, std::span<const std::int32_t> PERM,
                      std::span<const std::int32_t> INVP, std::int32_t& KL, std::int32_t& KU) {
  KL = 0;
  KU = 0;
  for (std::int32_t i = 1; i <= N; ++i) {
    const std::int32_t node = PERM[index(i)];
    for (std::int32_t k = XADJ[index(node)]; k < XADJ[index(node) + 1]; ++k) {
      const std::int32_t j = INVP[index(ADJ[index(k)])];
      if (j > i) {
        KL = std::max(KL, j - i);
      }
      if (j < i) {
        // Against KL and not KU: on a symmetric structure both end equal.
        KU = std::max(KL, i - j);
      }
    }
  }
}

}  // namespace verenwick
