"""Looks at plants with one fault each: what is found, on which line, and with which status."""
import json
import os
import pathlib
import re
import signal
import subprocess
import time
import unittest

from support import EXAMPLES, PROGRAM, SMALL_PLANT, HostTest

TESTS = pathlib.Path(__file__).resolve().parent.parent

PLANT = SMALL_PLANT  # without a fault

# What was changed into what, then severity, code, the line that is named, words of the finding.
FAULTS = [
    # Lines that are refused, and why.
    ("1 2\n0.0 360.0", "1 2\n! firing angles\n0.0 360.0", "error", "refused-line",
     "! firing angles", "a comment"),
    ("1 2\n0.0 360.0", "1 2\n\n0.0 360.0", "error", "refused-line", "", "a blank line"),
    ("1 2\n0.0 360.0\n", "1 2\n0.0\n", "error", "refused-line", "0.0", "only 1 of them"),
    ("2.0E6 0.0", "2.0E6x 0.0", "error", "refused-line", "SHAFT 4",
     '"2.0E6x" in column 17, where Stiffness belongs'),
    ("LINEARCOUPLING 1", "shaft data of the maker\nLINEARCOUPLING 1", "error", "refused-line",
     "shaft data", '"shaft data of the maker"'),
    ("DIESEL 1 Engine\n260.0 1000.0 4 2", "DIESEL 1 Engine\n260.0 1000.0 4 2.5", "error",
     "refused-line", "260.0", "2.5 in column 16, where nCylinder belongs"),
    ("3 20000.0 1.05E5\n", "GENERATOR 7\n", "error", "refused-line", "GENERATOR 7",
     "the next section"),
    ("900.0 200.0 120.0 80.0", "900.0 200.0 120.0 80.0 idle", "error", "refused-line", "900.0",
     "idle"),
    (PLANT[PLANT.index("0\nLOADCASE"):], "", "error", "refused-line", None, "the end of the file"),
    # A line that is no tree.
    ("SHAFT 2 2 3", "SHAFT 2 2 1", "error", "ring", "SHAFT 2", "a ring of the shafts 1, 2"),
    ("SHAFT 3 3 4 1.0 1.05E5 0.0 6.0 165.0 0.0 0 0\n", "", "error", "apart", "INERTIA 4",
     "from the part of inertia 4, 5 to that of inertia 1, 2, 3"),
    ("SHAFT 4 4 5", "SHAFT 4 4 6", "error", "missing-inertia", "SHAFT 4", "DesNode 6"),
    ("SHAFT 4 4 5", "SHAFT 3 4 5", "error", "id-twice", "SHAFT 3 4 5", "a second time"),
    # Inertias and shafts.
    ("INERTIA 3 1.0  85.0", "INERTIA 3 85.0  1.0", "warning", "ratio-inertia-swapped", "INERTIA 3",
     "85.0"),
    ("INERTIA 3 1.0", "INERTIA 3 250.0", "warning", "ratio", "INERTIA 3", "250.0"),
    ("INERTIA 3 1.0", "INERTIA 3 2.0", "warning", "mesh-ratio", "SHAFT 3", "RpmRatio 1.0"),
    ("SHAFT 2 2 3 1.0", "SHAFT 2 2 3 1.5", "warning", "shaft-ratio", "SHAFT 2", "RpmRatio 1.5"),
    ("90.0 180.0 0.0 0 0", "90.0 0.18 0.0 0 0", "warning", "diameter-unit", "SHAFT 2", "0.18"),
    ("60.0 160.0 0.0", "60.0 160.0 170.0", "error", "solver", "SHAFT 4", "0.17"),
    ("5.6E7", "56.0", "warning", "shaft-length", "SHAFT 2", "m long"),
    ("SHAFT 4 4 5 1.0 2.0E6 0.0 60.0 160.0", "SHAFT 4 4 5 1.0 2.0 0.0 60.0 0.0", "warning",
     "shaft-soft", "SHAFT 4", "rad/s"),
    ("1.05E5 0.0 6.0", "1.05E5 0.0 0.8", "warning", "magnifier", "SHAFT 3", "0.8"),
    ("1.05E5 0.0 6.0", "1.05E5 0.0 2.0", "hint", "magnifier", "SHAFT 3", "2.0"),
    ("1.05E5 0.0 6.0", "1.05E5 50.0 6.0", "hint", "damping-twice", "SHAFT 3", "50.0"),
    ("INERTIA 1 1.0   6.2", "INERTIA 1 1.0   0.002", "hint", "inertia-small", "INERTIA 1",
     "0.002"),
    ("INERTIA 4 1.0 104.0", "INERTIA 4 1.0 1.04E7", "hint", "inertia-large", "INERTIA 4",
     "1.04E7"),
    # The engine.
    ("260.0 1000.0 4 2 0.0", "2600.0 1000.0 4 2 0.0", "warning", "engine-mip", "2600.0", "bar"),
    ("260.0 1000.0 4 2 0.0", "260.0 104.7 4 2 0.0", "warning", "engine-piston-speed", "260.0",
     "m/s"),
    ("260.0 1000.0 4 2 0.0", "260.0 1000.0 6 2 0.0", "error", "solver", "DIESEL 1", "(6)"),
    ("200.0 240.0 0.25", "240.0 120.0 0.25", "warning", "engine-stroke", "240.0 120.0",
     "0.5 times the bore"),
    ("200.0 240.0 0.25", "200.0 240.0 0.8", "warning", "engine-rod", "200.0", "0.8"),
    ("0.25 28.0", "0.25 280.0", "hint", "engine-mass", "200.0", "kg a litre"),
    ("28.0 91.0 1", "28.0 0.91 1", "warning", "engine-efficiency", "200.0", "0.91"),
    ("185.0 145.0", "1.85E7 145.0", "warning", "engine-pressure", "1.85E7", "1.85E7"),
    ("4.2 50.0\n", "4.2 323.0\n", "warning", "engine-charge", "185.0", "323.0"),
    ("1.28 14.5", "1.28 145.0", "warning", "engine-compression", "185.0", "145.0"),
    ("1 2\n0.0 360.0", "1 2\n0.0 20.0", "warning", None, None, None),
    # The propeller.
    ("1000.0 4 30.0 5.0 0", "1000.0 40 30.0 5.0 0", "warning", "propeller-blades", "5 100.0", "40"),
    ("0.95 0.6 0", "0.95 60.0 0", "warning", "propeller-range", "100.0 390.0", "60.0"),
    ("30.0 5.0 0", "35.0 0.0 0", "hint", "propeller-water", "5 100.0", "0.0"),
    ("INERTIA 5 1.0  35.0", "INERTIA 5 1.0  30.0", "hint", "propeller-inertia", "INERTIA 5",
     "30.0"),
    ("SCHWANEKE", "SCHWANECKE", "warning", "choice", "SCHWANECKE", "SCHWANECKE"),
    # The load cases.
    ("1100.0 260.0 160.0 100.0", "1100.0 260.0 160.0 10.0", "warning", "power-balance", "1100.0",
     "260 kW go in and 170 kW come out"),
    ("900.0 200.0 120.0 80.0\n1000.0 230.0 130.0 90.0\n1100.0 260.0 160.0 100.0",
     "94.2 200.0 120.0 80.0\n104.7 230.0 130.0 90.0\n115.2 260.0 160.0 100.0", "warning",
     "speed-rated", "115.2", "DIESEL 1 turns with at most 115.2 rpm"),
    ("900.0 200.0 120.0 80.0", "0.0 200.0 120.0 80.0", "warning", "speed-zero", "0.0", "0 rpm"),
    ("1000.0 230.0 130.0 90.0", "500.0 230.0 130.0 90.0", "warning", "torque-rated", "500.0",
     "times the rated torque"),
    ("RPM 1 1 1\nDIESEL GENERATOR PROPELLER", "RPM 1 1\nDIESEL GENERATOR", "error", "no-column",
     "PROPELLER 1", "PROPELLER 1"),
    # Couplings, names.
    ("SHAFT 1 1 2", "LINEARCOUPLING 9\n4 9000.0 1.0E5\nSHAFT 1 1 2", "warning", "coupling-early",
     "LINEARCOUPLING 9", "in front of its SHAFT 4"),
    ("LINEARCOUPLING 1\n3 20000.0 1.05E5", "PROGRESSIVECOUPLING 1\n3 20000.0 2E5 3E5 4E5 5E5 6E5",
     "hint", "coupling-stiffness", "SHAFT 3", "1.05E5"),
    ("3 20000.0 1.05E5", "3 20000.0 105.0", "warning", "coupling-twist", "3 20000.0", "rad"),
    ("3 20000.0 1.05E5", "3 0.02 1.05E5", "warning", "coupling-twist", "3 0.02", "rad"),
    (PLANT[PLANT.index("LOADCASE"):], "", "hint", "no-load-cases", "DIESEL 1", "no LOADCASE"),
    ("1000.0 230.0", "\n1000.0 230.0", "warning", "behind-table", "1000.0", "1000.0 230.0"),
    ("0.0 360.0\n0.0 0.0", "0.0 360.0 540.0\n0.0 0.0", "warning", "list-long", "0.0 360.0 540",
     "540.0 behind it"),
    ("1 1\n0 0\n", "1 6\n0 0\n", "warning", "firing-status", "1 6", "FiringStatusA 1 6"),
    ("0 1.15\n", "0 115\n", "hint", "engine-limit", "260.0", "115"),
    ("1 2\n0.0 360.0", "1 2\n0.0 720.0", "hint", "firing-angle", "0.0 720.0", "720.0"),
    ("1 2\n0.0 360.0", "1 2\n360.0 360.0", "hint", "firing-angle", "360.0 360.0", "360.0"),
    ("SCHWANEKE", "MANUAL", "warning", "propeller-range", "100.0", "DynMagnifier"),
    ("0 90.0 0.0", "0 0.9 0.0", "hint", "propeller-range", "100.0", "0.9"),
    ("SHAFT 2 2 3 1.0", "SHAFT 2 2 3 \x1b[31m", "error", "refused-line", "SHAFT 2", "?[31m"),
    ("260.0 1000.0 4 2", "260.0 1000.0 4 60", "error", "refused-line", "260.0", "nCylinder 60"),
    ("LINEARCOUPLING 1", "LINEARCOUPLNG 1", "warning", "keyword", "LINEARCOUPLNG",
     '"LINEARCOUPLNG" is no keyword'),
    ("180.0 0.0 1 1", "180.0 0.0 1 7", "warning", "throw", "SHAFT 1", "ComponentIdFlag 7"),
]

