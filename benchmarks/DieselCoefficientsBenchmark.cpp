// The coefficients of a V16 engine at one load case: each cylinder by itself, against the engine as
// a whole, which computes its mass factor once and a pressure curve once for cylinders at equal
// inputs.

#include <benchmark/benchmark.h>

#include "ComponentTables/Global_Diesel.h"
#include "RunControl/Constants.h"

namespace verenwick {
namespace {

/// A V16 of 320 mm bore, 8000 kW at 750 rpm, at 85 % load.
DIESEL_TABLE v16(bool hasPartialFiring) {
  DIESEL_TABLE table;
  ALLOCATE_DIESEL_TABLE(table, 1);
  DIESEL_RECORD& d = table.at(1);
  d.NSTROKE = 4;
  d.NCYLINDER = 8;
  d.ISVENGINE = true;
  d.VANGLE = 50.0;
  d.MCRPOWER = 8000e3;
  d.MCRSPEED = 750.0;
  d.MCRTORQUE = d.MCRPOWER / angularSpeed(d.MCRSPEED);
  d.MIPLIMIT = 1.15;
  d.BORE = 0.32;
  d.STROKE = 0.4;
  d.CONRODRATIO = 0.238;
  d.RECIPMASS = 105.0;
  d.ME = 0.91;
  d.ISTHEORETICALPRESURE = true;
  d.PMAX = 200e5;
  d.PCOMP = 160e5;
  d.COMPRATIO = 15.0;
  d.PCHARGEAIR = 4.5e5;
  d.TCHARGEAIR = 50.0;
  d.TE = 0.45;
  d.FORMFACTOR = 0.8;
  d.ANGLEIGNITION = -5.0;
  d.ANGLEENDOFCOMB = 60.0;
  d.ANGLEEXHAUSTSTART = 125.0;
  d.FIRINGSTATUSA.fill(normalFiring);
  d.FIRINGSTATUSB.fill(normalFiring);
  d.FIRINGPERCENTA.fill(60.0);
  d.FIRINGPERCENTB.fill(60.0);
  if (hasPartialFiring) {
    d.FIRINGSTATUSA[2] = partialFiring;
    d.HASPARTIALFIRING = true;
  }
  d.SPEED = 750.0;
  d.POWER = 0.85 * d.MCRPOWER;
  d.POWERPERCYL = d.POWER / GET_DIESEL_NFIRINGCYLINDER(table, 1);
  CALCULATE_DIESEL_TORQUE(table, 1);
  CALCULATE_DIESEL_LOADPERCENTAGE(table, 1);
  return table;
}

const LOADCASEGENSET_TABLE kNoGenset;

void everyCylinder(DIESEL_TABLE& table) {
  for (std::int32_t row = 1; row <= GET_DIESEL_NCYLINDER(table, 1); ++row) {
    CALCULATE_DIESEL_FOURIERCOEFFICIENT(table, 1, kNoGenset, row, true);
    CALCULATE_DIESEL_FOURIERCOEFFICIENT(table, 1, kNoGenset, row, false);
  }
}

void wholeEngine(DIESEL_TABLE& table) { CALCULATE_DIESEL_FOURIERCOEFFICIENTS(table, 1, kNoGenset); }

/// Whether both ways store the same digits.
bool agree(const DIESEL_TABLE& engine) {
  DIESEL_TABLE a = engine;
  DIESEL_TABLE b = engine;
  everyCylinder(a);
  wholeEngine(b);
  return a.at(1).MASSFC == b.at(1).MASSFC && a.at(1).GASFCPERCYLINDER == b.at(1).GASFCPERCYLINDER;
}

void run(benchmark::State& state, void (*compute)(DIESEL_TABLE&)) {
  DIESEL_TABLE table = v16(state.range(0) != 0);
  if (!agree(table)) {
    state.SkipWithError("the two ways differ");
  }
  for ([[maybe_unused]] auto iteration : state) {
    compute(table);
    benchmark::DoNotOptimize(table.at(1).GASFCPERCYLINDER.data());
  }
  state.SetLabel(state.range(0) != 0 ? "one cylinder fires partially" : "all cylinders alike");
}

void EveryCylinder(benchmark::State& state) { run(state, everyCylinder); }
void WholeEngine(benchmark::State& state) { run(state, wholeEngine); }

BENCHMARK(EveryCylinder)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
BENCHMARK(WholeEngine)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace verenwick
