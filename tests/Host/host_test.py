"""Runs the program as an engineer does: exit status, words, tables."""
import json
import math
import os
import re
import struct
import subprocess
import unittest

import numpy

from support import EXAMPLES, PROGRAM, SMALL_PLANT, HostTest, records


def inertia(number, value):
    return f"INERTIA {number} 1.0 {value} 0.0 0.0\n"


def shaft(number, origin, destination, stiffness):
    return f"SHAFT {number} {origin} {destination} 1.0 {stiffness} 0.0 0.0 200.0 0.0 0 0\n"


# Two inertias of 100 and 50 kg m2, k = 1e6 N m/rad; decimal commas, tabs and small letters as in the
# files of other programs.
TWO = ("a title\ninertia\t1 1.0 100,0 0 0\r\nInertia 2 1.0 50 0 0\n\n"
       + shaft(7, 1, 2, 1e6).replace(".", ","))


class Run(HostTest):
    def run_plant(self, text, *arguments, status=0):
        return self.call("run", self.write("plant.txt", text), *arguments, status=status)

    def nodes(self, text):
        document = json.loads(self.run_plant(text, "--mode", "free", "--json").stdout)
        return [mode["nodes"] for mode in document["modes"]]

    def test_wrong_usage_is_2(self):
        self.run_plant(TWO, "--mode", "free", "--results", "of")
        for words in ("", "walk", "run", "run plant.txt --loud", "run plant.txt --mode 1.5",
                      "run plant.txt --mode 99999999999", "show of Torques",
                      "show of NaturalFrequency --point 1", "show of NaturalFrequency --mode 3",
                      "show of NaturalFrequency --mode 0", "show of RelativeTorque --mode one"):
            done = self.call(*words.split(), status=2)
            self.assertEqual(done.stdout, "", words)
            self.assertNotEqual(done.stderr, "", words)
        self.assertIn("--results", self.call("run", "--help").stdout)

    def test_prints_the_frequencies(self):
        done = self.run_plant(TWO, "--mode", "free")
        self.assertTrue(done.stdout.startswith("plant.txt: 2 inertias, 1 shaft\n"), done.stdout)
        omega = math.sqrt(1e6 * (1 / 100 + 1 / 50))
        self.assertIn(f"\n     2{omega:15.4f}", done.stdout)
        self.assertIn(f"Results in {self.here / 'results-of-plant'}\n", done.stdout)
        self.assertEqual(done.stderr, "")
        self.assertEqual(self.run_plant(TWO, "--mode", "free", "--quiet").stdout, "")

    def test_a_report_shows_the_plant_that_was_calculated(self):
        """A coupling in front of its shaft leaves the natural frequencies alone, one behind it
        replaces the stiffness, a propeller with its water replaces the inertia of its row: the
        report's model has the natural frequencies of the run. The load cases have the stiffness of
        either coupling, and the page says so too."""
        early = "LINEARCOUPLING 2\n4 20000.0 3.0E5\n"
        text = early + SMALL_PLANT.replace("3 4 1.0 1.05E5", "3 4 1.0 9.0E5")
        done = self.run_plant(text, "--report", "--results", "of")
        page = (self.here / "of/report.html").read_text()
        data = json.loads(re.search(r'type="application/json" id="data">(.*?)</script>', page,
                                    re.DOTALL)[1])
        self.assertEqual([shaft["stiffness"] for shaft in data["shafts"]],
                         [3.6e7, 5.6e7, 1.05e5, 2e6])
        self.assertEqual([each["inertia"] for each in data["inertias"]], [6.2, 6.2, 85, 104, 35])
        self.assertIn("Linear coupling 2", done.stderr)
        self.assertIn("3.000E+005", data["loadCaseSetting"])
        mass = numpy.diag([each["inertia"] for each in data["inertias"]])
        stiffness = numpy.zeros(mass.shape)
        for each in data["shafts"]:
            ends = numpy.ix_([each["origin"], each["destination"]],
                             [each["origin"], each["destination"]])
            stiffness[ends] += each["stiffness"] * numpy.array([[1, -1], [-1, 1]])
        squares = numpy.linalg.eigvals(numpy.linalg.solve(mass, stiffness)).real
        numpy.testing.assert_allclose(records(self.here / "of/NaturalFrequency.bin")[1:],
                                      numpy.sqrt(sorted(squares)[1:]), rtol=1e-9)

    def test_runs_go_through_the_shared_library(self):
        """The solver is linked into the program for reading plants; its entries must not be."""
        symbols = subprocess.run(["nm", "-D", PROGRAM], capture_output=True, text=True, check=True)
        for entry in ("VERENWICKSOLVER", "THEORETICALCYLINDERPRESSURE", "CYLINDERPRESSURETOHARMONIC"):
            self.assertTrue(f" U {entry}\n" in symbols.stdout, entry)

    def test_columns_stay_apart(self):
        done = self.run_plant(TWO + "GASTURBINE 1\n1 100 1000\nLOADCASE\nRPM 1\nGASTURBINE\n"
                              "1000 80\n1e300 80\n-1e-300 80\n")
        header, *rows = done.stdout.split("Largest ")[1].splitlines()[1:5]
        self.assertEqual([row.split()[1] for row in rows], ["1000.0", "1.0e+300", "-0.0"])
        self.assertEqual({len(row) for row in rows}, {len(header)})

    def test_counts_nodes(self):
        chain = "".join(inertia(i, 10) for i in range(1, 31))
        chain += "".join(shaft(i, i, i + 1, 1e6) for i in range(1, 30))
        self.assertEqual(self.nodes(chain), list(range(30)))
        # Two equal branches and a third one. In two modes the branches swing against each other:
        # the line at rest between them is one node, each branch has none or one inside.
        twin = "".join(inertia(i, j) for i, j in enumerate((20, 30, 20, 30, 300, 77, 400), 1))
        twin += (shaft(1, 1, 2, 1e6) + shaft(2, 2, 5, 2e6) + shaft(3, 4, 3, 1e6)
                 + shaft(4, 5, 4, 2e6) + shaft(5, 5, 6, 3e5) + shaft(6, 6, 7, 1e5))
        self.assertEqual(self.nodes(twin), [0, 1, 2, 1, 4, 3, 6])
        # An inertia at rest in the middle is one node, not two and not none.
        middle = (inertia(4, 50) + inertia(9, 20) + inertia(2, 50) + shaft(1, 9, 4, 1e6)
                  + shaft(2, 2, 9, 1e6))
        self.assertEqual(self.nodes(middle), [0, 1, 2])

    def test_refused_input_is_1_with_the_words_of_the_log(self):
        done = self.run_plant(inertia(1, 5) + "SHAFT 1 1\n", "--quiet", status=1)
        log = (self.here / "results-of-plant" / "Verenwick.log").read_text()
        self.assertIn("in input file line 2", log)
        self.assertIn(log, done.stderr)
        self.assertEqual(done.stdout, "")

    def test_a_stopped_calculation_is_1(self):
        # At standstill nothing holds the line: its matrix is singular.
        done = self.run_plant(TWO + "GENERATOR 1\n2 100 1000 1\n1 0 0 0\n1 0 0 0\nELECTRICMOTOR 1\n"
                              "1 100 1000 0 0 0\n0 0 0 0\n0 0 0 0\n"
                              "LOADCASE\nRPM 1 1\nGENERATOR ELECTRICMOTOR\n0 100 100\n", status=1)
        self.assertIn("** CGETRF/ZGETRF failed", done.stderr)
        self.assertIn(" Warning: Load case 1 has a speed of 0\n", done.stderr)
        self.assertIn("the calculation stopped early: CGETRF/ZGETRF failed; SynthesisDeflection.bin",
                      done.stderr)

    def test_result_directory(self):
        results = self.here / "results-of-plant"
        self.run_plant(TWO)
        self.write("results-of-plant/notes.txt", "mine")
        self.write("results-of-plant/Genset.txt", "1 100 90\n")
        # A refused input leaves no results of the run before; what is no result stays.
        self.run_plant("INERTIA 1\n", status=1)
        self.assertEqual(sorted(os.listdir(results)),
                         ["Genset.txt", "Verenwick.log", "notes.txt", "run.json"])
        (self.here / "blocked/Verenwick.log/inside").mkdir(parents=True)
        for name, words in (("plant.txt", "can't be made"), ("blocked", "is a directory"),
                            ("/".join(["d" * 200] * 6), "are the most")):
            self.assertIn(words, self.run_plant(TWO, "--results", name, status=1).stderr)

    def test_genset_file_beside_the_input_is_the_one_that_counts(self):
        mine = self.here / "Genset.txt"
        mine.write_text("1 100 90\n")
        for directory in ("fresh", "fresh", "."):
            self.run_plant(TWO, "--mode", "describe", "--results", directory)
            self.assertEqual((self.here / directory / "Genset.txt").read_text(), "1 100 90\n")
            (self.here / "fresh" / "Genset.txt").write_text("1 50 40\n")
        mine.unlink()
        self.run_plant(TWO, "--mode", "describe", "--results", "fresh")
        self.assertEqual((self.here / "fresh" / "Genset.txt").read_text(), "1 50 40\n")
        mine.mkdir()
        done = self.run_plant(TWO, "--results", "fresh", status=1)
        self.assertIn("Genset.txt can't be copied", done.stderr)

    def test_modes(self):
        for mode, free in (("describe", False), ("report", False), ("0", False), ("free", True), ("1", True),
                           ("forced", False), ("both", True), ("7", True), ("-3", True)):
            done = self.run_plant(TWO, "--mode", mode, "--results", "of" + mode)
            self.assertEqual("Natural frequencies" in done.stdout, free, mode)
            self.assertEqual((self.here / ("of" + mode) / "NaturalFrequency.bin").exists(), free)

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a device that is always full")
    def test_full_output_is_1(self):
        self.run_plant(TWO)
        for arguments in (["run", "plant.txt"], ["show", "results-of-plant", "NaturalFrequency"]):
            with open("/dev/full", "w", encoding="ascii") as full:
                done = subprocess.run([PROGRAM, *arguments], cwd=self.here, stdout=full,
                                      stderr=subprocess.PIPE, timeout=60)
            self.assertEqual(done.returncode, 1)


