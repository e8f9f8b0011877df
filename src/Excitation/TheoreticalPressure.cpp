#include "Excitation/TheoreticalPressure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "Excitation/Engine_functions.h"
#include "Excitation/ExcitationConstants.h"

namespace verenwick {
namespace {

using Curve = std::span<double, kPressurePoints>;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr int kFirstAngle = -180;  ///< crank angle of the first point, degrees

/// Swept volume above top dead centre, per whole degree of crank angle, m3.
class SweptVolume {
 public:
  explicit SweptVolume(const CylinderPressureInput& in) : size_(in.nStroke == 2 ? 360 : 720) {
    const double scale = in.bore * in.bore * kPiSingle * in.stroke * 0.125;
    for (std::size_t i = 0; i < size_; ++i) {
      const double angle = (static_cast<double>(i) * kPiSingle) / 180.0;
      const double sine = std::sin(angle);
      table_[i] = scale * ((1.0 - std::cos(angle)) +
                           (1.0 / in.lambda) *
                               (1.0 - std::sqrt(1.0 - in.lambda * in.lambda * sine * sine)));
    }
  }

  /// Volume at a position, 1 being top dead centre. Unfit event angles ask for positions outside
  /// the table, where there is no volume.
  double operator()(double position) const {
    if (!(position >= 1.0 && position <= static_cast<double>(size_)))
      return kNaN;
    return table_[static_cast<std::size_t>(position) - 1];
  }

 private:
  std::size_t size_;
  std::array<double, 720> table_{};
};

/// The cylinder as every kind of curve sees it.
struct Cylinder {
  explicit Cylinder(const CylinderPressureInput& in)
      : isTwoStroke(in.nStroke == 2),
        topPosition(isTwoStroke ? 360 : 361),
        lastAngle(isTwoStroke ? 179 : 539),
        volume(in),
        clearance((in.bore * in.bore * kPiSingle * in.stroke) / ((in.compRatio - 1.0) * 4.0)),
        pInlet(in.pInlet),
        pMax(in.pMax + kBar),
        pComp(in.pComp + kBar),
        exhaustStart(std::trunc(in.AngleExhaustStart)),
        inletStart(std::trunc(in.AngleInletStart)),
        inletClose(std::trunc(in.AngleInletClose)),
        vBottom(volume(181)),
        vClose(in.nStroke == 4 ? volume(181) : volume(inletClose + 1.0)) {}

  /// Pressure ratio of a polytropic change of volume.
  double polytrope(double from, double to, double exponent) const {
    return std::pow((from + clearance) / (to + clearance), exponent);
  }

