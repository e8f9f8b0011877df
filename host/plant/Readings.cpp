#include "host/plant/Readings.h"

#include <fmt/format.h>

#include <cmath>
#include <stdexcept>
#include <utility>

#include "host/Units.h"

namespace verenwick::host {

using results::Axis;
using results::Family;
using results::Index;
using results::Position;
using results::ResultDirectory;
using results::resultFile;
using results::ResultValues;
using results::SystemCount;

ShaftLine readLineOf(const ResultDirectory& directory, const std::filesystem::path& input) {
  auto line = readShaftLine(input);
  if (!line || line->inertias.empty()) {
    throw std::runtime_error(fmt::format("{} can't be read as an input file", input.string()));
  }
  const auto differ = [&directory](SystemCount which, std::size_t size) {
    const auto count = directory.count(which);
    return count && *count != static_cast<std::int64_t>(size);
  };
  // Rows behind a blank line of the load case table are load cases at rest.
  const auto loadCases =
      static_cast<std::size_t>(directory.count(SystemCount::loadCases).value_or(0));
  if (line->loadCaseSpeeds.size() < loadCases) {
    line->loadCaseSpeeds.resize(loadCases);
  }
  if (differ(SystemCount::inertias, line->inertias.size()) ||
      differ(SystemCount::shafts, line->shafts.size()) ||
      differ(SystemCount::loadCases, line->loadCaseSpeeds.size())) {
    throw std::runtime_error(
        fmt::format("the results in {} are not of this input file: the numbers of inertias, shafts "
                    "or load cases in SystemInfo.bin differ",
                    directory.path().string()));
  }
  return std::move(*line);
}

std::vector<double> frequencies(const ResultDirectory& directory) {
  ResultValues values = directory.open(resultFile("NaturalFrequency.bin"));
  std::vector<double> result;
  Position at;
  for (at[Index::mode] = 1; at[Index::mode] <= values.axes()[0].last; ++at[Index::mode]) {
    result.push_back(values.value(at));
  }
  return result;
}

bool advance(Position& at, const std::vector<Axis>& axes) {
  for (std::size_t i = axes.size(); i-- > 0;) {
    const Axis& axis = axes[i];
    if (++at[axis.index] <= axis.last) {
      return true;
    }
    at[axis.index] = axis.first;
  }
  return false;
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

std::optional<std::size_t> sourceRow(const ShaftLine& line, Family family, std::int64_t source) {
  for (std::size_t row = 0; row < line.components.size(); ++row) {
    if (line.components[row].family == family && --source == 0) {
      return row;
    }
  }
  return std::nullopt;
}

double orderAt(const Component& component, Family family, std::int64_t places, std::int64_t place) {
  constexpr std::int64_t bladeOrders = 2;
  const auto index = static_cast<std::size_t>(place - 1);
  switch (family) {
    case Family::diesel:
      return static_cast<double>(place) * results::orderStep(places);
    case Family::reciprocatingPump:
      break;
    case Family::propeller:
      if (places != bladeOrders) {
        break;  // of the ice
      }
      [[fallthrough]];
    default:
      return index < component.orders.size() ? component.orders[index] : 0;
  }
  return static_cast<double>(place);
}

}  // namespace verenwick::host
