#include "tests/support/expect.h"

namespace {

using support::kNaN;
using support::Point;
using Vector = GxVector<double>;

constexpr double kPi = 3.14159265358979323846;

TEST(Tolerance, ZeroAndEqualExcludeTheToleranceItself) {
  EXPECT_FALSE(IS_ZERO(1e-9, 1e-9));
  EXPECT_TRUE(IS_ZERO(std::nextafter(1e-9, 0.0), 1e-9));
  EXPECT_FALSE(IS_EQUAL(1.0, 1.5, 0.5));
  EXPECT_FALSE(IS_ZERO(kNaN, 1e300));
}

TEST(Lines, TestsOfPointsIncludeTheTolerance) {
  Point const o(0, 0);
  Point const a(3, 4);
  EXPECT_TRUE(isEqual(o, a, 5.0));
  EXPECT_FALSE(isEqual(o, a, std::nextafter(5.0, 0.0)));
  EXPECT_TRUE(pointOnLineSegment(Point(12, 0), o, Point(10, 0), 2.0));
  EXPECT_FALSE(pointOnLineSegment(Point(12.1, 0), o, Point(10, 0), 2.0));
  EXPECT_TRUE(quickCheckPointOnLine(Point(99, 2), o, Point(10, 0), 2.0));
  EXPECT_TRUE(quickCheckPointOnLine(Point(3, 4), o, o, 5.0));
  EXPECT_TRUE(isPointInBox(Point(-1, 11), 0, 0, 10, 10, 1.0));
  EXPECT_FALSE(isPointInBox(Point(-1, 11.1), 0, 0, 10, 10, 1.0));
}

TEST(Lines, CrossingOfTwoLines) {
  Point out(7, 7);
  EXPECT_EQ(intersect(&out, Point(0, 0), Point(1, 1), Point(0, 4), Point(1, 3)), 0);
  EXPECT_BITS(out, Point(2, 2));
  Point const kept(7, 7);
  out = kept;
  EXPECT_EQ(intersect(out, Point(0, 0), Point(1, 1), Point(5, 0), Point(6, 1)), 1);
  EXPECT_EQ(intersect(out, Point(0, kNaN), Point(0, 0), Point(5, 0), Point(6, 1)), 1);
  EXPECT_BITS(out, kept);
}

TEST(Lines, NearestPointOfALineSegment) {
  Point const a(0, 0), b(10, 0);
  EXPECT_BITS(closestToLineSegment(a, b, Point(4, 3)), Point(4, 0));
  EXPECT_BITS(closestToLineSegment(a, b, Point(-4, 3)), a);
  EXPECT_BITS(closestToLineSegment(a, a, Point(14, 3)), a);
  EXPECT_EQ(distanceToLineSegment(a, b, Point(13, 4)), 5.0);
}

TEST(Lines, AnglesTurnsAndSensesAreCounterClockwise) {
  Point const o(0, 0);
  EXPECT_DOUBLE_EQ(angle(Point(1, 0), o, Point(0, 2)), kPi / 2);
  EXPECT_DOUBLE_EQ(angle(o, o, Point(0, 2)), kPi / 2) << "from the x direction";
  EXPECT_EQ(Are3PointsCCW(o, Point(1, 0), Point(1, 1)), 1);
  EXPECT_EQ(Are3PointsCCW(o, Point(1, 0), Point(1, -1)), -1);
  EXPECT_EQ(Are3PointsCCW(o, Point(1, 0), Point(2, 0)), 0);
  EXPECT_EQ(Vector(1, 2).cross(Vector(3, 5)), -1.0);
  EXPECT_EQ(Vector(1, 0).ortho(1).yval(), 1.0);
  Point p(3, 1);
  p.rotate(kPi / 2, Point(1, 1));
  EXPECT_NEAR_POINT(p, Point(1, 3), 1e-15);
  EXPECT_NEAR_POINT(Gx2DRotate(kPi / 2) * Point(2, 1), Point(-1, 2), 1e-15);
  EXPECT_EQ(Vector(0, 0).normalize().length(), 0.0);
  EXPECT_EQ(Vector(0, -4).normalize().yval(), -1.0);
}

TEST(Matrix, InverseUndoesAndASingularOneIsRefused) {
  Gx2DMatrix<double> m;
  double const e[2][2] = {{2, 1}, {-3, 5}};
  for (int r = 0; r < 2; ++r) {
    for (int c = 0; c < 2; ++c) m.set(r, c, e[r][c]);
  }
  m.set(2, 0, 99.0);
  Gx2DMatrix<double> inverse;
  ASSERT_EQ(m.invert(inverse), 1);
  EXPECT_NEAR_POINT(inverse * (m * Point(7, -3)), Point(7, -3), 1e-14);
  m.set(1, 0, 10.0);
  EXPECT_EQ(m.invert(inverse), 0);
  m.set(1, 0, kNaN);
  EXPECT_EQ(m.invert(inverse), 0);
  EXPECT_NEAR_POINT(inverse * Point(13, 0), Point(5, 3), 1e-14) << "untouched on failure";
}

}  // namespace
