"""What is typed: names of files, commands and options, and the words for what is wrong with them."""
import csv
import os
import re
import shutil
import struct
import subprocess
import unittest

from support import EXAMPLES, HostTest, records

SHIP = EXAMPLES / "ice-ship" / "input.txt"


class Names(HostTest):
    """Names that are refused before anything is touched."""

    def setUp(self):
        super().setUp()
        shutil.copy(EXAMPLES / "two-stroke-ship" / "input.txt", self.here / "plant.txt")

    def refused(self, words, *arguments):
        before = sorted(str(path) for path in self.here.rglob("*"))
        done = self.call(*arguments, status=1)
        self.assertIn(words, done.stderr, arguments)
        self.assertEqual(done.stdout, "")
        self.assertEqual(sorted(str(path) for path in self.here.rglob("*")), before, arguments)

    def test_inputs(self):
        plant = (self.here / "plant.txt").read_text()
        for name in ("blank ", " front", "back\\slash", "new\nline", "folder /plant.txt"):
            self.write(name, plant)
        (self.here / "link.txt").symlink_to("plant.txt")
        (self.here / "lost.txt").symlink_to("nowhere")
        (self.here / "folder").mkdir()
        os.mkfifo(self.here / "pipe")
        for name, words in (("plan.txt", "can't be read: No such file"), ("blank ", "with a blank"),
                            (" front", "with a blank"), ("folder /plant.txt", "with a blank"),
                            ("back\\slash", "a backslash"), ("new\nline", "a control character"),
                            ("link.txt", f"is a link to {self.here.resolve() / 'plant.txt'}"),
                            ("lost.txt", "is a link that leads nowhere (nowhere)"),
                            ("folder", "is a directory"), ("pipe", "is a pipe"),
                            ("/dev/zero", "is a device"),
                            ("/".join(["d" * 200] * 6), "1000 are the most")):
            self.refused(words, "run", name, "--results", "deep/er")
        # A folder on the way may be a link.
        (self.here / "way").symlink_to(".")
        self.call("run", "way/plant.txt", "--results", "way/results", "--mode", "free")
        for name, words in (("pipe", "is a pipe"), ("/dev/zero", "is a device"),
                            ("link.txt", "is a link to")):
            self.refused(words, "report", name, "results")
            self.refused(words, "export", "results", "--format", "csv", "--input", name)
            self.refused(words, "show", "results", "SystemInfo", "--input", name)

    def test_targets(self):
        other = self.write("other.txt", "mine")
        for name in ("NaturalFrequency.bin", "Genset.txt", "Verenwick.log", "report.html",
                     "run.json", "run.lock"):
            for make, words in ((lambda path: path.symlink_to(other), "is a link to"),
                                (os.mkfifo, "is a pipe"), (os.mkdir, "is a directory")):
                path = self.here / "results" / name
                path.parent.mkdir(exist_ok=True)
                make(path)
                self.refused(words, "run", "plant.txt", "--results", "results", "--report")
                shutil.rmtree(path.parent)
        self.refused("a backslash", "run", "plant.txt", "--results", "back\\slash")
        self.refused("with a blank", "run", "plant.txt", "--results", "blank ")
        self.call("run", "plant.txt", "--results", "results")
        (self.here / "page.html").symlink_to(other)
        os.mkfifo(self.here / "pipe")
        for name, words in (("page.html", "is a link to"), ("pipe", "is a pipe")):
            self.refused(words, "report", "plant.txt", "results", "-o", name)
            self.refused(words, "export", "results", "--format", "hdf5", "-o", name)
        self.assertEqual(other.read_text(), "mine")

    def test_what_is_read(self):
        self.call("run", "plant.txt", "--results", "results")
        for name in ("SystemInfo.bin", "SynthesisTorque.bin", "Verenwick.log", "run.json"):
            path = self.here / "results" / name
            kept = path.rename(self.here / "kept")
            for make, words in ((lambda: path.symlink_to(kept), f"is a link to {kept.resolve()}"),
                                (lambda: path.symlink_to("nowhere"), "leads nowhere (nowhere)"),
                                (lambda: os.mkfifo(path), "is a pipe"),
                                (path.mkdir, "is a directory")):
                make()
                for arguments in (("show", "results"), ("show", "results", "NaturalFrequency"),
                                  ("report", "plant.txt", "results"),
                                  ("export", "results", "--format", "hdf5")):
                    self.refused(words, *arguments)
                    self.refused(words, *arguments, "--unverified")
                path.rmdir() if path.is_dir() and not path.is_symlink() else path.unlink()
            kept.rename(path)
        self.call("show", "results", "SynthesisTorque")

    def test_orders_of_vector_sums_are_told_by_whole_files(self):
        self.call("run", "plant.txt", "--results", "results")
        for name in ("VectorSumRpm.bin", "NaturalFrequency.bin"):
            path = self.here / "results" / name
            whole = path.read_bytes()
            path.write_bytes(whole[:8] + struct.pack("<d", 12.5) + whole[16:])
            self.refused(f"{name} is not as the run has left it", "show", "results", "VectorSum")
            path.write_bytes(whole)
        self.call("show", "results", "VectorSum")

    def test_pressure_reads_a_small_file(self):
        os.mkfifo(self.here / "pipe")
        self.write("large", "bore = 320\n" * 100000)
        for name, words in (("/dev/zero", "is a device"), ("pipe", "is a pipe"),
                            ("large", "is larger than"), ("nowhere", "No such file")):
            for command in ("pressure", "forces"):
                self.refused(words, command, "--engine", name)


