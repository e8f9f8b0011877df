"""The record of a run: results are shown as those of a whole run, or not at all."""
import hashlib
import json
import os
import shutil
import signal
import struct
import subprocess
import time
import unittest

from support import EXAMPLES, PROGRAM, HostTest

SHIP = EXAMPLES / "ice-ship"
STANDSTILL = ("INERTIA 1 1.0 100 0 0\nINERTIA 2 1.0 50 0 0\nSHAFT 7 1 2 1 1e6 0 0 200 0 0 0\n"
              "GENERATOR 1\n2 100 1000 1\n1 0 0 0\n1 0 0 0\nELECTRICMOTOR 1\n"
              "1 100 1000 0 0 0\n0 0 0 0\n0 0 0 0\nLOADCASE\nRPM 1 1\nGENERATOR ELECTRICMOTOR\n"
              "0 100 100\n")


class RecordTest(HostTest):
    def setUp(self):
        super().setUp()
        self.results = self.here / "results"
        for name in ("input.txt", "ice-torque.txt"):
            self.write(name, (SHIP / name).read_text())

    def run_ship(self, *arguments, **options):
        return self.call("run", "input.txt", "--results", "results", *arguments, **options)

    def record(self):
        return json.loads((self.results / "run.json").read_text())

    def files(self):
        return {path.name: path.read_bytes() for path in self.results.iterdir()}

    def read(self, status, *options):
        """What the three readers say of the directory on standard error."""
        return [self.call(*words, *options, status=status).stderr for words in (
            ("show", "results", "SynthesisTorque"), ("report", "input.txt", "results"),
            ("export", "results", "--format", "csv"))]


