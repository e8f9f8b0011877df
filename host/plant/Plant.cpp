#include "host/plant/Plant.h"

#include <fmt/format.h>

#include <cstdint>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "InputAndChecking/ImportInputFile.h"

namespace verenwick::host {

input::InputDocument readDocument(const std::filesystem::path& input) {
  constexpr std::uintmax_t kLargestText = std::uintmax_t{1} << 30U;
  std::error_code error;
  const auto size = std::filesystem::is_regular_file(input, error)
                        ? std::filesystem::file_size(input, error)
                        : kLargestText + 1;
  std::ifstream file(input, std::ios::binary);
  if (error || size > kLargestText || !file) {
    throw std::runtime_error(fmt::format("{} can't be read as an input file", input.string()));
  }
  std::string text(static_cast<std::size_t>(size), '\0');
  file.read(text.data(), static_cast<std::streamsize>(size));
  if (file.gcount() != static_cast<std::streamsize>(size)) {
    throw std::runtime_error(fmt::format("{} can't be read to its end", input.string()));
  }
  return input::InputDocument(std::move(text));
}

std::optional<Plant> readPlant(const std::filesystem::path& input) {
  Plant plant{readDocument(input), {}};
  std::stringbuf text(plant.document.text(), std::ios::in);
  Log unread;
  bool wantsGensetFile = false;
  if (!readTables(text, unread, plant.model, wantsGensetFile)) {
    return std::nullopt;
  }
  return plant;
}

}  // namespace verenwick::host