class Words(HostTest):
    def test_wrong_usage(self):
        for line, words in (
                ("rnu", 'unknown command "rnu"; did you mean run?'),
                ("walk", "the commands are new, run, check, show, report, export, pressure and forces"),
                ("", "a command is missing"),
                ("run x --resuls y", "unknown option --resuls; did you mean --results?"),
                ("run x --resuls=y", "unknown option --resuls; did you mean --results?"),
                ("show x --pint 3 y", "unknown option --pint; did you mean --point?"),
                ("show x y z", '"z" is one argument too many'),
                ("run x --jobs 0", '--jobs: "0" is no whole number from 1 to 1000'),
                ("run x --jobs 99999999999999999999", "is no whole number from 1 to 1000"),
                ("run x --jobs", "--jobs lacks its N"),
                ("run x --jobs 1 --jobs 2", "--jobs is given more than once"),
                ("run x --mode fre", '"fre" is no mode; did you mean free?'),
                ("run x --mode 99999999999", "the modes are describe, free, forced and both"),
                ("show x y --case 1.5", '--case: "1.5" is no whole number'),
                ("show x y --order half", '--order: "half" is no number'),
                ("pressure --bore nan", '--bore: "nan" is no number'),
                ("pressure --harmonics 99999999999", "is no whole number from 1 to 359"),
                ("export x --format xls", "did you mean xlsx?")):
            done = self.call(*line.split(), status=2)
            self.assertIn(words, done.stderr, line)
            self.assertRegex(done.stderr, r"\A(verenwick: .*\n\(verenwick.* --help tells more\)\n)")
            self.assertNotRegex(done.stderr, r"\d{20,}.*\d{20,}|922337203|2147483")
            self.assertEqual(os.listdir(self.here), [])

    def test_version(self):
        self.assertRegex(self.call("--version").stdout, r"\Averenwick \d+\.\d+\.\d+\n\Z")

    def test_help_fills_80_columns(self):
        commands = ("new", "run", "show", "report", "export", "pressure", "forces")
        for arguments in ((), *((command,) for command in commands)):
            text = self.call(*arguments, "--help").stdout
            self.assertLessEqual(max(map(len, text.splitlines())), 80, text)
        for command in commands:
            self.assertIn(f"\n  {command} ", self.call("--help").stdout)


