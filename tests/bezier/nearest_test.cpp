// The nearest point of a segment, and the parameter of a point.
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"

#include <algorithm>

namespace {

using support::bezier;
using support::OpenBezier;
using support::Point;
using support::Random;

double nearestT(GxBezier const& s, Point const& p) {
  double t = -7.0;
  s.findNearestPointTValue(p, t);
  return t;
}

TEST(GxBezierNearest, HardCasesHaveTheirAnswer) {
  struct Case {
    char const* source;
    GxBezier segment;
    Point query;
    double t, distance;
  };
  GxBezier const arc = support::quarterArc(100);
  GxBezier const line = support::retractedLine(0, 0, 10, 0);
  Case const cases[] = {
      {"linebender/kurbo#446",
       bezier(461, 123, 460.99999999999994, 123.00000000000004, 111, 319, 111, 319),
       Point(282.0379003395483, 223.21877580985594), 0.507547429735421, 0.0},
      {"kuribas/cubicbezier#1", bezier(52.44, 122.36, 0, 471.95, 506.91, 192.28, 349.59, 174.8),
       Point(319, 171), 1.0, 30.8251212487477},
      {"linebender/kurbo cubicbez.rs", support::cubicParabola(), Point(1.1, 1.1), 1.0,
       0.1 * std::sqrt(2.0)},
      {"linebender/kurbo#57", support::evenLine(0, 0, 65, 40), Point(90, 30), 1.0,
       std::sqrt(725.0)},
      {"BelfrySCAD/BOSL2#1545", bezier(-78.2772, 0, -78.2772, 45, -78.2772, 90, 0, 90),
       Point(0, 90), 1.0, 0.0},
      {"a foot", arc, Point(200, 200), 0.5, 200 * std::sqrt(2.0) - arc.bValue(0.5).distance({})},
      {"a start", arc, Point(90, -50), 0.0, std::sqrt(2600.0)},
      {"ends equally near: the start", bezier(0, 0, 0, 100, 100, 100, 100, 0), Point(50, -10), 0.0,
       std::sqrt(2600.0)},
      {"a point", support::pointLike(3, 4), Point(9, 8), 0.0, std::sqrt(52.0)},
      {"a chord", line, Point(5, 7), 0.5, 7.0},
      {"all but its end", line, Point(10 - 9e-8, 7), 1.0, 7.0},
  };
  for (Case const& k : cases) {
    SCOPED_TRACE(k.source);
    EXPECT_NEAR(nearestT(k.segment, k.query), k.t, 1e-7);
    Point nearest;
    EXPECT_EQ(GxBezier(k.segment).findNearestPoint(k.query, nearest),
              k.t == 0.0 || k.t == 1.0 ? 1 : 0);
    EXPECT_NEAR(nearest.distance(k.query), k.distance, 1e-9);
  }
}

TEST(GxBezierNearest, BeatsAThousandSamples) {
  Random random(20);
  for (int i = 0; i < 400; ++i) {
    GxBezier const s = i % 3 ? random.segment(100) : random.gridSegment(3);
    Point const p = i % 5 ? random.point(i % 3 ? 150 : 4) : s.bValue(random.uniform(0, 1));
    double const t = nearestT(s, p);
    ASSERT_TRUE(0.0 <= t && t <= 1.0);
    double const found = s.bValue(t).distance(p);
    for (int k = 0; k <= 1000; ++k) {
      ASSERT_LE(found, s.bValue(k / 1000.0).distance(p) + 1e-6)
          << support::text(p) << " segment " << i;
    }
  }
}

TEST(GxBezierNearest, ZeroIsASignOfItsOwn) {
  Point const w[] = {{0, 1}, {0.2, 0}, {0.4, 1}, {0.6, -1}, {0.8, support::kNaN}, {1, -2}};
  EXPECT_EQ(OpenBezier().crossingCount(w, 2), 2);
  EXPECT_EQ(OpenBezier().crossingCount(w + 2, 1), 1);
  EXPECT_EQ(OpenBezier().crossingCount(w + 4, 1), 1) << "what is not a number has no sign";
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
    tiny.generate5DBezier(w, tiny.bValue(random.uniform(0, 1)));
    int const count = tiny.findRoots(w, 5, 0, roots);
    ASSERT_TRUE(std::is_sorted(roots, roots + count));
    most = std::max(most, count);
  }
  EXPECT_TRUE(5 < most && most <= 64);
}

TEST(GxBezierParameter, FindsPointsOnTheSegmentAndOnlyThose) {
  GxBezier s = support::quarterArc(100);
  for (double const t : {0.0, 0.1, 0.5, 0.9, 1.0}) {
    EXPECT_NEAR_POINT(s.bValue(s.findParameter(s.bValue(t), 0.123, 1e-6)), s.bValue(t), 2e-6);
  }
  Point const off = s.bValue(0.5) + GxVector<double>(0.4, 0.4);
  EXPECT_EQ(s.findParameter(off, 0.5, 0.3), -1.0);
  EXPECT_NEAR(s.findParameter(off, 0.5, 0.5), 0.5, 1e-9) << "the tolerance is of each coordinate";
  EXPECT_EQ(support::pointLike(1, 1).findParameter(Point(1, 1), 0.9, 0.5), 0.5)
      << "starts in the middle and stays";
  EXPECT_NEAR(OpenBezier(support::evenLine(0, 0, 30, 0)).parameter(Point(12, 5), 0.9), 0.4, 1e-15);
}

}  // namespace
