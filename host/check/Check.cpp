#include "host/check/Check.h"

#include <fmt/format.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>

#include "host/ScratchDirectory.h"
#include "host/check/Checks.h"
#include "host/check/RefusedLine.h"
#include "host/plant/Plant.h"
#include "host/run/Run.h"
#include "host/summary/RunSummary.h"
#include "input/Words.h"

namespace verenwick::host {
namespace {

/// The line that a message of the solver names, or that of the section that it names by kind and
/// id, as "Viscous damper 3"; 0 if it names none.
std::int32_t lineNamedBy(const std::string& message, const CheckedPlant& plant) {
  constexpr std::string_view kLine = "in input file line ";
  if (const std::size_t at = message.find(kLine); at != std::string::npos) {
    std::int32_t line = 0;
    std::istringstream(message.substr(at + kLine.size())) >> line;
    return line;
  }
  std::istringstream words(message);
  std::string before;  // all words without blanks
  for (std::string word; words >> word; before += word) {
    std::int32_t id = 0;
    if (!(std::istringstream(word) >> id)) {
      continue;
    }
    const std::string kind = input::upperCase(before);
    for (const input::Section& section : input::sections()) {
      // The solver's messages misspell a motor here and there.
      if (kind.ends_with(section.keyword) ||
          (section.keyword == "ELECTRICMOTOR" && kind.ends_with("ELETRICMOTOR"))) {
        if (const auto* found = plant.find(section.keyword, id)) {
          return found->firstLine();
        }
      }
    }
  }
  return 0;
}

/// What the solver says, where it hasn't been said better: of a line that can't be read, or of a
/// section that an error is known of.
void addMessages(const std::vector<std::string>& messages, Severity severity,
                 const CheckedPlant& plant, Findings& to) {
  const std::vector<Finding> known = to.all();
  for (const std::string& message : messages) {
    const std::int32_t line = lineNamedBy(message, plant);
    const bool isSaid = severity == Severity::error &&
                        std::any_of(known.begin(), known.end(), [&](const Finding& each) {
                          const bool isOfTree = each.code == "ring" || each.code == "apart";
                          return each.severity == Severity::error &&
                                 (each.line == line || (isOfTree && line == 0) ||
                                  message.starts_with("Error occurs when reading"));
                        });
    if (!isSaid) {
      const std::size_t words = message.find(": ");
      to.add({severity, "solver", line,
              words == std::string::npos ? message : message.substr(words + 2), "", ""});
    }
  }
}

void look(const input::InputDocument& document, const CheckedPlant& plant, Findings& to) {
  explainRefusedLine(document, to);
  checkNames(plant, to);
  if (document.failure()) {
    return;  // what stands behind it isn't known
  }
  checkTree(plant, to);
  checkShaftLine(plant, to);
  checkEngines(plant, to);
  checkPropellers(plant, to);
  checkCouplingsAndDampers(plant, to);
  checkLoadCases(plant, to);
}

}  // namespace

Findings checkPlant(const std::filesystem::path& input) {
  const input::InputDocument document = readDocument(input);
  Findings findings;
  look(document, CheckedPlant(document, input), findings);
  findings.sort();
  return findings;
}

Findings checkRun(const std::filesystem::path& input, const results::ResultDirectory& directory) {
  const input::InputDocument document = readDocument(input);
  const CheckedPlant plant(document, input);
  Findings findings;
  look(document, plant, findings);
  checkResults(plant, directory, findings);
  findings.sort();
  return findings;
}

Findings checkByCalculation(const std::filesystem::path& input) {
  const input::InputDocument document = readDocument(input);
  const CheckedPlant plant(document, input);
  Findings findings;
  look(document, plant, findings);
  const ScratchDirectory directory;
  const std::int32_t mode = document.loadCases().empty() ? kModeFree : kModeBoth;
  const RunOutcome outcome = runSolver({input, directory.path(), mode, {}, {}});
  addMessages(outcome.record.errors, Severity::error, plant, findings);
  addMessages(outcome.record.warnings, Severity::warning, plant, findings);
  if (outcome.record.status == RunStatus::stopped) {
    findings.add({Severity::error, "solver", 0, outcome.record.words, "", ""});
  }
  if (outcome.record.status == RunStatus::complete) {
    const results::ResultDirectory results(directory.path(), outcome.record.orders);
    checkResults(plant, results, findings);
    const RunSummary summary = summarise(input, results, stepsOf(mode));
    for (const PeakSummary& peak : summary.peaks) {
      findings.add({Severity::warning, "unresolved-peak",
                    document.loadCases().front().values.front().place.line, peak.words,
                    "a load case at every peak",
                    "add load cases around that speed: what is read off the others is too small"});
    }
  }
  findings.sort();
  return findings;
}

}  // namespace verenwick::host
