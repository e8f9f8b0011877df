#pragma once

#include <filesystem>
#include <string>

#include "Support/SolverRun.h"

namespace verenwick::test {

/// The files of a made-up plant with every kind of component: every kind of coupling, damper and
/// damping, and a source of each family.
inline const std::filesystem::path kEveryKind = VERENWICK_TESTS "/ForcedVibration/EveryKind";

/// Its input text, the data files put into the directory where that looks for them.
inline std::string everyKindPlant(const TemporaryDirectory& directory) {
  for (const char* file : {"damping.txt", "stiffness.txt", "ice.txt"}) {
    std::filesystem::copy(kEveryKind / file, directory.path());
  }
  return readText(kEveryKind / "input.txt");
}

}  // namespace verenwick::test
