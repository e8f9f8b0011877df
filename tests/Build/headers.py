"""Every header compiles alone. The source of the same name includes it first, so that its build is
the proof; a header without one is compiled here, and those of the C interface as C too.

usage: headers.py PROJECT COMPILER...
"""

import concurrent.futures
import os
import pathlib
import re
import subprocess
import sys
import tempfile

FIRST_INCLUDE = re.compile(r'^#include (\S+)', re.MULTILINE)


def compiles(compiler, project, header, language):
    command = [*compiler, "-x", language, "-std=c99" if language == "c" else "-std=c++20",
               "-fsyntax-only", "-I", project, "-I", project / "src", "-I", project / "include"]
    with tempfile.TemporaryDirectory() as folder:
        source = pathlib.Path(folder, "alone")
        source.write_text(f'#include "{header}"\n')
        run = subprocess.run([*command, source], capture_output=True, text=True, check=False)
        return run.returncode == 0, run.stderr


def main(project, compiler):
    with tempfile.TemporaryDirectory() as folder:
        broken = pathlib.Path(folder, "broken.h")
        broken.write_text("std::string text();\n")
        assert not compiles(compiler, project, broken, "c++")[0], "the check finds nothing"
    alone, proven = [(project / "include/verenwick.h", "c")], 0
    for folder in ("include", "results", "input", "src", "host"):
        headers = [h for h in (project / folder).rglob("*") if h.suffix in (".h", ".hpp")]
        for header in sorted(headers):
            source = header.with_suffix(".cpp")
            first = FIRST_INCLUDE.search(source.read_text()) if source.is_file() else None
            names = (f'"{header.relative_to(project)}"', f'"{header.relative_to(project / folder)}"')
            if first and first[1] in names:
                proven += 1
            else:
                alone.append((header, "c++"))
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        outcomes = list(pool.map(lambda h: compiles(compiler, project, *h), alone))
    for (header, language), (good, words) in zip(alone, outcomes):
        if not good:
            print(f"{header} does not compile alone as {language}:\n{words}")
    print(f"{len(alone)} headers compiled alone, {proven} first in their source")
    return all(good for good, _ in outcomes) and proven > 0


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    sys.exit(0 if main(pathlib.Path(sys.argv[1]), sys.argv[2:]) else 1)
