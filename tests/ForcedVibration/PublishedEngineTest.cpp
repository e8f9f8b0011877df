#include <gtest/gtest.h>

#include <array>
#include <complex>
#include <numbers>

#include "ComputationsSrc/ForcedDampedVibrationsFc.h"
#include "ForcedVibration/ShaftResults.h"
#include "FreeVibration/Lines.h"
#include "Matrices/MassStffnessAndDampingMatrix.h"
#include "Support/ReadModel.h"

namespace verenwick::test {
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

/// The line is published, the torques are those of an independent calculation. Its orders are
/// multiples of 0.499, from a period of 499 intervals.
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

TEST(PublishedEngine, ShaftTorquesOfAllOrders) {
  ReadModel read(kSixCylinderLine);
  ASSERT_TRUE(read.isOk()) << read.log();
  MASSANDSHAFTTABLEPREPARATION(false, read.model, 1);
  ShaftLineMatrices system;
  BUILDMASSSTIFFNESSANDDAMPINGMATRIX(false, read.model, 1.0, system);
  // Cylinders 1 to 6 fire as number 2, 6, 4, 7, 3 and 5, each 120 degrees of crank apart.
  std::vector<double> EXFO;
  std::vector<double> FORE;
  std::vector<double> FOIM;
  std::vector<double> phase;
  std::vector<std::int32_t> dof;
  for (const int firing : {2, 6, 4, 7, 3, 5}) {
    dof.push_back(static_cast<std::int32_t>(dof.size()) + 3);
    phase.push_back(-2 * pi / 3 * firing);
    for (const PublishedOrder& order : kPublished) {
      const auto half = std::polar(0.5 * order.torque, order.phase);
      FORE.push_back(half.real());
      FOIM.push_back(half.imag());
    }
  }
  FamilyResults results;
  results.points = {9, 8};
  results.sources = 1;
  results.orders = static_cast<std::int32_t>(kPublished.size());
  results.clear();
  for (std::int32_t k = 1; k <= results.orders; ++k) {
    EXFO.push_back(kOrderStep * k);
  }
  const SourceResults source = results.source(1);
  const ComplexSection& deflection = source.of(Quantity::deflection);
  const ComplexSection& torque = source.of(Quantity::torque);
  FORCEDDAMPEDVIBRATIONSFC({system.N, system.ROWIND, system.COLIND, system.K, system.M, system.CR,
                            system.CRR, system.CA, system.CAR},
                           {}, 2000 * pi / 30, {EXFO, FORE, FOIM, phase, dof},
                           {deflection.AMP, deflection.ANGLE, deflection.RE, deflection.IM});
  SINGLELOADCASESHAFTTORQUE(read.model, EXFO, deflection, torque);
  for (std::size_t k = 0; k < kPublished.size(); ++k) {
    const auto& [cylinder, angle, first, last] = kPublished[k];
    EXPECT_NEAR(torque.AMP[k * 8], first, 1e-5 * first) << "order " << EXFO[k];
    EXPECT_NEAR(torque.AMP[k * 8 + 7], last, 1e-5 * last) << "order " << EXFO[k];
  }
}

}  // namespace
}  // namespace verenwick::test
