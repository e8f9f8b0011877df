#include <gtest/gtest.h>

#include "LinearSolverSrc/MatrixStructure.h"

namespace verenwick {
namespace {

using Indices = std::vector<std::int32_t>;

TEST(MatrixStructure, ListsNeighboursByTheSecondIndexAndPermutesThem) {
  // A chain of four nodes, diagonal first, an asymmetric entry (4, 1) at the end.
  const Indices A = {1, 2, 3, 4, 2, 1, 3, 2, 4, 3, 4};
  const Indices B = {1, 2, 3, 4, 1, 2, 2, 3, 3, 4, 1};
  Indices XADJ;
  Indices ADJ;
  std::int32_t status = 7;
  COMPUTESYMMETRICADJACENCYSET(4, A, B, XADJ, ADJ, status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(XADJ, (Indices{1, 3, 5, 7, 8}));
  EXPECT_EQ(ADJ, (Indices{2, 4, 1, 3, 2, 4, 3}));
  std::int32_t KL = -1;
  std::int32_t KU = -1;
  // Nodes 3 and 4 come to lie three places apart.
  COMPUTEBANDWIDTH(4, XADJ, ADJ, Indices{4, 2, 1, 3}, Indices{3, 2, 4, 1}, KL, KU);
  EXPECT_EQ(std::pair(KL, KU), std::pair(3, 3));
}

}  // namespace
}  // namespace verenwick
