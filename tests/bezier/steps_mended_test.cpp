// Steps, inflections and first crossings at the edge of their tolerances and limits.
#include "tests/support/data.h"

namespace {

using namespace support;

TEST(GxBezierStep, ResultsMayBeCoordinatesOfTheSegmentItself) {
  GxBezier const s = bezier(0, 0, 3, 1, 7, 2, 10, 0);
  double t = -7.0, consumed = 0.0, u = -7.0;
  ASSERT_EQ(0, s.findNextPos(t, 0.0, 9.0, 1, consumed));
  EXPECT_NEAR(t, 0.29713, 1e-6);
  ASSERT_EQ(0, s.findNextPosFromPoint(u, 0.0, {1.0, -1.0}, 9.0, 1));
  for (int i = 0; i < 4; ++i) {
    GxBezier bent = s;
    EXPECT_EQ(0, bent.findNextPos(bent[i].yval(), 0.0, 9.0, 1));
    EXPECT_BITS(bent[i].yval(), t);
    bent = s;
    EXPECT_EQ(0, bent.findNextPos(bent[i].yval(), 0.0, 9.0, 1, bent[3 - i].xval()));
    EXPECT_BITS(bent[3 - i].xval(), s[3 - i].xval() + consumed);
    bent = s;
    EXPECT_EQ(0, bent.findNextPosFromPoint(bent[i].xval(), 0.0, {1.0, -1.0}, 9.0, 1));
    EXPECT_BITS(bent[i].xval(), u);
  }
  Point p(1.0, -1.0);
  EXPECT_EQ(0, s.findNextPosFromPoint(p.xval(), 0.0, p, 9.0, 1));
  EXPECT_BITS(p.xval(), u);
}

TEST(GxBezierRoots, TurnsWhoseProductIsBelowTheToleranceMakeNoInflection) {
  // The polygon (0,0)(1,e)(2,-e)(3,0) turns by -3e and by 3e: a product of -9e^2.
  double t = -7.0;
  EXPECT_EQ(0, bezier(0, 0, 1, 1.0e-5, 2, -1.0e-5, 3, 0).findInflectionPoint(t));
  EXPECT_EQ(1, bezier(0, 0, 1, 1.1e-5, 2, -1.1e-5, 3, 0).findInflectionPoint(t));
  EXPECT_NEAR(t, 0.5, 1e-12);
}

TEST(GxBezierIntersectFirst, TwoToTheTwentySecondPiecesAreThePolylineOfANeedlessTolerance) {
  // They reach t = 0.005 of this segment; the chords beyond pass its bends by.
  GxBezier s = bezier(0, 0, 3e4, 9e4, 6e4, -9e4, 1e5, 0);
  for (double const t : {0.0035, 0.011}) {
    Vector const across = s.dValue(t).normalize().ortho(1) * 5.0;
    GxBezier line(s.bValue(t) + across, s.bValue(t) + across, s.bValue(t) + across * -1.0,
                  s.bValue(t) + across * -1.0);
    std::pair<double, double> found(-7.0, -7.0);
    EXPECT_EQ(t < 0.005, s.findFirstIntersection(line, found, 0.0));
    EXPECT_NEAR(found.first, t < 0.005 ? t : -7.0, 1e-5);
  }
}

}  // namespace
