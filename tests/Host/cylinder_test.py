"""The commands for one cylinder: curves and harmonics as CSV, from a file and from options."""
import cmath
import csv
import math
import unittest

from support import EXAMPLES, HostTest

ENGINE = EXAMPLES / "hosts" / "four-stroke-cylinder.txt"
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


class Cylinder(HostTest):
    def table(self, command, *options, engine=ENGINE):
        """Heads, and the columns as lists of numbers."""
        done = self.call(command, "--engine", engine, *options)
        heads, *rows = csv.reader(done.stdout.splitlines())
        return heads, [list(map(float, column)) for column in zip(*rows)]

    def assert_harmonics(self, curve, sines, cosines):
        """Components of a curve that starts at -180 degrees, over its whole period."""
        curve = curve[180:] + curve[:180]
        for k, found in enumerate(zip(sines, cosines, strict=True), 1):
            c = sum(y * cmath.exp(-2j * math.pi * k * i / len(curve))
                    for i, y in enumerate(curve)) / len(curve)
            for value, expected in zip(found, (-2 * c.imag, 2 * c.real)):
                self.assertAlmostEqual(value, expected, delta=1e-10 * max(map(abs, curve)))

    def test_pressure(self):
        heads, (angle, pressure) = self.table("pressure")
        self.assertEqual(heads, ["angle [deg]", "pressure [bar]"])
        self.assertEqual(angle, list(range(-180, 540)))
        self.assertAlmostEqual(max(pressure), 186, delta=0.93)
        self.assertEqual(pressure[0], 3.5)
        tangential = []
        for degrees, p in zip(angle, pressure):
            phi = math.radians(degrees)
            beta = math.asin(LAMBDA * math.sin(phi))
            tangential.append(p * math.sin(phi + beta) / math.cos(beta))
        heads, (order, *harmonics) = self.table("pressure", "--harmonics", "30")
        self.assertEqual(heads, ["order", "sine [bar]", "cosine [bar]"])
        self.assertEqual(order, [0.5 * k for k in range(1, 31)])
        self.assert_harmonics(tangential, *harmonics)

        two = self.write("engine.txt", TWO_STROKE)
        angle, pressure = self.table("pressure", engine=two)[1]
        self.assertEqual(angle, list(range(-180, 180)))
        self.assertAlmostEqual(max(pressure), 161, delta=3.2)
        self.assertEqual(self.table("pressure", "--harmonics", "3", engine=two)[1][0], [1, 2, 3])

    def test_command_line_beats_the_file(self):
        options = [word for line in ENGINE.read_text().splitlines() if not line.startswith("#")
                   for word in ("--" + line).split(" = ")]
        by_file = self.call("pressure", "--engine", ENGINE)
        self.assertEqual(self.call("pressure", *options).stdout, by_file.stdout)
        self.assertNotIn("warning", by_file.stderr)
        for words, *changes in (
                ("mean indicated pressure 25.949 bar", "--peak-pressure", "200"),
                ("warning: a missed peak at rated speed, 101.00 bar", "--peak-pressure", "100"),
                # At part of the rated speed and torque the pressures are no longer the rated ones.
                ("mean indicated pressure 16.218 bar", "--speed", "600", "--power", "240"),
                (f"peak pressure {0.9 * 141:.2f} bar", "--misfire")):
            self.assertIn(words, self.call("pressure", "--engine", ENGINE, *changes).stderr)

    def test_forces(self):
        masses = ["--recip-mass", "90", "--rotating-mass", "60"]
        heads, (angle, pressure, *forces) = self.table("forces", *masses)
        self.assertEqual(heads, ["angle [deg]", "pressure [bar]", "tangential [N]",
                                 "tangential mass [N]", "tangential gas [N]", "radial [N]",
                                 "radial mass [N]", "radial gas [N]"])
        self.assertEqual(angle, list(range(-180, 540)))
        tangential, tangential_mass, tangential_gas, radial, radial_mass, radial_gas = forces
        for parts in (*zip(tangential, tangential_mass, tangential_gas),
                      *zip(radial, radial_mass, radial_gas)):
            self.assertAlmostEqual(parts[0], parts[1] + parts[2], places=6)
        top = 180
        centrifugal = RADIUS * (750 * math.pi / 30)**2
        self.assertAlmostEqual(radial_gas[top], (pressure[top] - 1) * 1e5 * AREA, places=3)
        self.assertAlmostEqual(radial_mass[top], -centrifugal * (90 * (1 + LAMBDA) + 60), places=3)
        crankcase = self.table("forces", *masses, "--reference-pressure", "2")[1]
        self.assertAlmostEqual(crankcase[7][top], (pressure[top] - 2) * 1e5 * AREA, places=3)

        order, *harmonics = self.table("forces", *masses, "--harmonics", "8")[1]
        self.assertEqual(order, [0.5 * k for k in range(1, 9)])
        self.assert_harmonics(tangential_gas, *harmonics[:2])
        self.assert_harmonics(tangential_mass, *harmonics[2:])

    def test_what_is_wrong_is_said(self):
        two = self.write("two-stroke.txt", TWO_STROKE)
        bad = self.write("bad.txt", "bor = 3\n")
        for status, words, command, *options in (
                (2, "--strokes must be 2 or 4", "pressure"),
                (2, "--strokes must be 2 or 4", "pressure", "--engine", ENGINE, "--strokes", 3),
                (2, "--inlet-start is missing", "pressure", "--engine", ENGINE, "--strokes", 2),
                (2, "--recip-mass is missing", "forces", "--engine", ENGINE),
                (2, "bor in", "pressure", "--engine", bad),
                (2, "nowhere.txt", "pressure", "--engine", "nowhere.txt"),
                (2, "--harmonics", "pressure", "--engine", ENGINE, "--harmonics", 0),
                (2, "--harmonics must be less than 360",
                 "forces", "--engine", ENGINE, "--recip-mass", 90, "--harmonics", 360),
                (2, "--harmonics must be less than 180",
                 "pressure", "--engine", two, "--harmonics", 180),
                (1, "no pressure curve comes from these data\n",
                 "pressure", "--engine", two, "--bore", "nan"),
                (1, "the exhaust must open before the inlet",
                 "pressure", "--engine", two, "--inlet-start", 100)):
            done = self.call(command, *options, status=status)
            self.assertIn(words, done.stderr)
            self.assertEqual(done.stdout, "")


if __name__ == "__main__":
    unittest.main()
