#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "Excitation/CrankAngles.h"
#include "Excitation/CylinderPressureToHarmonic.h"
#include "Excitation/GasMassForceReport.h"
#include "Excitation/SampleEngines.h"
#include "RunControl/Global_Parameter.h"
#include "Support/SolverRun.h"
#include "include/verenwick.h"

namespace verenwick {
namespace {

std::vector<double> exportedCurve(std::int32_t misfire) {
  const CylinderPressureInput in = sample::fourStroke();
  std::vector<double> curve(kPressurePoints, -7);
  double mip = 0;
  ::THEORETICALCYLINDERPRESSURE(
      &in.power, &in.speed, &misfire, &in.nStroke, &in.bore, &in.stroke, &in.lambda, &in.compRatio,
      &in.pInlet, &in.tCharge, &in.speed, &in.power, &in.pMax, &in.pComp, &in.CompExp, &in.ExpaExp,
      &in.Te, &in.me, &in.FormFactor, &in.AngleIgnition, &in.AngleEndOfComb, &in.AngleExhaustStart,
      &in.AngleInletStart, &in.AngleInletClose, curve.data(), &mip);
  return curve;
}

TEST(TheoreticalCylinderPressure, TheLowestBitOfALogicalDecides) {
  EXPECT_NE(exportedCurve(1), exportedCurve(0));
  EXPECT_EQ(exportedCurve(1), exportedCurve(-1));
  EXPECT_EQ(exportedCurve(0), exportedCurve(2));
}

TEST(HarmonicToCylinderPressure, DividesWhatTheInverseTransformGathers) {
  auto phi = crankAngles(360);
  for (double& angle : phi) angle += 0.5;
  phi[1] = 0;  // a dead centre takes the finished neighbour once more through
  std::vector<double> pressure(360, 1.0);
  // The first element is the sum of the first harmonic's terms, the second is of the next one.
  HARMONICTOCYLINDERPRESSURE(pressure, phi, 0.25, std::vector{0.0, 0.0}, std::vector{0.7, 0.0});
  const double beta = std::asin(0.25 * std::sin(0.5));
  const double factor = std::sin(0.5 + beta) / std::cos(beta);
  EXPECT_NEAR(pressure[0], 360 * static_cast<double>(0.35F) * 2 / factor, 1e-9);
  EXPECT_NEAR(pressure[1], pressure[0] / factor, 1e-9);
}

TEST(Calculators, TakeAnyCountAndAnyMissingArgument) {
  const double lambda = 0.25;
  const auto phi = crankAngles(8);
  const std::int32_t two = 2, eight = 8;
  double force = 5;
  for (const std::int32_t none : {0, std::numeric_limits<std::int32_t>::min()}) {
    std::array<double, 3> sine{5, 5, 5}, cosine = sine;
    std::array<double, 5> coefficients{5, 5, 5, 5, 5};
    std::array<double, 8> curve{4, 4, 4, 4, 4, 4, 4, 4};
    ::CYLINDERPRESSURETOHARMONIC(&none, &two, curve.data(), phi.data(), &lambda, sine.data(),
                                 cosine.data());
    EXPECT_EQ(sine, (std::array<double, 3>{0, 0, 5})) << "no points have no harmonics";
    EXPECT_EQ(cosine, sine);
    ::OSCILLATINGMASSFOURIERCOEFFICIENTS(&eight, &none, coefficients.data(), phi.data(), &lambda);
    EXPECT_EQ(coefficients[0], 5);
    ::OSCILLATINGMASSFOURIERCOEFFICIENTS(&none, &two, coefficients.data(), phi.data(), &lambda);
    EXPECT_EQ(coefficients, (std::array<double, 5>{0, 0, 0, 0, 5}));
    ::CYLINDERPRESSURETOHARMONIC(&eight, &none, curve.data(), phi.data(), &lambda, sine.data(),
                                 cosine.data());
    EXPECT_EQ(sine[2], 5);
    EXPECT_NEAR(curve[4], 4 * (1 + lambda * std::cos(phi[4])) * std::sin(phi[4]), 4e-3)
        << "the tangential curve is left even without orders";
    const double one = 1;
    ::CALCULATETANGENTIALRADIALFORCE(&one, &one, nullptr, &one, &lambda, &one, &one, &one, &none,
                                     phi.data(), phi.data(), &force, &force, &force, &force, &force,
                                     &force);
  }

  ::CYLINDERPRESSURETOHARMONIC(nullptr, nullptr, nullptr, nullptr, nullptr, &force, nullptr);
  ::OSCILLATINGMASSFOURIERCOEFFICIENTS(nullptr, nullptr, &force, nullptr, nullptr);
  ::CALCULATETANGENTIALRADIALFORCE(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                   nullptr, nullptr, nullptr, nullptr, &force, nullptr, nullptr,
                                   nullptr, nullptr, nullptr);
  ::THEORETICALCYLINDERPRESSURE(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr, &force);
  EXPECT_EQ(force, 5) << "as it was";
}

TEST(GasMassForceReport, StandsInTheResultDirectoryWhenAsked) {
  static_assert(!kWritesGasMassForceReport);
  const test::TemporaryDirectory directory;
  std::string name = directory.path().string();
  SETRESULTFILEDIR(name, static_cast<std::int32_t>(name.size()));
  const std::vector<double> pressure{3e6, 2.5};
  std::array<std::vector<double>, 6> forces{
      {{0, 0.5}, {1, 1.5}, {2, 2.5}, {3, 3.5}, {4, 4.5}, {5, 5.5}}};
  writeGasMassForceReport({300, 500, 1e5, 0.25, 120, 2, 0.5}, pressure,
                          {forces[0], forces[1], forces[2], forces[3], forces[4], forces[5]});
  const std::string rule = " " + std::string(112, '-') + "\n";
  EXPECT_EQ(test::readText(directory.file("GasMassForce.txt")),
            " ConnectingRodRatio(-)           0.25\n LengthofStroke(m)               2\n"
            " CylinderDiameter(m)             0.5\n EngineSpeed(rpm)               120\n"
            " RatatingMassofConnectingRod(kg) 300\n ReciprocatingMass(kg)           500\n" +
                rule +
                " Angle(deg)  CylinderPressure(Pa)           tangentialGasForce(Pa)      "
                "radialGasForce(Pa)     tangentialMassForce(Pa)    radialMassForce(Pa)\n"
                " -180 3e+06 2 5 1 4\n -179 2.5 2.5 5.5 1.5 4.5\n" +
                rule);
}

}  // namespace
}  // namespace verenwick
