#include "host/plant/PlaceNames.h"

#include <algorithm>
#include <cmath>

#include "host/Units.h"
#include "host/plant/Readings.h"

namespace verenwick::host {
namespace {

using results::Axis;
using results::Family;
using results::Index;
using results::Layout;
using results::Points;
using results::Position;
using results::ResultDirectory;
using results::resultFile;
using results::ResultFile;
using results::ResultValues;

/// The sources along the axis of a file, where the input file has as many.
std::vector<const Component*> sourcesOf(const ResultFile& file, const Axis* axis,
                                        const std::optional<ShaftLine>& line) {
  std::vector<const Component*> sources;
  if (!line || axis == nullptr) {
    return sources;
  }
  const Family family = file.layout == Layout::family ? file.family : Family::diesel;
  for (const Component& each : line->components) {
    if (each.family == family) {
      sources.push_back(&each);
    }
  }
  return static_cast<std::int64_t>(sources.size()) == axis->size()
             ? sources
             : std::vector<const Component*>();
}

/// The first order of an engine in the vector sums, by the speed at which it meets the natural
/// frequency: in a plant with both, two-stroke engines have whole orders and others halves. Nothing
/// where no mode has one.
std::optional<double> firstOrder(const ResultDirectory& directory, std::int64_t engine) {
  ResultValues speeds = directory.open(resultFile("VectorSumRpm.bin"));
  const std::vector<double> frequency = frequencies(directory);
  Position at;
  at[Index::source] = engine;
  at[Index::order] = 1;
  for (at[Index::mode] = 2; at[Index::mode] <= speeds.axis(Index::mode)->last; ++at[Index::mode]) {
    const double order = frequency.at(static_cast<std::size_t>(at[Index::mode] - 1)) *
                         kRpmOfAngularSpeed / speeds.value(at);
    if (std::isfinite(order) && order > 0) {
      return std::round(2 * order) / 2;
    }
  }
  return std::nullopt;
}

}  // namespace

PlaceNames::PlaceNames(const ResultValues& values, const ResultDirectory& directory,
                       const std::optional<ShaftLine>& line) {
  if (line && values.file().points == Points::inertias) {
    for (const Inertia& each : line->inertias) {
      points_.push_back(each.id);
    }
  } else if (line && values.file().points == Points::shafts) {
    for (const Shaft& each : line->shafts) {
      points_.push_back(each.id);
    }
  }
  if (line && values.axis(Index::loadCase) != nullptr) {
    speeds_ = line->loadCaseSpeeds;
  }
  for (const Component* each : sourcesOf(values.file(), values.axis(Index::source), line)) {
    sources_.push_back(each->id);
  }
  findOrders(values, directory, line);
}

void PlaceNames::findOrders(const ResultValues& values, const ResultDirectory& directory,
                            const std::optional<ShaftLine>& line) {
  const Axis* places = values.axis(Index::order);
  const Axis* sources = values.axis(Index::source);
  if (places == nullptr || sources == nullptr) {
    return;
  }
  const ResultFile& file = values.file();
  const bool sums = file.layout == Layout::engineModeOrder;
  const bool alike = sums || file.family == Family::diesel ||
                     file.family == Family::reciprocatingPump;  // whatever the input says
  const auto components = sourcesOf(file, sources, line);
  if (!alike && components.empty()) {
    return;
  }
  std::vector<std::vector<double>> orders(static_cast<std::size_t>(sources->size()));
  for (std::size_t source = 0; source < orders.size(); ++source) {
    const auto step =
        sums ? firstOrder(directory, static_cast<std::int64_t>(source) + 1) : std::optional(0.0);
    if (!step) {
      return;
    }
    for (std::int64_t place = places->first; place <= places->last; ++place) {
      orders[source].push_back(sums ? *step * static_cast<double>(place)
                                    : orderAt(alike ? Component{} : *components[source],
                                              file.family, places->size(), place));
    }
  }
  orders_ = std::move(orders);
}

const std::vector<std::int64_t>& PlaceNames::ids(Index index) const {
  static const std::vector<std::int64_t> none;
  return index == Index::point ? points_ : index == Index::source ? sources_ : none;
}

std::optional<std::int64_t> PlaceNames::id(Index index, std::int64_t number) const {
  const auto& known = ids(index);
  return known.empty() ? std::nullopt
                       : std::optional(known.at(static_cast<std::size_t>(number - 1)));
}

std::optional<std::int64_t> PlaceNames::numberOf(Index index, std::int64_t id) const {
  const auto& known = ids(index);
  const auto found = std::find(known.begin(), known.end(), id);
  return found == known.end() ? std::nullopt : std::optional(found - known.begin() + 1);
}

double PlaceNames::order(std::int64_t source, std::int64_t place) const {
  return orders_.at(static_cast<std::size_t>(source - 1)).at(static_cast<std::size_t>(place - 1));
}

}  // namespace verenwick::host
