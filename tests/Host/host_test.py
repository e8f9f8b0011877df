"""Runs the program as an engineer does: exit status, words, tables.

usage: host_test.py PROGRAM EXAMPLES [unittest options]
"""
import math
import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))
EXAMPLES = pathlib.Path(os.path.abspath(sys.argv.pop(1)))


def inertia(number, value):
    return f"INERTIA {number} 1.0 {value} 0.0 0.0\n"


def shaft(number, origin, destination, stiffness):
    return f"SHAFT {number} {origin} {destination} 1.0 {stiffness} 0.0 0.0 200.0 0.0 0 0\n"


def records(path):
    data = path.read_bytes()
    return struct.unpack(f"<{len(data) // 8}d", data)


def table(text, title):
    """The rows of the table under the line that starts with the title, as lists of words."""
    lines = text.splitlines()
    start = next(i for i, line in enumerate(lines) if line.startswith(title))
    rows = []
    for line in lines[start + 2:]:
        if not line or not line.split()[0].isdigit():
            break
        rows.append(line.split())
    return rows


class Host(unittest.TestCase):
    def setUp(self):
        self.scratch = tempfile.TemporaryDirectory()
        self.here = pathlib.Path(self.scratch.name)

    def tearDown(self):
        self.scratch.cleanup()

    def call(self, *arguments, status=0, cwd=None):
        done = subprocess.run([PROGRAM, *map(str, arguments)], cwd=cwd or self.here, timeout=120,
                              capture_output=True, text=True)
        self.assertEqual(done.returncode, status, (arguments, done.stdout, done.stderr))
        return done

    def run_plant(self, text, *arguments, status=0):
        (self.here / "plant.txt").write_text(text)
        return self.call("run", "plant.txt", *arguments, status=status)

    def nodes(self, text):
        rows = table(self.run_plant(text, "--mode", "free").stdout, "Natural frequencies")
        self.assertEqual([int(row[0]) for row in rows], list(range(1, len(rows) + 1)))
        return [int(row[4]) for row in rows]


class Usage(Host):
    def test_wrong_usage_is_2(self):
        self.run_plant(inertia(1, 5) + inertia(2, 5) + shaft(1, 1, 2, 1e6), "--mode", "1")
        for arguments in ([], ["walk"], ["run"], ["run", "plant.txt", "--mode", "fast"],
                          ["run", "plant.txt", "--mode", "1.5"], ["run", "plant.txt", "--loud"],
                          ["run", "plant.txt", "--mode", "99999999999"],
                          ["show", "results-of-plant"], ["show", "results-of-plant", "Torques"],
                          ["show", "results-of-plant", "NaturalFrequency", "--point", "1"],
                          ["show", "results-of-plant", "NaturalFrequency", "--mode", "3"],
                          ["show", "results-of-plant", "NaturalFrequency", "--mode", "0"],
                          ["show", "results-of-plant", "RelativeTorque", "--mode", "one"]):
            done = self.call(*arguments, status=2)
            self.assertEqual(done.stdout, "", arguments)
            self.assertNotEqual(done.stderr, "", arguments)
        self.assertIn("--results", self.call("run", "--help").stdout)


