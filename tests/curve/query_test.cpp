// The nearest point, crossings with curves and lines, and directions on both sides of a position.
#include "tests/support/expect.h"
#include "tests/support/positions.h"

namespace {

using namespace support;

/// A U of five lines: down at x = 0, along y = 0, up at x = 30.
GxBezierCurve uShape() { return polygon({0, 30, 0, 0, 10, 0, 20, 0, 30, 0, 30, 30}); }

TEST(GxBezierCurveNearest, TheOrderOfTrialDecides) {
  // The point, whether inner segments were tried, and the place: first and last are near enough;
  // first before last and inner ones; an inner end, scanned no further; far away; on one segment.
  for (Row const row : table("0.6 0.15 0 0.995; 0.71 0.1 1 1.071; 29.4 0.15 0 4.005; 15 30 1 0;"
                             "15 15 1 0.5; 10 0.5 1 2; 40 40 1 5; 6 0 0 1 1")) {
    GxBezierCurve curve = row.size() == 4 ? uShape() : polygon({0, 0, 5, 0});
    Point const p(row[0], row[1]);
    Point nearest;
    Position pos;
    EXPECT_EQ(row[2], curve.findNearestPoint(p, nearest));
    EXPECT_EQ(row[2], curve.findNearestPointPos(p, pos));
    EXPECT_NEAR(row[3], flat(pos), 1e-9);
    EXPECT_NEAR_POINT(curve.locateCurvePosition(pos), nearest, 1e-9);
  }
}

TEST(GxBezierCurveQuery, WhichSegmentLooksAtTheEndsFirst) {
  GxBezierCurve curve = uShape();
  curve.getSegments().add(evenLine(30, 30, 0, 10));  // its end lies on the first segment
  for (Row const row : table("0 30 0; 0 10 6; 10 0 2; 15 0 2.5; 15 5 -1")) {
    double t = 0.0;
    int const segment = curve.whichSegment({row[0], row[1]}, t, 1e-6);
    EXPECT_NEAR(row[2], segment < 0 ? segment : segment + t, 1e-9);
  }
}

TEST(GxBezierCurveQuery, TwoCurves) {
  GxBezierCurve u = uShape(), none;
  GxList<Point> points;
  EXPECT_EQ(0, u.findIntersections(polygon({15, 8, 15, 28}), points));
  EXPECT_EQ(1, u.findIntersections(polygon({-5, 20, 35, 20}), points));
  EXPECT_EQ(1, u.findIntersections(none, points));  // those found before count
  ASSERT_EQ(2u, points.length());
  EXPECT_NEAR_POINT(Point(0, 20), points(0), 1e-9);
  EXPECT_NEAR_POINT(Point(30, 20), points(1), 1e-9);
  EXPECT_EQ(0.0, u.getMinSqDistance(none));
  // From samples at 0, 1, ... 10 to the end of a line above: on one, between two, beyond.
  GxBezierCurve const level = polygon({0, 0, 10, 0});
  for (Row const row : table("3 1; 4.5 1.25; 10 1; 11 2")) {
    GxBezierCurve above = polygon({row[0], 50, row[0], 1});
    EXPECT_NEAR(row[1], level.getMinSqDistance(above), 1e-9);
  }
}

TEST(GxBezierCurveQuery, TheFirstCrossingWithALineOnTheWay) {
  GxBezierCurve curve = uShape();
  curve.getSegments().add(bezier(30, 30, 30, 38, 60, 38, 60, 30));
  // Line, start, aim, and where found or -1: at the start, beyond the aim, backwards; from the end,
  // not around; on the line the segment's end or start; no direction: level; nowhere; both
  // crossings of a segment.
  for (Row const row : table(R"(0 15 1 0 0.5 6 0.5; 0 15 1 0 0.6 0.7 4.5; 0 15 1 0 0.6 0 0.5;
            0 15 1 0 6 0 4.5; 0 15 1 0 6 9 -1; 0 15 1 0 4.6 6 -1; 0 0 -2 0 1.5 6 2; 0 0 1 0 3.5 0 3;
            5 9 0 1e-5 0 6 0.7; 0 40 1 0 0 6 -1; 0 33 1 0 0 6 5.14644660940672624;
            0 33 1 0 6 0 5.85355339059327376)")) {
    Point const p(row[0], row[1]);
    Vector const v(row[2], row[3]);
    Position const from = at(row[4]), aim = at(row[5]);
    Position found(-1, 0.0), framed(-1, 0.0);
    int const code = curve.findFirstGeometricLineIntersection(p, v, from, aim, found, 1e-6);
    ASSERT_EQ(row[6] < 0 ? -1 : 0, code);
    EXPECT_NEAR(row[6], flat(found), 1e-9);
    curve.findFirstGeometricLineIntersectionEx(p, v, from, aim, framed, 1e-6);
    EXPECT_NEAR(v.length() < 1e-3 ? 1.5 : row[6], flat(framed), 1e-9);  // frames differ
  }
  // A line that passes the end by less than the tolerances: as a parameter, and as a distance.
  GxBezierCurve const u = uShape();
  Position found;
  EXPECT_EQ(0, u.findFirstGeometricLineIntersection({0, 30.5}, {1, 0}, at(1), at(5), found, 0.05));
  EXPECT_EQ(5, flat(found));
  for (Row const row : table("30.0009 1 5 0; 30.0011 1 5 -1; 30.0009 1 0 0; 30.0011 1 0 -1")) {
    EXPECT_EQ(row[3], u.findFirstGeometricLineIntersectionWithEndpointCheck(
                          {0, row[0]}, {3, 0}, at(row[1]), at(row[2]), found));
    EXPECT_EQ(row[2], flat(found));
  }
}

/// Three segments with corners at the joins, all derivatives different.
GxBezierCurve kinkedCurve(bool closed) {
  GxBezierCurve curve = curveOf(segmentsOf({0,  0,  10, 30, 40, 50, 60, 10, 60, 10,  70, 90,
                                            20, 80, 90, 60, 90, 60, 95, 20, 40, -30, 0,  0}));
  curve.setStrictIsClosed(closed);
  return curve;
}

bool near(Vector const& a, Vector const& b) { return (a - b).length() < 1e-9; }

TEST(GxBezierCurveTangent, SidesAreChosenAtJoinsAndEnds) {
  // The position, closed, and segment and parameter of the sides: in and out of both velocities,
  // then of the acceleration. Just below a join the way out of velocities is that of the same
  // segment's start.
  for (Row const row : table(R"(1 0 0 1 1 0 0 1 1 0; 1.0004 0 0 1 1 0 1 .0004 1 .0004;
            1.9996 0 1 1 1 0 1 .9996 1 .9996; 1.9994 0 1 .9994 1 .9994 1 .9994 1 .9994;
            0 0 0 0 0 0 0 0 0 0; 0 1 2 1 0 0 2 1 0 0; 3 0 2 1 2 1 2 1 2 1; 3 1 2 1 0 0 2 1 0 0;
            0.0004 1 2 1 0 0 0 .0004 0 .0004; 2.9996 0 2 1 2 1 2 .9996 2 .9996; 3.0004 0 2 1 2 1;
            -0.0004 0 0 0 0 0; 3.001 0; -0.5 0)")) {
    GxBezierCurve const curve = kinkedCurve(row[1] != 0);
    bool const hasVelocity = row.size() > 2, hasAcceleration = row.size() > 6;
    auto const first = [&](std::size_t i) { return curve[int(row[i])].dValue(row[i + 1]); };
    auto const second = [&](std::size_t i) { return curve[int(row[i])].ddValue(row[i + 1]); };
    Vector const none(0, 0), untouched(7, 8);
    Vector const arriving = hasVelocity ? first(2) : none, leaving = hasVelocity ? first(4) : none;
    Vector in = untouched, out = untouched;
    EXPECT_EQ(hasAcceleration - 1, curve.getAccelerationVectors(at(row[0]), in, out));
    EXPECT_TRUE(near(in, hasAcceleration ? -second(6) : untouched));
    EXPECT_TRUE(near(out, hasAcceleration ? second(8) : untouched));
    in = out = untouched;
    EXPECT_EQ(hasVelocity - 1, curve.getVelocityVectors(at(row[0]), in, out));
    EXPECT_TRUE(near(in, hasVelocity ? -arriving : untouched));
    EXPECT_TRUE(near(out, hasVelocity ? leaving : untouched));
    EXPECT_EQ(hasVelocity - 1, curve.findVelocityVectors(at(row[0]), in, out));
    EXPECT_TRUE(near(in, arriving) && near(out, leaving)) << "none, outside";
  }
}

TEST(GxBezierCurveTangent, ChordsStandInForHandlesThatVanish) {
  // The segment, the way in at its end as both queries have it, the way out at its start. The last
  // two have handles of 3e-5: exactly compared they are some, within the tolerance none.
  for (Row const row : table(R"(0 0 0 0 30 0 30 0  -30 0 30 0  30 0 30 0;
            0 0 30 0 30 0 30 0  -30 0 30 0  90 0 90 0; 0 0 0 0 0 0 30 0  -90 0 90 0  30 0 30 0;
            0 0 0 0 50 100 100 0  -150 300 150 -300  50 100 50 100;
            0 0 0x1p-15 0 20 5 30 0  -30 15 30 -15  0x3p-15 0 20 5;
            30 0 20 5 0x1p-15 0 0 0  0x3p-15 0 -20 -5  -30 15 -30 15)")) {
    GxBezierCurve const curve = curveOf({segmentOf(row)});
    Vector in, out, unused;
    curve.getVelocityVectors({1, 0.0}, in, unused);
    curve.getVelocityVectors({0, 0.0}, unused, out);
    EXPECT_TRUE(near(in, {row[8], row[9]}) && near(out, {row[12], row[13]})) << in.xval();
    curve.findVelocityVectors({1, 0.0}, in, unused);
    curve.findVelocityVectors({0, 0.0}, unused, out);
    EXPECT_TRUE(near(in, {row[10], row[11]}) && near(out, {row[14], row[15]})) << in.xval();
  }
  // At a cusp the chords are those of the whole segment. Only a segment without any handle has no
  // acceleration.
  GxBezierCurve const cusp = curveOf({bezier(0, 0, 1, 1, 0, 1, 1, 0)});
  GxBezierCurve const straight = curveOf({retractedLine(0, 0, 30, 0)});
  Vector in, out;
  cusp.findVelocityVectors({0, 0.5}, in, out);
  EXPECT_TRUE(near(in, {0, -1}) && near(out, {0, 1}));
  cusp.getAccelerationVectors({0, 0.5}, in, out);
  EXPECT_TRUE(near(in, {0, 6}) && near(out, {0, -6}));
  straight.getAccelerationVectors({0, 0.25}, in, out);
  EXPECT_TRUE(near(in, {0, 0}) && near(out, {0, 0}));
}

TEST(GxBezierCurveTangent, TriplesAreTheHandlesOfACut) {
  // The place, closed, the code, and segment and number of the handles before and after; as the
  // last segment, the caller's.
  for (Row const row : table("1.25 0 0 3 2 4 1; 1 0 0 0 2 1 1; 0 0 0 5 0 0 1; 0 1 0 2 2 0 1;"
                             "3 0 0 2 2 2 3; 3 1 0 2 2 0 1; 3.125 1 -1 5 0 5 0")) {
    GxBezierCurve curve = kinkedCurve(row[1] != 0);
    Point point, before(7, 8), after(7, 8);
    EXPECT_EQ(row[2], curve.getTriple(at(row[0]), point, before, after));
    EXPECT_BITS(curve.locateCurvePosition(at(row[0])), point);
    GxBezier left, right;
    curve[1].split(left, right, 0.25);
    for (GxBezier const& s : {left, right, pointLike(7, 8)}) curve.getSegments().add(s);
    EXPECT_BITS(curve[int(row[3])][int(row[4])], before);
    EXPECT_BITS(curve[int(row[5])][int(row[6])], after);
  }
}

}  // namespace
