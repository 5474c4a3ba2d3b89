"""The command crv as its users see it: python3 tool_test.py PROGRAM, from the project's folder."""

import json
import os
import pty
import re
import subprocess
import sys
import tempfile
import unittest

PROGRAM = sys.argv.pop(1)
ROOT = os.getcwd()
WAVES = f"{ROOT}/tests/data/strokes/pen-waves.txt"
ISLAND = f"{ROOT}/tests/data/strokes/island-malta.txt"
LETTER = f"{ROOT}/tests/data/outlines/roman-g-outer.txt"
K = f"{ROOT}/tests/data/outlines/sans-k-thirds.txt"
SVG = """<?xml version="1.0"?><svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 9 9">
<defs><path d="M0 0L1 1"/></defs><g transform="translate(10,20) scale(2)">
<path transform="rotate(90)" d="M0 0L3 0"/><rect x="1" y="1" width="4px" height="2" rx="1"/>
<circle cx="5" cy="5" r="2"/><polygon points="0,0 4,0 4,3"/></g><g style="display:none">
<line x2="9" y2="9"/></g><svg x="100" y="50"><line x1="1" y1="2" x2="3" y2="4"/></svg></svg>"""


def crv(*arguments, given="", status=0):
    """What the command writes; a refused call writes one line on the error stream and no more."""
    done = subprocess.run([PROGRAM, *map(str, arguments)], input=given, capture_output=True, text=True)
    said = done.stdout + done.stderr
    assert done.returncode == status, (arguments, done)
    if status:
        assert done.stdout == "" and re.fullmatch(r"crv: [^\n]+\n", done.stderr), (arguments, said)
        return done.stderr
    assert done.stderr == "", (arguments, said)
    return done.stdout


def rows(*arguments, **how):
    return next(iter(json.loads(crv(*arguments, "--to", "json", **how)).values()))


class Reading(unittest.TestCase):
    def test_svg_shapes_are_carried_through_their_transforms(self):
        found = rows("info", given=SVG)
        boxes = [[round(r[k], 3) for k in ("minX", "minY", "maxX", "maxY")] for r in found]
        self.assertEqual(
            boxes,
            [[10, 20, 10, 26], [12, 22, 20, 26], [16, 26, 24, 34], [10, 20, 18, 26], [101, 52, 103, 54]],
        )
        self.assertEqual([r["closed"] for r in found], [0, 1, 1, 1, 0])
        self.assertAlmostEqual(found[2]["length"], 8 * 3.14159265, 3)

    def test_numbers_make_strokes_and_curves(self):
        found = rows(
            "info", given="# one\n0 0\n+1, 2e0\n\n5;5\r\n0 0 0 1 1 1 1 0\n1 0 1 0 0 0 0 0\n9 9 9 9 8 8 8 8"
        )
        self.assertEqual([(r["segments"], r["closed"]) for r in found], [(1, 0), (1, 0), (2, 1), (1, 0)])

    def test_a_path_may_be_an_argument(self):
        path = "M0 0C1 2 3 4 5 6" + "L7 8L9 9" * 100 + "Z"
        self.assertEqual(crv("info", path), crv("info", given=path))

    def test_every_bit_survives_a_pipe(self):
        fitted = crv("fit", WAVES)
        for format in "path", "points", "svg":
            self.assertEqual(crv("cut", "--at", 0, given=crv("draw", "--to", format, given=fitted)), fitted)

    def test_bad_input_is_refused_in_one_line(self):
        refused = lambda given, words, *call: self.assertIn(
            words, crv(*(call or ["info"]), given=given, status=1)
        )
        refused("0 0\n1 2 3", "standard input:2: expected x and y")
        refused("1 nan", "expected x and y")
        refused("1e101 0", "expected x and y")
        refused("", "no points and no curves")
        refused("M 0 0 L 1", "expected a number at character")
        refused("<svg><path", "not an SVG file")
        refused('<svg><path d="M0 0L1 1" transform="turn(3)"/></svg>', 'the transform "turn(3)"')
        refused('<svg><circle r="50%"/></svg>', 'r="50%" of <circle>')
        refused("", "missing.txt: cannot be read", "fit", "missing.txt")
        refused("", "the path given: expected a number", "info", "M 0 0 L")
        refused("\33[2J", 'found "?[2J"')
        refused("", "cannot be read", "fit", ROOT)
        for call in (
            ["fit", "--error", "0"],
            ["flatten", "--step", "nan"],
            ["offset"],
            ["offset", "-d", "inf"],
            ["cut"],
            ["nearest"],
            ["nearest", "-p", "1"],
            ["weld", "--op", "subtract"],
            ["bogus"],
            ["info", "--to", "path"],
            ["fit", "--plain"],
            ["flatten", "-s", "1e-9"],
            ["--bogus"],
            [],
        ):
            crv(*call, given="M0 0L9 9", status=1)


