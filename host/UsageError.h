#pragma once

#include <stdexcept>

namespace verenwick::host {

/// Wrong usage that only shows when a command runs: exit status 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace verenwick::host
