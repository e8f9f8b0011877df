"""Looks at plants with one fault each: what is found, on which line, and with which status."""
import json
import unittest

from support import EXAMPLES, SMALL_PLANT, HostTest

# Without a fault: the propeller's row has the sum of its inertias.
PLANT = SMALL_PLANT.replace("INERTIA 5 1.0  40.0", "INERTIA 5 1.0  35.0")

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
    ("LINEARCOUPLING 1", "LINEARCOUPLNG 1", "warning", "keyword", "LINEARCOUPLNG",
     '"LINEARCOUPLNG" is no keyword'),
    ("180.0 0.0 1 1", "180.0 0.0 1 7", "warning", "throw", "SHAFT 1", "ComponentIdFlag 7"),
]

# What the examples deserve, and why.
DESERVED = {
    # Their load cases step over a peak.
    "gas-turbine-ship": {"unresolved-peak"},
    "twin-engine-gear": {"unresolved-peak"},
    # The published stiffnesses behind the flywheel are those of nearly rigid parts.
    "two-stroke-ship": {"shaft-length"},
    # The solver warns of every bank B that fires behind its bank A.
    "v-genset": {"solver"},
}


class Check(HostTest):
    def check(self, text, *options, status=0):
        self.write("plant.txt", text)
        done = self.call("check", "plant.txt", "--json", *options, status=status)
        document = json.loads(done.stdout)
        self.assertEqual(document["status"], done.returncode)
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

    def test_hostile_texts(self):
        for text in ("", "INERTIA", "\xff\xfeI\0N\0E\0R\0T\0I\0A\0", "INERTIA 1 1 1 0 0\n" * 50,
                     "SHAFT 1 1 1 1 1 1 1 1 1 1 1\n" * 50, "LOADCASE\nRPM\n", "x" * 100000):
            done = self.call("check", self.write("plant.txt", text), "--json", status=1)
            self.assertTrue(json.loads(done.stdout)["findings"], text[:20])


if __name__ == "__main__":
    unittest.main()
