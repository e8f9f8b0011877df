"""Full disks and exhausted memory: whatever call fails, the program ends in words and shows nothing
that is wrong.

usage: faults_test.py PROGRAM EXAMPLES FAULTS [unittest options]

FAULTS is the preloaded library that makes chosen calls of the program fail.
"""
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
from concurrent.futures import ThreadPoolExecutor

LIBRARY = os.path.abspath(sys.argv.pop(3))

from support import PROGRAM, SMALL_PLANT, HostTest, contents  # noqa: E402 (takes its own arguments)

WRITES, ALLOCATIONS = 0, 1
FOR_GOOD = 2 ** 63
EARLIER = b"of an earlier time"
NO_FAULT = (0, 0)
NO_FAULTS = (NO_FAULT, NO_FAULT)

COMMANDS = {
    "run": "run plant.txt --results {results}",
    "show": "show {results} SynthesisTorque --csv",
    "report": "report plant.txt {results} -o out/target",
    "csv": "export {results} --format csv -o out/target --input plant.txt",
    "xlsx": "export {results} --format xlsx -o out/target --input plant.txt",
    "hdf5": "export {results} --format hdf5 -o out/target --input plant.txt",
}


class Place:
    """A folder with a plant, what earlier commands left, and room for what a command makes."""

    def __init__(self, folder, command, results):
        self.here, self.command, self.results = folder, command, results
        self.target = folder / "out" / "target"
        self.target.parent.mkdir()
        (folder / "plant.txt").write_text(SMALL_PLANT)
        if command == "run":
            # A run writes no file of an earlier one: links serve as copies.
            self.results = shutil.copytree(results, self.target, copy_function=os.link)
        elif command in ("report", "xlsx", "hdf5"):
            self.target.write_bytes(EARLIER)

    def made(self):
        """What the command has made; a run's record is judged by what is shown of it."""
        made = contents(self.target)
        if self.command == "run":
            made.pop("run.json")
        elif self.command == "report" and made:
            made = made.replace(bytes(self.results), b"")  # which the page names
        return made

    def call(self, command, plan=NO_FAULTS):
        """Runs the program; the calls of each kind are counted, and fail as planned."""
        path = self.here / "plan"
        path.write_bytes(struct.pack("<6Q", *plan[WRITES], 0, *plan[ALLOCATIONS], 0))
        words = COMMANDS[command].format(results=self.results).split()
        done = subprocess.run([PROGRAM, *words], cwd=self.here, capture_output=True, timeout=60,
                              env={**os.environ, "LD_PRELOAD": LIBRARY, "FAULTS": str(path)})
        counts = struct.unpack("<6Q", path.read_bytes())
        done.stdout = done.stdout.replace(bytes(self.here), b"")
        return done, (counts[2], counts[5])


class Faults(HostTest):
    @classmethod
    def setUpClass(cls):
        scratch = tempfile.TemporaryDirectory()
        cls.addClassCleanup(scratch.cleanup)
        cls.scratch = pathlib.Path(scratch.name)
        cls.whole = cls.results_of("whole", SMALL_PLANT)
        cls.earlier = cls.results_of("earlier", SMALL_PLANT.replace("5.6E7", "5.0E7"))
        # The results of the earlier run are no longer those of its input.
        (cls.earlier.parent / "plant.txt").write_text(SMALL_PLANT)

    @classmethod
    def results_of(cls, name, text):
        (cls.scratch / name).mkdir()
        (cls.scratch / name / "plant.txt").write_text(text)
        subprocess.run([PROGRAM, "run", "plant.txt", "--results", "target", "--quiet"],
                       cwd=cls.scratch / name, check=True, timeout=60)
        return cls.scratch / name / "target"

    def place(self, command, results=None):
        return Place(pathlib.Path(tempfile.mkdtemp(dir=self.here)), command,
                     results or (self.earlier if command == "run" else self.whole))

    def undisturbed(self, command):
        """What a command prints and makes, and how many calls of each kind it takes."""
        place = self.place(command)
        done, counts = place.call(command)
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        return [done.stdout, place.made()], counts

    def sweep(self, command, kind, step, many):
        """Lets one call after the other fail, every step-th, and judges how each run ends."""
        expected, counts = self.undisturbed(command)
        readers = [(each, self.undisturbed(each)[0]) for each in ("show", "report", "csv")]

        def fault(number):
            plan = [NO_FAULT, NO_FAULT]
            plan[kind] = (number, many)
            place = self.place(command)
            words = self.judge(place, plan, expected)
            if command == "run" and not words and (kind == WRITES or number // step % 3 == 0):
                # Whatever the run has left, nothing but the truth is shown of it.
                reader, truth = readers[number // step // 3 % len(readers)]
                words = self.judge(self.place(reader, place.results), NO_FAULTS, truth)
            shutil.rmtree(place.here)
            return words and f"{'allocation' if kind else 'write'} {number}: {words}"

        numbers = range(1, counts[kind] + 1, step)
        with ThreadPoolExecutor(os.cpu_count()) as pool:
            faults = [words[:500] for words in pool.map(fault, numbers) if words]
        self.assertEqual(len(faults), 0, "\n".join([f" among {len(numbers)}", *faults[:20]]))

    def judge(self, place, plan, expected):
        """What is wrong with a command under faults; nothing if all is well."""
        try:
            done, _ = place.call(place.command, plan)
        except subprocess.TimeoutExpired:
            return "hangs"
        said = f"{place.command}: {done.stderr.decode(errors='replace')}"
        if done.returncode == 0:
            whole = [done.stdout, place.made()] == expected
            return "" if whole else f"not whole, status 0: {said}"
        if done.returncode != 1:
            return f"status {done.returncode}: {said}"
        if not done.stderr.strip():
            return "no words"
        made = None if place.command == "run" else place.made()
        if isinstance(made, dict) and place.command == "csv":
            whole = made.items() <= expected[1].items()  # they come into place one by one
        else:
            whole = made in (None, EARLIER, expected[1])
        if not whole:
            return f"something else left in place: {said}"
        if sorted(os.listdir(place.target.parent)) not in ([], ["target"]):
            return f"left behind: {os.listdir(place.target.parent)}"
        return ""

    def test_writes(self):
        for command in COMMANDS:
            with self.subTest(command=command):
                self.sweep(command, WRITES, 1 if command == "run" else 3, 1)

    def test_disk_that_stays_full(self):
        for command in COMMANDS:
            with self.subTest(command=command):
                self.sweep(command, WRITES, 5, FOR_GOOD)

    def test_allocations(self):
        for command in COMMANDS:
            with self.subTest(command=command):
                self.sweep(command, ALLOCATIONS, 50, 1)

    def test_memory_that_stays_exhausted(self):
        for command in COMMANDS:
            with self.subTest(command=command):
                self.sweep(command, ALLOCATIONS, 1000, FOR_GOOD)


if __name__ == "__main__":
    unittest.main()
