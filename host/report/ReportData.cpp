#include "host/report/ReportData.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <string>

#include "host/Units.h"
#include "host/check/Check.h"
#include "host/check/FindingOutput.h"
#include "host/plant/Readings.h"
#include "host/summary/UnresolvedPeaks.h"
#include "verenwick.h"

namespace verenwick::host {
namespace {

using nlohmann::json;
using results::Index;
using results::Position;
using results::ResultDirectory;
using results::ResultFile;
using results::resultFile;
using results::ResultValues;
using results::SystemCount;

/// Critical speeds above this multiple of the highest speed of the plant are of no interest.
constexpr double kSpeedMargin = 1.3;

json inertias(const ShaftLine& line) {
  json rows = json::array();
  for (const Inertia& each : line.inertias) {
    rows.push_back({{"id", each.id},
                    {"name", each.name},
                    {"ratio", each.rpmRatio},
                    {"inertia", each.inertia}});
  }
  return rows;
}

json shafts(const ShaftLine& line) {
  json rows = json::array();
  for (const Shaft& each : line.shafts) {
    rows.push_back({{"id", each.id},
                    {"name", each.name},
                    {"origin", each.origin},
                    {"destination", each.destination},
                    {"ratio", each.rpmRatio},
                    {"stiffness", each.stiffness},
                    {"outer", each.outerDiameter},
                    {"inner", each.innerDiameter}});
  }
  return rows;
}

/// The orders that a component excites, those of the input file where the run decides none.
std::vector<double> ordersOf(const Component& component, const ResultDirectory& directory) {
  constexpr const ResultFile& propellers = resultFile("PropellerDeflection.bin");
  std::int64_t count = 0;
  if (component.family == results::Family::diesel) {
    count = directory.count(SystemCount::dieselOrders).value_or(0);
  } else if (component.family == results::Family::reciprocatingPump) {
    count = results::fixedOrders(*component.family);
  } else if (component.family == results::Family::propeller && directory.has(propellers)) {
    count = directory.open(propellers).axis(Index::order)->last;
  }
  if (count == 0) {
    return component.orders;
  }
  std::vector<double> orders;
  for (std::int64_t place = 1; place <= count; ++place) {
    orders.push_back(orderAt(component, *component.family, count, place));
  }
  return orders;
}

double ratioOf(const Component& component, const ShaftLine& line) {
  return component.inertias.empty() ? 1 : line.inertias[component.inertias[0]].rpmRatio;
}

json components(const ShaftLine& line, const ResultDirectory& directory) {
  json rows = json::array();
  for (const Component& each : line.components) {
    json row = {{"kind", each.kind},
                {"id", each.id},
                {"name", each.name},
                {"inertias", each.inertias},
                {"shafts", each.shafts},
                {"power", each.power},
                {"speed", each.speed},
                {"ratio", ratioOf(each, line)},
                {"orders", ordersOf(each, directory)}};
    if (each.fixedSpeed) {
      row["fixedSpeed"] = *each.fixedSpeed;
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

json counts(const ResultDirectory& directory) {
  json rows = json::array();
  for (std::int64_t record = 1; record <= results::kSystemCounts; ++record) {
    const auto which = static_cast<SystemCount>(record);
    const std::int64_t number = directory.count(which).value_or(0);
    if (which != SystemCount::dieselOrders && number > 0) {
      rows.push_back({results::kSystemCountNames.at(static_cast<std::size_t>(record) - 1), number});
    }
  }
  return rows;
}

/// The row of an engine, by its number among the engines.
std::size_t engineRow(const ShaftLine& line, std::int64_t engine) {
  if (const auto row = sourceRow(line, results::Family::diesel, engine)) {
    return *row;
  }
  throw std::runtime_error("VectorSum.bin: holds more engines than the input file");
}

json criticals(const ShaftLine& line, const ResultDirectory& directory,
               const std::vector<double>& omega) {
  ResultValues sums = directory.open(resultFile("VectorSum.bin"));
  ResultValues speeds = directory.open(resultFile("VectorSumRpm.bin"));
  json rows = json::array();
  Position at;
  for (at[Index::source] = 1; at[Index::source] <= sums.axis(Index::source)->last;
       ++at[Index::source]) {
    const std::size_t row = engineRow(line, at[Index::source]);
    const Component& engine = line.components[row];
    double highest = engine.speed;
    for (const double speed : line.loadCaseSpeeds) {
      highest = std::max(highest, speed * ratioOf(engine, line));
    }
    for (at[Index::mode] = 2; at[Index::mode] <= sums.axis(Index::mode)->last; ++at[Index::mode]) {
      const double own = omega.at(static_cast<std::size_t>(at[Index::mode] - 1));
      for (const CriticalSpeed& each : criticalSpeeds(sums, speeds, at, own)) {
        if (each.rpm <= kSpeedMargin * highest) {
          rows.push_back({{"component", row},
                          {"mode", at[Index::mode]},
                          {"order", rounded(each.order)},
                          {"rpm", rounded(each.rpm)},
                          {"sum", rounded(each.sum)}});
        }
      }
    }
  }
  return rows;
}

json freeData(const ShaftLine& line, const ResultDirectory& directory) {
  const std::vector<double> omega = frequencies(directory);
  ResultValues deflections = directory.open(resultFile("RelativeDeflection.bin"));
  json shapes = json::array();
  json nodes = json::array();
  Position at;
  for (at[Index::mode] = 2; at[Index::mode] <= static_cast<std::int64_t>(omega.size());
       ++at[Index::mode]) {
    const std::vector<double> shape = pointValues(deflections, at);
    shapes.push_back(rounded(shape));
    json ofMode;
    if (const auto found = shapeNodes(shape, line.shafts)) {
      ofMode = json::array();
      for (const ShapeNode& node : *found) {
        ofMode.push_back({{"shaft", node.shaft}, {"along", rounded(node.along)}});
      }
    }
    nodes.push_back(std::move(ofMode));
  }
  json data = {{"frequencies", rounded(omega)},
               {"shapes", std::move(shapes)},
               {"nodes", std::move(nodes)},
               {"criticals", json::array()}};
  if (directory.has(resultFile("VectorSum.bin"))) {
    data["criticals"] = criticals(line, directory, omega);
  }
  return data;
}

/// What the look at the input finds, the first of each kind.
json findings(const std::filesystem::path& input, const ResultDirectory& directory) {
  constexpr std::size_t kMost = 5;
  const Findings all = checkRun(input, directory);
  const FirstFindings first(all, kMost);
  json rows = json::array();
  for (const Finding* each : first.shown) {
    rows.push_back(json(jsonOf(*each)));
  }
  json further = json::array();
  for (const auto& [code, count] : first.further) {
    further.push_back({code, count});
  }
  return {{"rows", std::move(rows)}, {"further", std::move(further)}};
}

std::string textOf(const ResultDirectory& directory, const ResultFile& file) {
  return directory.has(file) ? directory.text(file) : "";
}

/// Local time at which the run wrote its first results.
std::string timeOf(const ResultDirectory& directory) {
  const auto written =
      std::filesystem::last_write_time(directory.path() / resultFile("SystemInfo.bin").name);
  const auto seconds = std::chrono::time_point_cast<std::chrono::system_clock::duration>(
      std::chrono::file_clock::to_sys(written));
  return fmt::format("{:%Y-%m-%d %H:%M}",
                     fmt::localtime(std::chrono::system_clock::to_time_t(seconds)));
}

}  // namespace

json rounded(double value) {
  if (!std::isfinite(value)) {
    return nullptr;
  }
  return std::strtod(fmt::format("{:.5e}", value).c_str(), nullptr);
}

json rounded(const std::vector<double>& values) {
  json list = json::array();
  for (const double value : values) {
    list.push_back(rounded(value));
  }
  return list;
}

json reportData(const std::filesystem::path& input, const ResultDirectory& directory) {
  if (!directory.has(resultFile("SystemInfo.bin"))) {
    throw std::runtime_error(
        fmt::format("{} holds no results of an accepted input", directory.path().string()));
  }
  const ShaftLine line = readLineOf(directory, input);
  json data = {{"units",
                {{"rpm", kRpmOfAngularSpeed},
                 {"minute", kSecondsOfMinute},
                 {"kilo", kKilo},
                 {"mega", kMega},
                 {"milli", kMilli}}},
               {"limits",
                {{"speedMargin", kSpeedMargin},
                 {"samePeak", kSamePeak},
                 {"atRest", kAtRest},
                 {"ordersDrawn", kOrdersDrawn}}},
               {"title", line.title},
               {"input", input.filename().string()},
               {"results",
                std::filesystem::absolute(directory.path() / "").parent_path().filename().string()},
               {"version", VERENWICK_VERSION},
               {"time", timeOf(directory)},
               {"log", textOf(directory, resultFile("Verenwick.log"))},
               {"findings", findings(input, directory)},
               {"firing", textOf(directory, resultFile("Overview.txt"))},
               {"loadCaseSetting", textOf(directory, resultFile("LoadCaseSetting.txt"))},
               {"counts", counts(directory)},
               {"inertias", inertias(line)},
               {"shafts", shafts(line)},
               {"components", components(line, directory)},
               {"speeds", line.loadCaseSpeeds}};
  if (directory.has(resultFile("NaturalFrequency.bin"))) {
    data["free"] = freeData(line, directory);
  }
  if (directory.has(resultFile("SynthesisTorque.bin")) && !line.loadCaseSpeeds.empty()) {
    data["forced"] = forcedData(line, directory);
  }
  return data;
}

}  // namespace verenwick::host
