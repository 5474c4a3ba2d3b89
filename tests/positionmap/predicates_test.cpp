#include "tests/support/data.h"
#include "tests/support/positions.h"
#include "tests/support/shapes.h"

#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Position;
using support::rawPosition;

GxBezierCurve ring(int segments, int closed) {
  GxBezierCurve curve;
  for (int i = 0; i < segments; ++i) curve.getSegments().add(support::evenLine(i, 0, i + 1, 0));
  curve.setStrictIsClosed(closed);
  return curve;
}

/// Positions on and around the joints and the seam of a curve of three segments.
std::vector<Position> grid() {
  std::vector<Position> positions;
  for (int segment = 0; segment <= 3; ++segment) {
    for (double const t : {0.0, 5e-10, 2e-9, 0.5, 1.0 - 5e-10}) {
      if (segment < 3 || t < 1e-6) positions.push_back(Position(segment, t));
    }
  }
  positions.push_back(rawPosition(1, 1.0));
  return positions;
}

bool coincide(Position const& p, Position const& q) {
  return p.getSegmentNumber() == q.getSegmentNumber() &&
         IS_EQUAL(p.getTValue(), q.getTValue(), 1e-9);
}

TEST(PositionPredicates, EqualOnACurveKnowsTheSeamOfAClosedOne) {
  struct Case {
    Position a, b;
    double tol;
    int open, closed;
  } const cases[] = {
      {{0, 0.0}, {3, 0.0}, 1e-9, 0, 1},
      {{3, 0.0}, {0, 0.0}, 1e-9, 0, 1},
      {{2, 1.0 - 1e-10}, {0, 0.0}, 1e-9, 0, 1},
      {{2, 1.0 - 1e-8}, {0, 0.0}, 1e-9, 0, 0},
      {rawPosition(1, 1.0), Position(2, 0.0), 1e-9, 1, 1},
      {{6, 0.0}, {0, 0.0}, 1e-9, 0, 0},  // two turns are not tried
      {{1, 0.5}, {1, 0.75}, 0.25, 0, 0},
      {{1, 0.5}, {1, 0.5}, 0.0, 0, 0},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(support::text(c.a) + " " + support::text(c.b));
    EXPECT_EQ(isEqual(c.a, c.b, c.tol), c.open);
    EXPECT_EQ(isEqual(ring(3, 0), c.a, c.b, c.tol), c.open);
    EXPECT_EQ(isEqual(ring(3, 1), c.a, c.b, c.tol), c.closed);
  }
}

TEST(PositionPredicates, TwoPositionsCutAClosedCurveInTwoStretches) {
  for (Position const& a : grid()) {
    for (Position const& b : grid()) {
      for (Position const& p : grid()) {
        SCOPED_TRACE(support::text(p) + " from " + support::text(a) + " to " + support::text(b));
        int const there = isStrictBetweenPosition(p, a, b, 1);
        int const back = isStrictBetweenPosition(p, b, a, 1);
        ASSERT_EQ(there + back, !coincide(a, b) && p != a && p != b) << "in one of the two";
        ASSERT_EQ(isStrictBetweenPosition(p, a, b, 0), !coincide(a, b) && a < p && p < b);
        ASSERT_EQ(isBetweenPosition(p, a, b, 1), there || coincide(p, a));
        ASSERT_EQ(isBothInclusiveBetweenPosition(p, a, b, 1),
                  there || coincide(p, a) || coincide(p, b));
        for (Position const& c : grid()) {
          int const strict = isStrictBetweenPosition(p, a, b, c, 1);
          ASSERT_EQ(isBetweenPosition(p, a, b, c, 1), strict || coincide(p, a));
          ASSERT_EQ(isBothInclusiveBetweenPosition(p, a, b, c, 1),
                    strict || coincide(p, a) || coincide(p, b));
          bool const chooses = !coincide(c, a) && !coincide(c, b);
          ASSERT_TRUE(chooses || !strict);
          if (!chooses || coincide(a, b)) continue;
          ASSERT_EQ(strict, isStrictBetweenPosition(p, b, a, c, 1)) << "the ends may be swapped";
          ASSERT_EQ(isStrictBetweenPosition(c, a, b, c, 1), 1) << "the stretch that holds c";
        }
      }
    }
  }
}

TEST(PositionPredicates, SnapsToTheNearerJoint) {
  struct Case {
    Position from, to;
  } const cases[] = {
      {{2, 1.0 - 1e-7}, {3, 0.0}},
      {{2, 1e-7}, {2, 0.0}},
      {{2, 0x1p-20}, {2, 0x1p-20}},  // on the tolerance is outside
      {rawPosition(-1, 1.0), Position(0, 0.0)},
      {{2, 0.5}, {2, 0.5}},
  };
  for (Case const& c : cases) EXPECT_BITS(snapToAnchor(c.from, 0x1p-20), c.to);
}

