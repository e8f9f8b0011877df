#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LinearSolverSrc/MatrixStructure.h"

namespace verenwick {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(MatrixStructure, ListsNeighboursByTheSecondIndexWithoutTheDiagonal) {
  // A star of four nodes around node 2, diagonal first, an asymmetric extra entry (4, 1) at the
  // end.
  const std::vector<std::int32_t> A = {1, 2, 3, 4, 1, 2, 3, 2, 2, 4, 4};
  const std::vector<std::int32_t> B = {1, 2, 3, 4, 2, 1, 2, 3, 4, 2, 1};
  std::vector<std::int32_t> XADJ;
  std::vector<std::int32_t> ADJ;
  std::int32_t status = 7;
  COMPUTESYMMETRICADJACENCYSET(4, A, B, XADJ, ADJ, status);
  EXPECT_EQ(status, 0);
  EXPECT_THAT(XADJ, ElementsAre(1, 3, 6, 7, 8));
  EXPECT_THAT(ADJ, ElementsAre(2, 4, 1, 3, 4, 2, 2));
}

TEST(MatrixStructure, DiagonalAloneHasNoNeighbours) {
  const std::vector<std::int32_t> diagonal = {1, 2, 3};
  std::vector<std::int32_t> XADJ;
  std::vector<std::int32_t> ADJ;
  std::int32_t status = 7;
  COMPUTESYMMETRICADJACENCYSET(3, diagonal, diagonal, XADJ, ADJ, status);
  EXPECT_EQ(status, 0);
  EXPECT_THAT(XADJ, ElementsAre(1, 1, 1, 1));
  EXPECT_THAT(ADJ, IsEmpty());
}

TEST(MatrixStructure, ListsOfDifferentLengthAreRefused) {
  const std::vector<std::int32_t> A = {1, 2};
  const std::vector<std::int32_t> B = {1};
  std::vector<std::int32_t> XADJ;
  std::vector<std::int32_t> ADJ;
  std::int32_t status = 0;
  COMPUTESYMMETRICADJACENCYSET(2, A, B, XADJ, ADJ, status);
  EXPECT_EQ(status, -1);
  EXPECT_THAT(XADJ, IsEmpty());
  EXPECT_THAT(ADJ, IsEmpty());
}

TEST(MatrixStructure, BandwidthFollowsThePermutation) {
  // Chain 1-2-3-4.
  const std::vector<std::int32_t> XADJ = {1, 2, 4, 6, 7};
  const std::vector<std::int32_t> ADJ = {2, 1, 3, 2, 4, 3};
  const auto bandwidth = [&](std::vector<std::int32_t> PERM) {
    std::vector<std::int32_t> INVP(PERM.size());
    for (std::size_t i = 0; i < PERM.size(); ++i) {
      INVP[static_cast<std::size_t>(PERM[i]) - 1] = static_cast<std::int32_t>(i) + 1;
    }
    std::int32_t KL = -1;
    std::int32_t KU = -1;
    COMPUTEBANDWIDTH(4, XADJ, ADJ, PERM, INVP, KL, KU);
    return std::pair(KL, KU);
  };
  EXPECT_EQ(bandwidth({1, 2, 3, 4}), std::pair(1, 1));
  EXPECT_EQ(bandwidth({4, 1, 2, 3}), std::pair(3, 3));
  EXPECT_EQ(bandwidth({1, 3, 2, 4}), std::pair(2, 2));
}

}  // namespace
}  // namespace verenwick
