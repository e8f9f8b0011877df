#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "Excitation/CrankAngles.h"
#include "Excitation/CylinderPressureToHarmonic.h"
#include "Excitation/Engine_functions.h"
#include "Excitation/ExcitationConstants.h"
#include "Excitation/GasMassForceReport.h"
#include "Excitation/SampleEngines.h"
#include "Excitation/TheoreticalCylinderPressure.h"
#include "RunControl/Constants.h"
#include "RunControl/Global_Parameter.h"
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
  for (const CylinderPressureInput& rated : {sample::twoStroke(), sample::fourStroke()}) {
    CylinderPressureInput in = rated;
    in.power *= 0.5;
    std::vector<double> curve(kPressurePoints, -7);
    double mip = 0;
    exportedCurve(rated.power, rated.speed, in, 0, curve, mip);
    EXPECT_EQ(curve, directCurve(in)) << "half the power at rated speed";
    EXPECT_DOUBLE_EQ(mip,
                     CALCULATE_MEP(in.power, in.speed, in.bore, in.nStroke, in.stroke) / in.me);

    // Propeller law: a tenth of the torque makes the lower limit of the peak felt, which is held
    // above the rated compression pressure.
    in.speed = rated.speed * std::sqrt(0.1);
    in.power = rated.power * 0.1 * std::sqrt(0.1);
    exportedCurve(rated.power, rated.speed, in, 0, curve, mip);
    CylinderPressureInput atLoad = in;
    atLoad.pMax = 1.100000023841858 * rated.pComp;
    atLoad.pComp = CALCULATE_PCOMP(rated.power, rated.speed, in.power, in.speed, rated.pComp);
    atLoad.pInlet =
        CALCULATE_PINLET(rated.power, rated.speed, in.power, in.speed, rated.pInlet, in.nStroke);
    EXPECT_LT(atLoad.pComp, rated.pComp);
    EXPECT_EQ(atLoad.pInlet, 100000.0);
    EXPECT_EQ(curve, directCurve(atLoad));

    // 0.85 of the torque leaves all three between their limits, below and above the rated speed.
    const bool isTwo = in.nStroke == 2;
    const double peakSlope = isTwo ? kPeakSlopeTwoStroke : kPeakSlopeFourStroke;
    const double inletSlope = isTwo ? kInletSlopeTwoStroke : kInletSlopeFourStroke;
    for (const double speed : {0.9, 1.05}) {
      in.speed = rated.speed * speed;
      in.power = rated.power * speed * 0.85;
      const double drop = 1.0 - (in.power / in.speed) / (rated.power / rated.speed);
      atLoad = in;
      atLoad.pMax -= rated.pMax * peakSlope * drop;
      atLoad.pComp -= rated.pComp * kCompressionSlope * drop;
      atLoad.pInlet -= (rated.pInlet - 1.0) * inletSlope * drop;
      exportedCurve(rated.power, rated.speed, in, 0, curve, mip);
      EXPECT_EQ(curve, directCurve(atLoad)) << in.nStroke << "-stroke at " << in.speed;
    }
  }
}

TEST(TheoreticalCylinderPressure, LowestBitOfTheLogicalDecides) {
  const CylinderPressureInput in = sample::fourStroke();
  CylinderPressureInput misfiring = in;
  misfiring.misfire = true;
  for (const std::int32_t misfire : {-1, 1, 0, 2}) {
    std::vector<double> curve(kPressurePoints, -7);
    double mip = 0;
    exportedCurve(in.power, in.speed, in, misfire, curve, mip);
    EXPECT_EQ(curve, directCurve(misfire % 2 == 0 ? in : misfiring)) << misfire;
  }
}

TEST(CylinderPressureToHarmonic, PureTangentialSineComesBackAtItsOrder) {
  const double lambda = 0.25;
  for (const std::int32_t n : {360, 720}) {
    const auto phi = crankAngles(static_cast<std::size_t>(n));
    std::vector<double> pressure(phi.size());
    std::vector<double> tangential(phi.size());
    for (std::size_t i = 0; i < phi.size(); ++i) {
      const double beta = std::asin(lambda * std::sin(phi[i]));
      // Vanishes with the tangential factor at the dead centres.
      tangential[i] = std::sin(3 * phi[i]) + 0.25 * (std::cos(phi[i]) - std::cos(3 * phi[i]));
      const double factor = std::sin(phi[i] + beta) / std::cos(beta);
      pressure[i] = std::abs(factor) < 1e-9 ? 0.0 : tangential[i] / factor;
    }
    const std::int32_t nOrders = 10;
    std::vector<double> sine(10, kNaN);
    std::vector<double> cosine(10, kNaN);
    ::CYLINDERPRESSURETOHARMONIC(&n, &nOrders, pressure.data(), phi.data(), &lambda, sine.data(),
                                 cosine.data());
    const std::size_t perOrder = phi.size() / 360;
    for (std::size_t k = 1; k <= 10; ++k) {
      EXPECT_NEAR(sine[k - 1], k == 3 * perOrder ? 1.0 : 0.0, 1e-12) << k;
      const double expected = k == perOrder ? 0.25 : (k == 3 * perOrder ? -0.25 : 0.0);
      EXPECT_NEAR(cosine[k - 1], expected, 1e-12) << k;
    }
    for (std::size_t i = 0; i < phi.size(); ++i) EXPECT_NEAR(pressure[i], tangential[i], 1e-12);
  }
}

