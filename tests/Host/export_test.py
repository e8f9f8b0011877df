"""Reads exported results back and holds them against the binary files."""
import csv
import math
import struct
import unittest
from itertools import product

import h5py
import numpy
import openpyxl

from support import EXAMPLES, HostTest

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


class Export(HostTest):
    def setUp(self):
        super().setUp()
        text = PLANT.read_text().replace("LOADCASE", "OUTPUTANGLEBASEDRESULTS\nLOADCASE")
        self.write("plant.txt", text)
        self.call("run", "plant.txt", "--results", "results", "--quiet")
        self.ids = {kind: [int(line.split()[1]) for line in text.splitlines()
                           if line.startswith(kind + " ")] for kind in ("INERTIA", "SHAFT")}
        rows = text.split("LOADCASE\n")[1].splitlines()[2:]
        self.speeds = [float(row.split()[0]) for row in rows if row.strip()]
        # Values that no calculation of a good plant leaves.
        path = self.here / "results" / "SynthesisStress.bin"
        path.write_bytes(struct.pack("<3d", math.nan, math.inf, -math.inf)
                         + path.read_bytes()[24:])
        self.files = {path.stem: path for path in sorted((self.here / "results").glob("*.bin"))}

    def export(self, form, output, *options, status=0):
        return self.call("export", "results", "--format", form, "-o", output,
                         *(options or ("--input", "plant.txt")), status=status).stderr

    def test_hdf5_to_the_last_digit(self):
        self.export("hdf5", "all.h5")
        with h5py.File(self.here / "all.h5", "r") as file:
            for name, path in self.files.items():
                data = file[name]
                self.assertEqual(data.dtype, numpy.dtype("<f8"))
                self.assertEqual(data[...].tobytes(), path.read_bytes(), name)
                self.assertEqual(len(data.attrs["axes"]), data.ndim)
            for name, shape in SHAPES.items():
                self.assertEqual(file[name].shape, shape, name)
            for name, attribute, expected in (
                    ("DieselTorque", "axes",
                     ["load case", "diesel", "order", "shaft", "component"]),
                    ("DieselTorque", "components",
                     ["amplitude", "angle", "real part", "imaginary part"]),
                    ("DieselTorque", "component units", ["N m", "rad", "N m", "N m"]),
                    ("RelativeDeflection", "first", [2, 1])):
                self.assertEqual(list(file[name].attrs[attribute]), expected)
            self.assertEqual(file["DieselTorque"].attrs["unit"], "N m")
            self.assertEqual(file["SystemInfo"].attrs["counts"][7], "diesels")
            self.assertEqual(list(file["InertiaIds"]), self.ids["INERTIA"])
            self.assertEqual(list(file["ShaftIds"]), self.ids["SHAFT"])
            self.assertEqual(list(file["LoadCaseSpeeds"]), self.speeds)
            self.assertEqual(file["LoadCaseSpeeds"].attrs["unit"], "rpm")
            report = (self.here / "results" / "LoadCaseSetting.txt").read_text()
            self.assertEqual(file["LoadCaseSetting"][()].decode(), report)

    def assert_table(self, name, rows, tolerance=0):
        """A table as rows of words or numbers against the records of its file."""
        engines, orders, modes = range(1, ENGINES + 1), range(1, ORDERS + 1), range(2, MODES + 1)
        speeds, shafts = list(enumerate(self.speeds, 1)), self.ids["SHAFT"]
        header, labels = {
            "DieselTorque": (
                ["load case", "speed [rpm]", "diesel", "order place", "order", "shaft",
                 "amplitude [N m]", "angle [rad]", "real part [N m]", "imaginary part [N m]"],
                [[*case, source, place, place / 2, shaft]
                 for case, source, place, shaft in product(speeds, engines, orders, shafts)]),
            "SynthesisStress": (
                ["load case", "speed [rpm]", *(f"shaft {number} [Pa]" for number in shafts)],
                [[*case] for case in speeds]),
            "RelativeDeflection": (
                ["mode", *(f"inertia {number} [1]" for number in self.ids["INERTIA"])],
                [[mode] for mode in modes]),
            "VectorSumRpm": (
                ["engine", "mode", *(f"order place {place} [rpm]" for place in orders)],
                [[engine, mode] for engine, mode in product(engines, modes)]),
            "NaturalFrequency": (["mode", "value [rad/s]"], [[1], *([mode] for mode in modes)]),
        }.get(name, (list(rows[0]), None))
        self.assertEqual(list(rows[0]), header)
        # The columns of values carry units; the speed of a load case names its row.
        width = sum("[" not in word or word == "speed [rpm]" for word in header)
        if labels is not None:
            # Without a diff, which would take minutes.
            found = [[float(cell) for cell in row[:width]] for row in rows[1:]]
            self.assertTrue(found == labels, f"labels of {name}")
        numpy.testing.assert_allclose([float(cell) for row in rows[1:] for cell in row[width:]],
                                      numpy.fromfile(self.files[name], dtype="<f8"),
                                      rtol=tolerance, err_msg=name)

    def test_csv(self):
        self.export("csv", "all")
        self.assertEqual(sorted(path.stem for path in (self.here / "all").iterdir()),
                         list(self.files))
        for name in self.files:
            with open(self.here / "all" / (name + ".csv"), newline="", encoding="utf-8") as file:
                self.assert_table(name, list(csv.reader(file)))
        # Without the input file the points have their numbers.
        self.call("export", "results", "--format", "csv")
        lines = (self.here / "results-csv" / "SynthesisTorque.csv").read_text().splitlines()
        self.assertEqual(lines[0].split(",")[:3], ["load case", "shaft 1 [N m]", "shaft 2 [N m]"])
        self.assertEqual(len(lines), 1 + CASES)

    def test_workbook(self):
        self.export("xlsx", "all.xlsx")
        book = openpyxl.load_workbook(self.here / "all.xlsx", read_only=True)
        self.assertEqual(sorted(book.sheetnames), list(self.files))
        for name in book.sheetnames:
            rows = list(book[name].iter_rows(values_only=True))
            self.assertTrue(rows[0][0], name)
            if name == "DieselTorque":
                self.assertIsInstance(rows[2][6], float)
            self.assert_table(name, rows[1:], 1e-15)

    def test_a_long_table_goes_on_in_another_sheet(self):
        rows = 2 ** 20  # two more than a sheet takes with its head
        (self.here / "many").mkdir()
        (self.here / "many" / "NaturalFrequency.bin").write_bytes(
            numpy.arange(rows, dtype="<f8").tobytes())
        self.call("export", "many", "--format", "xlsx")
        book = openpyxl.load_workbook(self.here / "many.xlsx", read_only=True)
        self.assertEqual(book.sheetnames, ["NaturalFrequency", "NaturalFrequency 2"])
        rest = list(book["NaturalFrequency 2"].iter_rows(values_only=True))
        self.assertEqual(rest[1:], [("mode", "value [rad/s]"), (rows - 1, rows - 2),
                                    (rows, rows - 1)])

    def test_refusals(self):
        (self.here / "empty").mkdir()
        for words, status, *options in (("--format", 2, "results"),
                                        ("--format", 2, "results", "--format", "doc"),
                                        ("no such directory", 1, "x", "--format", "csv"),
                                        ("no results", 1, "empty", "--format", "csv")):
            self.assertIn(words, self.call("export", *options, status=status).stderr)
        for form in ("csv", "xlsx", "hdf5"):
            self.assertIn("can't be", self.export(form, "plant.txt/x", status=1))
        other = EXAMPLES / "two-stroke-ship" / "input.txt"
        self.assertIn("not of this input", self.export("csv", "all", "--input", other, status=1))


if __name__ == "__main__":
    unittest.main()
