// Polylines by halving, by equal steps and by chords; steps of a given distance.
#include "tests/support/expect.h"
#include "tests/support/open.h"

#include <list>

namespace {

using namespace support;
using Points = std::vector<Point>;

TEST(GxBezierPolyline, TheCurveStaysWithinTheToleranceAndAllFormsAgree) {
  Random random(2);
  for (int i = 0; i < 100; ++i) {
    GxBezier const s = i % 2 ? random.segment(100.0) : random.gridSegment(4);
    double const tol = i % 3 ? 0.1 : 0.004;
    Points points;
    s.getPolyline(tol, points);
    std::list<Point> listed, timed;
    std::list<double> times;
    s.getPolyline(tol, listed);
    s.getPolyline(tol, timed, times, GxBezierPolylineCondition());
    EXPECT_TRUE(listed == timed && listed == std::list<Point>(points.begin(), points.end()));
    Numbers const t(times.begin(), times.end());
    ASSERT_EQ(t.size(), points.size());
    for (std::size_t k = 1; k < t.size(); ++k) {
      EXPECT_NEAR_POINT(points[k], s.bValue(t[k]), 1e-12);
      EXPECT_LT(t[k - 1], t[k]);
      for (double u = 0.0; u < 1.0; u += 0.125) {
        // Pieces that are points are left out, so that the next chord starts up to tol off.
        Point const p = s.bValue(t[k - 1] + u * (t[k] - t[k - 1]));
        EXPECT_LE(distanceToLineSegment(points[k - 1], points[k], p), 2.0 * tol);
      }
    }
  }
}

TEST(GxBezierSpacing, StepsAndChordsHaveTheirLengthUpToTheEnd) {
  Random random(9);
  for (int i = 0; i < 60; ++i) {
    GxBezier const s = random.segment(100.0);
    double const startT = i % 3 ? 0.0 : 0.3;
    GxList<Point> list;
    s.makeSegment(7.0, list, startT);
    Points const points = valuesOf(list);
    EXPECT_TRUE(points.front() == s.bValue(startT) && points.back() == s[3]);
    for (std::size_t k = 1; k < points.size(); ++k) {
      double const chord = points[k].distance(points[k - 1]);
      EXPECT_TRUE(chord < 7.1 && (chord > 6.9 || k + 1 == points.size())) << chord;
    }
    std::list<Point> steps;
    s.makeSegment(static_cast<unsigned short>(i), steps);
    ASSERT_EQ(steps.size(), static_cast<std::size_t>(i == 0 ? 2 : i + 1));
    EXPECT_TRUE(steps.front() == s[0] && steps.back() == s[3]);
    double t = 0.0;
    for (auto p = std::next(steps.begin()); std::next(p) != steps.end(); ++p) {
      EXPECT_BITS(*p, s.bValue(t += 1.0 / i));
    }
  }
}

TEST(GxBezierStep, LandsAtItsDistanceOnTheRightSide) {
  Random random(21);
  for (int i = 0; i < 300; ++i) {
    GxBezier const s = random.segment(100.0);
    double const startT = random.uniform(0.1, 0.9), squared = random.uniform(0.5, 900.0);
    double t = -7.0, v = -7.0, consumed = 0.0;
    int const code = s.findNextPos(t, startT, squared, i % 2, consumed);
    EXPECT_EQ(s.findNextPosFromPoint(v, startT, s.bValue(startT), squared, i % 2), code);
    if (code != 0) continue;
    EXPECT_NEAR(consumed, std::fabs(s.length(startT) - s.length(t)), 1e-9);
    for (double const landed : {t, v}) {
      EXPECT_NEAR(s.bValue(landed).squaredDistance(s.bValue(startT)), squared, 0.0101);
      EXPECT_EQ(landed > startT, i % 2);
    }
  }
}

}  // namespace
