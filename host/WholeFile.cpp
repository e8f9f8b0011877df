#include "host/WholeFile.h"

#include <fmt/format.h>

#ifndef _WIN32
#include <unistd.h>
#endif

#include <cerrno>
#include <cstring>
#include <random>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "host/GivenPaths.h"

namespace verenwick::host {
namespace {

namespace fs = std::filesystem;

/// A name in the same directory, which no other program guesses. It is short, whatever the length
/// of the target's.
fs::path temporaryBeside(const fs::path& target) {
  std::random_device random;
  return target.parent_path() / fmt::format(".verenwick-{:08x}{:08x}.part", random(), random());
}

}  // namespace

WholeFile::WholeFile(fs::path target)
    : target_(std::move(target)), temporary_(temporaryBeside(target_)) {
  checkTarget(target_);
  if (target_.filename().empty()) {
    throw std::runtime_error(
        fmt::format("{} can't be written: it names no file", target_.string()));
  }
  unfinished_.emplace(temporary_);
  stream_ = std::fopen(temporary_.c_str(), "wbx");
  if (stream_ == nullptr) {
    fail(errno);
  }
}

WholeFile::~WholeFile() {
  if (stream_ != nullptr) {
    static_cast<void>(std::fclose(stream_));
  }
  if (unfinished_) {
    std::error_code error;
    fs::remove(temporary_, error);
  }
}

void WholeFile::write(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stream_) != text.size()) {
    fail(errno);
  }
}

void WholeFile::bringToDisk() {
#ifndef _WIN32
  if (std::fflush(stream_) != 0 || fsync(fileno(stream_)) != 0) {
    fail(errno);
  }
#endif
}

void WholeFile::close() {
  if (stream_ != nullptr && std::fclose(std::exchange(stream_, nullptr)) != 0) {
    fail(errno);
  }
}

void WholeFile::finish() {
  close();
  std::error_code error;
  fs::rename(temporary_, target_, error);
  if (error) {
    fail(error.value());
  }
  unfinished_.reset();
}

void WholeFile::fail() const {
  for (const int full : {ENOSPC, EDQUOT, EFBIG, EIO, ENOMEM}) {
    if (errno == full) {
      fail(full);
    }
  }
  throw std::runtime_error(fmt::format("{} can't be written", target_.string()));
}

void WholeFile::fail(int error) const {
  throw std::runtime_error(
      fmt::format("{} can't be written: {}", target_.string(), std::strerror(error)));
}

}  // namespace verenwick::host
