// Evaluation, subdivision, flatness, control polygons, the run of x, and the Bernstein helpers.
#include "tests/support/expect.h"
#include "tests/support/open.h"

#include <memory>

namespace {

using namespace support;

TEST(GxBezier, IsEditedInPlaceAndSortsDescending) {
  GxBezier b = sShape();
  b.reverse(), b.flip(), b.scale(2.0, 3.0);
  EXPECT_BITS(b, bezier(200, -300, 120, 120, 80, -420, 0, -0.0));
  EXPECT_TRUE(GxBezier(&b[0]) == b);
  Numbers values = {1.0, 2.0, 1.0, kNaN};
  int const expected[] = {0, 1, 0, 1};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(OpenBezier::compFunc(&values[0], values.data() + i), expected[i]);
    EXPECT_EQ(GxBezier::Comperator(values)(i, 0), i == 1);
  }
}

TEST(GxBezierEvaluate, ThePolynomialIsKnownInsideAndOutside) {
  GxBezier const b = bezier(0, 1, 2.0 / 3, 0, 1, 0, 1, 0);  // (1 - s^2, s^3)
  for (double const s : {1.5, 0.75, -0.5}) {
    double const t = 1.0 - s;
    EXPECT_NEAR_POINT(b.bValue(t), Point(1 - s * s, s * s * s), 2e-15);
    EXPECT_NEAR_POINT(Point() + b.dValue(t), Point(2 * s, -3 * s * s), 8e-15);
    EXPECT_NEAR_POINT(Point() + b.ddValue(t), Point(-2, 6 * s), 4e-14);
    EXPECT_NEAR_POINT(b.curvatureValue(t), Point(1.5, 2 * s), 4e-14);
  }
  EXPECT_BITS(b.curvatureValue(1.0), Point(0, 0)) << "a vertical tangent";
}

TEST(GxBezierEvaluate, EndsSumsAndPartsAgreeInsideAndOutside) {
  Random random(12);
  for (int i = 0; i < 2000; ++i) {
    OpenBezier const s(i % 2 ? random.segment(1e3) : random.gridSegment(5));
    double const t = random.uniform(-0.5, 1.5), u = random.uniform(0.0, 1.0);
    ASSERT_TRUE(sameBits(s.bValue(-0.0), s[0]) && sameBits(s.bValue(1.0), s[3]));
    ASSERT_NEAR_POINT(s.value(&s[0], t, 3), s.bValue(t), 1e-10);
    ASSERT_NEAR_POINT(s.value(&s[0], t, 1), s[0] + (s[1] - s[0]) * t, 1e-10);
    GxBezier left, right, inPlace = s;
    s.split(left, right, t);
    ASSERT_TRUE(inPlace.split(inPlace, t) == right) << "split into itself";
    ASSERT_TRUE(left[0] == s[0] && left[3] == right[0] && right[3] == s[3]);
    ASSERT_NEAR_POINT(left.bValue(u), s.bValue(u * t), 1e-9);
    ASSERT_NEAR_POINT(right.bValue(u), s.bValue(t + u * (1 - t)), 1e-9);
  }
}

TEST(GxBezierFlatness, WhatIsALineAndWhatIsAPoint) {
  // Control points | tolerance, is it a line, a point: inner points before the start, beyond the
  // end, on the tolerance, far from the ends.
  for (Row const k : table(R"(3 4 3 4 3 4 3 4  0 1 1; 0 0 0 0 9 5 9 5  0 1 0;
            0 0 -1 0 2 0 3 0  0.5 0 0; 0 0 0 0 4 0 3 0  0.5 0 0; 0 0 1 1 2 0 3 0  1 1 0;
            0 0 1 1 2 0 3 0  0.999 0 0; 0 0 5 0 -5 0 0 0  4.9 0 0; 0 0 1 0 0 0 1 0  1 1 1;
            0 0 0 0 1 0 2 0  1 1 0)")) {
    EXPECT_EQ(segmentOf(k).isALine(k[8]), k[9]);
    EXPECT_EQ(segmentOf(k).isAPoint(k[8]), k[10]);
  }
}

