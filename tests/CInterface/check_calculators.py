"""Runs a host program of the calculators' page and checks what it prints.

usage: check_calculators.py PROJECT COMMAND...
"""

import math
import pathlib
import subprocess
import sys

project, command = pathlib.Path(sys.argv[1]), sys.argv[2:]
printed = subprocess.run(command, check=True, capture_output=True, text=True).stdout
rows = {}
for line in printed.splitlines():
    name, *values = line.split(",")
    rows.setdefault(name, []).append([float(value) for value in values])


def expect(what, value, wanted, tolerance):
    assert abs(value - wanted) <= tolerance, f"{what}: {value}, wanted {wanted}"


# At rated speed the peak stays the rated one, 185 bar above 1 bar, within 0.5 %.
(peak, mip), = rows["pressure"]
expect("peak pressure", peak, 186.0, 0.93)
area, lam = math.pi / 4 * 0.32**2, 0.22
expect("mean indicated pressure", mip, 336e3 / 0.92 / (750 / 120) / (area * 0.40) / 1e5, 1e-3)

# Gas torque of a four-stroke: order 0.5 drives, and the harmonics die away.
assert len(rows["harmonic"]) == 24
size = {order: math.hypot(sine, cosine) for order, sine, cosine in rows["harmonic"]}
assert 0.3 < size[0.5] / mip < 0.5 and size[1.0] > size[4.0] > size[12.0] > 0

# Series of the inertia torque in powers of the connecting rod ratio.
series = [-lam / 4 - lam**3 / 16, 0.5 + lam**4 / 32, lam * 3 / 4 + lam**3 * 9 / 32, lam**2 / 4]
for (order, sine), wanted in zip(rows["mass"], series, strict=True):
    expect(f"mass term {order}", sine, wanted, 2e-3)

# Dead centres have no tangential force; at the end of the inlet stroke only the masses act.
force = {angle: (tangential, radial) for angle, tangential, radial in rows["force"]}
for angle in (0, 180, 360):
    expect(f"tangential force at {angle}", force[angle][0], 0, 0.01)
inertia = (750 * math.pi / 30)**2 * 0.2 * (90 * (1 + lam) + 60) / 1e3
expect("radial force at inlet top dead centre", force[360][1], 2.5e5 * area / 1e3 - inertia, 1.0)
assert force[30][0] > 0 > force[-30][0], "combustion drives, compression drags"

page = (project / "docs/calculators.md").read_text()
for program in ("calculators.c", "calculators.py"):
    assert (project / "examples/hosts" / program).read_text() in page, f"{program} is not shown"
print(printed)
