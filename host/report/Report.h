#pragma once

#include <filesystem>
#include <string>

#include "results/ResultReader.h"

namespace verenwick::host {

/// The name of a report in a result directory.
inline constexpr const char* kReportName = "report.html";

/// Writes the report of a run as one HTML file that needs nothing else. A remark on the results
/// stands in its head and on every printed page. Throws std::runtime_error where the results aren't
/// of the input, a result file is broken or the report can't be written.
void writeReport(const std::filesystem::path& input, const results::ResultDirectory& directory,
                 const std::filesystem::path& output, const std::string& remark = "");

}  // namespace verenwick::host