class Record(RecordTest):
    def test_tells_what_was_run(self):
        self.run_ship("--quiet")
        record = self.record()
        self.assertEqual([record[name] for name in ("status", "mode", "words", "errors", "warnings")],
                         ["complete", 3, "", [], []])
        self.assertEqual(record["command"], ["run", "input.txt", "--results", "results", "--quiet"])
        self.assertRegex(record["started"], r"^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z$")
        self.assertLessEqual(record["started"], record["ended"])
        for name, entries in (("input.txt", [record["input"]]),
                              ("ice-torque.txt", record["dataFiles"])):
            data = (self.here / name).read_bytes()
            self.assertEqual(entries, [{"name": name, "path": str(self.here / name),
                                        "bytes": len(data),
                                        "sha256": hashlib.sha256(data).hexdigest()}])
        self.assertEqual({file["name"]: file["bytes"] for file in record["files"]},
                         {name: len(data) for name, data in self.files().items()
                          if name != "run.json"})
        self.assertEqual(record["orders"], {"propeller": 16})
        self.assertEqual(self.read(0), ["", "", ""])

    def test_what_differs_is_refused(self):
        self.run_ship("--quiet")
        whole = shutil.copytree(self.results, self.here / "whole")

        def flip(path, place):
            data = bytearray(path.read_bytes())
            data[place] ^= 1
            path.write_bytes(data)

        torque, record = self.results / "SynthesisTorque.bin", self.results / "run.json"
        for change, words in (
                (torque.unlink, "SynthesisTorque.bin of the run is missing"),
                (lambda: torque.write_bytes(torque.read_bytes()[:-8]), "another size"),
                (lambda: flip(torque, 5), "its checksum differs"),
                (lambda: flip(self.results / "SystemInfo.bin", 6), "SystemInfo.bin"),
                (lambda: (self.results / "StressAngleBasedDiesel.bin").write_bytes(bytes(8)),
                 "StressAngleBasedDiesel.bin is not of the run"),
                (lambda: (torque.unlink(), torque.symlink_to(whole / torque.name)), "is a link"),
                (lambda: self.write("input.txt", (SHIP / "input.txt").read_text() + "\n"),
                 "input.txt is not as the run has read it"),
                (lambda: self.write("ice-torque.txt", "other"), "data file"),
                (lambda: record.write_text(record.read_text().replace('"complete"', '"running"')),
                 "run.json is damaged"),
                (lambda: record.write_text(record.read_text()[:-20]), "run.json is damaged"),
                (lambda: record.write_text("[" * 100000), "run.json is damaged")):
            with self.subTest(words=words):
                change()
                for said in self.read(1):
                    self.assertIn(words, said)
                shutil.rmtree(self.results)
                shutil.copytree(whole, self.results)
                for name in ("input.txt", "ice-torque.txt"):
                    self.write(name, (SHIP / name).read_text())
        self.assertIn("input.txt is not", self.call("report", self.write("other/input.txt", "x"),
                                                    "results", status=1).stderr)
        # What differs is shown on demand, and without a record, with that said.
        flip(torque, 5)
        done = self.call("show", "results", "SynthesisTorque", "--unverified")
        self.assertIn("not verified", done.stdout)
        record.unlink()
        self.assertIn("without a run record",
                      self.call("show", "results", "SynthesisTorque").stdout)

    def test_nothing_of_an_earlier_run_stays(self):
        self.run_ship("--quiet", "--report")
        self.write("results/notes.txt", "mine")
        self.write("results/Genset.txt", "1 100 90\n")
        self.run_ship("--quiet", "--mode", "free")
        self.assertEqual({name for name in self.files() if not name.endswith(".bin")},
                         {"Genset.txt", "Overview.txt", "Verenwick.log", "notes.txt", "run.json"})
        self.assertNotIn("SynthesisTorque.bin", self.files())
        self.write("results/report.html", "mine")
        self.run_ship("--quiet", "--mode", "describe")
        self.assertEqual((self.results / "report.html").read_text(), "mine")
        self.assertNotIn("NaturalFrequency.bin", self.files())

    def test_a_stop_is_told_first_by_its_cause(self):
        self.write("still.txt", STANDSTILL)
        document = json.loads(self.call("run", "still.txt", "--results", "results", "--json",
                                        status=1).stdout)
        self.assertEqual([document["status"], document["outcome"], document["warnings"]],
                         [1, "stopped", ["Warning: Load case 1 has a speed of 0"]])
        self.assertRegex(document["words"],
                         "^the calculation stopped early: CGETRF/ZGETRF failed; Synthesis")
        self.assertEqual(document["errors"], ["** CGETRF/ZGETRF failed"])
        for said in self.read(1):
            self.assertIn("broke off: the calculation stopped early: CGETRF", said)

    def test_json_in_every_case(self):
        self.write("bad.txt", "INERTIA 1\n")
        (self.here / "pipe").mkdir()
        os.mkfifo(self.here / "pipe" / "run.json")
        for arguments, words in ((["bad.txt"], "in input file line 1"),
                                 (["missing.txt"], "missing.txt"),
                                 (["bad.txt", "--results", "input.txt"], "can't be made"),
                                 (["bad.txt", "--results", "pipe"], "run.json")):
            done = self.call("run", *arguments, "--json", status=1)
            document = json.loads(done.stdout)
            self.assertEqual([document["status"], document["warnings"]], [1, []])
            self.assertIn(words, document["words"])
        for arguments, words in ((["input.txt", "--mode", "fre"], "did you mean free?"),
                                 (["input.txt", "input.txt"], "the same name"),
                                 ([], "INPUT is required")):
            document = json.loads(self.call("run", *arguments, "--json", status=2).stdout)
            self.assertEqual(document["status"], 2)
            self.assertIn(words, document["words"])

        self.write("still.txt", STANDSTILL)
        documents = json.loads(self.call("run", "bad.txt", "still.txt", "input.txt", "--results",
                                         "many", "--json", status=1).stdout)
        self.assertEqual([(each["status"], len(each["warnings"])) for each in documents],
                         [(1, 0), (1, 1), (0, 0)])

    def test_orders_are_not_guessed(self):
        # Of 13 load cases with 16 orders one is there, as if a run had stopped: 208 of 208 records
        # would be a whole order in each load case.
        self.run_ship("--quiet")
        (self.results / "run.json").unlink()
        torque = self.results / "PropellerTorque.bin"
        cases = int(struct.unpack("<d", (self.results / "SystemInfo.bin").read_bytes()[104:112])[0])
        each = len(torque.read_bytes()) // cases
        self.assertEqual(self.call("show", "results", "PropellerTorque", "--case", cases).stderr, "")
        for path in self.results.glob("*.bin"):
            if path.name.startswith(("Propeller", "Synthesis")) and "Marks" not in path.name:
                path.write_bytes(path.read_bytes()[:len(path.read_bytes()) // cases])
        torque.write_bytes(torque.read_bytes() * cases)
        torque.write_bytes(torque.read_bytes()[:each // 16 * cases])
        self.assertIn("SynthesisDeflection.bin",
                      self.call("show", "results", "PropellerTorque", status=1).stderr)

    def test_damaged_counts_are_told(self):
        self.run_ship("--quiet")
        (self.results / "run.json").unlink()
        info = self.results / "SystemInfo.bin"
        whole = info.read_bytes()
        for place in range(18):
            for count in (1e9, 399999.0):
                info.write_bytes(whole[:8 * place] + struct.pack("<d", count)
                                 + whole[8 * place + 8:])
                for words in (("show", "results", "SynthesisTorque"),
                              ("show", "results", "PropellerTorque"),
                              ("report", "input.txt", "results"),
                              ("export", "results", "--format", "csv")):
                    done = subprocess.run([PROGRAM, *words], cwd=self.here, capture_output=True,
                                          text=True, timeout=60)
                    self.assertIn(done.returncode, (0, 1), words)
                    if done.returncode:
                        self.assertIn("SystemInfo.bin", done.stderr)


class OneRun(RecordTest):
    def setUp(self):
        super().setUp()
        text = (SHIP / "input.txt").read_text().rstrip()
        self.write("input.txt", "\n".join([text, *[text.splitlines()[-1]] * 2000, ""]))

    def test_a_directory_serves_one_run(self):
        run = subprocess.Popen([PROGRAM, "run", "input.txt", "--results", "results", "--quiet"],
                               cwd=self.here)
        self.addCleanup(run.wait)
        self.addCleanup(run.kill)
        written = self.results / "DieselDeflection.bin"
        while not (written.exists() and written.stat().st_size):
            self.assertIsNone(run.poll(), "ended before it could be stopped")
            time.sleep(0.001)
        run.send_signal(signal.SIGSTOP)
        for said in self.read(1):
            self.assertIn("is still on", said)
        before = self.files()
        self.assertIn("another run is on", self.run_ship(status=1).stderr)
        self.assertEqual(self.files(), before)
        run.kill()
        run.wait()
        for said in self.read(1):
            self.assertIn("did not end", said)
        self.assertIn("not verified", self.call("show", "results", "--unverified").stdout)
        shutil.copy(SHIP / "input.txt", self.here)
        self.run_ship("--quiet")
        self.assertEqual(self.read(0), ["", "", ""])
        self.assertNotIn("run.lock", self.files())


class StartFolder(RecordTest):
    def torque(self):
        return (self.results / "SynPropIceTorque.bin").read_bytes()

    def test_data_files_are_found_beside_the_input(self):
        self.run_ship("--quiet")
        torque = self.torque()
        # From elsewhere; there a file of the same name doesn't count.
        other = self.here / "other"
        self.write("other/ice-torque.txt", "not this one\n")
        self.call("run", "../input.txt", "--results", "../results", "--quiet", cwd=other)
        self.assertEqual(self.torque(), torque)
        # Where none lies beside the input, those that are found from here.
        shutil.move(self.here / "input.txt", other / "input.txt")
        (other / "ice-torque.txt").unlink()
        self.call("run", "other/input.txt", "--results", "results", "--quiet")
        self.assertEqual(self.torque(), torque)
        self.assertEqual(self.record()["dataFiles"][0]["path"], str(self.here / "ice-torque.txt"))
        self.call("run", "other/input.txt", "other/input.txt", "--results", "many", status=2)


if __name__ == "__main__":
    unittest.main()
