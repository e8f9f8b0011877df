#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/plant/ShaftLine.h"
#include "results/ResultReader.h"

namespace verenwick::host {

/// What the numbers along the axes of a result file stand for: the ids of points and sources, the
/// speeds of load cases, the orders at their places. Nothing where neither the results nor the
/// input file tell.
class PlaceNames {
 public:
  PlaceNames(const results::ResultValues& values, const results::ResultDirectory& directory,
             const std::optional<ShaftLine>& line);

  /// The id at a number of an axis of points or sources.
  [[nodiscard]] std::optional<std::int64_t> id(results::Index index, std::int64_t number) const;
  /// The number with an id.
  [[nodiscard]] std::optional<std::int64_t> numberOf(results::Index index, std::int64_t id) const;
  /// The ids along an axis; empty where they aren't known.
  [[nodiscard]] const std::vector<std::int64_t>& ids(results::Index index) const;
  /// rpm.
  [[nodiscard]] const std::vector<double>& speeds() const { return speeds_; }

  [[nodiscard]] bool knowsOrders() const { return !orders_.empty(); }
  /// The order at a place of a source, 0 where none is used.
  [[nodiscard]] double order(std::int64_t source, std::int64_t place) const;

 private:
  void findOrders(const results::ResultValues& values, const results::ResultDirectory& directory,
                  const std::optional<ShaftLine>& line);

  std::vector<std::int64_t> points_;
  std::vector<std::int64_t> sources_;
  std::vector<double> speeds_;
  std::vector<std::vector<double>> orders_;  ///< by source and place
};

}  // namespace verenwick::host
