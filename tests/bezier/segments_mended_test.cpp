// Known answers of segments whose inputs lie at the edge of what an operation takes.
#include "tests/support/data.h"
#include "tests/support/open.h"

#include <climits>
#include <list>

namespace {

using namespace support;

std::size_t polylineSize(GxBezier const& s, double tol,
                         GxBezierPolylineCondition const& condition) {
  std::list<Point> points;
  std::list<double> times;
  s.getPolyline(tol, points, times, condition);
  EXPECT_EQ(points.size(), times.size());
  return points.size();
}

/// Takes a piece as a line when its control polygon is shorter than 1, whatever the tolerance.
struct ShortPolygon : GxBezierPolylineCondition {
  int isALine(GxBezier const& s, double) const override {
    return s[0].distance(s[1]) + s[1].distance(s[2]) + s[2].distance(s[3]) < 1.0;
  }
  int isAPoint(GxBezier const&, double) const override { return 0; }
};

/// Takes no piece as a line, and pieces as points after so many questions.
struct NeverALine : GxBezierPolylineCondition {
  explicit NeverALine(int asked) : left(asked) {}
  int isALine(GxBezier const&, double) const override { return 0; }
  int isAPoint(GxBezier const&, double) const override { return left-- <= 0; }
  mutable int left;
};

TEST(GxBezierPolyline, ACallersConditionAloneJudgesItsTolerance) {
  GxBezier const arch = bezier(0, 0, 10, 20, 20, 20, 30, 0);
  for (double const tol : {0.1, 0.0, -1.0, kNaN}) {
    SCOPED_TRACE(tol);
    EXPECT_EQ(polylineSize(arch, tol, ShortPolygon()), 63u);
  }
  for (double const tol : {-1.0, kNaN}) {
    std::vector<Point> plain;
    arch.getPolyline(tol, plain);
    EXPECT_EQ(plain, (std::vector<Point>{arch[0], arch[3]}));
  }
  // The first piece is halved 2,200 times: 2,201 pieces are asked about before one must be a line.
  EXPECT_EQ(polylineSize(arch, 1.0, NeverALine(2200)), 1u);
  EXPECT_EQ(polylineSize(arch, 1.0, NeverALine(2201)), 2u);
}

TEST(GxBezierNearest, RootsAreFoundForDegreesOneToFiveAndAtAnyDepth) {
  OpenBezier const any;
  double roots[64];
  // Crosses zero at 0.3 of its range, whatever its degree.
  for (int degree = -1; degree <= 6; ++degree) {
    Point w[7];
    for (int i = 0; i <= degree; ++i) w[i] = Point(i, i - 0.3 * degree);
    bool const isInRange = 1 <= degree && degree <= 5;
    ASSERT_EQ(any.findRoots(w, degree, 0, roots), isInRange ? 1 : 0) << degree;
    if (isInRange) {
      EXPECT_NEAR(roots[0], 0.3 * degree, 1e-12);
    }
  }
  // From depth 64 on, the middle of the range is the root; sign changes are still halved apart.
  Point const once[] = {{0, -1}, {0.2, 1}, {0.4, 1}, {0.6, 1}, {0.8, 1}, {1, 1}};
  Point const twice[] = {{0, 1}, {0.2, -2}, {0.4, -2}, {0.6, -2}, {0.8, -2}, {1, 1}};
  for (int const depth : {64, INT_MAX}) {
    ASSERT_EQ(any.findRoots(once, 5, depth, roots), 1);
    EXPECT_EQ(roots[0], 0.5);
    ASSERT_EQ(any.findRoots(twice, 5, depth, roots), 2);
    EXPECT_NEAR_POINT(Point(roots[0], roots[1]), Point(0.25, 0.75), 0.0);
  }
}

TEST(GxBezierValue, ManyParametersGiveTheBitsOfOne) {
  GxBezier const s = sShape();
  Numbers const t = {0.0, -0.0, 0.3, 0.5, 1.0, -0.5, 1.5, kNaN, kInf};
  int const count = static_cast<int>(t.size());
  std::vector<Point> points(t.size()), alone(t.size());
  std::vector<Vector> derivatives(t.size());
  s.bValues(t.data(), count, points.data(), derivatives.data());
  s.bValues(t.data(), count, alone.data());
  for (std::size_t i = 0; i < t.size(); ++i) {
    SCOPED_TRACE(t[i]);
    Vector const d = s.dValue(t[i]);
    EXPECT_BITS(points[i], s.bValue(t[i]));
    EXPECT_BITS(alone[i], s.bValue(t[i]));
    EXPECT_BITS(Point(derivatives[i].xval(), derivatives[i].yval()), Point(d.xval(), d.yval()));
  }
  points[0] = Point(7, 7);
  s.bValues(t.data(), -1, points.data(), derivatives.data());
  EXPECT_BITS(points[0], Point(7, 7));
}

// Pieces are passed over where the segments lie beside each other, not where they cross or meet.
TEST(GxBezierIntersections, PiecesArePassedOverOnlyWithoutCrossings) {
  // Two segments | how many times their crossing is found; at a joint of pieces more than once.
  for (Row const k : table("0 0 1 1 2 2 3 3  3 0 3 1 3 5 3 6  2;"  // at an end and a middle
                           "0 0 1 1 2 2 3 3  3.0001 3.0001 4 4 5 5 6 6  0;"
                           "0 0 30 60 70 60 100 0  0 0.001 30 60.001 70 60.001 100 0.001  0;"
                           "0 0 30 60 70 -60 100 0  0 1 30 -59 70 61 100 1  2;"
                           "0 0 30 60 70 -60 100 0  100 0 70 60 130 60 200 0  1")) {
    GxBezier a = segmentOf(k);
    GxList<double> t, u;
    a.findIntersections(segmentOf({k.begin() + 8, k.end()}), t, u);
    EXPECT_EQ(t.length(), k[16]);
  }
}

TEST(GxBezierValue, PointersBecomeSegmentsAndVectorsComparators) {
  Point const points[] = {{0, 0}, {1, 2}, {3, 4}, {5, 6}};
  GxBezier const fromPointer = points;
  EXPECT_TRUE(fromPointer == bezier(0, 0, 1, 2, 3, 4, 5, 6));
  std::vector<double> values = {1.0, 3.0};
  GxBezier::Comperator const descending = values;
  EXPECT_TRUE(descending(1, 0));
  EXPECT_FALSE(descending(0, 1));
}

}  // namespace
