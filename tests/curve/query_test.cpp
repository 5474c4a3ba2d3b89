// The nearest point, and crossings of curves with curves and lines.
#include "crv/crv.h"
#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <cmath>

#include <gtest/gtest.h>

namespace {

using Pos = GxBezierCurvePosition;
using Vec = GxVector<double>;

/// A U of five lines: down at x = 0, along y = 0, up at x = 30.
GxBezierCurve uShape() {
  return support::polygonalCurve({{0, 30}, {0, 0}, {10, 0}, {20, 0}, {30, 0}, {30, 30}});
}

TEST(GxBezierCurveNearest, TheOrderOfTrialDecides) {
  struct Case {
    GxCoord<double> p;
    int innerTried;
    GxCoord<double> nearest;
    Pos pos;
  };
  Case const cases[] = {
      {{-5, 12}, 1, {0, 12}, {0, 0.6}},
      {{0.6, 0.1}, 0, {0, 0.1}, {0, 0.99666666666666667}},   // the first is near enough
      {{29.4, 0.1}, 0, {30, 0.1}, {4, 0.0033333333333333}},  // so is the last
      {{15, 30}, 1, {0, 30}, {0, 0.0}},                      // first before last
      {{15, 15}, 1, {0, 15}, {0, 0.5}},                      // and before inner ones
      {{10, 0.5}, 1, {10, 0}, {2, 0.0}},                     // an inner end, scanned no further
      {{40, 40}, 1, {30, 30}, {5, 0.0}},
  };
  GxBezierCurve curve = uShape();
  for (Case const& c : cases) {
    SCOPED_TRACE(support::text(c.p));
    GxCoord<double> nearest;
    Pos pos;
    EXPECT_EQ(c.innerTried, curve.findNearestPoint(c.p, nearest));
    EXPECT_NEAR_POINT(c.nearest, nearest, 1e-9);
    EXPECT_EQ(c.innerTried, curve.findNearestPointPos(c.p, pos));
    EXPECT_TRUE(c.pos.isEqual(pos, 1e-9)) << support::text(pos);
    EXPECT_EQ(c.pos.getSegmentNumber(), pos.getSegmentNumber());
  }
  GxCoord<double> nearest(7, 8);
  EXPECT_EQ(-1, GxBezierCurve().findNearestPoint({0, 0}, nearest));
  EXPECT_EQ(0, support::polygonalCurve({{0, 0}, {9, 0}}).findNearestPoint({99, 0}, nearest));
}

TEST(GxBezierCurveNearest, JoinsAndSeamsAreOnePlace) {
  GxBezierCurve bow = support::curveOf(
      {support::bezier(-78.2772, 0, -78.2772, 45, -78.2772, 90, 0, 90),
       support::bezier(0, 90, 78.2772, 90, 78.2772, 45, 78.2772, 0)});  // BelfrySCAD/BOSL2#1545
  Pos pos;
  EXPECT_EQ(0, bow.findNearestPointPos({0, 90}, pos));
  EXPECT_TRUE(pos == Pos(1, 0.0)) << support::text(pos);

  GxBezierCurve circle;  // godotengine/godot#39728
  for (int quarter = 0; quarter < 4; ++quarter) {
    GxBezier arc = support::quarterArc(100);
    for (int i = 0; i < 4; ++i) {
      for (int turn = 0; turn < quarter; ++turn) arc(i) = {-arc(i).yval(), arc(i).xval()};
    }
    circle.getSegments().add(arc);
  }
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
    GxCoord<double> const p = random.point(600);
    Pos pos;
    curve.findNearestPointPos(p, pos);
    // Nearer than the root of a half the search stops.
    double const d = max(p.distance(curve.locateCurvePosition(pos)), std::sqrt(0.5));
    for (int i = 0; i < static_cast<int>(curve.length()); ++i) {
      for (int k = 0; k <= 50; ++k) ASSERT_LE(d, p.distance(curve[i].bValue(k / 50.0)) + 1e-6);
    }
  }
}

TEST(GxBezierCurveQuery, WhichSegmentLooksAtTheEndsFirst) {
  GxBezierCurve curve = uShape();
  curve.getSegments().add(support::evenLine(30, 30, 0, 10));  // its end lies on the first segment
  struct Case {
    GxCoord<double> p;
    int segment;
    double t;
  };
  for (Case const& c : {Case{{0, 30}, 0, 0.0},
                        {{0, 10}, 6, 0.0},
                        {{10, 0}, 1, 1.0},
                        {{15, 0}, 2, 0.5},
                        {{15, 5}, -1, 7.0}}) {
    double t = 7.0;
    ASSERT_EQ(c.segment, curve.whichSegment(c.p, t, 1e-6));
    EXPECT_TRUE(c.segment < 0 || IS_EQUAL(c.t, t, 1e-9)) << t;
  }
  double t;
  EXPECT_EQ(-1, GxBezierCurve().whichSegment({0, 0}, t, 1.0));
}