TEST(HarmonicToCylinderPressure, DividesWhatTheInverseTransformGathers) {
  const auto phi = crankAngles(360);
  const double lambda = 0.25;
  std::vector<double> pressure(360, 1.0);
  std::vector<double> sine{0.0, 0.0, kNaN};
  std::vector<double> cosine{0.7, 0.0, 0.0};
  HARMONICTOCYLINDERPRESSURE(pressure, phi, lambda, sine, cosine);
  EXPECT_EQ(pressure[0], 0.0) << "no tangential part at top dead centre: the neighbour's value";
  EXPECT_EQ(pressure[1], 0.0);
  EXPECT_TRUE(std::isnan(pressure[2]));
  EXPECT_EQ(pressure[3], 0.0);

  // Away from top dead centre the first element is the sum of the first harmonic's terms.
  std::vector<double> late(phi);
  for (double& angle : late) angle += 0.5;
  sine[2] = 0;
  HARMONICTOCYLINDERPRESSURE(pressure, late, lambda, sine, cosine);
  const double beta = std::asin(lambda * std::sin(0.5));
  const double factor = std::sin(0.5 + beta) / std::cos(beta);
  EXPECT_NEAR(pressure[0], 360 * static_cast<double>(0.35F) * 2 / factor, 1e-9);

  // A dead centre in the middle takes the finished neighbour before it once more through.
  late[1] = 0;
  HARMONICTOCYLINDERPRESSURE(pressure, late, lambda, sine, cosine);
  EXPECT_NEAR(pressure[1], pressure[0] / factor, 1e-9);

  std::vector<double> other(100, 1.0);
  HARMONICTOCYLINDERPRESSURE(other, std::span(late).first(100), lambda, sine, cosine);
  EXPECT_EQ(other, std::vector<double>(100));
  std::vector<double> one(1, 1.0);
  HARMONICTOCYLINDERPRESSURE(one, std::span(phi).first(1), lambda, sine, cosine);
  EXPECT_EQ(one[0], 0.0);
}

/// Arguments of one call of CALCULATETANGENTIALRADIALFORCE.
struct ForceCall {
  double rotatingMass = 300;
  double recipMass = 500;
  double referencePressure = 1e5;
  double lambda = 0.25;
  double speed = 120;
  double stroke = 2.0;
  double diameter = 0.5;
  std::int32_t nPoints = 360;
  std::vector<double> phi = crankAngles(360);
  std::vector<double> pressure = std::vector<double>(360, 3e6);
  std::array<std::vector<double>, 6> out;

  void run() {
    out.fill(std::vector<double>(360, -7));
    ::CALCULATETANGENTIALRADIALFORCE(&rotatingMass, &recipMass, nullptr, &referencePressure,
                                     &lambda, &speed, &stroke, &diameter, &nPoints, phi.data(),
                                     pressure.data(), out[0].data(), out[1].data(), out[2].data(),
                                     out[3].data(), out[4].data(), out[5].data());
  }
};

