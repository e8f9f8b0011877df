"""Result directories that were damaged: no command crashes, hangs or takes endless memory, and none
shows a value whose file isn't the one that the run has left.

usage: mutated_results_test.py PROGRAM EXAMPLES COUNT [unittest options]

COUNT directories are damaged, each in one to three ways that its number decides, and given to show,
report and export. 2,000 take some minutes.
"""
import json
import math
import os
import random
import resource
import shutil
import struct
import subprocess
import sys
import unittest
from concurrent.futures import ThreadPoolExecutor

COUNT = int(sys.argv.pop(3))

from support import PROGRAM, SMALL_PLANT, HostTest, contents  # noqa: E402 (takes its own arguments)

SECONDS = 60  # for what takes a twentieth of one on an idle machine
MEMORY = 2 ** 31
RECORD = "run.json"
INFO = "SystemInfo.bin"
COUNTS = [math.nan, math.inf, -math.inf, 1e300, 2.0 ** 53, 2.0 ** 31, 1e6, -1.0, 0.0, 0.5, 1.0, 7.0]
PARTS = [None, True, -1, 0, 7, 1e308, 2 ** 63, "", "../plant.txt", [], {}, [[]], {"a": None}]


class Damage:
    """Ways to damage a result directory; each tells what it has done."""

    def __init__(self, seed, results, others, recorded):
        self.random = random.Random(seed)
        self.results, self.others, self.recorded = results, others, recorded

    def some_file(self):
        """Any file of the directory; the record and the small ones often enough."""
        first = [each for each in (RECORD, INFO, "NaturalFrequency.bin")
                 if (self.results / each).is_file()]
        if first and self.random.random() < 0.3:
            return self.results / self.random.choice(first)
        return self.random.choice(sorted(each for each in self.results.iterdir()
                                         if each.is_file() and not each.is_symlink()))

    def flip(self):
        path = self.some_file()
        data = bytearray(path.read_bytes())
        if not data:
            return f"left empty {path.name}"
        bits = [self.random.randrange(8 * len(data)) for _ in range(self.random.choice((1, 1, 9)))]
        for bit in bits:
            data[bit // 8] ^= 1 << bit % 8
        path.write_bytes(data)
        return f"flipped {bits} of {path.name}"

    def truncate(self):
        path = self.some_file()
        size = path.stat().st_size
        length = self.random.choice((0, size // 2, size - size % 8 - 8,
                                     self.random.randint(0, size)))
        os.truncate(path, max(0, length))
        return f"cut {path.name} to {length}"

    def extend(self):
        path = self.some_file()
        data = path.read_bytes()
        more = self.random.choice((b"\0", bytes(8), data, 3 * data, bytes(1 << 20)))
        path.write_bytes(data + more)
        return f"extended {path.name}"

    def blow_up(self):
        """Only where a record tells the size: without one so many values may be a run's."""
        path = self.some_file()
        if self.recorded and path.name != RECORD:
            os.truncate(path, 2 ** 40)
        return f"blew up {path.name}"

    def swap(self):
        first, second = self.some_file(), self.some_file()
        data = first.read_bytes()
        first.write_bytes(second.read_bytes())
        second.write_bytes(data)
        return f"swapped {first.name} and {second.name}"

    def of_another_run(self):
        other, path = self.random.choice(self.others), self.some_file()
        if self.random.random() < 0.7:
            shutil.copy(other / path.name, path)
            return f"{path.name} of {other.parent.name}"
        for path in (each for each in other.iterdir() if each.name != RECORD):
            shutil.copy(path, self.results)
        return f"all of {other.parent.name}"

    def delete(self):
        path = self.some_file()
        path.unlink()
        return f"deleted {path.name}"

    def replace(self):
        """By what is no file."""
        path = self.some_file()
        path.unlink()
        how = self.random.choice(("folder", "fifo", "link to nothing", "link to a device", "link"))
        if how == "folder":
            path.mkdir()
        elif how == "fifo":
            os.mkfifo(path)
        else:
            path.symlink_to({"link to nothing": "nowhere", "link to a device": "/dev/zero"}
                            .get(how, self.others[0] / path.name))
        return f"made {path.name} a {how}"

    def count(self):
        path = self.results / INFO
        if not path.is_file() or path.stat().st_size < 144:
            return "no counts"
        values = list(struct.unpack("<18d", path.read_bytes()[:144]))
        place = self.random.randrange(18)
        values[place] = self.random.choice((*COUNTS, values[place] + 1, values[place] - 1))
        path.write_bytes(struct.pack("<18d", *values))
        return f"count {place} is {values[place]}"

    def record_text(self):
        path = self.results / RECORD
        if not path.is_file():
            return "no record"
        text = path.read_bytes()
        begin, end = sorted(self.random.randrange(len(text) + 1) for _ in range(2))
        digits = [place for place, byte in enumerate(text) if chr(byte).isdigit()]
        digit = self.random.choice(digits or [0])
        path.write_bytes(self.random.choice((
            b"", b"{}", b"null", b"[" * 200000, b'{"files":' * 100000, text[:begin],
            text[:begin] + text[end:], text + text, b"\xff\xfe" + text,
            text[:digit] + b"%d" % self.random.randrange(10) + text[digit + 1:],
            text[:begin] + self.random.randbytes(9) + text[begin:])))
        return "other text in the record"

    def record_part(self):
        """Another value in one place of the record."""
        path = self.results / RECORD
        try:
            document = json.loads(path.read_bytes())
        except (OSError, ValueError, RecursionError):
            return "no record"
        node, key = {"": document}, ""
        while isinstance(node[key], (dict, list)) and node[key] and self.random.random() < 0.85:
            node = node[key]
            key = self.random.choice(list(node) if isinstance(node, dict) else range(len(node)))
        if self.random.random() < 0.2 and node[key] is not document:
            del node[key]
        else:
            node[key] = self.random.choice(PARTS)
        path.write_text(json.dumps(document))
        return f"{key} in the record"

    def input(self):
        path = self.results.parent / "plant.txt"
        path.write_text(self.random.choice(("", SMALL_PLANT.replace("900.0", "901.0"),
                                            SMALL_PLANT + " ")))
        return "another input"

    def apply(self):
        ways = [self.flip, self.truncate, self.extend, self.blow_up, self.swap, self.of_another_run,
                self.delete, self.count, self.count, self.record_text, self.record_part,
                self.record_part, self.input]
        chosen = self.random.sample([*ways, self.replace], self.random.choice((1, 1, 2, 3)))
        if self.blow_up in chosen:
            chosen = [self.blow_up]  # whose record stays
        # What follows would write through a link or wait for a fifo.
        return [way() for way in sorted(chosen, key=lambda way: way == self.replace)]


class MutatedResults(HostTest):
    def setUp(self):
        super().setUp()
        if b"__asan_init" not in PROGRAM.read_bytes():  # which reserves terabytes
            resource.setrlimit(resource.RLIMIT_AS, (MEMORY, resource.RLIM_INFINITY))
        self.mine, like, other = (self.run_of(name, text) for name, text in (
            ("mine", SMALL_PLANT), ("like", SMALL_PLANT.replace("5.6E7", "5.0E7")),
            ("other", SMALL_PLANT + SMALL_PLANT.splitlines()[-1] + "\n")))
        self.others = [like / "results", other / "results"]
        self.names = sorted(each.name for each in (self.mine / "results").glob("*.bin")
                            if each.stat().st_size)
        self.sound = {}
        for command in self.commands():
            status, *self.sound[command], said = self.outcome(self.mine, command)
            self.assertEqual((status, said), (0, ""), command)

    def run_of(self, name, text):
        self.write(f"{name}/plant.txt", text)
        self.call("run", "plant.txt", "--results", "results", "--quiet", cwd=self.here / name)
        return self.here / name

    def commands(self):
        yield ("report", "plant.txt", "results", "-o", "target")
        for name in self.names:
            yield ("show", "results", name, "--csv")
        for form in ("csv", "xlsx", "hdf5"):
            yield ("export", "results", "--format", form, "-o", "target")
            yield ("export", "results", "--format", form, "-o", "target", "--input", "plant.txt")

    def outcome(self, folder, command):
        """Exit status, what was printed and written, and what was said on standard error."""
        done = subprocess.run([PROGRAM, *command], cwd=folder, capture_output=True, timeout=SECONDS)
        target = folder / "target"
        made = contents(target)
        if target.is_dir():
            shutil.rmtree(target)
        else:
            target.unlink(missing_ok=True)
        return done.returncode, done.stdout, made, done.stderr.decode(errors="replace")

    def fault(self, seed):
        """Damages a directory and tells what is wrong with the commands then; nothing if all is well."""
        folder = self.here / str(seed)
        shutil.copytree(self.mine, folder)
        unrecorded = seed % 8 == 0
        options = ("--unverified",) if seed % 8 == 1 else ()
        damage = Damage(seed, folder / "results", self.others, not unrecorded and not options)
        if unrecorded:
            (folder / "results" / RECORD).unlink()
        done = damage.apply()
        unrecorded = unrecorded or not os.path.lexists(folder / "results" / RECORD)
        commands = list(self.commands())
        named = [each for each in commands if any(f" {each[2]}" in f" {words}" for words in done)]
        shows = [each for each in named if each[0] == "show"] or commands[1:-6]
        export = damage.random.choice(commands[-6:])
        for command in (commands[0], damage.random.choice(shows), export):
            words = self.wrong(folder, command, options, unrecorded or options)
            if words:
                return f"{seed}: {', '.join(done)}: {' '.join(command + options)}: {words}"
        shutil.rmtree(folder)
        return ""

    def wrong(self, folder, command, options, unknown):
        try:
            status, *made, said = self.outcome(folder, command + options)
        except subprocess.TimeoutExpired:
            return "hangs"
        if status not in (0, 1):
            return f"status {status}: {said}"
        if status == 1:
            return "" if said.strip() and made == [b"", None] else f"status 1 with {made}: {said}"
        if unknown:
            return "" if "record" in said or "verified" in said else "no remark"
        return "" if made == self.sound[command] else f"shows something else: {made}"

    def test_no_command_crashes_or_shows_what_the_run_has_not_left(self):
        with ThreadPoolExecutor(os.cpu_count()) as pool:
            faults = [words[:800] for words in pool.map(self.fault, range(COUNT)) if words]
        self.assertEqual(len(faults), 0, "\n".join(["", *faults]))


if __name__ == "__main__":
    unittest.main()
