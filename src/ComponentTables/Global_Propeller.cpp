#include "ComponentTables/Global_Propeller.h"

#include <algorithm>
#include <cmath>

#include "RunControl/Constants.h"
#include "RunControl/Log.h"

namespace verenwick {
namespace {

/// No propeller comes near it: bounds what a faulty number of blades can ask for.
constexpr std::int32_t kMostIceLines = 100'000;

double fifthPower(double x) { return x * x * x * x * x; }

double dampingOf(PROPELLER_TABLE& table, std::int32_t row) {
  switch (static_cast<PropellerDamping>(GET_PROPELLER_DAMPINGMETHOD(table, row))) {
    case PropellerDamping::schwanecke:
      return CALCULATE_PROPELLER_SCHWANECHEDAMPING(table, row);
    case PropellerDamping::archer:
      return CALCULATE_PROPELLER_ARCHERDAMPING(table, row);
    case PropellerDamping::frahm:
      return CALCULATE_PROPELLER_FRAHMDAMPING(table, row);
    case PropellerDamping::manual:
      return CALCULATE_PROPELLER_MANUALDAMPING(table, row);
    case PropellerDamping::variable:
      return CALCULATE_PROPELLER_VARIABLEDAMPING(table, row);
  }
  return 0.0;
}

/// Where a speed ratio lies in an ice table, and how one of its lines is read there.
class IceTable {
 public:
  explicit IceTable(const PROPELLER_RECORD& propeller, double x)
      : propeller_(propeller), columns_(static_cast<std::size_t>(propeller.NSPEEDRATIO)), x_(x) {
    while (upper_ < columns_ && x_ > ratio(upper_)) {
      ++upper_;
    }
  }

  /// Value of line o, from 1, in N m.
  double at(const std::vector<double>& values, std::size_t o) const {
    const auto value = [&](std::size_t s) { return values[(o - 1) * columns_ + s - 1]; };
    const double held = value(upper_);
    if (ratio(1) < x_) {
      // A table of one speed ratio has nothing to go along.
      const std::size_t lower = upper_ - 1;
      return lower == 0 ? held
                        : held + (value(lower) - held) * (x_ - ratio(upper_)) /
                                     (ratio(lower) - ratio(upper_));
    }
    if (!propeller_.ISTMAXCORRECTEDWITHACTUALSPEED) {
      return held;
    }
    return held + (0 - held) * (x_ - ratio(1)) / (0 - ratio(1));
  }

 private:
  double ratio(std::size_t s) const { return propeller_.SPEEDRATIO[s - 1]; }

