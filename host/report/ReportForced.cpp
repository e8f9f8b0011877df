#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "host/plant/Readings.h"
#include "host/report/ReportData.h"
#include "host/summary/UnresolvedPeaks.h"

namespace verenwick::host {
namespace {

using nlohmann::json;
using results::Family;
using results::Index;
using results::Position;
using results::Quantity;
using results::ResultDirectory;
using results::ResultFile;
using results::resultFile;
using results::ResultValues;

/// An order below this share of the strongest one at its point isn't drawn.
constexpr double kShareDrawn = 0.01;

/// An order of a source, with its place in the files of the family.
struct Contribution {
  Family family;
  std::int64_t source;
  std::int64_t place;
  std::size_t component;
  double order;
};

/// Calls `each` with the contribution, the load case and the amplitudes of all points, for one
/// quantity over all families and load cases.
template <class Function>
void forContributions(const ShaftLine& line, const ResultDirectory& directory, Quantity quantity,
                      Function each) {
  for (int f = 0; f < results::kFamilies; ++f) {
    const auto family = static_cast<Family>(f);
    const ResultFile& file = results::familyFile(family, quantity);
    if (!directory.has(file)) {
      continue;
    }
    ResultValues values = directory.open(file);
    const std::int64_t sources = values.axis(Index::source)->last;
    const std::int64_t places = sources > 0 ? values.axis(Index::order)->last : 0;
    Position at;
    for (at[Index::loadCase] = 1; at[Index::loadCase] <= values.axis(Index::loadCase)->last;
         ++at[Index::loadCase]) {
      for (at[Index::source] = 1; at[Index::source] <= sources; ++at[Index::source]) {
        const auto row = sourceRow(line, family, at[Index::source]);
        for (at[Index::order] = 1; row && at[Index::order] <= places; ++at[Index::order]) {
          const Contribution contribution = {
              family, at[Index::source], at[Index::order], *row,
              orderAt(line.components[*row], family, places, at[Index::order])};
          each(contribution, static_cast<std::size_t>(at[Index::loadCase] - 1),
               pointValues(values, at));
        }
      }
    }
  }
}

/// A contribution as a key of a map.
using Key = std::pair<std::size_t, std::int64_t>;

Key keyOf(const Contribution& contribution) { return {contribution.component, contribution.place}; }

/// The strongest contributions of each point, in all load cases, strongest first. NaN is strong.
json strongestOrders(const ShaftLine& line, const ResultDirectory& directory, Quantity quantity,
                     std::size_t points) {
  const auto strength = [](double amplitude) {
    return std::isnan(amplitude) ? HUGE_VAL : amplitude;
  };
  std::map<Key, std::vector<double>> peaks;
  forContributions(
      line, directory, quantity,
      [&](const Contribution& contribution, std::size_t, const std::vector<double>& amplitudes) {
        auto& peak = peaks[keyOf(contribution)];
        peak.resize(points);
        for (std::size_t i = 0; i < points; ++i) {
          peak[i] = std::max(peak[i], strength(amplitudes[i]));
        }
      });
  // Points and ranks of the contributions that are drawn.
  std::map<Key, std::vector<std::pair<std::size_t, std::size_t>>> drawn;
  std::vector<std::vector<json>> curves(points);
  for (std::size_t point = 0; point < points; ++point) {
    std::vector<std::pair<double, Key>> ranking;
    for (const auto& [key, peak] : peaks) {
      if (peak[point] > 0) {
        ranking.emplace_back(peak[point], key);
      }
    }
    std::stable_sort(ranking.begin(), ranking.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    while (ranking.size() > kOrdersDrawn ||
           (!ranking.empty() && ranking.back().first < kShareDrawn * ranking.front().first)) {
      ranking.pop_back();
    }
    curves[point].resize(ranking.size());
    for (std::size_t rank = 0; rank < ranking.size(); ++rank) {
      drawn[ranking[rank].second].emplace_back(point, rank);
    }
  }
  forContributions(line, directory, quantity,
                   [&](const Contribution& contribution, std::size_t loadCase,
                       const std::vector<double>& amplitudes) {
                     const auto found = drawn.find(keyOf(contribution));
                     if (found == drawn.end()) {
                       return;
                     }
                     for (const auto& [point, rank] : found->second) {
                       json& curve = curves[point][rank];
                       if (loadCase == 0) {
                         curve = {{"component", contribution.component},
                                  {"order", rounded(contribution.order)},
                                  {"values", json::array()}};
                       }
                       curve["values"].push_back(rounded(amplitudes[point]));
                     }
                   });
  return curves;
}

/// A file with a value a point and load case, as a list of the load cases for each point.
json perPoint(const ResultDirectory& directory, const ResultFile& file) {
  ResultValues values = directory.open(file);
  json points = json::array();
  for (std::int64_t i = 0; i < values.axis(Index::point)->last; ++i) {
    points.push_back(json::array());
  }
  Position at;
  for (at[Index::loadCase] = 1; at[Index::loadCase] <= values.axis(Index::loadCase)->last;
       ++at[Index::loadCase]) {
    std::size_t point = 0;
    for (const double value : pointValues(values, at)) {
      points[point++].push_back(rounded(value));
    }
  }
  return points;
}

/// For every contribution the largest amplitude of each load case, and the shaft that has it.
json largestPerOrder(const ShaftLine& line, const ResultDirectory& directory, Quantity quantity) {
  std::map<Key, json> rows;
  forContributions(line, directory, quantity,
                   [&rows](const Contribution& contribution, std::size_t,
                           const std::vector<double>& amplitudes) {
                     json& row = rows[keyOf(contribution)];
                     if (row.is_null()) {
                       row = {{"component", contribution.component},
                              {"order", rounded(contribution.order)},
                              {"values", json::array()},
                              {"shafts", json::array()}};
                     }
                     const auto largest = std::max_element(amplitudes.begin(), amplitudes.end());
                     const bool any = largest != amplitudes.end();
                     row["values"].push_back(any ? rounded(*largest) : nullptr);
                     row["shafts"].push_back(largest - amplitudes.begin());
                   });
  json list = json::array();
  for (auto& [key, row] : rows) {
    list.push_back(std::move(row));
  }
  return list;
}

/// Peaks that the load cases step over.
json unresolved(const ShaftLine& line, const ResultDirectory& directory) {
  json rows = json::array();
  for (const UnresolvedPeak& peak : unresolvedPeaks(line, directory)) {
    rows.push_back({{"components", peak.components},
                    {"order", rounded(peak.order)},
                    {"mode", peak.mode},
                    {"speed", rounded(peak.speed)},
                    {"below", rounded(peak.below)},
                    {"above", rounded(peak.above)},
                    {"words", wordsOf(peak, line)}});
  }
  return rows;
}

}  // namespace

json forcedData(const ShaftLine& line, const ResultDirectory& directory) {
  struct Picture {
    const char* name;
    Quantity quantity;
    const ResultFile* total;
    const ResultFile* ice;  ///< by the propellers in ice alone
    const ResultFile* nominal;
  };
  constexpr std::array pictures = {
      Picture{"deflection", Quantity::deflection, &resultFile("SynthesisDeflection.bin"),
              &resultFile("SynPropIceDeflection.bin"), nullptr},
      Picture{"torque", Quantity::torque, &resultFile("SynthesisTorque.bin"),
              &resultFile("SynPropIceTorque.bin"), &resultFile("NominalTorque.bin")},
      Picture{"stress", Quantity::stress, &resultFile("SynthesisStress.bin"),
              &resultFile("SynPropIceStress.bin"), &resultFile("NominalStress.bin")},
      Picture{"damping", Quantity::dampingTorque, &resultFile("SynthesisDampingTorque.bin"),
              &resultFile("SynPropIceDampingTorque.bin"), nullptr},
  };
  json data;
  for (const Picture& picture : pictures) {
    if (!directory.has(*picture.total)) {
      continue;
    }
    json& place = data[picture.name];
    place["total"] = perPoint(directory, *picture.total);
    place["orders"] = strongestOrders(line, directory, picture.quantity, place["total"].size());
    if (directory.has(*picture.ice)) {
      place["ice"] = perPoint(directory, *picture.ice);
    }
    if (picture.nominal != nullptr) {
      place["nominal"] = perPoint(directory, *picture.nominal);
    }
  }
  if (directory.has(resultFile("ResultantTorque.bin"))) {
    data["torque"]["resultant"] = perPoint(directory, resultFile("ResultantTorque.bin"));
  }
  data["acceleration"]["total"] = perPoint(directory, resultFile("SynthesisAcceleration.bin"));
  data["loss"]["total"] = perPoint(directory, resultFile("ShaftPowerLoss.bin"));
  const bool stressed = std::any_of(line.shafts.begin(), line.shafts.end(),
                                    [](const Shaft& shaft) { return shaft.outerDiameter > 0; });
  data["unresolved"] = unresolved(line, directory);
  data["largest"] = {
      {"quantity", stressed ? "stress" : "torque"},
      {"orders", largestPerOrder(line, directory, stressed ? Quantity::stress : Quantity::torque)}};
  return data;
}

}  // namespace verenwick::host