TEST(TangentialRadialForce, ForcesAreThoseOfTheCrankDrive) {
  ForceCall call;
  call.run();
  const auto& [tangential, tangentialMass, tangentialGas, radial, radialMass, radialGas] = call.out;
  const double area = kPi / 4 * 0.25;
  const double centrifugal = std::pow(120 * kPi / 30, 2) * 1.0;  // crank radius 1 m
  // Top dead centre: gas pushes to the shaft, inertia and rotating mass pull away from it.
  EXPECT_EQ(tangential[0], 0.0);
  EXPECT_NEAR(radialGas[0], 2.9e6 * area, 1e-6);
  EXPECT_NEAR(radialMass[0], -centrifugal * (500 * 1.25 + 300), 1e-6);
  // Bottom dead centre: the other way round for the piston.
  EXPECT_NEAR(radialGas[180], -2.9e6 * area, 1e-6);
  EXPECT_NEAR(radialMass[180], -centrifugal * (500 * (1 - 0.25) + 300), 1e-6);
  double gasWork = 0;
  double massWork = 0;
  for (std::size_t i = 0; i < 360; ++i) {
    EXPECT_DOUBLE_EQ(tangential[i], tangentialGas[i] + tangentialMass[i]);
    EXPECT_DOUBLE_EQ(radial[i], radialGas[i] + radialMass[i]);
    if (i < 180)
      gasWork += tangentialGas[i] * kPi / 180;
    massWork += tangentialMass[i];
  }
  EXPECT_NEAR(gasWork / (2.9e6 * area * 2.0), 1, 1e-4) << "force times stroke";
  EXPECT_NEAR(massWork, 0, 1e-6);
  EXPECT_LT(tangentialMass[70] * tangentialMass[110], 0) << "drags, then drives";
  EXPECT_LT(tangentialMass[30], 0) << "the mass is sped up by the crank behind top dead centre";

  // The rotating mass acts radially, evenly all round.
  ForceCall light = call;
  light.rotatingMass = 0;
  light.run();
  EXPECT_EQ(light.out[0], tangential);
  for (std::size_t i = 0; i < 360; ++i) {
    EXPECT_NEAR(light.out[4][i] - radialMass[i], centrifugal * 300, 1e-6);
  }
}

