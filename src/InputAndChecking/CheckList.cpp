#include "InputAndChecking/CheckList.h"

#include <algorithm>

namespace verenwick {

void SharedIds::check(std::int32_t id) {
  const std::int64_t earlier = records_[id]++;
  for (std::int64_t match = matches_ + 1; match <= std::min(matches_ + earlier, kMostMessages);
       ++match) {
    log_.error(kind_, id, " has a index (", id, ") used by another one");
  }
  matches_ += earlier;
}

void SharedIds::reportRest() {
  if (matches_ > kMostMessages) {
    log_.error(kind_, " indices are used by another one in", matches_ - kMostMessages,
               " more cases");
  }
}

}  // namespace verenwick
