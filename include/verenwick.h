/**
 * Verenwick: torsional vibration of shaft lines. The C interface, for hosts in any language.
 *
 * Every argument passes by reference. Integers have 32 bits, reals are doubles, arrays are
 * contiguous and belong to the caller. The library is single-threaded and keeps state between
 * calls (the result directory): a process makes one call at a time. No call ends the process and
 * none throws. The arrays of one call do not overlap; a calculator called with a null pointer
 * does nothing. Values no curve can come from leave not-a-number or infinity in the results.
 */
#ifndef VERENWICK_H
#define VERENWICK_H

#include <stdint.h>

/** Version of the library that this header belongs to. */
#define VERENWICK_VERSION "0.2.0"

/** Modes of a run: what it calculates behind the reports of the input. */
#define VERENWICK_MODE_REPORTS 0
#define VERENWICK_MODE_FREE 1
#define VERENWICK_MODE_FORCED 2
#define VERENWICK_MODE_BOTH 3

/** Longest text that a run takes, in characters. */
#define VERENWICK_TEXT_LENGTH 1000

/** Room that THEORETICALCYLINDERPRESSURE needs for a curve, in elements. */
#define VERENWICK_PRESSURE_POINTS 1000

#if defined(_WIN32)
#if defined(VERENWICK_BUILDING_LIBRARY)
#define VERENWICK_API __declspec(dllexport)
#else
#define VERENWICK_API __declspec(dllimport)
#endif
#else
#define VERENWICK_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * One complete run: reads and checks an input file, calculates, and leaves result files in a
 * directory.
 *
 * A text crosses as an array of integers, one character an element: the lowest byte counts, the
 * three upper bytes are ignored. A length of 0 or less is an empty text; a text longer than
 * VERENWICK_TEXT_LENGTH is refused with status 0. Directories may end in a backslash or not; an
 * empty directory is the current one. Where the platform separates by slashes, a backslash is
 * turned into one.
 *
 * @param inputFileDir        in,  inputFileDirLength elements: directory of the input file
 * @param inputFileDirLength  in,  number of elements
 * @param inputFileName       in,  inputFileNameLength elements: name of the input file
 * @param inputFileNameLength in,  number of elements
 * @param resultFileDir       in,  resultFileDirLength elements: an existing directory for the
 *                                 results
 * @param resultFileDirLength in,  number of elements
 * @param inputStatus         out, 1 if the input was read and passed every check, 0 if not; the
 *                                 words are in "Verenwick.log" in the result directory. A
 *                                 calculation that fails later leaves 1 and says so in the log.
 * @param calculationMode     in,  a VERENWICK_MODE_ value: reports only, free vibration, forced
 *                                 vibration, both; any other value both without preparing the
 *                                 power of couplings and dampers
 */
VERENWICK_API void VERENWICKSOLVER(const int32_t* inputFileDir, const int32_t* inputFileDirLength,
                                   const int32_t* inputFileName, const int32_t* inputFileNameLength,
                                   const int32_t* resultFileDir, const int32_t* resultFileDirLength,
                                   int32_t* inputStatus, const int32_t* calculationMode);

/**
 * Cylinder pressure of one engine cycle by a theoretical model, in steps of one degree, at any
 * load. The three pressures are those of the rated point; at a speed other than the rated one they
 * follow the load, at the rated speed they are taken as they are.
 *
 * Point 1 of the curve lies 180 degrees before the top dead centre of combustion. A two-stroke
 * curve has 360 points, a four-stroke one 720; the elements behind keep what the caller left there.
 * The iteration for work and peak pressure is given up after 21 passes, and the last curve stands.
 * The curve and mip stay untouched where ratedPMax is -100000. Otherwise, without misfire, power 0
 * sets all VERENWICK_PRESSURE_POINTS elements to zero; with power the curve stays untouched where
 * nStroke is neither 2 nor 4, and where the angles of a two-stroke engine are not in the order
 * exhaust start, inlet start, inlet close. A misfiring cylinder asks for neither: its curve has 720
 * points unless nStroke is 2.
 *
 * @param ratedPowerPerCylinder in,  W
 * @param ratedSpeed            in,  rpm
 * @param misfire               in,  logical, the lowest bit counts: true for a cylinder that only
 *                                   compresses and expands its charge
 * @param nStroke               in,  2 or 4
 * @param bore                  in,  m
 * @param stroke                in,  m
 * @param lambda                in,  crank radius divided by length of the connecting rod
 * @param compRatio             in,  compression ratio
 * @param ratedPInlet           in,  inlet pressure, Pa absolute
 * @param tCharge               in,  charge air temperature, degrees Celsius
 * @param speed                 in,  rpm
 * @param power                 in,  power of the cylinder, W
 * @param ratedPMax             in,  peak pressure, Pa above 1 bar
 * @param ratedPComp            in,  compression pressure, Pa above 1 bar
 * @param CompExp               in,  without effect, the exponent follows from the pressures
 * @param ExpaExp               in,  without effect, likewise
 * @param Te                    in,  share of the heat that becomes indicated work
 * @param me                    in,  mechanical efficiency
 * @param FormFactor            in,  form factor of the heat release at the start of the iteration
 * @param AngleIgnition         in,  start of combustion, degrees after top dead centre; all angles
 *                                   are cut to whole degrees
 * @param AngleEndOfComb        in,  end of combustion, degrees after top dead centre
 * @param AngleExhaustStart     in,  exhaust opening, degrees after top dead centre
 * @param AngleInletStart       in,  inlet opening, degrees after top dead centre (two-stroke)
 * @param AngleInletClose       in,  inlet closing, degrees after the top dead centre at which the
 *                                   cycle began, so beyond 180 (two-stroke)
 * @param pressure              out, room for VERENWICK_PRESSURE_POINTS elements: cylinder
 *                                   pressure, Pa
 * @param mip                   out, mean indicated pressure that belongs to power, Pa; untouched
 *                                   with power 0 and no misfire
 */
