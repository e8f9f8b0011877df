#include "ForcedVibration/PowerLoss.h"

#include <algorithm>
#include <cmath>

#include "ForcedVibration/ShaftResults.h"
#include "Matrices/RowComponents.h"
#include "RunControl/Constants.h"

namespace verenwick {
namespace {

/// Speed and orders by which a family is taken.
struct LossOrders {
  double speed;  ///< rpm
  std::vector<double> orders;
};

/// Whole multiples of a step.
std::vector<double> multiples(std::int32_t count, double step) {
  std::vector<double> orders;
  for (std::int32_t k = 1; k <= count; ++k) {
    orders.push_back(k * step);
  }
  return orders;
}

/// The orders of a machine up to its order count, at most to the first that is 0.
template <class Get>
std::vector<double> machineOrders(std::int32_t count, Get get) {
  constexpr auto kMost = static_cast<std::int32_t>(kTorqueOrders);
  std::vector<double> orders;
  for (std::int32_t k = 1; k <= std::min(count, kMost) && get(k) != 0.0; ++k) {
    orders.push_back(get(k));
  }
  return orders;
}

LossOrders lossOrders(const ModelBundle& model, Family family, std::int32_t count) {
  constexpr std::int32_t kFirst = 1;
  switch (family) {
    case Family::diesel:
      return {GET_DIESEL_SPEED(model.diesel, kFirst), multiples(count, results::orderStep(count))};
    case Family::propeller:
      return {GET_PROPELLER_SPEED(model.propeller, kFirst),
              multiples(count, count == 2 ? GET_PROPELLER_NBLADE(model.propeller, kFirst) : 1.0)};
    case Family::generator:
      return {GET_GENERATOR_SPEED(model.generator, kFirst),
              machineOrders(GET_GENERATOR_GENERATORORDERNUMBER(model.generator, kFirst),
                            [&](std::int32_t k) {
                              return GET_GENERATOR_GENERATORORDER(model.generator, kFirst, k);
                            })};
    case Family::centrifugalPump:
      return {GET_CENTRIFUGALPUMP_SPEED(model.centrifugalPump, kFirst),
              machineOrders(
                  GET_CENTRIFUGALPUMP_CENTRIFUGALPUMPORDERNUMBER(model.centrifugalPump, kFirst),
                  [&](std::int32_t k) {
                    return GET_CENTRIFUGALPUMP_CENTRIFUGALPUMPORDER(model.centrifugalPump, kFirst,
                                                                    k);
                  })};
    case Family::reciprocatingPump:
      return {GET_RECIPROCATINGPUMP_SPEED(model.reciprocatingPump, kFirst), multiples(count, 1.0)};
    case Family::electricMotor:
      break;
  }
  return {GET_ELECTRICMOTOR_SPEED(model.electricMotor, kFirst),
          machineOrders(GET_ELECTRICMOTOR_MOTORORDERNUMBER(model.electricMotor, kFirst),
                        [&](std::int32_t k) {
                          return GET_ELECTRICMOTOR_MOTORORDER(model.electricMotor, kFirst, k);
                        })};
}

/// A quantity of all sources of a family together.
class FamilySum {
 public:
  FamilySum(const FamilyResults& family, Quantity quantity)
      : points_(asSize(family.points.of(quantity))),
        re_(asSize(family.orders) * points_),
        im_(re_.size()) {
    const ComplexArrays& values = family.of(quantity);
    for (std::size_t e = 0; e < values.RE.size(); ++e) {
      re_[e % re_.size()] += values.RE[e];
      im_[e % im_.size()] += values.IM[e];
    }
  }
  /// @param k     order index from 0
  /// @param point from 1
  double amplitude(std::size_t k, std::int32_t point) const {
    const std::size_t e = k * points_ + index(point);
    return amplitudeOf(re_[e], im_[e]);
  }
  double angle(std::size_t k, std::int32_t point) const {
    const std::size_t e = k * points_ + index(point);
    return shaftAngleOf(re_[e], im_[e]);
  }

 private:
  std::size_t points_;
  std::vector<double> re_;
  std::vector<double> im_;
};

/// A family that has sources, with the sums of its sources.
struct LossFamily {
  LossOrders at;
  FamilySum torque;
  FamilySum deflection;
};

/// Stiffness and damping of a shaft, some of which depend on the order.
class LossyShaft {
 public:
  double stiffness;  ///< N m/rad
  double damping;    ///< N m s/rad
  double magnifier;

