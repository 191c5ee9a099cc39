"""The .vtu of the simply supported plate, read by meshio, against the project
saved by the same run: 7 x 7 nodes, 6 x 6 plates, a shape normalised to a
largest |z| of 1, and each node's results as the project holds them (Sx the
closed form -1 / 0.1 for unit compression per length)."""
import sys

import meshio
import numpy as np

vtu, project = sys.argv[1], sys.argv[2]
m = meshio.read(vtu)
failures = []


def expect(ok, what):
    if not ok:
        failures.append(what)


expect(m.points.shape == (49, 3), f"points {m.points.shape}")
kinds = {c.type: len(c.data) for c in m.cells}
expect(kinds == {"quad": 36}, f"cells {kinds}")
mode = m.point_data["Mode1"]
expect(not mode[:, :2].any(), "Mode1 is not along Z")
expect(abs(np.abs(mode[:, 2]).max() - 1) < 1e-6, f"largest |z| {np.abs(mode[:, 2]).max()}")
sx = m.point_data["Sx"]
expect(np.allclose(sx, -10, atol=1e-4), f"Sx from {sx.min()} to {sx.max()}, not -10")

# Version 1.4: the node header on line 9, then 7 lines a node; line 1 of a
# record holds x, y, z, InPDispX, InPDispY and line 7 Sx, Sy, SXY, Mises.
lines = open(project, newline="").read().split("\r\n")
nx, ny = (int(f) for f in lines[8].split(",")[:2])
saved = []
for k in range(nx * ny):
    first = [float(f) for f in lines[9 + 7 * k].split(",")]
    last = [float(f) for f in lines[15 + 7 * k].split(",")]
    saved.append(first + last)
saved = np.array(saved)
disp = m.point_data["InPlaneDisplacement"]
for name, ours, theirs in [
    ("x", m.points[:, 0], saved[:, 0]),
    ("y", m.points[:, 1], saved[:, 1]),
    ("Mode1", mode[:, 2], saved[:, 2]),
    ("InPDispX", disp[:, 0], saved[:, 3]),
    ("InPDispY", disp[:, 1], saved[:, 4]),
    ("Sx", sx, saved[:, 5]),
    ("Mises", m.point_data["Mises"], saved[:, 8]),
]:
    expect(np.allclose(ours, theirs, rtol=1e-6, atol=1e-6), f"{name} differs from the project")

for f in failures:
    print("VtuCheck:", f)
sys.exit(1 if failures else 0)
