#include "ComputationsSrc/DiagnosticFile.h"

#include "RunControl/Files.h"
#include "RunControl/NumberText.h"

namespace verenwick {

DiagnosticFile::DiagnosticFile(std::string_view name, bool isWanted) {
  if (isWanted) {
    file_.reset(std::fopen(nativePath(resultFileAddress(name)).string().c_str(), "w"));
  }
}

void DiagnosticFile::write(const char* heading) {
  if (file_) {
    std::fprintf(file_.get(), " %s\n", heading);
  }
}

void DiagnosticFile::write(const char* heading, std::span<const double> values) {
  write(heading);
  for (const double value : file_ ? values : std::span<const double>()) {
    std::fprintf(file_.get(), " %s\n", shortestText(value).c_str());
  }
}

void DiagnosticFile::write(const char* heading, std::span<const std::complex<double>> values) {
  write(heading);
  for (const auto& value : file_ ? values : std::span<const std::complex<double>>()) {
    std::fprintf(file_.get(), " (%s,%s)\n", shortestText(value.real()).c_str(),
                 shortestText(value.imag()).c_str());
  }
}

}  // namespace verenwick
