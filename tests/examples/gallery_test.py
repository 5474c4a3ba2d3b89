"""Every public operation is on show in the gallery: python3 gallery_test.py PAGE, from the project's folder."""

import glob
import html
import os
import re
import sys

sys.path.insert(0, "tests/support")
from declarations import declarations

# What is not on show, and why.
HEADERS_LEFT_OUT = {
    "containers and what they hold": "GxCoord.h GxVector.h GxList.h GxHandle.h GxRefCount.h",
    "functions of numbers": "bernstein.h solvers.h tolerance.h",
}
LEFT_OUT = {
    "fields and containers": "length begin end swap get getSegments setSegments strictIsClosed setStrictIsClosed",
    "parts of a position": "getSegmentNumber getTValue",
    "an order of indices": "Comperator",
}


def shown(page):
    """The operations that headings name and code calls: "A::b, c" are two of a class, words may follow."""
    for heading, code in re.findall(r"<h3>(.*?)</h3>.*?<pre>(.*?)</pre>", html.unescape(page), re.S):
        owner = None
        for scope, name in re.findall(r"(?:^|, )(?:(\w+)::)?(\w+)", heading):
            owner = scope or owner
            if re.search(rf"\b{name}\b", code):
                yield owner, name


def main():
    with open(sys.argv[1]) as page:
        found = {(None if owner == "crv" else owner, name) for owner, name in shown(page.read())}
    left = " ".join(LEFT_OUT.values()).split()
    missing, count = [], 0
    for header in ["crv/svg.h"] + sorted(glob.glob("crv/*/*.h")):
        if os.path.basename(header) in " ".join(HEADERS_LEFT_OUT.values()).split():
            continue
        with open(header) as text:
            for owner, name, kind in declarations(text.read()):
                if kind != "call" or name in left or name == owner:
                    continue
                count += 1
                if (owner, name) not in found:
                    missing.append(f"{header}: {owner or ''} {name}")
    assert count > 150, count
    assert not missing, "not in the gallery:\n" + "\n".join(missing)


main()
