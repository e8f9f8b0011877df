#include "host/plant/ShaftLine.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <unordered_map>
#include <utility>

#include "host/Units.h"
#include "host/plant/ComponentSections.h"
#include "host/plant/InputLines.h"

namespace verenwick::host {
namespace {

/// A deflection below this share of the largest one is rounding: the inertia is at rest. Where two
/// equal engines swing against each other, the line behind their gear keeps this much of noise.
constexpr double kAtRest = 1e-10;

/// The speeds of the load case table, whose lines follow: ids behind "RPM", kinds, then a row a
/// load case up to a blank line.
std::vector<double> readSpeeds(InputLines& lines) {
  while (lines.next() && !lines.startsWith("RPM")) {
  }
  lines.next();
  std::vector<double> speeds;
  while (lines.next() && !lines.blank()) {
    speeds.push_back(lines.number<double>(0).value_or(0.0));
  }
  return speeds;
}

/// Ids to rows, the first of equal ones.
using Rows = std::unordered_map<std::int32_t, std::size_t>;

std::optional<std::size_t> rowOf(const Rows& rows, std::int32_t id) {
  const auto found = rows.find(id);
  return found == rows.end() ? std::nullopt : std::optional(found->second);
}

/// A file as it is read, with ids where the line has rows.
struct Sections {
  struct Ends {
    std::int32_t origin, destination;
  };
  ShaftLine line;
  Rows inertias;
  Rows shafts;
  std::vector<Ends> ends;
  std::vector<ComponentSection> components;
};

bool isPropeller(const Component& component) {
  return component.family == results::Family::propeller;
}

bool readInertia(const InputLines& lines, Sections& sections) {
  constexpr std::size_t remark = 6;
  const auto id = lines.number<std::int32_t>(1);
  if (!id) {
    return false;
  }
  sections.inertias.emplace(*id, sections.line.inertias.size());
  sections.line.inertias.push_back({*id, lines.number<double>(2).value_or(1),
                                    lines.number<double>(3).value_or(0),
                                    lines.number<double>(4).value_or(0),
                                    lines.number<double>(5).value_or(0), lines.rest(remark)});
  return true;
}

bool readShaft(const InputLines& lines, Sections& sections) {
  constexpr std::size_t ratio = 4, stiffness = 5, damping = 6, magnifier = 7, outer = 8, inner = 9,
                        remark = 12;
  const auto id = lines.number<std::int32_t>(1);
  const auto origin = lines.number<std::int32_t>(2);
  const auto destination = lines.number<std::int32_t>(3);
  if (!id || !origin || !destination) {
    return false;
  }
  sections.shafts.emplace(*id, sections.line.shafts.size());
  sections.ends.push_back({*origin, *destination});
  sections.line.shafts.push_back(
      {*id, 0, 0, lines.number<double>(ratio).value_or(1),
       lines.number<double>(stiffness).value_or(0), lines.number<double>(damping).value_or(0),
       lines.number<double>(magnifier).value_or(0),
       lines.number<double>(outer).value_or(0) * kMilli,
       lines.number<double>(inner).value_or(0) * kMilli, lines.rest(remark)});
  return true;
}

/// Ice excites the propeller whose section was the last one.
void markIce(Sections& sections) {
  const auto propeller =
      std::find_if(sections.components.rbegin(), sections.components.rend(),
                   [](const ComponentSection& each) { return isPropeller(each.component); });
  if (propeller != sections.components.rend()) {
    propeller->component.ice = true;
  }
}

/// The free text at the head of a file, without the marks that a comment begins with.
std::string titleOf(const InputLines& lines) {
  const std::string text = lines.rest(0);
  return text.substr(std::min(text.find_first_not_of("!#*/;-= \t"), text.size()));
}

bool resolveShafts(Sections& sections) {
  for (std::size_t i = 0; i < sections.ends.size(); ++i) {
    const auto origin = rowOf(sections.inertias, sections.ends[i].origin);
    const auto destination = rowOf(sections.inertias, sections.ends[i].destination);
    if (!origin || !destination) {
      return false;
    }
    sections.line.shafts[i].origin = *origin;
    sections.line.shafts[i].destination = *destination;
  }
  return true;
}

void resolveComponent(const ComponentSection& section, Sections& sections) {
  Component component = section.component;
  for (const std::int32_t id : section.inertiaIds) {
    if (const auto row = rowOf(sections.inertias, id)) {
      component.inertias.push_back(*row);
    }
  }
  for (const std::int32_t id : section.shaftIds) {
    if (const auto row = rowOf(sections.shafts, id)) {
      component.shafts.push_back(*row);
      Shaft& shaft = sections.line.shafts[*row];
      shaft.stiffness = section.stiffness.value_or(shaft.stiffness);
    }
  }
  if (section.betweenInertias && component.inertias.size() == 2) {
    const auto& shafts = sections.line.shafts;
    const auto found = std::find_if(shafts.begin(), shafts.end(), [&](const Shaft& shaft) {
      return std::minmax(shaft.origin, shaft.destination) ==
             std::minmax(component.inertias[0], component.inertias[1]);
    });
    if (found != shafts.end()) {
      component.shafts.push_back(static_cast<std::size_t>(found - shafts.begin()));
    }
  }
  sections.line.components.push_back(std::move(component));
}

}  // namespace

std::optional<ShaftLine> readShaftLine(const std::filesystem::path& input) {
  Sections sections;
  InputLines lines(input);
  bool head = true;
  while (lines.next()) {
    if (lines.startsWith("LOADCASE")) {
      sections.line.loadCaseSpeeds = readSpeeds(lines);
    } else if (lines.startsWith("INERTIA")) {
      head = false;
      if (!readInertia(lines, sections)) {
        return std::nullopt;
      }
    } else if (lines.startsWith("SHAFT")) {
      head = false;
      if (!readShaft(lines, sections)) {
        return std::nullopt;
      }
    } else if (lines.startsWith("PROPELLERICE")) {
      head = false;
      markIce(sections);
    } else if (auto section = readComponentSection(lines)) {
      head = false;
      sections.components.push_back(std::move(*section));
    } else if (head && sections.line.title.empty()) {
      sections.line.title = titleOf(lines);
    }
  }
  if (!resolveShafts(sections)) {
    return std::nullopt;
  }
  for (const ComponentSection& section : sections.components) {
    resolveComponent(section, sections);
  }
  return std::move(sections.line);
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
