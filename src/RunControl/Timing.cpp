#include "RunControl/Timing.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>

#include "RunControl/Files.h"

namespace verenwick {
namespace {

struct TimeOfDay {
  std::tm clock;
  int milliseconds;
};

TimeOfDay timeOfDay() {
  const auto now = std::chrono::system_clock::now();
  const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
  const auto whole = std::chrono::system_clock::from_time_t(seconds);
  const auto rest = std::chrono::duration_cast<std::chrono::milliseconds>(now - whole).count();
  return {*std::localtime(&seconds), static_cast<int>(rest)};
}

}  // namespace

void RECORDTIME() {
  const TimeOfDay now = timeOfDay();
  std::array<char, 64> line{};
  std::snprintf(line.data(), line.size(), " %d %d %d %d", now.clock.tm_hour, now.clock.tm_min,
                now.clock.tm_sec, now.milliseconds / 10);
  TextWriter("c:\\timelog.txt", Opening::append).writeLine(line.data());
}

float MY_WCT_TIME() {
  const TimeOfDay now = timeOfDay();
  return static_cast<float>(now.clock.tm_hour) * 3600.0F +
         static_cast<float>(now.clock.tm_min) * 60.0F + static_cast<float>(now.clock.tm_sec) +
         static_cast<float>(now.milliseconds) * 0.001F;
}

double MY_CPU_TIME() {
  return static_cast<double>(std::clock()) / static_cast<double>(CLOCKS_PER_SEC);
}

}  // namespace verenwick
