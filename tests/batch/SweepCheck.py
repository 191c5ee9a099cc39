"""Checks `velk-batch sweep` end to end.

usage: SweepCheck.py BATCH WORK length|shards|failures|svg [noplot]
(noplot: a build without Qt, whose sweep draws no picture)
"""
import csv
import math
import os
import struct
import subprocess
import sys
import xml.etree.ElementTree as ET

BATCH, WORK, MODE = sys.argv[1:4]
PLOT = sys.argv[4:5] != ["noplot"]
HEADER = ["eigenvalue", "equations", "bandwidth", "seconds", "failure", "check"]
FORK = ["--supports", "fork", "--moment", "1000"]
FREE = "the structure is not restrained against rigid-body motion; check the restraints"


def fail(why):
    sys.exit("FAIL: " + why)


def batch(*args):
    return subprocess.run([BATCH, *args], capture_output=True, text=True, cwd=WORK)


def sweep(name, *args, status=0):
    out = os.path.join(WORK, name)
    if os.path.exists(out):
        os.remove(out)
    p = batch("sweep", *args, "-o", out)
    if p.returncode != status:
        fail(f"sweep {' '.join(args)} exited {p.returncode}, not {status}:\n{p.stderr}")
    with open(out, newline="") as f:
        text = f.read()
    if "\r" in text:
        fail(f"{name} has \\r line ends")
    rows = list(csv.reader(text.splitlines()))
    return rows[0], rows[1:]


def critical_moment(length):
    # The classical lateral-torsional buckling moment of the default section
    # (flanges 12 x 0.5, web 16 x 0.5, E 29000, nu 0.3), as in CheckMoment.cmake.
    e, g = 29000.0, 29000.0 / 2.6
    iy = 2 * (0.5 * 12**3 / 12) + 16 * 0.5**3 / 12
    j = (2 * 12 * 0.5**3 + 16 * 0.5**3) / 3
    cw = iy * 16.5**2 / 4
    return math.pi / length * math.sqrt(e * iy * g * j * (1 + math.pi**2 * e * cw / (g * j * length**2)))


def check_length():
    # A positive estimate keeps every run on the positive side: the girder's
    # section is symmetric, so -lambda is as near to a zero shift as lambda.
    png = os.path.join(WORK, "length.png")
    plot = ["--plot", png] if PLOT else []
    header, rows = sweep("length.csv", "txtBL=60:600:60", *FORK, "--estimate", "1", *plot)
    if header != ["txtBL"] + HEADER:
        fail(f"header {header}")
    if [r[0] for r in rows] != [str(60 * k) for k in range(1, 11)]:
        fail(f"lengths {[r[0] for r in rows]}")
    values = [float(r[1]) for r in rows]
    for r, v in zip(rows, values):
        if r[5] or not r[1] or r[6] != "ok":
            fail(f"row {r} failed or was doubted")
        # The default mesh, 15 x 4 nodes of three freedoms, whatever the length.
        if r[2] != "180" or not 0 < int(r[3]) < 180:
            fail(f"row {r}: equations and bandwidth of the buckling stage")
        if abs(v * 1000 / critical_moment(float(r[0])) - 1) > 0.02:
            fail(f"row {r}: {v * 1000} against the classical {critical_moment(float(r[0]))}")
    if any(a <= b for a, b in zip(values, values[1:])) or min(values) <= 0:
        fail(f"the critical moment does not fall with length: {values}")
    # The same girders made and run one at a time.
    for length in ("120", "480"):
        inp = os.path.join(WORK, f"length-{length}.inp")
        if batch("generate", f"txtBL={length}", *FORK, "-o", inp).returncode != 0:
            fail("generate failed")
        p = batch("run", inp, "--estimate", "1")
        row = next(r for r in rows if r[0] == length)
        if p.stdout != f"Eigenvalue of {row[1]}\n":
            fail(f"txtBL={length}: run says {p.stdout!r}, the sweep {row[1]}")
    if not PLOT:
        return
    with open(png, "rb") as f:
        head = f.read(24)
    if head[:8] != b"\x89PNG\r\n\x1a\n" or head[12:16] != b"IHDR":
        fail("the plot is not a PNG")
    width, height = struct.unpack(">II", head[16:24])
    if width < 300 or height < 200:
        fail(f"the plot is {width} x {height}")


def check_shards():
    args = ["txtBL=60:600:60", *FORK, "--jobs", "2"]
    header, whole = sweep("whole.csv", *args)
    joined = []
    for k in (1, 2, 3):
        h, rows = sweep(f"shard{k}.csv", *args, "--shard", f"{k}/3")
        if h != header:
            fail(f"shard {k} header {h}")
        if [r[0] for r in rows] != [r[0] for r in whole[k - 1 :: 3]]:
            fail(f"shard {k}/3 holds {[r[0] for r in rows]}")
        joined += rows
    joined.sort(key=lambda r: float(r[0]))
    def strip(rows):
        return [r[:4] + r[5:] for r in rows]
    if strip(joined) != strip(whole):
        fail(f"the shards joined differ:\n{joined}\n{whole}")


def check_failures():
    # Loaded but not supported: every case is free, each a row, and the sweep fails.
    _, rows = sweep("free.csv", "txtBL=60:180:60", "--moment", "1", status=1)
    if [r[0] for r in rows] != ["60", "120", "180"] or any(r[1] or r[5] != FREE for r in rows):
        fail(f"free girders: {rows}")
    # One case refused by the dialog does not stop the others.
    _, rows = sweep("mixed.csv", "txtBL=0:120:60", *FORK, "--estimate", "1")
    if [r[1] for r in rows] != ["", "9.4794E+01", "2.4663E+01"]:
        fail(f"mixed: {rows}")
    if rows[0][5] != "Invalid Input Data : Beam Length!" or rows[0][2]:
        fail(f"mixed: the refused case reads {rows[0]}")
    # Shifted past the lowest load factor, the 180 long girder converges on a
    # higher one: the check says so in its row and the sweep exits 3.
    _, rows = sweep("doubt.csv", "txtBL=120:180:60", *FORK, "--estimate", "40", status=3)
    if [r[6] for r in rows] != ["ok", "not lowest"] or float(rows[1][1]) < 40:
        fail(f"doubted: {rows}")


def check_svg():
    svg = os.path.join(WORK, "elements.svg")
    header, rows = sweep("elements.csv", "txtNumXElements=4:8:2", *FORK, "--estimate", "1",
                         "--plot", svg)
    for r in rows:
        if r[2] != str(3 * (int(r[0]) + 1) * 4):
            fail(f"row {r}: equations of {r[0]} x 3 elements")
    lines = [e for e in ET.parse(svg).iter() if e.tag.endswith(("polyline", "path"))]
    points = [e.get("points", "").split() for e in lines]
    curves = [[float(xy.split(",")[1]) for xy in p] for p in points if len(p) == len(rows)]
    if not curves:
        fail(f"no curve of {len(rows)} points in the SVG: {points}")
    texts = "".join(e.text or "" for e in ET.parse(svg).iter())
    if "Longitudinal Elements (txtNumXElements)" not in texts:
        fail("the axis does not name the field by its caption")
    # Finer meshes are softer: the eigenvalue falls, the curve goes down the page.
    if [float(r[1]) for r in rows] != sorted((float(r[1]) for r in rows), reverse=True) or \
            curves[0] != sorted(curves[0]):
        fail(f"the curve {curves[0]} does not follow the rows {rows}")


{"length": check_length, "shards": check_shards, "failures": check_failures,
 "svg": check_svg}[MODE]()