TEST(GxBezierPolygons, AreSplitAndJudgedByTheirCourseAboutTheAxis) {
  OpenBezier const s;
  Point w[8] = {{0, 1}, {0.2, 0}, {0.4, 1}, {0.6, -1}, {0.8, -2}, {1, -3}};
  Point left[8], right[8];
  double roots[64];
  EXPECT_EQ(s.crossingCount(w, 2), 2) << "zero is a sign of its own";
  EXPECT_EQ(s.crossingCount(w + 2, 3), 1);
  for (int i = 0; i < 6; ++i) w[i].yval() = i - 1.7;
  ASSERT_EQ(s.findRoots(w, 5, 0, roots), 1);
  EXPECT_NEAR(roots[0], 0.34, 1e-12);
  ASSERT_EQ(s.findRoots(w, 5, 64, roots), 1);
  EXPECT_EQ(roots[0], 0.5) << "at the deepest level the middle of the range";
  for (int i = 0; i < 8; ++i) w[i] = Point(i, i % 2 ? 1e-10 : -1e-10);
  s.genericSplit(w, 7, 0.25, left, right);
  EXPECT_TRUE(left[0] == w[0] && right[7] == w[7]) << "given points are not snapped to zero";
  for (int i = 1; i < 8; ++i) {
    EXPECT_BITS(left[i], Point(i * 0.25, 0));
    EXPECT_BITS(right[i - 1], Point(1.75 + (i - 1) * 0.75, 0));
  }
  EXPECT_BITS(s.genericSplit(w, 7, 0.25, nullptr, nullptr), left[7]);
  auto const flat = [&s](std::vector<Point> const& polygon) {
    return s.isFlatEnough(polygon.data(), static_cast<int>(polygon.size()) - 1);
  };
  EXPECT_TRUE(flat({{0, -1}, {0.5, 0}, {1, 1}}));
  EXPECT_FALSE(flat({{0, -1}, {0.5, 0.1}, {1, 1}}) || flat({{0, -1}, {0.5, -0.1}, {1, 1}}));
  EXPECT_TRUE(flat({{0, 1}, {0.5, 9}, {1, 1}})) << "a level chord, whatever lies between";
  EXPECT_TRUE(flat({{0, -1}, {0, -1}, {1, 5}, {1, 5}})) << "handles on the ends";
}

TEST(GxBezierWellDefined, XNeverRunsBack) {
  // The x of the control points | the answer.
  for (Row const k : table(R"(0 1 2 3  1; 3 2 1 0  1; 0 0 0 0  0; 0 -1 2 3  0; 0 1 4 3  0;
            0 3 0 3  0; 0 2 1 3  1; 0 0 1 3  1; 0 0 0 3  1; 0 2 3 3  1; 0 3 3 3  1; 0 0 3 3  1)")) {
    EXPECT_EQ(bezier(k[0], 0, k[1], 9, k[2], -9, k[3], 1).isWellDefined(), k[4]);
  }
}

TEST(GxBezierRatio, OfShapesKnownByHand) {
  // Control points | mode, code, ratio. Of differences (1, 1), (2, -1), (3, 2) the weighted squares
  // are 113/15 in x and -14/15 in y, the weight of the first two, deliberately, being 0.9; of the
  // last but one they vanish, and the directions, 1 and -1, are averaged.
  for (Row const k : table(R"(9 4 6 4 3 4 0 4  1 1 1; 4 0 4 3 4 6 4 9  1 1 0;
            4 0 4 3 4 6 4 9  2 0 0; 0 0 4 0 6 6 6 9  1 2 0; 0 0 4 0 6 6 6 9  2 0 1;
            0 0 2 1 0 5 2 6  1 3 0; 0 0 1 1 9 1 10 0  2 0 1; 0 0 1 1 9 1 10 0  1 1 0.70710678;
            1 1 1 1 1 1 1 1  1 -1 -7; 0 0 0 0 5 5 5 5  1 1 0.70710678;
            0 0 1 1 3 0 6 2  0 0 0.9432729083; 0 0 1 0 0.88795902367588 0 0.88795902367588 0  3 0 0;
            0 0 1e-5 0 2e-5 0 3e-5 0  0 -1 -7)")) {
    double ratio = -7.0;
    EXPECT_EQ(segmentOf(k).findRatio(0.0, static_cast<int>(k[8]), ratio), k[9]);
    EXPECT_NEAR(ratio, k[10], 1e-8);
  }
}

TEST(Bernstein, BinomialsWeightsAndTheTableByAccumulatedSteps) {
  EXPECT_NEAR(factln(5), std::log(120.0), 1e-4);
  EXPECT_EQ(bico(10, 5), 252.0);
  EXPECT_NEAR(blendValue(0.3, 1, 3), 0.441, 1e-15);
  for (int const n : {0, 4, 10, 65535}) {
    std::unique_ptr<double*[]> const table(initBlendArray(static_cast<unsigned short>(n)));
    double t = 0.0;
    for (int i = 0; i <= n; ++i, t = min(t + 1.0 / n, 1.0)) {
      std::unique_ptr<double[]> const row(table.get()[i]);
      for (int k = 0; k < 4; ++k) ASSERT_EQ(row.get()[k], blendValue(t, k, 3)) << i << " of " << n;
    }
  }
}

}  // namespace
