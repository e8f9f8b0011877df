#include "ForcedVibration/ShaftResults.h"

#include <algorithm>
#include <cmath>

#include "ForcedVibration/PropellerIceResults.h"
#include "Matrices/RowComponents.h"
#include "RunControl/Constants.h"
#include "RunControl/RunStopped.h"

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

/// Damping of a damper's link or a coupling at an order, N m s/rad.
class DampingElement {
 public:
  DampingElement(const ModelBundle& model, std::int32_t s)
      : model_(model),
        type_(GET_SHAFT_SHAFTTYPE(model.shaft, s)),
        magnifier_(GET_SHAFT_DYNMAGNIFIER(model.shaft, s)),
        damping_(GET_SHAFT_ABSDAMPING(model.shaft, s)) {
    const std::int32_t id = GET_SHAFT_ID(model.shaft, s);
    if (GET_SHAFT_ISDAMPER(model.shaft, s, model.viscousDamper, model.rubberDamper,
                           model.steelSpringDamper)) {
      kind_ = Kind::damper;
      if (type_ == ShaftType::rubberDamperLink) {
        row_ = GET_RUBBERDAMPER_IRUBBERDAMPER(model.rubberDamper,
                                              GET_SHAFT_COMPONENTID(model.shaft, s));
      } else {
        row_ = customViscousDamper(model, s);
      }
    } else if (GET_SHAFT_ISCOUPLING(model.shaft, s, model.linearCoupling, model.progressiveCoupling,
                                    model.geislingerCoupling)) {
      kind_ = Kind::coupling;
      switch (type_) {
        case ShaftType::geislingerCoupling:
          row_ = geislingerCouplingOfShaft(model, s);
          break;
        case ShaftType::linearCoupling:
          row_ = GET_LINEARCOUPLING_ILINEARCOUPLING_SHAFTNODE(model.linearCoupling, id);
          break;
        case ShaftType::progressiveCoupling:
          row_ =
              GET_PROGRESSIVECOUPLING_IPROGRESSIVECOUPLING_SHAFTNODE(model.progressiveCoupling, id);
          break;
        default:
          break;
      }
    }
  }

  /// Whether the shaft has a damping element at all.
  explicit operator bool() const { return kind_ != Kind::none; }

  double at(double order) const {
    // A slot without an order takes no part: the formulas divide by it.
    if (order == 0.0) {
      return 0.0;
    }
    if (row_ > 0) {
      switch (type_) {
        case ShaftType::rubberDamperLink:
          return CALCULATE_RUBBERDAMPER_DAMPING(model_.rubberDamper, row_, magnifier_, order);
        case ShaftType::viscousDamperLink:
          return CALCULATE_VISCOUSDAMPER_CUSTOMDAMPING(model_.viscousDamper, row_, order);
        case ShaftType::geislingerCoupling:
          return CALCULATE_GEISLINGERCOUPLING_DAMPING(model_.geislingerCoupling, row_, magnifier_,
                                                      order);
        case ShaftType::linearCoupling:
          return CALCULATE_LINEARCOUPLING_DAMPING(model_.linearCoupling, row_, magnifier_, order);
        case ShaftType::progressiveCoupling:
          return CALCULATE_PROGRESSIVECOUPLING_DAMPING(model_.progressiveCoupling, row_, magnifier_,
                                                       order);
        default:
          break;
      }
    }
    return kind_ == Kind::damper ? damping_ : 0.0;
  }

 private:
  enum class Kind { none, damper, coupling };

  const ModelBundle& model_;
  ShaftType type_;
  double magnifier_;
  double damping_;  ///< of the shaft itself
  Kind kind_ = Kind::none;
  std::int32_t row_ = 0;  ///< of the component whose damping depends on the order
};

}  // namespace

ShaftEnds shaftEnds(const ModelBundle& model, std::int32_t shaft) {
  const ShaftEnds ends{GET_MASS_IMASS(model.mass, GET_SHAFT_ORGNODE(model.shaft, shaft)),
                       GET_MASS_IMASS(model.mass, GET_SHAFT_DESNODE(model.shaft, shaft))};
  if (ends.org < 1 || ends.des < 1) {
    throw RunStopped("** A shaft ends at an inertia that is not in the model");
  }
  return ends;
}

void SINGLELOADCASESHAFTTORQUE(const ModelBundle& model, std::span<const double> EXFO,
                               const ComplexSection& deflection, const ComplexSection& torque) {
  const std::size_t inertias = asSize(model.mass.number());
  const std::size_t shafts = asSize(model.shaft.number());
  clear(torque);
  for (std::int32_t s = 1; s <= model.shaft.number(); ++s) {
    const ShaftEnds ends = shaftEnds(model, s);
    const double orgRatio = GET_MASS_RPMRATIO(model.mass, ends.org);
    const double desRatio = GET_MASS_RPMRATIO(model.mass, ends.des);
    const std::int32_t geislinger = geislingerCouplingOfShaft(model, s);
    const std::int32_t viscous = customViscousDamper(model, s);
    const bool hasCustomStiffness =
        viscous > 0 && GET_VISCOUSDAMPER_ISCUSTOMSTIFFNESS(model.viscousDamper, viscous);
    double stiffness = GET_SHAFT_STIFFNESSDYNAMIC(model.shaft, s);
    for (std::size_t k = 0; k < EXFO.size(); ++k) {
      if (geislinger > 0) {
        stiffness = CALCULATE_GEISLINGERCOUPLING_STIFFNESSDYNAMIC(model.geislingerCoupling,
                                                                  geislinger, EXFO[k]);
      } else if (hasCustomStiffness) {
        stiffness = CALCULATE_VISCOUSDAMPER_CUSTOMSTIFFNESS(model.viscousDamper, viscous, EXFO[k]);
      }
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
    const DampingElement element(model, s);
    if (!element) {
      continue;
    }
    const ShaftEnds ends = shaftEnds(model, s);
    for (std::size_t k = 0; k < EXFO.size(); ++k) {
      const double damping = element.at(EXFO[k]);
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
