#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "host/check/Finding.h"

namespace verenwick::host {

/// Prints findings to standard output, the first of each kind, with what was expected and what to
/// do, under the name of the input.
void printFindings(const std::string& name, const Findings& findings);

/// Prints findings to standard error, a line each, the first of each kind, under the name of the
/// input.
void printAdvice(const std::string& name, const Findings& findings);

nlohmann::ordered_json jsonOf(const Finding& finding);
nlohmann::ordered_json jsonOf(const Findings& findings);

}  // namespace verenwick::host