# The same plant with a damper whose casing is inertia 1; it needs results or a data file to be told.
DAMPED = PLANT.replace("DIESEL 1 Engine", """\
INERTIA 6 1.0   4.0 0.0  0.0
SHAFT 5 1 6 1.0 1.0 1500.0 0.0 0.0 0.0 0 0
VISCOUSDAMPER 1
1 6 1500.0 1
table.txt
DIESEL 1 Engine""", 1)
FIXED = DAMPED.replace("1500.0 1\ntable.txt", "1500.0 0")
DAMPER_FAULTS = [
    (FIXED, "", "", None, None, None, None),
    (FIXED, "1500.0", "1.5", "hint", "damper-optimum", "SHAFT 5", "1.5"),
    (FIXED, "1500.0", "1.5E6", "hint", "damper-optimum", "SHAFT 5", "1.5E6"),
    (FIXED, "1 6 1500.0", "1 6 900.0", "warning", "damper-link", "SHAFT 5", "with 900.0 there"),
    (FIXED, "1500.0 0.0 0.0 0.0 0 0", "1500.0 5.0 0.0 0.0 0 0", None, "damper-link", "SHAFT 5", "5.0"),
    (FIXED, "3 20000.0 1.05E5", "3 900.0 1.05E5", "hint", "coupling-torque", "3 900.0",
     "the load cases carry up to"),
    (FIXED, "3 20000.0 1.05E5", "3 1.6E5 1.05E5", "hint", "coupling-torque", "3 1.6E5", "of it"),
    (DAMPED, "", "", None, None, None, None),
    (DAMPED, "table.txt", "short.txt", "hint", "damping-table", "short.txt",
     "its table holds 50 to 100 Hz; order 0.5 at 900 rpm is at 7.5 Hz"),
    (DAMPED, "table.txt", "steep.txt", "warning", "damping-table", "steep.txt", "gives -"),
    (DAMPED, "table.txt", "falling.txt", "warning", "damping-table", "falling.txt", "don't rise"),
    (DAMPED, "table.txt", "broken.txt", "error", "solver", "", "broken.txt in line 3"),
    (DAMPED, "table.txt", "gone.txt", "error", "data-file", "gone.txt", "gone.txt"),
]

