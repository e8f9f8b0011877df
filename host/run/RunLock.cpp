#include "host/run/RunLock.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

namespace verenwick::host {
namespace {

/// Not through a link, and without waiting for the other end of a pipe.
constexpr int kCareful = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;

[[noreturn]] void fail(const std::filesystem::path& path, int error) {
  throw std::runtime_error(fmt::format("the lock {} can't be made: {}", path.string(),
                                       std::system_category().message(error)));
}

/// The whole file, for one writer.
struct flock wholeFile() {
  struct flock region {};
  region.l_type = F_WRLCK;
  region.l_whence = SEEK_SET;
  return region;
}

bool isRegular(int file, struct stat& status) {
  return fstat(file, &status) == 0 && S_ISREG(status.st_mode);
}

}  // namespace

RunLock::RunLock(const std::filesystem::path& directory) : path_(directory / kLockName) {
  constexpr mode_t everybody = 0666;
  while (true) {
    file_ = open(path_.c_str(), O_RDWR | O_CREAT | kCareful, everybody);
    if (file_ < 0) {
      fail(path_, errno);
    }
    struct stat opened {};
    int error = isRegular(file_, opened) ? 0 : EINVAL;
    struct flock region = wholeFile();
    if (error == 0 && fcntl(file_, F_SETLK, &region) != 0) {
      error = errno;
    }
    if (error != 0) {
      close(file_);
      if (error == EACCES || error == EAGAIN) {
        throw std::runtime_error(
            fmt::format("another run is on in the result directory {}", directory.string()));
      }
      fail(path_, error);
    }
    // The run that held it may have taken the file away in between.
    struct stat named {};
    if (lstat(path_.c_str(), &named) == 0 && named.st_dev == opened.st_dev &&
        named.st_ino == opened.st_ino) {
      return;
    }
    close(file_);
  }
}

RunLock::~RunLock() {
  // While it is held, so that no other run loses its lock file.
  unlink(path_.c_str());
  close(file_);
}

bool RunLock::isHeld(const std::filesystem::path& directory) {
  const int file = open((directory / kLockName).c_str(), O_RDONLY | kCareful);
  if (file < 0) {
    return false;
  }
  struct stat status {};
  struct flock region = wholeFile();
  const bool held =
      isRegular(file, status) && fcntl(file, F_GETLK, &region) == 0 && region.l_type != F_UNLCK;
  close(file);
  return held;
}

}  // namespace verenwick::host
