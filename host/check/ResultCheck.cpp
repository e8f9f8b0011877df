#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "ComponentTables/Global_ViscousDamper.h"
#include "host/Units.h"
#include "host/check/Checks.h"
#include "host/plant/Readings.h"

namespace verenwick::host {
namespace {

using results::Index;
using results::Position;
using results::ResultDirectory;
using results::resultFile;
using results::ResultValues;

/// Order up to which an engine excites anything that matters.
constexpr double kHighestOrder = 12;

/// The highest speed of the load cases or of an engine's rating, rpm.
double topSpeed(const CheckedPlant& plant) {
  double top = 0;
  for (const auto& row : plant.document().loadCases()) {
    top = std::max(top, std::abs(row.values[0].real));
  }
  for (const SectionValues* diesel : plant.all("DIESEL")) {
    top = std::max(top, std::abs(diesel->real("McrSpeed")));
  }
  return top;
}

/// A damper whose ring hangs on nothing but oil damps the most by about c = J w, for J of the ring
/// and w of the mode without it: 0.58 of that where the ring is as large as all it damps.
void checkOptimum(const CheckedPlant& plant, const std::vector<double>& omega, Findings& to) {
  constexpr double kSpring = 0.3;      ///< of the mode's frequency: a softer link is none
  constexpr double kLeastShare = 0.2;  ///< of the optimum
  constexpr double kMostShare = 3;
  const double fastest = kHighestOrder * topSpeed(plant) * kPi / 30;
  for (const SectionValues* damper : plant.all("VISCOUSDAMPER")) {
    const SectionValues* link =
        plant.shaftBetween(damper->integer("CasingNode"), damper->integer("RingNode"));
    const SectionValues* ring = plant.find("INERTIA", damper->integer("RingNode"));
    if (link == nullptr || ring == nullptr || damper->flag("isCustomDamping") ||
        link->real("DynMagnifier") != 0 || !(ring->real("Inertia") > 0)) {
      continue;
    }
    const double inertia = ring->real("Inertia");
    const double own = std::sqrt(std::max(link->real("Stiffness"), 0.0) / inertia);
    double least = 0;
    double most = 0;
    for (const double each : omega) {
      if (std::isfinite(each) && each > 1 && own < kSpring * each && each < fastest) {
        least = least == 0 ? each : std::min(least, each);
        most = std::max(most, each);
      }
    }
    const double damping = link->real("AbsDamping");
    if (most > 0 &&
        (damping < kLeastShare * inertia * least || damping > kMostShare * inertia * most)) {
      to.add({Severity::hint, "damper-optimum", lineOf(*link, "AbsDamping"),
              fmt::format("{}, of {}", valueWords(plant, *link, "AbsDamping"), nameOf(*damper)),
              fmt::format("about the ring's inertia times the angular frequency of the mode to be "
                          "damped: {:.3g} N m s/rad at {:.3g} Hz to {:.3g} at {:.3g} Hz",
                          inertia * least, least / (2 * kPi), inertia * most, most / (2 * kPi)),
              "check the damping and the inertia of the ring, and the units of both; the damping "
              "stands on the SHAFT line"});
    }
  }
}

/// A damping table over frequency, which the run has read. Beyond its rows the line of the
/// outermost two goes on.
void checkTable(const CheckedPlant& plant, const SectionValues& damper, Findings& to) {
  VISCOUSDAMPER_TABLE table;
  ALLOCATE_VISCOUSDAMPER_TABLE(table, 1);
  VISCOUSDAMPER_RECORD& read = table.at(1);
  read.CUSTOMDAMPINGFILE = plant.dataFile(damper.text("CustomDampingFile")).string();
  if (read.CUSTOMDAMPINGFILE.empty() || !LOADCUSTOMDAMPINGFILE(table) ||
      read.FREQUENCIES.size() < 2) {
    return;
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
  constexpr double kBeyond = 0.1;
  const double lowestOrder = isFourStroke ? 0.5 : 1;
  const auto& [least, most] = std::minmax(read.FREQUENCIES.front(), read.FREQUENCIES.back());
  if (fastest == 0) {
    return;
  }
  for (const End& end :
       {End{lowestOrder, slowest, lowestOrder * slowest / 60 < (1 - kBeyond) * least},
        End{kHighestOrder, fastest, kHighestOrder * fastest / 60 > (1 + kBeyond) * most}}) {
    if (end.isLeft) {
      read.SPEED = end.speed;
      const double damping = CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(table, 1, end.order);
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

/// The largest mean torque of each shaft over the load cases, N m.
std::vector<double> meanTorques(const ResultDirectory& directory) {
  constexpr const results::ResultFile& kFile = resultFile("NominalTorque.bin");
  std::vector<double> largest;
  if (!directory.has(kFile)) {
    return largest;
  }
  ResultValues torques = directory.open(kFile);
  Position at;
  for (at[Index::loadCase] = 1; at[Index::loadCase] <= torques.axis(Index::loadCase)->last;
       ++at[Index::loadCase]) {
    const std::vector<double> row = pointValues(torques, at);
    largest.resize(row.size());
    for (std::size_t i = 0; i < row.size(); ++i) {
      largest[i] = std::max(largest[i], std::abs(row[i]));
    }
  }
  return largest;
}

void checkCouplingTorques(const CheckedPlant& plant, const std::vector<double>& torques,
                          Findings& to) {
  constexpr double kMost = 1.02;
  constexpr double kLeast = 0.02;
  const auto shafts = plant.all("SHAFT");
  for (const std::string_view keyword : kCouplings) {
    for (const SectionValues* coupling : plant.all(keyword)) {
      const auto shaft = std::find(shafts.begin(), shafts.end(),
                                   plant.find("SHAFT", coupling->integer("ShaftNode")));
      const auto row = static_cast<std::size_t>(shaft - shafts.begin());
      const double nominal = coupling->real("NominalTorque");
      if (row >= torques.size() || !(nominal > 0)) {
        continue;
      }
      const double share = torques[row] / nominal;
      const bool isCurve = keyword == "PROGRESSIVECOUPLING";
      if (share > kMost || (share > 0 && share < kLeast)) {
        to.add({Severity::hint, "coupling-torque", lineOf(*coupling, "NominalTorque"),
                fmt::format("{}: the load cases carry up to {:.4g} N m, {:.3g} of it",
                            valueWords(plant, *coupling, "NominalTorque"), torques[row], share),
                isCurve ? "mean torques up to the nominal one, at which the curve ends"
                        : "mean torques up to the nominal one",
                "check the coupling's size, the unit of its torque, N m, and the speed ratio of "
                "its shaft"});
      }
    }
  }
}

}  // namespace

void checkResults(const CheckedPlant& plant, const ResultDirectory& directory, Findings& to) {
  if (directory.has(resultFile("NaturalFrequency.bin"))) {
    checkOptimum(plant, frequencies(directory), to);
  }
  for (const SectionValues* damper : plant.all("VISCOUSDAMPER")) {
    if (damper->flag("isCustomDamping")) {
      checkTable(plant, *damper, to);
    }
  }
  checkCouplingTorques(plant, meanTorques(directory), to);
}

}  // namespace verenwick::host