class Writing(unittest.TestCase):
    def test_a_file_is_replaced_whole_or_not_at_all(self):
        with tempfile.TemporaryDirectory() as folder:
            out = f"{folder}/out.svg"
            open(out, "w").write("before")
            crv("fit", WAVES, "missing.txt", "-o", out, status=1)
            self.assertEqual(open(out).read(), "before")
            os.symlink(out, f"{folder}/link.svg")
            crv("fit", WAVES, "-o", f"{folder}/link.svg")
            self.assertTrue(open(out).read().startswith("<svg"))
            self.assertEqual(sorted(os.listdir(folder)), ["link.svg", "out.svg"])
            crv("fit", WAVES, "-o", f"{folder}/none/out.svg", status=1)
        crv("fit", WAVES, "-o", "/dev/null")
        if os.path.exists("/dev/full"):
            with open("/dev/full", "w") as full:
                self.assertEqual(
                    subprocess.run([PROGRAM, "fit", WAVES], stdout=full, stderr=-3).returncode, 1
                )

    def test_a_bar_is_drawn_on_a_terminal_and_removed(self):
        scribble = "".join(f"M{i % 40} {i // 40}l{1 + i % 3} {1 + i % 5}" for i in range(3000))
        outer, inner = pty.openpty()
        subprocess.run(
            [PROGRAM, "contacts", "-o", "/dev/null"], input=scribble.encode(), stderr=inner, check=True
        )
        os.close(inner)
        said = b""
        with self.assertRaises(OSError):  # the end of what was written
            while True:
                said += os.read(outer, 100000)
        self.assertRegex(said, rb"\r\[#* *\] +\d+ %")
        self.assertTrue(said.endswith(b"\r\x1b[K"))