TEST(Calculators, TakeAnyCountAndAnyMissingArgument) {
  const double lambda = 0.25;
  const auto phi = crankAngles(8);
  for (const std::int32_t nPoints : {0, -1, std::numeric_limits<std::int32_t>::min()}) {
    const std::int32_t two = 2;
    std::array<double, 3> sine{5, 5, 5};
    std::array<double, 3> cosine{5, 5, 5};
    std::array<double, 5> coefficients{5, 5, 5, 5, 5};
    double pressure = 4;
    ::CYLINDERPRESSURETOHARMONIC(&nPoints, &two, &pressure, phi.data(), &lambda, sine.data(),
                                 cosine.data());
    EXPECT_EQ(sine, (std::array<double, 3>{0, 0, 5})) << "no points have no harmonics";
    EXPECT_EQ(cosine, (std::array<double, 3>{0, 0, 5}));
    EXPECT_EQ(pressure, 4);
    ::OSCILLATINGMASSFOURIERCOEFFICIENTS(&nPoints, &two, coefficients.data(), phi.data(), &lambda);
    EXPECT_EQ(coefficients, (std::array<double, 5>{0, 0, 0, 0, 5}));

    const std::int32_t eight = 8;
    std::array<double, 8> curve{1, 1, 1, 1, 1, 1, 1, 1};
    ::CYLINDERPRESSURETOHARMONIC(&eight, &nPoints, curve.data(), phi.data(), &lambda, sine.data(),
                                 cosine.data());
    EXPECT_EQ(sine[0], 0.0);
    EXPECT_NEAR(curve[4], (1 + lambda * std::cos(phi[4])) * std::sin(phi[4]), 1e-3)
        << "the tangential curve is left even without orders";
    ::OSCILLATINGMASSFOURIERCOEFFICIENTS(&eight, &nPoints, coefficients.data(), phi.data(),
                                         &lambda);
    EXPECT_EQ(coefficients[0], 0.0);

    ForceCall call;
    call.nPoints = nPoints;
    call.run();
    EXPECT_EQ(call.out[0][0], -7);
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

std::ptrdiff_t notNumbers(std::span<const double> values) {
  return std::ranges::count_if(values, [](double value) { return std::isnan(value); });
}

TEST(Calculators, LetNotANumberRunThrough) {
  for (const CylinderPressureInput& in : {sample::twoStroke(), sample::fourStroke()}) {
    for (double CylinderPressureInput::*const member :
         {&CylinderPressureInput::speed, &CylinderPressureInput::lambda}) {
      CylinderPressureInput bad = in;
      bad.*member = kNaN;
      std::vector<double> curve(kPressurePoints, -7);
      double mip = 0;
      exportedCurve(in.power, in.speed, bad, 0, curve, mip);
      EXPECT_TRUE(std::isnan(curve[180]));
      EXPECT_EQ(curve.back(), -7);
      EXPECT_EQ(std::isnan(mip), std::isnan(bad.speed));
    }
  }

  struct Case {
    ForceCall call;
    std::array<std::ptrdiff_t, 6> bad;  ///< points of each force that are no numbers
  };
  std::array<Case, 4> cases;
  cases[0].call.phi[7] = kNaN;
  cases[0].bad = {1, 1, 1, 1, 1, 1};
  cases[1].call.pressure[7] = kNaN;
  cases[1].bad = {1, 0, 1, 1, 0, 1};
  cases[2].call.lambda = kNaN;
  cases[2].bad = {360, 360, 360, 360, 360, 360};
  cases[3].call.speed = kNaN;
  cases[3].bad = {360, 360, 0, 360, 360, 0};
  for (auto& [call, bad] : cases) {
    call.run();
    for (std::size_t i = 0; i < bad.size(); ++i) EXPECT_EQ(notNumbers(call.out[i]), bad[i]) << i;

    // A transform takes one bad point into all its sums.
    const std::int32_t two = 2;
    std::array<double, 2> sine{};
    std::array<double, 2> cosine{};
    std::array<double, 4> mass{};
    ::OSCILLATINGMASSFOURIERCOEFFICIENTS(&call.nPoints, &two, mass.data(), call.phi.data(),
                                         &call.lambda);
    ::CYLINDERPRESSURETOHARMONIC(&call.nPoints, &two, call.pressure.data(), call.phi.data(),
                                 &call.lambda, sine.data(), cosine.data());
    EXPECT_EQ(notNumbers(mass), bad[1] > 0 && bad[2] > 0 ? 3 : 0) << "the mean is real";
    EXPECT_EQ(notNumbers(sine), bad[2] > 0 ? 2 : 0);
    EXPECT_EQ(notNumbers(cosine), bad[2] > 0 ? 2 : 0);
    EXPECT_EQ(notNumbers(call.pressure), bad[2]) << "the tangential pressure";
  }
}

TEST(OscillatingMass, ExportedCoefficientsAreRealAndImaginaryInTurn) {
  const std::int32_t nPoints = 720;
  const std::int32_t nFC = 25;
  const double lambda = 0.25;
  const auto phi = crankAngles(720);
  std::vector<double> c(51, 5);
  ::OSCILLATINGMASSFOURIERCOEFFICIENTS(&nPoints, &nFC, c.data(), phi.data(), &lambda);
  EXPECT_NEAR(-2 * c[9], 0.5001301, 5e-8) << "order 2 is harmonic 4";
  EXPECT_NEAR(c[8], 0, 1e-15);
  EXPECT_NEAR(-2 * c[5], -0.0635063, 5e-8);
  EXPECT_EQ(c[50], 5);
}

TEST(GasMassForceReport, StandsInTheResultDirectoryWhenAsked) {
  static_assert(!kWritesGasMassForceReport);
  const auto directory = std::filesystem::temp_directory_path() / "verenwick_gas_mass_force";
  std::filesystem::create_directories(directory);
  std::string name = directory.string();
  SETRESULTFILEDIR(name, static_cast<std::int32_t>(name.size()));

  ForceCall call;
  call.run();
  auto& [tangential, tangentialMass, tangentialGas, radial, radialMass, radialGas] = call.out;
  EXPECT_FALSE(std::filesystem::exists(directory / "GasMassForce.txt"));
  writeGasMassForceReport(
      {.rotatingMass = 300,
       .recipMass = 500,
       .lambda = 0.25,
       .speed = 120,
       .stroke = 2,
       .diameter = 0.5},
      call.pressure, {tangential, tangentialMass, tangentialGas, radial, radialMass, radialGas});
  std::ifstream file(directory / "GasMassForce.txt");
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  ASSERT_EQ(lines.size(), 6 + 2 + 360 + 1);
  EXPECT_EQ(lines[0], " ConnectingRodRatio(-)           0.25");
  EXPECT_EQ(lines[4], " RatatingMassofConnectingRod(kg) 300");
  EXPECT_EQ(lines[6], " " + std::string(112, '-'));
  EXPECT_EQ(lines[8].substr(0, 5), " -180");
  double angle = 0;
  std::array<double, 5> row{};
  std::istringstream values(lines[8 + 90]);
  values >> angle;
  for (double& value : row) values >> value;
  EXPECT_EQ(angle, -90);
  EXPECT_EQ(row, (std::array<double, 5>{3e6, tangentialGas[90], radialGas[90], tangentialMass[90],
                                        radialMass[90]}));
  EXPECT_EQ(lines.back(), lines[6]);
  file.close();
  std::filesystem::remove_all(directory);
}

}  // namespace
}  // namespace verenwick
