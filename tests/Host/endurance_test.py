"""Runs that are broken off say so, and the next run replaces what they left."""
import os
import resource
import shutil
import signal
import subprocess
import time
import unittest

from support import EXAMPLES, PROGRAM, HostTest


class BrokenRun(HostTest):
    def setUp(self):
        super().setUp()
        text = (EXAMPLES / "two-stroke-ship" / "input.txt").read_text().rstrip()
        self.write("plant.txt", "\n".join([text, *[text.splitlines()[-1]] * 300, ""]))
        self.results = self.here / "results"

    def start(self, **options):
        return subprocess.Popen([PROGRAM, "run", "plant.txt", "--results", "results", "--quiet"],
                                cwd=self.here, stderr=subprocess.PIPE, text=True, **options)

    def run_whole(self):
        self.call("run", "plant.txt", "--results", "results", "--quiet")

    def check(self, run, status, words):
        _, said = run.communicate(timeout=100)
        self.assertEqual(run.returncode, status, said)
        self.assertIn(words, said)

    def stop_half_way(self, run):
        """Stops the program as soon as results of the first load cases are on the disk."""
        written = self.results / "DieselDeflection.bin"
        while not (written.exists() and written.stat().st_size):
            self.assertIsNone(run.poll(), "ended before it could be stopped")
            time.sleep(0.001)
        run.send_signal(signal.SIGSTOP)

    def killed(self):
        run = self.start()
        self.stop_half_way(run)
        run.kill()
        return run

    def without_its_directory(self):
        run = self.start()
        self.stop_half_way(run)
        shutil.rmtree(self.results)
        run.send_signal(signal.SIGCONT)
        return run

    def on_a_full_disk(self, most_bytes):
        def limit():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (most_bytes, most_bytes))
        return self.start(preexec_fn=limit)

    def test_the_next_run_replaces_what_it_left(self):
        def contents():
            return {path.name: path.read_bytes() for path in self.results.iterdir()
                    if path.name not in ("run.json", "run.lock")}

        self.run_whole()
        whole = contents()
        for breaking, status, words in (
                (self.killed, -signal.SIGKILL, ""),
                (self.without_its_directory, 1, "there is no such directory"),
                (lambda: self.on_a_full_disk(0), 1, "can't be written"),
                (lambda: self.on_a_full_disk(8000), 1, "LoadCaseSetting.txt"),
                (lambda: self.on_a_full_disk(1000000), 1, "DieselDeflection.bin")):
            shutil.rmtree(self.results)
            run = breaking()
            self.check(run, status, words)
            self.run_whole()
            self.assertEqual(contents(), whole)

    def test_a_directory_that_can_only_be_read(self):
        self.results.mkdir(mode=0o555)
        self.here.chmod(0o755)
        nobody = {"user": 65534} if os.geteuid() == 0 else {}
        try:
            run = self.start(**nobody)
        except PermissionError:
            self.skipTest("the program lies where only root may run it")
        self.check(run, 1, "run.lock")
        self.assertEqual(list(self.results.iterdir()), [])

    @unittest.skipIf(b"__asan_init" in PROGRAM.read_bytes(),
                     "AddressSanitizer itself needs terabytes of address space")
    def test_with_little_address_space_a_run_ends_whole_or_in_words(self):
        self.write("plant.txt", (EXAMPLES / "two-stroke-ship" / "input.txt").read_text())
        self.run_whole()
        whole = sorted(path.name for path in self.results.iterdir())
        endings = set()
        for megabytes in range(40, 300, 10):
            room = megabytes << 20
            run = self.start(
                preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (room, room)))
            try:
                _, said = run.communicate(timeout=60)
            except subprocess.TimeoutExpired:
                run.kill()
                run.communicate()
                self.fail(f"hangs with {megabytes} MB")
            if run.returncode == 0:
                self.assertEqual(sorted(path.name for path in self.results.iterdir()), whole)
                endings.add("whole")
            else:
                self.assertGreater(run.returncode, 0, (megabytes, said))
                self.assertNotEqual(said.strip(), "", megabytes)
                endings.add("Not enough memory" in said)
        # Some can't load the libraries, the linear algebra finds no room in others.
        self.assertEqual(endings, {"whole", True, False})


if __name__ == "__main__":
    unittest.main()
