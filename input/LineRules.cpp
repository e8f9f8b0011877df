#include "input/LineRules.h"

#include <algorithm>
#include <utility>

namespace verenwick::input {

void cutLine(std::string& line, bool isFirst) {
  if (line.ends_with('\r')) {
    line.pop_back();
  }
  if (isFirst && line.starts_with(kByteOrderMark)) {
    line.erase(0, kByteOrderMark.size());
  }
  line.resize(std::min(line.size(), kLineLength));
}

void treatLine(std::string& line) {
  std::replace(line.begin(), line.end(), '\t', ' ');
  std::replace(line.begin(), line.end(), ',', '.');
}

bool LineReader::next(std::streambuf& text, std::string& line) {
  using Traits = std::streambuf::traits_type;
  // Room for a byte order mark and a carriage return to go.
  constexpr std::size_t kept = kLineLength + kByteOrderMark.size() + 1;
  line.clear();
  bool any = false;
  for (auto c = text.sbumpc(); !Traits::eq_int_type(c, Traits::eof()); c = text.sbumpc()) {
    any = true;
    if (c == '\n') {
      break;
    }
    if (line.size() < kept) {
      line.push_back(Traits::to_char_type(c));
    }
  }
  cutLine(line, std::exchange(atStart_, false));
  return any;
}

}  // namespace verenwick::input
