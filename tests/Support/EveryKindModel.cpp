#include "Support/EveryKindModel.h"

#include <stdexcept>

#include "Support/ReadModel.h"

namespace verenwick::test {

std::string everyKindInput() { return readText(VERENWICK_TESTS "/Support/every-kind.txt"); }

ModelBundle everyKindModel() {
  ReadModel read(everyKindInput());
  if (!read.isOk()) {
    throw std::runtime_error(read.log());
  }
  return std::move(read.model);
}

}  // namespace verenwick::test
