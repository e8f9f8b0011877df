#include "host/Checksum.h"

#include <fmt/format.h>
#include <nettle/sha2.h>

#include <array>
#include <fstream>
#include <span>
#include <stdexcept>
#include <system_error>
#include <vector>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace verenwick::host {
namespace {

std::string hexadecimal(std::uint64_t value) { return fmt::format("{:016x}", value); }

/// Gives the bytes of a file to a function, piece by piece; returns their number.
template <class Take>
std::uintmax_t readThrough(const std::filesystem::path& path, Take take) {
  constexpr std::size_t kPiece = 1U << 18U;
  std::error_code error;
  // A pipe would be waited for, a directory opens and can't be read.
  const bool regular = std::filesystem::is_regular_file(path, error);
  std::ifstream stream;
  stream.rdbuf()->pubsetbuf(nullptr, 0);
  if (regular) {
    stream.open(path, std::ios::binary);
  }
  std::vector<char> piece(kPiece);
  std::uintmax_t bytes = 0;
  while (stream.is_open() && stream) {
    stream.read(piece.data(), static_cast<std::streamsize>(piece.size()));
    const auto count = static_cast<std::size_t>(stream.gcount());
    take(std::span<const char>(piece).first(count));
    bytes += count;
  }
  if (!stream.is_open() || stream.bad()) {
    throw std::runtime_error(fmt::format("{} can't be read", path.string()));
  }
  return bytes;
}

FileState sha256Of(const std::filesystem::path& path) {
  sha256_ctx state{};
  sha256_init(&state);
  FileState result;
  result.bytes = readThrough(path, [&state](std::span<const char> piece) {
    sha256_update(&state, piece.size(), reinterpret_cast<const std::uint8_t*>(piece.data()));
  });
  std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
  sha256_digest(&state, digest.size(), digest.data());
  for (const std::uint8_t byte : digest) {
    result.checksum += fmt::format("{:02x}", byte);
  }
  return result;
}

FileState xxh3Of(const std::filesystem::path& path) {
  XXH3_state_t state;
  XXH3_64bits_reset(&state);
  FileState result;
  result.bytes = readThrough(path, [&state](std::span<const char> piece) {
    XXH3_64bits_update(&state, piece.data(), piece.size());
  });
  result.checksum = hexadecimal(XXH3_64bits_digest(&state));
  return result;
}

}  // namespace

FileState stateOf(const std::filesystem::path& path, Checksum kind) {
  return kind == Checksum::sha256 ? sha256Of(path) : xxh3Of(path);
}

std::string checksumOf(const std::string& text) {
  return hexadecimal(XXH3_64bits(text.data(), text.size()));
}

}  // namespace verenwick::host
