#include "ForcedVibration/SourceResponse.h"

#include <algorithm>
#include <complex>

#include "ComputationsSrc/ForcedDampedVibrationsFc.h"
#include "Matrices/MassStffnessAndDampingMatrix.h"
#include "Matrices/ShaftAtOrder.h"
#include "RunControl/Constants.h"
#include "RunControl/RunStopped.h"

namespace verenwick {
namespace {

/// All that a source states of itself: coefficient (p - 1) NO + k of point p and order k.
struct SourceExcitation {
  double speed = 0.0;  ///< rpm
  std::vector<double> EXFO;
  std::vector<double> FORE;
  std::vector<double> FOIM;
  std::vector<double> phase;
  std::vector<std::int32_t> dof;  ///< position of the inertia of each point
  double firstOrder = 0.0;        ///< order whose frequency is OMEGA

  void addPoint(const MASS_TABLE& mass, std::int32_t node, double pointPhase) {
    dof.push_back(GET_MASS_IMASS(mass, node));
    phase.push_back(pointPhase);
  }
  void addCoefficient(std::complex<double> coefficient) {
    FORE.push_back(coefficient.real());
    FOIM.push_back(coefficient.imag());
  }
};

/// The ratios are changed in place and back: a ratio that was divided and multiplied again may be a
/// rounding away from what it was, and the sources and load cases behind start from there. Ratios
/// kept aside would change the last digits of geared lines.
void changeRpmRatios(ModelBundle& model, auto change) {
  for (std::int32_t i = 1; i <= model.mass.number(); ++i) {
    SET_MASS_RPMRATIO(model.mass, i, change(GET_MASS_RPMRATIO(model.mass, i)));
  }
  for (std::int32_t s = 1; s <= model.shaft.number(); ++s) {
    SET_SHAFT_RPMRATIO(model.shaft, s, change(GET_SHAFT_RPMRATIO(model.shaft, s)));
  }
}

ForcedVibrationSolver::SystemArrays arraysOf(const ShaftLineMatrices& system) {
  return {system.N,  system.ROWIND, system.COLIND, system.K,  system.M,
          system.CR, system.CRR,    system.CA,     system.CAR};
}

/// Brings the deflections, which are referred to the source's speed, to each inertia's own speed.
void scaleToOwnSpeed(const MASS_TABLE& mass, const ComplexSection& deflection) {
  const std::size_t inertias = asSize(mass.number());
  for (std::int32_t i = 1; i <= mass.number(); ++i) {
    const double ratio = GET_MASS_RPMRATIO(mass, i);
    for (std::size_t at = index(i); at < deflection.AMP.size(); at += inertias) {
      deflection.AMP[at] *= ratio;
      deflection.RE[at] *= ratio;
      deflection.IM[at] *= ratio;
    }
  }
}

/// Velocity and acceleration of every order. Their angles are not wrapped.
void differentiate(double omega, const SourceResults& results) {
  const ComplexSection& x = results.of(Quantity::deflection);
  const ComplexSection& v = results.of(Quantity::velocity);
  const ComplexSection& a = results.of(Quantity::acceleration);
  const std::size_t inertias = x.AMP.size() / results.EXFO.size();
  for (std::size_t at = 0; at < x.AMP.size(); ++at) {
    const double w = omega * results.EXFO[at / inertias];
    const double w2 = w * w;
    v.AMP[at] = w * x.AMP[at];
    v.ANGLE[at] = x.ANGLE[at] + kPi / 2;
    v.RE[at] = -w * x.IM[at];
    v.IM[at] = w * x.RE[at];
    a.AMP[at] = w2 * x.AMP[at];
    a.ANGLE[at] = x.ANGLE[at] + kPi;
    a.RE[at] = -w2 * x.RE[at];
    a.IM[at] = -w2 * x.IM[at];
  }
}

/// The road that all families share.
void respond(ModelBundle& model, std::int32_t loadCase, const SourceExcitation& source,
             const SourceResults& results) {
  if (source.dof.empty() || *std::min_element(source.dof.begin(), source.dof.end()) < 1) {
    throw RunStopped("** A source of excitation sits on no inertia of the model");
  }
  const double omega = angularSpeed(source.speed);
  setExcitationSpeed(model, source.speed);
  const double sourceRatio = GET_MASS_RPMRATIO(model.mass, source.dof.front());
  changeRpmRatios(model, [&](double ratio) { return ratio / sourceRatio; });
  MASSANDSHAFTTABLEPREPARATION(Vibration::forced, model, loadCase);
  ShaftLineMatrices system;
  BUILDMASSSTIFFNESSANDDAMPINGMATRIX(Vibration::forced, model, 1.0, system);
  ForcedVibrationSolver::ArraysOfOrder arraysOfOrder;
  if (dependsOnOrder(model)) {
    arraysOfOrder = [&](double order) {
      BUILDMASSSTIFFNESSANDDAMPINGMATRIX(Vibration::forced, model, order, system);
      return arraysOf(system);
    };
  }
  const ComplexSection& deflection = results.of(Quantity::deflection);
  std::copy(source.EXFO.begin(), source.EXFO.end(), results.EXFO.begin());
  FORCEDDAMPEDVIBRATIONSFC(arraysOf(system), arraysOfOrder, omega,
                           {source.EXFO, source.FORE, source.FOIM, source.phase, source.dof},
                           {deflection.AMP, deflection.ANGLE, deflection.RE, deflection.IM});
  scaleToOwnSpeed(model.mass, deflection);
  differentiate(omega, results);
  results.OMEGA = omega * source.firstOrder;
  changeRpmRatios(model, [&](double ratio) { return ratio * sourceRatio; });
}

/// Orders and torques of a motor, generator or centrifugal pump: the real excitation of a slot is
/// amplitude sin(order omega t). Slots beyond the count, and orders of 0, have no excitation.
template <std::size_t kSlots>
SourceExcitation machine(double speed, std::int32_t count, const std::array<double, kSlots>& orders,
                         const std::array<double, kSlots>& amplitudes) {
  SourceExcitation source;
  source.speed = speed;
  for (std::size_t k = 0; k < kSlots; ++k) {
    const double order = static_cast<std::int32_t>(k) < count ? orders[k] : 0.0;
    source.EXFO.push_back(order);
    source.addCoefficient({0.0, order != 0.0 ? -0.5 * amplitudes[k] : 0.0});
    const bool isSmallest = source.firstOrder == 0.0 || order < source.firstOrder;
    if (order > 0.0 && isSmallest) {
      source.firstOrder = order;
    }
  }
  if (count == 1) {
    source.firstOrder = source.EXFO.front();
  }
  return source;
}

}  // namespace

void CALCULATE_DIESEL_FORCEDVIBRATION(ModelBundle& model, std::int32_t row, std::int32_t loadCase,
                                      const SourceResults& results) {
  const DIESEL_RECORD& diesel = model.diesel.at(row);
  SourceExcitation source;
  source.speed = diesel.SPEED;
  source.EXFO = GET_DIESEL_HARMONICORDER(model.diesel);
  source.firstOrder = source.EXFO.front();
  for (std::int32_t c = 1; c <= diesel.NCYLINDER; ++c) {
    source.addPoint(model.mass, diesel.CYLINDERS[index(c)],
                    diesel.FIRINGANGLEA[index(c)] + diesel.EXCITATIONPHASE);
    for (const auto& coefficient : CALCULATE_DIESEL_CYLFOURIERCOEFFICIENTS(model.diesel, row, c)) {
      source.addCoefficient(coefficient);
    }
  }
  respond(model, loadCase, source, results);
}

void CALCULATE_PROPELLER_FORCEDVIBRATION(ModelBundle& model, std::int32_t row,
                                         std::int32_t loadCase, const SourceResults& results) {
  const PROPELLER_RECORD& propeller = model.propeller.at(row);
  SourceExcitation source;
  source.speed = propeller.SPEED;
  source.addPoint(
      model.mass, propeller.PROPELLERNODE,
      GET_PROPELLER_ISMODELCONSIDERPHASEANGLE(model.propeller) ? propeller.EXCITATIONPHASE : 0.0);
  if (hasIceExcitation(model.propeller)) {
    source.firstOrder = 1.0;
    const auto orders = static_cast<std::int32_t>(results.EXFO.size());
    for (std::int32_t k = 1; k <= orders; ++k) {
      source.EXFO.push_back(k);
      source.addCoefficient(propeller.HASICEEXCITATION ? iceHarmonic(model.propeller, row, k)
                                                       : 0.0);
    }
  } else {
    source.firstOrder = propeller.NBLADE;
    source.EXFO = {1.0 * propeller.NBLADE, 2.0 * propeller.NBLADE};
    source.addCoefficient({0.0, -0.5 * propeller.TORQUEPERCENT1 * propeller.TORQUE});
    source.addCoefficient({0.0, -0.5 * propeller.TORQUEPERCENT2 * propeller.TORQUE});
  }
  respond(model, loadCase, source, results);
}

void CALCULATE_GENERATOR_FORCEDVIBRATION(ModelBundle& model, std::int32_t row,
                                         std::int32_t loadCase, const SourceResults& results) {
  const GENERATOR_RECORD& generator = model.generator.at(row);
  SourceExcitation source = machine(generator.SPEED, generator.GENERATORORDERNUMBER,
                                    generator.GENERATORORDER, generator.GENTORQUEAMP);
  source.addPoint(model.mass, generator.GENERATORNODE, 0.0);
  respond(model, loadCase, source, results);
}

void CALCULATE_CENTRIFUGALPUMP_FORCEDVIBRATION(ModelBundle& model, std::int32_t row,
                                               std::int32_t loadCase,
                                               const SourceResults& results) {
  const CENTRIFUGALPUMP_RECORD& pump = model.centrifugalPump.at(row);
  SourceExcitation source = machine(pump.SPEED, pump.CENTRIFUGALPUMPORDERNUMBER,
                                    pump.CENTRIFUGALPUMPORDER, pump.CENTRIFUGALPUMPTORQUEAMP);
  source.addPoint(model.mass, pump.CENTRIFUGALPUMPNODE, pump.CENTRIFUGALPUMPPHASEANGLE);
  respond(model, loadCase, source, results);
}

void CALCULATE_RECIPROCATINGPUMP_FORCEDVIBRATION(ModelBundle& model, std::int32_t row,
                                                 std::int32_t loadCase,
                                                 const SourceResults& results) {
  const RECIPROCATINGPUMP_RECORD& pump = model.reciprocatingPump.at(row);
  SourceExcitation source;
  source.speed = pump.SPEED;
  source.EXFO = GET_RECIPROCATINGPUMP_HARMONICORDER(model.reciprocatingPump, row);
  source.firstOrder = source.EXFO.front();
  for (std::int32_t c = 1; c <= pump.NCYLINDER; ++c) {
    source.addPoint(model.mass, pump.CYLINDERS[index(c)],
                    pump.DISCHARGEANGLEA[index(c)] + pump.EXCITATIONPHASE);
    for (const auto& coefficient :
         CALCULATE_RECIPROCATINGPUMP_CYLFOURIERCOEFFICIENTS(model.reciprocatingPump, row, c)) {
      source.addCoefficient(coefficient);
    }
  }
  respond(model, loadCase, source, results);
}

void CALCULATE_ELECTRICMOTOR_FORCEDVIBRATION(ModelBundle& model, std::int32_t row,
                                             std::int32_t loadCase, const SourceResults& results) {
  const ELECTRICMOTOR_RECORD& motor = model.electricMotor.at(row);
  SourceExcitation source =
      machine(motor.EXCITATIONTYPE == 0 ? motor.SPEED : motor.CONSTEXCITATIONFREQ,
              motor.MOTORORDERNUMBER, motor.MOTORORDER, motor.MOTORTORQUEAMP);
  source.addPoint(model.mass, motor.ELECTRICMOTORNODE, 0.0);
  respond(model, loadCase, source, results);
}

namespace {

template <auto Table>
std::int32_t number(const ModelBundle& model) {
  return (model.*Table).number();
}

std::int32_t torqueOrders(const ModelBundle& /*model*/) {
  return static_cast<std::int32_t>(kTorqueOrders);
}

bool always(const ModelBundle& /*model*/, std::int32_t /*row*/) { return true; }

}  // namespace

const std::array<SourceFamily, results::kFamilies> kSourceFamilies = {{
    {number<&ModelBundle::diesel>,
     [](const ModelBundle& model) { return GET_DIESEL_NCYLFOURIERCOEFFICIENTS(model.diesel); },
     always, CALCULATE_DIESEL_FORCEDVIBRATION},
    {number<&ModelBundle::propeller>,
     [](const ModelBundle& model) {
       return hasIceExcitation(model.propeller)
                  ? GET_PROPELLERICEHARMONICORDERNUMBER(model.propeller)
                  : 2;
     },
     always, CALCULATE_PROPELLER_FORCEDVIBRATION},
    {number<&ModelBundle::generator>, torqueOrders,
     [](const ModelBundle& model, std::int32_t row) {
       return GET_GENERATOR_GENERATORORDERNUMBER(model.generator, row) > 0;
     },
     CALCULATE_GENERATOR_FORCEDVIBRATION},
    {number<&ModelBundle::centrifugalPump>, torqueOrders,
     [](const ModelBundle& model, std::int32_t row) {
       return GET_CENTRIFUGALPUMP_CENTRIFUGALPUMPORDERNUMBER(model.centrifugalPump, row) > 0;
     },
     CALCULATE_CENTRIFUGALPUMP_FORCEDVIBRATION},
    {number<&ModelBundle::reciprocatingPump>,
     [](const ModelBundle& model) {
       return GET_RECIPROCATINGPUMP_NCYLFOURIERCOEFFICIENTS(model.reciprocatingPump);
     },
     always, CALCULATE_RECIPROCATINGPUMP_FORCEDVIBRATION},
    {number<&ModelBundle::electricMotor>, torqueOrders,
     [](const ModelBundle& model, std::int32_t row) {
       return GET_ELECTRICMOTOR_MOTORORDERNUMBER(model.electricMotor, row) > 0;
     },
     CALCULATE_ELECTRICMOTOR_FORCEDVIBRATION},
}};

}  // namespace verenwick
