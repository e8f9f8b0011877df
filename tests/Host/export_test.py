"""Reads exported results back and holds them against the binary files.

usage: export_test.py PROGRAM EXAMPLES [unittest options]
"""
import csv
import itertools
import math
import os
import pathlib
import struct
import subprocess
import sys
import tempfile
import unittest

import h5py
import numpy
import openpyxl

PROGRAM = os.path.abspath(sys.argv.pop(1))
EXAMPLES = pathlib.Path(os.path.abspath(sys.argv.pop(1)))
PLANT = EXAMPLES / "twin-engine-gear" / "input.txt"

# The plant: 24 inertias, 23 shafts, 5 load cases, 24 modes, 2 diesels of 24 orders.
INERTIAS, SHAFTS, CASES, MODES, ENGINES, ORDERS = 24, 23, 5, 24, 2, 24
SHAPES = {
    "SystemInfo": (18,),
    "NaturalFrequency": (MODES,),
    "RelativeDeflection": (MODES - 1, INERTIAS),
    "VectorSumRpm": (ENGINES, MODES - 1, ORDERS),
    "DieselTorque": (CASES, ENGINES, ORDERS, SHAFTS, 4),
    "PropellerDeflection": (CASES, 1, 2, INERTIAS, 4),
    "ElectricMotorStress": (CASES, 0, 4, SHAFTS, 4),
    "SynthesisStress": (CASES, SHAFTS),
    "TorqueAngleBasedDiesel": (CASES, SHAFTS, 360),
}
FAMILY = ["amplitude", "angle", "real part", "imaginary part"]


