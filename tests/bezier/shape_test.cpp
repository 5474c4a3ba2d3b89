// Closest samples, segments over the x axis, the share of x in the direction.
#include "crv/crv.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <cmath>

#include <gtest/gtest.h>

namespace {

using Point = GxCoord<double>;
using support::bezier;
using support::Random;

TEST(GxBezierClosestPoints, TheLeastOfAllPairsOfSamples) {
  Random random(4);
  for (int i = 0; i < 50; ++i) {
    GxBezier a = random.segment(10.0);
    GxBezier const b = random.segment(10.0);
    double t = -7.0, u = -7.0;
    double const least = a.findClosestPoints(b, t, u);
    EXPECT_BITS(a.bValue(t).squaredDistance(b.bValue(u)), least);
    for (int k = 0; k <= 100; ++k) {
      Point const p = a.bValue(k / 10 * 0.1);
      EXPECT_GE(p.squaredDistance(b.bValue(k % 10 * 0.1)), least - 1e-9);
    }
  }
}

TEST(GxBezierClosestPoints, PointsTiesAndSegmentsOutOfSight) {
  GxBezier line = support::evenLine(0, 0, 10, 0);
  double t = -7.0, u = -7.0;
  EXPECT_NEAR(line.findClosestPoints(support::evenLine(5, -5, 5, 5), t, u), 0.0, 1e-20);
  EXPECT_NEAR(line.findClosestPoints(support::evenLine(5.5, -5, 5.5, 5), t, u), 0.25, 1e-12);
  // A segment no larger than half a unit is sampled at its start alone.
  EXPECT_NEAR(line.findClosestPoints(support::evenLine(10.4, 0, 10, 0), t, u), 0.16, 1e-9);
  EXPECT_EQ(u, 0.0);
  EXPECT_EQ(line.findClosestPoints(line, t, u), 0.0);
  EXPECT_EQ(t, 0.0);  // the first of the equal pairs
  t = u = -7.0;
  EXPECT_EQ(line.findClosestPoints(support::evenLine(0, 46341, 10, 46341), t, u), 2147483647.0);
  EXPECT_EQ(line.findClosestPoints(support::pointLike(std::nan(""), 0), t, u), 2147483647.0);
  EXPECT_EQ(t, -7.0);
  EXPECT_EQ(u, -7.0);
}

TEST(GxBezierWellDefined, XNeverRunsBack) {
  struct Case {
    double x[4];
    int expected;
  };
  Case const cases[] = {
      {{0, 1, 2, 3}, 1}, {{3, 2, 1, 0}, 1},                      // either way
      {{0, 0, 0, 0}, 0}, {{0, -1, 2, 3}, 0}, {{0, 1, 4, 3}, 0},  // an end runs back
      {{0, 3, 0, 3}, 0}, {{0, 2, 1, 3}, 1},                      // the middle runs back, or not
      {{0, 0, 1, 3}, 1}, {{0, 0, 0, 3}, 1},  {{0, 2, 3, 3}, 1},  // ends at rest
      {{0, 3, 3, 3}, 1}, {{0, 0, 3, 3}, 1},
  };
  for (Case const& k : cases) {
    GxBezier const s = bezier(k.x[0], 0, k.x[1], 9, k.x[2], -9, k.x[3], 1);
    EXPECT_EQ(s.isWellDefined(), k.expected) << k.x[0] << k.x[1] << k.x[2] << k.x[3];
  }
  EXPECT_EQ(support::evenLine(5, 0, 5, 9).isWellDefined(), 0);
}

TEST(GxBezierRatio, OfShapesKnownByHand) {
  struct Case {
    GxBezier segment;
    int mode;
    int code;
    double ratio;
  };
  double const diagonal = std::sqrt(0.5);
  GxBezier const level = support::evenLine(9, 4, 0, 4);
  GxBezier const upright = support::evenLine(4, 0, 4, 9);
  GxBezier const rising = bezier(0, 0, 4, 0, 6, 6, 6, 9);  // level, then upright
  GxBezier const sBend = bezier(0, 0, 2, 1, 0, 5, 2, 6);   // turns back in the middle
  GxBezier const lazyS = bezier(0, 0, 1, 1, 9, 1, 10, 0);  // level in the middle
  Case const cases[] = {
      {level, 1, 1, 1.0},
      {level, 2, 0, 1.0},
      {level, 0, 0, 1.0},
      {upright, 1, 1, 0.0},
      {upright, 2, 0, 0.0},
      {upright, 7, 0, 0.0},
      {rising, 1, 2, 0.0},
      {rising, 2, 0, 1.0},
      {sBend, 1, 3, 0.0},
      {lazyS, 1, 1, diagonal},
      {lazyS, 2, 0, 1.0},
      {support::retractedLine(0, 0, 5, 5), 1, 1, diagonal},  // directions of the next difference
      {support::retractedLine(0, 0, 5, 5), 3, 0, diagonal},
      {support::pointLike(1, 1), 1, -1, -7.0},
  };
  for (Case const& k : cases) {
    double ratio = -7.0;
    EXPECT_EQ(k.segment.findRatio(0.0, k.mode, ratio), k.code);
    EXPECT_NEAR(ratio, k.ratio, 1e-12);
  }
  // Deliberate weights: (1, 0), (0, 1), (0, 0) as differences weigh alike, (1, 0), (1, 0), (0, 1)
  // as 0.2 + 2*0.9 + 2/15 to 0.2.
  double ratio = -7.0;
  EXPECT_EQ(bezier(0, 0, 1, 0, 2, 0, 2, 1).findRatio(0.0, 0, ratio), 0);
  double const inX = 0.2 + 1.8 + 2.0 / 15;
  EXPECT_NEAR(ratio, std::sqrt(inX / (inX + 0.2)), 1e-15);
  // Not a point, but without a direction.
  EXPECT_EQ(bezier(0, 0, 1e-5, 0, 2e-5, 0, 3e-5, 0).findRatio(0.0, 0, ratio), -1);
}

}  // namespace
