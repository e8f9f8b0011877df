#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "host/NearestWord.h"
#include "host/Units.h"
#include "host/check/Checks.h"
#include "input/LineRules.h"
#include "input/Words.h"

namespace verenwick::host {
namespace {

constexpr std::array<std::string_view, 4> kGivers = {"DIESEL", "ELECTRICMOTOR", "GASTURBINE",
                                                     "STEAMTURBINE"};
constexpr std::array<std::string_view, 4> kTakers = {"PROPELLER", "GENERATOR", "CENTRIFUGALPUMP",
                                                     "RECIPROCATINGPUMP"};

void checkColumns(const CheckedPlant& plant, Findings& to) {
  if (plant.document().columns().empty()) {
    return;
  }
  for (const auto& kinds : {kGivers, kTakers}) {
    for (const std::string_view keyword : kinds) {
      for (const SectionValues* machine : plant.all(keyword)) {
        if (!plant.columnOf(*machine)) {
          to.add({Severity::error, "no-column", machine->firstLine(),
                  fmt::format("{} has no column in the load case table", nameOf(*machine)),
                  "a column of its own",
                  fmt::format("write {} below RPM, {} below it, and its power in each row",
                              machine->integer("Id"), keyword)});
        }
      }
    }
  }
}

/// What stands around the rows of the table: a kind that is none, or a line behind its end.
void checkTable(const CheckedPlant& plant, Findings& to) {
  const input::InputDocument& document = plant.document();
  const auto cases = document.loadCases();
  if (cases.empty()) {
    for (const auto& kinds : {kGivers, kTakers}) {
      for (const std::string_view keyword : kinds) {
        if (!plant.all(keyword).empty()) {
          to.add({Severity::hint, "no-load-cases", plant.all(keyword).front()->firstLine(),
                  fmt::format("{}, and no LOADCASE", nameOf(*plant.all(keyword).front())),
                  "a load case table at the end of the file",
                  "write one, unless natural frequencies are all that is wanted: without it no "
                  "forced vibration is calculated"});
          return;
        }
      }
    }
    return;
  }
  std::string kinds(document.line(cases.front().values.front().place.line - 1));
  input::treatLine(kinds);
  const std::vector<std::string> known(input::kColumnKinds.begin(), input::kColumnKinds.end());
  for (std::string_view rest = kinds; !input::isBlank(rest); rest = input::behindFirstWord(rest)) {
    const std::string word = input::upperCase(input::firstWord(rest));
    if (std::find(known.begin(), known.end(), word) == known.end()) {
      to.add({Severity::warning, "column-kind", cases.front().values.front().place.line - 1,
              fmt::format("\"{}\" is no kind of a column", word),
              fmt::format("one of {}", fmt::join(known, ", ")),
              fmt::format("write one of them{}: the column is dropped", didYouMean(word, known))});
    }
  }
  for (std::int32_t line = cases.back().values.front().place.line + 1; line <= document.lineCount();
       ++line) {
    if (!input::isBlank(document.line(line))) {
      to.add({Severity::warning, "behind-table", line,
              fmt::format("\"{}\" behind the load case table", document.line(line)),
              "nothing: the first blank line ends the table and the file",
              "take the blank line in front of a load case away; write sections and remarks in "
              "front of LOADCASE"});
      return;
    }
  }
}

void checkSpeeds(const CheckedPlant& plant, Findings& to) {
  std::size_t number = 0;
  for (const auto& row : plant.document().loadCases()) {
    ++number;
    if (row.values[0].real <= 0) {
      to.add({Severity::warning, "speed-zero", row.values[0].place.line,
              fmt::format("load case {} at {:g} rpm", number, row.values[0].real),
              "a speed above 0", "take the row away, or write its speed"});
    }
  }
}

/// Speeds and torques of a machine's load cases against its rating.
void checkMachine(const CheckedPlant& plant, const SectionValues& machine, Findings& to) {
  const double ratio = plant.ratioAt(inertiaOf(machine));
  const double ratedSpeed = machine.real("McrSpeed");
  const double ratedPower = machine.real("McrPower");
  const std::vector<CasePower> powers = plant.powersOf(machine);
  if (powers.empty() || ratio == 0 || ratedSpeed <= 0 || ratedPower <= 0) {
    return;
  }
  const auto fastest =
      std::max_element(powers.begin(), powers.end(),
                       [](const CasePower& a, const CasePower& b) { return a.rpm < b.rpm; });
  const double share = std::abs(fastest->rpm * ratio) / ratedSpeed;
  struct Slip {
    double share;
    std::string_view unit;
  };
  constexpr std::array kSlips = {Slip{kPi / 30, "rad/s"}, Slip{1.0 / 60, "1/s"}};
  constexpr double kLow = 0.25;
  constexpr double kHigh = 1.35;
  if (share < kLow || share > kHigh) {
    std::string advice = "write the speed of the load cases in rpm, and check the speed ratio";
    for (const Slip& slip : kSlips) {
      if (std::abs(share / slip.share - 1) < kLow) {
        advice = fmt::format("the speeds look like {}: write rpm", slip.unit);
      }
    }
    to.add({Severity::warning, "speed-rated", fastest->line,
            fmt::format("{} turns with at most {:.4g} rpm, {:.3g} of its rated speed",
                        nameOf(machine), std::abs(fastest->rpm * ratio), share),
            fmt::format("up to about {:g} rpm", ratedSpeed), std::move(advice)});
    return;
  }
  const double ratedTorque = ratedPower / ratedSpeed;
  const CasePower* worst = nullptr;
  double heaviest = 0;
  for (const CasePower& each : powers) {
    const double torque = each.rpm > 0 ? std::abs(each.power) / std::abs(each.rpm * ratio) : 0;
    if (torque > heaviest) {
      heaviest = torque;
      worst = &each;
    }
  }
  constexpr double kHeavy = 1.2;
  constexpr double kLight = 0.02;
  if (worst != nullptr && (heaviest > kHeavy * ratedTorque || heaviest < kLight * ratedTorque)) {
    const bool isHeavy = heaviest > kHeavy * ratedTorque;
    to.add({Severity::warning, "torque-rated", worst->line,
            fmt::format("{} at {:g} rpm: {:.3g} times the rated torque", nameOf(machine),
                        worst->rpm, heaviest / ratedTorque),
            "up to 1.2 times the rated torque, and some of it in one load case at least",
            isHeavy ? "check power and speed of the row; below the rated speed the power falls"
                    : "write the powers in kW"});
  }
}

/// What goes in must come out.
void checkBalance(const CheckedPlant& plant, Findings& to) {
  const auto sum = [&plant](const auto& kinds, std::vector<double>& powers) {
    bool any = false;
    for (const std::string_view keyword : kinds) {
      for (const SectionValues* machine : plant.all(keyword)) {
        const std::vector<CasePower> each = plant.powersOf(*machine);
        for (std::size_t i = 0; i < each.size(); ++i) {
          powers[i] += each[i].power;
        }
        any = any || !each.empty();
      }
    }
    return any;
  };
  const auto cases = plant.document().loadCases();
  std::vector<double> given(cases.size());
  std::vector<double> taken(cases.size());
  if (!sum(kGivers, given) || !sum(kTakers, taken)) {
    return;
  }
  constexpr double kApart = 0.05;
  std::size_t first = cases.size();
  std::size_t apart = 0;
  for (std::size_t i = 0; i < cases.size(); ++i) {
    if (std::abs(given[i] - taken[i]) > kApart * std::max(given[i], taken[i])) {
      first = std::min(first, i);
      ++apart;
    }
  }
  if (apart > 0) {
    to.add(
        {Severity::warning, "power-balance", cases[first].values[0].place.line,
         fmt::format("at {:g} rpm {:g} kW go in and {:g} kW come out{}",
                     cases[first].values[0].real, given[first] / kKilo, taken[first] / kKilo,
                     apart == 1 ? "" : fmt::format("; {} load cases are such", apart)),
         "the same power within 5 %: engines, motors and turbines against propellers, generators "
         "and pumps",
         "correct the powers of the row; losses belong to what takes the power"});
  }
}

}  // namespace

void checkLoadCases(const CheckedPlant& plant, Findings& to) {
  checkTable(plant, to);
  checkColumns(plant, to);
  checkSpeeds(plant, to);
  for (const auto& kinds : {kGivers, kTakers}) {
    for (const std::string_view keyword : kinds) {
      for (const SectionValues* machine : plant.all(keyword)) {
        checkMachine(plant, *machine, to);
      }
    }
  }
  checkBalance(plant, to);
}

}  // namespace verenwick::host
