// Closest samples, segments over the x axis, the share of x in the direction.
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

namespace {

using support::bezier;
using support::evenLine;
using support::Point;

TEST(GxBezierClosestPoints, TheLeastOfAllPairsOfSamples) {
  support::Random random(4);
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
  struct Case {
    GxBezier other;
    double least, t, u;
  };
  Case const cases[] = {
      {evenLine(5, -5, 5, 5), 0.0, 0.5, 0.5},
      {evenLine(0, 0, 10, 0), 0.0, 0.0, 0.0},      // the first of the equal pairs
      {evenLine(10.4, 0, 10, 0), 0.16, 1.0, 0.0},  // up to half a unit: its start alone
      {evenLine(0, 46341, 10, 46341), 2147483647.0, -7.0, -7.0},
      {support::pointLike(support::kNaN, 0), 2147483647.0, -7.0, -7.0},
  };
  for (Case const& k : cases) {
    double t = -7.0, u = -7.0;
    EXPECT_NEAR(evenLine(0, 0, 10, 0).findClosestPoints(k.other, t, u), k.least, 1e-9);
    EXPECT_NEAR_POINT(Point(t, u), Point(k.t, k.u), 1e-9);
  }
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
}

TEST(GxBezierRatio, OfShapesKnownByHand) {
  struct Case {
    GxBezier segment;
    int mode, code;
    double ratio;
  };
  double const diagonal = std::sqrt(0.5);
  GxBezier const rising = bezier(0, 0, 4, 0, 6, 6, 6, 9);  // level, then upright
  GxBezier const lazyS = bezier(0, 0, 1, 1, 9, 1, 10, 0);  // level in the middle
  // Deliberate weights: (1, 0), (0, 1), (0, 0) as differences weigh alike, (1, 0), (1, 0), (0, 1)
  // as 0.2 + 2*0.9 + 2/15 to 0.2.
  double const inX = 0.2 + 1.8 + 2.0 / 15;
  Case const cases[] = {
      {evenLine(9, 4, 0, 4), 1, 1, 1.0},
      {evenLine(4, 0, 4, 9), 1, 1, 0.0},
      {evenLine(4, 0, 4, 9), 2, 0, 0.0},
      {rising, 1, 2, 0.0},
      {rising, 2, 0, 1.0},
      {bezier(0, 0, 2, 1, 0, 5, 2, 6), 1, 3, 0.0},  // turns back in the middle
      {lazyS, 1, 1, diagonal},
      {lazyS, 2, 0, 1.0},
      {support::retractedLine(0, 0, 5, 5), 1, 1, diagonal},  // directions of the next difference
      {support::retractedLine(0, 0, 5, 5), 3, 0, diagonal},
      {support::pointLike(1, 1), 1, -1, -7.0},
      {bezier(0, 0, 1, 0, 2, 0, 2, 1), 0, 0, std::sqrt(inX / (inX + 0.2))},
      {bezier(0, 0, 1e-5, 0, 2e-5, 0, 3e-5, 0), 0, -1, -7.0},  // no point, but without a direction
  };
  for (Case const& k : cases) {
    double ratio = -7.0;
    EXPECT_EQ(k.segment.findRatio(0.0, k.mode, ratio), k.code);
    EXPECT_NEAR(ratio, k.ratio, 1e-12);
  }
}

}  // namespace
