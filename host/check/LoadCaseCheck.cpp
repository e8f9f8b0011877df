#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "host/Units.h"
#include "host/check/Checks.h"

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
