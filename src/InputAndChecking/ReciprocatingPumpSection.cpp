#include <array>

#include "InputAndChecking/InputSections.h"

namespace verenwick {
namespace {

/// Angle between the two cylinders of a row, degrees.
constexpr double kOppositeAngle = 180.0;

/// The lines with one value a cylinder row. Discharge angles of opposite cylinders stand there for
/// every pump.
bool readCylinderLines(InputReader& in, RECIPROCATINGPUMP_RECORD& pump) {
  constexpr std::string_view kCylinders = "PumpCylinders";
  if (pump.NCYLINDER > kMaxCylinders) {
    static_cast<void>(in.nextLine());
    return in.fail(kCylinders);
  }
  const auto count = static_cast<std::size_t>(std::max(pump.NCYLINDER, 0));
  const auto rows = [&](auto& values) { return std::span(values).first(count); };
  std::array<double, kMaxCylinders> angleB{};
  if (!in.line(kCylinders, integers(rows(pump.CYLINDERS))) ||
      !in.line("DischargeAngleA", degree(rows(pump.DISCHARGEANGLEA))) ||
      !in.line("DischargeAngleB", degree(rows(angleB)))) {
    return false;
  }
  // The pump has no flag of its own for its second bank, the last engine's decides.
  if (in.state.isVengine == 1) {
    pump.DISCHARGEANGLEB = angleB;
  }
  return true;
}

bool readPressureLines(InputReader& in, RECIPROCATINGPUMP_RECORD& pump, std::int32_t id) {
  if (!pump.ISSIMPLIFIEDPRESSURE) {
    return in.textLine("PumpHarmonicFile", pump.PUMPHARMONICFILE);
  }
  if (!in.line("ReciprocatingPumpOrderNumber", orderCount(pump.RECIPROCATINGPUMPORDERNUMBER)) ||
      !in.line("Reciprocating pump torque order", real(pump.RECIPROCATINGPUMPORDER)) ||
      !in.line("Reciprocating pump torque amplitude",
               percent(pump.RECIPROCATINGPUMPTORQUEPERCENT))) {
    return false;
  }
  const auto inUse = static_cast<std::size_t>(std::max(pump.RECIPROCATINGPUMPORDERNUMBER, 0));
  for (std::size_t j = 0; j < inUse; ++j) {
    const double order = pump.RECIPROCATINGPUMPORDER[j];
    if (order != 0.0 && !isPumpOrder(order)) {
      in.log().record("Warning: Reciprocating pump", id, " has an order outside 1 to 20 (", order,
                      "), it is left out");
    }
  }
  return true;
}

}  // namespace

bool readReciprocatingPump(InputReader& in, ModelBundle& model, std::int32_t position) {
  RECIPROCATINGPUMP_RECORD& pump = model.reciprocatingPump.at(position);
  std::int32_t id = 0;
  if (!in.keywordLine(integer(id), word(pump.NAME, kNameLength)) ||
      !in.line("McrPower, McrSpeed, nPumpCylinder, ExcitationPhase, isOpposite, isDoubleActing",
               kilowatt(pump.MCRPOWER), real(pump.MCRSPEED), integer(pump.NCYLINDER),
               degree(pump.EXCITATIONPHASE), flag(pump.ISOPPOSITE), flag(pump.ISDOUBLEACTING)) ||
      !readCylinderLines(in, pump) ||
      !in.line("Bore, Stroke, ConrodRatio, RecipMass, isSimplifiedPresure", millimetre(pump.BORE),
               millimetre(pump.STROKELENGTH), real(pump.CONRODRATIO), real(pump.RECIPMASS),
               flag(pump.ISSIMPLIFIEDPRESSURE))) {
    return false;
  }
  SET_RECIPROCATINGPUMP_ID(model.reciprocatingPump, position, id);
  pump.VANGLE = kOppositeAngle;
  pump.NLOADCASE = in.state.loadCases;
  pump.MCRTORQUE = ratedTorque(pump.MCRPOWER, pump.MCRSPEED);
  for (std::int32_t i = 1; i <= pump.NCYLINDER; ++i) {
    markInertia(model, GET_RECIPROCATINGPUMP_CYLINDERS(model.reciprocatingPump, position, i),
                MassType::reciprocatingPumpCylinder, ComponentType::reciprocatingPump, id);
  }
  return readPressureLines(in, pump, id);
}

}  // namespace verenwick
