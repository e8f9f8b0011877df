#include "RunControl/Log.h"

#include <cstdio>
#include <utility>

namespace verenwick {
namespace {

/// Whether a record has not reached the log since this was asked last.
bool lostRecord = false;

}  // namespace

bool Log::takeLostRecord() { return std::exchange(lostRecord, false); }

Log::Log(Opening opening)
    : writer_(std::in_place, resultFileAddress(results::resultFile("Verenwick.log")), opening) {}

void Log::write(const std::string& line) {
  if (!writer_) {
    return;
  }
  writer_->writeLine(line);
  if (!writer_->flush()) {
    std::fprintf(stderr, "%s\n", line.c_str());
    lostRecord = true;
  }
}

void Log::appendNumber(std::string& line, std::string_view number) {
  if (!line.ends_with(' ') && !line.ends_with('(')) {
    line += ' ';
  }
  line += number;
}

}  // namespace verenwick
