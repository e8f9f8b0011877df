#include <benchmark/benchmark.h>

#include <complex>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <vector>

#include "ComputationsSrc/Lapack.h"
#include "ForcedVibration/Synthesis.h"
#include "benchmarks/PlainSynthesis.h"
#include "benchmarks/PlantDirectory.h"
#include "benchmarks/ThreeEnginePlant.h"

/// Whole runs on a large plant, and beside them the least that they could take: the same number of
/// bare factorisations and solves, and one sequential write of the same bytes.
namespace verenwick {
namespace {

using plant::PlantDirectory;

void WholeRun(benchmark::State& state) {
  const PlantDirectory plant(plant::ThreeEnginePlant().text());
  while (state.KeepRunning()) {
    if (!plant.run()) {
      state.SkipWithError("the plant was not accepted");
    }
  }
  state.counters["bytes"] = static_cast<double>(plant.bytes());
}
BENCHMARK(WholeRun)->Unit(benchmark::kMillisecond)->UseRealTime();

void BareFactorisationsAndSolves(benchmark::State& state) {
  constexpr std::int32_t N = plant::kInertias;
  constexpr auto kOrder = static_cast<std::size_t>(N);
  constexpr std::int32_t kOne = 1;
  // A chain as the solver meets it: a full array, most of it zero.
  std::vector<std::complex<double>> system(kOrder * kOrder);
  for (std::size_t i = 0; i < kOrder; ++i) {
    system[i * kOrder + i] = {1e8 - 1e5 * static_cast<double>(i), 1e6};
    if (i > 0) {
      system[i * kOrder + i - 1] = system[(i - 1) * kOrder + i] = {-5e7, -5e5};
    }
  }
  std::vector<std::complex<double>> A(system.size());
  std::vector<std::complex<double>> F(kOrder);
  std::vector<std::int32_t> pivots(kOrder);
  while (state.KeepRunning()) {
    for (int n = 0; n < plant::kLoadCases * plant::kSolvesPerLoadCase; ++n) {
      A = system;
      F.assign(kOrder, 1.0);
      std::int32_t info = 0;
      lapack::zgetrf_(N, N, A.data(), N, pivots.data(), info);
      lapack::zgetrs_("N", N, kOne, A.data(), N, pivots.data(), F.data(), N, info);
      benchmark::DoNotOptimize(F.data());
    }
  }
}
BENCHMARK(BareFactorisationsAndSolves)->Unit(benchmark::kMillisecond)->UseRealTime();

void SequentialWrite(benchmark::State& state) {
  const PlantDirectory plant(plant::ThreeEnginePlant().text());
  plant.run();
  const auto bytes = static_cast<std::size_t>(plant.bytes());
  const std::filesystem::path path = plant.results() / "sequential.bin";
  const std::vector<char> piece(1 << 20, 'x');
  while (state.KeepRunning()) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    for (std::size_t written = 0; written < bytes; written += piece.size()) {
      file.write(piece.data(),
                 static_cast<std::streamsize>(std::min(piece.size(), bytes - written)));
    }
    file.close();
  }
  state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(SequentialWrite)->Unit(benchmark::kMillisecond)->UseRealTime();

constexpr double kBase = 23.7;

void Synthesis(benchmark::State& state) {
  const LoadCaseResults results = plain::sampleResults(plant::kInertias, 3);
  const PhaseTable phases(results, kBase);
  std::vector<double> amplitudes(static_cast<std::size_t>(plant::kInertias));
  Waveforms waveforms;
  while (state.KeepRunning()) {
    SINGLELOADCASESYNTHESIS(results, Quantity::deflection, &phases, PropellerPhase::unknown,
                            amplitudes, waveforms, false);
    benchmark::DoNotOptimize(amplitudes.data());
  }
}
BENCHMARK(Synthesis)->Unit(benchmark::kMillisecond);

void SynthesisPlain(benchmark::State& state) {
  const LoadCaseResults results = plain::sampleResults(plant::kInertias, 3);
  std::vector<double> amplitudes(static_cast<std::size_t>(plant::kInertias));
  while (state.KeepRunning()) {
    plain::synthesis(results, Quantity::deflection, kBase, amplitudes);
    benchmark::DoNotOptimize(amplitudes.data());
  }
  const PhaseTable phases(results, kBase);
  std::vector<double> fast(amplitudes.size());
  Waveforms waveforms;
  SINGLELOADCASESYNTHESIS(results, Quantity::deflection, &phases, PropellerPhase::unknown, fast,
                          waveforms, false);
  if (fast != amplitudes) {
    state.SkipWithError("the two forms differ");
  }
}
BENCHMARK(SynthesisPlain)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace verenwick
