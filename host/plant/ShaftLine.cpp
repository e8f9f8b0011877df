#include "host/plant/ShaftLine.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "host/plant/Components.h"
#include "host/plant/Plant.h"

namespace verenwick::host {
namespace {

/// The free text at the head of a file, without the marks that a comment begins with.
std::string titleOf(const std::string& text) {
  return text.substr(std::min(text.find_first_not_of("!#*/;-= \t"), text.size()));
}

/// The remarks behind the sections of a keyword, one a record in their order.
std::vector<std::string> remarksOf(const input::InputDocument& document, std::string_view keyword,
                                   std::int32_t records) {
  std::vector<std::string> remarks;
  for (const input::SectionValues& section : document.sections()) {
    if (section.section().keyword == keyword) {
      remarks.push_back(document.remarkBehind(section.values().back().place));
    }
  }
  // A table is sized by all lines that begin with the keyword, also where they belong to another
  // section.
  remarks.resize(static_cast<std::size_t>(records));
  return remarks;
}

std::vector<Inertia> inertiasOf(const Plant& plant) {
  const MASS_TABLE& table = plant.model.mass;
  const std::vector<std::string> names = remarksOf(plant.document, "INERTIA", table.number());
  std::vector<Inertia> inertias;
  for (std::int32_t row = 1; row <= table.number(); ++row) {
    const MASS_RECORD& mass = table.at(row);
    inertias.push_back({table.id(row), mass.RPMRATIO, mass.INERTIA, mass.ABSDAMPING,
                        mass.DYNMAGNIFIER, names[index(row)]});
  }
  // A propeller with its water takes the place of the row's value.
  const PROPELLER_TABLE& propellers = plant.model.propeller;
  for (std::int32_t p = 1; p <= propellers.number(); ++p) {
    const PROPELLER_RECORD& propeller = propellers.at(p);
    if (const std::int32_t row = table.positionOf(propeller.PROPELLERNODE); row > 0) {
      inertias[index(row)].inertia = propeller.INERTIAAIR + propeller.INERTIAWATER;
    }
  }
  return inertias;
}

/// Nothing if a shaft joins an inertia that isn't there.
std::optional<std::vector<Shaft>> shaftsOf(const Plant& plant) {
  const MASS_TABLE& masses = plant.model.mass;
  const SHAFT_TABLE& table = plant.model.shaft;
  const std::vector<std::string> names = remarksOf(plant.document, "SHAFT", table.number());
  std::vector<Shaft> shafts;
  for (std::int32_t row = 1; row <= table.number(); ++row) {
    const SHAFT_RECORD& shaft = table.at(row);
    const std::int32_t origin = masses.positionOf(shaft.ORGNODE);
    const std::int32_t destination = masses.positionOf(shaft.DESNODE);
    if (origin == 0 || destination == 0) {
      return std::nullopt;
    }
    shafts.push_back({table.id(row), index(origin), index(destination), shaft.RPMRATIO,
                      shaft.STIFFNESS, shaft.ABSDAMPING, shaft.DYNMAGNIFIER, shaft.OUTERDI,
                      shaft.INNERDI, names[index(row)]});
  }
  return shafts;
}

}  // namespace

std::optional<ShaftLine> readShaftLine(const std::filesystem::path& input) {
  const auto plant = readPlant(input);
  if (!plant) {
    return std::nullopt;
  }
  auto shafts = shaftsOf(*plant);
  if (!shafts) {
    return std::nullopt;
  }
  ShaftLine line;
  line.title = titleOf(plant->document.title());
  line.inertias = inertiasOf(*plant);
  line.shafts = std::move(*shafts);
  line.components = componentsOf(*plant);
  for (std::int32_t i = 1; i <= plant->model.loadCaseSpeed.number(); ++i) {
    line.loadCaseSpeeds.push_back(plant->model.loadCaseSpeed.at(i));
  }
  return line;
}

std::int64_t propellerOrders(const ShaftLine& line) {
  constexpr std::int64_t plain = 2;
  constexpr double ordersOfBlade = 4;
  const auto iced = std::find_if(line.components.begin(), line.components.end(),
                                 [](const Component& each) { return each.ice; });
  // The first order of a propeller is its number of blades.
  return iced == line.components.end() || iced->orders.empty()
             ? plain
             : static_cast<std::int64_t>(ordersOfBlade * iced->orders[0]);
}

std::optional<std::vector<ShapeNode>> shapeNodes(std::span<const double> shape,
                                                 std::span<const Shaft> shafts) {
  double largest = 0;
  for (const double deflection : shape) {
    if (!std::isfinite(deflection)) {
      return std::nullopt;
    }
    largest = std::max(largest, std::abs(deflection));
  }
  std::vector<int> sign(shape.size());
  std::transform(shape.begin(), shape.end(), sign.begin(), [=](double deflection) {
    if (std::abs(deflection) <= kAtRest * largest) {
      return 0;
    }
    return deflection > 0 ? 1 : -1;
  });

  // Inertias at rest that hang together are known by one of them.
  std::vector<std::size_t> group(shape.size());
  std::iota(group.begin(), group.end(), std::size_t{0});
  const auto groupOf = [&group](std::size_t row) {
    while (group[row] != row) {
      group[row] = group[group[row]];
      row = group[row];
    }
    return row;
  };
  for (const Shaft& shaft : shafts) {
    if (sign[shaft.origin] == 0 && sign[shaft.destination] == 0) {
      group[groupOf(shaft.origin)] = groupOf(shaft.destination);
    }
  }

  std::vector<ShapeNode> nodes;
  std::vector<int> neighbour(shape.size());
  for (std::size_t i = 0; i < shafts.size(); ++i) {
    const Shaft& shaft = shafts[i];
    const int origin = sign[shaft.origin];
    const int destination = sign[shaft.destination];
    if (origin * destination < 0) {
      nodes.push_back({i, shape[shaft.origin] / (shape[shaft.origin] - shape[shaft.destination])});
    } else if (origin != destination) {
      const std::size_t resting = groupOf(origin == 0 ? shaft.origin : shaft.destination);
      const int swing = origin + destination;
      constexpr int counted = 2;
      if (neighbour[resting] == -swing) {
        nodes.push_back({i, origin == 0 ? 0.0 : 1.0});
        neighbour[resting] = counted;
      } else if (neighbour[resting] == 0) {
        neighbour[resting] = swing;
      }
    }
  }
  return nodes;
}

}  // namespace verenwick::host
