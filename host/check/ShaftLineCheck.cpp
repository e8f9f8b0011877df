#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "host/Units.h"
#include "host/check/Checks.h"

namespace verenwick::host {
namespace {

constexpr double kShearModulus = 8.1e10;  ///< of steel, Pa
constexpr double kDensity = 7850.0;       ///< of steel, kg/m3

/// Polar second moment of area of a hollow shaft, m4.
double polarMoment(const SectionValues& shaft) {
  return kPi / 32.0 * (std::pow(shaft.real("OuterDi"), 4) - std::pow(shaft.real("InnerDi"), 4));
}

bool isMesh(const CheckedPlant& plant, const SectionValues& shaft) {
  return plant.ratioAt(shaft.integer("OrgNode")) != plant.ratioAt(shaft.integer("DesNode"));
}

void checkDiameters(const CheckedPlant& plant, const SectionValues& shaft, Findings& to) {
  constexpr double kThinnest = 2e-3;
  const double outer = shaft.real("OuterDi");
  if (outer > 0 && outer < kThinnest) {
    to.add({Severity::warning, "diameter-unit", lineOf(shaft, "OuterDi"),
            valueWords(plant, shaft, "OuterDi"), "a diameter in mm, above 2",
            fmt::format("write {:g} if metres are meant: the stress grows with the third power",
                        outer * 1e6)});
  }
}

void checkLength(const CheckedPlant& plant, const SectionValues& shaft, Findings& to) {
  constexpr double kShortest = 0.02;
  constexpr double kLongest = 30.0;
  constexpr double kMega = 1e6;
  const double stiffness = shaft.real("Stiffness");
  const double moment = polarMoment(shaft);
  if (stiffness <= 0 || moment <= 0 || plant.isOwned(shaft) || isMesh(plant, shaft)) {
    return;
  }
  const double length = kShearModulus * moment / stiffness;
  if (length >= kShortest && length <= kLongest) {
    return;
  }
  const auto fits = [](double l) { return l >= kShortest && l <= kLongest; };
  std::string advice =
      "check stiffness and diameters; a gap of the model or a flexible part has "
      "an outer diameter of 0";
  if (fits(length / kMega)) {
    advice = "the stiffness looks like one in MN m/rad: write N m/rad";
  } else if (fits(length * 1e12)) {
    advice = "the diameters look like metres: write mm";
  }
  to.add({Severity::warning, "shaft-length", lineOf(shaft, "Stiffness"),
          fmt::format("{}: a steel shaft of this diameter would be {:.3g} m long",
                      valueWords(plant, shaft, "Stiffness"), length),
          "a length of 0.02 to 30 m, G pi (D^4 - d^4) / (32 Stiffness)", advice});
}

/// A stiffness without a diameter is held against the inertias at its ends.
void checkSoftness(const CheckedPlant& plant, const SectionValues& shaft, Findings& to) {
  const double softest = isMesh(plant, shaft) ? 30.0 : 1.0;  // rad/s; teeth are stiff
  const SectionValues* one = plant.find("INERTIA", shaft.integer("OrgNode"));
  const SectionValues* other = plant.find("INERTIA", shaft.integer("DesNode"));
  const double stiffness = shaft.real("Stiffness");
  const bool isViscous = stiffness <= 1.0 && plant.isOwned(shaft);
  if (one == nullptr || other == nullptr || stiffness <= 0 || isViscous || polarMoment(shaft) > 0) {
    return;
  }
  const double first = one->real("Inertia");
  const double second = other->real("Inertia");
  if (first <= 0 || second <= 0) {
    return;
  }
  const double omega = std::sqrt(stiffness * (1 / first + 1 / second));
  if (omega < softest) {
    to.add({Severity::warning, "shaft-soft", lineOf(shaft, "Stiffness"),
            fmt::format("{}: its two inertias alone would swing at {:.2g} rad/s",
                        valueWords(plant, shaft, "Stiffness"), omega),
            fmt::format("a frequency above {:g} rad/s", softest),
            "write N m/rad if kN m or MN m per rad stand there"});
  }
}

void checkMagnifier(const CheckedPlant& plant, const SectionValues& section, Findings& to) {
  constexpr double kLowest = 1.0;
  constexpr double kUsual = 2.5;
  const double magnifier = section.real("DynMagnifier");
  if (magnifier > 0 && magnifier < kUsual) {
    const bool isLow = magnifier < kLowest;
    to.add({isLow ? Severity::warning : Severity::hint, "magnifier",
            lineOf(section, "DynMagnifier"), valueWords(plant, section, "DynMagnifier"),
            "a magnifier M: 3 to 15 for rubber, 20 to 500 for steel",
            fmt::format("write {:.3g} if it is the relative damping psi of a maker's sheet: "
                        "M = 2 pi / psi",
                        2 * kPi / magnifier)});
  }
  if (magnifier > 0 && section.real("AbsDamping") > 0) {
    to.add({Severity::hint, "damping-twice", lineOf(section, "AbsDamping"),
            fmt::format("{} and {:g}", valueWords(plant, section, "AbsDamping"), magnifier),
            "one of AbsDamping and DynMagnifier",
            "write 0 for one of them: the vibration takes the magnifier, the power loss may take "
            "the other"});
  }
}

/// A row carries the ratio of its ends; a mesh that of its first node.
void checkRatio(const CheckedPlant& plant, const SectionValues& shaft, Findings& to) {
  const double ratio = shaft.real("RpmRatio");
  const double first = plant.ratioAt(shaft.integer("OrgNode"));
  constexpr double kSame = 1e-6;
  if (std::abs(ratio - first) <= kSame * std::abs(first)) {
    return;
  }
  const bool mesh = isMesh(plant, shaft);
  to.add({Severity::warning, mesh ? "mesh-ratio" : "shaft-ratio", lineOf(shaft, "RpmRatio"),
          valueWords(plant, shaft, "RpmRatio"),
          mesh ? fmt::format("{:g}, the ratio of its first node, INERTIA {}", first,
                             shaft.integer("OrgNode"))
               : fmt::format("{:g}, the ratio of the inertias at its ends", first),
          mesh ? "write that ratio with stiffness and damping seen from there, or exchange the "
                 "two nodes: else its torque is stated on another speed than its neighbours'"
               : "write that ratio: else its torque and stress are stated on another speed"});
}

void checkInertia(const CheckedPlant& plant, const SectionValues& inertia, Findings& to) {
  const double ratio = inertia.real("RpmRatio");
  const double value = inertia.real("Inertia");
  double thickest = 0;
  bool isOwnRatio = false;
  bool isRatioOfShafts = !plant.shaftsAt(inertia.integer("Id")).empty();
  for (const SectionValues* shaft : plant.shaftsAt(inertia.integer("Id"))) {
    isOwnRatio = isOwnRatio || shaft->real("RpmRatio") == ratio;
    isRatioOfShafts = isRatioOfShafts && shaft->real("RpmRatio") == value;
    if (!plant.isOwned(*shaft)) {
      thickest = std::max(thickest, shaft->real("OuterDi"));
    }
  }
  constexpr double kSlowest = 1e-3;
  constexpr double kFastest = 100.0;
  if (!isOwnRatio && isRatioOfShafts && value != ratio) {
    to.add({Severity::warning, "ratio-inertia-swapped", lineOf(inertia, "RpmRatio"),
            fmt::format("{} and Inertia {:g} kg m²", valueWords(plant, inertia, "RpmRatio"), value),
            "RpmRatio, then Inertia; the shafts here have the ratio that stands for the inertia",
            "exchange the two"});
    return;
  }
  if (ratio != 0 && (std::abs(ratio) < kSlowest || std::abs(ratio) > kFastest)) {
    to.add({Severity::warning, "ratio", lineOf(inertia, "RpmRatio"),
            valueWords(plant, inertia, "RpmRatio"),
            "a speed over that of the load cases, 0.001 to 100", "write RpmRatio, then Inertia"});
  }
  if (value <= 0 || thickest <= 0) {
    return;
  }
  // A disc of the shaft's diameter and a fiftieth of it thick, and one of 40 times the diameter
  // that is as thick as the shaft.
  constexpr double kThin = 0.02;
  constexpr double kWide = 40.0;
  const double disc = kDensity * kPi / 32.0 * std::pow(thickest, 5);
  if (value < kThin * disc || value > std::pow(kWide, 4) * disc) {
    to.add({Severity::hint, value < kThin * disc ? "inertia-small" : "inertia-large",
            lineOf(inertia, "Inertia"), valueWords(plant, inertia, "Inertia"),
            fmt::format("{:.2g} to {:.2g} kg m² beside a shaft of {:g} mm", kThin * disc,
                        std::pow(kWide, 4) * disc, thickest * 1e3),
            "check the unit, kg m²: a flywheel effect GD² in kgf m² is four times the inertia"});
  }
}

}  // namespace

void checkShaftLine(const CheckedPlant& plant, Findings& to) {
  for (const SectionValues* inertia : plant.all("INERTIA")) {
    checkInertia(plant, *inertia, to);
    checkMagnifier(plant, *inertia, to);
  }
  for (const SectionValues* shaft : plant.all("SHAFT")) {
    checkDiameters(plant, *shaft, to);
    checkLength(plant, *shaft, to);
    checkSoftness(plant, *shaft, to);
    checkMagnifier(plant, *shaft, to);
    checkRatio(plant, *shaft, to);
  }
}

}  // namespace verenwick::host
