"""A folder includes headers only of itself and of folders below it.

usage: layers.py PROJECT
"""

import pathlib
import re
import sys
import tempfile

# From bottom to top; folders of one row know nothing of each other. A folder stands for what is
# under it and has no row of its own.
LAYERS = [
    ["include"],
    ["results", "input"],
    ["src/RunControl"],
    ["src/LinearSolverSrc"],
    ["src/ComputationsSrc"],
    ["src/Excitation"],
    ["src/ComponentTables"],
    ["src/ShaftLineGraph"],
    ["src/Matrices"],
    ["src/InputAndChecking"],
    ["src/FreeVibration"],
    ["src/ForcedVibration"],
    ["src"],
    ["host"],
    ["host/plant"],
    ["host/run"],
    ["host/summary"],
    ["host/cylinder"],
    ["host/check"],
    ["host/export"],
    ["host/report"],
    ["host/commands"],
]
HEIGHTS = {folder: height for height, row in enumerate(LAYERS) for folder in row}
INCLUDE = re.compile(r'^\s*#\s*include\s*["<]([^">]+)[">]', re.MULTILINE)


def layer_of(path):
    """The innermost folder of the table that a path, relative to the project, lies in."""
    return next((str(folder) for folder in path.parents if str(folder) in HEIGHTS), None)


def faults(project):
    """Each include of a folder that isn't below, in words; and the number of includes looked at."""
    found, seen = [], 0
    tops = sorted({folder.split("/")[0] for folder in HEIGHTS})
    for file in sorted(f for top in tops for f in (project / top).rglob("*")):
        path = file.relative_to(project)
        if file.suffix not in (".h", ".hpp", ".cpp", ".c"):
            continue
        own = layer_of(path)
        for name in INCLUDE.findall(file.read_text()):
            # As the compiler looks: beside the file, then in the folders given to it.
            target = next((folder / name for folder in (path.parent, pathlib.Path(),
                                                        pathlib.Path("src"), pathlib.Path("include"))
                           if (project / folder / name).is_file()), None)
            if target is None:
                continue  # of the system
            seen += 1
            other = layer_of(target)
            if other is None:
                found.append(f"{path} includes {target}, which is no part of what is delivered")
            elif other != own and HEIGHTS[other] >= HEIGHTS[own]:
                found.append(f"{path} includes {target}: {other} is not below {own}")
    return found, seen


def check_the_check():
    """Upwards, sideways and out of the house are found; downwards isn't."""
    with tempfile.TemporaryDirectory() as name:
        project = pathlib.Path(name)
        for path, text in {
                "include/a.h": "", "results/r.h": "", "input/i.h": '#include "results/r.h"\n',
                "src/RunControl/c.h": '#include "a.h"\n#include "Matrices/m.h"\n#include <vector>\n',
                "src/Matrices/m.h": '#include "RunControl/c.h"\n#include "tests/t.h"\n',
                "tests/t.h": "", "host/run/h.h": '#include "Matrices/m.h"\n'}.items():
            (project / path).parent.mkdir(parents=True, exist_ok=True)
            (project / path).write_text(text)
        found, seen = faults(project)
        assert [line.split(" includes ")[0] for line in found] == [
            "input/i.h", "src/Matrices/m.h", "src/RunControl/c.h"], found
        assert seen == 6, seen


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    check_the_check()
    lines, includes = faults(pathlib.Path(sys.argv[1]))
    print("\n".join(lines))
    print(f"{includes} includes, {len(lines)} against the rule")
    sys.exit(1 if lines or includes < 100 else 0)
