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
  for (const std::string_view keyword :
       {"LINEARCOUPLING", "PROGRESSIVECOUPLING", "GEISLINGERCOUPLING"}) {
    for (const SectionValues* coupling : plant.all(keyword)) {
      checkOrder(plant, *coupling, to);
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
