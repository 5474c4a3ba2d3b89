// Evaluation, subdivision, flatness and the Bernstein helpers.
#include "crv/crv.h"
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"

#include <cmath>
#include <limits>
#include <memory>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Point = GxCoord<double>;
using support::OpenBezier;
using support::Random;

TEST(GxBezier, IsAValueWithWritablePoints) {
  GxBezier const a = support::sShape();
  GxBezier b(a);
  EXPECT_TRUE(a == b);
  b[1].xval() = std::nextafter(b[1].xval(), 1e9);
  EXPECT_TRUE(a != b) << "no tolerance is applied";
  b = a;
  b.reverse();
  EXPECT_BITS(b[0], a[3]);
  EXPECT_BITS(b[1], a[2]);
  b.reverse();
  b.flip();
  EXPECT_EQ(b[1].yval(), -a[1].yval());
  b.scale(2.0, -1.0);
  EXPECT_BITS(b[2], Point(2 * a[2].xval(), a[2].yval()));
}

TEST(GxBezierEvaluate, ThePolynomialIsKnownInsideAndOutside) {
  GxBezier const s = support::cubicParabola();
  for (double const t : {-0.5, 0.0, 0.25, 0.5, 0.75, 1.0, 1.5}) {
    EXPECT_NEAR_POINT(s.bValue(t), Point(t, t * t * t), 1e-15);
    EXPECT_NEAR(s.dValue(t).xval(), 1.0, 4e-15);
    EXPECT_NEAR(s.dValue(t).yval(), 3 * t * t, 4e-15);
    EXPECT_NEAR(s.ddValue(t).yval(), 6 * t, 4e-15);
    EXPECT_NEAR(s.curvatureValue(t).xval(), 6 * t, 2e-14);
  }
  GxBezier const upright = support::evenLine(3, 0, 3, 30);
  EXPECT_BITS(upright.curvatureValue(0.3), Point(0, 0));
}

TEST(GxBezierEvaluate, EndsAreTheControlPointsBitForBit) {
  Random random(10);
  for (int i = 0; i < 1000; ++i) {
    GxBezier const s = random.segment(1e3);
    ASSERT_TRUE(support::sameBits(s.bValue(0.0), s[0]));
    ASSERT_TRUE(support::sameBits(s.bValue(-0.0), s[0]));
    ASSERT_TRUE(support::sameBits(s.bValue(1.0), s[3]));
    // A hair inside, the polynomial takes over.
    ASSERT_LT(s.bValue(1e-12).distance(s[0]), 1e-7);
  }
}

TEST(GxBezierEvaluate, DeCasteljauOfEveryDegreeAgreesWithTheWeights) {
  Random random(11);
  for (int i = 0; i < 1000; ++i) {
    OpenBezier const s(random.segment(1e3));
    double const t = random.uniform(-0.5, 1.5);
    Point const points[] = {s[0], s[1], s[2], s[3]};
    ASSERT_TRUE(support::near(s.value(points, t, 3), s.bValue(t), 1e-10));
    GxVector<double> const line = points[1] - points[0];
    ASSERT_TRUE(support::near(s.value(points, t, 1), points[0] + line * t, 1e-10));
  }
}

TEST(GxBezierSplit, PartsShareTheJointAndLieOnTheWhole) {
  Random random(12);
  for (int i = 0; i < 2000; ++i) {
    GxBezier const whole = i % 2 ? random.segment(1e3) : random.gridSegment(5);
    double const t = random.uniform(0.0, 1.0);
    GxBezier left;
    GxBezier right;
    whole.split(left, right, t);
    ASSERT_TRUE(support::sameBits(left[3], right[0]));
    ASSERT_TRUE(support::sameBits(left[0], whole[0]) && support::sameBits(right[3], whole[3]));
    double const u = random.uniform(0.0, 1.0);
    ASSERT_TRUE(support::near(left.bValue(u), whole.bValue(u * t), 1e-9));
    ASSERT_TRUE(support::near(right.bValue(u), whole.bValue(t + u * (1 - t)), 1e-9));
  }
}

