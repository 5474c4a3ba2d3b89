// Walking along a curve.
#include "crv/crv.h"
#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <climits>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Pos = GxBezierCurvePosition;

// Squared units: what a step leaves of its distance, and a little for rounding.
constexpr double kMet = 0.0100001;

/// Lines end to end along the x axis, from 0 on.
GxBezierCurve chainAlongX(std::vector<double> const& lengths) {
  std::vector<GxCoord<double>> vertices(1);
  for (double const length : lengths) {
    vertices.emplace_back(vertices.back().xval() + length, 0.0);
  }
  return support::polygonalCurve(vertices);
}

double xAt(GxBezierCurve const& curve, Pos const& pos) {
  return curve.locateCurvePosition(pos).xval();
}

TEST(GxBezierCurveWalk, StepsAlongACoastLandAtTheirDistanceAndAddUp) {
  GxList<GxCoord<double>> const points = support::stroke("island-sulawesi");
  GxBezierCurve coast(&points, 2.0);
  ASSERT_GT(coast.length(), 1000u);
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
      for (int k = static_cast<int>(pos.getSegmentNumber()); k % n != to.getSegmentNumber();) {
        from = coast[k % n][forward ? 3 : 0];
        left -= start.distance(from);
        k += forward ? 1 : -1;
      }
      double const chord = from.squaredDistance(coast.locateCurvePosition(to));
      ASSERT_NEAR(left * left, chord, kMet) << support::text(pos) << " " << support::text(to);
    }
    // A form with a limit adds to the sum, here all that is left.
    EXPECT_EQ(-1, coast.findNextPos(pos, end, to, 1e9, sum, forward));
    EXPECT_NEAR(coast.curveLength(), sum, 1.0);
    EXPECT_NEAR(5854, steps, 5);
  }
}

TEST(GxBezierCurveWalk, TheReferenceIsNotMovedFromSegmentToSegment) {
  GxBezierCurve const curve = chainAlongX({3, 4, 20});
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
  struct Case {
    int closed;
    Pos from, limit;
    double d;
    int forward, result;
    double x;  // where found
  };
  Case const cases[] = {
      {0, {0, 0.25}, {0, 0.75}, 4, 1, 0, 6.5},  // within a segment
      {0, {0, 0.25}, {1, 0.5}, 14, 1, -1, 0},   // the limit comes first
      {0, {0, 0.0}, {3, 0.0}, 12, 1, 0, 12},    // across a join
      {0, {2, 0.5}, {0, 0.0}, 12, 0, 0, 13},    // backwards
      {0, {1, 0.5}, {0, 0.5}, 4, 1, -1, 0},     // a limit behind is never met
      {0, {0, 0.5}, {1, 0.5}, 4, 0, -1, 0},     // nor one ahead, backwards
      {1, {3, 0.9}, {1, 0.0}, 5, 1, 0, 2},      // across the seam
      {1, {0, 0.2}, {3, 0.0}, 5, 0, 0, 3},      // and backwards
      {1, {3, 0.9}, {4, 0.0}, 5, 1, -1, 0},     // the end of the curve is not across it
      {1, {1, 0.5}, {1, 0.5}, 1, 1, -1, 0},     // no way at all
      {0, {4, 0.0}, {0, 0.0}, 4, 0, 0, 4},      // from the end, back to a start that is there, too
      {0, {1, 0.5}, {9, 0.5}, 16, 1, 0, 26},    // a limit beyond the end goes on from the start
      {0, {0, 0.5}, {INT_MAX, 0.5}, 1e9, 1, -1, 0},
      {1, {INT_MIN, 0.5}, {INT_MIN + 1, 0.5}, 1e9, 0, -1, 0},
  };
  // 10, 20, 30 along x, and back to 0 on the fourth segment.
  GxBezierCurve curve = chainAlongX({10, 10, 10});
  curve.getSegments().add(support::evenLine(30, 0, 0, 0));
  for (Case const& c : cases) {
    SCOPED_TRACE(support::text(c.from) + " to " + support::text(c.limit));
    curve.setStrictIsClosed(c.closed);
    Pos to(77, 0.5);
    ASSERT_EQ(c.result, curve.findNextPos(c.from, c.limit, to, c.d, c.forward));
    if (c.result == 0) {
      EXPECT_NEAR(c.x, xAt(curve, to), 0.05);
    } else {
      EXPECT_EQ(Pos(77, 0.5), to);
    }
  }
}

TEST(GxBezierCurveWalk, ShortChordsAreCounted) {
  struct Case {
    double d;
    int chords;
    double chord;
  };
  // A tenth each; beyond 30, about three units, and beyond 20 of them the margin lets more in.
  Case const cases[] = {{10, 10, 1}, {30, 10, 3},  {31, 10, 3.1}, {57, 19, 3},
                        {90, 31, 3}, {123, 43, 3}, {0, 0, 0},     {-5, 0, 0}};
  GxBezierCurve const curve = chainAlongX({1000});
  for (Case const& c : cases) {
    SCOPED_TRACE(c.d);
    Pos const from(0, 0.25);
    Pos to;
    double consumed = 77.0;
    ASSERT_EQ(0, curve.findNextPos(from, to, c.d, 1, consumed, 1));
    EXPECT_NEAR(250 + c.chords * c.chord, xAt(curve, to), 0.5);
    EXPECT_NEAR(c.chords * c.chord, consumed, 0.5);
    Pos plain;
    ASSERT_EQ(0, curve.findNextPos(from, plain, c.d, 1, 1));
    EXPECT_EQ(to, plain);
  }
  Pos to;
  EXPECT_EQ(-1, curve.findNextPos({0, 0.99}, to, 20.0, 1, 1));
  EXPECT_NEAR(1000, xAt(curve, to), 2.0);  // the last position reached
}

TEST(GxBezierCurveWalk, EveryWalkEnds) {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  double const distances[] = {0, 1, 40, -7, 5e-324, 1e-9, 1e300, kInf, kNan};
  double const places[] = {0, 0.5, 1.0 - 1e-16, 7.25, -1, 1e15, -1e15, kNan, kInf};
  support::Random random(39);
  for (int round = 0; round < 10; ++round) {
    GxBezierCurve curve;
    for (int i = random.whole(0, 4); i > 0; --i) curve.getSegments().add(random.gridSegment(2));
    if (round % 5 == 0 && curve.length() > 0) curve(0)[1] = GxCoord<double>(kNan, 1e300);
    curve.setStrictIsClosed(round % 2);
    for (double const d : distances) {
      Pos const from(random.whole(-1, 4), places[random.whole(0, 8)]);
      Pos const limit(random.whole(-1, 4), places[random.whole(0, 8)]);
      int const forward = random.whole(0, 1);
      double consumed = 0.0;
      Pos to;
      int const results[] = {curve.findNextPos(from, to, d, forward, 0),
                             curve.findNextPos(from, limit, to, d, forward),
                             curve.findNextPos(from, limit, to, d, consumed, forward),
                             curve.findNextPosFromPoint({0.5, 0.5}, from, to, d, forward),
                             curve.findNextPosFromPoint({9, 9}, from, limit, to, d, forward),
                             curve.findNextPos(from, to, d, forward, consumed, 1),
                             curve.findNextPos(from, to, d, forward, 1)};
      for (int const result : results) {
        EXPECT_TRUE(result == -1 || (result == 0 && curve.length() > 0));
      }
    }
  }
}

}  // namespace
