#include "host/commands/CylinderOptions.h"

#include <fmt/format.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include "host/GivenPaths.h"
#include "host/Units.h"
#include "host/UsageError.h"
#include "host/commands/OptionChecks.h"

namespace verenwick::host {
namespace {

/// Of a four-stroke cycle; from half its points on a harmonic can't be told from a lower one.
constexpr int kMostHarmonics = 359;

}  // namespace

CylinderOptions::CylinderOptions(CLI::App& command) : command_(command) {
  command.add_option("--engine", file_, "File of lines \"name = value\", named as the options")
      ->type_name("FILE");
  command.add_option("--strokes", strokes_, "Strokes of a cycle")
      ->check(oneOf({"2", "4"}))
      ->type_name("2|4");
  command.add_flag("--misfire", misfires_, "Compression and expansion only");
  command
      .add_option("--harmonics", harmonics_,
                  "Print so many harmonics of the tangential curve instead")
      ->check(wholeNumber(1, kMostHarmonics))
      ->type_name("N");
  for (std::size_t i = 0; i < kEngineQuantities; ++i) {
    command
        .add_option(fmt::format("--{}", kQuantityWords[i].name), given_[i], kQuantityWords[i].help)
        ->check(finiteNumber())
        ->type_name(kQuantityWords[i].unitName);
  }
}

void CylinderOptions::readFile() {
  constexpr std::uintmax_t kLargestFile = 1 << 16;  // far beyond a line a quantity
  checkReadable(file_);
  if (std::filesystem::file_size(file_) > kLargestFile) {
    throw std::runtime_error(
        fmt::format("{} is larger than the {} bytes that are read of a file "
                    "of options",
                    file_, kLargestFile));
  }
  for (const CLI::ConfigItem& item : CLI::ConfigINI().from_file(file_)) {
    CLI::Option* option = command_.get_option_no_throw(fmt::format("--{}", item.name));
    if (option == nullptr || !item.parents.empty()) {
      throw UsageError(fmt::format("{} in {} is no option", item.fullname(), file_));
    }
    if (option->count() > 0)
      continue;  // the command line has the last word
    option->add_result(item.inputs);
    option->run_callback();
  }
}

Cylinder CylinderOptions::cylinder() {
  if (!file_.empty())
    readFile();
  if (strokes_ != 2 && strokes_ != 4)
    throw UsageError("--strokes must be 2 or 4");
  Cylinder cylinder{.strokes = strokes_, .misfires = misfires_};
  // From half the points on a harmonic can't be told from a lower one.
  if (harmonics_ >= cylinder.points() / 2)
    throw UsageError(fmt::format("--harmonics must be less than {}", cylinder.points() / 2));
  if (!given_[kPower])
    given_[kPower] = given_[kRatedPower];
  if (!given_[kSpeed])
    given_[kSpeed] = given_[kRatedSpeed];
  for (std::size_t i = 0; i < kEngineQuantities; ++i) {
    const bool isNeeded = strokes_ == 2 || (i != kInletStart && i != kInletClose);
    if (isNeeded && !given_[i]) {
      throw UsageError(fmt::format("--{} is missing", kQuantityWords[i].name));
    }
    cylinder.values[i] = given_[i].value_or(0.0) * kQuantityWords[i].unit;
  }
  return cylinder;
}

std::vector<double> toldPressureCurve(const Cylinder& cylinder) {
  PressureCurve curve = pressureCurve(cylinder);
  fmt::print(stderr, "peak pressure {:.2f} bar, mean indicated pressure {:.3f} bar\n",
             curve.peak / kBar, curve.meanIndicated / kBar);
  if (curve.missedPeak) {
    fmt::print(stderr, "warning: a missed peak at rated speed, {:.2f} bar were wanted\n",
               *curve.missedPeak / kBar);
  }
  return std::move(curve.pressures);
}

void printRow(const std::vector<double>& numbers) { fmt::print("{}\n", fmt::join(numbers, ",")); }

}  // namespace verenwick::host