class Run(Host):
    # Two inertias of 100 and 50 kg m2, k = 1e6 N m/rad; decimal commas, tabs and small letters as
    # in the files of other programs.
    TWO = ("a title\ninertia\t1 1.0 100,0 0 0\r\nInertia 2 1.0 50 0 0\n\n"
           + shaft(7, 1, 2, 1e6).replace(".", ","))

    def test_prints_the_frequencies(self):
        done = self.run_plant(self.TWO, "--mode", "free")
        self.assertTrue(done.stdout.startswith("plant.txt: 2 inertias, 1 shaft"), done.stdout)
        rows = table(done.stdout, "Natural frequencies")
        omega = math.sqrt(1e6 * (1 / 100 + 1 / 50))
        expected = [[1, 0, 0, 0, 0],
                    [2, omega, omega / (2 * math.pi), omega * 30 / math.pi, 1]]
        for row, numbers in zip(rows, expected, strict=True):
            for word, number in zip(row, numbers, strict=True):
                self.assertAlmostEqual(float(word), number, delta=6e-4)
        results = self.here / "results-of-plant"
        self.assertIn(str(results), done.stdout)
        self.assertEqual((results / "Verenwick.log").read_text(), "")
        self.assertEqual(done.stderr, "")

    def test_counts_nodes(self):
        chain = "".join(inertia(i, 10) for i in range(1, 31))
        chain += "".join(shaft(i, i, i + 1, 1e6) for i in range(1, 30))
        self.assertEqual(self.nodes(chain), list(range(30)))
        # Two equal branches and a third one: where the two swing against each other, the rest of
        # the line is the one node.
        twin = "".join(inertia(i, j) for i, j in ((1, 20), (2, 30), (3, 20), (4, 30), (5, 300),
                                                  (6, 77), (7, 400)))
        twin += (shaft(1, 1, 2, 1e6) + shaft(2, 2, 5, 2e6) + shaft(3, 4, 3, 1e6)
                 + shaft(4, 5, 4, 2e6) + shaft(5, 5, 6, 3e5) + shaft(6, 6, 7, 1e5))
        deflections = records(self.here / "results-of-plant" / "RelativeDeflection.bin")
        self.assertEqual(len(deflections), 29 * 30)
        found = self.nodes(twin)
        shapes = records(self.here / "results-of-plant" / "RelativeDeflection.bin")
        ends = ((0, 1), (1, 4), (3, 2), (4, 3), (4, 5), (5, 6))
        against = 0
        for mode in range(2, 8):
            shape = shapes[(mode - 2) * 7:(mode - 1) * 7]
            if max(abs(shape[i]) for i in (4, 5, 6)) < 1e-9 * max(map(abs, shape)):
                against += 1
                # Inner nodes of both branches, and the line at rest between them.
                inner = sum(shape[i] * shape[j] < 0 for i, j in ((0, 1), (3, 2)))
                self.assertEqual(found[mode - 1], inner + 1)
            else:
                self.assertEqual(found[mode - 1], sum(shape[i] * shape[j] < 0 for i, j in ends))
                self.assertEqual(found[mode - 1], mode - 1)
        self.assertEqual(against, 2)
        # An inertia at rest in the middle is one node, not two and not none.
        middle = (inertia(4, 50) + inertia(9, 20) + inertia(2, 50) + shaft(1, 9, 4, 1e6)
                  + shaft(2, 2, 9, 1e6))
        self.assertEqual(self.nodes(middle), [0, 1, 2])

    def test_refused_input_is_1_with_the_words_of_the_log(self):
        for text, words in ((inertia(1, 5) + "SHAFT 1 1\n", "in input file line 2"),
                            ("INERTIA 1 1.0 5.0 0.0\n", "Id, RpmRatio, Inertia")):
            done = self.run_plant(text, "--quiet", status=1)
            self.assertIn(words, done.stderr)
            self.assertEqual(done.stdout, "")
            log = self.here / "results-of-plant" / "Verenwick.log"
            self.assertIn(log.read_text(), done.stderr)
        done = self.call("run", "missing.txt", "--results", "deep/er", status=1)
        self.assertIn("error occurs when accessing the input file", done.stderr)
        self.assertTrue((self.here / "deep/er/Verenwick.log").is_file())

    def test_result_directory(self):
        self.run_plant(self.TWO)
        results = self.here / "results-of-plant"
        (results / "notes.txt").write_text("mine")
        (results / "Genset.txt").write_text("1 100 90\n")
        # A refused input leaves no results of the run before; what is no result stays.
        self.run_plant("INERTIA 1\n", status=1)
        self.assertEqual(sorted(os.listdir(results)),
                         ["Genset.txt", "Verenwick.log", "notes.txt"])
        self.run_plant(self.TWO, "--mode", "free", "--quiet")
        # A report takes nothing away from the free vibration.
        self.run_plant(self.TWO, "--mode", "report")
        self.assertEqual(len(records(results / "NaturalFrequency.bin")), 2)
        done = self.run_plant(self.TWO, "--results", "plant.txt", status=1)
        self.assertIn("can't be made", done.stderr)
        blocked = self.here / "blocked" / "Verenwick.log" / "inside"
        blocked.mkdir(parents=True)
        self.run_plant(self.TWO, "--results", "blocked", status=1)
        long = "/".join(["d" * 200] * 6)
        done = self.run_plant(self.TWO, "--results", long, status=1)
        self.assertIn("no log", done.stderr)

    def test_modes(self):
        for mode, free in (("report", False), ("0", False), ("free", True), ("1", True),
                           ("forced", False), ("both", True), ("7", True), ("-3", True)):
            done = self.run_plant(self.TWO, "--mode", mode, "--results", "of" + mode)
            self.assertEqual("Natural frequencies" in done.stdout, free, mode)
            self.assertEqual((self.here / ("of" + mode) / "NaturalFrequency.bin").exists(), free)
        self.assertEqual(self.run_plant(self.TWO, "--mode", "free", "--quiet").stdout, "")

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a device that is always full")
    def test_full_output_is_1(self):
        self.run_plant(self.TWO)
        for arguments in (["run", "plant.txt"], ["show", "results-of-plant", "NaturalFrequency"]):
            with open("/dev/full", "w", encoding="ascii") as full:
                done = subprocess.run([PROGRAM, *arguments], cwd=self.here, stdout=full,
                                      stderr=subprocess.PIPE, timeout=60)
            self.assertEqual(done.returncode, 1)


