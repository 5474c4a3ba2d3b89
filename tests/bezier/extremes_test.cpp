// Extremes, boxes, roots at a height, the parameter of a point, the inflection, lengths.
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"

#include <algorithm>

namespace {

using support::bezier;
using support::evenLine;
using support::Point;
using support::Random;

struct Box {
  double minX = 7, minY = 7, maxX = 7, maxY = 7;
};

Box tightBox(GxBezier const& s) {
  Box b;
  s.localMinMax(b.minX, b.minY, b.maxX, b.maxY);
  return b;
}

TEST(GxBezierExtremes, LowestAndHighestParametersAreWrittenAtTheListsStart) {
  double const turn = std::sqrt(1.0 / 12.0);
  std::pair<GxBezier, Point> const cases[] = {
      {evenLine(0, 5, 9, 1), Point(1, 0)},
      {support::pointLike(2, 2), Point(0, 1)},
      {bezier(0, 0, 1, 4, 2, 4, 3, 0), Point(0, 0.5)},
      {bezier(0, 0, 1, -4, 2, 4, 3, 0), Point(0.5 - turn, 0.5 + turn)},
      {bezier(0, 0, 1, 0, 2, 9, 3, 9), Point(0, 1)},  // flat handles
  };
  for (auto const& k : cases) {
    GxList<double> list;
    EXPECT_EQ(GxBezier(k.first).getYMinMaxTValues(list), 2);
    EXPECT_NEAR_POINT(Point(list(0), list(1)), k.second, 1e-15);
  }
  GxList<double> list;
  list.add(42.0);
  EXPECT_EQ(evenLine(0, 5, 9, 1).getYMinMaxTValues(list), 3) << "the list's length";
  EXPECT_EQ(list(0), 0.0) << "entries 0 and 1 were exchanged, the lower end lying at the end";
  EXPECT_EQ(support::retractedLine(0, 1, 9, 5).getYMinMaxTValues(list), 2) << "flat handles";
}

TEST(GxBezierExtremes, HighestAndLowestPointsAndBoxesHoldEverySample) {
  Random random(30);
  for (int i = 0; i < 500; ++i) {
    GxBezier const s = i % 2 ? random.segment(100) : random.gridSegment(3);
    double tMax, yMax, tMin, yMin;
    s.getMaxYTValue(tMax, yMax);
    s.getMinYTValue(tMin, yMin);
    ASSERT_TRUE(s.bValue(tMax).yval() == yMax && s.bValue(tMin).yval() == yMin);
    Box const box = tightBox(s);
    Box hull;
    s.getConvexHull(hull.minX, hull.minY, hull.maxX, hull.maxY);
    ASSERT_NEAR(box.maxY, yMax, 1e-9);
    ASSERT_NEAR(box.minY, yMin, 1e-9);
    ASSERT_TRUE(hull.minX <= box.minX && box.maxX <= hull.maxX);
    ASSERT_TRUE(hull.minY <= box.minY && box.maxY <= hull.maxY);
    double reachedX = -1e9;
    for (int k = 0; k <= 200; ++k) {
      Point const p = s.bValue(k / 200.0);
      ASSERT_TRUE(isPointInBox(p, box.minX, box.minY, box.maxX, box.maxY, 1e-9));
      reachedX = std::max(reachedX, p.xval());
    }
    ASSERT_LT(box.maxX - reachedX, 0.2) << "the box is tight";
  }
}

TEST(GxBezierExtremes, HardCasesHaveTheirBoxes) {
  // y is t^3-free: -9t + 6t^2 (meerk40t/svgelements#214, where the box came out short).
  Box box = tightBox(bezier(0, 0, -2, -3, -1, -4, 0, -3));
  EXPECT_NEAR_POINT(Point(box.minX, box.minY), Point(-1.1547005383792515, -3.375), 1e-15);
  EXPECT_TRUE(box.maxX == 0 && box.maxY == 0);
  // A handle on the start (Pomax/bezierjs#37).
  box = tightBox(bezier(100, 25, 100, 25, 110, 100, 150, 195));
  EXPECT_TRUE(box.minX == 100 && box.minY == 25 && box.maxX == 150 && box.maxY == 195);
}

TEST(GxBezierRoots, EveryHeightIsReachedWhereReportedAndBoundsAreInclusive) {
  Random random(31);
  for (int i = 0; i < 2000; ++i) {
    GxBezier const s = random.segment(100);
    double const y = random.uniform(-100, 100);
    GxList<double> list;
    int const count = s.findRoots(list, y, 0.0, 1.0);
    int crossings = 0;
    for (int k = 0; k < 100; ++k) {
      crossings += (s.bValue(k / 100.0).yval() < y) != (s.bValue((k + 1) / 100.0).yval() < y);
    }
    ASSERT_GE(count, crossings);
    for (double const t : support::valuesOf(list)) ASSERT_NEAR(s.bValue(t).yval(), y, 1e-9);
  }
  GxBezier const s = evenLine(0, 0, 9, 3);
  GxList<double> list;
  EXPECT_EQ(s.findRoots(list, 0.0, 0.0, 1.0), 1);
  EXPECT_EQ(s.findRoots(list, 1.5, 0.5, 0.5), 2) << "results are appended";
  GxList<Point> points;
  points.add(Point(0, 0));
  EXPECT_EQ(s.findRoots(points, 1.5, 0.0, 1.0), 2);
  EXPECT_NEAR_POINT(points(1), Point(4.5, 1.5), 1e-15);
}

TEST(GxBezierRoots, ParametersOfPoints) {
  double t = -1.0;
  EXPECT_EQ(evenLine(3, 0, 3, 30).findTValue(Point(3, 12), t, 1e-6), 1) << "x has no extent";
  EXPECT_NEAR(t, 0.4, 1e-12);
  GxBezier level = evenLine(0, 3, 30, 3);
  EXPECT_EQ(level.findTValue(Point(12, 3.2), t, 0.5), 0) << "outside the box, whatever tolerance";
  EXPECT_EQ(level.findTValue(Point(12, 3.05), t, 0.5), 1);
  EXPECT_EQ(level.findTValue(Point(30.4, 3), t, 0.5), 1) << "ends are looked at first";
  EXPECT_EQ(t, 1.0);
}

TEST(GxBezierRoots, InflectionOnlyWhereThePolygonTurnsBothWays) {
  std::pair<GxBezier, double> const cases[] = {
      {support::quarterArc(100), 7.0},
      {support::sShape(), 0.5},
      {bezier(0, 0, 1, 1, 2, -1, 3, 0), 0.5},  // linebender/kurbo cubicbez.rs
      // Two where the polygon turns one way: none is looked for (paperjs/paper.js Curve.js).
      {bezier(100, 200, 200, 100, 160, 120, 200, 200), 7.0},
  };
  for (auto const& k : cases) {
    double t = 7.0;
    EXPECT_EQ(GxBezier(k.first).findInflectionPoint(t), k.second == 0.5);
    EXPECT_NEAR(t, k.second, 1e-12);
  }
}

TEST(GxBezierLength, FixedDistancesAreMetFromBothSidesOrEndAtAnEnd) {
  GxBezier const s = support::sShape();
  EXPECT_NEAR(support::quarterArc(100).length(0.0), 157.0796, 0.11);
  EXPECT_EQ(s.length(1.0), 0.0);
  EXPECT_EQ(support::OpenBezier(s).length(-5, 0.25), s.bValue(0.25).distance(s[3]));
  for (double const d : {1.0, 10.0, 60.0}) {
    double lo = 0.2, hi = 1.0;
    double const after = s.splitAtFixedLengthAfter(d, 0, lo, hi, 0.2);
    EXPECT_NEAR(s.bValue(after).distance(s.bValue(0.2)), d, 0.1);
    EXPECT_TRUE(0.2 <= lo && lo <= after && after <= hi);
    lo = 0.0, hi = 0.8;
    double const before = s.splitAtFixedLengthBefore(d, 0, lo, hi, 0.8);
    EXPECT_NEAR(s.bValue(before).distance(s.bValue(0.8)), d, 0.1);
    EXPECT_TRUE(lo <= before && before <= hi && hi <= 0.8);
  }
  GxBezier const line = evenLine(0, 0, 10, 0);
  double lo = 0.25, hi = 1.0;
  EXPECT_EQ(line.splitAtFixedLengthAfter(3.0, 0, hi, lo, 0.25), 1.0) << "the end of no bracket";
  EXPECT_EQ(line.splitAtFixedLengthAfter(3.0, 16, lo, hi, 0.25), 0.625) << "one midpoint";
  lo = 0.0, hi = 0.75;
  EXPECT_EQ(line.splitAtFixedLengthBefore(3.0, 0, hi, lo, 0.75), 0.0);
}

}  // namespace
