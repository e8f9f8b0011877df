#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <map>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "host/Ending.h"
#include "host/GivenPaths.h"
#include "host/Terminal.h"
#include "host/UsageError.h"
#include "host/check/Check.h"
#include "host/check/FindingOutput.h"
#include "host/commands/Commands.h"
#include "host/commands/OptionChecks.h"
#include "host/report/Report.h"
#include "host/run/OpenResults.h"
#include "host/run/Progress.h"
#include "host/run/Run.h"
#include "host/run/RunMany.h"
#include "host/run/RunPaths.h"
#include "host/summary/RunSummary.h"
#include "host/summary/RunTable.h"

namespace verenwick::host {
namespace {

namespace fs = std::filesystem;

/// More processes than this at a time help no machine.
constexpr unsigned kMostJobs = 1000;

struct RunOptions {
  std::vector<std::string> inputs;
  std::string results;
  std::int32_t mode = kModeBoth;
  unsigned jobs = std::max(1U, std::thread::hardware_concurrency());
  bool quiet = false;
  bool report = false;
  bool json = false;
  bool noAdvice = false;
  bool strict = false;
  std::vector<std::string> words;  ///< of the command line
};

/// The look at a plant before its run. Nothing is found in a file that can't be read: the run says
/// so.
Findings findingsOf(const fs::path& input, const RunOptions& options) {
  if (options.noAdvice) {
    return {};
  }
  try {
    return checkPlant(input);
  } catch (const std::runtime_error&) {
    return {};
  }
}

/// A run in this process, with a line of its progress for a person who waits.
RunOutcome watchedRun(const RunOptions& options, const RunRequest& request) {
  const bool watched =
      canRedraw(stderr) && !options.quiet && !options.json && stepsOf(options.mode).forced;
  const LastWords words(
      fmt::format("{}verenwick: ended by a signal; the results in {} are not whole\n",
                  watched ? fmt::format("\r{}", kClearToEnd) : "", request.directory.string()));
  std::optional<ProgressLine> line;
  if (watched) {
    line.emplace(request.directory);
  }
  return runSolver(request);
}

/// What a program wants to know of a run, whatever came of it.
nlohmann::ordered_json documentOf(const RunRequest& request, const RunOutcome& outcome) {
  const RunRecord& record = outcome.record;
  const bool complete = record.status == RunStatus::complete;
  nlohmann::ordered_json document = {{"input", request.input.string()},
                                     {"results", request.directory.string()},
                                     {"status", complete ? 0 : 1}};
  document.update(endingOf(record));
  if (!complete) {
    document["words"] = record.status == RunStatus::refused ? outcome.log : record.words;
  }
  return document;
}

/// Says what went wrong; what the solver has put to standard error itself, behind two stars, isn't
/// said again.
void printFailure(const RunOutcome& outcome) {
  if (outcome.record.status == RunStatus::refused) {
    printLog(outcome.log);
  } else {
    for (const std::string& each : outcome.record.warnings) {
      if (each.find("** ") == std::string::npos) {
        printLog(fmt::format(" {}\n", each));
      }
    }
  }
  const std::string words =
      outcome.record.status == RunStatus::refused ? "the input is refused" : outcome.record.words;
  std::fputs(fmt::format("verenwick: {}\n", words).c_str(), stderr);
}

/// What is told of a run in this process.
int runOne(const RunOptions& options) {
  const fs::path input = fs::absolute(options.inputs.front()).lexically_normal();
  const Steps steps = stepsOf(options.mode);
  RunRequest request{input,
                     fs::absolute(options.results.empty() ? "results-of-" + input.stem().string()
                                                          : options.results),
                     options.mode,
                     options.words,
                     {}};
  if (options.report) {
    request.furtherFiles = [&](const results::ResultDirectory& directory) {
      writeReport(input, directory, directory.path() / kReportName, "");
      return std::vector<std::string>{kReportName};
    };
  }
  RunOutcome outcome;
  RunSummary summary;
  Findings findings;
  try {
    checkInput(request.input);
    checkResultDirectory(request.directory);
    if (options.report) {
      checkTarget(request.directory / kReportName);
    }
    findings = findingsOf(input, options);
    // An input with errors is for the solver to refuse.
    const bool isForbidden = options.strict && findings.count(Severity::error) == 0 &&
                             findings.count(Severity::warning) > 0;
    if (!options.quiet) {
      printAdvice(options.inputs.front(), findings.only({Severity::warning, Severity::hint}));
    } else if (isForbidden) {
      printAdvice(options.inputs.front(), findings.only({Severity::warning}));
    }
    if (isForbidden) {
      throw std::runtime_error("the input has warnings: nothing was calculated");
    }
    outcome = watchedRun(options, request);
    if (outcome.record.status == RunStatus::complete &&
        (options.json || !options.quiet || options.strict)) {
      const results::ResultDirectory directory(request.directory, outcome.record.orders);
      summary = summarise(input, directory, steps);
    }
  } catch (const std::bad_alloc&) {
    outcome.record.status = RunStatus::stopped;
    outcome.record.words = "the memory is exhausted";
  } catch (const std::exception& fault) {
    outcome.record.status = RunStatus::stopped;
    outcome.record.words = fault.what();
  }
  const bool complete = outcome.record.status == RunStatus::complete;
  if (!complete) {
    if (outcome.record.status == RunStatus::refused) {
      printAdvice(options.inputs.front(), findings.only({Severity::error}));
    }
    printFailure(outcome);
  } else if (!options.quiet) {
    printLog(outcome.log);
  }
  const bool warned = options.strict && (!summary.peaks.empty() ||
                                         !std::all_of(outcome.record.warnings.begin(),
                                                      outcome.record.warnings.end(), isOfBanks));
  const int status = complete && !warned ? 0 : 1;
  if (options.json) {
    nlohmann::ordered_json document = documentOf(request, outcome);
    document["status"] = status;
    document["findings"] = jsonOf(findings);
    if (complete) {
      document.update(jsonOf(summary, steps));
    }
    printDocument(document);
  } else if (complete && !options.quiet) {
    printSummary(input.filename().string(), summary, steps);
    fmt::print("\nResults in {}\n", request.directory.string());
    if (options.report) {
      fmt::print("Report in {}\n", (request.directory / kReportName).string());
    }
  }
  if (complete && warned) {
    std::fputs("verenwick: the results are whole; the run has warnings, which --strict refuses\n",
               stderr);
  }
  return status;
}

/// Names for the inputs that differ: of the files, or else of their folders.
std::vector<std::string> namesOf(const std::vector<fs::path>& inputs) {
  std::vector<std::string> files;
  std::vector<std::string> folders;
  for (const fs::path& input : inputs) {
    files.push_back(input.stem().string());
    folders.push_back(input.parent_path().filename().string());
  }
  for (const auto& names : {files, folders}) {
    if (std::set<std::string>(names.begin(), names.end()).size() == names.size()) {
      return names;
    }
  }
  throw UsageError("two inputs have the same name and folder name: run them one by one");
}

std::vector<PlannedRun> plannedRuns(const RunOptions& options) {
  std::vector<fs::path> inputs;
  for (const std::string& input : options.inputs) {
    inputs.push_back(fs::absolute(input).lexically_normal());
  }
  const std::vector<std::string> names = namesOf(inputs);
  std::vector<PlannedRun> plans;
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    plans.push_back({names[i], inputs[i],
                     fs::absolute(options.results.empty() ? fs::path("results-of-" + names[i])
                                                          : fs::path(options.results) / names[i])});
  }
  return plans;
}

/// What is told of several runs.
int runSeveral(const RunOptions& options) {
  const std::vector<PlannedRun> plans = plannedRuns(options);
  const Steps steps = stepsOf(options.mode);
  std::vector<Findings> findings;
  for (std::size_t i = 0; i < plans.size(); ++i) {
    findings.push_back(findingsOf(plans[i].input, options));
    if (!options.quiet && !options.strict) {  // the runs themselves tell what --strict refuses
      printAdvice(options.inputs[i], findings.back().only({Severity::warning, Severity::hint}));
    }
  }
  const HeldSignals held;  // takes effect in the end
  std::map<const PlannedRun*, RunSummary> summaries;
  std::vector<FinishedRun> finished =
      runMany(plans, {options.mode, options.jobs, options.report, options.strict, options.quiet,
                      [&](const PlannedRun& plan) {
                        summaries[&plan] =
                            summarise(plan.input, openResults(plan.results).directory, steps);
                      }});
  if (const auto signal = HeldSignals::caught()) {
    std::fputs(fmt::format("verenwick: ended by {}; the runs that are not done have no results\n",
                           signalName(*signal))
                   .c_str(),
               stderr);
  }
  std::vector<SummarisedRun> runs;
  bool good = true;
  for (FinishedRun& run : finished) {
    if (run.status != 0) {
      std::fputs(fmt::format("{}:\n{}", run.plan->name, run.output).c_str(), stderr);
      good = false;
    }
    const auto found = summaries.find(run.plan);
    runs.push_back({std::move(run), found == summaries.end()
                                        ? std::nullopt
                                        : std::optional(std::move(found->second))});
  }
  if (options.json) {
    nlohmann::ordered_json documents = jsonOf(runs, steps);
    for (std::size_t i = 0; i < runs.size(); ++i) {
      documents[i]["findings"] = jsonOf(findings[i]);
    }
    printDocument(documents);
  } else if (!options.quiet) {
    printTable(runs);
  }
  if (HeldSignals::caught()) {
    static_cast<void>(std::fflush(stdout));
  }
  return good ? 0 : 1;
}

/// Takes a mode by its name. The numbers of the C interface and "report", the earlier name of
/// "describe", are taken too.
CLI::Validator modeByName() {
  return {[](std::string& word) -> std::string {
            std::vector<std::string> names;
            for (const auto& [name, mode] : kModeNames) {
              names.emplace_back(name);
              if (CLI::detail::to_lower(word) == name) {
                word = std::to_string(mode);
                return "";
              }
            }
            if (word == "report") {
              word = std::to_string(kModeDescribe);
              return "";
            }
            std::string number = word;
            if (wholeNumber(std::numeric_limits<std::int32_t>::min(),
                            std::numeric_limits<std::int32_t>::max())(number)
                    .empty()) {
              word = number;
              return "";
            }
            const std::string near = didYouMean(word, names);
            return fmt::format("\"{}\" is no mode{}", word,
                               near.empty() ? "; the modes are " + listed(names) : near);
          },
          ""};
}

}  // namespace

