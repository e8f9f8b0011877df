"""The commands for one cylinder: curves and harmonics as CSV, from a file and from options."""
import cmath
import csv
import math
import unittest

from support import EXAMPLES, HostTest

ENGINE = EXAMPLES / "hosts" / "four-stroke-cylinder.txt"
LAMBDA, RADIUS, AREA = 0.22, 0.2, math.pi / 4 * 0.32**2
TWO_STROKE = ("--strokes 2 --rated-power 900 --exhaust-start 115 "
              "--inlet-start 140 --inlet-close 220").split()


class Cylinder(HostTest):
    def table(self, *options):
        """Heads, and the columns as lists of numbers."""
        heads, *rows = csv.reader(self.call(*options, "--engine", ENGINE).stdout.splitlines())
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
        tangential = []
        for degrees, p in zip(angle, pressure):
            phi = math.radians(degrees)
            beta = math.asin(LAMBDA * math.sin(phi))
            tangential.append(p * math.sin(phi + beta) / math.cos(beta))
        heads, (order, *harmonics) = self.table("pressure", "--harmonics", "30")
        self.assertEqual(heads, ["order", "sine [bar]", "cosine [bar]"])
        self.assertEqual(order, [0.5 * k for k in range(1, 31)])
        self.assert_harmonics(tangential, *harmonics)

        angle, pressure = self.table("pressure", *TWO_STROKE)[1]
        self.assertEqual(angle, list(range(-180, 180)))
        self.assertAlmostEqual(max(pressure), 186, delta=3.72)
        harmonics = self.table("pressure", *TWO_STROKE, "--harmonics", "3")[1]
        self.assertEqual(harmonics[0], [1, 2, 3])

    def test_command_line_beats_the_file(self):
        options = [word for line in ENGINE.read_text().splitlines() if not line.startswith("#")
                   for word in ("--" + line).split(" = ")]
        by_file = self.call("pressure", "--engine", ENGINE)
        self.assertEqual(self.call("pressure", *options).stdout, by_file.stdout)
        self.assertNotIn("warning", by_file.stderr)
        self.assertIn("warning: a missed peak at rated speed, 101.00 bar", self.call(
            "pressure", "--engine", ENGINE, "--peak-pressure", "100").stderr)

    def test_away_from_rated_speed_the_pressures_follow_the_torque(self):
        for speed, torque in ((600, 0.625), (800, 0.75), (750, 0.5)):
            at = ["--engine", ENGINE, "--speed", speed, "--power", 480 * torque * speed / 750]
            # The peak is held above the rated compression pressure, not above the present one.
            peak, inlet, compression = ((185, 3.5, 140) if speed == 750 else
                                        (1.1 * 140, 3.5 - 3.5 * 1.28 * (1 - torque),
                                         140 - 140 * 1.32 * (1 - torque)))
            done = self.call("pressure", *at)
            values = [float(row.split(",")[1]) for row in done.stdout.splitlines()[1:]]
            self.assertAlmostEqual(values[0], inlet, delta=1e-4)
            self.assertAlmostEqual(max(values), peak + 1, delta=0.005 * peak)
            mean = 480e3 / 0.92 / 6.25 / (AREA * 0.4) / 1e5 * torque
            self.assertIn(f"mean indicated pressure {mean:.3f} bar", done.stderr)
            self.assertIn(f"peak pressure {0.9 * (compression + 1):.2f} bar",
                          self.call("pressure", "--misfire", *at).stderr)

    def test_forces(self):
        masses = ["--recip-mass", "90", "--rotating-mass", "60"]
        heads, (angle, pressure, *forces) = self.table("forces", *masses)
        self.assertEqual(heads, ["angle [deg]", "pressure [bar]", "tangential [N]",
                                 "tangential mass [N]", "tangential gas [N]", "radial [N]",
                                 "radial mass [N]", "radial gas [N]"])
        self.assertEqual(angle, list(range(-180, 540)))
        tangential, tangential_mass, tangential_gas, radial, radial_mass, radial_gas = forces
        for whole, mass, gas in (*zip(tangential, tangential_mass, tangential_gas),
                                 *zip(radial, radial_mass, radial_gas)):
            self.assertAlmostEqual(whole, mass + gas, places=6)
        top = 180
        centrifugal = RADIUS * (750 * math.pi / 30)**2
        self.assertAlmostEqual(radial_gas[top], (pressure[top] - 1) * 1e5 * AREA, places=3)
        self.assertAlmostEqual(radial_mass[top], -centrifugal * (90 * (1 + LAMBDA) + 60), places=3)
        for degrees, p, gas, gas_out, mass, mass_out in zip(
                angle, pressure, tangential_gas, radial_gas, tangential_mass, radial_mass):
            # Both parts of a force make up one along the rod.
            rod = (p - 1) * 1e5 * AREA / math.sqrt(1 - (LAMBDA * math.sin(math.radians(degrees)))**2)
            self.assertAlmostEqual(math.hypot(gas, gas_out), abs(rod), delta=1e-3)
            self.assertAlmostEqual(mass * gas_out / rod,
                                   (mass_out + centrifugal * 60) * gas / rod, delta=1e-3)
        crankcase = self.table("forces", *masses, "--reference-pressure", "2")[1]
        self.assertAlmostEqual(crankcase[7][top], (pressure[top] - 2) * 1e5 * AREA, places=3)

        order, *harmonics = self.table("forces", *masses, "--harmonics", "8")[1]
        self.assertEqual(order, [0.5 * k for k in range(1, 9)])
        self.assert_harmonics(tangential_gas, *harmonics[:2])
        self.assert_harmonics(tangential_mass, *harmonics[2:])

    def test_what_is_wrong_is_said(self):
        bad = self.write("bad.txt", "bor = 3\n")
        for status, words, command, *options in (
                (2, "--strokes must be 2 or 4", "pressure"),
                (2, "--inlet-start is missing", "pressure", "--engine", ENGINE, "--strokes", 2),
                (2, "--recip-mass is missing", "forces", "--engine", ENGINE),
                (2, "bor in", "pressure", "--engine", bad),
                (1, "nowhere.txt", "pressure", "--engine", "nowhere.txt"),
                (2, "--harmonics", "pressure", "--engine", ENGINE, "--harmonics", 0),
                (2, "--harmonics must be less than 180",
                 "pressure", "--engine", ENGINE, *TWO_STROKE, "--harmonics", 180),
                (1, "no pressure curve comes from these data\n",
                 "pressure", "--engine", ENGINE, "--bore", 0),
                (1, "the exhaust must open before the inlet",
                 "pressure", "--engine", ENGINE, "--strokes", 2, "--inlet-start", 100,
                 "--inlet-close", 220)):
            done = self.call(command, *options, status=status)
            self.assertIn(words, done.stderr)
            self.assertEqual(done.stdout, "")


if __name__ == "__main__":
    unittest.main()