class Export(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.TemporaryDirectory()
        cls.here = pathlib.Path(cls.scratch.name)
        text = PLANT.read_text().replace("LOADCASE", "OUTPUTANGLEBASEDRESULTS\nLOADCASE")
        (cls.here / "plant.txt").write_text(text)
        cls.call("run", "plant.txt", "--results", "results", "--quiet")
        cls.ids = {kind: [int(line.split()[1]) for line in text.splitlines()
                          if line.startswith(kind + " ")] for kind in ("INERTIA", "SHAFT")}
        rows = text.split("LOADCASE\n")[1].splitlines()[2:]
        cls.speeds = [float(row.split()[0]) for row in rows if row.strip()]
        # Values that no calculation of a good plant leaves.
        path = cls.here / "results" / "SynthesisStress.bin"
        path.write_bytes(struct.pack("<3d", math.nan, math.inf, -math.inf)
                         + path.read_bytes()[24:])
        cls.files = sorted((cls.here / "results").glob("*.bin"))

    @classmethod
    def tearDownClass(cls):
        cls.scratch.cleanup()

    @classmethod
    def call(cls, *arguments, status=0):
        done = subprocess.run([PROGRAM, *map(str, arguments)], cwd=cls.here, timeout=300,
                              capture_output=True, text=True)
        assert done.returncode == status, (arguments, done.returncode, done.stdout, done.stderr)
        return done.stderr

    def records(self, name):
        return numpy.fromfile(self.here / "results" / (name + ".bin"), dtype="<f8")

    def test_hdf5_to_the_last_digit(self):
        self.call("export", "results", "--format", "hdf5", "-o", "all.h5", "--input", "plant.txt")
        with h5py.File(self.here / "all.h5", "r") as file:
            for path in self.files:
                data = file[path.stem]
                self.assertEqual(data.dtype, numpy.dtype("<f8"))
                self.assertEqual(data[...].tobytes(), path.read_bytes(), path.stem)
                self.assertEqual(len(data.attrs["axes"]), data.ndim)
                self.assertIn("unit", data.attrs)
            for name, shape in SHAPES.items():
                self.assertEqual(file[name].shape, shape, name)
            torque = file["DieselTorque"]
            self.assertEqual(torque.attrs["unit"], "N m")
            self.assertEqual(list(torque.attrs["axes"]),
                             ["load case", "diesel", "order", "shaft", "component"])
            self.assertEqual(list(torque.attrs["components"]), FAMILY)
            self.assertEqual(list(torque.attrs["component units"]), ["N m", "rad", "N m", "N m"])
            self.assertEqual(list(file["RelativeDeflection"].attrs["first"]), [2, 1])
            self.assertEqual(file["SystemInfo"].attrs["counts"][7], "diesels")
            self.assertEqual(list(file["InertiaIds"]), self.ids["INERTIA"])
            self.assertEqual(list(file["ShaftIds"]), self.ids["SHAFT"])
            self.assertEqual(list(file["LoadCaseSpeeds"]), self.speeds)
            self.assertEqual(file["LoadCaseSpeeds"].attrs["unit"], "rpm")
            report = (self.here / "results" / "LoadCaseSetting.txt").read_text()
            self.assertEqual(file["LoadCaseSetting"][()].decode(), report)

    def table(self, name, rows, tolerance):
        """A table as rows of words or numbers against the records of its file."""
        header, body = list(rows[0]), rows[1:]
        records = self.records(name)
        if name == "DieselTorque":
            self.assertEqual(header, ["load case", "speed [rpm]", "diesel", "order place", "order",
                                      "shaft", "amplitude [N m]", "angle [rad]",
                                      "real part [N m]", "imaginary part [N m]"])
            places = itertools.product(range(1, CASES + 1), range(1, ENGINES + 1),
                                       range(1, ORDERS + 1), self.ids["SHAFT"])
            labels = [[case, self.speeds[case - 1], source, place, place / 2, shaft]
                      for case, source, place, shaft in places]
        elif name == "SynthesisStress":
            self.assertEqual(header, ["load case", "speed [rpm]"]
                             + [f"shaft {number} [Pa]" for number in self.ids["SHAFT"]])
            labels = [[case + 1, speed] for case, speed in enumerate(self.speeds)]
        elif name == "RelativeDeflection":
            self.assertEqual(header, ["mode"] + [f"inertia {number} [1]"
                                                 for number in self.ids["INERTIA"]])
            labels = [[mode] for mode in range(2, MODES + 1)]
        elif name == "VectorSumRpm":
            self.assertEqual(header, ["engine", "mode"] + [f"order place {place} [rpm]"
                                                           for place in range(1, ORDERS + 1)])
            labels = [[engine, mode] for engine in (1, 2) for mode in range(2, MODES + 1)]
        elif name == "TorqueAngleBasedDiesel":
            self.assertEqual(len(header), 3 + 360)
            labels = [[case + 1, speed, shaft] for case, speed in enumerate(self.speeds)
                      for shaft in self.ids["SHAFT"]]
        elif name == "NaturalFrequency":
            self.assertEqual(header, ["mode", "value [rad/s]"])
            labels = [[mode] for mode in range(1, MODES + 1)]
        else:
            labels = None
        # The columns of values carry units; the speed of a load case names its row.
        width = sum("[" not in word or word == "speed [rpm]" for word in header)
        if labels is not None:
            self.assertEqual([[float(cell) for cell in row[:width]] for row in body], labels, name)
        values = [float(cell) for row in body for cell in row[width:]]
        self.assertEqual(len(values), len(records), name)
        for value, record in zip(values, records):
            if math.isfinite(record):
                self.assertLessEqual(abs(value - record), tolerance * abs(record), name)
            else:
                self.assertEqual(str(value), str(float(record)), name)

    def test_csv(self):
        self.call("export", "results", "--format", "csv", "-o", "all", "--input", "plant.txt")
        self.assertEqual(sorted(path.stem for path in (self.here / "all").iterdir()),
                         [path.stem for path in self.files])
        for path in (self.here / "all").iterdir():
            with open(path, newline="", encoding="utf-8") as file:
                self.table(path.stem, list(csv.reader(file)), 0)
        # Without the input file the points have their numbers.
        self.call("export", "results", "--format", "csv")
        lines = (self.here / "results-csv" / "SynthesisTorque.csv").read_text().splitlines()
        self.assertEqual(lines[0].split(",")[:3], ["load case", "shaft 1 [N m]", "shaft 2 [N m]"])
        self.assertEqual(len(lines), 1 + CASES)

    def test_workbook(self):
        self.call("export", "results", "--format", "xlsx", "-o", "all.xlsx", "--input", "plant.txt")
        book = openpyxl.load_workbook(self.here / "all.xlsx", read_only=True)
        self.assertEqual(sorted(book.sheetnames), [path.stem for path in self.files])
        for name in book.sheetnames:
            rows = list(book[name].iter_rows(values_only=True))
            self.assertTrue(rows[0][0], name)
            if name == "DieselTorque":
                self.assertIsInstance(rows[2][6], float)
            self.table(name, rows[1:], 1e-15)

    def test_a_long_table_goes_on_in_another_sheet(self):
        many = self.here / "many"
        many.mkdir()
        rows = 2 ** 20  # two more than a sheet takes with its head
        (many / "NaturalFrequency.bin").write_bytes(numpy.arange(rows, dtype="<f8").tobytes())
        self.call("export", "many", "--format", "xlsx")
        book = openpyxl.load_workbook(self.here / "many.xlsx", read_only=True)
        self.assertEqual(book.sheetnames, ["NaturalFrequency", "NaturalFrequency 2"])
        rest = list(book["NaturalFrequency 2"].iter_rows(values_only=True))
        self.assertEqual(rest[1:], [("mode", "value [rad/s]"), (rows - 1, rows - 2),
                                    (rows, rows - 1)])

    def test_refusals(self):
        self.call("export", "results", status=2)
        self.call("export", "results", "--format", "doc", status=2)
        self.assertIn("no such directory", self.call("export", "x", "--format", "csv", status=1))
        (self.here / "empty").mkdir()
        self.assertIn("no results", self.call("export", "empty", "--format", "csv", status=1))
        for kind in ("csv", "xlsx", "hdf5"):
            self.assertIn("can't be", self.call("export", "results", "--format", kind, "-o",
                                                "plant.txt/x", status=1))
        other = EXAMPLES / "two-stroke-ship" / "input.txt"
        self.assertIn("not of this input", self.call("export", "results", "--format", "csv",
                                                     "--input", other, status=1))


if __name__ == "__main__":
    unittest.main()
