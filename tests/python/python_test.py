"""The Python module: python3 python_test.py PROGRAM FOLDER, from the project's folder, where PROGRAM prints
results of the C++ library and FOLDER holds the module."""

import copy
import glob
import os
import pickle
import re
import struct
import subprocess
import sys
import unittest

PROGRAM, FOLDER = sys.argv[1:3]
del sys.argv[1:3]
EXAMPLE = "examples/guide/python.py"
sys.path.insert(0, FOLDER)
sys.path.insert(0, "tests/support")

import crv
import numpy as np
from declarations import declarations


def outline(name):
    return crv.GxBezierCurve(np.loadtxt(f"tests/data/outlines/{name}.txt").reshape(-1, 4, 2), closed=True)


G, K = outline("roman-g-outer"), outline("sans-k-thirds")
WAVES = np.loadtxt("tests/data/strokes/pen-waves.txt")


def numbers(result):
    """A result as a flat list of numbers, in the order in which results.cpp prints them."""
    if isinstance(result, (bool, int, float)):
        return [float(result)]
    if isinstance(result, np.ndarray):
        return [float(x) for x in result.ravel()]
    if isinstance(result, crv.Curve):
        return numbers(result.points) + [float(result.closed)]
    if isinstance(result, crv.Segment):
        return numbers(result.points)
    if isinstance(result, crv.Piece):
        return piece(result.curve, result.map)
    if isinstance(result, crv.NearestOnCurve):
        return numbers([result.position, result.point, result.distance])
    if isinstance(result, crv.CurveContact):
        return numbers([result.first, result.second, result.point])
    if isinstance(result, crv.LineContact):
        return numbers([result.position, result.along, result.point])
    if isinstance(result, crv.Source):
        return numbers([result.from_, result.to, result.backwards])
    return [x for each in result for x in numbers(each)]


def piece(curve, map):
    found = numbers(curve)
    for i in range(23):
        for to in map((i, 0.375)), map.inverse((i, 0.625)):
            found += numbers(to) if to is not None else []
    return found


def results():
    """What results.cpp prints, from Python."""
    s, other = G[2], K[6]
    yield "bValue", [s.bValue(0.3), s.dValue(0.3), s.ddValue(0.3), s.curvatureValue(0.3)]
    yield "split", s.split(0.3)
    yield "findNearestPoint", s.findNearestPoint((0, 0))[0]
    yield "findIntersections", s.findIntersections(other)
    yield "length", s.length(0.25)
    yield "makeSegment", s.makeSegment(chord=7.0, startT=0.125)
    t, consumed = s.findNextPosAndLength(0.1, 100.0, farT=0.9)
    yield "findNextPosAndLength", [-1 if t is None else t, consumed]
    yield "segmentArcLength", crv.arcLength(s, 0.1, 0.9, 1e-9)
    yield "segmentNearest", crv.nearest(s, (7, 9)).t
    yield "makeCurve", G.makeCurve(50.0)
    yield "getPolyline", G.getPolyline(1.0)
    yield "findNearestPointPos", G.findNearestPointPos((300, 200))
    yield "curveFindIntersections", G.findIntersections(K)
    parallel = copy.copy(G)
    parallel.offset(7.0, mode=crv.OffsetMode.cutFirst)
    yield "plainOffset", parallel
    yield "findVelocityVectors", G.findVelocityVectors((3, 0.0))
    yield "findNextPos", G.findNextPos((2, 0.5), 40.0, forward=False, mode=crv.StepMode.shortChords)
    yield "findFirstGeometricLineIntersection", G.findFirstGeometricLineIntersection(
        (0, 100), (1, 0.1), (0, 0.0), G.lastPos(), 1e-9
    )
    part = crv.Curve()
    map = crv.copyGxBezierCurve(part, G, (20, 0.25), (3, 0.5))
    yield "copyGxBezierCurve", piece(part, map)
    before = copy.copy(G)
    after, first, second = crv.spliteGxBezierCurve((1, 0.5), before)
    yield "spliteGxBezierCurve", piece(before, first) + piece(after, second)
    turned = copy.copy(G)
    crv.arrangeBezierCurve(turned, crv.Position(4, 0.3), crv.Position(9, 0.6))
    yield "arrangeBezierCurve", turned
    yield "nearest", crv.nearest(G, (300, 200))
    yield "within", crv.CurveSearch(G).within((250, 100), 150.0)
    yield "lineContacts", crv.contacts(G, (0, 0), (400, 400))
    yield "contacts", crv.contacts(G, K).points
    yield "evenPositions", crv.evenPositions(G, 17)
    yield "walk", [crv.walk(G, (5, 0.5), -300.0, crv.Measure.chord), crv.walk(G, (5, 0.5), 777.0)]
    sides = crv.directions(G, (6, 0.0))
    yield "directions", [sides.in_, sides.out, crv.signedArea(G)]
    polyline = crv.flatten(G, 0.5)
    yield "flatten", [polyline.points, polyline.positions, polyline.worstDistance]
    yield "cut", crv.cut(G, [(2, 0.5), (7, 0.25), (20, 0.75)])
    yield "reversed", crv.reversed(G)
    fit = crv.fit(WAVES, 0.7, cornerAngle=1.0)
    yield "fit", [fit.curve, fit.positions, fit.worstDistance]
    fewer = crv.simplify(G, 20.0)
    yield "simplify", [piece(fewer.curve, fewer.map), fewer.worstDistance]
    inside = crv.offset(G, 9.0, tolerance=0.1, join=crv.Join.miter, miterLimit=3.0)
    yield "offset", [inside.parallels, inside.worstError]
    yield "strokeOutline", crv.strokeOutline(fit.curve, 5.0, crv.Cap.square, tolerance=0.1)
    for loop in crv.separate(crv.Curve(WAVES, 4.0)).loops:
        yield "loop", [loop.piece, loop.clockwise]
    both = crv.exclude([G], [K], crv.FillRule.evenOdd)
    yield "exclude", [both.curves, both.sources, crv.area([G, K])]
    yield "parsePath", crv.parsePath("M1 2A30 50 20 1 0 70 80T3 4z").curves
    yield "plainFit", crv.Curve(WAVES, 4.0)


