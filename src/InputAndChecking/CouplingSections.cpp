#include "InputAndChecking/InputSections.h"

namespace verenwick {
namespace {

/// Takes a line's word, which stands for choice 1 or 2; an unknown word keeps the value in force.
bool readChoice(InputReader& in, std::string_view field, std::string_view first,
                std::string_view second, std::int32_t& choice) {
  std::string word;
  if (!in.wordLine(field, word)) {
    return false;
  }
  if (word == first) {
    choice = 1;
  } else if (word == second) {
    choice = 2;
  }
  return true;
}

}  // namespace

bool readLinearCoupling(InputReader& in, ModelBundle& model, std::int32_t position) {
  LINEARCOUPLING_RECORD& coupling = model.linearCoupling.at(position);
  std::int32_t id = 0;
  if (!in.keywordLine(integer(id)) ||
      !in.line("ShaftNode, NominalTorque, NominalStiffness", integer(coupling.SHAFTNODE),
               real(coupling.NOMINALTORQUE), real(coupling.NOMINALSTIFFNESS))) {
    return false;
  }
  SET_LINEARCOUPLING_ID(model.linearCoupling, position, id);
  const std::int32_t shaft = GET_SHAFT_ISHAFT(model.shaft, coupling.SHAFTNODE);
  markShaft(model, shaft, ShaftType::linearCoupling, ComponentType::linearCoupling, id);
  if (shaft > 0) {
    SET_SHAFT_STIFFNESS(model.shaft, shaft, coupling.NOMINALSTIFFNESS);
  }
  return true;
}

bool readProgressiveCoupling(InputReader& in, ModelBundle& model, std::int32_t position) {
  PROGRESSIVECOUPLING_RECORD& coupling = model.progressiveCoupling.at(position);
  std::int32_t id = 0;
  double nominalTorque = 0.0;
  if (!in.keywordLine(integer(id)) ||
      !in.line("ShaftNode, NominalTorque, NominalStiffness(5)", integer(coupling.SHAFTNODE),
               real(nominalTorque), real(coupling.NOMINALSTIFFNESS))) {
    return false;
  }
  // Makers state the curve at 0, 25, 50, 75 and 100 % of the nominal torque.
  for (std::size_t point = 0; point < coupling.NOMINALTORQUE.size(); ++point) {
    coupling.NOMINALTORQUE[point] = 0.25 * static_cast<double>(point) * nominalTorque;
  }
  SET_PROGRESSIVECOUPLING_ID(model.progressiveCoupling, position, id);
  markShaft(model, GET_SHAFT_ISHAFT(model.shaft, coupling.SHAFTNODE),
            ShaftType::progressiveCoupling, ComponentType::progressiveCoupling, id);
  return true;
}

bool readGeislingerCoupling(InputReader& in, ModelBundle& model, std::int32_t position) {
  GEISLINGERCOUPLING_RECORD& coupling = model.geislingerCoupling.at(position);
  ReaderState& state = in.state;
  std::int32_t id = 0;
  if (!in.keywordLine(integer(id)) ||
      !in.line("ShaftNode, NominalTorque, StaticStiffness, CharacteristicFrequency, OilViscosity",
               integer(coupling.SHAFTNODE), real(coupling.NOMINALTORQUE),
               real(coupling.STATICSTIFFNESS), real(coupling.CHARACTERISTICFREQUENCY),
               real(coupling.OILVISCOSITY)) ||
      !readChoice(in, "DampingType", "GEISLINGERDAMPING", "GENERALDAMPING",
                  state.couplingDamping)) {
    return false;
  }
  // Oil supply and design matter only to the formulas that use them.
  if (state.couplingDamping == dampingByFormula) {
    if (!readChoice(in, "OilSupplyType", "WITHPRESSURIZED", "WITHOUTPRESSURIZED",
                    state.couplingOilSupply)) {
      return false;
    }
    if (state.couplingOilSupply == oilWithoutPressure &&
        !readChoice(in, "DesignType", "MULTISPRING", "DUALSPRING", state.couplingDesign)) {
      return false;
    }
  }
  coupling.DAMPINGTYPE = state.couplingDamping;
  coupling.OILSUPPLYTYPE = state.couplingOilSupply;
  coupling.DESIGNTYPE = state.couplingDesign;
  SET_GEISLINGERCOUPLING_ID(model.geislingerCoupling, position, id);
  markShaft(model, GET_SHAFT_ISHAFT(model.shaft, coupling.SHAFTNODE), ShaftType::geislingerCoupling,
            ComponentType::geislingerCoupling, id);
  return true;
}

}  // namespace verenwick
