#include <fmt/format.h>

#include <cmath>

#include "host/check/Checks.h"

namespace verenwick::host {
namespace {

/// The methods by their number in the list of words, as the file has them.
enum Method : std::int32_t { schwanecke = 1, archer = 2, frahm = 3, manual = 4, variable = 5 };

void checkRange(const CheckedPlant& plant, const SectionValues& propeller, std::string_view field,
                double least, double most, std::string_view expected, std::string_view advice,
                Findings& to) {
  const double value = propeller.real(field);
  if (value < least || value > most) {
    to.add({Severity::warning, "propeller-range", lineOf(propeller, field),
            valueWords(plant, propeller, field), std::string(expected), std::string(advice)});
  }
}

void checkInertias(const CheckedPlant& plant, const SectionValues& propeller, Findings& to) {
  const double air = propeller.real("InertiaAir");
  const double water = propeller.real("InertiaWater");
  constexpr double kLeast = 0.03;
  constexpr double kMost = 1.0;
  if (air > 0 && (water < kLeast * air || water > kMost * air)) {
    to.add({Severity::hint, "propeller-water", lineOf(propeller, "InertiaWater"),
            valueWords(plant, propeller, "InertiaWater"),
            fmt::format("a share of InertiaAir, often 0.1 to 0.3 of it: {:.3g} to {:.3g} kg m²",
                        0.1 * air, 0.3 * air),
            "write the inertia of the entrained water alone; the sum of both replaces the row's"});
  }
  const SectionValues* row = plant.find("INERTIA", propeller.integer("PropellerNode"));
  constexpr double kSame = 0.02;
  if (row != nullptr && std::abs(row->real("Inertia") - air - water) > kSame * (air + water)) {
    to.add({Severity::hint, "propeller-inertia", lineOf(*row, "Inertia"),
            valueWords(plant, *row, "Inertia"),
            fmt::format("{:g} kg m², the sum of InertiaAir and InertiaWater, which replaces it",
                        air + water),
            "write the sum there, or correct the propeller"});
  }
}

}  // namespace

void checkPropellers(const CheckedPlant& plant, Findings& to) {
  for (const SectionValues* propeller : plant.all("PROPELLER")) {
    const std::int32_t blades = propeller->integer("nBlade");
    if (blades < 2 || blades > 8) {
      to.add({Severity::warning, "propeller-blades", lineOf(*propeller, "nBlade"),
              valueWords(plant, *propeller, "nBlade"), "2 to 8 blades", "write their number"});
    }
    checkInertias(plant, *propeller, to);
    constexpr double kShare = 0.02;
    if (propeller->integer("isFixedPitch") == 0 && propeller->real("PitchPercent") > 0 &&
        propeller->real("PitchPercent") < kShare) {
      to.add({Severity::hint, "propeller-range", lineOf(*propeller, "PitchPercent"),
              valueWords(plant, *propeller, "PitchPercent"), "per cent of the full pitch",
              "write 100 for full pitch: the damping falls with it"});
    }
    const std::int32_t method = propeller->integer("Method");
    if (method == schwanecke) {
      checkRange(plant, *propeller, "PitchRatio", 0.3, 2.0,
                 "pitch over diameter of 0.3 to 2, for which the damping formula stands",
                 "write the ratio, not the pitch", to);
      checkRange(plant, *propeller, "ExpAreaRatio", 0.2, 1.5,
                 "expanded area over disc area of 0.2 to 1.5, for which the damping formula stands",
                 "write the ratio, not the area", to);
      checkRange(plant, *propeller, "Di", 0.3, 13.0, "a diameter of 300 to 13000 mm",
                 "write the diameter of the propeller in mm, behind that of its boss", to);
      if (propeller->real("Db") >= propeller->real("Di")) {
        to.add({Severity::warning, "propeller-range", lineOf(*propeller, "Db"),
                valueWords(plant, *propeller, "Db"), "a boss smaller than the propeller",
                "write the diameter of the boss, then that of the propeller"});
      }
    } else if (method == archer) {
      checkRange(plant, *propeller, "ArcherNumber", 15, 60, "Archer's number, 20 to 50",
                 "write the number itself; 30 is usual", to);
    } else if ((method == manual || method == variable) && propeller->real("DynMagnifier") == 0) {
      to.add({Severity::warning, "propeller-range", lineOf(*propeller, "DynMagnifier"),
              valueWords(plant, *propeller, "DynMagnifier"),
              "a magnifier, of which this method makes the damping: 3 to 15",
              "write it, or another method: with 0 the propeller damps nothing"});
    } else if (method == frahm) {
      checkRange(plant, *propeller, "FrahmNumber", 0.5, 10, "Frahm's number, 1 to 5",
                 "write the number itself; 3 is usual", to);
    }
  }
}

}  // namespace verenwick::host