VERENWICK_API void THEORETICALCYLINDERPRESSURE(
    const double* ratedPowerPerCylinder, const double* ratedSpeed, const int32_t* misfire,
    const int32_t* nStroke, const double* bore, const double* stroke, const double* lambda,
    const double* compRatio, const double* ratedPInlet, const double* tCharge, const double* speed,
    const double* power, const double* ratedPMax, const double* ratedPComp, const double* CompExp,
    const double* ExpaExp, const double* Te, const double* me, const double* FormFactor,
    const double* AngleIgnition, const double* AngleEndOfComb, const double* AngleExhaustStart,
    const double* AngleInletStart, const double* AngleInletClose, double* pressure, double* mip);

/**
 * Harmonics of the tangential pressure of a cylinder pressure curve. Harmonic k of the curve's
 * period is order k where the curve spans one revolution and order k / 2 where it spans two; its
 * part of the tangential pressure is SINECOMPONENT sin + COSINECOMPONENT cos. The components are
 * zero if the curve has no points.
 *
 * @param nPoints         in,  points of the curve, which span a whole period in even steps
 * @param nOrders         in,  harmonics wanted
 * @param pressure        in,  nPoints elements: cylinder pressure, Pa, point 1 at top dead centre;
 *                        out, the tangential pressure, Pa
 * @param phi             in,  nPoints elements: crank angles of the points, rad
 * @param lambda          in,  crank radius divided by length of the connecting rod
 * @param SINECOMPONENT   out, nOrders elements, Pa
 * @param COSINECOMPONENT out, nOrders elements, Pa
 */
VERENWICK_API void CYLINDERPRESSURETOHARMONIC(const int32_t* nPoints, const int32_t* nOrders,
                                              double* pressure, const double* phi,
                                              const double* lambda, double* SINECOMPONENT,
                                              double* COSINECOMPONENT);

/**
 * Fourier coefficients of the tangential factor of the oscillating mass. The factor times crank
 * radius, reciprocating mass and the square of the angular speed is the tangential force that
 * accelerates the mass; the inertia force is its negative. Element 1 is the mean, element k + 1
 * belongs to harmonic k of the grid's period: its cosine amplitude is twice the real part, its sine
 * amplitude minus twice the imaginary part. All are zero if the grid has no points.
 *
 * @param nPoints      in,  points of the grid, which span a whole period in even steps
 * @param nFC          in,  coefficients wanted, the mean included
 * @param coefficients out, 2 nFC elements: real and imaginary part of each coefficient in turn
 *                          (the complex double of C, Fortran and C++)
 * @param phi          in,  nPoints elements: crank angles of the points, rad
 * @param lambda       in,  crank radius divided by length of the connecting rod
 */
VERENWICK_API void OSCILLATINGMASSFOURIERCOEFFICIENTS(const int32_t* nPoints, const int32_t* nFC,
                                                      double* coefficients, const double* phi,
                                                      const double* lambda);

/**
 * Tangential and radial forces on the crank pin over a curve of cylinder pressure. Tangential
 * forces drive the crank where positive; radial forces act towards the centre of the shaft where
 * positive.
 *
 * @param rotatingMass        in,  rotating mass of the connecting rod, kg
 * @param recipMass           in,  reciprocating mass, kg
 * @param unused              takes no part, may be null
 * @param referencePressure   in,  pressure on the other side of the piston, Pa
 * @param lambda              in,  crank radius divided by length of the connecting rod
 * @param speed               in,  rpm
 * @param stroke              in,  m
 * @param diameter            in,  cylinder diameter, m
 * @param nPoints             in,  points of the curve
 * @param phi                 in,  nPoints elements: crank angles of the points, rad
 * @param CYLINDERPRESSURES   in,  nPoints elements: cylinder pressure, Pa
 * @param tangentialForce     out, nPoints elements: gas plus mass, N
 * @param TANGENTIALMASSFORCE out, nPoints elements: inertia force of the reciprocating mass, N
 * @param TANGENTIALGASFORCE  out, nPoints elements: gas force, N
 * @param radialForce         out, nPoints elements: gas plus mass, N
 * @param RADIALMASSFORCE     out, nPoints elements: inertia force of both masses, N
 * @param RADIALGASFORCE      out, nPoints elements: gas force, N
 */
VERENWICK_API void CALCULATETANGENTIALRADIALFORCE(
    const double* rotatingMass, const double* recipMass, const void* unused,
    const double* referencePressure, const double* lambda, const double* speed,
    const double* stroke, const double* diameter, const int32_t* nPoints, const double* phi,
    const double* CYLINDERPRESSURES, double* tangentialForce, double* TANGENTIALMASSFORCE,
    double* TANGENTIALGASFORCE, double* radialForce, double* RADIALMASSFORCE,
    double* RADIALGASFORCE);

#ifdef __cplusplus
}
#endif

#endif