class Results(unittest.TestCase):
    def test_have_the_bits_of_the_library(self):
        lines = subprocess.run([PROGRAM], capture_output=True, text=True, check=True).stdout.splitlines()
        expected = [(line.split()[0], [float(x) for x in line.split()[1:]]) for line in lines]
        found = [(name, numbers(result)) for name, result in results()]
        bits = lambda row: struct.pack(f"{len(row)}d", *row)
        for (name, row), (cName, cRow) in zip(found, expected):
            self.assertEqual(name, cName)
            self.assertEqual(len(row), len(cRow), name)
            self.assertEqual(bits(row), bits(cRow), name)
        self.assertEqual(len(found), len(expected))


class Language(unittest.TestCase):
    def test_wrong_arguments_raise_and_nothing_found_is_none(self):
        for error, call in [
            (crv.Error, lambda: crv.copyGxBezierCurve(crv.Curve(), G, (0, 0.5), (0, 0.5))),
            (crv.Error, lambda: crv.spliteGxBezierCurve((99, 0.0), copy.copy(G))),
            (crv.Error, lambda: crv.seperateSelfIntersections(crv.Curve())),
            (ValueError, lambda: crv.Curve(np.zeros((3, 4)))),
            (ValueError, lambda: crv.Segment([(0, 0), (1, 1)])),
            (IndexError, lambda: G[23]),
            (IndexError, lambda: G[0][4]),
            (TypeError, lambda: crv.nearest(G, (1, 2, 3))),
            (TypeError, lambda: crv.nearest(G, "here")),
            (TypeError, lambda: crv.walk(G, None, 3.0)),
        ]:
            self.assertRaises(error, call)
        self.assertIsNone(crv.nearest(crv.Curve(), (1, 2)))
        self.assertIsNone(crv.intersect((0, 0), (1, 0), (0, 1), (1, 1)))
        self.assertIsNone(crv.cut(G, [(2, 0.5), (7, 0.5)])[0].map((1, 0.5)))
        self.assertIsNone(crv.adjustBezierCurvePosition((0, 0.5), crv.Curve(), 0.1))

    def test_curves_are_sequences_of_copies(self):
        curve = copy.deepcopy(G)
        curve[0].reverse()
        self.assertEqual(curve, G)
        curve[-1] = crv.Segment(np.arange(8).reshape(4, 2))
        self.assertEqual(curve[22][1].tolist(), [2, 3])
        self.assertEqual([len(list(curve)), len(curve), len(curve.getSegments())], [23, 23, 23])
        self.assertNotEqual(curve, G)
        curve.points = K.points
        self.assertEqual((curve, curve.closed), (K, True))

    def test_values_survive_pickling_and_show_themselves(self):
        odd = crv.GxBezierCurvePositionConstructor().constructDirectPosition(2, 1.0)
        for value in G, G[3], odd:
            again = pickle.loads(pickle.dumps(value))
            self.assertEqual((again, repr(again)), (value, repr(value)))
        self.assertEqual(eval(repr(G[3]), vars(crv)), G[3])
        self.assertEqual(len({crv.Position(1, 0.5), crv.Position(0, 1.5)}), 1)
        segment, t = crv.Position(3, 0.25)
        self.assertEqual((segment, t), (3, 0.25))

    def test_maps_keep_the_curves_that_they_refer_to(self):
        source, part = copy.copy(G), crv.Curve()
        map = crv.copyGxBezierCurve(part, source, (20, 0.25), (3, 0.5))
        chain = crv.constructCompositePositionMap((map, crv.constructIdentityPositionMap()))
        before = [repr(chain((i, 0.5))) for i in range(23)]
        del source, map
        others = [copy.copy(K) for _ in range(100)]
        self.assertEqual([repr(chain((i, 0.5))) for i in range(23)], before)

    def test_conditions_may_be_written_in_python(self):
        class Coarse(crv.GxBezierPolylineCondition):
            def isALine(self, segment, tol):
                return 1

            def isAPoint(self, segment, tol):
                return 0

        points, positions = G.getPolyline(0.001, Coarse())
        self.assertEqual((len(points), positions[1]), (24, crv.Position(1, 0.0)))


