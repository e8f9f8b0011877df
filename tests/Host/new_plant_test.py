"""`verenwick new`: input files that run as they are, marked where values are still to be put in."""
import json
import os
import re
import unittest

from support import HostTest

MARK = "<fill in>"
# Mode 2 in rpm, the largest vibratory stress in N/mm2, and what the plant is made of: bounds that
# a plant of such size keeps, and that no ratio, unit or order put wrong does.
PLANTS = {
    "genset": ((400, 750), (5, 60), {"diesels": 1, "generators": 1, "viscous dampers": 1}),
    "two-stroke": ((300, 550), (30, 90), {"diesels": 1, "propellers": 1}),
    "geared-twin": ((200, 450), (5, 60), {"diesels": 2, "propellers": 1, "linear couplings": 2}),
    "pump-set": ((2500, 4500), (1, 60), {"electric motors": 1, "reciprocating pumps": 1}),
    "turbine": ((1000, 4000), (0.05, 60), {"gas turbines": 1, "generators": 1}),
}


class New(HostTest):
    def test_each_kind_runs_and_makes_sense(self):
        for kind, (mode, stress, parts) in PLANTS.items():
            with self.subTest(kind):
                self.call("new", kind, "-o", f"{kind}.txt")
                done = self.call("run", f"{kind}.txt", "--results", kind, "--json")
                summary = json.loads(done.stdout)
                self.assertEqual((summary["outcome"], summary["warnings"]), ("complete", []))
                self.assertEqual(summary["unresolvedPeaks"], [])
                self.assertEqual({name: summary["counts"][name] for name in parts}, parts)
                rpm = summary["modes"][1]["angularFrequency"] * 60 / 6.283185307
                self.assertTrue(mode[0] < rpm < mode[1], rpm)
                largest = max(case["stress"]["value"] for case in summary["loadCases"]) / 1e6
                self.assertTrue(stress[0] < largest < stress[1], largest)
                self.assertEqual((self.here / kind / "Verenwick.log").read_text().count("Warning"), 0)

    def test_marks_stand_where_values_belong(self):
        # Choices of the calculation, ids, and the bank that an engine in line doesn't have.
        choices = re.compile(r"inertias of|of bank B|1 fires, 2 misfires|percent, of cylinders"
                             r"|replaces this value|of opposite plungers|orders in use$"
                             r"|no file of the water")
        for kind in PLANTS:
            text = self.call("new", kind).stdout
            self.assertTrue(text.isascii())
            lines = text.splitlines()
            table = lines.index("LOADCASE")
            marked = {i for i, line in enumerate(lines) if MARK in line}
            # A comment has it in front of the load cases alone.
            self.assertEqual([i for i in marked if lines[i].startswith("!") or i >= table],
                             [table - 1], kind)
            for i, line in enumerate(lines[1:table], 1):
                if re.match(r"(INERTIA|SHAFT) |[-\d]|(SCHWANEKE|ARCHER) ", line):
                    remark = re.sub(r"^\S+( +[-\d.]+)*", "", line).strip()
                    self.assertTrue(remark, f"{kind}: {line} tells nothing of its values")
                    self.assertEqual(i in marked,
                                     choices.search(line) is None or "; orders in use" in line, line)
            # Taken away one by one, they leave the same plant.
            self.write(f"{kind}.txt", text)
            self.write("done.txt", text.replace(MARK, ""))
            summaries = [json.loads(self.call("run", name, "--results", "out", "--json",
                                              "--mode", "free").stdout)
                         for name in (f"{kind}.txt", "done.txt")]
            self.assertEqual(summaries[0]["modes"], summaries[1]["modes"])

    def test_comments_tell_what_comes_out(self):
        self.call("new", "genset", "-o", "genset.txt")
        text = (self.here / "genset.txt").read_text()
        self.assertRegex(text, r"peak of a quarter load is about 40 percent of the rated one")
        self.write("part.txt", text.replace("1500.0  495.0  495.0", "1500.0  112.5  112.5"))
        self.call("run", "part.txt", "--results", "part", "--quiet")
        report = (self.here / "part" / "LoadCaseSetting.txt").read_text()
        peaks = {(row[1], row[2]): float(row[3]) for row in
                 (line.split() for line in report.split("Generator")[0].splitlines())
                 if len(row) == 8 and row[0].isdigit()}
        self.assertEqual(peaks["1500.0", "75.0"], 165.0)
        self.assertAlmostEqual(peaks["1500.0", "18.8"] / 165, 0.40, delta=0.02)

        self.call("new", "two-stroke", "-o", "two-stroke.txt")
        text = (self.here / "two-stroke.txt").read_text()
        self.call("run", "two-stroke.txt", "--results", "two-stroke", "--quiet")
        told = re.findall(r"(\d+) rpm, order\s+(\d+)\s+of\s+mode\s+(\d+)", text)
        self.assertEqual(len(told), 2)
        for rpm, order, mode in told:
            table = self.call("show", "two-stroke", "VectorSumRpm", "--mode", mode, "--order", order,
                              "--csv").stdout
            self.assertAlmostEqual(float(table.splitlines()[-1].split(",")[-1]), float(rpm), delta=0.5)

    def test_check_finds_nothing_but_the_marks(self):
        for kind in PLANTS:
            text = self.call("new", kind, "-o", f"{kind}.txt") and (self.here / f"{kind}.txt").read_text()
            findings = json.loads(self.call("check", f"{kind}.txt", "--json").stdout)["findings"]
            marked = [i for i, line in enumerate(text.splitlines(), 1) if MARK in line]
            self.assertEqual([(each["code"], each["line"]) for each in findings],
                             [("placeholder", line) for line in marked])
            self.call("run", f"{kind}.txt", "--strict", "--quiet", status=1)

    def test_never_over_a_file(self):
        mine = self.write("plant.txt", "mine")
        (self.here / "lost.txt").symlink_to("nowhere")
        for name, words in (("plant.txt", "is there already; nothing is written over it"),
                            ("lost.txt", "is a link"), (".", "is a directory"),
                            ("no/where.txt", "where.txt")):
            done = self.call("new", "genset", "-o", name, status=1)
            self.assertIn(words, done.stderr)
            self.assertEqual(done.stdout, "")
        self.assertEqual(mine.read_text(), "mine")
        name = 300 * "a"
        done = self.call("new", "genset", "-o", name, status=1)
        self.assertEqual((done.stdout, done.stderr),
                         ("", f"verenwick: {name} can't be written: File name too long\n"))
        self.assertEqual(sorted(os.listdir(self.here)), ["lost.txt", "plant.txt"])

    def test_words(self):
        for line, words in (("new", "KIND"), ("new gensett", "did you mean genset?"),
                            ("new ship", "none of geared-twin, genset, pump-set, turbine and "),
                            ("new genset turbine", "one argument too many"),
                            ("new genset -o", "lacks its FILE"),
                            ("new genset --output=", "lacks its FILE")):
            self.assertIn(words, self.call(*line.split(), status=2).stderr, line)
        done = self.call("new", "genset", "-o", "", status=2)
        self.assertEqual((done.stdout, done.stderr), ("", "verenwick: --output lacks its FILE\n"))
        self.assertEqual(os.listdir(self.here), [])
        text = self.call("new", "--help").stdout
        for kind in PLANTS:
            self.assertRegex(text, rf"\n  {kind} +[A-Z]")
            self.assertIn(kind, self.call("completion", "bash").stdout)


if __name__ == "__main__":
    unittest.main()