TEST(PositionPredicates, MovingStopsAtTheEndsOrGoesOnAcrossTheSeam) {
  struct Case {
    Position from;
    double dt;
    Position open, closed;
  } const cases[] = {
      {{0, 0.75}, 0.5, {1, 0.25}, {1, 0.25}},
      {{1, 0.75}, 0.5, {2, 0.0}, {0, 0.25}},
      {{1, 0.5}, 0.5, {2, 0.0}, {2, 0.0}},
      {{0, 0.25}, -0.5, {0, 0.0}, {1, 0.75}},
      {{0, 0.0}, -1.0, {0, 0.0}, {1, 0.0}},
      {{9, 0.5}, 0.0, {2, 0.0}, {7, 0.5}},  // one turn only
      {{1, 0.5}, 1.5, {}, {}},
  };
  for (Case const& c : cases) {
    for (int const closed : {0, 1}) {
      Position result;
      adjustBezierCurvePosition(result, c.from, ring(2, closed), c.dt);
      EXPECT_BITS(result, closed ? c.closed : c.open);
    }
  }
  Position result(7, 0.5);
  adjustBezierCurvePosition(result, Position(0, 0.0), GxBezierCurve(), 0.5);
  EXPECT_BITS(result, Position(7, 0.5));
}

TEST(PosDiff, DistancesGoOnceAcrossTheSeam) {
  struct Case {
    Position a, b;
    int forward;
    int first;
    double second;
  } const cases[] = {
      {{0, 0.75}, {1, 0.25}, 1, 0, 0.5}, {{3, 0.5}, {0, 0.25}, 1, 0, 0.75},
      {{0, 0.25}, {3, 0.5}, 0, 0, 0.75}, {{1, 0.5}, {1, 0.25}, 1, 3, 0.75},
      {{9, 0.0}, {0, 0.0}, 1, -5, 0.0},
  };
  for (Case const& c : cases) {
    PosDiff const d = diff(c.a, c.b, c.forward, 4);
    EXPECT_EQ(d.first, c.first);
    EXPECT_EQ(d.second, c.second);
  }
  EXPECT_EQ(PosDiff(1, 0.5) < PosDiff(1, 0.5 + 1e-10), 0);
  EXPECT_EQ(PosDiff(1, 0.5) == PosDiff(1, 0.5 + 1e-10), 1);
  EXPECT_EQ(PosDiff(0, 0.9) < PosDiff(1, 0.0), 1);
  EXPECT_EQ(PosDiff(1, 0.0) == PosDiff(0, 1.0), 0) << "equal in length, not in kind";
  EXPECT_EQ(ratio(PosDiff(0, 0.5), PosDiff(2, 0.0)), 0.25);
  EXPECT_EQ(ratio(PosDiff(1, 0.0), PosDiff(0, 5e-10)), 0.0);
}

TEST(ArrangeBezierCurve, AClosedCurveStartsAtTheSecondPlaceAndReachesTheFirstTheShortWay) {
  struct Case {
    Position a, b;
    unsigned long segments;
    double start;  // on the curve before, in segments
    bool reversed;
  } const cases[] = {
      {{5, 0.75}, {1, 0.5}, 9, 1.5, false},  // of nine segments, not eight
      {{4, 0.0}, {1, 0.5}, 9, 1.5, false},  {{7, 0.5}, {1, 0.5}, 9, 1.5, true},
      {{2, 0.0}, {1, 0.1}, 8, 1.0, false},  {{0, 0.0}, {1, 0.95}, 8, 2.0, true},
      {{3, 0.0}, {10, 0.0}, 8, 2.0, false},  // beyond the end: modulo
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(support::text(c.a) + " " + support::text(c.b));
    GxBezierCurve const before = support::outline("roman-o-inner");
    GxBezierCurve curve = before;
    arrangeBezierCurve(curve, c.a, c.b);
    ASSERT_EQ(curve.length(), c.segments);
    int const segment = static_cast<int>(c.start);
    double const t = c.start - segment;
    EXPECT_NEAR_POINT(curve(0)[0], before[segment].bValue(t), 1e-12);
    double const along = (curve(0).bValue(0.1) - curve(0)[0]) * before[segment].dValue(t);
    EXPECT_EQ(along < 0, c.reversed);
  }
}

TEST(ArrangeBezierCurve, AnOpenCurveIsReversedWhenThePlacesAre) {
  GxBezierCurve const before = ring(3, 0);
  GxBezierCurve curve = before;
  arrangeBezierCurve(curve, GxCoord<double>(0.5, 1), GxCoord<double>(2.5, 1));
  EXPECT_TRUE(curve == before);
  arrangeBezierCurve(curve, GxCoord<double>(2.5, 1), GxCoord<double>(0.5, 1));
  EXPECT_BITS(curve(0)[0], GxCoord<double>(3, 0));
}

TEST(PositionPredicates, AnyNumbersGiveAnAnswer) {
  double const nan = std::numeric_limits<double>::quiet_NaN();
  double const inf = std::numeric_limits<double>::infinity();
  int const far = std::numeric_limits<int>::max();
  Position const odd[] = {
      {0, nan}, {1, -inf}, Position(far, 0x1p52), Position(-far, -0x1p52), rawPosition(far, 1.0)};
  for (Position const& p : odd) {
    for (Position const& q : odd) {
      for (int const closed : {0, 1}) {
        GxBezierCurve curve = support::outline("roman-o-inner");
        curve.setStrictIsClosed(closed);
        EXPECT_FALSE(isEqual(curve, p, q, nan));
        EXPECT_EQ(isStrictBetweenPosition(p, p, q, q, closed), 0);
        diff(p, q, 1, far);
        Position moved;
        for (double const dt : {nan, 1.0, -1.0}) adjustBezierCurvePosition(moved, p, curve, dt);
        snapToAnchor(p, 0.1);
        arrangeBezierCurve(curve, p, q);
        EXPECT_LE(curve.length(), 9u);
      }
    }
  }
}

}  // namespace
