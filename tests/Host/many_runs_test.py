"""Runs several plants at once, on a terminal and off it."""
import json
import math
import os
import re
import shlex
import signal
import subprocess
import time
import unittest

from support import EXAMPLES, PROGRAM, HostTest, records

PLANTS = ["turbine-generator", "two-stroke-ship", "v-genset"]
INPUTS = [EXAMPLES / name / "input.txt" for name in PLANTS]
REFUSAL = 'Error occurs when reading "Id, RpmRatio, Inertia, AbsDamping, DynMagnifier"'


def on_terminal(directory, *arguments, environment=None):
    """What a person sees who runs it on a terminal, escape sequences and all."""
    command = shlex.join(map(str, (PROGRAM, *arguments)))
    return subprocess.run(["script", "-qc", command, os.devnull], cwd=directory,
                          stdout=subprocess.PIPE, stdin=subprocess.DEVNULL, check=True,
                          env={"TERM": "xterm", **(environment or {})}).stdout.decode()


class ManyRuns(HostTest):
    def setUp(self):
        super().setUp()
        self.write("bad.txt", "INERTIA 1 1.0 5.0\n")

    def test_results_are_those_of_single_runs(self):
        for jobs in (1, 3):
            done = self.call("run", *INPUTS, "--results", f"of{jobs}", "--jobs", jobs, "--no-advice")
            self.assertEqual(done.stderr, "")
            lines = done.stdout.splitlines()
            self.assertEqual([line.split()[0] for line in lines], ["plant", *PLANTS])
        for name, path in zip(PLANTS, INPUTS):
            self.call("run", path, "--results", name, "--quiet")
            alone, *others = (
                {path.name: path.read_bytes() for path in (self.here / directory).iterdir()
                 if path.name != "run.json"}
                for directory in (name, f"of1/{name}", f"of3/{name}"))
            self.assertGreater(len(alone), 40)
            self.assertEqual(others, [alone, alone])
        ship = self.here / "two-stroke-ship"
        omegas, stress, torque = (records(ship / f"{name}.bin") for name in (
            "NaturalFrequency", "SynthesisStress", "SynthesisTorque"))
        shafts = int(records(ship / "SystemInfo.bin")[1])
        speeds = [40, 50, 56, 60, 63, 65, 66, 67, 69, 72, 76, 80, 85, 90, 95, 99]

        def worst(values, unit):
            case, shaft = divmod(values.index(max(values)), shafts)
            return [f"{max(values) / unit:.4g}", str(shaft + 1), f"{speeds[case]:.1f}"]
        self.assertEqual(lines[2].split()[2:], [
            str(len(omegas)), f"{omegas[1] / (2 * math.pi):.4g}", *worst(torque, 1e3),
            *worst(stress, 1e6)])

    def test_a_failed_run_stops_no_other(self):
        self.write("good.txt", INPUTS[0].read_text())
        done = self.call("run", "bad.txt", "missing.txt", "good.txt", "--jobs", 1, "--report",
                         status=1)
        rows = done.stdout.splitlines()[1:]
        self.assertIn(REFUSAL, rows[0])
        self.assertIn("missing.txt can't be read", rows[1])
        self.assertRegex(rows[2], r"^good +[\d.]+ +7 ")
        self.assertRegex(done.stderr, r"bad:\n.* line 1: .*only 3 of them.*\n.*\n " + REFUSAL)
        self.assertNotIn("good:", done.stderr)
        self.assertTrue((self.here / "results-of-good/report.html").is_file())
        self.assertFalse((self.here / "results-of-bad/report.html").exists())
        self.assertEqual(self.call("run", "bad.txt", "good.txt", "--quiet", status=1).stdout, "")
        # A result directory that can't be made is a failure of its run alone.
        self.write("other/inner.txt", INPUTS[0].read_text())
        self.write("results-of-inner", "in the way")
        rows = self.call("run", "other/inner.txt", "good.txt", status=1).stdout.splitlines()[1:]
        self.assertIn("can't be made", rows[0])
        self.assertRegex(rows[1], r"^good +[\d.]+ +7 ")

    def test_names(self):
        for name in ("a/one.txt", "a/two.txt", "b/one.txt"):
            self.write(name, INPUTS[0].read_text())
        self.call("run", "a/one.txt", "a/two.txt", "--mode", "free")
        self.assertTrue((self.here / "results-of-one/NaturalFrequency.bin").is_file())
        self.call("run", "a/one.txt", "b/one.txt", "--results", "deep/er", "--mode", "free")
        self.assertTrue((self.here / "deep/er/b/NaturalFrequency.bin").is_file())
        for words in ("a/one.txt a/one.txt", "a/one.txt a/two.txt b/one.txt", "a/one.txt --jobs 0"):
            self.call("run", *words.split(), status=2)

    def test_json(self):
        def document(*arguments, status=0):
            return json.loads(self.call("run", *arguments, "--json", status=status).stdout)
        alone = document(INPUTS[1])
        several = document(INPUTS[1], "bad.txt", "--results", "both", status=1)
        for name in ("counts", "modes", "criticalSpeeds", "loadCases"):
            self.assertEqual(several[0][name], alone[name], name)
        self.assertEqual(several[0]["status"], 0)
        refused_alone = document("bad.txt", status=1)
        for ending, wanted in ((several[0], alone), (several[1], refused_alone)):
            for name in ("outcome", "warnings", "errors"):
                self.assertEqual(ending.get(name), wanted.get(name), name)
        self.assertEqual(several[1]["outcome"], "refused")
        self.assertIn(REFUSAL, several[1]["errors"][0])
        for refused in (several[1], refused_alone):
            self.assertEqual(refused["status"], 1)
            self.assertIn(REFUSAL, refused["words"])
        self.assertNotIn("loadCases", document(INPUTS[0], "--mode", "free"))
        commas = self.write("commas.txt", INPUTS[0].read_text().replace(".", ","))
        self.assertEqual(document(commas)["loadCases"], document(INPUTS[0])["loadCases"])

    def test_terminal(self):
        escape = "\x1b["
        seen = on_terminal(self.here, "run", INPUTS[1], "bad.txt", "--jobs", 2)
        for words in (r"input +(waits|\[[#.]{24}\] +\d+ %)", r"\x1b\[2A", r"input +done +[\d.]+ s",
                      r"bad +failed", r"\x1b\[1mplant", r"\x1b\[31mError"):
            self.assertRegex(seen, words)
        bold = on_terminal(self.here, "run", INPUTS[0], "--mode", "free")
        self.assertIn(escape + "1mNatural frequencies", bold)
        for environment in ({"NO_COLOR": "1"}, {"TERM": "dumb"}):
            plain = on_terminal(self.here, "run", INPUTS[0], "--mode", "free",
                                environment=environment)
            self.assertIn("Natural frequencies", plain)
            self.assertNotIn(escape, plain)
        piped = self.call("run", INPUTS[1], "bad.txt", status=1)
        self.assertNotIn(escape, piped.stdout + piped.stderr)
        self.assertNotIn("waits", piped.stderr)


