/* The four calculators for one cylinder of a medium speed four-stroke engine. */
#include <math.h>
#include <stdint.h>
#include <stdio.h>

#include "verenwick.h"

enum { kPoints = 720, kOrders = 24 };

int main(void) {
  const double pi = 3.141592653589793;
  const double bore = 0.32, stroke = 0.40, lambda = 0.22, speed = 750.0;
  const int32_t nPoints = kPoints, nOrders = kOrders, nFC = kOrders + 1;

  /* Cylinder pressure at 70 % load: point 1 lies 180 degrees before top dead centre. */
  const int32_t misfire = 0, nStroke = 4;
  const double ratedPower = 480e3, ratedSpeed = 750.0, power = 336e3;
  const double compRatio = 15.0, inlet = 3.5e5, charge = 45.0, pMax = 185e5, pComp = 140e5;
  const double compExp = 0.0, expaExp = 0.0, te = 0.5, me = 0.92, form = 0.5;
  const double ignition = -6.0, endOfComb = 60.0, exhaust = 125.0, inletStart = 300.0,
               inletClose = 560.0;
  double curve[VERENWICK_PRESSURE_POINTS] = {0.0}, mip = 0.0;
  THEORETICALCYLINDERPRESSURE(&ratedPower, &ratedSpeed, &misfire, &nStroke, &bore, &stroke, &lambda,
                              &compRatio, &inlet, &charge, &speed, &power, &pMax, &pComp, &compExp,
                              &expaExp, &te, &me, &form, &ignition, &endOfComb, &exhaust,
                              &inletStart, &inletClose, curve, &mip);
  double peak = 0.0;
  for (int i = 0; i < kPoints; ++i) peak = fmax(peak, curve[i]);
  printf("pressure,%.4f,%.4f\n", peak / 1e5, mip / 1e5);

  /* Harmonics of the tangential pressure, from top dead centre on. */
  double pressure[kPoints], phi[kPoints], sine[kOrders], cosine[kOrders];
  for (int i = 0; i < kPoints; ++i) {
    pressure[i] = curve[(i + 180) % kPoints];
    phi[i] = i * pi / 180.0;
  }
  CYLINDERPRESSURETOHARMONIC(&nPoints, &nOrders, pressure, phi, &lambda, sine, cosine);
  for (int k = 0; k < kOrders; ++k) {
    printf("harmonic,%.1f,%.4f,%.4f\n", 0.5 * (k + 1), sine[k] / 1e5, cosine[k] / 1e5);
  }

  /* Sine terms of the oscillating mass, orders 1 to 4. */
  double coefficients[2 * (kOrders + 1)];
  OSCILLATINGMASSFOURIERCOEFFICIENTS(&nPoints, &nFC, coefficients, phi, &lambda);
  for (int order = 1; order <= 4; ++order) {
    printf("mass,%d,%.6f\n", order, -2.0 * coefficients[2 * (2 * order) + 1]);
  }

  /* Forces on the crank pin, from 180 degrees before top dead centre on. */
  const double rotatingMass = 60.0, recipMass = 90.0, unused = 0.0, reference = 1e5;
  double tangential[kPoints], tangentialMass[kPoints], tangentialGas[kPoints];
  double radial[kPoints], radialMass[kPoints], radialGas[kPoints];
  for (int i = 0; i < kPoints; ++i) phi[i] = (i - 180) * pi / 180.0;
  CALCULATETANGENTIALRADIALFORCE(&rotatingMass, &recipMass, &unused, &reference, &lambda, &speed,
                                 &stroke, &bore, &nPoints, phi, curve, tangential, tangentialMass,
                                 tangentialGas, radial, radialMass, radialGas);
  for (int i = 0; i < kPoints; i += 30) {
    printf("force,%d,%.2f,%.2f\n", i - 180, tangential[i] / 1e3, radial[i] / 1e3);
  }
  return 0;
}
