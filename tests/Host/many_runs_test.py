"""Runs several plants at once, and reads the summaries that programs read.

usage: many_runs_test.py PROGRAM EXAMPLES [unittest options]
"""
import json
import math
import os
import pathlib
import pty
import re
import struct
import subprocess
import sys
import tempfile
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))
EXAMPLES = pathlib.Path(os.path.abspath(sys.argv.pop(1)))
PLANTS = ["turbine-generator", "two-stroke-ship", "v-genset"]
INPUTS = [EXAMPLES / name / "input.txt" for name in PLANTS]
BAD = 'INERTIA 1 1.0 5.0\n'
REFUSAL = 'Error occurs when reading "Id, RpmRatio, Inertia, AbsDamping, DynMagnifier"'


def records(path):
    data = path.read_bytes()
    return struct.unpack(f"<{len(data) // 8}d", data)


class ManyRuns(unittest.TestCase):
    def setUp(self):
        self.scratch = tempfile.TemporaryDirectory()
        self.here = pathlib.Path(self.scratch.name)
        (self.here / "bad.txt").write_text(BAD)

    def tearDown(self):
        self.scratch.cleanup()

    def call(self, *arguments, status=0):
        done = subprocess.run([PROGRAM, *map(str, arguments)], cwd=self.here, timeout=240,
                              capture_output=True, text=True)
        self.assertEqual(done.returncode, status, (arguments, done.stdout, done.stderr))
        return done

    def on_terminal(self, *arguments, environment=None):
        """What a person sees who runs it on a terminal, escape sequences and all."""
        child, terminal = pty.fork()
        if child == 0:
            os.chdir(self.here)
            os.execve(PROGRAM, [PROGRAM, *map(str, arguments)],
                      {"TERM": "xterm", **(environment or {})})
        seen = b""
        while True:
            try:
                block = os.read(terminal, 65536)
            except OSError:  # the other end is closed
                break
            if not block:
                break
            seen += block
        os.waitpid(child, 0)
        os.close(terminal)
        return seen.decode()

    def files(self, directory):
        return {path.name: path.read_bytes() for path in (self.here / directory).iterdir()}

    def test_results_are_those_of_single_runs(self):
        for jobs in (1, 3):
            done = self.call("run", *INPUTS, "--results", f"of{jobs}", "--jobs", jobs)
            self.assertEqual(done.stderr, "")
            lines = done.stdout.splitlines()
            self.assertEqual([line.split()[0] for line in lines], ["plant", *PLANTS])
            self.assertEqual(len({len(line) for line in lines}), 1)
        for name, path in zip(PLANTS, INPUTS):
            self.call("run", path, "--results", name, "--quiet")
            alone = self.files(name)
            self.assertGreater(len(alone), 40)
            self.assertEqual(alone, self.files(f"of1/{name}"))
            self.assertEqual(alone, self.files(f"of3/{name}"))

    def test_table(self):
        self.call("run", INPUTS[1], "--results", "alone", "--quiet")
        lines = self.call("run", INPUTS[1], INPUTS[2]).stdout.splitlines()
        row = lines[1].split()
        omegas = records(self.here / "alone" / "NaturalFrequency.bin")
        stress = records(self.here / "alone" / "SynthesisStress.bin")
        torque = records(self.here / "alone" / "SynthesisTorque.bin")
        shafts = int(records(self.here / "alone" / "SystemInfo.bin")[1])
        case, shaft = divmod(stress.index(max(stress)), shafts)
        self.assertEqual(row[2], str(len(omegas)))
        self.assertEqual(row[3], f"{omegas[1] / (2 * math.pi):.4g}")
        self.assertEqual(row[4], f"{max(torque[case * shafts:(case + 1) * shafts]) / 1e3:.4g}")
        self.assertEqual(row[5:7], [f"{max(stress) / 1e6:.4g}", str(shaft + 1)])

    def test_a_failed_run_stops_no_other(self):
        (self.here / "good.txt").write_bytes(INPUTS[0].read_bytes())
        done = self.call("run", "bad.txt", "missing.txt", "good.txt", "--jobs", 1, "--report",
                         status=1)
        rows = done.stdout.splitlines()[1:]
        self.assertIn(REFUSAL, rows[0])
        self.assertIn("accessing the input file", rows[1])
        self.assertRegex(rows[2], r"^good +[\d.]+ +7 ")
        self.assertIn("bad:\n " + REFUSAL, done.stderr)
        self.assertNotIn("good:", done.stderr)
        self.assertTrue((self.here / "results-of-good" / "report.html").is_file())
        self.assertFalse((self.here / "results-of-bad" / "report.html").exists())
        self.assertEqual(self.call("run", "bad.txt", "good.txt", "--quiet", status=1).stdout, "")
        # A result directory that can't be made is a failure of its run alone.
        (self.here / "results-of-good" / "inner.txt").write_bytes(INPUTS[0].read_bytes())
        (self.here / "results-of-inner").write_text("in the way")
        done = self.call("run", "results-of-good/inner.txt", "good.txt", status=1)
        self.assertIn("can't be made", done.stdout.splitlines()[1])
        self.assertIn("good", done.stdout.splitlines()[2])

    def test_names(self):
        (self.here / "a").mkdir()
        (self.here / "b").mkdir()
        for name in ("a/one.txt", "a/two.txt", "b/one.txt"):
            (self.here / name).write_bytes(INPUTS[0].read_bytes())
        self.call("run", "a/one.txt", "a/two.txt", "--mode", "free")
        self.assertTrue((self.here / "results-of-one" / "NaturalFrequency.bin").is_file())
        self.call("run", "a/one.txt", "b/one.txt", "--results", "deep/er", "--mode", "free")
        self.assertTrue((self.here / "deep/er/b/NaturalFrequency.bin").is_file())
        for inputs in (["a/one.txt", "a/one.txt"], ["a/one.txt", "a/two.txt", "b/one.txt"]):
            self.call("run", *inputs, status=2)
        self.call("run", "a/one.txt", "--jobs", 0, status=2)

    def test_json(self):
        document = json.loads(self.call("run", INPUTS[1], "--results", "ship", "--json").stdout)
        ship = self.here / "ship"
        self.assertEqual(document["status"], 0)
        self.assertEqual(pathlib.Path(document["results"]), ship)
        info = records(ship / "SystemInfo.bin")
        self.assertEqual(document["counts"]["inertias"], info[0])
        self.assertEqual(document["counts"]["load cases"], info[13])
        self.assertEqual([mode["angularFrequency"] for mode in document["modes"]],
                         list(records(ship / "NaturalFrequency.bin")))
        self.assertEqual([mode["nodes"] for mode in document["modes"]][:3], [0, 1, 2])
        first = document["criticalSpeeds"][0]
        self.assertEqual((first["diesel"], first["mode"], first["relativeVectorSum"]), (1, 2, 1))
        self.assertAlmostEqual(first["order"] * first["rpm"] * math.pi / 30,
                               document["modes"][1]["angularFrequency"])
        shafts = int(info[1])
        for name, file, points in (("torque", "SynthesisTorque", shafts),
                                   ("stress", "SynthesisStress", shafts),
                                   ("deflection", "SynthesisDeflection", int(info[0]))):
            values = records(ship / (file + ".bin"))
            for case, row in enumerate(document["loadCases"]):
                of_case = values[case * points:(case + 1) * points]
                self.assertEqual(row[name]["value"], max(of_case))
                self.assertEqual(row[name].get("shaft", row[name].get("inertia")),
                                 of_case.index(max(of_case)) + 1)
        losses = records(ship / "ShaftPowerLoss.bin")
        self.assertAlmostEqual(document["loadCases"][2]["powerLoss"],
                               sum(losses[2 * shafts:3 * shafts]))
        self.assertEqual(document["loadCases"][0]["rpm"], 40)

        several = json.loads(self.call("run", INPUTS[1], "bad.txt", "--json", "--results", "both",
                                       status=1).stdout)
        for name in ("counts", "modes", "criticalSpeeds", "loadCases"):
            self.assertEqual(several[0][name], document[name], name)
        self.assertEqual([each["status"] for each in several], [0, 1])
        self.assertIn(REFUSAL, several[1]["words"])
        refused = json.loads(self.call("run", "bad.txt", "--json", status=1).stdout)
        self.assertEqual(refused["status"], 1)
        self.assertIn(REFUSAL, refused["words"])
        free = json.loads(self.call("run", INPUTS[0], "--json", "--mode", "free").stdout)
        self.assertNotIn("loadCases", free)

    def test_terminal(self):
        escape = "\x1b["
        seen = self.on_terminal("run", INPUTS[1], "bad.txt", "--jobs", 2)
        self.assertRegex(seen, r"input +(waits|\[[#.]{24}\] +\d+ %)")  # on its way
        self.assertIn(escape + "2A", seen)  # over the lines before
        self.assertRegex(seen, r"input +done +[\d.]+ s")
        self.assertRegex(seen, r"bad +failed")
        self.assertIn(escape + "1mplant", seen)
        self.assertIn(escape + "31mError", seen)
        bold = self.on_terminal("run", INPUTS[0], "--mode", "free")
        self.assertIn(escape + "1mNatural frequencies", bold)
        for environment in ({"NO_COLOR": "1"}, {"TERM": "dumb"}):
            plain = self.on_terminal("run", INPUTS[0], "--mode", "free", environment=environment)
            self.assertIn("Natural frequencies", plain)
            self.assertNotIn(escape, plain)
        piped = self.call("run", INPUTS[1], "bad.txt", status=1)
        self.assertNotRegex(piped.stdout + piped.stderr, re.escape(escape))
        self.assertNotIn("waits", piped.stderr)


if __name__ == "__main__":
    unittest.main()
