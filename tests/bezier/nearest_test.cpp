// The nearest point of a segment, and the parameter of a point.
#include "crv/crv.h"
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

using Point = GxCoord<double>;
using support::OpenBezier;
using support::Random;

double nearestT(GxBezier const& s, Point const& p) {
  double t = -7.0;
  s.findNearestPointTValue(p, t);
  return t;
}

TEST(GxBezierNearest, FeetOfPerpendicularsAndEnds) {
  GxBezier arc = support::quarterArc(100);
  EXPECT_NEAR(nearestT(arc, Point(70, 70)), 0.5, 1e-9);
  Point nearest;
  EXPECT_EQ(arc.findNearestPoint(Point(200, 200), nearest), 0);
  EXPECT_NEAR_POINT(nearest, Point(70.710678, 70.710678), 0.03);
  EXPECT_EQ(arc.findNearestPoint(Point(90, -50), nearest), 1);
  EXPECT_BITS(nearest, arc[0]);
  EXPECT_EQ(nearestT(arc, Point(-50, 90)), 1.0);
  EXPECT_BITS(arc.bValue(nearestT(arc, arc[3])), arc[3]);
}

TEST(GxBezierNearest, HardCasesHaveTheirAnswer) {
  struct Case {
    char const* source;
    GxBezier segment;
    Point query;
    double t;
    double distance;
  };
  double const third = 1.0 / 3;
  Case const cases[] = {
      {"linebender/kurbo#446",
       support::bezier(461, 123, 460.99999999999994, 123.00000000000004, 111, 319, 111, 319),
       Point(282.0379003395483, 223.21877580985594), 0.507547429735421, 0.0},
      {"kuribas/cubicbezier#1",
       support::bezier(52.44, 122.36, 0, 471.95, 506.91, 192.28, 349.59, 174.8), Point(319, 171),
       1.0, 30.8251212487477},
      {"linebender/kurbo cubicbez.rs", support::bezier(0, 0, third, 0, 2 * third, 0, 1, 1),
       Point(1.1, 1.1), 1.0, 0.1 * std::sqrt(2.0)},
      {"linebender/kurbo#57", support::evenLine(0, 0, 65, 40), Point(90, 30), 1.0,
       std::sqrt(725.0)},
      {"BelfrySCAD/BOSL2#1545", support::bezier(-78.2772, 0, -78.2772, 45, -78.2772, 90, 0, 90),
       Point(0, 90), 1.0, 0.0},
  };
  for (Case const& k : cases) {
    SCOPED_TRACE(k.source);
    EXPECT_NEAR(nearestT(k.segment, k.query), k.t, 1e-7);
    GxBezier segment = k.segment;
    Point nearest;
    EXPECT_EQ(segment.findNearestPoint(k.query, nearest), k.t == 1.0 ? 1 : 0);
    EXPECT_NEAR(nearest.distance(k.query), k.distance, 1e-9);
  }
}

TEST(GxBezierNearest, TiesGoToTheStartThenToEarlierPoints) {
  // Symmetric about x = 50: the ends and the middle of the bulge.
  GxBezier const s = support::bezier(0, 0, 0, 100, 100, 100, 100, 0);
  EXPECT_EQ(nearestT(s, Point(50, -10)), 0.0) << "both ends are equally near";
  double const t = nearestT(s, Point(50, 40));
  EXPECT_LT(s.bValue(t).distance(Point(50, 40)), s.bValue(0.5).distance(Point(50, 40)) + 1e-9);
}

TEST(GxBezierNearest, DegenerateSegmentsAreChordsOrPoints) {
  struct Case {
    GxBezier segment;
    Point query;
    Point nearest;
    int code;
  };
  Case const cases[] = {
      {support::pointLike(3, 4), Point(9, 9), Point(3, 4), 1},
      {support::retractedLine(0, 0, 10, 0), Point(4, 7), Point(4, 0), 0},
      {support::retractedLine(0, 0, 10, 0), Point(-4, 7), Point(0, 0), 1},
      {support::retractedLine(0, 0, 10, 0), Point(10 - 9e-8, 7), Point(10, 0), 1},
  };
  for (Case const& k : cases) {
    Point nearest;
    GxBezier segment = k.segment;
    EXPECT_EQ(segment.findNearestPoint(k.query, nearest), k.code);
    EXPECT_NEAR_POINT(nearest, k.nearest, 1e-7);
  }
}

/// No sample of the segment is nearer than what was found, by more than rounding.
TEST(GxBezierNearest, BeatsAThousandSamples) {
  Random random(20);
  for (int i = 0; i < 400; ++i) {
    GxBezier const s = i % 3 ? random.segment(100) : random.gridSegment(3);
    double const size = i % 3 ? 150 : 4;
    Point const p = i % 5 ? random.point(size) : s.bValue(random.uniform(0, 1));
    double const t = nearestT(s, p);
    ASSERT_TRUE(0.0 <= t && t <= 1.0);
    double const found = s.bValue(t).distance(p);
    for (int k = 0; k <= 1000; ++k) {
      ASSERT_LE(found, s.bValue(k / 1000.0).distance(p) + 1e-6)
          << support::text(p) << " segment " << i;
    }
  }
}

