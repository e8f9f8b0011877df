#pragma once

#include <cstdint>
#include <span>
#include <vector>

/// Structure of a symmetric sparse matrix given by its coordinate entries.
namespace verenwick {

/// Lists the neighbours of every node, grouped by the second index list; entries on the diagonal
/// are dropped. Indices count from 1.
/// @param XADJ   N + 1 starts: the neighbours of node j stand in ADJ from XADJ(j) to XADJ(j + 1) -
/// 1
/// @param status 0; -1 if the lists differ in length, and then nothing else is done
void COMPUTESYMMETRICADJACENCYSET(std::int32_t N, std::span<const std::int32_t> A,
                                  std::span<const std::int32_t> B, std::vector<std::int32_t>& XADJ,
                                  std::vector<std::int32_t>& ADJ, std::int32_t& status);

/// Lower and upper bandwidth of a symmetric structure under a permutation and its inverse.
void COMPUTEBANDWIDTH(std::int32_t N, std::span<const std::int32_t> XADJ,
                      std::span<const std::int32_t> ADJ, std::span<const std::int32_t> PERM,
                      std::span<const std::int32_t> INVP, std::int32_t& KL, std::int32_t& KU);

}  // namespace verenwick
