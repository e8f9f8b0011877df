#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "Excitation/TheoreticalPressure.h"

/// The theoretical pressure curve in its plain form: one angle after the other, every rule and
/// every power evaluated anew. The fast form must give the same digits; the benchmark measures the
/// gain.
namespace verenwick::plain {

/// How the iteration ended.
struct Ending {
  int passes{};
  double duration{};
  double ignition{};
  double formFactor{};
  double work{};        ///< of the last pass, J
  double workWanted{};  ///< J
};

inline Ending firingCurve(const CylinderPressureInput& in, std::array<double, 1000>& curve) {
  const double pi = 3.1415927410125732;
  const double gasConstant = 286.7200012207031;
  const bool two = in.nStroke == 2;
  const double tolerance = two ? 0.019999999552965164 : 0.004999999888241291;
  const int size = two ? 360 : 720;

  std::array<double, 721> table{};
  for (int i = 1; i <= size; ++i) {
    const double a = ((i - 1.0) * pi) / 180.0;
    table[static_cast<std::size_t>(i)] =
        (in.bore * in.bore * pi * in.stroke * 0.125) *
        ((1.0 - std::cos(a)) +
         (1.0 / in.lambda) *
             (1.0 - std::sqrt(1.0 - in.lambda * in.lambda * std::sin(a) * std::sin(a))));
  }
  const auto volume = [&](double i) {
    return i >= 1 && i <= size ? table[static_cast<std::size_t>(i)]
                               : std::numeric_limits<double>::quiet_NaN();
  };

  const double pMax = in.pMax + 100000.0;
  const double pComp = in.pComp + 100000.0;
  const double pInlet = in.pInlet;
  double ignition = std::trunc(in.AngleIgnition);
  const double exhaustStart = std::trunc(in.AngleExhaustStart);
  const double inletStart = std::trunc(in.AngleInletStart);
  const double inletClose = std::trunc(in.AngleInletClose);
  const double wanted = ((in.power / in.me) / (in.speed / 60.0)) * (in.nStroke * 0.5);
  const double vc = (in.bore * in.bore * pi * in.stroke) / ((in.compRatio - 1.0) * 4.0);
  const double vb = volume(181);
  double vPrevious = vb;
  double vClose = two ? volume(inletClose + 1) : vb;
  const double n = std::log(pComp / pInlet) / std::log((vClose + vc) / vc);
  const double m = n - (in.speed * 0.05999999865889549) / in.speed;
  double heat = wanted / in.Te;
  double duration = std::trunc(in.AngleEndOfComb) - ignition;
  const double mass = (pInlet * (vb + vc)) / ((in.tCharge + 50.0 + 273.0) * gasConstant);
  double pPrevious = pInlet;
  double formFactor = in.FormFactor;
  double temperature = 0;
  double vr = 0;
  double vx = 0;
  double pe = 0;
  double pe6 = 0;
  double work = 0;
  bool workRight = false;
  int pass = 0;

  const auto burn = [&](int t, double v) {
    double released = 0;
    if (duration > 0.0 && heat > 0.0) {
      double y = (t - ignition) / duration;
      if (y < 0.0)
        y = 0.0;
      const double burnt = std::pow(y, formFactor + 1.0) * 6.900000095367432;
      released =
          (((formFactor + 1.0) * 6.900000095367432 * std::pow(y, formFactor) * std::exp(-burnt)) /
           duration) *
          heat;
    }
    const double cv = temperature * 0.21770000457763672 + 921.0999755859375;
    temperature = temperature + (released - pPrevious * (v - vPrevious)) / (mass * cv);
    return (temperature * gasConstant * mass) / (v + vc);
  };

  while (true) {
    work = 0;
    double px = 0;
    double dp = 0;
    if (two)
      vClose = volume(inletClose + 1);
    for (int t = -180; t < (two ? 180 : 540); ++t) {
      const double v = t > 0 ? volume(t + 1) : volume(two ? t + 360 : t + 361);
      if (t == 1 && !two)
        pe = pe6 = vx = 0;
      double p = 0;
      if (t <= 0) {
        if (two && t < inletClose - 360) {
          p = pInlet;
          vClose = volume(t + 361);
        } else if (t < ignition) {
          p = pInlet * std::pow((vClose + vc) / (v + vc), n);
          temperature = (p * (v + vc)) / (mass * gasConstant);
        } else {
          p = burn(t, v);
        }
        vr = v;
        pe = p;
      } else if (!(t > ignition + duration)) {
        p = burn(t, v);
        pe = p;
        vr = v;
      } else if (!(t > exhaustStart)) {
        p = pe * std::pow((vr + vc) / (v + vc), m);
        dp = -((m * p * std::pow(vr + vc, m)) / std::pow(v + vc, m + 1.0));
        px = (p - pInlet) * 0.4000000059604645 + pInlet;
        vx = v;
        pe6 = p;
      } else if (two && !(t > inletStart)) {
        const double vin = volume(inletStart + 1);
        p = pe6 * 0.5 + pInlet * 0.5 +
            (pe6 - pInlet) * 0.5 * std::cos(((v - vx) * pi) / (vin - vx));
      } else if (two) {
        p = pInlet;
      } else {
        const double outflow =
            px - (px - pInlet) * std::pow(std::abs(vb - v) / vb, 0.16699999570846558);
        if (t <= 180) {
          const double u = std::abs((vb - v) / (vb - vx));
          const double e = (-0.5 - (dp * (vb - vx)) / (pe6 - px)) * u + 0.5;
          p = px + (pe6 - px) * std::pow(u, e);
          const double q = pe * std::pow((vr + vc) / (v + vc), m);
          if (q < p)
            p = q;
          if (std::isnan(p) && pass == 20)
            p = outflow;
        } else {
          p = t <= 360 ? outflow : pInlet;
        }
      }
      work = work + (pPrevious + p) * 0.5 * (v - vPrevious);
      vPrevious = v;
      curve[static_cast<std::size_t>(t + 180)] = p;
      pPrevious = p;
    }

    const auto ending = [&] { return Ending{pass, duration, ignition, formFactor, work, wanted}; };
    if (wanted == 0)
      return ending();
    pass = pass + 1;
    if (pass > 20)
      return ending();
    if (std::abs(work - wanted) / wanted < tolerance)
      workRight = true;
    double excess = work - wanted;
    if (!two && pass > 10)
      excess = (work - wanted) / (pass - 10);
    heat = heat - excess / in.Te;
    if (pass == 1 && !workRight)
      continue;
    double peak = 0;
    for (int i = 0; i < size; ++i) {
      if (curve[static_cast<std::size_t>(i)] > peak)
        peak = curve[static_cast<std::size_t>(i)];
    }
    const double e = peak - pMax;
    bool peakRight = true;
    if (!(std::abs(e) / pMax < tolerance)) {
      peakRight = false;
      formFactor = formFactor + ((e / pMax) * 10.0 * 0.6000000238418579) / pass;
      if (!(formFactor > 0.009999999776482582))
        formFactor = 0.009999999776482582;
      if (pass < 15 && pass > (two ? 5 : 4)) {
        duration = duration * (e / pMax + 1.0);
        if (duration < 5.0)
          duration = 5.0;
        if (ignition + duration < std::abs(ignition))
          ignition = std::trunc(ignition / 2);
      }
    }
    if (workRight && peakRight)
      return ending();
    workRight = false;
  }
}

}  // namespace verenwick::plain
