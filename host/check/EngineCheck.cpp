#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>

#include "host/Units.h"
#include "host/check/Checks.h"
#include "host/cylinder/Cylinder.h"

namespace verenwick::host {
namespace {

/// A quantity that has usual values: outside them it is found.
struct Range {
  std::string_view code;
  std::string_view field;
  double least, most;  ///< in SI units
  std::string_view expected;
  std::string_view advice;
};

constexpr std::array kRanges = {
    Range{"engine-rod", "ConrodRatio", 0.1, 0.52, "crank radius over rod length, 0.1 to 0.52",
          "write the ratio, not the length: a rod is at least as long as the stroke"},
    Range{"engine-efficiency", "Me", 0.5, 1.0, "a mechanical efficiency of 50 to 100 %",
          "write it in per cent"},
};

constexpr std::array kPressureRanges = {
    Range{"engine-pressure", "PMax", 20e5, 400e5, "a peak pressure of 20 to 400 bar",
          "write it in bar above atmosphere"},
    Range{"engine-pressure", "PComp", 10e5, 350e5, "a compression pressure of 10 to 350 bar",
          "write it in bar above atmosphere"},
    Range{"engine-charge", "PChargeAir", 0.5e5, 12e5,
          "a pressure at inlet of 0.5 to 12 bar, absolute", "write it in bar, absolute"},
    Range{"engine-charge", "TChargeAir", -20, 200, "-20 to 200 °C", "write degrees Celsius"},
    Range{"engine-compression", "CompRatio", 5, 30, "a compression ratio of 5 to 30",
          "write the ratio of the volumes"},
    Range{"engine-efficiency", "Te", 0.2, 0.8, "20 to 80 % of the heat that becomes indicated work",
          "write it in per cent"},
};

void checkRanges(const CheckedPlant& plant, const SectionValues& diesel,
                 std::span<const Range> ranges, Findings& to) {
  for (const Range& range : ranges) {
    if (!diesel.has(range.field)) {
      continue;
    }
    const input::Value& value = diesel.all(range.field).front();
    const bool isInteger = diesel.fieldOf(value).type == input::Type::integer;
    const double number = isInteger ? value.integer : value.real;
    if (number < range.least || number > range.most) {
      to.add({Severity::warning, range.code, value.place.line,
              valueWords(plant, diesel, range.field), std::string(range.expected),
              std::string(range.advice)});
    }
  }
}

/// What follows from the rating of an engine whose values are positive.
struct Rating {
  double cylinders;
  double swept;          ///< volume of a cylinder, m3
  double meanIndicated;  ///< Pa
};

bool isVengine(const SectionValues& diesel) { return diesel.flag("isVengine"); }

/// Degrees of the crank from one firing of a cylinder to its next.
double cycleOf(const SectionValues& diesel) { return diesel.integer("nStroke") == 2 ? 360 : 720; }

/// The values of a bank.
struct Bank {
  std::string_view angle, status, percent;
};

std::span<const Bank> banksOf(const SectionValues& diesel) {
  static constexpr std::array kBanks = {Bank{"FiringAngleA", "FiringStatusA", "FiringPercentA"},
                                        Bank{"FiringAngleB", "FiringStatusB", "FiringPercentB"}};
  return std::span(kBanks).first(isVengine(diesel) ? 2 : 1);
}

std::optional<Rating> ratingOf(const SectionValues& diesel) {
  Rating rating{};
  rating.cylinders = static_cast<double>(banksOf(diesel).size()) * diesel.integer("nCylinder");
  rating.swept = kPi / 4 * std::pow(diesel.real("Bore"), 2) * diesel.real("Stroke");
  const double cycles = diesel.real("McrSpeed") / kSecondsOfMinute * 360 / cycleOf(diesel);
  const double sweptInSecond = rating.cylinders * cycles * rating.swept;
  if (!(sweptInSecond > 0) || !(diesel.real("McrPower") > 0) || !(diesel.real("Me") > 0)) {
    return std::nullopt;
  }
  rating.meanIndicated = diesel.real("McrPower") / sweptInSecond / diesel.real("Me");
  return rating;
}

void checkRating(const CheckedPlant& plant, const SectionValues& diesel, Findings& to) {
  const auto rating = ratingOf(diesel);
  if (!rating) {
    return;
  }
  constexpr double kLeast = 3e5;
  constexpr double kMost = 35e5;
  if (rating->meanIndicated < kLeast || rating->meanIndicated > kMost) {
    to.add({Severity::warning, "engine-mip", lineOf(diesel, "McrPower"),
            fmt::format("{}: a mean indicated pressure of {:.3g} bar",
                        valueWords(plant, diesel, "McrPower"), rating->meanIndicated / kBar),
            "3 to 35 bar by power, speed, strokes, cylinders, bore, stroke and efficiency",
            "write the power of the whole engine in kW, its speed in rpm, bore and stroke in mm"});
  } else if (diesel.has("PMax") && rating->meanIndicated >= diesel.real("PMax")) {
    to.add({Severity::warning, "engine-peak", lineOf(diesel, "PMax"),
            valueWords(plant, diesel, "PMax"),
            fmt::format("above the mean indicated pressure of {:.3g} bar",
                        rating->meanIndicated / kBar),
            "write the peak pressure in bar"});
  }
  const double pistonSpeed = 2 * diesel.real("Stroke") * diesel.real("McrSpeed") / kSecondsOfMinute;
  if (pistonSpeed < 4 || pistonSpeed > 25) {
    to.add({Severity::warning, "engine-piston-speed", lineOf(diesel, "McrSpeed"),
            fmt::format("{}: a mean piston speed of {:.3g} m/s",
                        valueWords(plant, diesel, "McrSpeed"), pistonSpeed),
            "4 to 25 m/s", "write the speed of the crankshaft in rpm and the stroke in mm"});
  }
  const double slenderness = diesel.real("Stroke") / diesel.real("Bore");
  if (slenderness < 0.7 || slenderness > 5) {
    to.add(
        {Severity::warning, "engine-stroke", lineOf(diesel, "Stroke"),
         fmt::format("{}: {:.3g} times the bore", valueWords(plant, diesel, "Stroke"), slenderness),
         "0.7 to 5 times the bore", "write bore and stroke in mm, in this order"});
  }
  const double massOverVolume = diesel.real("RecipMass") / rating->swept;
  if (massOverVolume < 500 || massOverVolume > 20000) {
    to.add({Severity::hint, "engine-mass", lineOf(diesel, "RecipMass"),
            fmt::format("{}: {:.3g} kg a litre of swept volume",
                        valueWords(plant, diesel, "RecipMass"), massOverVolume / 1000),
            "0.5 to 20 kg a litre",
            "write the mass of piston, pin and the upper part of the rod of one cylinder, in kg"});
  }
}

/// Whether the numbers are 1 to n in some order.
bool isFiringOrder(std::vector<double> degrees) {
  std::sort(degrees.begin(), degrees.end());
  for (std::size_t i = 0; i < degrees.size(); ++i) {
    if (std::abs(degrees[i] - static_cast<double>(i + 1)) > 1e-9) {
      return false;
    }
  }
  return degrees.size() > 2;
}

void checkFiring(const CheckedPlant& plant, const SectionValues& diesel, Findings& to) {
  const double cycle = cycleOf(diesel);
  std::vector<double> angles;
  for (const Bank& bank : banksOf(diesel)) {
    std::vector<double> degrees;
    for (const input::Value& value : diesel.all(bank.angle)) {
      degrees.push_back(value.real * 180 / kPi);
    }
    if (isFiringOrder(degrees)) {
      to.add({Severity::warning, "firing-order", lineOf(diesel, bank.angle),
              valueWords(plant, diesel, bank.angle),
              "the crank angle at which each cylinder fires, in degrees",
              fmt::format("give cylinder c the angle {:g} x (place of c in the firing order - 1)",
                          cycle / static_cast<double>(degrees.size()))});
      return;
    }
    std::transform(degrees.begin(), degrees.end(), std::back_inserter(angles), [=](double angle) {
      const double within = std::fmod(angle, cycle);
      return within < 0 ? within + cycle : within;
    });
  }
  if (angles.size() < 3) {
    return;
  }
  std::sort(angles.begin(), angles.end());
  double widest = angles.front() + cycle - angles.back();
  for (std::size_t i = 1; i < angles.size(); ++i) {
    widest = std::max(widest, angles[i] - angles[i - 1]);
  }
  const double even = cycle / static_cast<double>(angles.size());
  constexpr double kUneven = 2.5;
  if (widest > kUneven * even) {
    to.add({Severity::warning, "firing-uneven", lineOf(diesel, "FiringAngleA"),
            fmt::format("{}: {:.4g} degrees without a firing",
                        valueWords(plant, diesel, "FiringAngleA"), widest),
            fmt::format("about {:.4g} degrees from one firing to the next, over a cycle of {:g}",
                        even, cycle),
            "write degrees of a whole cycle: 720 for four-stroke engines"});
  }
}

/// Bank B fires the bank angle behind bank A, or a revolution later than that.
void checkBanks(const CheckedPlant& plant, const SectionValues& diesel, Findings& to) {
  const auto first = diesel.all("FiringAngleA");
  const auto second = diesel.all("FiringAngleB");
  if (!isVengine(diesel)) {
    return;
  }
  constexpr double kTurn = 360;
  constexpr double kSame = 0.01;  // degrees
  for (std::size_t i = 0; i < std::min(first.size(), second.size()); ++i) {
    const double behind = (second[i].real - first[i].real) * 180 / kPi;
    if (std::abs(std::remainder(behind - diesel.real("Vangle"), kTurn)) > kSame) {
      to.add({Severity::warning, "firing-bank", second[i].place.line,
              fmt::format("{}: row {} fires {:.4g} degrees behind its cylinder of bank A",
                          valueWords(plant, diesel, "FiringAngleB"), i + 1, behind),
              fmt::format("Vangle, {:g} degrees, or a revolution more", diesel.real("Vangle")),
              "write FiringAngleA + Vangle, or + 360 where a four-stroke bank fires a revolution "
              "later"});
      return;
    }
  }
}

/// Angles beyond the cycle and equal ones are read, and seldom meant.
void checkAngles(const CheckedPlant& plant, const SectionValues& diesel, Findings& to) {
  const double cycle = cycleOf(diesel);
  constexpr double kSame = 0.01;  // degrees
  for (const Bank& bank : banksOf(diesel)) {
    std::vector<double> degrees;
    bool isBeyond = false;
    for (const input::Value& value : diesel.all(bank.angle)) {
      degrees.push_back(std::fmod(value.real * 180 / kPi, cycle));
      // Bank B stands behind bank A by its angle, and so may pass the cycle.
      isBeyond = isBeyond || (bank.angle == "FiringAngleA" && value.real * 180 / kPi >= cycle);
    }
    std::sort(degrees.begin(), degrees.end());
    const bool isTwice = std::adjacent_find(degrees.begin(), degrees.end(), [](double a, double b) {
                           return b - a < kSame;
                         }) != degrees.end();
    if (isBeyond || isTwice) {
      to.add({Severity::hint, "firing-angle", lineOf(diesel, bank.angle),
              valueWords(plant, diesel, bank.angle),
              isBeyond ? fmt::format("angles below the cycle of {:g} degrees", cycle)
                       : "an angle of its own for each cylinder of a bank",
              isBeyond ? "check nStroke and the angles"
                       : "check the angles against the firing order"});
    }
  }
}

void checkStatus(const CheckedPlant& plant, const SectionValues& diesel, Findings& to) {
  constexpr std::int32_t kMostStatus = 5;
  constexpr std::int32_t kPartial = 5;
  for (const Bank& bank : banksOf(diesel)) {
    const auto statuses = diesel.all(bank.status);
    const auto shares = diesel.all(bank.percent);
    for (std::size_t i = 0; i < statuses.size(); ++i) {
      const std::int32_t status = statuses[i].integer;
      if (status < 1 || status > kMostStatus) {
        to.add({Severity::warning, "firing-status", statuses[i].place.line,
                valueWords(plant, diesel, bank.status), "1 to 5",
                "1 fires, 2 only compresses, 3 exhaust valve open, 4 piston removed, 5 fires "
                "partially"});
        break;
      }
      if (status == kPartial && i < shares.size() && shares[i].real < 1) {
        to.add({Severity::warning, "firing-status", shares[i].place.line,
                valueWords(plant, diesel, bank.percent), "per cent of a cylinder's power, 1 to 100",
                "write 90 for nine tenths"});
        break;
      }
    }
  }
  constexpr double kMostLimit = 3.0;
  if (diesel.real("MipLimit") > kMostLimit) {
    to.add({Severity::hint, "engine-limit", lineOf(diesel, "MipLimit"),
            valueWords(plant, diesel, "MipLimit"), "a share of the rated pressure, about 1.1",
            "write 1.1 for 110 %"});
  }
  const auto shafts = plant.all("SHAFT");
  const bool hasThrow = std::any_of(shafts.begin(), shafts.end(), [&](const SectionValues* each) {
    return isThrow(*each) && each->integer("ComponentIdFlag") == diesel.integer("Id");
  });
  if (diesel.flag("isFormulaDamping") && diesel.real("CrankRelDamping") != 0 && !hasThrow) {
    to.add({Severity::warning, "throw", lineOf(diesel, "CrankRelDamping"),
            fmt::format("{}, and no shaft is a throw of this engine",
                        valueWords(plant, diesel, "CrankRelDamping")),
            fmt::format("crank throws: shafts that end in 1 {}", diesel.integer("Id")),
            "mark the crank throws: the damping acts on no shaft"});
  }
}

/// The peak that the pressure model reaches at rating, where it misses the one that is stated.
void checkPeak(const SectionValues& diesel, Findings& to) {
  const auto rating = ratingOf(diesel);
  const bool isPlausible =
      std::none_of(to.all().begin(), to.all().end(), [&diesel](const Finding& each) {
        return each.severity == Severity::warning && each.line >= diesel.firstLine() &&
               each.line <= diesel.values().back().place.line;
      });
  if (!rating || !diesel.flag("isTheoreticalPresure") || diesel.flag("isGenset") || !isPlausible) {
    return;
  }
  Cylinder cylinder;
  cylinder.strokes = diesel.integer("nStroke");
  const double power = diesel.real("McrPower") / rating->cylinders;
  cylinder.values = {diesel.real("Bore"),
                     diesel.real("Stroke"),
                     diesel.real("ConrodRatio"),
                     diesel.real("CompRatio"),
                     power,
                     diesel.real("McrSpeed"),
                     power,
                     diesel.real("McrSpeed"),
                     diesel.real("PChargeAir"),
                     diesel.real("TChargeAir"),
                     diesel.real("PMax"),
                     diesel.real("PComp"),
                     diesel.real("Te"),
                     diesel.real("Me"),
                     diesel.real("FormFactor"),
                     diesel.real("AngleIgnition"),
                     diesel.real("AngleEndOfComb"),
                     diesel.real("AngleExhaustStart"),
                     diesel.real("AngleInletStart"),
                     diesel.real("AngleInletClose")};
  try {
    const PressureCurve curve = pressureCurve(cylinder);
    if (curve.missedPeak) {
      constexpr double kNear = 0.05;
      const bool isNear = std::abs(curve.peak / *curve.missedPeak - 1) < kNear;
      to.add({isNear ? Severity::hint : Severity::warning, "engine-curve", lineOf(diesel, "PMax"),
              fmt::format("{}: the pressure curve reaches {:.4g} bar", nameOf(diesel),
                          curve.peak / kBar),
              fmt::format("{:.4g} bar absolute, the stated peak", *curve.missedPeak / kBar),
              "check heat share, form factor and angles by \"verenwick pressure\""});
    }
  } catch (const std::exception& fault) {
    to.add({Severity::warning, "engine-curve", lineOf(diesel, "PMax"),
            fmt::format("{}: {}", nameOf(diesel), fault.what()), "a pressure curve at rating",
            "check pressures, compression ratio and angles by \"verenwick pressure\""});
  }
}

}  // namespace

void checkEngines(const CheckedPlant& plant, Findings& to) {
  for (const SectionValues* diesel : plant.all("DIESEL")) {
    checkRanges(plant, *diesel, kRanges, to);
    if (diesel->flag("isTheoreticalPresure") && !diesel->flag("isGenset")) {
      checkRanges(plant, *diesel, kPressureRanges, to);
    }
    checkRating(plant, *diesel, to);
    checkFiring(plant, *diesel, to);
    checkBanks(plant, *diesel, to);
    checkAngles(plant, *diesel, to);
    checkStatus(plant, *diesel, to);
    checkPeak(*diesel, to);
  }
}

}  // namespace verenwick::host
