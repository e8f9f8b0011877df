"""Runs the commands for one cylinder: curves and harmonics as CSV, from a file and from options.

usage: cylinder_test.py PROGRAM ENGINEFILE [unittest options]
"""
import cmath
import csv
import io
import math
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))
ENGINE = os.path.abspath(sys.argv.pop(1))
LAMBDA, RADIUS, AREA = 0.22, 0.2, math.pi / 4 * 0.32**2
TWO_STROKE = """strokes=2
bore=600
stroke=2400
conrod-ratio=0.42
compression-ratio=17
rated-power=2400
rated-speed=105
inlet-pressure=3.6
charge-temperature=40
peak-pressure=160
compression-pressure=130
heat-share=52
mechanical-efficiency=93
form-factor=0.5
ignition=0
end-of-combustion=45
exhaust-start=115
inlet-start=140
inlet-close=220
"""


def components(curve, harmonic):
    """Sine and cosine component of a harmonic of a curve over its whole period."""
    n = len(curve)
    c = sum(y * cmath.exp(-2j * math.pi * harmonic * i / n) for i, y in enumerate(curve)) / n
    return -2 * c.imag, 2 * c.real


class Cylinder(unittest.TestCase):
    def setUp(self):
        self.scratch = tempfile.TemporaryDirectory()
        self.here = pathlib.Path(self.scratch.name)

    def tearDown(self):
        self.scratch.cleanup()

    def call(self, *arguments, status=0):
        done = subprocess.run([PROGRAM, *map(str, arguments)], cwd=self.here, timeout=60,
                              capture_output=True, text=True)
        self.assertEqual(done.returncode, status, (arguments, done.stdout, done.stderr))
        if status != 0:
            self.assertEqual(done.stdout, "", arguments)
        return done

    def table(self, *arguments):
        """Heads, and the columns as lists of numbers."""
        heads, *rows = csv.reader(io.StringIO(self.call(*arguments).stdout))
        return heads, [list(map(float, column)) for column in zip(*rows)]

    def file(self, text):
        path = self.here / "engine.txt"
        path.write_text(text)
        return path

    def test_pressure_curve(self):
        heads, (angle, pressure) = self.table("pressure", "--engine", ENGINE)
        self.assertEqual(heads, ["angle [deg]", "pressure [bar]"])
        self.assertEqual(angle, list(range(-180, 540)))
        self.assertAlmostEqual(max(pressure), 186, delta=0.93)
        self.assertEqual(pressure[0], 3.5)
        heads, (angle, pressure) = self.table("pressure", "--engine", self.file(TWO_STROKE))
        self.assertEqual(angle, list(range(-180, 180)))
        self.assertAlmostEqual(max(pressure), 161, delta=3.2)

    def test_command_line_beats_the_file(self):
        options = []
        for line in pathlib.Path(ENGINE).read_text().splitlines():
            if not line.startswith("#"):
                name, value = line.split(" = ")
                options += [f"--{name}", value]
        alone = self.call("pressure", *options)
        self.assertEqual(alone.stdout, self.call("pressure", "--engine", ENGINE).stdout)
        other = self.call("pressure", "--engine", ENGINE, "--peak-pressure", "200")
        self.assertIn("peak pressure 20", other.stderr)
        self.assertIn("mean indicated pressure 25.949 bar", other.stderr)
        # At part of the rated speed and torque the pressures are no longer the rated ones.
        part = self.call("pressure", "--engine", ENGINE, "--speed", "600", "--power", "240")
        self.assertIn("mean indicated pressure 16.218 bar", part.stderr)
        misfire = self.table("pressure", "--engine", ENGINE, "--misfire")[1][1]
        self.assertAlmostEqual(max(misfire), 0.9 * 141, places=3)

    def test_pressure_harmonics(self):
        pressure = self.table("pressure", "--engine", ENGINE)[1][1]
        tangential = []
        for i in range(720):
            phi = math.radians(i)
            beta = math.asin(LAMBDA * math.sin(phi))
            tangential.append(pressure[(i + 180) % 720] * math.sin(phi + beta) / math.cos(beta))
        heads, (order, sine, cosine) = self.table("pressure", "--engine", ENGINE,
                                                  "--harmonics", "30")
        self.assertEqual(heads, ["order", "sine [bar]", "cosine [bar]"])
        self.assertEqual(order, [0.5 * k for k in range(1, 31)])
        for k in range(1, 31):
            expected = components(tangential, k)
            self.assertAlmostEqual(sine[k - 1], expected[0], places=9)
            self.assertAlmostEqual(cosine[k - 1], expected[1], places=9)
        two = self.table("pressure", "--engine", self.file(TWO_STROKE), "--harmonics", "3")[1][0]
        self.assertEqual(two, [1, 2, 3])

    def test_forces(self):
        masses = ["--recip-mass", "90", "--rotating-mass", "60"]
        heads, columns = self.table("forces", "--engine", ENGINE, *masses)
        self.assertEqual(heads, ["angle [deg]", "pressure [bar]", "tangential [N]",
                                 "tangential mass [N]", "tangential gas [N]", "radial [N]",
                                 "radial mass [N]", "radial gas [N]"])
        angle, pressure, t, tm, tg, r, rm, rg = columns
        self.assertEqual(angle, list(range(-180, 540)))
        for parts in zip(t, tm, tg), zip(r, rm, rg):
            for total, mass, gas in parts:
                self.assertAlmostEqual(total, mass + gas, places=6)
        top = angle.index(0)
        centrifugal = RADIUS * (750 * math.pi / 30)**2
        self.assertAlmostEqual(rg[top], (pressure[top] - 1) * 1e5 * AREA, places=3)
        self.assertAlmostEqual(rm[top], -centrifugal * (90 * (1 + LAMBDA) + 60), places=3)
        crankcase = self.table("forces", "--engine", ENGINE, *masses,
                               "--reference-pressure", "2")[1]
        self.assertAlmostEqual(crankcase[7][top], (pressure[top] - 2) * 1e5 * AREA, places=3)

        heads, (order, gas_sine, gas_cosine, mass_sine, mass_cosine) = self.table(
            "forces", "--engine", ENGINE, *masses, "--harmonics", "8")
        self.assertEqual(order, [0.5 * k for k in range(1, 9)])
        for k in range(1, 9):
            for curve, found in ((tg, (gas_sine, gas_cosine)), (tm, (mass_sine, mass_cosine))):
                expected = components(curve[180:] + curve[:180], k)
                self.assertAlmostEqual(found[0][k - 1], expected[0], places=5)
                self.assertAlmostEqual(found[1][k - 1], expected[1], places=5)

    def test_what_is_wrong_is_said(self):
        two_stroke = self.here / "two-stroke.txt"
        two_stroke.write_text(TWO_STROKE)
        for words, arguments, status in (
                ("--strokes must be 2 or 4", ["pressure"], 2),
                ("--strokes must be 2 or 4", ["pressure", "--engine", ENGINE, "--strokes", 3], 2),
                ("--inlet-start is missing", ["pressure", "--engine", ENGINE, "--strokes", 2], 2),
                ("--recip-mass is missing", ["forces", "--engine", ENGINE], 2),
                ("bor in", ["pressure", "--engine", self.file("bor = 3\n")], 2),
                ("nowhere.txt", ["pressure", "--engine", "nowhere.txt"], 2),
                ("--harmonics", ["pressure", "--engine", ENGINE, "--harmonics", 0], 2),
                ("--harmonics must be less than 360",
                 ["forces", "--engine", ENGINE, "--recip-mass", 90, "--harmonics", 360], 2),
                ("--harmonics must be less than 180",
                 ["pressure", "--engine", two_stroke, "--harmonics", 180], 2),
                ("no pressure curve comes from these data\n",
                 ["pressure", "--engine", two_stroke, "--bore", "nan"], 1),
                ("the exhaust must open before the inlet",
                 ["pressure", "--engine", ENGINE, "--strokes", 2, "--inlet-start", 100,
                  "--inlet-close", 220], 1)):
            self.assertIn(words, self.call(*arguments, status=status).stderr)
        self.assertNotIn("warning", self.call("pressure", "--engine", ENGINE).stderr)
        short = self.call("pressure", "--engine", ENGINE, "--peak-pressure", "100")
        self.assertIn("warning: a missed peak at rated speed, 101.00 bar", short.stderr)


if __name__ == "__main__":
    unittest.main()
