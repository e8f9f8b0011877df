"""The four calculators for one cylinder of a medium speed four-stroke engine.

usage: calculators.py LIBRARY
"""

import ctypes
import math
import sys

verenwick = ctypes.CDLL(sys.argv[1])


def integer(value):
    return ctypes.byref(ctypes.c_int32(value))


def real(value):
    return ctypes.byref(ctypes.c_double(value))


def reals(values):
    return (ctypes.c_double * len(values))(*values)


ROOM, POINTS, ORDERS = 1000, 720, 24  # the first is VERENWICK_PRESSURE_POINTS
BORE, STROKE, LAMBDA, SPEED = 0.32, 0.40, 0.22, 750.0

# Cylinder pressure at 70 % load: point 1 lies 180 degrees before top dead centre.
curve, mip = reals([0.0] * ROOM), ctypes.c_double()
verenwick.THEORETICALCYLINDERPRESSURE(
    real(480e3), real(750.0),  # rated power of the cylinder, rated speed
    integer(0), integer(4),  # misfire, strokes
    real(BORE), real(STROKE), real(LAMBDA), real(15.0),  # the last is the compression ratio
    real(3.5e5), real(45.0),  # rated inlet pressure, charge air temperature
    real(SPEED), real(336e3),  # speed and power of the cylinder
    real(185e5), real(140e5),  # rated peak and compression pressure
    real(0.0), real(0.0),  # two exponents without effect
    real(0.5), real(0.92), real(0.5),  # share of heat, mechanical efficiency, form factor
    real(-6.0), real(60.0),  # start and end of combustion
    real(125.0), real(300.0), real(560.0),  # exhaust start, inlet start, inlet close
    curve, ctypes.byref(mip))
print("pressure,%.4f,%.4f" % (max(curve) / 1e5, mip.value / 1e5))

# Harmonics of the tangential pressure, from top dead centre on.
pressure = reals([curve[(i + 180) % POINTS] for i in range(POINTS)])
phi = reals([i * math.pi / 180.0 for i in range(POINTS)])
sine, cosine = reals([0.0] * ORDERS), reals([0.0] * ORDERS)
verenwick.CYLINDERPRESSURETOHARMONIC(
    integer(POINTS), integer(ORDERS), pressure, phi, real(LAMBDA), sine, cosine)
for k in range(ORDERS):
    print("harmonic,%.1f,%.4f,%.4f" % (0.5 * (k + 1), sine[k] / 1e5, cosine[k] / 1e5))

# Sine terms of the oscillating mass, orders 1 to 4.
coefficients = reals([0.0] * (2 * (ORDERS + 1)))
verenwick.OSCILLATINGMASSFOURIERCOEFFICIENTS(
    integer(POINTS), integer(ORDERS + 1), coefficients, phi, real(LAMBDA))
for order in range(1, 5):
    print("mass,%d,%.6f" % (order, -2.0 * coefficients[2 * (2 * order) + 1]))

# Forces on the crank pin, from 180 degrees before top dead centre on.
phi = reals([(i - 180) * math.pi / 180.0 for i in range(POINTS)])
forces = [reals([0.0] * POINTS) for _ in range(6)]
verenwick.CALCULATETANGENTIALRADIALFORCE(
    real(60.0), real(90.0), real(0.0),  # rotating mass, reciprocating mass, unused
    real(1e5), real(LAMBDA), real(SPEED), real(STROKE), real(BORE),
    integer(POINTS), phi, curve, *forces)
tangential, radial = forces[0], forces[3]
for i in range(0, POINTS, 30):
    print("force,%d,%.2f,%.2f" % (i - 180, tangential[i] / 1e3, radial[i] / 1e3))
