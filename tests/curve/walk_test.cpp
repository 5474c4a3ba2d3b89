// Walking along a curve.
#include "tests/support/data.h"
#include "tests/support/positions.h"
#include "tests/support/shapes.h"

namespace {

using support::at;
using Pos = GxBezierCurvePosition;

// Squared units: what a step leaves of its distance, and a little for rounding.
constexpr double kMet = 0.0100001;

double xAt(GxBezierCurve const& curve, Pos const& pos) {
  return curve.locateCurvePosition(pos).xval();
}

TEST(GxBezierCurveWalk, StepsAlongACoastLandAtTheirDistanceAndAddUp) {
  GxList<GxCoord<double>> const points = support::stroke("island-sulawesi");
  GxBezierCurve coast(&points, 2.0);
  int const n = static_cast<int>(coast.length());
  for (int const forward : {1, 0}) {
    Pos pos = forward ? coast.firstPos() : coast.lastPos();
    Pos const end = forward ? coast.lastPos() : coast.firstPos();
    Pos to;
    double sum = 0.0;
    int steps = 0;
    for (double used; coast.findNextPos(pos, to, 1.0, forward, used, 0) == 0; pos = to, ++steps) {
      sum += used;
      // The last chord of the step makes up for those of the joins passed, seen from the start.
      GxCoord<double> const start = coast.locateCurvePosition(pos);
      GxCoord<double> from = start;
      double left = 1.0;
      for (int k = int(pos.getSegmentNumber()); k % n != to.getSegmentNumber();) {
        from = coast[k % n][forward ? 3 : 0];
        left -= start.distance(from);
        k += forward ? 1 : -1;
      }
      ASSERT_NEAR(left * left, from.squaredDistance(coast.locateCurvePosition(to)), kMet);
    }
    // A form with a limit adds to the sum, here all that is left.
    EXPECT_EQ(-1, coast.findNextPos(pos, end, to, 1e9, sum, forward));
    EXPECT_NEAR(coast.curveLength(), sum, 1.0);
    EXPECT_NEAR(5854, steps, 5);
  }
}

TEST(GxBezierCurveWalk, TheReferenceIsNotMovedFromSegmentToSegment) {
  GxBezierCurve const curve = support::polygonalCurve({{0, 0}, {3, 0}, {7, 0}, {27, 0}});
  Pos to;
  ASSERT_EQ(0, curve.findNextPos({0, 0.0}, to, 12.0, 1, 0));
  EXPECT_NEAR(7 + (12 - 3 - 7), xAt(curve, to), 0.01);  // 12, were it moved
  ASSERT_EQ(0, curve.findNextPos({0, 0.0}, to, 8.0, 1, 0));
  EXPECT_NEAR(7 + 2, xAt(curve, to), 0.01);  // 8 - 3 - 7 is negative, and squared
  ASSERT_EQ(0, curve.findNextPosFromPoint({0.0, 0.0}, {0, 0.0}, to, 12.0, 1));
  EXPECT_NEAR(12, xAt(curve, to), 0.01);  // a given point keeps its distance
  // From the end the first segment comes before the last, and 27 are gone before the search.
  EXPECT_EQ(-1, curve.findNextPos(curve.lastPos(), to, 1.0, 0, 0));
}

TEST(GxBezierCurveWalk, LimitsAndTheSeamDecideHowFarItGoes) {
  GxBezierCurve curve = support::polygonalCurve({{0, 0}, {10, 0}, {20, 0}, {30, 0}, {0, 0}});
  // Closed, from, limit, distance, forward, and the x where it ends, or -1. On a closed curve the
  // end is not across the seam; on an open one a walk with a limit beyond the end goes on at the
  // start.
  for (auto const& row : support::table(
           "0 0.25 0.75 4 1 6.5; 0 0.25 1.5 14 1 -1; 0 2.5 0 12 0 13; 0 1.5 0.5 4 1 -1;"
           "0 0.5 1.5 4 0 -1; 1 3.9 1 5 1 2; 1 0.2 3 5 0 3; 1 3.9 4 5 1 -1; 1 1.5 1.5 1 1 -1;"
           "0 4 0 4 0 4; 0 1.5 9.5 16 1 26; 0 0.5 2147483646 1e9 1 -1; 1 1.5 1.5 1 0 -1")) {
    SCOPED_TRACE(testing::Message() << row[1] << " to " << row[2]);
    curve.setStrictIsClosed(row[0] != 0);
    Pos to(77, 0.5);
    int const code = curve.findNextPos(at(row[1]), at(row[2]), to, row[3], row[4] != 0);
    ASSERT_EQ(code, row[5] < 0 ? -1 : 0);
    EXPECT_TRUE(code == 0 ? IS_EQUAL(row[5], xAt(curve, to), 0.05) : to == Pos(77, 0.5));
  }
}

TEST(GxBezierCurveWalk, ShortChordsAreCounted) {
  GxBezierCurve const curve = support::polygonalCurve({{0, 0}, {1000, 0}});
  Pos to, plain;
  // A tenth each; beyond 30, about three units, and beyond 20 of them the margin lets more in.
  for (auto const& row : support::table("10 10; 30 30; 31 31; 90 93; 123 129; -5 0")) {
    double consumed = 77.0;
    ASSERT_EQ(0, curve.findNextPos({0, 0.25}, to, row[0], 1, consumed, 1));
    EXPECT_NEAR(250 + row[1], xAt(curve, to), 0.5);
    EXPECT_NEAR(row[1], consumed, 0.5);
    ASSERT_EQ(0, curve.findNextPos({0, 0.25}, plain, row[0], 1, 1));
    EXPECT_EQ(to, plain);
  }
  EXPECT_EQ(-1, curve.findNextPos({0, 0.99}, to, 20.0, 1, 1));
  EXPECT_NEAR(1000, xAt(curve, to), 2.0);  // the last position reached
}

TEST(GxBezierCurveWalk, EveryWalkEnds) {
  GxBezierCurve curve = support::curveOf({support::loop(), support::pointLike(100, 0)});
  for (double const d : {5e-324, 1e300, HUGE_VAL, std::nan("")}) {
    for (double const t : {0.5, 1e15, -1e15, std::nan(""), HUGE_VAL}) {
      curve.setStrictIsClosed(d > 1);
      for (int const forward : {0, 1}) {
        double consumed;
        Pos to;
        EXPECT_LE(curve.findNextPos({0, t}, {1, 0.5}, to, d, forward), 0);
        EXPECT_LE(curve.findNextPos({0, t}, to, d, forward, consumed, 1), 0);
      }
    }
  }
}

}  // namespace
