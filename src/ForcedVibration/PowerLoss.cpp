#include "ForcedVibration/PowerLoss.h"

#include <algorithm>
#include <cmath>

#include "Matrices/ShaftAtOrder.h"
#include "RunControl/Constants.h"
#include "ShaftLineGraph/GraphTheory.h"

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
std::vector<double> machineOrders(std::int32_t count,
                                  const std::array<double, kTorqueOrders>& slots) {
  const auto used = slots.begin() + std::clamp(count, 0, static_cast<std::int32_t>(kTorqueOrders));
  return {slots.begin(), std::find(slots.begin(), used, 0.0)};
}

/// A family is taken by the record of its first source.
LossOrders lossOrders(const ModelBundle& model, Family family, std::int32_t count) {
  constexpr std::int32_t kFirst = 1;
  switch (family) {
    case Family::diesel:
      return {GET_DIESEL_SPEED(model.diesel, kFirst), multiples(count, results::orderStep(count))};
    case Family::propeller: {
      const PROPELLER_RECORD& propeller = model.propeller.at(kFirst);
      return {propeller.SPEED, multiples(count, count == 2 ? propeller.NBLADE : 1.0)};
    }
    case Family::generator: {
      const GENERATOR_RECORD& generator = model.generator.at(kFirst);
      return {generator.SPEED,
              machineOrders(generator.GENERATORORDERNUMBER, generator.GENERATORORDER)};
    }
    case Family::centrifugalPump: {
      const CENTRIFUGALPUMP_RECORD& pump = model.centrifugalPump.at(kFirst);
      return {pump.SPEED,
              machineOrders(pump.CENTRIFUGALPUMPORDERNUMBER, pump.CENTRIFUGALPUMPORDER)};
    }
    case Family::reciprocatingPump:
      return {GET_RECIPROCATINGPUMP_SPEED(model.reciprocatingPump, kFirst), multiples(count, 1.0)};
    case Family::electricMotor:
      break;
  }
  const ELECTRICMOTOR_RECORD& motor = model.electricMotor.at(kFirst);
  return {motor.SPEED, machineOrders(motor.MOTORORDERNUMBER, motor.MOTORORDER)};
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

/// Square of the twist amplitude of a shaft that is no damper, rad2: torque over stiffness.
double squaredTwist(double stiffness, const LossFamily& family, std::size_t k, std::int32_t s) {
  const double torque = family.torque.amplitude(k, s);
  return torque * torque / (stiffness * stiffness);
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
double lossOf(ModelBundle& model, std::int32_t s, const ShaftAtOrder& shaft,
              const LossFamily& family, bool isDamper) {
  const double circularSpeed = angularSpeed(family.at.speed);
  setExcitationSpeed(model, family.at.speed);
  double loss = 0.0;
  for (std::size_t k = 0; k < family.at.orders.size(); ++k) {
    const double order = family.at.orders[k];
    const double w = order * circularSpeed;
    const double twist = isDamper ? squaredTwist(family, k, shaftEnds(model, s))
                                  : squaredTwist(shaft.lossStiffness(order), family, k, s);
    loss += shaft.lossDamping(circularSpeed, order) * 0.5 * w * w * twist;
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
    const ShaftAtOrder shaft(model, s);
    if (shaft.isLossless()) {
      continue;
    }
    const bool isDamper = shaft.dampingElement() == DampingElement::damper;
    for (const LossFamily& family : families) {
      loss += lossOf(model, s, shaft, family, isDamper);
    }
  }
}

}  // namespace verenwick
