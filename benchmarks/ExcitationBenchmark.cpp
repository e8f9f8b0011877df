#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <complex>
#include <cstdint>
#include <vector>

#include "ComputationsSrc/CylinderExcitations.h"
#include "ComputationsSrc/DiscreteFourierTransform.h"
#include "Excitation/CrankAngles.h"
#include "Excitation/TheoreticalPressure.h"
#include "benchmarks/PlainPressureCurve.h"
#include "benchmarks/PlainTransform.h"
#include "tests/Excitation/SampleEngines.h"
#include "verenwick.h"

namespace verenwick {
namespace {

/// A firing engine; with a peak pressure out of reach the iteration runs through all its passes.
CylinderPressureInput engine(std::int64_t nStroke, bool runsOut) {
  CylinderPressureInput in = nStroke == 2 ? sample::twoStroke() : sample::fourStroke();
  if (runsOut)
    in.pMax = 4e7;
  return in;
}

void strokesAndEndings(benchmark::internal::Benchmark* b) {
  b->ArgsProduct({{2, 4}, {0, 1}})->ArgNames({"stroke", "runsOut"});
}

void PressureCurve(benchmark::State& state) {
  const CylinderPressureInput in = engine(state.range(0), state.range(1) != 0);
  std::array<double, kPressurePoints> curve{};
  double mip = 0;
  bool status = false;
  while (state.KeepRunning()) {
    CALCULATEDPRESSURE(in, curve, mip, status);
    benchmark::DoNotOptimize(curve);
  }
}
BENCHMARK(PressureCurve)->Apply(strokesAndEndings);

void PressureCurvePlain(benchmark::State& state) {
  const CylinderPressureInput in = engine(state.range(0), state.range(1) != 0);
  std::array<double, kPressurePoints> curve{};
  while (state.KeepRunning()) {
    benchmark::DoNotOptimize(plain::firingCurve(in, curve));
    benchmark::DoNotOptimize(curve);
  }
  std::array<double, kPressurePoints> fast{};
  double mip = 0;
  bool status = false;
  CALCULATEDPRESSURE(in, fast, mip, status);
  if (fast != curve)
    state.SkipWithError("the two forms differ");
}
BENCHMARK(PressureCurvePlain)->Apply(strokesAndEndings);

std::vector<double> curveOf(std::int64_t n) {
  std::vector<double> signal(static_cast<std::size_t>(n));
  for (std::size_t i = 0; i < signal.size(); ++i) signal[i] = std::sin(static_cast<double>(i));
  return signal;
}

void Transform(benchmark::State& state) {
  const std::vector<double> signal = curveOf(state.range(0));
  std::vector<std::complex<double>> coefficients(25);
  while (state.KeepRunning()) {
    DISCRETEFOURIERTRANSFORM(coefficients, signal);
    benchmark::DoNotOptimize(coefficients.data());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(Transform)->Arg(360)->Arg(720);

void TransformPlain(benchmark::State& state) {
  const std::vector<double> signal = curveOf(state.range(0));
  while (state.KeepRunning()) benchmark::DoNotOptimize(plain::transform(25, signal));
}
BENCHMARK(TransformPlain)->Arg(360)->Arg(720);

/// A grid of whole degrees and room for what the calculators fill.
struct Grid {
  std::int32_t nPoints;
  std::vector<double> phi = crankAngles(static_cast<std::size_t>(nPoints));
  std::vector<double> pressure = curveOf(nPoints);
  double lambda = 0.25;

  explicit Grid(std::int64_t n) : nPoints(static_cast<std::int32_t>(n)) {}
};

void PressureToHarmonic(benchmark::State& state) {
  Grid grid(state.range(0));
  const std::int32_t nOrders = 24;
  std::array<double, 24> sine{};
  std::array<double, 24> cosine{};
  while (state.KeepRunning()) {
    std::vector<double> pressure = grid.pressure;
    ::CYLINDERPRESSURETOHARMONIC(&grid.nPoints, &nOrders, pressure.data(), grid.phi.data(),
                                 &grid.lambda, sine.data(), cosine.data());
    benchmark::DoNotOptimize(sine);
  }
}
BENCHMARK(PressureToHarmonic)->Arg(360)->Arg(720);

void PressureToHarmonicPlain(benchmark::State& state) {
  Grid grid(state.range(0));
  while (state.KeepRunning()) {
    std::vector<double> pressure = grid.pressure;
    TANGENTIALFORCEGAS(pressure, grid.phi, grid.lambda);
    benchmark::DoNotOptimize(plain::transform(25, pressure));
  }
}
BENCHMARK(PressureToHarmonicPlain)->Arg(360)->Arg(720);

void OscillatingMass(benchmark::State& state) {
  Grid grid(state.range(0));
  const std::int32_t nFC = 25;
  std::array<double, 50> coefficients{};
  while (state.KeepRunning()) {
    ::OSCILLATINGMASSFOURIERCOEFFICIENTS(&grid.nPoints, &nFC, coefficients.data(), grid.phi.data(),
                                         &grid.lambda);
    benchmark::DoNotOptimize(coefficients);
  }
}
BENCHMARK(OscillatingMass)->Arg(360)->Arg(720);

void OscillatingMassPlain(benchmark::State& state) {
  Grid grid(state.range(0));
  std::vector<double> factor(grid.phi.size());
  while (state.KeepRunning()) {
    TANGENTIALOSCILLATINGMASS(factor, grid.phi, grid.lambda);
    benchmark::DoNotOptimize(plain::transform(25, factor));
  }
}
BENCHMARK(OscillatingMassPlain)->Arg(360)->Arg(720);

// Each point by itself: there is no plainer form.
void TangentialRadialForce(benchmark::State& state) {
  Grid grid(state.range(0));
  const double mass = 100;
  const double reference = 1e5;
  const double speed = 750;
  const double stroke = 0.4;
  const double diameter = 0.32;
  std::array<std::vector<double>, 6> forces;
  forces.fill(std::vector<double>(grid.phi.size()));
  while (state.KeepRunning()) {
    ::CALCULATETANGENTIALRADIALFORCE(
        &mass, &mass, nullptr, &reference, &grid.lambda, &speed, &stroke, &diameter, &grid.nPoints,
        grid.phi.data(), grid.pressure.data(), forces[0].data(), forces[1].data(), forces[2].data(),
        forces[3].data(), forces[4].data(), forces[5].data());
    benchmark::DoNotOptimize(forces);
  }
}
BENCHMARK(TangentialRadialForce)->Arg(360)->Arg(720);

}  // namespace
}  // namespace verenwick
