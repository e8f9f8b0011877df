#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "ComponentTables/Global_ViscousDamper.h"
#include "RunControl/Log.h"
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

/// A damping table over frequency. Beyond its rows the line of the outermost two goes on.
void checkTable(const CheckedPlant& plant, const SectionValues& damper, Findings& to) {
  VISCOUSDAMPER_TABLE table;
  ALLOCATE_VISCOUSDAMPER_TABLE(table, 1);
  VISCOUSDAMPER_RECORD& read = table.at(1);
  read.CUSTOMDAMPINGFILE = plant.dataFile(damper.text("CustomDampingFile")).string();
  if (read.CUSTOMDAMPINGFILE.empty() || !LOADCUSTOMDAMPINGFILE(table) ||
      read.FREQUENCIES.size() < 2) {
    return;  // the solver names what can't be read
  }
  if (!std::is_sorted(read.FREQUENCIES.begin(), read.FREQUENCIES.end())) {
    to.add({Severity::warning, "damping-table", lineOf(damper, "CustomDampingFile"),
            fmt::format("{}: the frequencies of its table don't rise", nameOf(damper)),
            "a frequency in Hz a row, ascending", "sort the rows"});
    return;
  }
  double slowest = std::numeric_limits<double>::infinity();
  double fastest = 0;
  const double ratio = std::abs(plant.ratioAt(damper.integer("CasingNode")));
  for (const auto& row : plant.document().loadCases()) {
    const double speed = std::abs(row.values[0].real) * ratio;
    slowest = speed > 0 ? std::min(slowest, speed) : slowest;
    fastest = std::max(fastest, speed);
  }
  const auto diesels = plant.all("DIESEL");
  const bool isFourStroke =
      std::any_of(diesels.begin(), diesels.end(),
                  [](const SectionValues* each) { return each->integer("nStroke") == 4; });
  struct End {
    double order, speed;
    bool isLeft;  ///< the table
  };
  constexpr double kHighestOrder = 12;
  constexpr double kBeyond = 0.1;
  const double lowestOrder = isFourStroke ? 0.5 : 1;
  const auto& [least, most] = std::minmax(read.FREQUENCIES.front(), read.FREQUENCIES.back());
  if (fastest == 0) {
    return;
  }
  for (const End& end :
       {End{lowestOrder, slowest, lowestOrder * slowest / 60 < (1 - kBeyond) * least},
        End{kHighestOrder, fastest, kHighestOrder * fastest / 60 > (1 + kBeyond) * most}}) {
    read.SPEED = end.speed;
    const double damping = CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(table, 1, end.order);
    if (end.isLeft) {
      to.add(
          {damping > 0 ? Severity::hint : Severity::warning, "damping-table",
           lineOf(damper, "CustomDampingFile"),
           fmt::format("{}: its table holds {:.4g} to {:.4g} Hz; order {:g} at {:.4g} rpm is at "
                       "{:.4g} Hz, where its last slope gives {:.3g} N m s/rad",
                       nameOf(damper), least, most, end.order, end.speed,
                       end.order * end.speed / 60, damping),
           fmt::format("a table from order {:g} of the slowest to order {:g} of the fastest load "
                       "case",
                       lowestOrder, kHighestOrder),
           "add rows at both ends of the table, with the outermost damping where nothing else "
           "is known"});
    }
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
  const Log unread;
  for (const SectionValues* damper : plant.all("VISCOUSDAMPER")) {
    if (damper->flag("isCustomDamping")) {
      checkTable(plant, *damper, to);
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
