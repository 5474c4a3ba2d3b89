// Evaluation, subdivision, flatness and the Bernstein helpers.
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"

#include <memory>

namespace {

using support::bezier;
using support::OpenBezier;
using support::Point;

TEST(GxBezier, IsEditedInPlaceAndSortsDescending) {
  GxBezier b = support::sShape();
  b.reverse();
  b.flip();
  b.scale(2.0, 3.0);
  EXPECT_BITS(b, bezier(200, -300, 120, 120, 80, -420, 0, -0.0));
  double const numbers[] = {1.0, 2.0, 1.0, support::kNaN};
  int const expected[] = {0, 1, 0, 1};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(OpenBezier::compFunc(numbers, numbers + i), expected[i]);
}

TEST(GxBezierEvaluate, ThePolynomialIsKnownInsideAndOutside) {
  GxBezier const s = support::cubicParabola();
  for (double const t : {-0.5, 0.25, 1.5}) {
    EXPECT_NEAR_POINT(s.bValue(t), Point(t, t * t * t), 1e-15);
    EXPECT_NEAR_POINT(Point(s.dValue(t).xval(), s.dValue(t).yval()), Point(1, 3 * t * t), 8e-15);
    EXPECT_NEAR_POINT(Point(s.curvatureValue(t).xval(), s.ddValue(t).yval()), Point(6 * t, 6 * t),
                      4e-14);
  }
}

TEST(GxBezierEvaluate, EndsSumsAndPartsAgreeInsideAndOutside) {
  support::Random random(12);
  for (int i = 0; i < 2000; ++i) {
    OpenBezier const s(i % 2 ? random.segment(1e3) : random.gridSegment(5));
    double const t = random.uniform(-0.5, 1.5);
    double const u = random.uniform(0.0, 1.0);
    ASSERT_TRUE(support::sameBits(s.bValue(-0.0), s[0]) && support::sameBits(s.bValue(1.0), s[3]));
    ASSERT_NEAR_POINT(s.bValue(1e-12), s[0], 1e-7);
    Point const points[] = {s[0], s[1], s[2], s[3]};
    ASSERT_NEAR_POINT(s.value(points, t, 3), s.bValue(t), 1e-10);
    ASSERT_NEAR_POINT(s.value(points, t, 1), s[0] + (s[1] - s[0]) * t, 1e-10);
    GxBezier left, right, inPlace = s, end;
    s.split(left, right, t);
    inPlace.split(inPlace, end, t);
    ASSERT_TRUE(inPlace == left && end == right);
    (inPlace = s).split(inPlace, t);
    ASSERT_TRUE(inPlace == right);
    s.split(inPlace, end, 1.0);  // whole numbers stay exact
    ASSERT_TRUE(i % 2 || (inPlace == s && end == support::pointLike(s[3].xval(), s[3].yval())));
    inPlace.reverse();
    s.split(end, inPlace, 0.0);
    ASSERT_TRUE(i % 2 || (inPlace == s && end == support::pointLike(s[0].xval(), s[0].yval())));
    ASSERT_TRUE(support::sameBits(left[0], s[0]) && support::sameBits(right[3], s[3]));
    ASSERT_TRUE(support::sameBits(left[3], right[0]));
    ASSERT_NEAR_POINT(left.bValue(u), s.bValue(u * t), 1e-9);
    ASSERT_NEAR_POINT(right.bValue(u), s.bValue(t + u * (1 - t)), 1e-9);
  }
}

TEST(GxBezierSplit, PolygonsOfAnyDegreeSnapTinyValuesToZero) {
  Point w[8], left[8], right[8];
  for (int i = 0; i < 8; ++i) w[i] = Point(i, i % 2 ? 1e-10 : -1e-10);
  Point const middle = OpenBezier().genericSplit(w, 7, 0.5, left, right);
  EXPECT_BITS(left[7], middle);
  EXPECT_BITS(right[0], middle);
  EXPECT_BITS(left[0], w[0]) << "given points are not snapped";
  for (int i = 1; i < 8; ++i) EXPECT_EQ(support::bitsOf(left[i].yval()), 0u);
  EXPECT_BITS(OpenBezier().genericSplit(w, 7, 0.5, nullptr, nullptr), middle);
}

TEST(GxBezierFlatness, WhatIsALineAndWhatIsAPoint) {
  struct Case {
    GxBezier segment;
    double tol;
    int line, point;
  };
  Case const cases[] = {
      {support::pointLike(3, 4), 0.0, 1, 1},
      {support::retractedLine(0, 0, 9, 5), 0.0, 1, 0},
      {bezier(0, 0, -1, 0, 2, 0, 3, 0), 0.5, 0, 0},  // on the line, before its start
      {bezier(0, 0, 0, 0, 4, 0, 3, 0), 0.5, 0, 0},   // on the line, beyond its end
      {bezier(0, 0, 1, 1, 2, 0, 3, 0), 1.0, 1, 0},   // on the tolerance
      {bezier(0, 0, 1, 1, 2, 0, 3, 0), 0.999, 0, 0},
      {bezier(0, 0, 5, 0, -5, 0, 0, 0), 4.9, 0, 0},  // P1 and P2 are far from the ends
      {bezier(0, 0, 1, 0, 0, 0, 1, 0), 1.0, 1, 1},
      {bezier(0, 0, support::kNaN, 0, 2, 0, 3, 0), 1.0, 0, 0},
  };
  for (Case const& k : cases) {
    EXPECT_EQ(k.segment.isALine(k.tol), k.line) << support::text(k.segment[1]) << k.tol;
    EXPECT_EQ(k.segment.isAPoint(k.tol), k.point) << support::text(k.segment[1]) << k.tol;
  }
}

TEST(GxBezierFlatness, FlatPolygonsAreThoseThatCrossTheAxisWhereTheirChordDoes) {
  auto const flat = [](std::vector<Point> const& w) {
    return OpenBezier().isFlatEnough(w.data(), static_cast<int>(w.size()) - 1);
  };
  EXPECT_EQ(flat({{0, -1}, {0.5, 0}, {1, 1}}), 1);
  EXPECT_EQ(flat({{0, -1}, {0.5, 0.1}, {1, 1}}), 0);
  EXPECT_EQ(flat({{0, -1}, {0.5, -0.1}, {1, 1}}), 0);
  EXPECT_EQ(flat({{0, 1}, {0.5, 9}, {1, 1}}), 1) << "a level chord, whatever lies between";
  EXPECT_EQ(flat({{0, -1}, {0, -1}, {1, 5}, {1, 5}}), 1) << "handles on the ends";
}

TEST(Bernstein, BinomialsWeightsAndTheTableByAccumulatedSteps) {
  EXPECT_NEAR(factln(5), std::log(120.0), 1e-4);
  for (int k = 0; k <= 3; ++k) EXPECT_EQ(bico(3, k), k % 3 ? 3.0 : 1.0);
  EXPECT_EQ(bico(10, 5), 252.0);
  EXPECT_NEAR(blendValue(0.3, 1, 3), 0.441, 1e-15);
  for (int const n : {0, 1, 4, 10, 65535}) {
    std::unique_ptr<double*[]> const table(initBlendArray(static_cast<unsigned short>(n)));
    double t = 0.0;
    for (std::size_t i = 0; i <= static_cast<std::size_t>(n);
         ++i, t = std::fmin(t + 1.0 / n, 1.0)) {
      std::unique_ptr<double[]> const row(table[i]);
      ASSERT_EQ(row[3], blendValue(t, 3, 3)) << "row " << i << " of " << n;
      ASSERT_EQ(row[1], blendValue(t, 1, 3));
    }
  }
}

}  // namespace
