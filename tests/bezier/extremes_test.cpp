// Extremes, boxes, roots at a height, the parameter of a point, the inflection.
#include "crv/crv.h"
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Point = GxCoord<double>;
using support::Random;

struct Box {
  double minX = 7, minY = 7, maxX = 7, maxY = 7;
};

Box tightBox(GxBezier const& s) {
  Box b;
  s.localMinMax(b.minX, b.minY, b.maxX, b.maxY);
  return b;
}

std::vector<double> valuesOf(GxList<double> const& list) {
  std::vector<double> values;
  for (unsigned i = 0; i < list.length(); ++i) values.push_back(list[i]);
  return values;
}

TEST(GxBezierExtremes, LowestAndHighestParameters) {
  struct Case {
    GxBezier segment;
    double low;
    double high;
  };
  double const turn = std::sqrt(1.0 / 12.0);
  Case const cases[] = {
      {support::evenLine(0, 5, 9, 1), 1.0, 0.0},
      {support::evenLine(0, 1, 9, 5), 0.0, 1.0},
      {support::pointLike(2, 2), 0.0, 1.0},
      {support::bezier(0, 0, 1, 4, 2, 4, 3, 0), 0.0, 0.5},
      {support::bezier(0, 0, 1, -4, 2, 4, 3, 0), 0.5 - turn, 0.5 + turn},
      {support::bezier(0, 0, 1, 0, 2, 9, 3, 9), 0.0, 1.0},  // flat handles
  };
  for (Case const& k : cases) {
    GxList<double> list;
    GxBezier segment = k.segment;
    EXPECT_EQ(segment.getYMinMaxTValues(list), 2);
    EXPECT_NEAR(list(0), k.low, 1e-15);
    EXPECT_NEAR(list(1), k.high, 1e-15);
  }
}

TEST(GxBezierExtremes, AListThatIsNotEmptyIsWrittenAtItsStart) {
  GxList<double> list;
  list.add(42.0);
  GxBezier s = support::evenLine(0, 5, 9, 1);
  EXPECT_EQ(s.getYMinMaxTValues(list), 3) << "the list's length";
  EXPECT_EQ(list(0), 0.0) << "entries 0 and 1 were exchanged, the lower end lying at the end";
  EXPECT_EQ(list(1), 42.0);
  GxBezier flat = support::retractedLine(0, 1, 9, 5);
  EXPECT_EQ(flat.getYMinMaxTValues(list), 2) << "flat handles give 2 whatever the length";
}

