#include "RunControl/Log.h"

namespace verenwick {

Log::Log(Opening opening) : writer_(resultFileAddress("Verenwick.log"), opening) {}

void Log::appendNumber(std::string& line, std::string_view number) {
  if (!line.ends_with(' ') && !line.ends_with('(')) {
    line += ' ';
  }
  line += number;
}

}  // namespace verenwick
