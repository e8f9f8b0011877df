#include "host/Terminal.h"

#include <cstdlib>
#include <sstream>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace verenwick::host {
namespace {

std::string_view variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

}  // namespace

bool isTerminal(std::FILE* stream) {
#ifdef _WIN32
  return _isatty(_fileno(stream)) != 0;
#else
  return isatty(fileno(stream)) != 0;
#endif
}

bool canRedraw(std::FILE* stream) { return isTerminal(stream) && variable("TERM") != "dumb"; }

std::string styled(std::FILE* stream, const fmt::text_style& style, std::string_view text) {
  return variable("NO_COLOR").empty() && canRedraw(stream) ? fmt::format(style, "{}", text)
                                                           : std::string(text);
}

std::string column(double value, int decimals, std::size_t width) {
  std::string text = fmt::format("{:.{}f}", value, decimals);
  for (int digits = decimals; text.size() >= width && digits >= 0; --digits) {
    text = fmt::format("{:.{}e}", value, digits);
  }
  return fmt::format("{:>{}}", text, width);
}

void printLog(const std::string& log) {
  std::istringstream lines(log);
  std::string line;
  while (std::getline(lines, line)) {
    const bool warning = line.find("Warning") != std::string::npos;
    const auto colour = fg(warning ? fmt::terminal_color::yellow : fmt::terminal_color::red);
    std::fputs((styled(stderr, colour, line) + '\n').c_str(), stderr);
  }
}

}  // namespace verenwick::host