  bool isTwoStroke;
  int topPosition;  ///< volume position of 0 degrees on the way up: a two-stroke table ends there
  int lastAngle;    ///< of the curve, degrees
  SweptVolume volume;
  double clearance;
  double pInlet;
  double pMax;   ///< absolute
  double pComp;  ///< absolute
  double exhaustStart;
  double inletStart;
  double inletClose;
  double vBottom;
  double vClose;  ///< where compression starts
};

double& at(Curve curve, int t) { return curve[static_cast<std::size_t>(t - kFirstAngle)]; }

/// Compression and expansion of the charge without combustion.
void misfiringCurve(const Cylinder& c, Curve curve) {
  const double cap = kMisfireCap * c.pComp;
  const auto capped = [cap](double p) { return p > cap ? cap : p; };
  for (int t = kFirstAngle; t <= 0; ++t) {
    at(curve, t) =
        capped(c.pInlet * c.polytrope(c.vClose, c.volume(t + c.topPosition), kMisfireExponent));
  }
  const double pTop = at(curve, 0);
  const double vTop = c.volume(c.topPosition);
  for (int t = 1; t <= c.lastAngle; ++t) {
    double p = pTop * c.polytrope(vTop, c.volume(t + 1), kMisfireExponent);
    if (t > 180 && p > c.pInlet)
      p = c.pInlet;
    at(curve, t) = capped(p);
  }
}

/// How the iteration goes for the two kinds of engine.
struct IterationRules {
  double tolerance;
  int firstChange;  ///< first pass that may change timing and duration of the combustion
  int undamped;     ///< last pass whose whole work error corrects the heat
};
constexpr int kPasses = 20;
constexpr int kLastChange = 14;
constexpr IterationRules kTwoStrokeRules{kToleranceTwoStroke, 6, kPasses};
constexpr IterationRules kFourStrokeRules{kToleranceFourStroke, 5, 10};

/// Searches the heat and the form factor that give the work and the peak pressure wanted, pass by
/// pass over the whole cycle. The last step of a pass precedes the first of the next.
class FiringIteration {
 public:
  FiringIteration(const CylinderPressureInput& in, const Cylinder& cylinder, Curve curve)
      : c_(cylinder),
        curve_(curve),
        rules_(cylinder.isTwoStroke ? kTwoStrokeRules : kFourStrokeRules),
        heatShare_(in.Te),
        workWanted_(((in.power / in.me) / (in.speed / 60.0)) * (in.nStroke * 0.5)),
        compressionExponent_(std::log(c_.pComp / c_.pInlet) /
                             std::log((c_.vClose + c_.clearance) / c_.clearance)),
        expansionExponent_(compressionExponent_ - (in.speed * kExpansionExponentDrop) / in.speed),
        mass_((c_.pInlet * (c_.vBottom + c_.clearance)) /
              ((in.tCharge + kChargeHeating + kKelvinOfCelsius) * kGasConstant)),
        ignition_(std::trunc(in.AngleIgnition)),
        duration_(std::trunc(in.AngleEndOfComb) - ignition_),
        formFactor_(in.FormFactor),
        heat_(workWanted_ / heatShare_),
        vPrevious_(c_.vBottom),
        pPrevious_(c_.pInlet) {
    prepare();
  }

  void run();

 private:
  void prepare();
  void pass();
  void openFourStroke(int t, bool hasExpanded);
  void openTwoStroke(int t);
  void correctCombustion(double peakError);
  double burn(int t, double v);
  double expand(int t, double v);
  void store(int t, double v, double p);
  bool isScavenging(int t) const { return c_.isTwoStroke && t < c_.inletClose - 360.0; }
  double exhaustShare(double v) const {
    return std::pow(std::abs(c_.vBottom - v) / c_.vBottom, kExhaustExponent);
  }

  const Cylinder& c_;
  Curve curve_;
  IterationRules rules_;
  double heatShare_;   ///< of the heat that becomes work
  double workWanted_;  ///< J a cycle
  double compressionExponent_;
  double expansionExponent_;
  double mass_;  ///< of the charge, kg

  // Changed after each pass.
  int passes_{};
  double ignition_;
  double duration_;
  double formFactor_;
  double heat_;  ///< J a cycle

  // Changed step by step.
  double vPrevious_;
  double pPrevious_;
  double temperature_{};
  double work_{};
  double vBurnt_{};    ///< last step of combustion, or top dead centre
  double pBurnt_{};    ///< the pressure there
  double vOpening_{};  ///< last step of expansion
  double pOpening_{};  ///< the pressure there

