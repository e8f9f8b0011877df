#include <fmt/format.h>

#include <algorithm>

#include "host/check/Checks.h"

namespace verenwick::host {
namespace {

/// The free calculation takes the stiffness of the SHAFT line; only the forced one that of the
/// coupling.
void checkStiffness(const CheckedPlant& plant, const SectionValues& coupling, double least,
                    double most, Findings& to) {
  const SectionValues* shaft = plant.find("SHAFT", coupling.integer("ShaftNode"));
  if (shaft == nullptr) {
    return;
  }
  constexpr double kBeyond = 0.02;
  const double stiffness = shaft->real("Stiffness");
  if (stiffness < (1 - kBeyond) * least || stiffness > (1 + kBeyond) * most) {
    to.add({Severity::hint, "coupling-stiffness", lineOf(*shaft, "Stiffness"),
            fmt::format("{}, under {}", valueWords(plant, *shaft, "Stiffness"), nameOf(coupling)),
            fmt::format("a stiffness of the curve, {:g} to {:g} N m/rad", least, most),
            "give the shaft the stiffness of the load whose natural frequencies are wanted: those "
            "are of the SHAFT line alone"});
  }
}

/// The angle by which a coupling twists under its nominal torque, by its greatest stiffness.
void checkTwist(const CheckedPlant& plant, const SectionValues& coupling, std::string_view field,
                Findings& to) {
  double stiffness = 0;
  for (const input::Value& value : coupling.all(field)) {
    stiffness = std::max(stiffness, value.real);
  }
  const double twist = stiffness > 0 ? coupling.real("NominalTorque") / stiffness : 0;
  constexpr double kMost = 2.0;
  constexpr double kLeast = 1e-4;
  if (twist > kMost || (twist > 0 && twist < kLeast)) {
    to.add({Severity::warning, "coupling-twist", lineOf(coupling, field),
            fmt::format("{}: NominalTorque twists it by {:.2g} rad",
                        valueWords(plant, coupling, field), twist),
            "0.0001 to 2 rad: 0.02 to 0.4 rad for rubber, less for steel",
            "write N m and N m/rad, both as numbers without kilo or mega"});
  }
}

/// Damping and magnifier of a damper stand on its SHAFT line.
void checkLink(const CheckedPlant& plant, const SectionValues& damper, std::string_view one,
               std::string_view other, Findings& to) {
  const SectionValues* link = plant.shaftBetween(damper.integer(one), damper.integer(other));
  if (link == nullptr) {
    return;
  }
  const bool isViscous = damper.section().keyword == "VISCOUSDAMPER";
  const bool isByTable = isViscous && damper.flag("isCustomDamping");
  if (isViscous && link->real("DynMagnifier") != 0) {
    to.add({Severity::warning, "damper-link", lineOf(*link, "DynMagnifier"),
            fmt::format("{}, of {}", valueWords(plant, *link, "DynMagnifier"), nameOf(damper)),
            "0: the oil damps, by AbsDamping",
            "write 0: a magnifier takes the place of the damping in the vibration"});
  } else if (!isByTable && link->real("DynMagnifier") == 0 &&
             link->real("AbsDamping") != damper.real("AbsDamping")) {
    to.add({Severity::warning, "damper-link", lineOf(*link, "AbsDamping"),
            fmt::format("{}, of {} with {} there", valueWords(plant, *link, "AbsDamping"),
                        nameOf(damper),
                        plant.document().token(damper.all("AbsDamping").front().place)),
            "the same damping in both places",
            "write it on the SHAFT line too: the vibration takes that, the report the other"});
  }
}

void checkOrder(const CheckedPlant& plant, const SectionValues& coupling, Findings& to) {
  const SectionValues* shaft = plant.find("SHAFT", coupling.integer("ShaftNode"));
  if (shaft == nullptr) {
    to.add({Severity::error, "missing-shaft", lineOf(coupling, "ShaftNode"),
            valueWords(plant, coupling, "ShaftNode"), "the id of a SHAFT line",
            "write the SHAFT, or the id of the one that is meant"});
  } else if (shaft->firstLine() > coupling.firstLine()) {
    to.add({Severity::warning, "coupling-early", coupling.firstLine(),
            fmt::format("{} in front of its SHAFT {}", nameOf(coupling), shaft->integer("Id")),
            "the SHAFT line first",
            "move the coupling behind all SHAFT lines: here the natural frequencies know nothing "
            "of it"});
  }
}

}  // namespace

void checkCouplingsAndDampers(const CheckedPlant& plant, Findings& to) {
  for (const std::string_view keyword : kCouplings) {
    for (const SectionValues* coupling : plant.all(keyword)) {
      checkOrder(plant, *coupling, to);
      checkTwist(plant, *coupling,
                 keyword == "GEISLINGERCOUPLING" ? "StaticStiffness" : "NominalStiffness", to);
    }
  }
  for (const auto& [keyword, one, other] : kDampers) {
    for (const SectionValues* damper : plant.all(keyword)) {
      checkLink(plant, *damper, one, other, to);
    }
  }
  for (const SectionValues* coupling : plant.all("PROGRESSIVECOUPLING")) {
    const auto points = coupling->all("NominalStiffness");
    const auto [least, most] = std::minmax_element(
        points.begin(), points.end(),
        [](const input::Value& a, const input::Value& b) { return a.real < b.real; });
    checkStiffness(plant, *coupling, least->real, most->real, to);
    if (!std::is_sorted(points.begin(), points.end(),
                        [](const auto& a, const auto& b) { return a.real < b.real; })) {
      to.add({Severity::hint, "coupling-curve", lineOf(*coupling, "NominalStiffness"),
              valueWords(plant, *coupling, "NominalStiffness"),
              "a stiffness that grows with the torque, at 0, 25, 50, 75 and 100 %",
              "write the five values in this order"});
    }
  }
}

}  // namespace verenwick::host
