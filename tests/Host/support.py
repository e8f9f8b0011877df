"""What the tests of the host share: the program, a directory of their own, result files.

usage of each: NAME_test.py PROGRAM EXAMPLES [unittest options]
"""
import os
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import unittest
import zipfile

import h5py

PROGRAM, EXAMPLES = (pathlib.Path(os.path.abspath(sys.argv.pop(1))) for _ in range(2))

# An engine, a coupling, a generator and a propeller in three load cases: small and fast.
SMALL_PLANT = """\
INERTIA 1 1.0   6.2 0.0 60.0
INERTIA 2 1.0   6.2 0.0 60.0
INERTIA 3 1.0  85.0 0.0  0.0
INERTIA 4 1.0 104.0 0.5  0.0
INERTIA 5 1.0  35.0 0.0  0.0
SHAFT 1 1 2 1.0 3.6E7 0.0 60.0 180.0 0.0 1 1
SHAFT 2 2 3 1.0 5.6E7 0.0 90.0 180.0 0.0 0 0
SHAFT 3 3 4 1.0 1.05E5 0.0 6.0 165.0 0.0 0 0
SHAFT 4 4 5 1.0 2.0E6 0.0 60.0 160.0 0.0 0 0
DIESEL 1 Engine
260.0 1000.0 4 2 0.0 0 0.0 0 1.15
1 2
0.0 360.0
0.0 0.0
1 1
0 0
100.0 100.0
100.0 100.0
200.0 240.0 0.25 28.0 91.0 1 0 0
185.0 145.0 1.36 1.28 14.5 4.2 50.0
45.0 0.8 -6.0 60.0 125.0 0.0 0.0
LINEARCOUPLING 1
3 20000.0 1.05E5
GENERATOR 1
4 260.0 1000.0 4
1.0 2.0 4.0 6.0
0.5 0.3 0.1 0.1
PROPELLER 1
5 100.0 1000.0 4 30.0 5.0 0
100.0 390.0 0.95 0.6 0 90.0 0.0
SCHWANEKE 0.0 0.0 0.0 4.0 1.5 0.0 0
0
LOADCASE
RPM 1 1 1
DIESEL GENERATOR PROPELLER
900.0 200.0 120.0 80.0
1000.0 230.0 130.0 90.0
1100.0 260.0 160.0 100.0
"""


def records(path):
    data = path.read_bytes()
    return struct.unpack(f"<{len(data) // 8}d", data)


def contents(path):
    """What an output holds, as something to compare: the files of a folder, the parts of a
    workbook, the values of an HDF5 file with their attributes, a page without its time, bytes; None
    if there is nothing."""
    if path.is_dir():
        return {each.name: contents(each) for each in path.iterdir()}
    if not path.exists():
        return None
    if zipfile.is_zipfile(path):
        with zipfile.ZipFile(path) as book:
            return {name: book.read(name) for name in book.namelist()}
    if h5py.is_hdf5(path):
        with h5py.File(path) as file:
            return {name: (each.shape, bytes(each[()]), [*map(repr, each.attrs.items())])
                    for name, each in file.items()}
    return re.sub(rb'"time":"[-: \d]+"', b"", path.read_bytes())


class HostTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.here = pathlib.Path(scratch.name)

    def call(self, *arguments, status=0, cwd=None, **process):
        """Runs the program as an engineer does and expects its exit status, if one is named."""
        done = subprocess.run([PROGRAM, *map(str, arguments)], cwd=cwd or self.here, timeout=240,
                              capture_output=True, text=True, **process)
        if status is not None:
            self.assertEqual(done.returncode, status, (arguments, done.stdout, done.stderr))
        return done

    def write(self, name, text):
        path = self.here / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, newline="")
        return path
