#include "InputAndChecking/InputSections.h"

namespace verenwick {

void fillLinearCoupling(const SectionValues& values, ModelBundle& model, std::int32_t position,
                        InputReader& /*in*/) {
  LINEARCOUPLING_RECORD& coupling = model.linearCoupling.at(position);
  const std::int32_t id = values.integer("Id");
  SET_LINEARCOUPLING_ID(model.linearCoupling, position, id);
  coupling.SHAFTNODE = values.integer("ShaftNode");
  coupling.NOMINALTORQUE = values.real("NominalTorque");
  coupling.NOMINALSTIFFNESS = values.real("NominalStiffness");
  const std::int32_t shaft = GET_SHAFT_ISHAFT(model.shaft, coupling.SHAFTNODE);
  markShaft(model, shaft, ShaftType::linearCoupling, ComponentType::linearCoupling, id);
  if (shaft > 0) {
    SET_SHAFT_STIFFNESS(model.shaft, shaft, coupling.NOMINALSTIFFNESS);
  }
}

void fillProgressiveCoupling(const SectionValues& values, ModelBundle& model, std::int32_t position,
                             InputReader& /*in*/) {
  PROGRESSIVECOUPLING_RECORD& coupling = model.progressiveCoupling.at(position);
  const std::int32_t id = values.integer("Id");
  SET_PROGRESSIVECOUPLING_ID(model.progressiveCoupling, position, id);
  coupling.SHAFTNODE = values.integer("ShaftNode");
  values.copyReals("NominalStiffness", coupling.NOMINALSTIFFNESS);
  // Makers state the curve at 0, 25, 50, 75 and 100 % of the nominal torque.
  const double nominalTorque = values.real("NominalTorque");
  for (std::size_t point = 0; point < coupling.NOMINALTORQUE.size(); ++point) {
    coupling.NOMINALTORQUE[point] = 0.25 * static_cast<double>(point) * nominalTorque;
  }
  markShaft(model, GET_SHAFT_ISHAFT(model.shaft, coupling.SHAFTNODE),
            ShaftType::progressiveCoupling, ComponentType::progressiveCoupling, id);
}

void fillGeislingerCoupling(const SectionValues& values, ModelBundle& model, std::int32_t position,
                            InputReader& in) {
  GEISLINGERCOUPLING_RECORD& coupling = model.geislingerCoupling.at(position);
  const std::int32_t id = values.integer("Id");
  SET_GEISLINGERCOUPLING_ID(model.geislingerCoupling, position, id);
  coupling.SHAFTNODE = values.integer("ShaftNode");
  coupling.NOMINALTORQUE = values.real("NominalTorque");
  coupling.STATICSTIFFNESS = values.real("StaticStiffness");
  coupling.CHARACTERISTICFREQUENCY = values.real("CharacteristicFrequency");
  coupling.OILVISCOSITY = values.real("OilViscosity");
  // A line that doesn't stand leaves the choice of the coupling before in force.
  const auto inForce = [&](std::string_view name, std::int32_t& choice) {
    if (values.has(name)) {
      choice = values.integer(name);
    }
    return choice;
  };
  coupling.DAMPINGTYPE = values.integer("DampingType");
  coupling.OILSUPPLYTYPE = inForce("OilSupplyType", in.state.couplingOilSupply);
  coupling.DESIGNTYPE = inForce("DesignType", in.state.couplingDesign);
  markShaft(model, GET_SHAFT_ISHAFT(model.shaft, coupling.SHAFTNODE), ShaftType::geislingerCoupling,
            ComponentType::geislingerCoupling, id);
}

}  // namespace verenwick
