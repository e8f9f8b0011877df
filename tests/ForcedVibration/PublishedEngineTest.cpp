#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>

#include "ComponentTables/ModelBundle.h"
#include "ComputationsSrc/ForcedDampedVibrationsFc.h"
#include "ForcedVibration/ShaftResults.h"
#include "Matrices/MassStffnessAndDampingMatrix.h"

namespace verenwick {
namespace {

using std::numbers::pi;

/// One order of the engine at 2000 rpm: torque of a cylinder, N m and rad, and the amplitude of the
/// elastic torque in the first and the last shaft, N m.
struct PublishedOrder {
  double torque;
  double phase;
  double firstShaft;
  double lastShaft;
};

/// Six-cylinder four-stroke engine of Mendes, Meirelles and Zampieri (Proc. IMechE Part K, 2008):
/// inertias, stiffness and damping are theirs, the torques those of an independent calculation. Its
/// orders are multiples of 0.499, from a period of 499 intervals.
constexpr double kOrderStep = 0.499;
constexpr std::array<PublishedOrder, 24> kPublished = {{
    {423.10344, 2.3718328, 0.24004254, 3.0947029}, {713.45429, -1.3183851, 0.078201339, 12.198887},
    {531.78331, 1.6460538, 5.750923, 48.57444},    {233.43967, -1.6908734, 0.037077434, 9.8529607},
    {399.10179, 1.4651638, 5.6614825, 72.902023},  {209.6187, -1.8482031, 11.677019, 1339.1869},
    {275.83498, 1.3649739, 8.3652806, 49.220547},  {211.97848, -1.8459103, 0.92750847, 39.900043},
    {181.60759, 1.2887007, 31.063282, 280.80251},  {151.31285, -1.8857323, 3.6093841, 66.492717},
    {117.30794, 1.2075365, 24.572536, 249.65562},  {93.430375, -1.9492047, 190.4629, 2451.3496},
    {71.422573, 1.1683532, 71.78822, 716.87961},   {55.778508, -1.9567953, 10.899168, 81.868517},
    {43.539415, 1.1806937, 29.948317, 320.17834},  {34.979488, -1.9512274, 4.7778379, 27.232762},
    {26.29231, 1.1468054, 5.2380513, 54.210013},   {21.610359, -2.0154564, 21.472739, 62.008588},
    {16.090983, 1.0016685, 1.1148082, 22.446123},  {13.224055, -2.2577441, 1.8168233, 1.8248834},
    {10.153697, 0.75003442, 2.1538733, 35.322274}, {9.0935914, -2.4705858, 1.53729, 2.2276966},
    {7.329184, 0.52445303, 0.70530229, 10.048461}, {6.0267354, -2.635207, 5.2389957, 2.3438226},
}};

/// The engine with the loss factor 0.035 of every shaft as its dynamic magnifier.
ModelBundle engine() {
  constexpr std::array inertias = {0.017,  0.009,  0.0467, 0.0327, 0.0467,
                                   0.0467, 0.0327, 0.0487, 2.075};
  constexpr std::array stiffness = {1106000.0, 1631000.0, 1253000.0, 1253000.0,
                                    1678000.0, 1253000.0, 1253000.0, 1976000.0};
  ModelBundle model;
  ALLOCATE_MASS_TABLE(model.mass, static_cast<std::int32_t>(inertias.size()));
  for (std::int32_t i = 1; i <= model.mass.number(); ++i) {
    SET_MASS_ID(model.mass, i, i);
    SET_MASS_INERTIA(model.mass, i, inertias[static_cast<std::size_t>(i) - 1]);
    SET_MASS_ABSDAMPING(model.mass, i, i >= 3 && i <= 8 ? 2.0 : 0.0);
  }
  ALLOCATE_SHAFT_TABLE(model.shaft, static_cast<std::int32_t>(stiffness.size()));
  for (std::int32_t s = 1; s <= model.shaft.number(); ++s) {
    SET_SHAFT_ID(model.shaft, s, s);
    SET_SHAFT_ORGNODE(model.shaft, s, s);
    SET_SHAFT_DESNODE(model.shaft, s, s + 1);
    SET_SHAFT_STIFFNESS(model.shaft, s, stiffness[static_cast<std::size_t>(s) - 1]);
    SET_SHAFT_DYNMAGNIFIER(model.shaft, s, 1 / 0.035);
  }
  return model;
}

TEST(PublishedEngine, ShaftTorquesOfAllOrders) {
  ModelBundle model = engine();
  MASSANDSHAFTTABLEPREPARATION(false, model, 1);
  ShaftLineMatrices system;
  BUILDMASSSTIFFNESSANDDAMPINGMATRIX(false, model, 1.0, system);
  // Cylinders 1 to 6 fire as number 2, 6, 4, 7, 3 and 5, each 120 degrees of crank apart.
  constexpr std::array firing = {2, 6, 4, 7, 3, 5};
  std::vector<double> EXFO;
  std::vector<double> FORE;
  std::vector<double> FOIM;
  std::vector<double> phase;
  std::vector<std::int32_t> dof;
  for (std::int32_t cylinder = 1; cylinder <= 6; ++cylinder) {
    dof.push_back(cylinder + 2);
    phase.push_back(-2 * pi / 3 * firing[static_cast<std::size_t>(cylinder) - 1]);
    for (const PublishedOrder& order : kPublished) {
      FORE.push_back(0.5 * order.torque * std::cos(order.phase));
      FOIM.push_back(0.5 * order.torque * std::sin(order.phase));
    }
  }
  for (std::size_t k = 1; k <= kPublished.size(); ++k) {
    EXFO.push_back(kOrderStep * static_cast<double>(k));
  }
  FamilyResults results;
  results.points = {model.mass.number(), model.shaft.number()};
  results.sources = 1;
  results.orders = static_cast<std::int32_t>(kPublished.size());
  results.clear();
  const SourceResults source = results.source(1);
  const ComplexSection& deflection = source.of(Quantity::deflection);
  const ComplexSection& torque = source.of(Quantity::torque);
  FORCEDDAMPEDVIBRATIONSFC({system.N, system.ROWIND, system.COLIND, system.K, system.M, system.CR,
                            system.CRR, system.CA, system.CAR},
                           {}, 2000 * pi / 30, {EXFO, FORE, FOIM, phase, dof},
                           {deflection.AMP, deflection.ANGLE, deflection.RE, deflection.IM});
  SINGLELOADCASESHAFTTORQUE(model, EXFO, deflection, torque);
  const std::size_t shafts = static_cast<std::size_t>(model.shaft.number());
  for (std::size_t k = 0; k < kPublished.size(); ++k) {
    EXPECT_NEAR(torque.AMP[k * shafts], kPublished[k].firstShaft, 1e-5 * kPublished[k].firstShaft)
        << "order " << EXFO[k];
    EXPECT_NEAR(torque.AMP[k * shafts + shafts - 1], kPublished[k].lastShaft,
                1e-5 * kPublished[k].lastShaft)
        << "order " << EXFO[k];
  }
}

}  // namespace
}  // namespace verenwick
