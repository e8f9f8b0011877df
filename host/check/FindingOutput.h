#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "host/check/Finding.h"

namespace verenwick::host {

/// Prints findings to standard output, each with what was expected and what to do, under the name
/// of the input.
void printFindings(const std::string& name, const Findings& findings);

/// Prints findings to standard error, a line each.
void printAdvice(const Findings& findings);

nlohmann::ordered_json jsonOf(const Findings& findings);

}  // namespace verenwick::host
