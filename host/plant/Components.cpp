#include "host/plant/Components.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace verenwick::host {
namespace {

using results::Family;

/// Fills a component from the record at a position of its table.
class Filling {
 public:
  Filling(const ModelBundle& model, std::int32_t position, Component& component)
      : model_(model), position_(position), component_(component) {}

  template <class Record>
  const Record& take(const ComponentTable<Record>& table) {
    component_.id = table.id(position_);
    return table.at(position_);
  }
  void sitOn(std::int32_t inertia) {
    if (const std::int32_t row = model_.mass.positionOf(inertia); row > 0) {
      component_.inertias.push_back(index(row));
    }
  }
  template <class Record>
  void crank(const Record& machine) {
    component_.name = machine.NAME;
    rate(machine);
    for (std::int32_t i = 0; i < machine.NCYLINDER; ++i) {
      sitOn(machine.CYLINDERS[static_cast<std::size_t>(i)]);
    }
  }
  template <class Record>
  void rate(const Record& machine) {
    component_.power = machine.MCRPOWER;
    component_.speed = machine.MCRSPEED;
  }
  /// The first `used` of the orders; the other places are not used.
  void excite(std::int32_t used, const std::array<double, kTorqueOrders>& orders) {
    component_.orders.assign(orders.begin(), orders.end());
    const auto first = static_cast<std::size_t>(std::clamp<std::int32_t>(used, 0, kTorqueOrders));
    std::fill(component_.orders.begin() + static_cast<std::ptrdiff_t>(first),
              component_.orders.end(), 0.0);
  }
  void coupleShaft(std::int32_t shaft) {
    if (const std::int32_t row = model_.shaft.positionOf(shaft); row > 0) {
      component_.shafts.push_back(index(row));
    }
  }
  /// The shaft between two inertias is the damper's link.
  void linkInertias(std::int32_t one, std::int32_t other) {
    sitOn(one);
    sitOn(other);
    const std::int32_t row = GET_SHAFT_ISHAFTBYNODE(model_.shaft, one, other);
    if (row == 0 || component_.inertias.size() != 2) {
      return;
    }
    const SHAFT_RECORD& shaft = model_.shaft.at(row);
    if (std::minmax(shaft.ORGNODE, shaft.DESNODE) == std::minmax(one, other)) {
      component_.shafts.push_back(index(row));
    }
  }

  const ModelBundle& model() const { return model_; }
  Component& component() { return component_; }