# What the module leaves out, and what Python has in its place.
LEFT_OUT_HEADERS = {
    "arrays": "GxCoord.h GxVector.h Gx2DMatrix.h",
    "lists and arrays": "GxList.h",
    "Python's own references": "GxHandle.h GxRefCount.h",
}
LEFT_OUT = {
    "tuples": "tuple_size tuple_element get",
    "Python's own": "double int hash Comperator swap begin end",  # double(min) and int(max) among them
    "keyword arguments": "FitOptions OffsetOptions",
}
NAMED_OTHERWISE = {"in": "in_", "from": "from_"}


class Surface(unittest.TestCase):
    maxDiff = None

    def test_nothing_public_is_missing(self):
        left = set(" ".join(LEFT_OUT.values()).split())
        leftHeaders = " ".join(LEFT_OUT_HEADERS.values()).split()
        seen, missing = set(), set()
        for header in ["crv/svg.h"] + glob.glob("crv/*/*.h"):
            if os.path.basename(header) in leftHeaders:
                continue
            with open(header) as file:
                for owner, name, _ in declarations(file.read()):
                    name = NAMED_OTHERWISE.get(name, name)
                    base = re.split(r"[:<]", owner or name)[0]
                    if base in left or name in left or name == owner or base == "std" or base == "Value":
                        continue
                    seen.add((owner, name))
                    if not hasattr(getattr(crv, owner, None) if owner else crv, name):
                        missing.add(f"{header}: {owner or ''} {name}")
        self.assertEqual(sorted(missing), [])
        for some in (
            ("GxBezier", "bValue"),
            ("CurveSearch", "within"),
            ("Fit", "corners"),
            (None, "unite"),
            (None, "snapToAnchor"),
        ):
            self.assertIn(some, seen)
        self.assertGreater(len(seen), 250)

    def test_every_name_has_a_documentation(self):
        """Each form of an operation has a signature and below it what it does."""
        silent = []

        def look(name, documented):
            forms = re.split(r"^(?:\d+\. )?\w+\(.*\) -> .*$", documented, flags=re.M)[1:]
            if not forms or not all(form.strip() for form in forms):
                silent.append(name)

        for name, value in vars(crv._crv).items():
            if not isinstance(value, type):
                if callable(value):
                    look(name, value.__doc__)
                continue
            members = {} if hasattr(value, "__members__") else vars(value)
            for member, each in [(name, value), *members.items()]:
                if isinstance(each, (property, type)):
                    if not (each.__doc__ or "").strip():
                        silent.append(f"{name}.{member}")
                elif callable(each) and (not member.startswith("_") or "__init__(self: " in each.__doc__):
                    look(f"{name}.{member}", each.__doc__)
        self.assertEqual(silent, [])

    def test_types_are_told(self):
        for check in ["-p", "crv"], [EXAMPLE]:
            try:
                told = subprocess.run(
                    [
                        "mypy",
                        "--strict",
                        "--python-executable",
                        sys.executable,
                        "--cache-dir",
                        f"{FOLDER}/.mypy",
                        *check,
                    ],
                    capture_output=True,
                    text=True,
                    env={**os.environ, "MYPYPATH": FOLDER},
                )
            except FileNotFoundError:
                self.skipTest("mypy is not there")
            self.assertEqual(told.returncode, 0, told.stdout)


class Guide(unittest.TestCase):
    def test_its_program_prints_and_draws_what_it_says(self):
        said = subprocess.run(
            [sys.executable, os.path.abspath(EXAMPLE)],
            capture_output=True,
            text=True,
            check=True,
            cwd=FOLDER,
            env={**os.environ, "PYTHONPATH": os.path.abspath(FOLDER)},
        ).stdout.splitlines()
        with open(EXAMPLE) as program:
            expected = re.findall(r"print\(.*\)  # (.*)", program.read())
        self.assertEqual(said, expected)
        self.assertGreater(len(said), 5)
        with open("docs/pictures/guide/python.svg") as kept, open(f"{FOLDER}/python.svg") as drawn:
            self.assertEqual(drawn.read(), kept.read())


unittest.main(warnings="ignore")
