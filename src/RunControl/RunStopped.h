#pragma once

#include <stdexcept>

namespace verenwick {

/// Ends a run in the middle: a failed factorisation, or a file that can't be written. The main
/// entry catches it and puts its words to standard error and into the log.
class RunStopped : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace verenwick
