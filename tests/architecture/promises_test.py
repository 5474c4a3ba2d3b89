"""Every public operation has a row in docs/promises.md, which the reference shows beside it. From the project's
folder: python3 promises_test.py"""

import glob
import re
import sys

sys.path.insert(0, "tests/support")
from declarations import declarations

LEFT_OUT = {
    "containers, constant but for GxList, which has rows": "GxList.h GxRefCount.h GxHandle.h",
    "points and vectors, which share a row": "GxCoord.h GxVector.h Gx2DRotate.h tolerance.h export.h",
}


def sections(text):
    """The names in the first column of each section's table; of "A::b" in full for accurate results."""
    found, title = {}, None
    for line in text.splitlines():
        if line.startswith("## "):
            title = line[3:]
        row = re.match(r"\| ([^|]*`[^|]*) \|", line)
        if row and "heavy" not in title:
            names = [name if "accuracy" in title else name.split("::")[-1] for name in re.findall(r"`([^`]*)`", row[1])]
            found.setdefault(title, set()).update(names)
    return found


def section_of(header):
    """As website/header.awk chooses it."""
    if re.search("accurate|svg", header):
        return "Results with a stated accuracy"
    if re.search("foundation|bernstein|GxHandle", header):
        return "Points, lines, solvers, lists"
    if header.endswith("bezier/GxBezier.h"):
        return "One segment, `GxBezier`"
    return "A curve, `GxBezierCurve`" if header.endswith("GxBezierCurve.h") else "Positions and maps"


def main():
    with open("docs/promises.md") as page:
        rows = sections(page.read())
    missing = []
    for header in ["crv/svg.h"] + sorted(glob.glob("crv/*/*.h")):
        if header.split("/")[-1] in " ".join(LEFT_OUT.values()).split():
            continue
        section = section_of(header)
        with open(header) as text:
            for owner, name, kind in declarations(text.read()):
                full = f"{owner}::{name}" if owner and "accuracy" in section else name
                if kind == "call" and name != owner and full not in rows.get(section, ()):
                    missing.append(f"{header}: {owner or ''} {name}")
    assert not missing, "no row in docs/promises.md:\n" + "\n".join(missing)


main()