TEST(GxBezierCurveQuery, TwoCurves) {
  GxBezierCurve u = uShape();
  GxBezierCurve across = support::polygonalCurve({{-5, 20}, {35, 20}});
  GxBezierCurve const inside = support::polygonalCurve({{15, 8}, {15, 28}});
  GxBezierCurve none;
  GxList<GxCoord<double>> points;
  EXPECT_EQ(0, u.findIntersections(inside, points));
  EXPECT_EQ(1, u.findIntersections(across, points));
  ASSERT_EQ(2u, points.length());
  EXPECT_NEAR_POINT(GxCoord<double>(0, 20), points(0), 1e-9);
  EXPECT_NEAR_POINT(GxCoord<double>(30, 20), points(1), 1e-9);
  EXPECT_EQ(1, u.findIntersections(none, points));  // those found before count
  EXPECT_NEAR(64, inside.getMinSqDistance(u), 1e-9);
  EXPECT_NEAR(0, inside.getMinSqDistance(across), 1e-9);
  EXPECT_EQ(0.0, u.getMinSqDistance(u));
  EXPECT_EQ(0.0, u.getMinSqDistance(none));
}

TEST(GxBezierCurveQuery, TheFirstCrossingWithALineOnTheWay) {
  struct Case {
    GxCoord<double> p;
    Vec v;
    Pos from, towards;
    int result;
    Pos at;
  };
  GxBezierCurve const u = uShape();
  Pos const first = u.firstPos();
  Pos const last = u.lastPos();
  Case const cases[] = {
      {{0, 15}, {1, 0}, first, last, 0, {0, 0.5}},
      {{0, 15}, {1, 0}, {0, 0.5}, last, 0, {0, 0.5}},      // a crossing at the start counts
      {{0, 15}, {1, 0}, {0, 0.6}, {0, 0.7}, 0, {4, 0.5}},  // beyond the aim, too
      {{0, 15}, {1, 0}, {0, 0.6}, first, 0, {0, 0.5}},     // backwards
      {{0, 15}, {1, 0}, last, first, 0, {4, 0.5}},
      {{0, 15}, {1, 0}, last, {9, 0.0}, -1, {}},  // forwards from the end
      {{0, 15}, {1, 0}, {4, 0.6}, last, -1, {}},  // no way around
      {{0, 15}, {1, 0}, {-1, 0.5}, last, -1, {}},
      {{0, 15}, {1, 0}, {6, 0.0}, first, -1, {}},
      {{0, 0}, {-2, 0}, {1, 0.5}, last, 0, {2, 0.0}},  // on the line: the segment's end
      {{0, 0}, {1, 0}, {3, 0.5}, first, 0, {3, 0.0}},  // or its start
      {{5, 9}, {0, 1e-5}, first, last, 0, {0, 0.7}},   // too short a direction: level
      {{0, 40}, {1, 0}, first, last, -1, {}},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(support::text(c.from) + " " + support::text(c.p));
    Pos at(77, 0.5);
    ASSERT_EQ(c.result,
              u.findFirstGeometricLineIntersection(c.p, c.v, c.from, c.towards, at, 1e-6));
    EXPECT_TRUE((c.result == 0 ? c.at : Pos(77, 0.5)).isEqual(at, 1e-9)) << support::text(at);
    Pos framed(77, 0.5);
    bool const tiny = c.v.squaredLength() < 1e-9;  // here the frames differ
    u.findFirstGeometricLineIntersectionEx(c.p, c.v, c.from, c.towards, framed, 1e-6);
    EXPECT_TRUE((tiny ? Pos(1, 0.5) : at).isEqual(framed, 1e-9)) << support::text(framed);
  }
  // Backwards, the later of two crossings of a segment comes first.
  GxBezierCurve const arch = support::curveOf({support::bezier(0, 0, 0, 8, 8, 8, 8, 0)});
  Pos there, back;
  arch.findFirstGeometricLineIntersection({0, 4}, {1, 0}, {0, 0.0}, {1, 0.0}, there, 1e-9);
  arch.findFirstGeometricLineIntersection({0, 4}, {1, 0}, {1, 0.0}, {0, 0.0}, back, 1e-9);
  EXPECT_NEAR(1, there.getTValue() + back.getTValue(), 1e-9);
  EXPECT_LT(there, back);
  // A line that passes the end by less than the tolerances: as a parameter, and as a distance.
  Pos at;
  EXPECT_EQ(0, u.findFirstGeometricLineIntersection({0, 30.5}, {1, 0}, {1, 0.0}, last, at, 0.05));
  EXPECT_EQ(last, at);
  EXPECT_EQ(0, u.findFirstGeometricLineIntersectionWithEndpointCheck({0, 30.0009}, {3, 0}, {1, 0.0},
                                                                     last, at));
  EXPECT_EQ(last, at);
  EXPECT_EQ(-1, u.findFirstGeometricLineIntersectionWithEndpointCheck({0, 30.0011}, {3, 0},
                                                                      {1, 0.0}, last, at));
}

}  // namespace
