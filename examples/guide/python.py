# The library from Python: fit a stroke, ask it, cut it, offset it, and draw what came out. The tests run this
# program, compare what it prints with the comments, and python.svg with the picture in the guide.

## [fit]
import numpy
import crv

x = numpy.arange(301)
stroke = numpy.stack([x, 40 * numpy.sin(x * 0.05)], axis=1)

fit = crv.fit(stroke, tolerance=0.5)
print(fit.curve)  # <GxBezierCurve of 7 segments, open>
print(fit.worstDistance < 0.5)  # True
print(fit.curve.points.shape)  # (7, 4, 2)
## [fit]

## [plain]
curve = crv.GxBezierCurve(stroke, error=0.5)
print(len(curve), "segments,", len(curve.makeCurve(10.0)), "points")  # 34 segments, 51 points
## [plain]

## [ask]
nearest = crv.nearest(fit.curve, (100, 0))
assert nearest is not None
segment, t = nearest.position
print(segment, round(t, 3), round(nearest.distance, 2))  # 2 0.619 23.18

level = [contact.position for contact in crv.contacts(fit.curve, (0, 20), (300, 20))]
print(len(level))  # 5
print(crv.walk(fit.curve, (0, 0.0), 1e6))  # None
## [ask]

## [marks]
before, after = crv.cut(fit.curve, [(2, 0.5)])
print(before.map((1, 0.25)))  # GxBezierCurvePosition(1, 0.25)
print(after.map((1, 0.25)))  # None
print(after.map.inverse((0, 0.0)))  # GxBezierCurvePosition(2, 0.5)
## [marks]

## [outlines]
(square,) = crv.parsePath("M0 0h10v10h-10z").curves
(grown,) = crv.offset(square, -1, join=crv.Join.miter).parallels
print(crv.area([grown.curve]))  # 144.0
print(len(crv.unite([square], [grown.curve]).curves))  # 1
print(crv.toPath(square))  # M0 0L10 0L10 10L0 10L0 0Z
## [outlines]

## [refused]
try:
    crv.spliteGxBezierCurve((99, 0.0), curve)
except crv.Error as error:
    print(error)  # the position is not on the curve
print(crv.nearest(crv.Curve(), (1, 2)))  # None
## [refused]


## [draw]
def path(curves: list[crv.Curve]) -> str:
    """The text of a path with two decimals."""
    return crv.toPath([crv.Curve(numpy.round(c.points, 2), closed=c.closed) for c in curves])


pen = crv.strokeOutline(fit.curve, 16.0, tolerance=0.05)
with open("python.svg", "w") as picture:
    picture.write('<svg xmlns="http://www.w3.org/2000/svg" width="640" height="220" viewBox="-10 -55 320 110">\n')
    picture.write('<rect x="-10" y="-55" width="320" height="110" fill="#fff"/>\n')
    picture.write(f'<path d="{path(pen)}" fill="#e7f5ff" stroke="#a5d8ff"/>\n')
    for piece, colour in (before, "#1864ab"), (after, "#e8590c"):
        picture.write(f'<path d="{path([piece.curve])}" fill="none" stroke="{colour}" stroke-width="2"/>\n')
    picture.write("</svg>\n")
## [draw]