TEST(GxBezierSplit, EndsAliasesAndExtrapolation) {
  GxBezier const whole = support::sShape();
  GxBezier left = whole;
  GxBezier right;
  EXPECT_EQ(&left.split(right, 0.0), &left);
  EXPECT_BITS(left, support::pointLike(0, 0));
  EXPECT_BITS(right, whole);
  whole.split(left, right, 1.0);
  EXPECT_BITS(left, whole);
  EXPECT_BITS(right, support::pointLike(whole[3].xval(), whole[3].yval()));

  GxBezier expectedLeft;
  GxBezier expectedRight;
  whole.split(expectedLeft, expectedRight, 0.3);
  GxBezier a = whole;
  a.split(a, 0.3);
  EXPECT_BITS(a, expectedRight);
  a = whole;
  a.split(a, right, 0.3);
  EXPECT_BITS(a, expectedLeft);
  EXPECT_BITS(right, expectedRight);

  whole.split(left, right, 1.5);
  EXPECT_NEAR_POINT(left.bValue(1.0), whole.bValue(1.5), 1e-11);
}

TEST(GxBezierSplit, PolygonsOfAnyDegreeSnapTinyValuesToZero) {
  OpenBezier const s;
  std::vector<Point> polygon;
  for (int i = 0; i <= 7; ++i) polygon.push_back(Point(i, i % 2 ? 1e-10 : -1e-10));
  std::vector<Point> left(8);
  std::vector<Point> right(8);
  Point const middle = s.genericSplit(polygon.data(), 7, 0.5, left.data(), right.data());
  EXPECT_BITS(left[7], middle);
  EXPECT_BITS(right[0], middle);
  EXPECT_BITS(left[0], polygon[0]) << "given points are not snapped";
  for (int i = 1; i < 8; ++i)
    EXPECT_EQ(support::bitsOf(left[static_cast<std::size_t>(i)].yval()), 0u);
  EXPECT_BITS(s.genericSplit(polygon.data(), 7, 0.5, nullptr, nullptr), middle);
}

TEST(GxBezierFlatness, WhatIsALineAndWhatIsAPoint) {
  struct Case {
    GxBezier segment;
    double tol;
    int line;
    int point;
  };
  double const nan = std::numeric_limits<double>::quiet_NaN();
  Case const cases[] = {
      {support::pointLike(3, 4), 0.0, 1, 1},
      {support::evenLine(0, 0, 9, 0), 0.0, 1, 0},
      {support::retractedLine(0, 0, 9, 5), 0.0, 1, 0},
      {support::bezier(0, 0, -1, 0, 2, 0, 3, 0), 0.5, 0, 0},  // on the line, before its start
      {support::bezier(0, 0, 0, 0, 4, 0, 3, 0), 0.5, 0, 0},   // on the line, beyond its end
      {support::bezier(0, 0, 1, 1, 2, 0, 3, 0), 1.0, 1, 0},   // on the tolerance
      {support::bezier(0, 0, 1, 1, 2, 0, 3, 0), 0.999, 0, 0},
      {support::bezier(0, 0, 5, 0, -5, 0, 0, 0), 4.9, 0, 0},  // P1 and P2 are far from the ends
      {support::bezier(0, 0, 1, 0, 0, 0, 1, 0), 1.0, 1, 1},
      {support::bezier(0, 0, nan, 0, 2, 0, 3, 0), 1.0, 0, 0},
  };
  GxBezierPolylineCondition const condition;
  for (Case const& k : cases) {
    EXPECT_EQ(k.segment.isALine(k.tol), k.line) << support::text(k.segment[1]) << k.tol;
    EXPECT_EQ(k.segment.isAPoint(k.tol), k.point) << support::text(k.segment[1]) << k.tol;
    EXPECT_EQ(condition.isALine(k.segment, k.tol), k.line);
    EXPECT_EQ(condition.isAPoint(k.segment, k.tol), k.point);
  }
}

