#include "ForcedVibration/ShaftResults.h"

#include <algorithm>
#include <cmath>

#include "ForcedVibration/PropellerIceResults.h"
#include "Matrices/ShaftAtOrder.h"
#include "RunControl/Constants.h"
#include "ShaftLineGraph/GraphTheory.h"

namespace verenwick {
namespace {

/// Stores a complex value with its amplitude and angle.
void store(const ComplexSection& section, std::size_t at, double re, double im) {
  section.RE[at] = re;
  section.IM[at] = im;
  section.AMP[at] = amplitudeOf(re, im);
  section.ANGLE[at] = shaftAngleOf(re, im);
}

void clear(const ComplexSection& section) {
  for (const auto& values : {section.AMP, section.ANGLE, section.RE, section.IM}) {
    std::fill(values.begin(), values.end(), 0.0);
  }
}

/// pi (D^3 - d^3), m3.
double diametersTerm(const SHAFT_TABLE& shaft, std::int32_t s) {
  const double outer = GET_SHAFT_OUTERDI(shaft, s);
  const double inner = GET_SHAFT_INNERDI(shaft, s);
  return (outer * outer * outer - inner * inner * inner) * kPi;
}

}  // namespace

void SINGLELOADCASESHAFTTORQUE(const ModelBundle& model, std::span<const double> EXFO,
                               const ComplexSection& deflection, const ComplexSection& torque) {
  const std::size_t inertias = asSize(model.mass.number());
  const std::size_t shafts = asSize(model.shaft.number());
  clear(torque);
  for (std::int32_t s = 1; s <= model.shaft.number(); ++s) {
    const ShaftEnds ends = shaftEnds(model, s);
    const double orgRatio = GET_MASS_RPMRATIO(model.mass, ends.org);
    const double desRatio = GET_MASS_RPMRATIO(model.mass, ends.des);
    const ShaftAtOrder shaft(model, s);
    for (std::size_t k = 0; k < EXFO.size(); ++k) {
      const double stiffness = shaft.stiffness(EXFO[k]);
      const auto twist = [&](std::span<const double> values) {
        return values[k * inertias + index(ends.org)] -
               values[k * inertias + index(ends.des)] / desRatio * orgRatio;
      };
      store(torque, k * shafts + index(s), stiffness * twist(deflection.RE),
            stiffness * twist(deflection.IM));
    }
  }
}

void SINGLELOADCASESHAFTSTRESS(const SHAFT_TABLE& shaft, const ComplexSection& torque,
                               const ComplexSection& stress) {
  const std::size_t shafts = asSize(shaft.number());
  clear(stress);
  for (std::int32_t s = 1; s <= shaft.number(); ++s) {
    if (GET_SHAFT_OUTERDI(shaft, s) <= 0.0) {
      continue;
    }
    const double term = diametersTerm(shaft, s);
    for (std::size_t at = index(s); at < torque.RE.size(); at += shafts) {
      store(stress, at, 16 * torque.RE[at] / term, 16 * torque.IM[at] / term);
    }
  }
}

void SINGLELOADCASESHAFTDAMPINGTORQUE(const ModelBundle& model, std::span<const double> EXFO,
                                      const ComplexSection& velocity,
                                      const ComplexSection& dampingTorque) {
  const std::size_t inertias = asSize(model.mass.number());
  const std::size_t shafts = asSize(model.shaft.number());
  clear(dampingTorque);
  for (std::int32_t s = 1; s <= model.shaft.number(); ++s) {
    const ShaftAtOrder shaft(model, s);
    const DampingElement element = shaft.dampingElement();
    if (element == DampingElement::none) {
      continue;
    }
    const ShaftEnds ends = shaftEnds(model, s);
    for (std::size_t k = 0; k < EXFO.size(); ++k) {
      const double damping = shaft.torqueDamping(element, EXFO[k]);
      const auto difference = [&](std::span<const double> values) {
        return values[k * inertias + index(ends.org)] - values[k * inertias + index(ends.des)];
      };
      store(dampingTorque, k * shafts + index(s), damping * difference(velocity.RE),
            damping * difference(velocity.IM));
    }
  }
}

void SINGLELOADCASENOMINALTORQUE(const ModelBundle& model, std::span<const double> shaftPower,
                                 std::int32_t loadCase, std::span<double> NOMTORQUE,
                                 PropellerIce* ice) {
  for (std::int32_t s = 1; s <= model.shaft.number(); ++s) {
    double& torque = NOMTORQUE[index(s)];
    torque = shaftPower[index(s)] / angularSpeed(GET_SHAFT_SPEED(model.shaft, s));
    if (ice != nullptr) {
      torque += SINGLELOADCASEPROPELLERICEZEROORDERTORQUE(model, s, loadCase, *ice);
    }
  }
}

void SINGLELOADCASENOMINALSTRESS(const SHAFT_TABLE& shaft, std::span<const double> NOMTORQUE,
                                 std::span<double> NOMSTRESS) {
  for (std::int32_t s = 1; s <= shaft.number(); ++s) {
    NOMSTRESS[index(s)] = GET_SHAFT_OUTERDI(shaft, s) != 0.0
                              ? NOMTORQUE[index(s)] * 16 / diametersTerm(shaft, s)
                              : 0.0;
  }
}

}  // namespace verenwick
