#include "RunControl/Files.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "RunControl/RunStopped.h"
#include "RunControl/StringOperation.h"

namespace verenwick {
namespace {

/// Records held back before they go to the file, per file.
constexpr std::size_t kPendingRecords = 8192;

[[noreturn]] void stopAt(const std::string& path) {
  throw RunStopped("** Result file can't be written: " + path);
}

std::uint64_t littleEndian(double value) {
  auto bits = std::bit_cast<std::uint64_t>(value);
  if constexpr (std::endian::native == std::endian::big) {
    std::uint64_t swapped = 0;
    for (int byte = 0; byte < 8; ++byte) {
      swapped = (swapped << 8U) | (bits & 0xFFU);
      bits >>= 8U;
    }
    bits = swapped;
  }
  return bits;
}

}  // namespace

std::filesystem::path nativePath(std::string_view path) {
  std::string native{withoutTrailingBlanks(path)};
  if constexpr (std::filesystem::path::preferred_separator == '/') {
    std::replace(native.begin(), native.end(), '\\', '/');
  }
  return native;
}

std::string resultFileAddress(const results::ResultFile& file) {
  return resultFileAddress(file.name);
}

bool isReadableFile(std::string_view path) {
  std::error_code error;
  // Directories, pipes and devices open as well, and then fail or block.
  return std::filesystem::is_regular_file(nativePath(path), error) &&
         std::ifstream(nativePath(path)).is_open();
}

TextReader::TextReader(std::string_view path) : unit_(GETFILEID()) {
  if (isReadableFile(path)) {
    stream_.open(nativePath(path), std::ios::binary);
  }
}

bool TextReader::readLine(std::string& line) {
  line.clear();
  return isOpen() && lines_.next(*stream_.rdbuf(), line);
}

TextWriter::TextWriter(std::string path, Opening opening)
    : unit_(GETFILEID()),
      path_(std::move(path)),
      stream_(nativePath(path_),
              opening == Opening::append ? std::ios::app : std::ios::out | std::ios::trunc) {}

void TextWriter::writeLine(std::string_view line) { stream_ << line << '\n'; }

bool TextWriter::flush() { return static_cast<bool>(stream_.flush()); }

void TextWriter::close() {
  stream_.close();
  if (!stream_) {
    stopAt(path_);
  }
}

DirectAccessFile::DirectAccessFile(const results::ResultFile& file)
    : unit_(GETFILEID()),
      path_(resultFileAddress(file)),
      stream_(nativePath(path_), std::ios::binary | std::ios::out | std::ios::trunc) {
  if (!stream_) {
    stopAt(path_);
  }
}

void DirectAccessFile::write(std::int64_t record, double value) {
  const bool isNeighbour = record == firstPending_ + static_cast<std::int64_t>(pending_.size());
  if (!isNeighbour || pending_.size() == kPendingRecords) {
    flush();
    firstPending_ = record;
  }
  pending_.push_back(std::bit_cast<double>(littleEndian(value)));
}

void DirectAccessFile::write(std::int64_t record, std::span<const double> values) {
  for (const double value : values) {
    write(record++, value);
  }
}

void DirectAccessFile::flush() {
  if (pending_.empty()) {
    return;
  }
  if (firstPending_ != position_) {
    stream_.seekp((firstPending_ - 1) * static_cast<std::int64_t>(sizeof(double)));
  }
  stream_.write(reinterpret_cast<const char*>(pending_.data()),
                static_cast<std::streamsize>(pending_.size() * sizeof(double)));
  position_ = firstPending_ + static_cast<std::int64_t>(pending_.size());
  pending_.clear();
}

void DirectAccessFile::close() {
  flush();
  stream_.close();
  if (!stream_) {
    stopAt(path_);
  }
}

}  // namespace verenwick
