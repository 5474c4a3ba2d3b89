#include "crv/accurate/flatten.h"

#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <algorithm>

namespace {

using support::bezier;
using support::curveOf;
using support::kInf;
using support::kNaN;
using support::Point;
using support::Position;

double distanceToChord(Point const& p, Point const& a, Point const& b) {
  double const squared = a.squaredDistance(b);
  double const share = squared > 0 ? ((p - a) * (b - a)) / squared : 0.0;
  return p.distance(a + (b - a) * std::clamp(share, 0.0, 1.0));
}

/// Expects every sample within worstDistance, which is within the tolerance, vertices on the curve
/// at their positions, and a vertex at each joint.
void expectWithin(GxBezierCurve const& curve, double tolerance, std::size_t mostChords) {
  auto const line = crv::flatten(curve, tolerance);
  ASSERT_GE(line.points.size(), curve.length() + 1);
  EXPECT_LE(line.points.size(), mostChords + 1);
  EXPECT_LE(line.worstDistance, tolerance);
  double worst = 0.0;
  for (std::size_t i = 0; i < line.points.size(); ++i) {
    EXPECT_BITS(curve.locateCurvePosition(line.positions[i]), line.points[i]);
    if (i == 0) continue;
    int const k = static_cast<int>(line.positions[i - 1].getSegmentNumber());
    double const t0 = line.positions[i - 1].getTValue();
    double const t1 =
        line.positions[i].getSegmentNumber() > k ? 1.0 : line.positions[i].getTValue();
    ASSERT_LT(t0, t1);
    for (int n = 1; n < 8; ++n) {
      Point const p = curve[k].bValue(t0 + (t1 - t0) * n / 8);
      worst = std::max(worst, distanceToChord(p, line.points[i - 1], line.points[i]));
    }
  }
  EXPECT_LE(worst, line.worstDistance + 1e-12 * tolerance);
  EXPECT_BITS(line.positions.back(), curve.lastPos());
}

TEST(AccurateFlatten, HardCasesStayWithinTheirTolerance) {
  for (auto const& hard : support::hardCases("flatten")) {
    SCOPED_TRACE(hard.source);
    GxBezierCurve const curve = curveOf({support::segmentOf(hard.fields[0])});
    expectWithin(curve, hard.fields[1][0], static_cast<std::size_t>(hard.fields[2][0]));
  }
  expectWithin(curveOf({support::loop()}), 0.1, 32);
  expectWithin(curveOf({support::loop()}), 1000, 1);
  expectWithin(curveOf({bezier(0, 0, 1, 1, 0, 1, 1, 0)}), 1e-3, 40);  // a cusp
  expectWithin(curveOf({support::retractedLine(0, 0, 9, 4)}), 1e-9, 1);
  expectWithin(curveOf({bezier(0, 0, 6, 3, -2, -1, 4, 2)}), 1e-9, 1);   // turns back inside
  expectWithin(curveOf({bezier(0, 0, 12, 6, -8, -4, 4, 2)}), 1e-9, 3);  // and beyond the ends
  EXPECT_EQ(crv::flatten(curveOf({support::retractedLine(0, 0, 9, 4)}), 1).worstDistance, 0.0);
}

TEST(AccurateFlatten, StaysWithinAnyToleranceAtAnyScale) {
  support::Random random(4);
  for (int i = 0; i < 300; ++i) {
    GxBezier s = i % 3 == 0 ? random.gridSegment(3) : random.segment(1.0);
    if (i % 8 >= 6) s[3] = s[0] + (s[1] - s[2]);  // a cusp at 0.5
    double const size = std::ldexp(1.0, random.whole(-60, 60));
    s.scale(size, size);
    SCOPED_TRACE(support::text(s));
    expectWithin(curveOf({s}), size * std::pow(10, random.uniform(-4, 0)), 500);
  }
}

TEST(AccurateFlatten, JointsGapsAndTheSeamAreVertices) {
  GxBezierCurve const circle = support::closed(support::circle(100));
  auto const line = crv::flatten(circle, 0.1);
  EXPECT_BITS(line.positions.back(), Position(4, 0.0));
  EXPECT_BITS(line.points.back(), line.points.front());

  GxBezierCurve gap = curveOf({support::evenLine(0, 0, 1, 0), support::evenLine(2, 0, 3, 0)});
  EXPECT_EQ(crv::flatten(gap, 0.1).points.size(), 4U);
  gap.setStrictIsClosed(1);
  auto const closed = crv::flatten(gap, 0.1);
  EXPECT_EQ(closed.points.size(), 5U);
  EXPECT_BITS(closed.points.back(), Point(0, 0));
  EXPECT_BITS(closed.positions.back(), Position(2, 0.0));
}

TEST(AccurateFlatten, WhatAsksForNothingGetsNothing) {
  EXPECT_TRUE(crv::flatten(GxBezierCurve(), 1).points.empty());
  EXPECT_TRUE(crv::flatten(support::circle(1), 0).points.empty());
  EXPECT_TRUE(crv::flatten(support::circle(1), kNaN).points.empty());
  EXPECT_TRUE(crv::flatten(curveOf({bezier(0, 0, kInf, 0, 1, 1, 2, 2)}), 1).points.empty());
  EXPECT_EQ(crv::flatten(support::circle(1), kInf).points.size(), 5U);
  EXPECT_LT(crv::flatten(support::circle(1), 1e-300).points.size(), 3000000U);
}

}  // namespace