TEST(GxBezierExtremes, HighestAndLowestPointsAndBoxesHoldEverySample) {
  Random random(30);
  for (int i = 0; i < 500; ++i) {
    GxBezier const s = i % 2 ? random.segment(100) : random.gridSegment(3);
    double tMax, yMax, tMin, yMin;
    s.getMaxYTValue(tMax, yMax);
    s.getMinYTValue(tMin, yMin);
    ASSERT_EQ(s.bValue(tMax).yval(), yMax);
    ASSERT_EQ(s.bValue(tMin).yval(), yMin);
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

TEST(GxBezierExtremes, AVanishingCubicCoefficientTakesTheQuadraticRoute) {
  // y is t^3-free: -9t + 6t^2 (meerk40t/svgelements#214, where the box came out short).
  Box const box = tightBox(support::bezier(0, 0, -2, -3, -1, -4, 0, -3));
  EXPECT_NEAR(box.minX, -1.1547005383792515, 1e-15);
  EXPECT_NEAR(box.minY, -3.375, 1e-15);
  EXPECT_EQ(box.maxX, 0.0);
  EXPECT_EQ(box.maxY, 0.0);
  // A handle on the start (Pomax/bezierjs#37).
  Box const other = tightBox(support::bezier(100, 25, 100, 25, 110, 100, 150, 195));
  EXPECT_TRUE(other.minX == 100 && other.minY == 25 && other.maxX == 150 && other.maxY == 195);
}

TEST(GxBezierRoots, EveryHeightIsReachedWhereReported) {
  Random random(31);
  for (int i = 0; i < 2000; ++i) {
    GxBezier const s = random.segment(100);
    double const y = random.uniform(-100, 100);
    GxList<double> list;
    int const count = s.findRoots(list, y, 0.0, 1.0);
    ASSERT_EQ(count, static_cast<int>(list.length()));
    int crossings = 0;
    for (int k = 0; k < 100; ++k) {
      bool const below = s.bValue(k / 100.0).yval() < y;
      crossings += below != (s.bValue((k + 1) / 100.0).yval() < y);
    }
    ASSERT_GE(count, crossings);
    for (double const t : valuesOf(list)) ASSERT_NEAR(s.bValue(t).yval(), y, 1e-9);
  }
}

TEST(GxBezierRoots, BoundsAreInclusiveAndResultsAreAppended) {
  GxBezier const s = support::evenLine(0, 0, 9, 3);
  GxList<double> list;
  EXPECT_EQ(s.findRoots(list, 0.0, 0.0, 1.0), 1);
  EXPECT_EQ(s.findRoots(list, 1.5, 0.5, 0.5), 2);
  EXPECT_EQ(s.findRoots(list, 1.5, 0.6, 0.4), 2);
  GxList<Point> points;
  points.add(Point(0, 0));
  EXPECT_EQ(s.findRoots(points, 1.5, 0.0, 1.0), 2);
  EXPECT_NEAR_POINT(points(1), Point(4.5, 1.5), 1e-15);
}

TEST(GxBezierRoots, ParametersOfPoints) {
  Random random(32);
  for (int i = 0; i < 2000; ++i) {
    GxBezier s = random.segment(100);
    Point const p = s.bValue(random.uniform(0, 1));
    double t = -1.0;
    ASSERT_EQ(s.findTValue(p, t, 1e-6), 1);
    ASSERT_TRUE(support::near(s.bValue(t), p, 1e-3));
  }
  double t = -1.0;
  GxBezier upright = support::evenLine(3, 0, 3, 30);
  EXPECT_EQ(upright.findTValue(Point(3, 12), t, 1e-6), 1) << "through y: x has no extent";
  EXPECT_NEAR(t, 0.4, 1e-12);
  GxBezier level = support::evenLine(0, 3, 30, 3);
  EXPECT_EQ(level.findTValue(Point(12, 3.2), t, 0.5), 0) << "outside the box, whatever tolerance";
  EXPECT_EQ(level.findTValue(Point(12, 3.05), t, 0.5), 1);
  EXPECT_EQ(level.findTValue(Point(30.4, 3), t, 0.5), 1) << "ends are looked at first";
  EXPECT_EQ(t, 1.0);
}

TEST(GxBezierRoots, InflectionOnlyWhereThePolygonTurnsBothWays) {
  double t = 7.0;
  GxBezier arc = support::quarterArc(100);
  EXPECT_EQ(arc.findInflectionPoint(t), 0);
  GxBezier line = support::evenLine(0, 0, 9, 3);
  EXPECT_EQ(line.findInflectionPoint(t), 0);
  EXPECT_EQ(t, 7.0);
  GxBezier s = support::sShape();
  EXPECT_EQ(s.findInflectionPoint(t), 1);
  EXPECT_NEAR(t, 0.5, 1e-12);
  EXPECT_NEAR(s.dValue(t).cross(s.ddValue(t)), 0.0, 1e-6);
  GxBezier wave = support::bezier(0, 0, 1, 1, 2, -1, 3, 0);  // linebender/kurbo cubicbez.rs
  EXPECT_EQ(wave.findInflectionPoint(t), 1);
  EXPECT_NEAR(t, 0.5, 1e-15);
  // Two inflections where the polygon turns one way: none is looked for (paperjs/paper.js
  // Curve.js).
  GxBezier two = support::bezier(100, 200, 200, 100, 160, 120, 200, 200);
  EXPECT_EQ(two.findInflectionPoint(t), 0);
}

TEST(GxBezierLength, OfCurvesKnownByHand) {
  EXPECT_NEAR(support::evenLine(0, 0, 30, 40).length(0.0), 50.0, 1e-12);
  double const quarter = support::quarterArc(100).length(0.0);
  EXPECT_NEAR(quarter, 157.0796, 0.11);
  EXPECT_EQ(support::sShape().length(1.0), 0.0);
  EXPECT_NEAR(support::pointLike(1, 1).length(0.0), 0.0, 1e-14);
  support::OpenBezier const s(support::sShape());
  for (int const chords : {1, 0, -5}) {
    EXPECT_EQ(s.length(chords, 0.25), s.bValue(0.25).distance(s[3]));
  }
}

TEST(GxBezierLength, FixedDistancesAreMetFromBothSides) {
  GxBezier const s = support::sShape();
  for (double const d : {1.0, 10.0, 60.0}) {
    double lo = 0.2;
    double hi = 1.0;
    double const after = s.splitAtFixedLengthAfter(d, 0, lo, hi, 0.2);
    EXPECT_NEAR(s.bValue(after).distance(s.bValue(0.2)), d, 0.1);
    EXPECT_TRUE(0.2 <= lo && lo <= after && after <= hi);
    lo = 0.0;
    hi = 0.8;
    double const before = s.splitAtFixedLengthBefore(d, 0, lo, hi, 0.8);
    EXPECT_NEAR(s.bValue(before).distance(s.bValue(0.8)), d, 0.1);
    EXPECT_TRUE(lo <= before && before <= hi && hi <= 0.8);
  }
}

TEST(GxBezierLength, FixedDistancesEndAtEndsEmptyBracketsAndTheirCounter) {
  GxBezier const s = support::evenLine(0, 0, 10, 0);
  double lo = 0.25;
  double hi = 1.0;
  EXPECT_EQ(s.splitAtFixedLengthAfter(99.0, 0, lo, hi, 0.25), 1.0);
  EXPECT_EQ(s.splitAtFixedLengthAfter(3.0, 0, hi, lo, 0.25), 1.0) << "the near end of no bracket";
  EXPECT_EQ(s.splitAtFixedLengthAfter(3.0, 16, lo, hi, 0.25), 0.625) << "one midpoint";
  EXPECT_TRUE(lo == 0.25 && hi == 1.0);
  lo = 0.0;
  hi = 0.75;
  EXPECT_EQ(s.splitAtFixedLengthBefore(99.0, 0, lo, hi, 0.75), 0.0);
  EXPECT_EQ(s.splitAtFixedLengthBefore(3.0, 0, hi, lo, 0.75), 0.0);
  // A bracket that cannot be halved any more, and a counter that would run for ever.
  lo = 0.5;
  hi = std::nextafter(0.5, 1.0);
  double const t = s.splitAtFixedLengthAfter(3.0, -2147483647, lo, hi, 0.0);
  EXPECT_TRUE(t == 0.5 || t == hi);
}

}  // namespace
