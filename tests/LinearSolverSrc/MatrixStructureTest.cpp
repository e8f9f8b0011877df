#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LinearSolverSrc/MatrixStructure.h"

namespace verenwick {
namespace {

using Indices = std::vector<std::int32_t>;
using testing::ElementsAre;

TEST(MatrixStructure, ListsNeighboursByTheSecondIndexWithoutTheDiagonal) {
  // A star of four nodes around node 2, diagonal first, an asymmetric extra entry (4, 1) at the
  // end.
  Indices A = {1, 2, 3, 4, 1, 2, 3, 2, 2, 4, 4};
  const Indices B = {1, 2, 3, 4, 2, 1, 2, 3, 4, 2, 1};
  Indices XADJ;
  Indices ADJ;
  std::int32_t status = 7;
  COMPUTESYMMETRICADJACENCYSET(4, A, B, XADJ, ADJ, status);
  EXPECT_EQ(status, 0);
  EXPECT_THAT(XADJ, ElementsAre(1, 3, 6, 7, 8));
  EXPECT_THAT(ADJ, ElementsAre(2, 4, 1, 3, 4, 2, 2));
  // Lists of different length are refused.
  A.pop_back();
  COMPUTESYMMETRICADJACENCYSET(2, A, B, XADJ, ADJ, status);
  EXPECT_EQ(status, -1);
  EXPECT_EQ(XADJ.size(), 5U);
}

TEST(MatrixStructure, BandwidthFollowsThePermutation) {
  // Chain 1-2-3-4.
  const Indices XADJ = {1, 2, 4, 6, 7};
  const Indices ADJ = {2, 1, 3, 2, 4, 3};
  for (const auto& [permutation, inverse, bandwidth] :
       {std::tuple{Indices{1, 2, 3, 4}, Indices{1, 2, 3, 4}, 1},
        {Indices{4, 1, 2, 3}, Indices{2, 3, 4, 1}, 3},
        {Indices{1, 3, 2, 4}, Indices{1, 3, 2, 4}, 2}}) {
    std::int32_t KL = -1;
    std::int32_t KU = -1;
    COMPUTEBANDWIDTH(4, XADJ, ADJ, permutation, inverse, KL, KU);
    EXPECT_EQ(KL, bandwidth);
    EXPECT_EQ(KU, bandwidth);
  }
}

}  // namespace
}  // namespace verenwick
