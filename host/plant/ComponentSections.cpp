#include "host/plant/ComponentSections.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "host/Units.h"

namespace verenwick::host {
namespace {

using results::Family;

constexpr std::size_t kOrderPlaces = 4;

struct Kind {
  std::string_view keyword;
  std::string_view word;
  std::optional<Family> family;
  /// Reads the lines behind the keyword line.
  bool (*read)(InputLines&, ComponentSection&);
};

/// The ids at the start of the next line are inertias.
bool readInertias(InputLines& lines, ComponentSection& section, std::size_t count) {
  if (!lines.next()) {
    return false;
  }
  section.inertiaIds = lines.numbers<std::int32_t>(0);
  if (section.inertiaIds.size() < count) {
    return false;
  }
  section.inertiaIds.resize(count);
  return true;
}

/// Power in kW and speed of the line stand at a position.
bool takeRating(const InputLines& lines, std::size_t position, Component& component) {
  const auto power = lines.number<double>(position);
  const auto speed = lines.number<double>(position + 1);
  if (!power || !speed) {
    return false;
  }
  component.power = *power * kKilo;
  component.speed = *speed;
  return true;
}

bool readDamper(InputLines& lines, ComponentSection& section) {
  section.betweenInertias = true;
  return readInertias(lines, section, 2);
}

bool readCoupling(InputLines& lines, ComponentSection& section) {
  if (!lines.next()) {
    return false;
  }
  if (const auto shaft = lines.number<std::int32_t>(0)) {
    section.shaftIds = {*shaft};
  }
  return !section.shaftIds.empty();
}

/// Shaft, nominal torque, stiffness.
bool readLinearCoupling(InputLines& lines, ComponentSection& section) {
  const bool read = readCoupling(lines, section);
  section.stiffness = lines.number<double>(2);
  return read;
}

/// Node, power, speed.
bool readMachine(InputLines& lines, ComponentSection& section) {
  return readInertias(lines, section, 1) && takeRating(lines, 1, section.component);
}

/// The first `used` of the four orders on the next line; the other places are not used.
bool readOrders(InputLines& lines, Component& component, std::int32_t used) {
  if (!lines.next()) {
    return false;
  }
  component.orders = lines.numbers<double>(0);
  component.orders.resize(std::min(
      {static_cast<std::size_t>(std::max(used, 0)), component.orders.size(), kOrderPlaces}));
  component.orders.resize(kOrderPlaces);
  return true;
}

bool readMachineWithOrders(InputLines& lines, ComponentSection& section) {
  constexpr std::size_t orderNumber = 3;
  return readMachine(lines, section) &&
         readOrders(lines, section.component, lines.number<std::int32_t>(orderNumber).value_or(0));
}

/// Behind the rating: 0 for orders of the speed or else a fixed speed follows, number of orders.
bool readMotor(InputLines& lines, ComponentSection& section) {
  constexpr std::size_t excitationType = 3;
  if (!readMachine(lines, section)) {
    return false;
  }
  if (lines.number<std::int32_t>(excitationType).value_or(0) != 0) {
    section.component.fixedSpeed = lines.number<double>(excitationType + 1);
  }
  return readOrders(lines, section.component,
                    lines.number<std::int32_t>(excitationType + 2).value_or(0));
}

bool readPropeller(InputLines& lines, ComponentSection& section) {
  constexpr std::size_t blades = 3;
  if (!readMachine(lines, section)) {
    return false;
  }
  const double order = lines.number<double>(blades).value_or(0);
  section.component.orders = {order, 2 * order};
  return true;
}

/// Rating, and the number of cylinders at a position; the next line has their inertias.
bool readCylinders(InputLines& lines, ComponentSection& section, std::size_t position) {
  if (!lines.next() || !takeRating(lines, 0, section.component)) {
    return false;
  }
  const auto cylinders = lines.number<std::int32_t>(position);
  return cylinders && *cylinders > 0 &&
         readInertias(lines, section, static_cast<std::size_t>(*cylinders));
}

/// The last line of an engine's section, if the flag in the seventh line behind the cylinders calls
/// for it.
void readFormulaDamping(InputLines& lines, Component& component) {
  constexpr int linesToFlag = 7, linesFromFlag = 3;
  constexpr std::size_t flag = 7;
  for (int i = 0; i < linesToFlag; ++i) {
    lines.next();
  }
  if (lines.number<std::int32_t>(flag).value_or(0) == 0) {
    return;
  }
  for (int i = 0; i < linesFromFlag; ++i) {
    lines.next();
  }
  const std::vector<double> numbers = lines.numbers<double>(0);
  if (std::array<double, 4> values{}; numbers.size() >= values.size()) {
    std::copy_n(numbers.begin(), values.size(), values.begin());
    component.formulaDamping = values;
  }
}

bool readDiesel(InputLines& lines, ComponentSection& section) {
  constexpr std::size_t cylinders = 3;
  if (!readCylinders(lines, section, cylinders)) {
    return false;
  }
  readFormulaDamping(lines, section.component);
  return true;
}

bool readReciprocatingPump(InputLines& lines, ComponentSection& section) {
  constexpr std::size_t cylinders = 2;
  return readCylinders(lines, section, cylinders);
}

constexpr std::array<Kind, 14> kKinds = {{
    {"VISCOUSDAMPER", "viscous damper", {}, readDamper},
    {"RUBBERDAMPER", "rubber damper", {}, readDamper},
    {"STEELSPRINGDAMPER", "spring damper", {}, readDamper},
    {"LINEARCOUPLING", "linear coupling", {}, readLinearCoupling},
    {"PROGRESSIVECOUPLING", "progressive coupling", {}, readCoupling},
    {"GEISLINGERCOUPLING", "Geislinger coupling", {}, readCoupling},
    {"DIESEL", "diesel", Family::diesel, readDiesel},
    {"ELECTRICMOTOR", "electric motor", Family::electricMotor, readMotor},
    {"GASTURBINE", "gas turbine", {}, readMachine},
    {"STEAMTURBINE", "steam turbine", {}, readMachine},
    {"PROPELLER", "propeller", Family::propeller, readPropeller},
    {"GENERATOR", "generator", Family::generator, readMachineWithOrders},
    {"CENTRIFUGALPUMP", "centrifugal pump", Family::centrifugalPump, readMachineWithOrders},
    {"RECIPROCATINGPUMP", "reciprocating pump", Family::reciprocatingPump, readReciprocatingPump},
}};

}  // namespace

std::optional<ComponentSection> readComponentSection(InputLines& lines) {
  const auto* const kind = std::find_if(kKinds.begin(), kKinds.end(), [&lines](const Kind& each) {
    return lines.startsWith(each.keyword);
  });
  if (kind == kKinds.end()) {
    return std::nullopt;
  }
  ComponentSection section;
  section.component.kind = kind->word;
  section.component.family = kind->family;
  section.component.id = lines.number<std::int32_t>(1).value_or(0);
  if (kind->family == Family::diesel || kind->family == Family::reciprocatingPump) {
    section.component.name = lines.word(2);
  }
  if (!kind->read(lines, section)) {
    return std::nullopt;
  }
  return section;
}

}  // namespace verenwick::host