class Show(Host):
    def setUp(self):
        super().setUp()
        # 2 inertias, 1 shaft, 2 diesels of 20 orders, 3 load cases.
        counts = [2, 1, 0, 0, 0, 0, 0, 2, 0, 0, 0, 0, 0, 3, 20, 0, 0, 0]
        self.write("SystemInfo.bin", counts)
        self.values = [[case, source, order, point, case + source / 7, 0.25, -order, point / 3]
                       for case in (1, 2, 3) for source in (1, 2) for order in range(1, 21)
                       for point in (1, 2)]
        self.write("DieselDeflection.bin", [v for row in self.values for v in row[4:]])
        self.write("SynthesisTorque.bin", [1.5e6, float("nan"), 3])
        (self.here / "Overview.txt").write_text("Engine\n 1\tA\n")

    def write(self, name, numbers):
        (self.here / name).write_bytes(struct.pack(f"<{len(numbers)}d", *numbers))

    def csv(self, *arguments):
        lines = self.call("show", ".", *arguments, "--csv").stdout.splitlines()
        return lines[0].split(","), [[float(word) for word in line.split(",")]
                                     for line in lines[1:]]

    def test_whole_family_file(self):
        header, rows = self.csv("DieselDeflection.bin")
        self.assertEqual(header, ["load case", "diesel", "order", "inertia", "amplitude [rad]",
                                  "angle [rad]", "real part [rad]", "imaginary part [rad]"])
        self.assertEqual(rows, self.values)  # every digit

    def test_filters(self):
        for choice in ({0: 2}, {1: 1}, {2: 20}, {3: 2}, {0: 3, 1: 2, 2: 7, 3: 1}):
            options = [word for column, number in choice.items()
                       for word in (("--case", "--source", "--order", "--point")[column], number)]
            expected = [row for row in self.values
                        if all(row[column] == number for column, number in choice.items())]
            self.assertEqual(self.csv("DieselDeflection", *options)[1], expected)

    def test_table(self):
        lines = self.call("show", ".", "SynthesisTorque").stdout.splitlines()
        self.assertIn("SynthesisTorque.bin: ", lines[0])
        self.assertEqual(lines[1].split("  ")[-1].strip(), "value [N m]")
        self.assertEqual([line.split() for line in lines[2:]],
                         [["1", "1", "1500000"], ["2", "1", "nan"], ["3", "1", "3"]])
        self.assertEqual(len({len(line) for line in lines[1:]}), 1)
        counts = self.call("show", ".", "SystemInfo").stdout
        self.assertRegex(counts, r"\n +load cases +3\n")
        self.assertRegex(counts, r"\n +diesels +2\n")

    def test_text_file_as_it_is(self):
        self.assertEqual(self.call("show", ".", "Overview").stdout, "Engine\n 1\tA\n")

    def test_broken_directory_is_1(self):
        (self.here / "DieselDeflection.bin").write_bytes(bytes(12))
        for directory, name, words in ((".", "DieselDeflection", "12 bytes"),
                                       (".", "NaturalFrequency", "no such file"),
                                       ("nowhere", "SystemInfo", "no such directory")):
            self.assertIn(words, self.call("show", directory, name, status=1).stderr)