  const PROPELLER_RECORD& propeller_;
  std::size_t columns_;
  double x_;
  std::size_t upper_ = 1;
};

}  // namespace

void CALCULATE_PROPELLER_INERTIATOTAL(Vibration vibration, PROPELLER_TABLE& table, std::int32_t row,
                                      std::int32_t loadCase) {
  PROPELLER_RECORD& propeller = table.at(row);
  const bool isPlain = !propeller.ISVARIABLEENTRAINEDWATER || vibration == Vibration::free;
  const double water = isPlain ? propeller.INERTIAWATER
                               : CALCULATE_PROPELLER_CURRENTINERTIAWATER(table, row, loadCase);
  propeller.INERTIATOTAL = propeller.INERTIAAIR + water;
}

double CALCULATE_PROPELLER_CURRENTINERTIAWATER(const PROPELLER_TABLE& table, std::int32_t row,
                                               std::int32_t loadCase) {
  const PROPELLER_RECORD& propeller = table.at(row);
  if (loadCase > propeller.NLOADCASE) {
    appendToLog(
        "Error occurs when setting variable propeller entrained water inertia at Propeller!");
    return propeller.INERTIAWATER;
  }
  const auto& water = propeller.VARIABLEENTRAINEDWATERTABLE;
  // Without a file there is no water in any load case.
  const std::size_t line = index(loadCase);
  return line < water.size() ? water[line] : 0.0;
}

void CALCULATE_PROPELLER_INERTIAWATER(PROPELLER_TABLE& table, std::int32_t row) {
  PROPELLER_RECORD& p = table.at(row);
  if (p.INERTIAWATER > 0.0 || p.DB <= 0.0 || p.DI <= 0.0 || p.NBLADE <= 0 || p.PITCHRATIO <= 0.0 ||
      p.EXPAREARATIO <= 0.0) {
    return;
  }
  constexpr double kSixth = single(1.0F / 6.0F);
  constexpr double kThird = single(1.0F / 3.0F);
  constexpr double kHalfSeaWater = 512.5;  // kg/m3
  const double b = p.DB / p.DI;
  const double bladeForm = kSixth - 0.5 * (b * b) + kThird * (b * b * b);
  p.INERTIAWATER = (bladeForm * kHalfSeaWater * fifthPower(p.DI) / (p.NBLADE * kPiSingle)) *
                   (p.PITCHRATIO * p.PITCHRATIO) * (p.EXPAREARATIO * p.EXPAREARATIO);
}

double CALCULATE_PROPELLER_ABSDAMPING(PROPELLER_TABLE& table, std::int32_t row) {
  const double damping = dampingOf(table, row);
  SET_PROPELLER_ABSDAMPING(table, row, damping);
  return damping;
}

double CALCULATE_PROPELLER_SCHWANECHEDAMPING(const PROPELLER_TABLE& table, std::int32_t row) {
  constexpr double kWater = single(4.271F);
  constexpr double kDuct = single(1.3F);
  const PROPELLER_RECORD& p = table.at(row);
  const double r = p.DI / p.DB;
  const double q = std::sqrt(r - 1);
  const double form = q / (8 * r) + q / (12 * (r * r)) - q / (3 * (r * r * r)) + std::atan(q) / 8;
  double damping =
      form * kWater * fifthPower(p.DI) * (p.PITCHRATIO * p.PITCHRATIO) * p.EXPAREARATIO * p.SPEED;
  if (p.ISDUCTED) {
    damping *= kDuct;
  }
  if (!p.ISFIXEDPITCH && p.PITCHPERCENT < 1.0) {
    damping *= p.PITCHPERCENT;
  }
  return damping;
}

double CALCULATE_PROPELLER_ARCHERDAMPING(const PROPELLER_TABLE& table, std::int32_t row) {
  const PROPELLER_RECORD& p = table.at(row);
  return p.ARCHERNUMBER * p.TORQUE / p.SPEED;
}

double CALCULATE_PROPELLER_FRAHMDAMPING(const PROPELLER_TABLE& table, std::int32_t row) {
  constexpr double kRpmOfOneRadian = 9.54929631978034;  // 30 over pi in single precision
  constexpr double kFrahm = 91.25;
  const PROPELLER_RECORD& p = table.at(row);
  return p.FRAHMNUMBER * (p.MCRTORQUE / kRpmOfOneRadian) / (p.MCRSPEED * p.MCRSPEED) * kFrahm *
         p.SPEED;
}

double CALCULATE_PROPELLER_MANUALDAMPING(const PROPELLER_TABLE& table, std::int32_t row) {
  const PROPELLER_RECORD& p = table.at(row);
  return p.DYNMAGNIFIER == 0.0
             ? 0.0
             : (p.INERTIAAIR + p.INERTIAWATER) * angularSpeed(p.SPEED) / p.DYNMAGNIFIER;
}

double CALCULATE_PROPELLER_VARIABLEDAMPING(PROPELLER_TABLE& table, std::int32_t row) {
  PROPELLER_RECORD& p = table.at(row);
  if (p.DYNMAGNIFIERFORKNUCKLEPOINT == 0.0) {
    return 0.0;
  }
  // Damping ratio: constant from the knuckle on, below it in proportion to the speed.
  const double atKnuckle = 1 / (2 * p.DYNMAGNIFIERFORKNUCKLEPOINT);
  const bool isBelow = p.SPEED * 100 / p.MCRSPEED < p.KNUCKLEPOINT;
  const double ratio =
      isBelow ? (atKnuckle / ((p.KNUCKLEPOINT / 100) * p.MCRSPEED)) * p.SPEED : atKnuckle;
  p.DYNMAGNIFIER = 1 / (2 * ratio);
  return (p.INERTIAAIR + p.INERTIAWATER) * angularSpeed(p.SPEED) / p.DYNMAGNIFIER;
}

void CALCULATE_PROPELLER_LOADCASESETTING(PROPELLER_TABLE& table, std::int32_t row) {
  CALCULATE_PROPELLER_ABSDAMPING(table, row);
  PROPELLER_RECORD& p = table.at(row);
  p.BLADEFREQUENCY = p.SPEED * p.NBLADE;
  p.DAMPING = p.ABSDAMPING;
  p.TORQUEAMP1 = p.TORQUE * p.TORQUEPERCENT1;
  p.TORQUEAMP2 = p.TORQUE * p.TORQUEPERCENT2;
}

double CALCULATE_SPEEDRATIO(const PROPELLER_TABLE& table, std::int32_t row) {
  return GET_PROPELLER_SPEED(table, row) / GET_PROPELLER_MCRSPEED(table, row);
}

std::int32_t GET_PROPELLER_NICEFOURIERORDERS(const PROPELLER_TABLE& table, std::int32_t row) {
  const std::int64_t lines = std::int64_t{4} * GET_PROPELLER_NBLADE(table, row) + 1;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(lines, 1, kMostIceLines));
}