class LongRuns(HostTest):
    """Runs that a person or the system ends, and what is seen of them before."""

    def setUp(self):
        super().setUp()
        for name in ("a", "b", "c"):
            self.write_plant(f"{name}.txt", 4000)
        self.write("short.txt", INPUTS[0].read_text())

    def write_plant(self, name, cases):
        head, _ = INPUTS[1].read_text().split("PROPELLER\n40.0", 1)
        rows = "".join(f"{40 + case / 100:.2f} 4000 4000\n" for case in range(cases))
        self.write(name, f"{head}PROPELLER\n{rows}")

    def begin(self, *arguments, until, **process):
        """Starts the program and waits for a file to hold something."""
        running = subprocess.Popen([PROGRAM, *arguments], cwd=self.here, text=True,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE, **process)
        self.addCleanup(running.communicate)
        self.addCleanup(running.kill)
        path = self.here / until
        while running.poll() is None and not (path.exists() and path.stat().st_size):
            time.sleep(0.01)
        return running

    def of_runs(self):
        """The processes that calculate here."""
        lines = subprocess.run(["ps", "-eo", "pid,stat,args"], capture_output=True, text=True,
                               check=True).stdout.splitlines()
        return [int(line.split()[0]) for line in lines
                if f"--results={self.here}" in line and line.split()[1][0] != "Z"]

    def test_signals_end_the_children(self):
        for number in (signal.SIGTERM, signal.SIGINT):
            running = self.begin("run", "short.txt", "a.txt", "b.txt", "c.txt", "--jobs", "2",
                                 "--results", f"of{number}",
                                 until=f"of{number}/b/DieselTorque.bin")
            self.assertEqual(len(self.of_runs()), 2)
            running.send_signal(number)
            output, words = running.communicate(timeout=60)
            self.assertEqual(running.returncode, -number)
            self.assertEqual(self.of_runs(), [])
            self.assertRegex(words, rf"verenwick: ended by signal {number} \(\w+\); the runs that "
                             "are not done have no results")
            rows = output.splitlines()[1:]
            self.assertRegex(rows[0], r"^short +[\d.]+ +7 ")
            for row in rows[1:3]:
                self.assertRegex(row, r"^[ab] .*verenwick: ended by signal 15 ")
            self.assertRegex(rows[3], "^c .*not started")
            self.call("show", f"of{number}/short", "SynthesisTorque")

    def test_a_killed_child_is_told(self):
        running = self.begin("run", "a.txt", "short.txt", "--jobs", "1", "--json",
                             until="results-of-a/DieselTorque.bin")
        os.kill(self.of_runs()[0], signal.SIGKILL)
        output, words = running.communicate(timeout=60)
        self.assertEqual(running.returncode, 1)
        killed, good = json.loads(output)
        self.assertEqual((killed["status"], good["status"]), (137, 0))
        self.assertEqual((killed["outcome"], good["outcome"]), ("stopped", "complete"))
        for said in (killed["words"], words):
            self.assertIn("verenwick: ended by signal 9 (Killed)\n", said)

    def test_children_whose_end_nobody_wanted(self):
        self.call("run", INPUTS[0], "short.txt", "--mode", "free",
                  preexec_fn=lambda: signal.signal(signal.SIGCHLD, signal.SIG_IGN))

    def test_a_single_run(self):
        for number in (signal.SIGTERM, signal.SIGINT):
            running = self.begin("run", "a.txt", "--results", f"of{number}",
                                 until=f"of{number}/DieselTorque.bin")
            running.send_signal(number)
            output, words = running.communicate(timeout=60)
            self.assertEqual((running.returncode, output), (-number, ""))
            self.assertIn("ended by a signal; the results in", words)
            self.assertIn(f"of{number} are not whole\n", words)

    def test_progress_of_a_single_run(self):
        # A run of some seconds, whatever the machine and the build.
        self.write_plant("a.txt", 200)
        start = time.monotonic()
        self.call("run", "a.txt")
        self.write_plant("a.txt", min(20000, int(800 / (time.monotonic() - start))))
        seen = on_terminal(self.here, "run", "a.txt")
        drawn = seen.split("\x1b[1ma.txt")[0]
        shares = [int(share) for share in
                  re.findall(r"\r\[[#.]{24}\] +(\d+) % +[\d.]+ s\x1b\[K", drawn)]
        self.assertGreater(len(shares), 1)
        self.assertEqual(shares, sorted(shares))
        self.assertGreater(shares[-1], shares[0])
        self.assertTrue(drawn.endswith("s\x1b[K\r\x1b[K"), repr(drawn[-60:]))
        for arguments, environment in ((["--quiet"], {}), (["--json"], {}), ([], {"TERM": "dumb"})):
            self.assertNotIn("%", on_terminal(self.here, "run", "a.txt", *arguments,
                                              environment=environment).split("a.txt")[0])


if __name__ == "__main__":
    unittest.main()