# Frequencies of these are printed. Inertias, then the stiffness behind each.
PUBLISHED = {
    "six-cylinder engine": ([0.017, 0.009, 0.0467, 0.0327, 0.0467, 0.0467, 0.0327, 0.0487, 2.075],
                            [1.106e6, 1.631e6, 1.253e6, 1.253e6, 1.678e6, 1.253e6, 1.253e6,
                             1.976e6]),
    "three discs": ([5, 11, 22], [0.1e6, 0.2e6]),
    "five discs": ([0.0035, 0.0035, 0.0035, 0.15, 0.05], [1.2e4, 1.2e4, 1.4e4, 1e4]),
}
# Their ratio at the mesh is that of the second node, as the book has it.
BRANCHED_GEARS = ("INERTIA 1 1 3200 0 0\nINERTIA 2 1 1025 0 0\nINERTIA 3 0.625 450 0 0\n"
                  "INERTIA 4 0.625 450 0 0\nSHAFT 1 1 2 1 4272566 0 0 0 0 0 0\n"
                  "SHAFT 2 2 3 0.625 7450764 0 0 0 0 0 0\n"
                  "SHAFT 3 2 4 0.625 7450764 0 0 0 0 0 0\n")

# What the examples deserve, and why.
DESERVED = {
    # The ice of its class rule carries the coupling over its nominal torque.
    "ice-ship": {"coupling-torque"},
    # Their load cases step over a peak.
    "gas-turbine-ship": {"unresolved-peak"},
    "twin-engine-gear": {"unresolved-peak"},
    # The published stiffnesses behind the flywheel are those of nearly rigid parts.
    "two-stroke-ship": {"shaft-length"},
}