std::int32_t GET_PROPELLERICEHARMONICORDERNUMBER(const PROPELLER_TABLE& table) {
  const std::int32_t first = firstPosition(
      table, [&](std::int32_t p) { return GET_PROPELLER_HASICEEXCITATION(table, p); });
  return first > 0 ? GET_PROPELLER_NICEFOURIERORDERS(table, first) - 1 : 0;
}

bool hasIceExcitation(const PROPELLER_TABLE& table) {
  return GET_PROPELLERICEHARMONICORDERNUMBER(table) > 0;
}

bool GET_PROPELLER_ISMODELCONSIDERPHASEANGLE(const PROPELLER_TABLE& table) {
  const auto any = [&](auto holds) {
    return firstPosition(table, [&](std::int32_t p) { return holds(table, p); }) > 0;
  };
  return !any(GET_PROPELLER_HASICEEXCITATION) && any(GET_PROPELLER_CONSIDERPHASEANGLE);
}

void CALCULATE_PROPELLER_FOURIERCOEFFICIENT(PROPELLER_TABLE& table, std::int32_t row) {
  PROPELLER_RECORD& p = table.at(row);
  const std::size_t lines = p.ICEHARMONICORDER.size();
  p.ICEFOURIERCOEFFICIENT.clear();
  if (lines == 0) {
    return;
  }
  const IceTable ice(p, CALCULATE_SPEEDRATIO(table, row));
  p.ICEZEROORDERCOEFFICIENT = ice.at(p.ICECOSINE, 1);
  for (std::size_t o = 2; o <= lines; ++o) {
    p.ICEFOURIERCOEFFICIENT.emplace_back(roundedToSingle(ice.at(p.ICECOSINE, o) * 0.5),
                                         roundedToSingle(ice.at(p.ICESINE, o) * 0.5));
  }
}

std::complex<double> iceHarmonic(const PROPELLER_TABLE& table, std::int32_t row,
                                 std::int32_t order) {
  const auto& harmonics = table.at(row).ICEFOURIERCOEFFICIENT;
  const std::size_t element = index(order);
  return element < harmonics.size() ? harmonics[element] : std::complex<double>{};
}

}  // namespace verenwick
