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

/// The line of the section that a message of the solver names by kind and id, as "Viscous damper
/// 3"; 0 if it names none.
std::int32_t lineNamedBy(const std::string& message, const CheckedPlant& plant) {
  std::istringstream words(message);
  std::string before;
  std::string last;
  for (std::string word; words >> word;) {
    std::int32_t id = 0;
    if (std::istringstream(word) >> id) {
      for (const std::string& kind : {last, before + last}) {
        if (const auto* section = plant.find(input::upperCase(kind), id)) {
          return section->firstLine();
        }
      }
    }
    before = std::exchange(last, word);
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
    const bool isSaid =
        severity == Severity::error &&
        std::any_of(known.begin(), known.end(), [&](const Finding& each) {
          return each.severity == Severity::error &&
                 (each.line == line || message.starts_with("Error occurs when reading"));
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
  look(document, CheckedPlant(document), findings);
  findings.sort();
  return findings;
}

Findings checkByCalculation(const std::filesystem::path& input) {
  const input::InputDocument document = readDocument(input);
  const CheckedPlant plant(document);
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
    const RunSummary summary = summarise(
        input, results::ResultDirectory(directory.path(), outcome.record.orders), stepsOf(mode));
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
