#include "ComputationsSrc/DiagnosticFile.h"

#include "RunControl/Files.h"
#include "RunControl/NumberText.h"

namespace verenwick {

DiagnosticFile::DiagnosticFile(std::string_view name, bool isWanted) {
  if (isWanted) {
    file_.reset(std::fopen(nativePath(resultFileAddress(name)).string().c_str(), "w"));
  }
}

void DiagnosticFile::write(const char* heading) { writeLine(std::string(" ") + heading); }

void DiagnosticFile::writeLine(const std::string& line) {
  if (file_) {
    std::fprintf(file_.get(), "%s\n", line.c_str());
  }
}

void DiagnosticFile::write(const char* heading, std::span<const double> values) {
  if (!file_) {
    return;
  }
  write(heading);
  std::string line;
  for (const double value : values) {
    line += ' ' + shortestText(value);
  }
  writeLine(line);
}

void DiagnosticFile::write(const char* heading, std::span<const std::complex<double>> values) {
  if (!file_) {
    return;
  }
  write(heading);
  std::string line;
  for (const auto& value : values) {
    line += " (" + shortestText(value.real()) + ',' + shortestText(value.imag()) + ')';
  }
  writeLine(line);
}

}  // namespace verenwick
