"""Runs a plant in mode 3 and prints the largest torque of each shaft.

usage: run.py LIBRARY INPUT_DIRECTORY INPUT_NAME RESULT_DIRECTORY
"""
import ctypes
import sys
from pathlib import Path

import numpy as np

VERENWICK_MODE_BOTH = 3  # of verenwick.h


def text(value):
    """Text crosses as one integer a character, with its length behind it."""
    codes = value.encode()
    return (ctypes.c_int32 * max(len(codes), 1))(*codes), ctypes.byref(ctypes.c_int32(len(codes)))


def main(library, directory, name, results):
    status = ctypes.c_int32(0)
    both = ctypes.c_int32(VERENWICK_MODE_BOTH)
    solver = ctypes.CDLL(library).VERENWICKSOLVER
    solver.restype = None
    solver(*text(directory), *text(name), *text(results), ctypes.byref(status), ctypes.byref(both))
    if status.value != 1:
        sys.exit(Path(results, "Verenwick.log").read_text())

    def records(file):
        return np.fromfile(Path(results, file), "<f8")

    info = records("SystemInfo.bin").astype(int)
    shafts, cases = info[1], info[13]
    torque = records("SynthesisTorque.bin").reshape(cases, shafts)
    for shaft in range(shafts):
        worst = torque[:, shaft].argmax()
        print(f"shaft {shaft + 1}: {torque[worst, shaft]:.0f} N m in load case {worst + 1}")


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    main(*sys.argv[1:])