TEST(GxBezierFlatness, FlatPolygonsAreThoseThatCrossTheAxisWhereTheirChordDoes) {
  OpenBezier const s;
  auto const flat = [&](std::vector<Point> const& p) {
    return s.isFlatEnough(p.data(), static_cast<int>(p.size()) - 1);
  };
  EXPECT_EQ(flat({{0, -1}, {0.5, 0}, {1, 1}}), 1);
  EXPECT_EQ(flat({{0, -1}, {0.5, 0.1}, {1, 1}}), 0);
  EXPECT_EQ(flat({{0, -1}, {0.5, -0.1}, {1, 1}}), 0);
  EXPECT_EQ(flat({{0, 1}, {0.5, 9}, {1, 1}}), 1) << "a level chord is flat whatever lies between";
  EXPECT_EQ(flat({{0, -1}, {0, -1}, {1, 5}, {1, 5}}), 1) << "a cubic with its handles on its ends";
  EXPECT_EQ(flat({{0, -1}, {0.4, 3}, {0.4, 3}, {1, 5}}), 0);
}

TEST(Bernstein, BinomialsAreWholeAndWeightsSumToOne) {
  EXPECT_EQ(factln(0), 0.0);
  EXPECT_EQ(factln(1), 0.0);
  EXPECT_NEAR(factln(5), std::log(120.0), 1e-4);
  double const cubic[] = {1, 3, 3, 1};
  for (int k = 0; k <= 3; ++k) EXPECT_EQ(bico(3, k), cubic[k]);
  EXPECT_EQ(bico(10, 5), 252.0);
  EXPECT_EQ(blendValue(0.0, 0, 3), 1.0);
  EXPECT_EQ(blendValue(1.0, 3, 3), 1.0);
  EXPECT_EQ(blendValue(1.0, 0, 3), 0.0);
  double sum = 0.0;
  for (int i = 0; i <= 3; ++i) sum += blendValue(0.3, i, 3);
  EXPECT_NEAR(sum, 1.0, 1e-15);
}

TEST(Bernstein, TheTableRunsFromZeroToOneByAccumulatedSteps) {
  for (int const n : {0, 1, 4, 10, 65535}) {
    auto const rows = static_cast<unsigned short>(n);
    std::unique_ptr<double*[]> const table(initBlendArray(rows));
    ASSERT_NE(table, nullptr);
    double t = 0.0;
    for (int i = 0; i <= n; ++i) {
      std::unique_ptr<double[]> const row(table[static_cast<std::size_t>(i)]);
      ASSERT_EQ(row[3], blendValue(t, 3, 3)) << "row " << i << " of " << n;
      ASSERT_EQ(row[1], blendValue(t, 1, 3));
      t += 1.0 / n;
      if (t > 1.0) t = 1.0;
    }
  }
}

TEST(GxBezier, SortFunctionsOrderDescending) {
  double const values[] = {1.0, 2.0, std::numeric_limits<double>::quiet_NaN()};
  EXPECT_EQ(OpenBezier::compFunc(&values[1], &values[0]), -1);
  EXPECT_EQ(OpenBezier::compFunc(&values[0], &values[1]), 1);
  EXPECT_EQ(OpenBezier::compFunc(&values[0], &values[0]), 0);
  EXPECT_EQ(OpenBezier::compFunc(&values[0], &values[2]), 1);
  std::vector<double> numbers = {3.0, 7.0, 3.0};
  GxBezier::Comperator const before(numbers);
  EXPECT_TRUE(before(1, 0));
  EXPECT_FALSE(before(0, 1));
  EXPECT_FALSE(before(0, 2));
}

}  // namespace
