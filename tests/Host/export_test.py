"""Reads exported results back and holds them against the binary files."""
import csv
import math
import os
import pathlib
import resource
import signal
import struct
import subprocess
import time
import unittest
from itertools import product

import h5py
import numpy
import openpyxl

from support import EXAMPLES, PROGRAM, HostTest

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

REMARK = "verenwick-remark.txt"


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
        # Values that no calculation of a good plant leaves, as another host might write them.
        (self.here / "results" / "run.json").unlink()
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

    def assert_table(self, name, rows):
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
                                      rtol=0, err_msg=name)

    def test_csv(self):
        self.export("csv", "all")
        self.assertEqual(sorted(path.stem for path in (self.here / "all").glob("*.csv")),
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
            self.assert_table(name, rows[1:])

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

    def test_remarks(self):
        """What must be said of results stands in every export of them, and only then."""
        words = "without a run record"
        self.call("run", "plant.txt", "--results", "recorded", "--mode", "free", "--quiet")
        for directory, remarked in (("results", True), ("recorded", False)):
            def said(text, remarked=remarked):
                self.assertEqual(words in text, remarked)
            for form in ("csv", "xlsx", "hdf5"):
                said(self.call("export", directory, "--format", form, "-o",
                               f"of.{form}").stderr)
            path = self.here / "of.csv" / REMARK
            self.assertEqual(path.exists(), remarked)
            said(path.read_text() if remarked else "")
            book = openpyxl.load_workbook(self.here / "of.xlsx", read_only=True)
            for sheet in book:
                said(next(sheet.iter_rows(max_row=1, values_only=True))[0])
            book.close()
            with h5py.File(self.here / "of.hdf5", "r") as file:
                for each in (file, *file.values()):
                    said(each.attrs.get("remark", ""))

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


class Faults(HostTest):
    """An export appears whole or not at all."""
    FORMS = ("csv", "xlsx", "hdf5")

    def setUp(self):
        super().setUp()
        self.modes(20000)

    def modes(self, count):
        """A result directory of one file with numbers that don't compress."""
        path = self.here / "results" / "NaturalFrequency.bin"
        path.parent.mkdir(exist_ok=True)
        path.write_bytes(numpy.random.default_rng(1).random(count).tobytes())

    def content(self, form):
        """What the target holds, by the names in it."""
        path = self.here / form
        return ({each.name: each.read_bytes() for each in path.iterdir()} if path.is_dir()
                else path.read_bytes())

    def assert_no_leftover(self):
        self.assertEqual([path for path in self.here.rglob("*") if path.suffix == ".part"], [])

    def export(self, form, target=None, status=0, **process):
        return self.call("export", "results", "--format", form, "-o", target or form,
                         status=status, **process).stderr

    def test_no_space(self):
        def limited(limit):
            return lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
        for form in self.FORMS:
            self.modes(10)
            self.export(form)
            old = self.content(form)
            self.modes(20000)
            for limit in (1, 2000, 100000):
                words = self.export(form, status=1, preexec_fn=limited(limit))
                self.assertRegex(words, rf"(?m)^verenwick: {form}\S* can't be written: File too large$")
                self.assertEqual(self.content(form), old)
                self.export(form, "none", status=1, preexec_fn=limited(limit))
                self.assertFalse((self.here / "none").exists())
            self.assert_no_leftover()
            self.export(form)
            self.assertNotEqual(self.content(form), old)

    def test_no_temporary_space(self):
        self.export("xlsx", "all.xlsx", env={"TMPDIR": "/proc/none"})
        sheet = openpyxl.load_workbook(self.here / "all.xlsx", read_only=True)["NaturalFrequency"]
        found = [row[1] for row in sheet.iter_rows(min_row=3, values_only=True)]
        self.assertTrue(found == list(numpy.random.default_rng(1).random(20000)))

    @unittest.skipUnless(pathlib.Path("/dev/full").exists(), "no full device")
    def test_targets_that_are_no_plain_files(self):
        (self.here / "elsewhere").mkdir()
        (self.here / "link").symlink_to("elsewhere")
        (self.here / "file-link").symlink_to("elsewhere/file")
        os.mkfifo(self.here / "fifo")
        for form in self.FORMS:
            for target in ("link", "file-link", "fifo", "/dev/full"):
                self.assertRegex(self.export(form, target, status=1), f"{target} (is a|can't be)")
        self.assertEqual(list((self.here / "elsewhere").iterdir()), [])
        self.assertTrue((self.here / "link").is_symlink() and (self.here / "fifo").is_fifo())

    def test_tables_of_an_earlier_export(self):
        self.write("csv/mine.csv", "of the engineer")
        self.write("csv/Overview.csv", "of the engineer too")
        self.write("csv/SynthesisTorque.csv", "of another plant")
        self.export("csv")
        self.assertEqual(set(self.content("csv")), {"mine.csv", "Overview.csv",
                                                    "NaturalFrequency.csv", REMARK})

    def test_signals(self):
        for form in self.FORMS:
            self.modes(10)
            self.export(form)
            old = self.content(form)
            self.modes(10000000)
            for number, target in ((signal.SIGTERM, form), (signal.SIGINT, "none")):
                process = subprocess.Popen([PROGRAM, "export", "results", "--format", form,
                                            "-o", target], cwd=self.here,
                                           stderr=subprocess.DEVNULL)
                while process.poll() is None and not list(self.here.rglob("*.part")):
                    time.sleep(0.001)
                process.send_signal(number)
                self.assertEqual(process.wait(timeout=60), -number)
                self.assert_no_leftover()
            self.assertEqual(self.content(form), old)
            self.assertFalse((self.here / "none").exists())


if __name__ == "__main__":
    unittest.main()
