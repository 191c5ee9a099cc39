"""The .vtu of a run of the simply supported plate, read by meshio: 7 x 7
nodes, 6 x 6 plates, two shapes normalised to a largest |z| of 1 and
orthogonal (the plate's first two modes are symmetric and antisymmetric along
its length), and the closed form Sx = -1 / 0.1 under unit compression per
length."""
import sys

import meshio
import numpy as np

m = meshio.read(sys.argv[1])
mode, sx = m.point_data["Mode1"], m.point_data["Sx"]
second = m.point_data["Mode2"][:, 2]
checks = {
    f"points {m.points.shape}": m.points.shape == (49, 3),
    f"cells {[(c.type, len(c.data)) for c in m.cells]}": [(c.type, len(c.data)) for c in m.cells]
    == [("quad", 36)],
    "Mode1 not along Z": not mode[:, :2].any(),
    f"largest |z| {np.abs(mode[:, 2]).max()}": abs(np.abs(mode[:, 2]).max() - 1) < 1e-6,
    f"largest |z| of Mode2 {np.abs(second).max()}": abs(np.abs(second).max() - 1) < 1e-6,
    f"Mode1.Mode2 {mode[:, 2] @ second}": abs(mode[:, 2] @ second) < 1e-3 * (second @ second),
    f"Sx from {sx.min()} to {sx.max()}": np.allclose(sx, -10, atol=1e-4),
}
failed = [what for what, ok in checks.items() if not ok]
for what in failed:
    print("VtuCheck:", what)
sys.exit(1 if failed else 0)