class Show(HostTest):
    def setUp(self):
        super().setUp()
        # 2 inertias, 1 shaft, 2 diesels of 20 orders, 3 load cases.
        self.values = [[case, source, order, point, case + source / 7, 0.25, -order, point / 3]
                       for case in (1, 2, 3) for source in (1, 2) for order in range(1, 21)
                       for point in (1, 2)]
        for name, numbers in (
                ("SystemInfo", [2, 1, 0, 0, 0, 0, 0, 2, 0, 0, 0, 0, 0, 3, 20, 0, 0, 0]),
                ("DieselDeflection", [value for row in self.values for value in row[4:]]),
                ("SynthesisTorque", [1.5e6, math.nan, 3])):
            data = struct.pack(f"<{len(numbers)}d", *numbers)
            (self.here / (name + ".bin")).write_bytes(data)

    def show(self, *arguments):
        return self.call("show", ".", *arguments).stdout

    def test_csv_and_filters(self):
        names = ("--case", "--source", "--order", "--point")
        for choice in ({}, {0: 2}, {1: 1}, {2: 20}, {3: 2}, {0: 3, 1: 2, 2: 7, 3: 1}):
            options = [word for column in choice for word in (names[column], choice[column])]
            header, *rows = self.show("DieselDeflection.bin", *options, "--csv").splitlines()
            self.assertEqual(header, "load case,diesel number,order,inertia row,amplitude [rad],"
                                     "angle [rad],real part [rad],imaginary part [rad]")
            self.assertEqual([[float(word) for word in row.split(",")] for row in rows],  # every digit
                             [row for row in self.values
                              if all(row[column] == choice[column] for column in choice)])

    def test_table(self):
        self.assertEqual(self.show("SynthesisTorque").splitlines(), [
            "SynthesisTorque.bin: amplitude of the total vibratory torque",
            "(without a run record: whether these files belong to one whole run is not known)",
            "  load case  shaft row     value [N m]",
            "          1          1         1500000",
            "          2          1             nan",
            "          3          1               3"])
        self.assertRegex(self.show("SystemInfo"), r"\n +diesels +2\n(.*\n)* +load cases +3\n")
        self.write("Overview.txt", "Engine\n 1\tA\n")
        self.assertEqual(self.show("Overview"), "Engine\n 1\tA\n")

    def test_broken_directory_is_1(self):
        (self.here / "DieselDeflection.bin").write_bytes(bytes(12))
        for directory, name, words in ((".", "DieselDeflection", "12 bytes"),
                                       (".", "NaturalFrequency", "no such file"),
                                       ("nowhere", "SystemInfo", "no such directory")):
            self.assertIn(words, self.call("show", directory, name, status=1).stderr)


