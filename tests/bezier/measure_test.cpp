// Extremes, roots, lengths; the nearest point, the parameter of a point, the closest samples.
#include "tests/support/expect.h"
#include "tests/support/open.h"

namespace {

using namespace support;

TEST(GxBezierExtremes, BoxesAreTightAndHoldTheHighestAndLowestPoints) {
  GxList<double> list = listOf<double>({42.0});
  EXPECT_EQ(evenLine(0, 5, 9, 1).getYMinMaxTValues(list), 3) << "the list's length";
  EXPECT_EQ(list(0), 0.0) << "entries 0 and 1 were exchanged, the lower end lying at the end";
  Random random(30);
  for (int i = 0; i < 500; ++i) {
    GxBezier const s = i % 2 ? random.segment(100) : random.gridSegment(3);
    double tMax, yMax, tMin, yMin, box[4], hull[4];
    s.getMaxYTValue(tMax, yMax), s.getMinYTValue(tMin, yMin);
    s.localMinMax(box[0], box[1], box[2], box[3]);
    s.getConvexHull(hull[0], hull[1], hull[2], hull[3]);
    ASSERT_TRUE(s.bValue(tMax).yval() == yMax && s.bValue(tMin).yval() == yMin);
    ASSERT_TRUE(tMax == 0.0 || s[0].yval() != yMax) << "the start comes first";
    ASSERT_NEAR_POINT(Point(yMin, yMax), Point(box[1], box[3]), 1e-9);
    for (int axis = 0; axis < 2; ++axis) {
      auto const coordinate = [axis](Point const& p) { return axis ? p.yval() : p.xval(); };
      double low = coordinate(s[0]), high = low;
      for (int k = 0; k <= 200; ++k) {
        low = min(low, coordinate(s.bValue(k / 200.0)));
        high = max(high, coordinate(s.bValue(k / 200.0)));
      }
      ASSERT_TRUE(hull[axis] <= low && high <= hull[axis + 2]);
      ASSERT_TRUE(box[axis] < low + 1e-9 && high - 1e-9 < box[axis + 2]);
      ASSERT_NEAR_POINT(Point(low, high), Point(box[axis], box[axis + 2]), i % 2 ? 1e-2 : 3e-4);
    }
  }
}

TEST(GxBezierRoots, EveryHeightIsReachedWhereReportedAndBoundsAreInclusive) {
  Random random(31);
  for (int i = 0; i < 2000; ++i) {
    GxBezier s = random.segment(100);
    double const t = random.uniform(0, 1);
    Point const p = s.bValue(t);
    GxList<double> list;
    s.findRoots(list, p.yval(), 0.0, 1.0);
    double least = 1.0, found = -1.0;
    for (double const root : valuesOf(list)) {
      ASSERT_NEAR(s.bValue(root).yval(), p.yval(), 1e-9);
      least = min(least, std::fabs(root - t));
    }
    ASSERT_LT(least, 1e-6);
    ASSERT_EQ(s.findTValue(p, found, 1e-6), 1);
    ASSERT_NEAR_POINT(s.bValue(found), p, 2e-6);
  }
}

TEST(GxBezierNearest, BeatsAThousandSamples) {
  Random random(20);
  for (int i = 0; i < 400; ++i) {
    GxBezier s = i % 3 ? random.segment(100) : random.gridSegment(3);
    Point const p = i % 5 ? random.point(i % 3 ? 150 : 4) : s.bValue(random.uniform(0, 1));
    double t = -7.0;
    s.findNearestPointTValue(p, t);
    ASSERT_TRUE(0.0 <= t && t <= 1.0);
    double const found = s.bValue(t).distance(p);
    Point nearest;
    s.findNearestPoint(p, nearest);
    ASSERT_NEAR(nearest.distance(p), found, 1e-9);
    for (int k = 0; k <= 1000; ++k) {
      ASSERT_LE(found, s.bValue(k / 1000.0).distance(p) + 1e-6) << text(p) << " in " << i;
    }
  }
}

}  // namespace
