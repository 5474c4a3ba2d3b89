// The nearest point, and crossings of curves with curves and lines.
#include "tests/support/data.h"
#include "tests/support/positions.h"
#include "tests/support/shapes.h"

namespace {

using Point = GxCoord<double>;
using Pos = GxBezierCurvePosition;
using Vec = GxVector<double>;

/// A U of five lines: down at x = 0, along y = 0, up at x = 30.
GxBezierCurve uShape() {
  return support::polygonalCurve({{0, 30}, {0, 0}, {10, 0}, {20, 0}, {30, 0}, {30, 30}});
}

TEST(GxBezierCurveNearest, TheOrderOfTrialDecides) {
  GxBezierCurve curve = uShape();
  // The point, whether inner segments were tried, and the place: first and last are near enough;
  // first before last and inner ones; an inner end, scanned no further; far away.
  for (auto const& row : support::table("0.6 0.15 0 0.995; 29.4 0.15 0 4.005; 15 30 1 0;"
                                        "15 15 1 0.5; 10 0.5 1 2; 40 40 1 5")) {
    Point const p(row[0], row[1]);
    SCOPED_TRACE(support::text(p));
    Point nearest;
    Pos pos;
    EXPECT_EQ(row[2], curve.findNearestPoint(p, nearest));
    EXPECT_EQ(row[2], curve.findNearestPointPos(p, pos));
    EXPECT_NEAR(row[3], support::flat(pos), 1e-9);
    EXPECT_NEAR_POINT(curve.locateCurvePosition(pos), nearest, 1e-9);
  }
}

TEST(GxBezierCurveNearest, JoinsAndSeamsAreOnePlace) {
  GxBezierCurve bow = support::curveOf(
      {support::bezier(-78.2772, 0, -78.2772, 45, -78.2772, 90, 0, 90),
       support::bezier(0, 90, 78.2772, 90, 78.2772, 45, 78.2772, 0)});  // BelfrySCAD/BOSL2#1545
  Pos pos;
  EXPECT_EQ(0, bow.findNearestPointPos({0, 90}, pos));
  EXPECT_TRUE(pos == Pos(1, 0.0)) << support::text(pos);

  GxBezierCurve circle = support::circle(100);  // godotengine/godot#39728
  EXPECT_EQ(1, circle.findNearestPointPos({120, -1}, pos));
  EXPECT_EQ(3, pos.getSegmentNumber());
  EXPECT_NEAR(0.994948418396, pos.getTValue(), 1e-7);
  EXPECT_EQ(1, circle.findNearestPointPos({120, 0}, pos));
  EXPECT_TRUE(pos == Pos(0, 0.0)) << "the seam, read as the start: " << support::text(pos);
}

TEST(GxBezierCurveNearest, NoSampleOfARealOutlineIsNearer) {
  GxBezierCurve curve = support::outline("roman-g-outer");
  support::Random random(35);
  for (int round = 0; round < 40; ++round) {
    Point const p = random.point(600);
    Pos pos;
    curve.findNearestPointPos(p, pos);
    // Nearer than the root of a half the search stops.
    double const d = max(p.distance(curve.locateCurvePosition(pos)), std::sqrt(0.5));
    for (int k = 0; k < 50 * static_cast<int>(curve.length()); ++k) {
      ASSERT_LE(d, p.distance(curve.locateCurvePosition({k / 50, k % 50 / 50.0})) + 1e-6);
    }
  }
}

TEST(GxBezierCurveQuery, WhichSegmentLooksAtTheEndsFirst) {
  GxBezierCurve curve = uShape();
  curve.getSegments().add(support::evenLine(30, 30, 0, 10));  // its end lies on the first segment
  for (auto const& row : support::table("0 30 0; 0 10 6; 10 0 2; 15 0 2.5; 15 5 -1")) {
    double t = 0.0;
    int const segment = curve.whichSegment({row[0], row[1]}, t, 1e-6);
    EXPECT_NEAR(row[2], segment < 0 ? segment : segment + t, 1e-9);
  }
}

TEST(GxBezierCurveQuery, TwoCurves) {
  GxBezierCurve u = uShape();
  GxBezierCurve across = support::polygonalCurve({{-5, 20}, {35, 20}});
  GxBezierCurve const inside = support::polygonalCurve({{15, 8}, {15, 28}});
  GxBezierCurve none;
  GxList<Point> points;
  EXPECT_EQ(0, u.findIntersections(inside, points));
  EXPECT_EQ(1, u.findIntersections(across, points));
  ASSERT_EQ(2u, points.length());
  EXPECT_NEAR_POINT(Point(0, 20), points(0), 1e-9);
  EXPECT_NEAR_POINT(Point(30, 20), points(1), 1e-9);
  EXPECT_EQ(1, u.findIntersections(none, points));  // those found before count
  EXPECT_NEAR(64, inside.getMinSqDistance(u), 1e-9);
  EXPECT_NEAR(0, inside.getMinSqDistance(across), 1e-9);
  EXPECT_EQ(0.0, u.getMinSqDistance(none));
}

TEST(GxBezierCurveQuery, TheFirstCrossingWithALineOnTheWay) {
  GxBezierCurve const u = uShape();
  Pos const last = u.lastPos();
  // Line, start, aim, and where found or -1: at the start, beyond the aim, backwards; from the end,
  // not around, off the curve; on the line the segment's end or start; no direction: level;
  // nowhere.
  for (auto const& row : support::table(
           "0 15 1 0 0.5 5 0.5; 0 15 1 0 0.6 0.7 4.5; 0 15 1 0 0.6 0 0.5; 0 15 1 0 5 0 4.5;"
           "0 15 1 0 5 9 -1; 0 15 1 0 4.6 5 -1; 0 15 1 0 -0.5 5 -1; 0 15 1 0 6 0 -1;"
           "0 0 -2 0 1.5 5 2; 0 0 1 0 3.5 0 3; 5 9 0 1e-5 0 5 0.7; 0 40 1 0 0 5 -1")) {
    SCOPED_TRACE(testing::Message() << row[4] << " to " << row[5]);
    Point const p(row[0], row[1]);
    Vec const v(row[2], row[3]);
    Pos const from = support::at(row[4]), towards = support::at(row[5]);
    Pos at(-1, 0.0), framed(-1, 0.0);
    ASSERT_EQ(row[6] < 0 ? -1 : 0,
              u.findFirstGeometricLineIntersection(p, v, from, towards, at, 1e-6));
    EXPECT_NEAR(row[6], support::flat(at), 1e-9);
    u.findFirstGeometricLineIntersectionEx(p, v, from, towards, framed, 1e-6);
    EXPECT_NEAR(v.length() < 1e-3 ? 1.5 : row[6], support::flat(framed), 1e-9);  // frames differ
  }
  // Backwards, the later of two crossings of a segment comes first.
  GxBezierCurve const arch = support::curveOf({support::bezier(0, 0, 0, 8, 8, 8, 8, 0)});
  Pos there, back, at;
  arch.findFirstGeometricLineIntersection({0, 4}, {1, 0}, {0, 0.0}, {1, 0.0}, there, 1e-9);
  arch.findFirstGeometricLineIntersection({0, 4}, {1, 0}, {1, 0.0}, {0, 0.0}, back, 1e-9);
  EXPECT_NEAR(1, there.getTValue() + back.getTValue(), 1e-9);
  EXPECT_LT(there, back);
  // A line that passes the end by less than the tolerances: as a parameter, and as a distance.
  EXPECT_EQ(0, u.findFirstGeometricLineIntersection({0, 30.5}, {1, 0}, {1, 0.0}, last, at, 0.05));
  EXPECT_EQ(last, at);
  for (double const y : {30.0009, 30.0011}) {
    EXPECT_EQ(y < 30.001 ? 0 : -1, u.findFirstGeometricLineIntersectionWithEndpointCheck(
                                       {0, y}, {3, 0}, {1, 0.0}, last, at));
  }
}

}  // namespace
