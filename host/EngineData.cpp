#include "host/EngineData.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>

#include "host/Commands.h"
#include "host/GivenPaths.h"
#include "host/OptionChecks.h"
#include "host/Units.h"
#include "verenwick.h"

namespace verenwick::host {
namespace {

/// Of a four-stroke cycle; from half its points on a harmonic can't be told from a lower one.
constexpr int kMostHarmonics = 359;

struct Description {
  const char* name;
  const char* unitName;
  const char* help;
  double unit;  ///< in SI units
};

constexpr std::array<Description, kEngineQuantities> kDescriptions{{
    {"bore", "MM", "Diameter of the cylinder", kMilli},
    {"stroke", "MM", "Stroke of the piston", kMilli},
    {"conrod-ratio", "RATIO", "Crank radius divided by rod length", 1},
    {"compression-ratio", "RATIO", "Compression ratio", 1},
    {"rated-power", "KW", "Rated power of the cylinder", kKilo},
    {"rated-speed", "RPM", "Rated speed", 1},
    {"power", "KW", "Power of the cylinder; rated if not given", kKilo},
    {"speed", "RPM", "Speed; rated if not given", 1},
    {"inlet-pressure", "BAR", "Rated charge air pressure, absolute", kBar},
    {"charge-temperature", "CELSIUS", "Temperature of the charge air", 1},
    {"peak-pressure", "BAR", "Rated peak pressure, above 1 bar", kBar},
    {"compression-pressure", "BAR", "Rated compression pressure, above 1 bar", kBar},
    {"heat-share", "PERCENT", "Share of the heat that becomes work", 1e-2},
    {"mechanical-efficiency", "PERCENT", "Mechanical efficiency", 1e-2},
    {"form-factor", "FACTOR", "Of the heat release, where the search begins", 1},
    {"ignition", "DEGREES", "Start of combustion, after top dead centre", 1},
    {"end-of-combustion", "DEGREES", "End of combustion, after top dead centre", 1},
    {"exhaust-start", "DEGREES", "Exhaust opening, after top dead centre", 1},
    {"inlet-start", "DEGREES", "Inlet opening, after top dead centre (two-stroke)", 1},
    {"inlet-close", "DEGREES", "Inlet closing, more than 180 (two-stroke)", 1},
}};

}  // namespace

EngineData::EngineData(CLI::App& command) : command_(command) {
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
        .add_option(fmt::format("--{}", kDescriptions[i].name), given_[i], kDescriptions[i].help)
        ->check(finiteNumber())
        ->type_name(kDescriptions[i].unitName);
  }
}

void EngineData::readFile() {
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

void EngineData::complete() {
  if (!file_.empty())
    readFile();
  if (strokes_ != 2 && strokes_ != 4)
    throw UsageError("--strokes must be 2 or 4");
  // From half the points on a harmonic can't be told from a lower one.
  if (harmonics_ >= points() / 2)
    throw UsageError(fmt::format("--harmonics must be less than {}", points() / 2));
  if (!given_[kPower])
    given_[kPower] = given_[kRatedPower];
  if (!given_[kSpeed])
    given_[kSpeed] = given_[kRatedSpeed];
  for (std::size_t i = 0; i < kEngineQuantities; ++i) {
    const bool isNeeded = strokes_ == 2 || (i != kInletStart && i != kInletClose);
    if (isNeeded && !given_[i]) {
      throw UsageError(fmt::format("--{} is missing", kDescriptions[i].name));
    }
    values_[i] = given_[i].value_or(0.0) * kDescriptions[i].unit;
  }
}

std::vector<double> EngineData::pressureCurve() const {
  const EngineData& e = *this;
  constexpr std::size_t kRoom = 1000;
  const std::int32_t misfire = misfires_ ? 1 : 0;
  const double derived = 0;  // exponents that follow from the pressures
  std::vector<double> curve(kRoom, std::nan(""));
  double mip = 0;
  THEORETICALCYLINDERPRESSURE(&e[kRatedPower], &e[kRatedSpeed], &misfire, &strokes_, &e[kBore],
                              &e[kStroke], &e[kConrodRatio], &e[kCompressionRatio],
                              &e[kInletPressure], &e[kChargeTemperature], &e[kSpeed], &e[kPower],
                              &e[kPeakPressure], &e[kCompressionPressure], &derived, &derived,
                              &e[kHeatShare], &e[kMechanicalEfficiency], &e[kFormFactor],
                              &e[kIgnition], &e[kEndOfCombustion], &e[kExhaustStart],
                              &e[kInletStart], &e[kInletClose], curve.data(), &mip);
  curve.resize(static_cast<std::size_t>(points()));
  if (!std::ranges::all_of(curve, [](double p) { return std::isfinite(p); })) {
    const bool areValvesInOrder = std::trunc(e[kExhaustStart]) < std::trunc(e[kInletStart]) &&
                                  std::trunc(e[kInletStart]) < std::trunc(e[kInletClose]);
    std::string words = "no pressure curve comes from these data";
    if (strokes_ == 2 && !misfires_ && !areValvesInOrder)
      words += "; the exhaust must open before the inlet, and the inlet close last";
    throw std::runtime_error(words);
  }
  const double peak = *std::ranges::max_element(curve);
  fmt::print(stderr, "peak pressure {:.2f} bar, mean indicated pressure {:.3f} bar\n", peak / kBar,
             mip / kBar);
  // What the peak should be off the rated speed, only the library knows.
  const double tolerance = strokes_ == 2 ? 0.02 : 0.005;
  const double wanted = e[kPeakPressure] + kBar;
  const bool isRated = e[kSpeed] == e[kRatedSpeed] && !misfires_ && e[kPower] != 0;
  if (isRated && std::abs(peak - wanted) > tolerance * wanted) {
    fmt::print(stderr, "warning: a missed peak at rated speed, {:.2f} bar were wanted\n",
               wanted / kBar);
  }
  return curve;
}

std::vector<double> EngineData::crankAngles(double firstDegree) const {
  std::vector<double> phi(static_cast<std::size_t>(points()));
  for (std::size_t i = 0; i < phi.size(); ++i) {
    phi[i] = (firstDegree + static_cast<double>(i)) * kPi / 180;
  }
  return phi;
}

std::vector<Harmonic> tangentialHarmonics(const EngineData& engine,
                                          const std::vector<double>& pressure) {
  // From top dead centre on.
  std::vector<double> curve = pressure;
  std::rotate(curve.begin(), curve.begin() + 180, curve.end());
  const std::int32_t points = engine.points();
  const std::int32_t count = engine.harmonics();
  const std::vector<double> phi = engine.crankAngles(0);
  std::vector<double> sine(static_cast<std::size_t>(count));
  std::vector<double> cosine(sine.size());
  CYLINDERPRESSURETOHARMONIC(&points, &count, curve.data(), phi.data(), &engine[kConrodRatio],
                             sine.data(), cosine.data());
  std::vector<Harmonic> harmonics;
  for (std::size_t k = 0; k < sine.size(); ++k) harmonics.push_back({sine[k], cosine[k]});
  return harmonics;
}

void printRow(const std::vector<double>& numbers) { fmt::print("{}\n", fmt::join(numbers, ",")); }

}  // namespace verenwick::host
