#include "Excitation/TheoreticalCylinderPressure.h"

#include "Excitation/Engine_functions.h"
#include "RunControl/CallerArguments.h"
#include "verenwick.h"

namespace verenwick {

void THEORETICALCYLINDERPRESSURE(double ratedPowerPerCylinder, double ratedSpeed,
                                 CylinderPressureInput input,
                                 std::span<double, kPressurePoints> pressure, double& mip) {
  if (input.speed != ratedSpeed) {
    // The peak is held above the rated compression pressure, not above the present one.
    input.pMax = CALCULATE_PMAX(ratedPowerPerCylinder, ratedSpeed, input.power, input.speed,
                                input.pMax, input.pComp, input.nStroke);
    input.pInlet = CALCULATE_PINLET(ratedPowerPerCylinder, ratedSpeed, input.power, input.speed,
                                    input.pInlet, input.nStroke);
    input.pComp =
        CALCULATE_PCOMP(ratedPowerPerCylinder, ratedSpeed, input.power, input.speed, input.pComp);
  }
  bool status = false;
  CALCULATEDPRESSURE(input, pressure, mip, status);
}

extern "C" VERENWICK_API void THEORETICALCYLINDERPRESSURE(
    const double* ratedPowerPerCylinder, const double* ratedSpeed, const std::int32_t* misfire,
    const std::int32_t* nStroke, const double* bore, const double* stroke, const double* lambda,
    const double* compRatio, const double* ratedPInlet, const double* tCharge, const double* speed,
    const double* power, const double* ratedPMax, const double* ratedPComp, const double* CompExp,
    const double* ExpaExp, const double* Te, const double* me, const double* FormFactor,
    const double* AngleIgnition, const double* AngleEndOfComb, const double* AngleExhaustStart,
    const double* AngleInletStart, const double* AngleInletClose, double* pressure, double* mip) {
  if (isAnyMissing(ratedPowerPerCylinder, ratedSpeed, misfire, nStroke, bore, stroke, lambda,
                   compRatio, ratedPInlet, tCharge, speed, power, ratedPMax, ratedPComp, CompExp,
                   ExpaExp, Te, me, FormFactor, AngleIgnition, AngleEndOfComb, AngleExhaustStart,
                   AngleInletStart, AngleInletClose, pressure, mip)) {
    return;
  }
  THEORETICALCYLINDERPRESSURE(*ratedPowerPerCylinder, *ratedSpeed,
                              {.misfire = callerLogical(*misfire),
                               .nStroke = *nStroke,
                               .bore = *bore,
                               .stroke = *stroke,
                               .lambda = *lambda,
                               .compRatio = *compRatio,
                               .pInlet = *ratedPInlet,
                               .tCharge = *tCharge,
                               .speed = *speed,
                               .power = *power,
                               .pMax = *ratedPMax,
                               .pComp = *ratedPComp,
                               .CompExp = *CompExp,
                               .ExpaExp = *ExpaExp,
                               .Te = *Te,
                               .me = *me,
                               .FormFactor = *FormFactor,
                               .AngleIgnition = *AngleIgnition,
                               .AngleEndOfComb = *AngleEndOfComb,
                               .AngleExhaustStart = *AngleExhaustStart,
                               .AngleInletStart = *AngleInletStart,
                               .AngleInletClose = *AngleInletClose},
                              std::span<double, kPressurePoints>(pressure, kPressurePoints), *mip);
}

}  // namespace verenwick