class Examples(HostTest):
    """The summary of every example plant: as a document against the files, in print against it."""

    def test_summaries(self):
        inputs = sorted(EXAMPLES.glob("*/input.txt"))
        self.assertTrue(inputs)
        for path in inputs:
            with self.subTest(plant=path.parent.name):
                results = self.here / path.parent.name
                run = ["run", path, "--results", results]
                document = json.loads(self.call(*run, "--json").stdout)
                self.assertEqual([document["input"], document["results"], document["status"]],
                                 [str(path), str(results), 0])
                self.files = {file.stem: records(file) for file in results.glob("*.bin")}
                self.check_free(document)
                self.check_load_cases(document["loadCases"], path.read_text())
                printed = self.call(*run).stdout.splitlines()
                names = re.findall(r"^DIESEL +\d+ +(\w+)", path.read_text(), re.MULTILINE)
                expected = list(self.lines(document, names))
                self.assertEqual([line for line in printed if line in expected], expected)

    def test_engines_are_called_by_their_ids(self):
        text = (EXAMPLES / "twin-engine-gear" / "input.txt").read_text()
        for old, new in (("1", "7"), ("2", "3")):
            text = re.sub(rf"^(DIESEL|SHAFT .* 1) {old}( +\D)", rf"\g<1> {new}\2", text,
                          flags=re.MULTILINE)
        path = self.write("plant.txt", text.replace("RPM 1 2", "RPM 7 3"))
        document = json.loads(self.call("run", path, "--json").stdout)
        self.assertEqual(list(dict.fromkeys(each["diesel"] for each in document["criticalSpeeds"])),
                         [7, 3])
        self.assertEqual(document["unresolvedPeaks"][0]["sources"],
                         [{"kind": "diesel", "id": 7}, {"kind": "diesel", "id": 3}])
        printed = self.call("run", path).stdout
        for title in ("diesel 7, Port:", "diesel 3, Starboard:"):
            self.assertIn("\nCritical speeds of " + title, printed)

    def rows(self, name, width):
        values = self.files.get(name, ())
        return [values[start:start + width] for start in range(0, len(values), max(1, width))]

    def check_free(self, document):
        info = [int(value) for value in self.files["SystemInfo"]]
        self.assertEqual([document["counts"][name] for name in ("inertias", "shafts", "load cases")],
                         [info[0], info[1], info[13]])
        omegas = self.files["NaturalFrequency"]
        self.assertEqual([mode["angularFrequency"] for mode in document["modes"]], list(omegas))
        for mode, shape in zip(document["modes"][1:], self.rows("RelativeDeflection", info[0])):
            self.assertEqual(mode["nodes"] is None, not all(map(math.isfinite, shape)))
        criticals = document["criticalSpeeds"]
        fives = [criticals[start:start + 5] for start in range(0, len(criticals), 5)]
        rows = zip(fives, self.rows("VectorSum", info[14]), self.rows("VectorSumRpm", info[14]),
                   strict=True)
        for number, (five, sums, speeds) in enumerate(rows):
            engine, mode = divmod(number, len(omegas) - 1)
            self.assertEqual([(each["diesel"], each["mode"]) for each in five],
                             [(engine + 1, mode + 2)] * 5)
            if any(map(math.isnan, sums)):
                continue
            # The largest sums, low orders first among those that are equal up to rounding.
            largest = sorted(zip(sums, speeds), key=lambda row: (-round(row[0] / 1e-6), -row[1]))
            self.assertEqual([(each["relativeVectorSum"], each["rpm"]) for each in five],
                             largest[:5])
            for each in five:
                self.assertAlmostEqual(each["order"] * each["rpm"] * math.pi / 30,
                                       omegas[mode + 1], delta=1e-6 * omegas[mode + 1])

    def check_load_cases(self, load_cases, plant):
        ids = {kind: re.findall(rf"^\s*{kind}\s+(\d+)\s", plant, re.IGNORECASE | re.MULTILINE)
               for kind in ("inertia", "shaft")}
        speeds = re.split(r"^\s*RPM.*\n.*\n", plant, flags=re.IGNORECASE | re.MULTILINE)[1]
        losses = self.rows("ShaftPowerLoss", len(ids["shaft"]))
        for row, speed, loss in zip(load_cases, speeds.splitlines(), losses):
            self.assertEqual(row["rpm"], float(speed.split()[0]))
            self.assertAlmostEqual(row["powerLoss"], sum(loss), delta=1e-9 * sum(loss))
        for name, kind in (("Torque", "shaft"), ("Stress", "shaft"), ("Deflection", "inertia")):
            rows = self.rows("Synthesis" + name, len(ids[kind]))
            self.assertEqual([(row["case"], row[name.lower()]) for row in load_cases],
                             [(case, {"value": max(row), kind: int(ids[kind][row.index(max(row))])})
                              for case, row in enumerate(rows, 1)])

    @staticmethod
    def lines(document, engines):
        """Titles and rows of the printed tables, but for orders that aren't numbers."""
        yield "Natural frequencies"
        for mode in document["modes"]:
            rpm = mode["angularFrequency"] * 9.549296585513721
            nodes = "-" if mode["nodes"] is None else mode["nodes"]
            yield (f"{mode['mode']:6}{mode['angularFrequency']:15.4f}{rpm / 60:15.4f}{rpm:15.3f}"
                   f"{nodes:>7}")
        if any(mode["nodes"] is None for mode in document["modes"]):
            yield "     -: the mode leaves the reference inertia of its shape at rest"
        criticals = document["criticalSpeeds"]
        for start in range(0, len(criticals), 5):
            five = criticals[start:start + 5]
            if five[0]["mode"] == 2:
                yield (f"Critical speeds of diesel {five[0]['diesel']}, {engines.pop(0)}: "
                       "the orders with the largest vector sums")
            if all(each["rpm"] is not None for each in five):
                yield f"{five[0]['mode']:6}" + "".join(
                    f"{each['order']:8.1f}{each['relativeVectorSum']:7.3f}{each['rpm']:10.2f}"
                    + "*" * each["unresolved"] for each in five).replace("* ", "*")
        yield "Largest vibratory values of each load case, with the id of the shaft or inertia"
        for row in document["loadCases"]:
            torque, stress, deflection = row["torque"], row["stress"], row["deflection"]
            yield (f"{row['case']:6}{row['rpm']:10.1f}{torque['value'] / 1e3:15.4g}"
                   f"{torque['shaft']:7}{stress['value'] / 1e6:16.4g}{stress['shaft']:7}"
                   f"{deflection['value'] / 1e-3:18.4g}{deflection['inertia']:9}"
                   f"{row['powerLoss'] / 1e3:17.4g}")
        if document["unresolvedPeaks"]:
            yield "Between load cases the largest values may be higher"
        for peak in document["unresolvedPeaks"]:
            where, what = peak["words"].rsplit(": ", 1)
            yield f"  {where}:"
            yield f"      {what}"


