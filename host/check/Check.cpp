#include "host/check/Check.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <set>
#include <sstream>
#include <string>
#include <utility>

#include "host/Ending.h"
#include "host/ScratchDirectory.h"
#include "host/check/Checks.h"
#include "host/check/RefusedLine.h"
#include "host/plant/Plant.h"
#include "host/run/Run.h"
#include "host/run/RunMany.h"
#include "host/summary/RunSummary.h"
#include "input/Words.h"

namespace verenwick::host {
namespace {

/// The line of the load case that a message names by its number, as "Load case 3"; that behind the
/// table for one that the table doesn't have; 0 if it names none.
std::int32_t lineOfLoadCase(const std::string& message, const CheckedPlant& plant) {
  constexpr std::string_view kWords = "LOAD CASE";
  const auto cases = plant.document().loadCases();
  const std::size_t at = input::upperCase(message).rfind(kWords);
  std::size_t number = 0;
  if (at == std::string::npos || cases.empty() ||
      !(std::istringstream(message.substr(at + kWords.size())) >> number) || number == 0) {
    return 0;
  }
  return number <= cases.size() ? cases[number - 1].values.front().place.line
                                : cases.back().values.front().place.line + 1;
}

/// The line that a message of the solver names, or that of the section that it names by kind and
/// id, as "Viscous damper 3"; 0 if it names none.
std::int32_t lineNamedBy(const std::string& message, const CheckedPlant& plant) {
  if (const std::int32_t line = lineOfLoadCase(message, plant); line > 0) {
    return line;
  }
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

/// What the solver says, where it hasn't been said better: of a line that can't be read, of a
/// section that an error is known of, or of banks whose firing angles have been looked at.
void addMessages(const std::vector<std::string>& messages, Severity severity,
                 const CheckedPlant& plant, Findings& to) {
  std::set<std::int32_t> lines;
  bool isOfTree = false;
  for (const Finding& each : to.all()) {
    if (each.severity == Severity::error) {
      lines.insert(each.line);
      isOfTree = isOfTree || each.code == "ring" || each.code == "apart" || each.code == "empty";
    }
  }
  for (const std::string& message : messages) {
    const std::int32_t line = lineNamedBy(message, plant);
    const bool isSaid =
        severity == Severity::error
            ? lines.contains(line) || (isOfTree && line == 0) ||
                  (!lines.empty() && message.starts_with("Error occurs when reading"))
            : isOfBanks(message);
    if (!isSaid) {
      const std::size_t words = message.find(": ");
      to.add({severity, "solver", line,
              words == std::string::npos ? message : message.substr(words + 2), "", ""});
    }
  }
}

void look(const input::InputDocument& document, const CheckedPlant& plant, Findings& to) {
  explainRefusedLine(document, to);
  checkWords(plant, to);
  if (document.failure()) {
    return;  // what stands behind it isn't known
  }
  checkIds(plant, to);
  checkTree(plant, to);
  if (to.count(Severity::error) > 0) {
    return;  // what hangs together isn't known
  }
  checkReferences(plant, to);
  checkShaftLine(plant, to);
  checkEngines(plant, to);
  checkPropellers(plant, to);
  checkCouplingsAndDampers(plant, to);
  checkLoadCases(plant, to);
}

}  // namespace

bool isOfBanks(const std::string& message) {
  return message.find("Bank B of Diesel") != std::string::npos;
}

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
  const HeldSignals held;  // takes effect when the directory is gone
  const ScratchDirectory directory;
  const std::int32_t mode = document.loadCases().empty() ? kModeFree : kModeBoth;
  const std::vector<PlannedRun> plans = {{input.stem().string(), input, directory.path()}};
  const std::vector<FinishedRun> runs =
      runMany(plans, {mode, 1, false, false, true, [](const PlannedRun&) {}});
  if (const auto signal = HeldSignals::caught()) {
    std::fputs(fmt::format("verenwick: ended by {}\n", signalName(*signal)).c_str(), stderr);
    return findings;
  }
  const RunRecord& record = runs.front().record;
  addMessages(record.errors, Severity::error, plant, findings);
  addMessages(record.warnings, Severity::warning, plant, findings);
  if (record.status != RunStatus::complete && findings.count(Severity::error) == 0) {
    findings.add({Severity::error, "solver", 0,
                  record.words.empty() ? runs.front().output : record.words, "", ""});
  }
  if (record.status == RunStatus::complete) {
    const results::ResultDirectory results(directory.path(), record.orders);
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