class Examples(Host):
    """The summary of every example plant against the numbers in its files."""

    def test_summaries(self):
        inputs = sorted(EXAMPLES.glob("*/input.txt"))
        self.assertTrue(inputs)
        for path in inputs:
            with self.subTest(plant=path.parent.name):
                results = self.here / path.parent.name
                # Data files are named as seen from the project's root.
                done = self.call("run", path, "--results", results, cwd=EXAMPLES.parent)
                self.check_frequencies(done.stdout, results)
                self.check_critical_speeds(done.stdout, results)
                self.check_load_cases(done.stdout, results, path.read_text())

    def check_frequencies(self, text, results):
        rows = table(text, "Natural frequencies")
        for row, omega in zip(rows, records(results / "NaturalFrequency.bin"), strict=True):
            self.assertAlmostEqual(float(row[1]), omega, delta=6e-5)
            self.assertAlmostEqual(float(row[2]), omega / (2 * math.pi), delta=6e-5)
            self.assertAlmostEqual(float(row[3]), omega * 30 / math.pi, delta=6e-4)
        # A shape has no node count where it isn't finite, and the table says so.
        shapes = records(results / "RelativeDeflection.bin")
        points = len(shapes) // (len(rows) - 1)
        for mode, row in enumerate(rows[1:]):
            shape = shapes[mode * points:(mode + 1) * points]
            self.assertEqual(row[4] == "-", not all(map(math.isfinite, shape)))
        self.assertEqual(any(row[4] == "-" for row in rows), "-: the mode leaves" in text)

    def check_critical_speeds(self, text, results):
        if not (results / "VectorSum.bin").exists():
            self.assertNotIn("Critical speeds", text)
            return
        engines = int(records(results / "SystemInfo.bin")[7])
        omegas = records(results / "NaturalFrequency.bin")
        sums = records(results / "VectorSum.bin")
        speeds = records(results / "VectorSumRpm.bin")
        modes = len(omegas) - 1
        orders = len(sums) // (engines * modes)
        for engine in range(engines):
            rows = table(text, f"Critical speeds of diesel {engine + 1}:")
            self.assertEqual(len(rows), modes)
            for mode, row in enumerate(rows):
                start = (engine * modes + mode) * orders
                of_mode = sums[start:start + orders]
                shown = [[float(word) for word in row[i:i + 3]] for i in range(1, len(row), 3)]
                self.assertEqual(int(row[0]), mode + 2)
                if any(map(math.isnan, of_mode)):
                    continue
                self.assertEqual(len(shown), 5)
                for (order, total, rpm), largest in zip(shown, sorted(of_mode, reverse=True)):
                    self.assertAlmostEqual(total, largest, delta=6e-4)
                    place = min(range(orders), key=lambda o: abs(speeds[start + o] - rpm))
                    self.assertAlmostEqual(rpm, speeds[start + place], delta=6e-3)
                    self.assertAlmostEqual(total, of_mode[place], delta=6e-4)
                    self.assertAlmostEqual(order * speeds[start + place] * math.pi / 30,
                                           omegas[mode + 1], delta=1e-6 * omegas[mode + 1])

    def check_load_cases(self, text, results, plant):
        title = "Largest vibratory values"
        if not (results / "SynthesisTorque.bin").exists():
            self.assertNotIn(title, text)
            return
        keyword = re.compile(r"^\s*(INERTIA|SHAFT)\s+(\d+)\s", re.IGNORECASE | re.MULTILINE)
        ids = {"INERTIA": [], "SHAFT": []}
        for match in keyword.finditer(plant):
            ids[match[1].upper()].append(match[2])
        cases = int(records(results / "SystemInfo.bin")[13])
        rows = table(text, title)
        self.assertEqual(len(rows), cases)
        speeds = re.split(r"^\s*RPM.*\n.*\n", plant, flags=re.IGNORECASE | re.MULTILINE)[1]
        for case, row in enumerate(rows):
            self.assertEqual(int(row[0]), case + 1)
            self.assertAlmostEqual(float(row[1]), float(speeds.splitlines()[case].split()[0]),
                                   delta=0.06)
            for column, name, kind, unit in ((2, "SynthesisTorque", "SHAFT", 1e3),
                                             (4, "SynthesisStress", "SHAFT", 1e6),
                                             (6, "SynthesisDeflection", "INERTIA", 1e-3)):
                values = records(results / (name + ".bin"))
                points = len(values) // cases
                of_case = values[case * points:(case + 1) * points]
                largest = max(range(points), key=of_case.__getitem__)
                self.assertAlmostEqual(float(row[column]) * unit, of_case[largest],
                                       delta=6e-4 * of_case[largest])
                self.assertEqual(row[column + 1], ids[kind][largest])
            losses = records(results / "ShaftPowerLoss.bin")
            points = len(losses) // cases
            total = sum(losses[case * points:(case + 1) * points])
            self.assertAlmostEqual(float(row[8]) * 1e3, total, delta=6e-4 * total)


if __name__ == "__main__":
    unittest.main()