class Peaks(HostTest):
    """Critical speeds that the load cases step over."""

    def peaks(self, text):
        document = json.loads(self.call("run", self.write("plant.txt", text), "--json").stdout)
        return document, document["unresolvedPeaks"]

    def test_a_peak_between_two_load_cases_is_told_and_a_resolved_one_is_not(self):
        # A generator's order 4 meets mode 2 at n; its torque is the same at every speed, and the
        # shaft with magnifier 40 bears 40 F J1 / (J1 + J2) at the peak.
        n = math.sqrt(1e6 * (1 / 100 + 1 / 50)) / 4 * 30 / math.pi
        peak = 40 * 0.02 * 100e3 / (1000 * math.pi / 30) * 100 / 150

        def plant(speeds, ratio=1.0, motor="0 0.0 0\n0 0 0 0\n0 0 0 0\n", generator="4 0 0 0"):
            return (f"INERTIA 1 {ratio} 100 0 0\nINERTIA 2 {ratio} 50 0 0\n"
                    f"SHAFT 7 1 2 {ratio} 1e6 0 40 200 0 0 0\n"
                    f"GENERATOR 1\n2 100 1000 1\n{generator}\n2 0 0 0\n"
                    f"ELECTRICMOTOR 1\n1 100 1000 {motor}LOADCASE\nRPM 1 1\n"
                    "GENERATOR ELECTRICMOTOR\n"
                    + "".join(f"{rpm} {0.1 * rpm * ratio} {0.1 * rpm * ratio}\n" for rpm in speeds))

        coarse = (0.8 * n, 0.96 * n, 1.06 * n, 1.3 * n)
        fixed = f"1 {n} 1\n4 0 0 0\n2 0 0 0\n"
        for what, text, between in (
                ("coarse", plant(coarse), (0.96 * n, 1.06 * n)),
                ("not sorted, twice the same", plant((coarse[3], coarse[1], coarse[0], coarse[1],
                                                      coarse[2])), (0.96 * n, 1.06 * n)),
                ("a source with a ratio", plant([2 * rpm for rpm in coarse], 0.5),
                 (1.92 * n, 2.12 * n)),
                ("two fifths of the half-width off", plant((*coarse, (1 - 0.4 / 80) * n)), None),
                ("on the peak", plant((*coarse, n)), None),
                ("outside", plant((1.02 * n, 1.1 * n, 1.2 * n)), None),
                ("one load case", plant([0.98 * n]), None),
                ("one speed", plant([0.98 * n] * 3), None),
                ("a motor of constant frequency",
                 plant(coarse, motor=fixed, generator="0 0 0 0"), None)):
            with self.subTest(what):
                document, peaks = self.peaks(text)
                self.assertEqual(len(peaks), 0 if between is None else 1, peaks)
                for found in peaks:
                    self.assertEqual([found["sources"], found["order"], found["mode"],
                                      found["shaft"]],
                                     [[{"kind": "generator", "id": 1}], 4, 2, 7])
                    self.assertAlmostEqual(found["rpm"], sum(between) / 2.02, delta=1e-3 * n)
                    self.assertAlmostEqual(found["below"], between[0], delta=1e-6 * n)
                    self.assertAlmostEqual(found["above"], between[1], delta=1e-6 * n)
                    self.assertAlmostEqual(found["expectedTorque"], peak, delta=0.02 * peak)
                    worst = max(each["torque"]["value"] for each in document["loadCases"])
                    self.assertEqual(found["largestTorque"], worst)
                    self.assertLess(worst, 0.5 * peak)

    def test_a_finer_table_of_the_twin_engines_bears_out_what_the_coarse_one_tells(self):
        text = (EXAMPLES / "twin-engine-gear" / "input.txt").read_text()
        coarse, peaks = self.peaks(text)
        head, table = re.split(r"(?<=GENERATOR\n)(?=360)", text)
        rows = [[float(word) for word in row.split()] for row in table.splitlines()]
        fine = [[a + (b - a) * i / 60 for a, b in zip(low, high)]
                for low, high in zip(rows, rows[1:]) for i in range(60)] + rows[-1:]
        resolved, none = self.peaks(
            head + "".join(" ".join(map(str, row)) + "\n" for row in fine))
        self.assertEqual(none, [])
        highest = max(resolved["loadCases"], key=lambda each: each["torque"]["value"])
        first = peaks[0]
        self.assertEqual([source["id"] for source in first["sources"]], [1, 2])
        self.assertEqual([first["order"], first["below"], first["above"], first["shaft"]],
                         [7.5, 540, 600, highest["torque"]["shaft"]])
        self.assertAlmostEqual(first["rpm"], highest["rpm"], delta=1.5)
        true = highest["torque"]["value"]
        self.assertAlmostEqual(first["expectedTorque"], true, delta=0.05 * true)
        self.assertGreater(true, 1.35 * max(each["torque"]["value"]
                                            for each in coarse["loadCases"]))


if __name__ == "__main__":
    unittest.main()
