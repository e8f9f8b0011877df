"""What the tests of the host share: the program, a directory of their own, result files.

usage of each: NAME_test.py PROGRAM EXAMPLES [unittest options]
"""
import os
import pathlib
import struct
import subprocess
import sys
import tempfile
import unittest

PROGRAM, EXAMPLES = (pathlib.Path(os.path.abspath(sys.argv.pop(1))) for _ in range(2))


def records(path):
    data = path.read_bytes()
    return struct.unpack(f"<{len(data) // 8}d", data)


class HostTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.here = pathlib.Path(scratch.name)

    def call(self, *arguments, status=0, cwd=None, **process):
        """Runs the program as an engineer does and expects its exit status."""
        done = subprocess.run([PROGRAM, *map(str, arguments)], cwd=cwd or self.here, timeout=240,
                              capture_output=True, text=True, **process)
        self.assertEqual(done.returncode, status, (arguments, done.stdout, done.stderr))
        return done

    def write(self, name, text):
        path = self.here / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, newline="")
        return path