def cases(path):
    """The line number, the text and whether it is refused of each case of a file of them: changes
    of the plant with every kind, and what comes out."""
    plant = (TESTS / "Support/every-kind.txt").read_text().splitlines()
    current, shortened, at, outcome, found = list(plant), list(plant), 0, "refused", False
    complete = False
    for number, line in enumerate([*path.read_text().splitlines(), "- "], 1):
        if line[:2] in ("- ", "+ ", "+"):
            if complete:
                if outcome != "reads":
                    yield number - 1, "\n".join(current) + "\n", outcome == "refused"
                current = list(plant if line[0] == "-" else shortened)
                if line[0] == "+":
                    at = shortened_at
                outcome, complete = "refused", False
            if line == "- ":
                return
            if line[0] == "-":
                at = current.index(line[2:])
                del current[at]
                shortened, shortened_at = list(current), at
            else:
                current.insert(at, line[2:])
                at += 1
        elif line.startswith(" "):
            complete = True
        elif line and not line.startswith("#"):
            outcome, complete = line, True


class Check(HostTest):
    def check(self, text, *options, status=0):
        self.write("plant.txt", text)
        done = self.call("check", "plant.txt", "--json", *options, status=status)
        document = json.loads(done.stdout)
        self.assertEqual((document["status"], done.stderr), (done.returncode, ""))
        return document["findings"]

    def test_a_sound_plant(self):
        self.assertEqual(self.check(PLANT, "--strict"), [])

    def test_every_fault_is_found(self):
        for before, after, severity, code, line, words in FAULTS:
            with self.subTest(code=code, after=after):
                self.assertIn(before, PLANT)
                text = PLANT.replace(before, after, 1)
                findings = self.check(text, status=1 if severity == "error" else 0)
                if code is None:
                    continue
                found = [each for each in findings if each["code"] == code]
                self.assertTrue(found, findings)
                self.assertEqual(found[0]["severity"], severity)
                self.assertIn(words, found[0]["found"])
                self.assertEqual(bool(found[0]["expected"] and found[0]["advice"]),
                                 code != "solver")
                if code in ("refused-line", "no-column"):
                    self.assertEqual(len([each for each in findings
                                          if each["severity"] == "error"]), 1, findings)
                lines = [*text.splitlines(), ""]
                if line is not None:
                    self.assertTrue(lines[found[0]["line"] - 1].startswith(line), found[0])

    def test_faults_that_results_or_data_files_tell(self):
        self.write("table.txt", "Hz Nms/rad\n5 1500\n300 1200\n")
        self.write("short.txt", "Hz Nms/rad\n50 1500\n100 1400\n")
        self.write("falling.txt", "Hz Nms/rad\n300 1200\n5 1500\n")
        self.write("broken.txt", "Hz Nms/rad\n5 1500\nfast 1200\n")
        self.write("steep.txt", "Hz Nms/rad\n5 1500\n100 700\n")
        for plant, before, after, severity, code, line, words in DAMPER_FAULTS:
            with self.subTest(after=after):
                text = plant.replace(before, after) if before else plant
                findings = self.check(text, status=1 if severity == "error" else 0)
                if code is None:
                    self.assertEqual(findings, [])
                    continue
                if severity is not None:
                    self.assertEqual([(each["severity"], each["code"]) for each in findings],
                                     [(severity, code)] * len(findings))
                findings = [each for each in findings if each["code"] == code]
                self.assertIn(words, findings[0]["found"])
                self.assertTrue(text.splitlines()[findings[0]["line"] - 1].startswith(line))

    def test_what_is_meant_is_not_told(self):
        """Comments and titles that look like sections, banks as they fire, a pinion of 1 kg m2."""
        for line in ("!LINEARCOUPLING 1 alternative", "#SHAFTS 9 9 10", "Shafts 1 to 10 of the line",
                     "Generators 3 x 450 kW", "Loadcases 1 to 8", "Propellers 2 of them"):
            self.assertEqual(self.check(f"{line}\n{PLANT}"), [], line)
        genset = EXAMPLES / "v-genset"
        self.write("Genset.txt", (genset / "Genset.txt").read_text())
        text = (genset / "input.txt").read_text()
        self.assertEqual(self.check(text), [])
        lines = text.splitlines()
        bank = next(i for i, line in enumerate(lines) if line.startswith("DIESEL")) + 4
        self.assertEqual([each["code"] for each in self.check(
            text.replace("\n" + lines[bank] + "\n", "\n" + lines[bank - 1] + "\n", 1))],
            ["firing-bank"])
        pinion = ("INERTIA 1 4.0 2.0 0 0\nINERTIA 2 4.0 1.0 0 0\nINERTIA 3 1.0 9.0 0 0\n"
                  "SHAFT 1 1 2 4.0 1e6 0 0 0 0 0 0\nSHAFT 2 3 2 1.0 1e8 0 0 0 0 0 0\n")
        self.assertEqual(self.check(pinion), [])

    def test_a_misspelt_column(self):
        text = PLANT.replace("DIESEL GENERATOR PROPELLER", "DIESEL GENERATOR PROPELER")
        findings = {each["code"]: each for each in self.check(text, status=1)}
        self.assertLessEqual({"no-column", "column-kind"}, set(findings))
        self.assertIn("did you mean PROPELLER?", findings["column-kind"]["advice"])

    def test_every_code_has_its_reason_in_the_docs(self):
        project = TESTS.parent
        codes = set()
        for source in (project / "host/check").glob("*.cpp"):
            codes |= set(re.findall(r'(?:Severity::\w+,|Range\{|hint,)\s*"([a-z-]+)"',
                                    source.read_text()))
        self.assertGreater(len(codes), 40)
        documented = set(re.findall(r"`([a-z0-9-]+)`", (project / "docs/checking.md").read_text()))
        self.assertLessEqual(codes, documented)

    def test_a_refused_section_makes_no_further_findings(self):
        text = PLANT.replace("1 2\n0.0 360.0", "1 2\n0.0")
        self.assertEqual([each["code"] for each in self.check(text, status=1)], ["refused-line"])
        done = self.call("run", "plant.txt", "--strict", status=1)
        self.assertIn("[refused-line]", done.stderr)
        self.assertIn("the input is refused", done.stderr)

    def test_an_interrupted_check_leaves_nothing(self):
        rows = "".join(f"{900 + i / 100} 200.0 120.0 80.0\n" for i in range(20000))
        self.write("plant.txt", PLANT + rows)
        scratch = self.here / "scratch"
        scratch.mkdir()
        check = subprocess.Popen([PROGRAM, "check", "plant.txt"], cwd=self.here, text=True,
                                 stderr=subprocess.PIPE, stdout=subprocess.PIPE,
                                 env={**os.environ, "TMPDIR": str(scratch)})
        while check.poll() is None and not list(scratch.glob("*/SystemInfo.bin")):
            time.sleep(0.01)
        check.terminate()
        _, words = check.communicate(timeout=60)
        self.assertEqual(check.returncode, -signal.SIGTERM)
        self.assertIn("ended by signal 15", words)
        self.assertEqual(list(scratch.iterdir()), [])

    def test_published_systems(self):
        for name, (inertias, stiffnesses) in PUBLISHED.items():
            text = "".join(f"INERTIA {i} 1 {inertia} 0 0\n" for i, inertia in enumerate(inertias))
            text += "".join(f"SHAFT {i} {i} {i + 1} 1 {stiffness} 0 0 0 0 0 0\n"
                            for i, stiffness in enumerate(stiffnesses))
            self.assertEqual(self.check(text), [], name)
        self.assertEqual([each["code"] for each in self.check(BRANCHED_GEARS)], ["mesh-ratio"] * 2)

    def test_every_refusal_of_the_solver_has_a_line_and_a_cause(self):
        for name in ("unreadable-lines.txt", "data-checks.txt"):
            for number, text, refused in cases(TESTS / "InputAndChecking" / name):
                with self.subTest(f"{name}:{number}"):
                    text = text.replace("@DIR@", str(self.here))
                    findings = [each for each in self.check(text, status=None)
                                if each["severity"] == "error"]
                    if refused:
                        self.assertTrue(findings)
                    else:  # a whole run may still find something
                        self.assertLessEqual({each["code"] for each in findings}, {"solver"})
                    for each in findings:
                        self.assertGreater(each["line"], 0, each)
                        self.assertTrue(each["found"])

    def test_examples(self):
        for example in sorted(path.parent.name for path in EXAMPLES.glob("*/input.txt")):
            document = json.loads(self.call("check", EXAMPLES / example / "input.txt",
                                            "--json").stdout)
            codes = {each["code"] for each in document["findings"]}
            self.assertEqual(codes, DESERVED.get(example, set()), example)

    def test_words(self):
        self.write("plant.txt", PLANT.replace("SCHWANEKE", "SCHWANECKE"))
        done = self.call("check", "plant.txt")
        self.assertRegex(done.stdout, r"^plant\.txt: 0 errors, 1 warning, 0 hints\n\n"
                         r"warning line 31: .*\[choice\]\n {8}expected: one of SCHWANEKE, .*\n"
                         r" {8}to do:    write one of them; did you mean SCHWANEKE\?")
        self.call("check", "plant.txt", "--strict", status=1)
        self.call("check", "none.txt", status=1)
        self.assertEqual([path.name for path in self.here.iterdir()], ["plant.txt"])

    def test_advice_before_a_run(self):
        fault = PLANT.replace("SCHWANEKE", "SCHWANECKE")
        self.write("plant.txt", fault)
        self.write("sound.txt", PLANT)
        self.write("refused.txt", PLANT.replace("1 2\n0.0 360.0", "1 2\n! angles\n0.0 360.0"))
        words = "plant.txt: warning: line 31: PROPELLER 1 Method SCHWANECKE [choice]\n"
        run = ("run", "plant.txt", "--results", "of")
        done = self.call(*run)
        self.assertTrue(done.stderr.startswith(words), done.stderr)
        self.assertEqual(self.call(*run, "--no-advice").stderr, "")
        self.assertEqual(self.call(*run, "--quiet").stderr, "")
        self.assertEqual(self.call("run", "sound.txt", "--strict").stderr, "")
        document = json.loads(self.call(*run, "--json").stdout)
        self.assertEqual((document["status"], [each["code"] for each in document["findings"]]),
                         (0, ["choice"]))
        self.call(*run, "--no-advice", "--strict", status=2)
        # Nothing is calculated, and what an earlier run has left stays.
        before = (self.here / "of/run.json").read_bytes()
        done = self.call(*run, "--strict", "--json", status=1)
        self.assertIn("nothing was calculated", done.stderr)
        self.assertEqual(json.loads(done.stdout)["status"], 1)
        self.assertEqual((self.here / "of/run.json").read_bytes(), before)
        done = self.call("run", "refused.txt", "--quiet", status=1)
        self.assertIn('refused.txt: error: line 13: a comment, "! angles" [refused-line]\n',
                      done.stderr)
        # Several inputs; a run that steps over a peak has whole results all the same.
        done = self.call("run", "plant.txt", "sound.txt", "--json")
        self.assertTrue(done.stderr.startswith(words), done.stderr)
        self.assertEqual([[each["code"] for each in one["findings"]]
                          for one in json.loads(done.stdout)], [["choice"], []])
        done = self.call("run", "plant.txt", "sound.txt", "--json", "--strict", status=1)
        self.assertEqual([one["status"] for one in json.loads(done.stdout)], [1, 0])
        twin = EXAMPLES / "twin-engine-gear/input.txt"
        self.call("run", twin, "--results", "twin", "--strict", "--quiet", status=1)
        self.assertEqual(json.loads((self.here / "twin/run.json").read_text())["status"], "complete")

    def test_hostile_texts(self):
        for text in ("", "INERTIA", "\xff\xfeI\0N\0E\0R\0T\0I\0A\0", "INERTIA 1 1 1 0 0\n" * 50,
                     "SHAFT 1 1 1 1 1 1 1 1 1 1 1\n" * 50, "LOADCASE\nRPM\n", "x" * 100000):
            done = self.call("check", self.write("plant.txt", text), "--json", status=1)
            self.assertTrue(json.loads(done.stdout)["findings"], text[:20])


if __name__ == "__main__":
    unittest.main()
