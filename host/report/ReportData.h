#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>

#include "host/plant/ShaftLine.h"
#include "results/ResultReader.h"

/// What the page of a report draws, as one JSON document. Numbers carry six digits; what isn't
/// finite is null. Rows of inertias, shafts, components and load cases count from 0, so that they
/// index the arrays of the document.
namespace verenwick::host {

/// A number as the document holds it.
nlohmann::json rounded(double value);
nlohmann::json rounded(const std::vector<double>& values);

/// Orders that a curve is drawn of at a point, at the most.
inline constexpr std::size_t kOrdersDrawn = 8;

/// The whole document. Throws std::runtime_error if the results aren't of this input file, or if a
/// result file is broken.
nlohmann::json reportData(const std::filesystem::path& input,
                          const results::ResultDirectory& directory);

/// The forced vibration in it: totals and the strongest orders of every point against the load
/// cases.
nlohmann::json forcedData(const ShaftLine& line, const results::ResultDirectory& directory);

}  // namespace verenwick::host
