#include "InputAndChecking/CheckList.h"

#include <algorithm>

namespace verenwick {
namespace {

/// More messages of shared ids than anyone reads.
constexpr std::int64_t kMostSharedIdMessages = 10'000;

}  // namespace

void SharedIds::check(std::int32_t id) {
  const std::int64_t earlier = records_[id]++;
  for (std::int64_t match = matches_ + 1;
       match <= std::min(matches_ + earlier, kMostSharedIdMessages); ++match) {
    log_.error(kind_, id, " has a index (", id, ") used by another one");
  }
  matches_ += earlier;
}

void SharedIds::reportRest() {
  if (matches_ > kMostSharedIdMessages) {
    log_.error(kind_, " indices are used by another one in", matches_ - kMostSharedIdMessages,
               " more cases");
  }
}

}  // namespace verenwick
