#pragma once

#include <cstdint>
#include <span>
#include <vector>

/// Structure of a symmetric sparse matrix given by its coordinate entries, for the band forms. Not
/// part of a run.
namespace verenwick {

/// Lists the neighbours of every node, grouped by the second index list; entries on the diagonal
/// are dropped.
/// @param A, B   the two indices of each entry, from 1 to N
/// @param XADJ   out, N + 1 starts: the neighbours of node j stand in ADJ from XADJ(j) up to but
/// not
///               including XADJ(j + 1)
/// @param status out, 0; -1 if the lists differ in length, and then nothing else is done
void COMPUTESYMMETRICADJACENCYSET(std::int32_t N, std::span<const std::int32_t> A,
                                  std::span<const std::int32_t> B, std::vector<std::int32_t>& XADJ,
                                  std::vector<std::int32_t>& ADJ, std::int32_t& status);

/// Lower and upper bandwidth of a symmetric structure under a permutation.
/// @param XADJ, ADJ neighbours of each node
/// @param PERM      N: the node at each place, from 1
/// @param INVP      N: the place of each node
/// @param KL, KU    out, the furthest that a neighbour's place lies behind and before a node's
void COMPUTEBANDWIDTH(std::int32_t N, std::span<const std::int32_t> XADJ,
                      std::span<const std::int32_t> ADJ, std::span<const std::int32_t> PERM,
                      std::span<const std::int32_t> INVP, std::int32_t& KL, std::int32_t& KU);

}  // namespace verenwick