class Show(HostTest):
    """A plant whose ids are not its rows, with a four-stroke engine and ice on the propeller."""

    INERTIAS = [33, 32, 31, 19, *range(18, 8, -1)]
    SHAFTS = [32, 31, 19, *range(18, 8, -1)]

    def setUp(self):
        super().setUp()
        self.call("run", SHIP, "--results", self.here / "ice", cwd=EXAMPLES.parent)
        self.cases = int(records(self.here / "ice" / "SystemInfo.bin")[13])

    def rows(self, *arguments):
        return list(csv.DictReader(self.call("show", "ice", *arguments, "--csv",
                                             "--input", SHIP).stdout.splitlines()))

    def test_ids_and_orders(self):
        for name, points, orders in (("DieselTorque", self.SHAFTS, [k / 2 for k in range(1, 25)]),
                                     ("PropellerDeflection", self.INERTIAS, None)):
            values = records(self.here / "ice" / f"{name}.bin")
            places = len(values) // 4 // self.cases // len(points)
            point = "shaft" if points is self.SHAFTS else "inertia"
            orders = orders or [float(k) for k in range(1, places + 1)]
            self.assertEqual(len(orders), places)
            for order, number in ((orders[14], 18), (orders[0], 32)):
                rows = self.rows(name.lower(), "--order", f"{order:g}", "--point", number,
                                 "--source", 1)
                self.assertEqual([int(row["load case"]) for row in rows],
                                 list(range(1, self.cases + 1)))
                for case, row in enumerate(rows):
                    record = ((case * places + orders.index(order)) * len(points)
                              + points.index(number)) * 4
                    self.assertEqual((float(row["order"]), int(row[f"{point} id"]),
                                      int(row[f"{point} row"])),
                                     (order, number, points.index(number) + 1))
                    unit = "N m" if point == "shaft" else "rad"
                    self.assertEqual(float(row[f"amplitude [{unit}]"]), values[record])
        sums = records(self.here / "ice" / "VectorSum.bin")
        self.assertEqual([float(row["value [1]"]) for row in self.rows("VectorSum", "--order", 7.5)],
                         list(sums[14::24]))

    def test_what_is_not_there(self):
        for line, words in (("dieseltorque --order 7.4", "no order 7.4; the nearest is 7.5"),
                            ("DieselTorque --order 13", "the nearest is 12"),
                            ("dieseltorque --point 1", "no shaft with the id 1, but 32, 31, 19,"),
                            ("dieseltorque --source 2", "no diesel with the id 2, but 1"),
                            ("dieseltorque --case 99", f"no load case 99, but 1 to {self.cases}"),
                            ("DieselTorqe", "did you mean DieselTorque?")):
            self.assertIn(words, self.call("show", "ice", *line.split(), "--input", SHIP,
                                           status=2).stderr)

    def test_without_the_input_numbers_are_called_numbers(self):
        shutil.rmtree(self.here / "ice", ignore_errors=True)
        values = [case + place / 8 for case in (1, 2) for place in range(2 * 3 * 4)]
        for name, numbers in (("SystemInfo", [4, 3] + [0] * 10 + [1, 2, 0, 0, 0, 0]),
                              ("GeneratorTorque", [0.0] * (2 * 4 * 3 * 4)),
                              ("SynthesisTorque", values[:6])):
            path = self.here / "other" / f"{name}.bin"
            path.parent.mkdir(exist_ok=True)
            path.write_bytes(struct.pack(f"<{len(numbers)}d", *numbers))
        done = self.call("show", "other", "SynthesisTorque", "--point", 2, "--csv")
        self.assertEqual(done.stdout.splitlines()[0], "load case,shaft row,value [N m]")
        self.assertEqual([float(row.split(",")[2]) for row in done.stdout.splitlines()[1:]],
                         [values[1], values[4]])
        self.assertIn("--point 2 is taken as the number of the shaft in the order of the input",
                      done.stderr)
        done = self.call("show", "other", "GeneratorTorque", "--order", 2)
        self.assertIn("order place", done.stdout)
        self.assertIn("--order 2 is taken as the place in the list of orders", done.stderr)
        self.assertIn("must be a place", self.call("show", "other", "GeneratorTorque", "--order",
                                                   1.5, status=2).stderr)
        # A number chosen keeps its own name.
        self.assertRegex(self.call("show", "other", "SystemInfo", "--point", 13).stdout,
                         r"\n *generators +1\n\Z")

    def test_list(self):
        text = self.call("show", "ice").stdout
        self.assertLessEqual(max(map(len, text.splitlines())), 80)
        for file in (self.here / "ice").glob("*.bin"):
            self.assertIn(f"\n  {file.stem} ", text)
        self.assertRegex(text, rf"\n  DieselTorque +N m +{self.cases} load cases, 1 diesel, 24 orders,"
                               r"\s+13 shafts\n      shaft torque by a diesel\n")
        rows = list(csv.DictReader(self.call("show", "ice", "--csv").stdout.splitlines()))
        self.assertEqual({row["file"] for row in rows},
                         {path.name for path in (self.here / "ice").glob("*.*")
                          if path.suffix in (".bin", ".txt", ".log")})
        (self.here / "empty").mkdir()
        self.assertIn("holds no results", self.call("show", "empty", status=1).stderr)


