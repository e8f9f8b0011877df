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
  for (const std::string_view keyword :
       {"LINEARCOUPLING", "PROGRESSIVECOUPLING", "GEISLINGERCOUPLING"}) {
    for (const SectionValues* coupling : plant.all(keyword)) {
      checkOrder(plant, *coupling, to);
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