 private:
  const ModelBundle& model_;
  std::int32_t position_;
  Component& component_;
};

void fillViscousDamper(Filling& to) {
  const auto& damper = to.take(to.model().viscousDamper);
  to.linkInertias(damper.CASINGNODE, damper.RINGNODE);
}

void fillRubberDamper(Filling& to) {
  const auto& damper = to.take(to.model().rubberDamper);
  to.linkInertias(damper.TURNINGMASSNODE, damper.DRIVEPLATENODE);
}

void fillSteelSpringDamper(Filling& to) {
  const auto& damper = to.take(to.model().steelSpringDamper);
  to.linkInertias(damper.OUTERMEMBERNODE, damper.INNERMEMBERNODE);
}

template <auto Table>
void fillCoupling(Filling& to) {
  to.coupleShaft(to.take(to.model().*Table).SHAFTNODE);
}

void fillDiesel(Filling& to) {
  const auto& diesel = to.take(to.model().diesel);
  to.crank(diesel);
  if (diesel.ISFORMULADAMPING) {
    to.component().formulaDamping = {diesel.CYLABSDAMPING, diesel.EXPCYLABSDAMPING,
                                     diesel.CRANKRELDAMPING, diesel.EXPCRANKRELDAMPING};
  }
}

void fillReciprocatingPump(Filling& to) { to.crank(to.take(to.model().reciprocatingPump)); }

void fillElectricMotor(Filling& to) {
  const auto& motor = to.take(to.model().electricMotor);
  to.sitOn(motor.ELECTRICMOTORNODE);
  to.rate(motor);
  to.excite(motor.MOTORORDERNUMBER, motor.MOTORORDER);
  if (motor.EXCITATIONTYPE != 0) {
    to.component().fixedSpeed = motor.CONSTEXCITATIONFREQ;
  }
}

void fillGenerator(Filling& to) {
  const auto& generator = to.take(to.model().generator);
  to.sitOn(generator.GENERATORNODE);
  to.rate(generator);
  to.excite(generator.GENERATORORDERNUMBER, generator.GENERATORORDER);
}

void fillCentrifugalPump(Filling& to) {
  const auto& pump = to.take(to.model().centrifugalPump);
  to.sitOn(pump.CENTRIFUGALPUMPNODE);
  to.rate(pump);
  to.excite(pump.CENTRIFUGALPUMPORDERNUMBER, pump.CENTRIFUGALPUMPORDER);
}

void fillGasTurbine(Filling& to) {
  const auto& turbine = to.take(to.model().gasTurbine);
  to.sitOn(turbine.GASTURBINENODE);
  to.rate(turbine);
}

void fillSteamTurbine(Filling& to) {
  const auto& turbine = to.take(to.model().steamTurbine);
  to.sitOn(turbine.STEAMTURBINENODE);
  to.rate(turbine);
}

void fillPropeller(Filling& to) {
  const auto& propeller = to.take(to.model().propeller);
  to.sitOn(propeller.PROPELLERNODE);
  to.rate(propeller);
  const double blades = propeller.NBLADE;
  to.component().orders = {blades, 2 * blades};
  to.component().ice = propeller.HASICEEXCITATION;
}

struct Kind {
  std::string_view keyword;
  std::string_view word;
  std::optional<Family> family;
  void (*fill)(Filling&);
};

using M = ModelBundle;

constexpr std::array<Kind, 14> kKinds = {{
    {"VISCOUSDAMPER", "viscous damper", {}, fillViscousDamper},
    {"RUBBERDAMPER", "rubber damper", {}, fillRubberDamper},
    {"STEELSPRINGDAMPER", "spring damper", {}, fillSteelSpringDamper},
    {"LINEARCOUPLING", "linear coupling", {}, fillCoupling<&M::linearCoupling>},
    {"PROGRESSIVECOUPLING", "progressive coupling", {}, fillCoupling<&M::progressiveCoupling>},
    {"GEISLINGERCOUPLING", "Geislinger coupling", {}, fillCoupling<&M::geislingerCoupling>},
    {"DIESEL", "diesel", Family::diesel, fillDiesel},
    {"ELECTRICMOTOR", "electric motor", Family::electricMotor, fillElectricMotor},
    {"GASTURBINE", "gas turbine", {}, fillGasTurbine},
    {"STEAMTURBINE", "steam turbine", {}, fillSteamTurbine},
    {"PROPELLER", "propeller", Family::propeller, fillPropeller},
    {"GENERATOR", "generator", Family::generator, fillGenerator},
    {"CENTRIFUGALPUMP", "centrifugal pump", Family::centrifugalPump, fillCentrifugalPump},
    {"RECIPROCATINGPUMP", "reciprocating pump", Family::reciprocatingPump, fillReciprocatingPump},
}};

}  // namespace

std::vector<Component> componentsOf(const Plant& plant) {
  std::vector<Component> components;
  std::array<std::int32_t, kKinds.size()> positions{};
  for (const input::SectionValues& section : plant.document.sections()) {
    const auto* const kind = std::find_if(kKinds.begin(), kKinds.end(), [&](const Kind& each) {
      return each.keyword == section.section().keyword;
    });
    if (kind == kKinds.end()) {
      continue;
    }
    Component& component = components.emplace_back();
    component.kind = kind->word;
    component.family = kind->family;
    Filling filling(plant.model, ++positions[static_cast<std::size_t>(kind - kKinds.begin())],
                    component);
    kind->fill(filling);
  }
  return components;
}

}  // namespace verenwick::host