class Shells(HostTest):
    """Completion and manual, made from the options themselves."""

    def complete(self, line):
        """What bash offers behind a line."""
        script = self.write("completion", self.call("completion", "bash").stdout)
        words = line.split(" ")
        done = subprocess.run(
            ["bash", "-c", 'source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); '
             '_verenwick; printf "%s\\n" "${COMPREPLY[@]}"', "bash", script, *words],
            cwd=self.here, capture_output=True, text=True, timeout=60)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return done.stdout.split("\n")[:-1]

    def test_bash(self):
        for name in ("plants/a b.txt", "results/NaturalFrequency.bin", "results/DieselTorque.bin",
                     "results/Verenwick.log"):
            self.write(name, "")
        for line, words in (("verenwick r", ["run", "report"]),
                            ("verenwick --v", ["--version"]),
                            ("verenwick new t", ["turbine", "two-stroke"]),
                            ("verenwick run --re", ["--results", "--report"]),
                            ("verenwick run plants/", ["plants/a b.txt"]),
                            ("verenwick run x --mode f", ["free", "forced"]),
                            ("verenwick run --mode = f", ["free", "forced"]),
                            ("verenwick run --results re", ["results"]),
                            ("verenwick run --jobs ", [""]),
                            ("verenwick export results --format x", ["xlsx"]),
                            ("verenwick show re", ["results"]),
                            ("verenwick show results d", ["DieselTorque"]),
                            ("verenwick show --case 3 results N", ["NaturalFrequency"]),
                            ("verenwick show --csv results V", ["Verenwick"]),
                            ("verenwick walk ", [""])):
            self.assertEqual(self.complete(line), words, line)
        # Every option of every command that help tells of.
        for command in self.complete("verenwick "):
            text = self.call(command, "--help").stdout
            options = set(re.findall(r"^  (?:-\w,)?(--[\w-]+)", text, re.MULTILINE))
            self.assertLess(1, len(options))
            self.assertEqual(set(self.complete(f"verenwick {command} --")), options)

    def test_zsh_and_manual(self):
        script = self.write("_verenwick", self.call("completion", "zsh").stdout)
        manual = self.write("verenwick.1", self.call("manual").stdout)
        # The shell reads it, and its own checks of what an option takes find no fault.
        for command in (["zsh", "-n", script], ["mandoc", "-T", "lint", "-W", "error", manual]):
            done = subprocess.run(command, capture_output=True, text=True, timeout=60)
            self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""), command)
        text = subprocess.run(["mandoc", "-T", "ascii", manual], capture_output=True, text=True,
                              timeout=60).stdout
        text = re.sub(".\b", "", text)
        for command in ("new", "run", "show", "report", "export", "pressure", "forces"):
            self.assertIn(f"verenwick {command} [OPTION...]", text)
            for option in re.findall(r"^  (?:-\w,)?(--[\w-]+)",
                                     self.call(command, "--help").stdout, re.MULTILINE):
                self.assertIn(option, text)
                self.assertIn(f"{option}[", script.read_text())


if __name__ == "__main__":
    unittest.main()
