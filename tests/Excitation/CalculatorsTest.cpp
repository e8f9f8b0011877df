#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <complex>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "ComputationsSrc/CylinderExcitations.h"
#include "Excitation/CrankAngles.h"
#include "Excitation/CylinderPressureToHarmonic.h"
#include "Excitation/Engine_functions.h"
#include "Excitation/GasMassForceReport.h"
#include "Excitation/SampleEngines.h"
#include "Excitation/TheoreticalCylinderPressure.h"
#include "RunControl/Constants.h"
#include "RunControl/Global_Parameter.h"
#include "Support/SolverRun.h"
#include "include/verenwick.h"

namespace verenwick {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Calls the exported pressure curve; the pressures of the input are the rated ones.
void exportedCurve(double ratedPower, double ratedSpeed, const CylinderPressureInput& in,
                   std::int32_t misfire, std::vector<double>& curve, double& mip) {
  ::THEORETICALCYLINDERPRESSURE(&ratedPower, &ratedSpeed, &misfire, &in.nStroke, &in.bore,
                                &in.stroke, &in.lambda, &in.compRatio, &in.pInlet, &in.tCharge,
                                &in.speed, &in.power, &in.pMax, &in.pComp, &in.CompExp, &in.ExpaExp,
                                &in.Te, &in.me, &in.FormFactor, &in.AngleIgnition,
                                &in.AngleEndOfComb, &in.AngleExhaustStart, &in.AngleInletStart,
                                &in.AngleInletClose, curve.data(), &mip);
}

std::vector<double> directCurve(const CylinderPressureInput& in) {
  std::vector<double> curve(kPressurePoints, -7);
  double mip = 0;
  bool status = false;
  CALCULATEDPRESSURE(in, std::span<double, kPressurePoints>(curve), mip, status);
  return curve;
}

TEST(TheoreticalCylinderPressure, TakesRatedPressuresAtRatedSpeedOnly) {
  std::vector<double> curve(kPressurePoints, -7);
  double mip = 0;
  for (const CylinderPressureInput& rated : {sample::twoStroke(), sample::fourStroke()}) {
    for (const auto& [speed, torque] :
         {std::pair{1.0, 0.5}, {std::sqrt(0.1), 0.1}, {0.9, 0.85}, {1.05, 0.85}}) {
      CylinderPressureInput in = rated;
      in.speed *= speed;
      in.power *= speed * torque;
      exportedCurve(rated.power, rated.speed, in, 0, curve, mip);
      EXPECT_DOUBLE_EQ(mip,
                       CALCULATE_MEP(in.power, in.speed, in.bore, in.nStroke, in.stroke) / in.me);
      if (speed != 1.0) {
        // The peak is held above the rated compression pressure.
        in.pMax = CALCULATE_PMAX(rated.power, rated.speed, in.power, in.speed, rated.pMax,
                                 rated.pComp, in.nStroke);
        in.pComp = CALCULATE_PCOMP(rated.power, rated.speed, in.power, in.speed, rated.pComp);
        in.pInlet = CALCULATE_PINLET(rated.power, rated.speed, in.power, in.speed, rated.pInlet,
                                     in.nStroke);
        EXPECT_LT(in.pComp, rated.pComp);
      }
      EXPECT_EQ(curve, directCurve(in)) << speed << " of the speed";
    }
  }
  // The lowest bit of a logical decides.
  const CylinderPressureInput in = sample::fourStroke();
  CylinderPressureInput misfiring = in;
  misfiring.misfire = true;
  for (const std::int32_t misfire : {-1, 1, 0, 2}) {
    exportedCurve(in.power, in.speed, in, misfire, curve, mip);
    EXPECT_EQ(curve, directCurve(misfire % 2 == 0 ? in : misfiring)) << misfire;
  }
}

TEST(HarmonicToCylinderPressure, DividesWhatTheInverseTransformGathers) {
  auto phi = crankAngles(360);
  const double lambda = 0.25;
  std::vector<double> pressure(360, 1.0);
  const std::vector<double> sine{0.0, 0.0, kNaN};
  const std::vector<double> cosine{0.7, 0.0, 0.0};
  HARMONICTOCYLINDERPRESSURE(pressure, phi, lambda, sine, cosine);
  EXPECT_EQ(pressure[0], 0.0) << "no tangential part at top dead centre: the neighbour's value";
  EXPECT_TRUE(std::isnan(pressure[2]));
  EXPECT_EQ(pressure[3], 0.0);

  // Away from top dead centre the first element is the sum of the first harmonic's terms.
  for (double& angle : phi) angle += 0.5;
  phi[1] = 0;  // a dead centre in the middle takes the finished neighbour once more through
  HARMONICTOCYLINDERPRESSURE(pressure, phi, lambda, sine, cosine);
  const double beta = std::asin(lambda * std::sin(0.5));
  const double factor = std::sin(0.5 + beta) / std::cos(beta);
  EXPECT_NEAR(pressure[0], 360 * static_cast<double>(0.35F) * 2 / factor, 1e-9);
  EXPECT_NEAR(pressure[1], pressure[0] / factor, 1e-9);

  for (const std::size_t n : {100U, 1U}) {
    std::vector<double> other(n, 1.0);
    HARMONICTOCYLINDERPRESSURE(other, std::span(phi).first(n), lambda, sine, cosine);
    EXPECT_EQ(other, std::vector<double>(n)) << "neither one revolution nor two";
  }
}

/// Forces on the crank pin by a steady 30 bar: 500 kg reciprocating, 300 kg rotating, 120 rpm.
std::array<std::vector<double>, 6> forcesOf(std::int32_t nPoints) {
  const double rotatingMass = 300, recipMass = 500, referencePressure = 1e5, lambda = 0.25;
  const double speed = 120, stroke = 2.0, diameter = 0.5;
  const std::vector<double> phi = crankAngles(360);
  const std::vector<double> pressure(360, 3e6);
  std::array<std::vector<double>, 6> out;
  out.fill(std::vector<double>(360, -7));
  ::CALCULATETANGENTIALRADIALFORCE(&rotatingMass, &recipMass, nullptr, &referencePressure, &lambda,
                                   &speed, &stroke, &diameter, &nPoints, phi.data(),
                                   pressure.data(), out[0].data(), out[1].data(), out[2].data(),
                                   out[3].data(), out[4].data(), out[5].data());
  return out;
}

TEST(TangentialRadialForce, ForcesAreThoseOfTheCrankDrive) {
  const auto [tangential, tangentialMass, tangentialGas, radial, radialMass, radialGas] =
      forcesOf(360);
  const auto phi = crankAngles(360);
  const double area = kPi / 4 * 0.25;
  const double centrifugal = std::pow(120 * kPi / 30, 2) * 1.0;  // crank radius 1 m
  // Top dead centre: gas pushes to the shaft, inertia and rotating mass pull away from it. Bottom
  // dead centre: the other way round for the piston.
  EXPECT_EQ(tangential[0], 0.0);
  EXPECT_NEAR(radialGas[0], 2.9e6 * area, 1e-6);
  EXPECT_NEAR(radialMass[0], -centrifugal * (500 * 1.25 + 300), 1e-6);
  EXPECT_NEAR(radialGas[180], -2.9e6 * area, 1e-6);
  EXPECT_NEAR(radialMass[180], -centrifugal * (500 * (1 - 0.25) + 300), 1e-6);
  double gasWork = 0;
  for (std::size_t i = 0; i < 360; ++i) {
    EXPECT_DOUBLE_EQ(tangential[i], tangentialGas[i] + tangentialMass[i]);
    EXPECT_DOUBLE_EQ(radial[i], radialGas[i] + radialMass[i]);
    gasWork += i < 180 ? tangentialGas[i] * kPi / 180 : 0.0;
    // Both parts of a force make up one along the rod.
    const double rod = 2.9e6 * area / std::cos(std::asin(0.25 * std::sin(phi[i])));
    EXPECT_NEAR(std::hypot(tangentialGas[i], radialGas[i]), rod, 1e-6);
    EXPECT_NEAR(tangentialMass[i] * radialGas[i] / rod,
                (radialMass[i] + centrifugal * 300) * tangentialGas[i] / rod, 1e-6);
  }
  EXPECT_NEAR(gasWork / (2.9e6 * area * 2.0), 1, 1e-4) << "force times stroke";
  EXPECT_LT(tangentialMass[30], 0) << "the mass is sped up by the crank behind top dead centre";
}

TEST(Calculators, TakeAnyCountAndAnyMissingArgument) {
  const double lambda = 0.25;
  const auto phi = crankAngles(8);
  const std::int32_t two = 2;
  const std::int32_t eight = 8;
  for (const std::int32_t none : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    std::array<double, 3> sine{5, 5, 5};
    std::array<double, 3> cosine{5, 5, 5};
    std::array<double, 5> coefficients{5, 5, 5, 5, 5};
    std::array<double, 8> curve{4, 4, 4, 4, 4, 4, 4, 4};
    ::CYLINDERPRESSURETOHARMONIC(&none, &two, curve.data(), phi.data(), &lambda, sine.data(),
                                 cosine.data());
    EXPECT_EQ(sine, (std::array<double, 3>{0, 0, 5})) << "no points have no harmonics";
    EXPECT_EQ(cosine, (std::array<double, 3>{0, 0, 5}));
    EXPECT_EQ(curve[0], 4);
    ::OSCILLATINGMASSFOURIERCOEFFICIENTS(&eight, &none, coefficients.data(), phi.data(), &lambda);
    EXPECT_EQ(coefficients[0], 5);
    ::OSCILLATINGMASSFOURIERCOEFFICIENTS(&none, &two, coefficients.data(), phi.data(), &lambda);
    EXPECT_EQ(coefficients, (std::array<double, 5>{0, 0, 0, 0, 5}));
    ::CYLINDERPRESSURETOHARMONIC(&eight, &none, curve.data(), phi.data(), &lambda, sine.data(),
                                 cosine.data());
    EXPECT_EQ(sine[2], 5);
    EXPECT_NEAR(curve[4], 4 * (1 + lambda * std::cos(phi[4])) * std::sin(phi[4]), 4e-3)
        << "the tangential curve is left even without orders";
    EXPECT_EQ(forcesOf(none)[0][0], -7);
  }

  double untouched = 5;
  ::CYLINDERPRESSURETOHARMONIC(nullptr, nullptr, nullptr, nullptr, nullptr, &untouched, nullptr);
  ::OSCILLATINGMASSFOURIERCOEFFICIENTS(nullptr, nullptr, &untouched, nullptr, nullptr);
  ::CALCULATETANGENTIALRADIALFORCE(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                   nullptr, nullptr, nullptr, nullptr, &untouched, nullptr, nullptr,
                                   nullptr, nullptr, nullptr);
  ::THEORETICALCYLINDERPRESSURE(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                nullptr, nullptr, nullptr, nullptr, &untouched);
  EXPECT_EQ(untouched, 5);
}

TEST(OscillatingMass, ExportedCoefficientsAreRealAndImaginaryInTurn) {
  const double lambda = 0.25;
  // Sines of the orders 1 to 6 by the series in powers of lambda.
  const std::array<double, 6> sines{-0.0635063, 0.5001301,  0.1920556,
                                    0.0161290,  -0.0025923, -0.0003903};
  for (const std::int32_t nPoints : {360, 720}) {
    const auto phi = crankAngles(720);
    const auto step = static_cast<std::size_t>(nPoints / 360);  // element of order 1
    const auto nFC = static_cast<std::int32_t>(step * 6 + 1);
    std::vector<double> c(step * 12 + 3, 5);
    ::OSCILLATINGMASSFOURIERCOEFFICIENTS(&nPoints, &nFC, c.data(), phi.data(), &lambda);
    for (std::size_t order = 1; order <= sines.size(); ++order) {
      EXPECT_NEAR(-2 * c[2 * order * step + 1], sines[order - 1], 5e-8) << order;
      EXPECT_NEAR(c[2 * order * step], 0, 1e-15) << order;
    }
    EXPECT_NEAR(c[0], 0, 1e-15) << "no work over a revolution";
    EXPECT_EQ(c.back(), 5);
  }
}

TEST(CylinderExcitations, InertiaTorqueOpposesGasTorque) {
  const std::array<std::complex<double>, 2> gas{{{100.0, -20.0}, {3.0, 4.0}}};
  const std::array<std::complex<double>, 2> mass{{{0.5, 0.25}, {0.0, -1.0}}};
  std::array<std::complex<double>, 2> excitation;
  // Crank radius 0.5 m, area 0.2 m2, 10 rad/s, 3 kg: the mass force amounts to 150 N.
  CYLINDEREXCITATION(excitation, gas, mass, 0.5, 0.2, 10.0, 3.0);
  for (std::size_t k = 0; k < 2; ++k) {
    EXPECT_NEAR(std::abs(excitation[k] - 0.5 * (0.2 * gas[k] - 150.0 * mass[k])), 0, 1e-12);
  }
  CYLINDERSIMPLIFIEDEXCITATION(excitation, gas, mass, 0.5, 10.0, 3.0);
  for (std::size_t k = 0; k < 2; ++k) {
    EXPECT_NEAR(std::abs(excitation[k] - (gas[k] - 0.5 * 150.0 * mass[k])), 0, 1e-12);
  }
}

TEST(GasMassForceReport, StandsInTheResultDirectoryWhenAsked) {
  static_assert(!kWritesGasMassForceReport);
  const test::TemporaryDirectory directory;
  std::string name = directory.path().string();
  SETRESULTFILEDIR(name, static_cast<std::int32_t>(name.size()));
  EXPECT_EQ(forcesOf(360)[0][0], 0.0);
  EXPECT_TRUE(test::filesIn(directory.path()).empty());
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
