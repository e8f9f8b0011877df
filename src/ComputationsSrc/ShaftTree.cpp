#include "ComputationsSrc/ShaftTree.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "RunControl/Positions.h"

namespace verenwick {
namespace {

bool isPositive(double value) { return value > 0.0 && std::isfinite(value); }

}  // namespace

std::optional<ShaftTree> ShaftTree::of(std::span<const std::int32_t> ROWIND,
                                       std::span<const std::int32_t> COLIND,
                                       std::span<const double> K, std::span<const double> M) {
  ShaftTree tree;
  tree.inertia.assign(M.begin(), M.end());
  struct Neighbour {
    std::size_t node;
    std::size_t shaft;
  };
  std::vector<std::vector<Neighbour>> neighbours(M.size());
  // Behind the diagonal each shaft has an entry and its transpose.
  for (std::size_t e = M.size(); e < K.size(); e += 2) {
    const std::size_t shaft = tree.stiffness.size();
    neighbours[index(ROWIND[e])].push_back({index(COLIND[e]), shaft});
    neighbours[index(COLIND[e])].push_back({index(ROWIND[e]), shaft});
    tree.stiffness.push_back(-K[e]);
  }
  std::vector<bool> isReached(M.size());
  isReached[0] = true;
  tree.joints_ = {{0, kNone, kNone}};
  for (std::size_t next = 0; next < tree.joints_.size(); ++next) {
    const std::size_t node = tree.joints_[next].node;
    for (const Neighbour& neighbour : neighbours[node]) {
      if (!isReached[neighbour.node]) {
        isReached[neighbour.node] = true;
        tree.joints_.push_back({neighbour.node, node, neighbour.shaft});
      }
    }
  }
  std::reverse(tree.joints_.begin(), tree.joints_.end());
  const bool isTree = tree.joints_.size() == M.size() && tree.stiffness.size() + 1 == M.size();
  if (!isTree || !std::all_of(M.begin(), M.end(), isPositive) ||
      !std::all_of(tree.stiffness.begin(), tree.stiffness.end(), isPositive)) {
    return std::nullopt;
  }
  return tree;
}

std::int32_t ShaftTree::modesBelow(double eigenvalue) const {
  // What a branch holds against its own inertia: the dynamic stiffness at each node without the
  // shaft towards the root. A pivot of the elimination below 0 is a mode below the eigenvalue.
  std::vector<double> held(inertia.size());
  std::int32_t below = 0;
  for (const auto& [node, parent, shaft] : joints_) {
    const double own = held[node] - eigenvalue * inertia[node];
    if (parent == kNone) {
      below += own < 0.0 ? 1 : 0;
      break;
    }
    const double pivot = own + stiffness[shaft];
    below += pivot < 0.0 ? 1 : 0;
    held[parent] += std::isinf(own) ? stiffness[shaft] : stiffness[shaft] * (own / pivot);
  }
  return below;
}

double ShaftTree::frequency(std::int32_t mode) const {
  // Doubles above 0 lie in the order of their bits.
  std::int64_t low = 0;
  std::int64_t high = std::bit_cast<std::int64_t>(std::numeric_limits<double>::infinity());
  while (high - low > 1) {
    const std::int64_t middle = low + (high - low) / 2;
    (modesBelow(std::bit_cast<double>(middle)) < mode ? low : high) = middle;
  }
  return std::sqrt(std::bit_cast<double>(high));
}

}  // namespace verenwick