class Commands(unittest.TestCase):
    def test_fits_keep_their_error_and_close_rings(self):
        for extra in [], ["--plain"]:
            fit = crv("fit", WAVES, "--error", 2, *extra)
            far = max(r["distance"] for r in rows("nearest", "--points", WAVES, given=fit))
            self.assertTrue(0.2 < far < (2.5 if extra else 2.0000001), far)
        ring = crv("fit", ISLAND)
        self.assertTrue(ring.endswith("Z\n"))
        self.assertFalse(crv("fit", ISLAND, "--open").endswith("Z\n"))
        fewer = rows("info", given=crv("fit", "--error", 30, given=ring))[0]["segments"]
        self.assertLess(fewer, rows("info", given=ring)[0]["segments"])

    def test_polylines_are_near_and_steps_are_even(self):
        fine, rough = (crv("flatten", LETTER, "-t", t).count("\n") for t in (0.01, 1))
        self.assertGreater(fine, 5 * rough)
        self.assertGreater(crv("flatten", "--plain", LETTER, "-t", 0.01).count("\n"), fine)
        steps = [tuple(map(float, line.split())) for line in crv("flatten", LETTER, "-s", 20).splitlines()]
        chords = [((a - c) ** 2 + (b - d) ** 2) ** 0.5 for (a, b), (c, d) in zip(steps, steps[1:])]
        self.assertEqual(steps[0], steps[-1])
        length = rows("info", LETTER)[0]["length"]
        self.assertTrue(max(chords) < 20.0000001 and 0.98 * length < sum(chords) <= length, sum(chords))

    def test_parallels_areas_and_pieces_add_up(self):
        area = lambda *call, **how: sum(r["area"] for r in rows("info", given=crv(*call, **how)))
        length = sum(r["length"] for r in rows("info", K))
        self.assertAlmostEqual(area("offset", K, "-d", -1) - area("draw", K, "--to", "path"), length, delta=4)
        self.assertAlmostEqual(area("offset", K, "--stroke", 2), 2 * length, delta=8)
        self.assertAlmostEqual(area("offset", "--stroke", 2, given="5 5"), 3.14159, 3)
        self.assertNotEqual(crv("offset", K, "-d", 30, "--plain"), crv("offset", K, "-d", 30))
        both = [area("weld", LETTER, K, "--op", op) for op in ("unite", "intersect", "subtract", "exclude")]
        self.assertAlmostEqual(both[0] - both[1], both[3], 3)
        pieces = rows("info", given=crv("cut", LETTER, "--pieces", 7))
        self.assertEqual(len(pieces), 7)
        self.assertAlmostEqual(pieces[0]["length"], pieces[6]["length"], 6)
        met = rows("contacts", LETTER, K)
        self.assertEqual(len(rows("info", given=crv("cut", LETTER, "--with", K))), len(met))
        knot = "M0 0C90 60-60 60 30 0"
        self.assertEqual(rows("contacts", given=knot)[0]["kind"], "crossing")
        self.assertEqual(len(rows("info", given=crv("cut", "--crossings", given=knot))), 3)
        self.assertEqual(len(rows("info", given=crv("cut", "--near=15,99", "--at", 0.25, given=knot))), 3)


class Pages(unittest.TestCase):
    def test_the_manual_page_tells_every_option(self):
        page = open("tools/crv/crv.1").read()
        for command in re.findall(r"^  (\w+) {4,}", crv("--help").split("Subcommands:")[1], re.M):
            section = re.split(r"^\.S[sh] ", page.split(f".Ss {command}\n")[1], flags=re.M)[0]
            help = crv(command, "--help")
            self.assertIn(f"Example:\n  crv ", help)
            for option in set(re.findall(r"--([\w-]+)", help.split("Options:")[1].split("Example:")[0])):
                self.assertRegex(section + page.split(".Sh COMMANDS")[0], rf"Fl -{option}\b", command)

    def test_the_manual_page_is_sound(self):
        try:
            lint = subprocess.run(
                ["mandoc", "-Tlint", "-Wwarning", "tools/crv/crv.1"], capture_output=True, text=True
            )
        except FileNotFoundError:
            self.skipTest("mandoc is not there")
        self.assertEqual((lint.returncode, lint.stdout), (0, ""))

    def test_the_examples_of_the_guide_say_what_it_says(self):
        with tempfile.TemporaryDirectory() as folder:
            os.symlink(f"{ROOT}/tests/data", f"{folder}/data")
            os.symlink(PROGRAM, f"{folder}/crv")
            path = {**os.environ, "PATH": folder + ":" + os.environ["PATH"]}
            blocks = re.findall(r"```console\n(.*?)```", open("docs/tool.md").read(), re.S)
            for call, expected in re.findall(r"\$ (.*)\n((?:[^$].*\n)*)", "".join(blocks)):
                done = subprocess.run(call, shell=True, cwd=folder, env=path, capture_output=True, text=True)
                self.assertEqual((call, done.stdout + done.stderr), (call, expected))
            self.assertGreater(len(blocks), 5)


unittest.main(warnings="ignore")
