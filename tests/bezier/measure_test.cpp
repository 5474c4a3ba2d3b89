// Extremes, roots, lengths; the nearest point, the parameter of a point, the closest samples.
#include "tests/support/expect.h"
#include "tests/support/open.h"

namespace {

using namespace support;

TEST(GxBezierExtremes, LowestAndHighestParametersAreWrittenAtTheListsStart) {
  // Control points | lowest, highest.
  for (Row const k : table(R"(0 5 3 4 6 2 9 1  1 0; 2 2 2 2 2 2 2 2  0 1; 0 0 1 4 2 4 3 0  0 0.5;
            0 0 1 -4 2 4 3 0  0.21132486540518712 0.78867513459481288; 0 0 1 0 2 9 3 9  0 1)")) {
    GxList<double> list;
    EXPECT_EQ(segmentOf(k).getYMinMaxTValues(list), 2);
    EXPECT_NEAR_POINT(Point(list(0), list(1)), Point(k[8], k[9]), 1e-15);
  }
  GxList<double> list = listOf<double>({42.0});
  EXPECT_EQ(evenLine(0, 5, 9, 1).getYMinMaxTValues(list), 3) << "the list's length";
  EXPECT_EQ(list(0), 0.0) << "entries 0 and 1 were exchanged, the lower end lying at the end";
  EXPECT_EQ(retractedLine(0, 1, 9, 5).getYMinMaxTValues(list), 2) << "flat handles";
}

TEST(GxBezierExtremes, BoxesAreTightAndHoldTheHighestAndLowestPoints) {
  Random random(30);
  for (int i = 0; i < 500; ++i) {
    GxBezier const s = i % 2 ? random.segment(100) : random.gridSegment(3);
    double tMax, yMax, tMin, yMin, box[4], hull[4];
    s.getMaxYTValue(tMax, yMax), s.getMinYTValue(tMin, yMin);
    s.localMinMax(box[0], box[1], box[2], box[3]);
    s.getConvexHull(hull[0], hull[1], hull[2], hull[3]);
    ASSERT_TRUE(s.bValue(tMax).yval() == yMax && s.bValue(tMin).yval() == yMin);
    ASSERT_TRUE(tMax == 0.0 || s[0].yval() != yMax) << "the start comes first";
    ASSERT_NEAR_POINT(Point(yMin, yMax), Point(box[1], box[3]), 1e-9);
    for (int axis = 0; axis < 2; ++axis) {
      auto const coordinate = [axis](Point const& p) { return axis ? p.yval() : p.xval(); };
      double low = coordinate(s[0]), high = low;
      for (int k = 0; k <= 200; ++k) {
        low = min(low, coordinate(s.bValue(k / 200.0)));
        high = max(high, coordinate(s.bValue(k / 200.0)));
      }
      ASSERT_TRUE(hull[axis] <= low && high <= hull[axis + 2]);
      ASSERT_TRUE(box[axis] < low + 1e-9 && high - 1e-9 < box[axis + 2]);
      ASSERT_NEAR_POINT(Point(low, high), Point(box[axis], box[axis + 2]), i % 2 ? 1e-2 : 3e-4);
    }
  }
}

TEST(GxBezierRoots, EveryHeightIsReachedWhereReportedAndBoundsAreInclusive) {
  Random random(31);
  for (int i = 0; i < 2000; ++i) {
    GxBezier s = random.segment(100);
    double const t = random.uniform(0, 1);
    Point const p = s.bValue(t);
    GxList<double> list;
    s.findRoots(list, p.yval(), 0.0, 1.0);
    double least = 1.0, found = -1.0;
    for (double const root : valuesOf(list)) {
      ASSERT_NEAR(s.bValue(root).yval(), p.yval(), 1e-9);
      least = min(least, std::fabs(root - t));
    }
    ASSERT_LT(least, 1e-6);
    ASSERT_EQ(s.findTValue(p, found, 1e-6), 1);
    ASSERT_NEAR_POINT(s.bValue(found), p, 2e-6);
  }
  GxList<Point> points = listOf<Point>({{0, 0}});
  EXPECT_EQ(evenLine(0, 0, 9, 3).findRoots(points, 0.0, 0.0, 1.0), 2) << "results are appended";
  EXPECT_EQ(evenLine(0, 0, 9, 3).findRoots(points, 1.5, 0.5, 0.5), 3);
  EXPECT_NEAR_POINT(points(2), Point(4.5, 1.5), 1e-15);
}

TEST(GxBezierRoots, ParametersOfPoints) {
  double t = -1.0;
  GxBezier level = evenLine(0, 3, 30, 3);
  EXPECT_EQ(evenLine(3, 0, 3, 30).findTValue(Point(3, 12), t, 1e-6), 1) << "x has no extent";
  EXPECT_NEAR(t, 0.4, 1e-12);
  EXPECT_EQ(level.findTValue(Point(12, 3.2), t, 0.5), 0) << "outside the box, whatever tolerance";
  EXPECT_EQ(level.findTValue(Point(12, 3.05), t, 0.5), 1);
  EXPECT_EQ(level.findTValue(Point(30.4, 3), t, 0.5), 1) << "ends are looked at first";
  EXPECT_EQ(t, 1.0);
}

TEST(GxBezierRoots, InflectionOnlyWhereThePolygonTurnsBothWays) {
  // Control points | the inflection, 7 for none: (3t, 1000 (t - 0.3)^3), linebender/kurbo's, one
  // with another at -1, an arch, and paperjs/paper.js's with two in a polygon that turns one way.
  for (Row const k : table(R"(0 -27 1 63 2 -147 3 343  0.3; 0 0 1 1 2 -1 3 0  0.5;
            0 0 -2 -2 0 1 -2 0  0.5; 0 0 1 1 2 1 3 0  7; 100 200 200 100 160 120 200 200  7)")) {
    double t = 7.0;
    EXPECT_EQ(segmentOf(k).findInflectionPoint(t), k[8] != 7.0);
    EXPECT_NEAR(t, k[8], 1e-12);
  }
}

/// The parameter at a distance after lo; its mirror image is that before lo.
double splitBothWays(GxBezier const& s, double distance, int steps, double lo, double hi) {
  GxBezier mirrored = s;
  mirrored.reverse();
  double nearEnd = 1.0 - lo, farEnd = 1.0 - hi;
  double const u = mirrored.splitAtFixedLengthBefore(distance, steps, farEnd, nearEnd, nearEnd);
  double const t = s.splitAtFixedLengthAfter(distance, steps, lo, hi, lo);
  EXPECT_TRUE(t == 1.0 - u && lo == 1.0 - nearEnd && hi == 1.0 - farEnd);
  return t;
}

TEST(GxBezierLength, FixedDistancesAreMetFromBothSidesOrEndAtAnEnd) {
  // Distance, steps made, bracket | parameter along 10 units.
  for (Row const k : table(R"(3 0 0.25 1  0.55; 3 16 0.25 1  0.625; 3 15 0.25 1  0.4375;
            20 0 0.25 1  1; 3 0 1 0.25  1; 2.45 0 0.25 0.5  0.5; 3 0 0.25 0.5  0.5)")) {
    double const t = splitBothWays(evenLine(0, 0, 10, 0), k[0], static_cast<int>(k[1]), k[2], k[3]);
    EXPECT_NEAR(t, k[4], k[1] == 0.0 ? 0.01 : 0.0);
  }
  EXPECT_NEAR(quarterArc(100).length(0.0), 157.0796, 0.11);
  // Deliberate: on the tolerance of 0.1 the middle is taken, the far end is not.
  EXPECT_EQ(splitBothWays(retractedLine(0, 0, 0.2, 0), 0.0, 0, 0.0, 1.0), 0.5);
  EXPECT_EQ(splitBothWays(retractedLine(0, 0, 0.2, 0), 0.0, 0, 0.0, 0.5), 0.25);
}

void expectNearest(GxBezier s, Point const& p, double t, double distance) {
  double found = -7.0;
  s.findNearestPointTValue(p, found);
  EXPECT_NEAR(found, t, 1e-7);
  Point nearest;
  EXPECT_EQ(s.findNearestPoint(p, nearest), t == 0.0 || t == 1.0 ? 1 : 0);
  EXPECT_NEAR(nearest.distance(p), distance, 1e-9);
}

TEST(GxBezierNearest, HardCasesHaveTheirAnswer) {
  for (HardCase const& hard : hardCases("nearest")) {
    SCOPED_TRACE(hard.source);
    auto const& f = hard.fields;
    expectNearest(segmentOf(f[0]), Point(f[1][0], f[1][1]), f[2][0], f[2][1]);
  }
  expectNearest(quarterArc(100), Point(200, 200), 0.5, 200 * std::sqrt(2.0) - 100);
  expectNearest(quarterArc(100), Point(-50, -50), 0.0, std::sqrt(25000.0));  // both ends: the start
  expectNearest(pointLike(3, 4), Point(9, 8), 0.0, std::sqrt(52.0));
  expectNearest(retractedLine(0, 0, 10, 0), Point(5, 7), 0.5, 7.0);
  expectNearest(retractedLine(0, 0, 10, 0), Point(10 - 9e-8, 7), 1.0, 7.0);
}

TEST(GxBezierNearest, BeatsAThousandSamples) {
  Random random(20);
  for (int i = 0; i < 400; ++i) {
    GxBezier s = i % 3 ? random.segment(100) : random.gridSegment(3);
    Point const p = i % 5 ? random.point(i % 3 ? 150 : 4) : s.bValue(random.uniform(0, 1));
    double t = -7.0;
    s.findNearestPointTValue(p, t);
    ASSERT_TRUE(0.0 <= t && t <= 1.0);
    double const found = s.bValue(t).distance(p);
    Point nearest;
    s.findNearestPoint(p, nearest);
    ASSERT_NEAR(nearest.distance(p), found, 1e-9);
    for (int k = 0; k <= 1000; ++k) {
      ASSERT_LE(found, s.bValue(k / 1000.0).distance(p) + 1e-6) << text(p) << " in " << i;
    }
  }
}

TEST(GxBezierParameter, FindsPointsOnTheSegmentAndOnlyThose) {
  GxBezier s = quarterArc(100);
  for (double const t : {0.0, 0.1, 0.5, 0.9, 1.0}) {
    EXPECT_NEAR_POINT(s.bValue(s.findParameter(s.bValue(t), 0.123, 1e-6)), s.bValue(t), 2e-6);
  }
  Point const off = s.bValue(0.5) + Vector(0.4, 0.4);
  EXPECT_EQ(s.findParameter(off, 0.5, 0.3), -1.0);
  EXPECT_NEAR(s.findParameter(off, 0.5, 0.5), 0.5, 1e-9) << "the tolerance is of each coordinate";
  EXPECT_EQ(evenLine(0, 0, 30, 0).findParameter(Point(12, 5), 0.5, 1.0), -1.0);
  EXPECT_EQ(pointLike(1, 1).findParameter(Point(1, 1), 0.9, 0.5), 0.5) << "starts in the middle";
  EXPECT_NEAR(OpenBezier(evenLine(0, 0, 30, 0)).parameter(Point(12, 5), 0.9), 0.4, 1e-15);
}

TEST(GxBezierClosestPoints, TheLeastOfAllPairsOfSamples) {
  double t = -7.0, u = -7.0;
  GxBezier line = evenLine(0, 0, 10, 0);
  EXPECT_EQ(line.findClosestPoints(evenLine(0, 46341, 10, 46341), t, u), 2147483647.0);
  EXPECT_BITS(Point(t, u), Point(-7, -7));
  EXPECT_NEAR(line.findClosestPoints(evenLine(10.4, 0, 10, 0), t, u), 0.16, 1e-9) << "its start";
  EXPECT_EQ(line.findClosestPoints(line, t, u), 0.0);
  EXPECT_BITS(Point(t, u), Point(0, 0)) << "the first of the equal pairs";
  EXPECT_NEAR(line.findClosestPoints(evenLine(3, 5, 13, -5), t, u), 0.0, 1e-9);
  EXPECT_NEAR_POINT(Point(t, u), Point(0.8, 0.5), 1e-9);
}

}  // namespace
