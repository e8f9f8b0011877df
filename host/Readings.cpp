#include "host/Readings.h"

#include <cmath>

namespace verenwick::host {

using results::Axis;
using results::Index;
using results::Position;
using results::ResultDirectory;
using results::resultFile;
using results::ResultValues;

std::vector<double> frequencies(const ResultDirectory& directory) {
  ResultValues values = directory.open(resultFile("NaturalFrequency.bin"));
  std::vector<double> result;
  Position at;
  for (at[Index::mode] = 1; at[Index::mode] <= values.axes()[0].last; ++at[Index::mode]) {
    result.push_back(values.value(at));
  }
  return result;
}

std::vector<double> pointValues(ResultValues& values, Position at) {
  const std::int64_t last = values.axis(Index::point)->last;
  std::vector<double> result;
  result.reserve(static_cast<std::size_t>(last));
  for (at[Index::point] = 1; at[Index::point] <= last; ++at[Index::point]) {
    result.push_back(values.value(at));
  }
  return result;
}

std::vector<CriticalSpeed> criticalSpeeds(ResultValues& sums, ResultValues& speeds, Position at,
                                          double frequency) {
  std::vector<CriticalSpeed> orders;
  for (at[Index::order] = 1; at[Index::order] <= sums.axis(Index::order)->last;
       ++at[Index::order]) {
    const double sum = sums.value(at);
    const double rpm = speeds.value(at);
    if (std::isfinite(sum)) {
      orders.push_back({frequency * kRpmOfAngularSpeed / rpm, sum, rpm});
    }
  }
  return orders;
}

}  // namespace verenwick::host