void addRunCommand(CLI::App& program, const std::vector<std::string>& words, int& status) {
  CLI::App* command = program.add_subcommand("run", "Calculate shaft lines");
  const auto options = std::make_shared<RunOptions>();
  options->words = words;
  command->add_option("INPUT", options->inputs, "Input file; several run side by side")
      ->required()
      ->type_name("FILE");
  command
      ->add_option("--results", options->results,
                   "Directory for the result files, made if it isn't there; with several inputs a "
                   "directory for their directories. Without it results-of-INPUT in the current "
                   "directory")
      ->type_name("DIRECTORY");
  command
      ->add_option("--mode", options->mode,
                   "What to calculate: describe checks the plant and counts its parts, free finds "
                   "the natural frequencies, forced the response in the load cases; both if not "
                   "given")
      ->transform(modeByName())
      ->type_name("describe|free|forced|both");
  command
      ->add_option("--jobs", options->jobs,
                   "Inputs that run at the same time; as many as there are processors if not given")
      ->check(wholeNumber(1, kMostJobs))
      ->type_name("N");
  command->add_flag("--report", options->report,
                    "Write the report of a run, report.html, into its result directory");
  command->add_flag("--json", options->json, "Print the summary as a JSON document");
  command->add_flag("--quiet", options->quiet, "Print nothing but what went wrong");
  CLI::Option* noAdvice = command->add_flag(
      "--no-advice", options->noAdvice, "Leave out the look at the input before the calculation");
  command
      ->add_flag("--strict", options->strict,
                 "Calculate no input that has warnings, and fail on warnings of the run")
      ->excludes(noAdvice);
  command->footer("Example:\n  verenwick run plant.txt --results plant --report");
  command->callback([options, &status] {
    status = options->inputs.size() == 1 ? runOne(*options) : runSeveral(*options);
  });
}

}  // namespace verenwick::host
