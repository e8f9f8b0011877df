#include <benchmark/benchmark.h>

#include <cstdint>
#include <sstream>
#include <string>

#include "benchmarks/PlantDirectory.h"

/// Whole runs on a plain chain of inertias, one of its sizes at a time growing.
namespace verenwick::plant {
namespace {

/// Input text of a chain: four-stroke engines of six cylinders each at its head, motors with the
/// same number of orders behind them, a generator that takes the power at its end.
std::string chain(std::int64_t inertias, std::int64_t engines, std::int64_t motors,
                  std::int64_t motorOrders, std::int64_t loadCases) {
  std::ostringstream input;
  for (std::int64_t i = 1; i <= inertias; ++i) {
    input << "INERTIA " << i << " 1.0 " << (i == inertias ? 900 : 26) << " 0.0 0.0\n";
  }
  for (std::int64_t i = 1; i < inertias; ++i) {
    input << "SHAFT " << i << ' ' << i << ' ' << i + 1 << " 1.0 7.6e7 0.0 80.0 300.0 0.0 0 0\n";
  }
  for (std::int64_t e = 0; e < engines; ++e) {
    input << "DIESEL " << e + 1 << " Engine\n3000 750.0 4 6 0.0 0 0.0 0 1.15\n";
    for (std::int64_t c = 1; c <= 6; ++c) {
      input << 6 * e + c << ' ';
    }
    input << "\n0.0 480.0 240.0 600.0 120.0 360.0\n0.0 0.0 0.0 0.0 0.0 0.0\n1 1 1 1 1 1\n"
             "0 0 0 0 0 0\n100.0 100.0 100.0 100.0 100.0 100.0\n"
             "100.0 100.0 100.0 100.0 100.0 100.0\n"
             "320.0 400.0 0.238 105.0 91.0 1 0 0\n200.0 160.0 1.36 1.28 15.0 4.5 50.0\n"
             "45.0 0.8 -5.0 60.0 125.0 0.0 0.0\n";
  }
  for (std::int64_t m = 1; m <= motors; ++m) {
    input << "ELECTRICMOTOR " << m << '\n'
          << 6 * engines + m << " 200.0 750.0 0 0.0 " << motorOrders
          << "\n1.0 2.0 6.0 12.0\n1.0 0.5 2.0 1.0\n";
  }
  input << "GENERATOR 1\n" << inertias << " 20000.0 750.0 1\n1.0 0.0 0.0 0.0\n0.5 0.0 0.0 0.0\n";
  input << "LOADCASE\nRPM";
  std::string kinds;
  std::string powers;
  const auto column = [&](const std::string& kind, std::int64_t id, double power) {
    input << ' ' << id;
    kinds += kind + ' ';
    powers += ' ' + std::to_string(power);
  };
  for (std::int64_t e = 1; e <= engines; ++e) {
    column("DIESEL", e, 2400.0);
  }
  for (std::int64_t m = 1; m <= motors; ++m) {
    column("ELECTRICMOTOR", m, 160.0);
  }
  column("GENERATOR", 1,
         2400.0 * static_cast<double>(engines) + 160.0 * static_cast<double>(motors));
  input << '\n' << kinds << '\n';
  for (std::int64_t L = 1; L <= loadCases; ++L) {
    input << 400.0 + 350.0 * static_cast<double>(L) / static_cast<double>(loadCases) << powers
          << '\n';
  }
  return input.str();
}

void Growth(benchmark::State& state) {
  const PlantDirectory plant(
      chain(state.range(0), state.range(1), state.range(2), state.range(3), state.range(4)));
  while (state.KeepRunning()) {
    if (!plant.run()) {
      state.SkipWithError("the plant was not accepted");
      break;
    }
  }
  state.counters["MB"] = static_cast<double>(plant.bytes()) * 1e-6;
}
BENCHMARK(Growth)
    ->Unit(benchmark::kMillisecond)
    ->ArgNames({"inertias", "engines", "motors", "orders", "cases"})
    // inertias
    ->Args({10, 1, 0, 1, 20})
    ->Args({20, 1, 0, 1, 20})
    ->Args({50, 1, 0, 1, 20})
    ->Args({100, 1, 0, 1, 20})
    ->Args({200, 1, 0, 1, 20})
    ->Args({400, 1, 0, 1, 20})
    // sources
    ->Args({100, 2, 0, 1, 20})
    ->Args({100, 4, 0, 1, 20})
    ->Args({100, 8, 0, 1, 20})
    ->Args({100, 16, 0, 1, 20})
    // orders of eight motors
    ->Args({100, 0, 8, 1, 20})
    ->Args({100, 0, 8, 2, 20})
    ->Args({100, 0, 8, 3, 20})
    ->Args({100, 0, 8, 4, 20})
    // load cases
    ->Args({100, 1, 0, 1, 10})
    ->Args({100, 1, 0, 1, 40})
    ->Args({100, 1, 0, 1, 80})
    ->Args({100, 1, 0, 1, 160});

}  // namespace
}  // namespace verenwick::plant