  // Powers that come back in every pass with the same digits.
  std::array<double, 181> unfired_{};        ///< pressure from -180 to 0 degrees, never ignited
  std::array<double, 180> exhaustShare_{};   ///< from 181 to 360 degrees
  std::array<double, 540> expansion_{};      ///< pressure ratio per angle ...
  std::array<double, 540> expansionFrom_{};  ///< ... good for this volume at the end of combustion
};

void FiringIteration::prepare() {
  double vClose = c_.vClose;
  for (int t = kFirstAngle; t <= 0; ++t) {
    double& p = unfired_[static_cast<std::size_t>(t - kFirstAngle)];
    if (isScavenging(t)) {
      // The volume at closing follows the crank while scavenging still runs.
      p = c_.pInlet;
      vClose = c_.volume(t + 361);
    } else {
      p = c_.pInlet * c_.polytrope(vClose, c_.volume(t + c_.topPosition), compressionExponent_);
    }
  }
  for (std::size_t i = 0; !c_.isTwoStroke && i < exhaustShare_.size(); ++i) {
    exhaustShare_[i] = exhaustShare(c_.volume(static_cast<double>(i) + 182.0));
  }
  expansionFrom_.fill(kNaN);
}

void FiringIteration::run() {
  bool isWorkRight = false;
  while (true) {
    pass();
    if (workWanted_ == 0.0)
      return;
    if (++passes_ > kPasses)
      return;

    const double workError = work_ - workWanted_;
    if (std::abs(workError) / workWanted_ < rules_.tolerance)
      isWorkRight = true;
    heat_ -= (passes_ > rules_.undamped ? workError / (passes_ - rules_.undamped) : workError) /
             heatShare_;
    if (passes_ == 1 && !isWorkRight)
      continue;

    double peak = 0;
    for (int t = kFirstAngle; t <= c_.lastAngle; ++t) {
      if (at(curve_, t) > peak)
        peak = at(curve_, t);
    }
    const double peakError = peak - c_.pMax;
    const bool isPeakRight = std::abs(peakError) / c_.pMax < rules_.tolerance;
    if (!isPeakRight)
      correctCombustion(peakError);
    if (isWorkRight && isPeakRight)
      return;
    isWorkRight = false;
  }
}

/// A peak too high asks for a slower start of the combustion and a longer one.
void FiringIteration::correctCombustion(double peakError) {
  formFactor_ += ((peakError / c_.pMax) * 10.0 * kFormFactorStep) / passes_;
  if (!(formFactor_ > kFormFactorFloor))
    formFactor_ = kFormFactorFloor;
  if (passes_ < rules_.firstChange || passes_ > kLastChange)
    return;

  duration_ *= peakError / c_.pMax + 1.0;
  if (duration_ < kShortestCombustion)
    duration_ = kShortestCombustion;
  if (ignition_ + duration_ < std::abs(ignition_))
    ignition_ = std::trunc(ignition_ / 2.0);
}

void FiringIteration::pass() {
  work_ = 0;
  for (int t = kFirstAngle; t <= 0; ++t) {
    const double v = c_.volume(t + c_.topPosition);
    double p = unfired_[static_cast<std::size_t>(t - kFirstAngle)];
    if (!isScavenging(t)) {
      if (t < ignition_) {
        temperature_ = (p * (v + c_.clearance)) / (mass_ * kGasConstant);
      } else {
        p = burn(t, v);
      }
    }
    store(t, v, p);
    vBurnt_ = v;
    pBurnt_ = p;
  }
  if (!c_.isTwoStroke)
    pBurnt_ = vOpening_ = pOpening_ = 0;

  int t = 1;
  for (; t <= c_.lastAngle && !(t > ignition_ + duration_); ++t) {
    vBurnt_ = c_.volume(t + 1);
    pBurnt_ = burn(t, vBurnt_);
    store(t, vBurnt_, pBurnt_);
  }
  const int firstExpansion = t;
  for (; t <= c_.lastAngle && !(t > c_.exhaustStart); ++t) {
    vOpening_ = c_.volume(t + 1);
    pOpening_ = expand(t, vOpening_);
    store(t, vOpening_, pOpening_);
  }
  if (c_.isTwoStroke) {
    openTwoStroke(t);
  } else {
    openFourStroke(t, t > firstExpansion);
  }
}

/// Blow-down to bottom dead centre, exhaust and inlet from angle t on.
void FiringIteration::openFourStroke(int t, bool hasExpanded) {
  double slope = 0;         // of the pressure over volume at the opening
  double exhaustLevel = 0;  // the pressure that the blow-down ends at
  if (hasExpanded) {
    slope =
        -((expansionExponent_ * pOpening_ * std::pow(vBurnt_ + c_.clearance, expansionExponent_)) /
          std::pow(vOpening_ + c_.clearance, expansionExponent_ + 1.0));
    exhaustLevel = (pOpening_ - c_.pInlet) * kExhaustLevelShare + c_.pInlet;
  }
  const double rest = c_.vBottom - vOpening_;
  const double tilt = -0.5 - (slope * rest) / (pOpening_ - exhaustLevel);
  for (; t <= 180; ++t) {
    const double v = c_.volume(t + 1);
    const double u = std::abs((c_.vBottom - v) / rest);
    double p = exhaustLevel + (pOpening_ - exhaustLevel) * std::pow(u, tilt * u + 0.5);
    const double expanded = expand(t, v);
    if (expanded < p)
      p = expanded;
    if (std::isnan(p) && passes_ == kPasses) {
      p = exhaustLevel - (exhaustLevel - c_.pInlet) * exhaustShare(v);
    }
    store(t, v, p);
  }
  for (; t <= 360; ++t) {
    const double share = exhaustShare_[static_cast<std::size_t>(t - 181)];
    store(t, c_.volume(t + 1), exhaustLevel - (exhaustLevel - c_.pInlet) * share);
  }
  for (; t <= c_.lastAngle; ++t) store(t, c_.volume(t + 1), c_.pInlet);
}

/// Exhaust, a half cosine over the volume down to the inlet pressure, and scavenging from angle t
/// on.
void FiringIteration::openTwoStroke(int t) {
  const double vInlet = c_.volume(c_.inletStart + 1.0);
  for (; t <= c_.lastAngle && !(t > c_.inletStart); ++t) {
    const double v = c_.volume(t + 1);
    const double p = pOpening_ * 0.5 + c_.pInlet * 0.5 +
                     (pOpening_ - c_.pInlet) * 0.5 *
                         std::cos(((v - vOpening_) * kPiSingle) / (vInlet - vOpening_));
    store(t, v, p);
  }
  for (; t <= c_.lastAngle; ++t) store(t, c_.volume(t + 1), c_.pInlet);
}

/// Pressure of a step of combustion.
double FiringIteration::burn(int t, double v) {
  CYLTEMP(t, ignition_, duration_, formFactor_, vPrevious_, v, temperature_, pPrevious_, mass_,
          heat_, temperature_);
  return (temperature_ * kGasConstant * mass_) / (v + c_.clearance);
}

/// Pressure of an expansion from the end of combustion to the volume v of angle t.
double FiringIteration::expand(int t, double v) {
  const auto i = static_cast<std::size_t>(t);
  if (expansionFrom_[i] != vBurnt_) {
    expansionFrom_[i] = vBurnt_;
    expansion_[i] = c_.polytrope(vBurnt_, v, expansionExponent_);
  }
  return pBurnt_ * expansion_[i];
}

void FiringIteration::store(int t, double v, double p) {
  work_ = work_ + (pPrevious_ + p) * 0.5 * (v - vPrevious_);
  vPrevious_ = v;
  pPrevious_ = p;
  at(curve_, t) = p;
}

}  // namespace

void CALCULATEDPRESSURE(const CylinderPressureInput& input, Curve pressure, double& mip,
                        bool& status) {
  const Cylinder cylinder(input);
  if (cylinder.pMax == 0.0) {
    status = false;
    return;
  }
  if (input.power == 0.0 && !input.misfire) {
    std::ranges::fill(pressure, 0.0);
    return;
  }
  const bool isTwoStrokeInOrder = input.nStroke == 2 &&
                                  cylinder.exhaustStart < cylinder.inletStart &&
                                  cylinder.inletStart < cylinder.inletClose;
  if (input.misfire) {
    misfiringCurve(cylinder, pressure);
  } else if (input.nStroke == 4 || isTwoStrokeInOrder) {
    FiringIteration(input, cylinder, pressure).run();
  }
  // Callers can't tell a curve that did not converge, or that is none, from a good one.
  status = true;
  mip = CALCULATE_MEP(input.power, input.speed, input.bore, input.nStroke, input.stroke) / input.me;
}

void CYLTEMP(double t, double AngleIgnition, double duration, double FormFactor, double vPrev,
             double v, double tPrev, double pPrev, double mass, double heat, double& tOut) {
  double released = 0;
  if (duration > 0.0 && heat > 0.0) {
    double y = (t - AngleIgnition) / duration;
    if (y < 0.0)
      y = 0.0;
    released = (((FormFactor + 1.0) * kVibe * std::pow(y, FormFactor) *
                 std::exp(-(std::pow(y, FormFactor + 1.0) * kVibe))) /
                duration) *
               heat;
  }
  const double work = pPrev * (v - vPrev);
  const double specificHeat = tPrev * kSpecificHeatSlope + kSpecificHeatBase;
  tOut = tPrev + (released - work) / (mass * specificHeat);
}

}  // namespace verenwick
