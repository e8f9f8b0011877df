#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "RunControl/Global_Parameter.h"
#include "input/LineRules.h"
#include "results/ResultFileTable.h"

/// The file layer: the one place that knows the platform. Every opened file has a unit number of
/// its own.
namespace verenwick {

using input::kLineLength;

/// The path as the platform opens it: where directories are separated by slashes, every backslash
/// becomes one.
std::filesystem::path nativePath(std::string_view path);

/// Full path of a result file.
std::string resultFileAddress(const results::ResultFile& file);

/// Whether a file exists and can be read.
bool isReadableFile(std::string_view path);

/// Reads a text file line by line. A line ends at a line feed, with or without a carriage return
/// before it, and a byte order mark at the front of the file is dropped.
class TextReader {
 public:
  explicit TextReader(std::string_view path);
  bool isOpen() const { return stream_.is_open(); }
  /// The next line, cut at 2600 characters; false at the end of the file.
  [[nodiscard]] bool readLine(std::string& line);
  std::int32_t unit() const { return unit_; }

 private:
  std::int32_t unit_;
  std::ifstream stream_;
  input::LineReader lines_;
};

enum class Opening { replace, append };

/// Writes a text file line by line.
class TextWriter {
 public:
  TextWriter(std::string path, Opening opening);
  bool isOpen() const { return stream_.is_open(); }
  void writeLine(std::string_view line);
  /// Whether all lines so far have reached the file.
  [[nodiscard]] bool flush();
  /// Throws RunStopped when the file could not be opened or written.
  void close();
  std::int32_t unit() const { return unit_; }

 private:
  std::int32_t unit_;
  std::string path_;
  std::ofstream stream_;
};

/// A result file of 8-byte records numbered from 1, each one little-endian double, replaced on
/// opening. Neighbouring records are joined into one write.
class DirectAccessFile {
 public:
  /// Opens the file in the result directory; throws RunStopped when it can't be opened.
  explicit DirectAccessFile(const results::ResultFile& file);
  /// A run that is stopped leaves what was written until then.
  ~DirectAccessFile() { flush(); }
  DirectAccessFile(const DirectAccessFile&) = delete;
  DirectAccessFile& operator=(const DirectAccessFile&) = delete;
  /// A failed write is latched and reported by close().
  void write(std::int64_t record, double value);
  void write(std::int64_t record, std::span<const double> values);
  /// Throws RunStopped when a write has failed.
  void close();
  std::int32_t unit() const { return unit_; }

 private:
  void flush();

  std::int32_t unit_;
  std::string path_;
  std::ofstream stream_;
  std::int64_t firstPending_ = 1;
  std::int64_t position_ = 1;
  std::vector<double> pending_;
};

}  // namespace verenwick