TEST(GxBezierNearest, DistancePolygonIsTheDotProductWithTheDerivative) {
  Random random(21);
  OpenBezier const s(random.segment(10));
  Point const p(3, -4);
  Point w[6];
  s.generate5DBezier(w, p);
  for (double const t : {0.0, 0.3, 1.0}) {
    double value = 0.0;
    double const binomials[] = {1, 5, 10, 10, 5, 1};
    for (int i = 0; i <= 5; ++i) {
      value += binomials[i] * std::pow(1 - t, 5 - i) * std::pow(t, i) * w[i].yval();
    }
    EXPECT_NEAR(value, (s.bValue(t) - p) * s.dValue(t), 1e-9);
  }
}

TEST(GxBezierNearest, ZeroIsASignOfItsOwn) {
  OpenBezier const s;
  double const nan = std::numeric_limits<double>::quiet_NaN();
  auto const changes = [&](double y0, double y1, double y2) {
    Point const w[] = {{0, y0}, {0.5, y1}, {1, y2}};
    return s.crossingCount(w, 2);
  };
  EXPECT_EQ(changes(1, 0, 1), 2);
  EXPECT_EQ(changes(1, -1, 1), 2);
  EXPECT_EQ(changes(1, 2, 3), 0);
  EXPECT_EQ(changes(0, nan, -0.0), 0) << "what is not a number has no sign";
  Point const one[] = {{0, 1}};
  EXPECT_EQ(s.crossingCount(one, 0), 0);
}

TEST(GxBezierNearest, RootsOfPolygonsAscendAndMoreThanFiveAreKept) {
  OpenBezier const s;
  double roots[64];
  Point w[6];
  for (int i = 0; i < 6; ++i) w[i] = Point(i * 0.2, i - 1.7);
  ASSERT_EQ(s.findRoots(w, 5, 0, roots), 1);
  EXPECT_NEAR(roots[0], 0.34, 1e-12);
  ASSERT_EQ(s.findRoots(w, 5, 64, roots), 1);
  EXPECT_EQ(roots[0], 0.5) << "at the deepest level the middle of the range";

  // On the curve, the polynomial is zero up to rounding over a stretch.
  Random random(22);
  int most = 0;
  for (int i = 0; i < 3000; ++i) {
    OpenBezier const tiny(random.segment(1e-4));
    Point polygon[6];
    tiny.generate5DBezier(polygon, tiny.bValue(random.uniform(0, 1)));
    int const count = tiny.findRoots(polygon, 5, 0, roots);
    for (int k = 1; k < count; ++k) ASSERT_LE(roots[k - 1], roots[k]);
    most = std::max(most, count);
  }
  EXPECT_GT(most, 5);
  EXPECT_LE(most, 64);
}

TEST(GxBezierNearest, AnyDoublesGiveAnAnswerInRange) {
  double const special[] = {0.0,
                            1.0,
                            -3e-320,
                            1e-9,
                            1e160,
                            -1e30,
                            1.7e308,
                            std::numeric_limits<double>::infinity(),
                            std::numeric_limits<double>::quiet_NaN()};
  Random random(23);
  for (int i = 0; i < 5000; ++i) {
    auto const any = [&] { return special[random.whole(0, 8)]; };
    GxBezier s;
    for (int k = 0; k < 4; ++k) s(k) = Point(any(), any());
    double const t = nearestT(s, Point(any(), any()));
    ASSERT_TRUE(0.0 <= t && t <= 1.0) << t;
  }
}

TEST(GxBezierParameter, FindsPointsOnTheSegmentAndOnlyThose) {
  GxBezier s = support::quarterArc(100);
  for (double const t : {0.0, 0.1, 0.5, 0.9, 1.0}) {
    double const found = s.findParameter(s.bValue(t), 0.123, 1e-6);
    ASSERT_NE(found, -1.0) << t;
    EXPECT_NEAR_POINT(s.bValue(found), s.bValue(t), 2e-6);
  }
  Point const off = s.bValue(0.5) + GxVector<double>(0.4, 0.4);
  EXPECT_EQ(s.findParameter(off, 0.5, 0.3), -1.0);
  EXPECT_NEAR(s.findParameter(off, 0.5, 0.5), 0.5, 1e-9) << "the tolerance is of each coordinate";
  GxBezier point = support::pointLike(1, 1);
  EXPECT_EQ(point.findParameter(Point(1, 1), 0.9, 0.5), 0.5) << "starts in the middle and stays";
  OpenBezier line(support::evenLine(0, 0, 30, 0));
  EXPECT_NEAR(line.parameter(Point(12, 5), 0.9), 0.4, 1e-15);
}

}  // namespace
