#pragma once

#include <complex>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <string_view>

/// A text file in the result directory for whoever looks into a calculation. Not part of a run.
/// Its texts keep their spelling, by which it is compared with older ones.
namespace verenwick {

class DiagnosticFile {
 public:
  /// No file is opened while `isWanted` is false, and nothing is written then.
  DiagnosticFile(std::string_view name, bool isWanted);
  /// The stream, null if there is none.
  std::FILE* unit() const { return file_.get(); }
  void write(const char* heading);
  /// An array is one line behind its heading.
  void write(const char* heading, std::span<const double> values);
  void write(const char* heading, std::span<const std::complex<double>> values);

 private:
  void writeLine(const std::string& line);

  struct Close {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
  };
  std::unique_ptr<std::FILE, Close> file_;
};

}  // namespace verenwick
