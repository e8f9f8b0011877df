#include "host/run/Progress.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <exception>
#include <utility>

#include "host/Terminal.h"
#include "results/ResultReader.h"

namespace verenwick::host {
namespace {

namespace fs = std::filesystem;

/// The share of the forced results that a run has written, by the size of its files.
double shareWritten(const fs::path& directory) {
  double written = 0;
  double expected = 0;
  try {
    const results::ResultDirectory results(directory);
    for (const results::ResultFile& file : results::kResultFiles) {
      if (file.layout == results::Layout::family && results.has(file)) {
        const auto records = results.expectedRecords(file);
        expected += static_cast<double>(records.value_or(0) * results::kRecordBytes);
        written += records ? static_cast<double>(fs::file_size(directory / file.name)) : 0;
      }
    }
  } catch (const std::exception&) {
    return 0;  // a file that is being made
  }
  return expected > 0 ? std::min(1.0, written / expected) : 0;
}

}  // namespace

std::string progressOf(const fs::path& results) {
  constexpr std::size_t width = 24;
  constexpr double percent = 100;
  const double share = shareWritten(results);
  const auto full = static_cast<std::size_t>(std::lround(share * width));
  return fmt::format("[{}{}] {:3.0f} %", std::string(full, '#'), std::string(width - full, '.'),
                     share * percent);
}

ProgressLine::ProgressLine(fs::path results) : results_(std::move(results)) {
  try {
    thread_ = std::thread([this] { watch(); });
  } catch (const std::exception&) {
    ended_ = true;  // no thread is to be had
  }
}

ProgressLine::~ProgressLine() {
  ended_ = true;
  if (thread_.joinable()) {
    thread_.join();
  }
}

void ProgressLine::watch() const {
  using Clock = std::chrono::steady_clock;
  constexpr auto silence = std::chrono::seconds(1);
  constexpr auto pause = std::chrono::milliseconds(20);
  constexpr auto redraw = std::chrono::milliseconds(200);
  const auto start = Clock::now();
  auto next = start + silence;
  try {
    for (; !ended_; std::this_thread::sleep_for(pause)) {
      if (Clock::now() < next) {
        continue;
      }
      next += redraw;
      const std::chrono::duration<double> seconds = Clock::now() - start;
      std::fputs(fmt::format("\r{}{:7.1f} s{}", progressOf(results_), seconds.count(), kClearToEnd)
                     .c_str(),
                 stderr);
    }
  } catch (const std::exception&) {
    // The run goes on without its line.
  }
  if (next > start + silence) {
    std::fputs(fmt::format("\r{}", kClearToEnd).c_str(), stderr);
  }
}

}  // namespace verenwick::host
