#include "tests/support/expect.h"

namespace {

using namespace support;

TEST(Tolerance, IsOutsideForNumbersAndInsideForPoints) {
  EXPECT_FALSE(IS_ZERO(1e-9, 1e-9) || IS_EQUAL(1.0, 1.5, 0.5) || IS_ZERO(kNaN, 1e300));
  EXPECT_TRUE(IS_ZERO(std::nextafter(1e-9, 0.0), 1e-9));
  EXPECT_FALSE(Point(1, 2) == Point(1, 3) || Point(1, 2) == Point(0, 2));
  Point const o(0, 0), e(10, 0);
  EXPECT_TRUE(isEqual(o, Point(3, 4), 5.0));
  EXPECT_FALSE(isEqual(o, Point(3, 4), std::nextafter(5.0, 0.0)));
  EXPECT_TRUE(pointOnLineSegment(Point(12, 0), o, e, 2.0));
  EXPECT_FALSE(pointOnLineSegment(Point(12.1, 0), o, e, 2.0));
  EXPECT_TRUE(quickCheckPointOnLine(Point(99, 2), o, e, 2.0));
  EXPECT_TRUE(quickCheckPointOnLine(Point(3, 4), o, o, 5.0));
  EXPECT_TRUE(isPointInBox(Point(-1, 21), 0, 0, 10, 20, 1.0));
  EXPECT_TRUE(isPointInBox(Point(11, -1), 0, 0, 10, 20, 1.0));
  EXPECT_FALSE(isPointInBox(Point(-1, 21.1), 0, 0, 10, 20, 1.0));
}

TEST(Lines, CrossWhereTheyMeetAndNearestPointsEndWhereTheyEnd) {
  Point const a(0, 0), b(10, 0);
  Point out(7, 7);
  EXPECT_EQ(intersect(out, a, Point(1, 1), Point(5, 0), Point(6, 1)), 1);
  EXPECT_EQ(intersect(out, Point(0, kNaN), a, Point(5, 0), Point(6, 1)), 1);
  EXPECT_BITS(out, Point(7, 7));
  EXPECT_EQ(intersect(&out, a, Point(1, 1), Point(0, 4), Point(1, 3)), 0);
  EXPECT_BITS(out, Point(2, 2));
  EXPECT_BITS(closestToLineSegment(a, b, Point(4, 3)), Point(4, 0));
  EXPECT_BITS(closestToLineSegment(a, b, Point(-4, 3)), a);
  EXPECT_BITS(closestToLineSegment(a, a, Point(14, 3)), a);
  EXPECT_EQ(distanceToLineSegment(a, b, Point(13, 4)), 5.0);
}

TEST(Vectors, TurnCounterClockwise) {
  Point const o(0, 0), x(1, 0), y(0, 2);
  EXPECT_DOUBLE_EQ(angle(x, o, y), std::acos(0.0));
  EXPECT_DOUBLE_EQ(angle(o, o, y), std::acos(0.0)) << "from the x direction";
  EXPECT_EQ(Are3PointsCCW(o, x, y), 1);
  EXPECT_EQ(Are3PointsCCW(o, y, x), -1);
  EXPECT_EQ(Are3PointsCCW(o, x, Point(2, 0)), 0);
  EXPECT_EQ(Vector(1, 2).cross(Vector(3, 5)), -1.0);
  EXPECT_EQ(Vector(1, 0).ortho(1).yval(), 1.0);
  double const turn = std::atan2(4.0, 3.0);
  EXPECT_NEAR_POINT(Gx2DRotate(turn) * Point(5, 10), Point(-5, 10), 1e-14);
  Point p(5, 10);
  (p += Vector(1, 2)).rotate(turn, Point(1, 2));
  EXPECT_NEAR_POINT(p, Point(-4, 12), 1e-14);
  EXPECT_EQ(Vector(0, 0).normalize().length(), 0.0);
  EXPECT_EQ(Vector(0, -4).normalize().yval(), -1.0);
}

TEST(Matrix, InverseUndoesAndASingularOneIsRefused) {
  Gx2DMatrix<double> m, inverse;
  double const elements[] = {2, 1, -3, 5};
  for (int i = 0; i < 4; ++i) m.set(i / 2, i % 2, elements[i]);
  m.set(2, 0, 99.0);
  ASSERT_EQ(m.invert(inverse), 1);
  for (double const singular : {10.0, kNaN}) {
    EXPECT_NEAR_POINT(inverse * Point(13, 13), Point(4, 5), 1e-14);
    m.set(1, 0, singular);
    EXPECT_EQ(m.invert(inverse), 0) << "and nothing is written";
  }
  EXPECT_NEAR_POINT(inverse * Point(13, 13), Point(4, 5), 1e-14);
}

}  // namespace
