#include "host/ScratchDirectory.h"

#include <fmt/format.h>

#include <random>
#include <stdexcept>
#include <system_error>

namespace verenwick::host {

ScratchDirectory::ScratchDirectory() {
  std::error_code error;
  const std::filesystem::path parent = std::filesystem::temp_directory_path(error);
  std::random_device random;
  constexpr int kTries = 100;
  for (int i = 0; i < kTries && !error; ++i) {
    path_ = parent / fmt::format("verenwick-{:08x}{:08x}", random(), random());
    if (std::filesystem::create_directory(path_, error)) {
      std::filesystem::permissions(path_, std::filesystem::perms::owner_all, error);
      return;
    }
  }
  throw std::runtime_error(fmt::format("no temporary directory can be made in {}: {}",
                                       parent.empty() ? "TMPDIR" : parent.string(),
                                       error.message()));
}

ScratchDirectory::~ScratchDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace verenwick::host
