#include <algorithm>

#include "InputAndChecking/InputSections.h"

namespace verenwick {
namespace {

/// Angle between the two cylinders of a row, degrees.
constexpr double kOppositeAngle = 180.0;

void fillPressure(const SectionValues& values, RECIPROCATINGPUMP_RECORD& pump, std::int32_t id,
                  Log& log) {
  pump.ISSIMPLIFIEDPRESSURE = values.flag("isSimplifiedPressure");
  if (!pump.ISSIMPLIFIEDPRESSURE) {
    pump.PUMPHARMONICFILE = values.text("PumpHarmonicFile");
    return;
  }
  pump.RECIPROCATINGPUMPORDERNUMBER = values.integer("ReciprocatingPumpOrderNumber");
  values.copyReals("ReciprocatingPumpOrder", pump.RECIPROCATINGPUMPORDER);
  values.copyReals("ReciprocatingPumpTorquePercent", pump.RECIPROCATINGPUMPTORQUEPERCENT);
  const auto inUse = static_cast<std::size_t>(std::max(pump.RECIPROCATINGPUMPORDERNUMBER, 0));
  for (std::size_t j = 0; j < inUse; ++j) {
    const double order = pump.RECIPROCATINGPUMPORDER[j];
    if (order != 0.0 && !isPumpOrder(order)) {
      log.record("Warning: Reciprocating pump", id, " has an order outside 1 to 20 (", order,
                 "), it is left out");
    }
  }
}

}  // namespace

void fillReciprocatingPump(const SectionValues& values, ModelBundle& model, std::int32_t position,
                           InputReader& in) {
  RECIPROCATINGPUMP_RECORD& pump = model.reciprocatingPump.at(position);
  const std::int32_t id = values.integer("Id");
  SET_RECIPROCATINGPUMP_ID(model.reciprocatingPump, position, id);
  pump.NAME = values.text("Name");
  pump.MCRPOWER = values.real("McrPower");
  pump.MCRSPEED = values.real("McrSpeed");
  pump.MCRTORQUE = ratedTorque(pump.MCRPOWER, pump.MCRSPEED);
  pump.NCYLINDER = values.integer("nPumpCylinder");
  pump.EXCITATIONPHASE = values.real("ExcitationPhase");
  pump.ISOPPOSITE = values.flag("isOpposite");
  pump.ISDOUBLEACTING = values.flag("isDoubleActing");
  pump.VANGLE = kOppositeAngle;
  pump.NLOADCASE = in.state.loadCases;
  values.copyIntegers("Cylinders", pump.CYLINDERS);
  values.copyReals("DischargeAngleA", pump.DISCHARGEANGLEA);
  // The line of opposite cylinders stands there for every pump; the pump has no flag of its own
  // for its second bank, the last engine's decides.
  if (in.state.isVengine == 1) {
    values.copyReals("DischargeAngleB", pump.DISCHARGEANGLEB);
  }
  pump.BORE = values.real("Bore");
  pump.STROKELENGTH = values.real("Stroke");
  pump.CONRODRATIO = values.real("ConrodRatio");
  pump.RECIPMASS = values.real("RecipMass");
  for (std::int32_t i = 1; i <= pump.NCYLINDER; ++i) {
    markInertia(model, GET_RECIPROCATINGPUMP_CYLINDERS(model.reciprocatingPump, position, i),
                MassType::reciprocatingPumpCylinder, ComponentType::reciprocatingPump, id);
  }
  fillPressure(values, pump, id, in.log());
}

}  // namespace verenwick
