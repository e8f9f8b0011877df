#include "ComputationsSrc/Lapack.h"

#include <cstdlib>

#include "RunControl/RunStopped.h"

namespace verenwick::lapack {
namespace {

/// OpenBLAS maps a buffer of this size at the first call that needs one, and keeps it for the life
/// of the process. Refused, it asks again for ever, so that a process with little address space
/// would hang instead of failing. Other libraries take far less.
constexpr std::size_t kBuffer = 128U << 20U;

}  // namespace

void claimMemory() {
  static bool isClaimed = false;
  if (isClaimed) {
    return;
  }
  // Volatile, or the pair of calls would be optimised away. The C library maps a block of this size
  // by itself and gives it back at once.
  void* volatile room = std::malloc(kBuffer);
  const bool isThere = room != nullptr;
  std::free(room);
  if (!isThere) {
    throw RunStopped(
        "** Not enough memory for this run: the linear algebra library takes 128 MB of address "
        "space");
  }
  // A factorisation of order 1 has the library take its buffer while the room is known to be there.
  Complex one = 1.0;
  std::int32_t pivot = 0;
  std::int32_t info = 0;
  zgetrf_(1, 1, &one, 1, &pivot, info);
  isClaimed = true;
}

}  // namespace verenwick::lapack