  LossyShaft(ModelBundle& model, std::int32_t s)
      : stiffness(GET_SHAFT_STIFFNESSDYNAMIC(model.shaft, s)),
        damping(GET_SHAFT_ABSDAMPING(model.shaft, s)),
        magnifier(GET_SHAFT_DYNMAGNIFIER(model.shaft, s)),
        model_(model),
        geislinger_(geislingerCouplingOfShaft(model, s)),
        diesel_(crankThrowFormulaEngine(model, s)),
        viscous_(customViscousDamper(model, s)) {
    if (geislinger_ > 0) {
      damping = GET_GEISLINGERCOUPLING_DAMPING(model.geislingerCoupling, geislinger_);
    } else if (diesel_ > 0) {
      damping = GET_DIESEL_CRANKRELDAMPING(model.diesel, diesel_);
    } else if (viscous_ > 0) {
      damping = 1.0;
    }
  }

  /// Takes stiffness and damping at an order of a source's speed.
  void takeOrder(double speed, double order) {
    if (geislinger_ > 0) {
      SET_GEISLINGERCOUPLING_SPEEDEXCITATION(model_.geislingerCoupling, geislinger_, speed);
      stiffness = CALCULATE_GEISLINGERCOUPLING_STIFFNESSDYNAMIC(model_.geislingerCoupling,
                                                                geislinger_, order);
      damping = CALCULATE_GEISLINGERCOUPLING_DAMPING(model_.geislingerCoupling, geislinger_,
                                                     magnifier, order);
    } else if (diesel_ > 0) {
      damping = CALCULATE_DIESEL_DAMPING_CRANKTHROW(model_.diesel, diesel_, order);
    } else if (viscous_ > 0) {
      damping = CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(model_.viscousDamper, viscous_, order);
    }
  }

  /// Damping in force, N m s/rad: that of the magnifier where there is no other.
  double equivalentDamping(double circularSpeed, double order) const {
    return damping > 0.0 ? damping : stiffness / (magnifier * circularSpeed * order);
  }

 private:
  ModelBundle& model_;
  std::int32_t geislinger_;
  std::int32_t diesel_;
  std::int32_t viscous_;
};

/// Square of the twist amplitude of a shaft that is no damper, rad2: torque over stiffness.
double squaredTwist(const LossyShaft& shaft, const LossFamily& family, std::size_t k,
                    std::int32_t s) {
  const double torque = family.torque.amplitude(k, s);
  return torque * torque / (shaft.stiffness * shaft.stiffness);
}

/// The same of the link of a damper, from the deflections at both ends.
double squaredTwist(const LossFamily& family, std::size_t k, const ShaftEnds& ends) {
  const double orgAmplitude = family.deflection.amplitude(k, ends.org);
  const double desAmplitude = family.deflection.amplitude(k, ends.des);
  const double orgAngle = family.deflection.angle(k, ends.org);
  const double desAngle = family.deflection.angle(k, ends.des);
  const double dx = std::abs(desAmplitude * std::cos(desAngle) - orgAmplitude * std::cos(orgAngle));
  const double dy = std::abs(desAmplitude * std::sin(desAngle) - orgAmplitude * std::sin(orgAngle));
  return dx * dx + dy * dy;
}

/// Loss of one family in a shaft, W.
double lossOf(const ModelBundle& model, LossyShaft& shaft, const LossFamily& family, std::int32_t s,
              bool isDamper) {
  const double circularSpeed = angularSpeed(family.at.speed);
  double loss = 0.0;
  for (std::size_t k = 0; k < family.at.orders.size(); ++k) {
    const double order = family.at.orders[k];
    const double w = order * circularSpeed;
    shaft.takeOrder(family.at.speed, order);
    const double twist =
        isDamper ? squaredTwist(family, k, shaftEnds(model, s)) : squaredTwist(shaft, family, k, s);
    loss += shaft.equivalentDamping(circularSpeed, order) * 0.5 * w * w * twist;
  }
  return loss;
}

}  // namespace

void SINGLELOADCASESHAFTPOWERLOSS(ModelBundle& model, const LoadCaseResults& results,
                                  std::span<double> SHAFTPOWERLOSS) {
  std::vector<LossFamily> families;
  for (std::size_t f = 0; f < results.size(); ++f) {
    if (results[f].sources > 0) {
      families.push_back({lossOrders(model, static_cast<Family>(f), results[f].orders),
                          FamilySum(results[f], Quantity::torque),
                          FamilySum(results[f], Quantity::deflection)});
    }
  }
  for (std::int32_t s = 1; s <= model.shaft.number(); ++s) {
    double& loss = SHAFTPOWERLOSS[index(s)];
    loss = 0.0;
    LossyShaft shaft(model, s);
    if (shaft.damping == 0.0 && shaft.magnifier == 0.0) {
      continue;
    }
    const bool isDamper = GET_SHAFT_ISDAMPER(model.shaft, s, model.viscousDamper,
                                             model.rubberDamper, model.steelSpringDamper);
    for (const LossFamily& family : families) {
      loss += lossOf(model, shaft, family, s, isDamper);
    }
  }
}

}  // namespace verenwick
