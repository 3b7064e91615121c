#!/usr/bin/env python3
"""tests/packaging/report.py BUILD - `orvel report` as installed: its oracle against mpmath, its numbers, its page"""
import subprocess
import sys
import tempfile
import xml.dom.minidom
from pathlib import Path

import mpmath

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
from report import accuracy, page, speed  # noqa: E402


def check_oracle():
    mpmath.mp.dps = 80
    functions = {"DGAMMA": mpmath.gamma, "DGAMR": mpmath.rgamma, "DLNGAM": lambda x: mpmath.log(abs(mpmath.gamma(x)))}
    for routine, regions in accuracy.REGIONS.items():
        for low, high in regions:
            for k in range(1, 8):
                x = low + (high - low) * k / 8.1
                true = functions[routine](mpmath.mpf(x))
                off = abs(mpmath.mpf(str(accuracy.exact(routine, x))) / true - 1)
                assert off < mpmath.mpf(10) ** -33, (routine, x, off)
    matrix, x, b = [2.0, 1.0, 0.0, 4.0], [1.0, 1.0 + 2.0**-50], [2.0, 5.0]  # by columns
    assert accuracy.residual(matrix, x, b, 2) == 2.0**-48 / (2.0**-52 * (10 + 2.0**-48)), "residual"


def check_picture():
    curves = speed.Curves("a < b", "n", "GB/s")
    for n, value in ((1, 1.0), (10, 5.0), (100, 2.0)):
        curves.add("Orvel", n, value)
        curves.add("copy", n, value)
    drawing = xml.dom.minidom.parseString(page.picture(curves))
    points = [p.split(",") for p in drawing.getElementsByTagName("polyline")[0].getAttribute("points").split()]
    assert float(points[1][1]) < float(points[2][1]) < float(points[0][1]), "higher is faster"
    names = [float(t.getAttribute("y")) for t in drawing.getElementsByTagName("text")[-2:]]
    assert abs(names[0] - names[1]) >= 12, "names lie on each other"


def check_run(build):
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run(["cmake", "--install", build, "--prefix", folder], check=True, capture_output=True)
        path = Path(folder) / "page.html"
        done = subprocess.run([f"{folder}/bin/orvel", "report", "--quick", path], capture_output=True, text=True, timeout=120)
        assert done.returncode == 0 and done.stderr == "", done.stdout + done.stderr
        document = xml.dom.minidom.parseString(path.read_text().replace("<!DOCTYPE html>", ""))
    assert len(document.getElementsByTagName("svg")) == 4
    rows = [[cell.firstChild.data if cell.firstChild else "" for cell in row.getElementsByTagName("td")]
            for row in document.getElementsByTagName("tr")]
    gamma = [row for row in rows if len(row) == 5 and row[0].startswith("DG") or row[:1] == ["DLNGAM"]]
    assert len(gamma) == 20 and all(0 < float(row[4]) <= float(row[3]) < 10 for row in gamma), gamma
    solved = [row for row in rows if row[:1] in (["DLSARG"], ["DLSLRG"])]
    assert len(solved) == 4 and all(0 < float(row[2]) < 20 for row in solved), solved
    for row in rows:
        assert "nan" not in row, row
        assert any(" ".join(line.split()) == " ".join(" ".join(row).split()) for line in done.stdout.splitlines()) or not row
    wrong = subprocess.run([sys.executable, ROOT / "tools/orvel", "report", "--what"], capture_output=True, text=True)
    assert wrong.returncode == 2 and "usage" in wrong.stderr


check_oracle()
check_picture()
check_run(sys.argv[1])
print("the report is what it says")
