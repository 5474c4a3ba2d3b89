// Positions compared on a curve, moved and counted; and a curve turned to start at one.
#include "tests/support/expect.h"
#include "tests/support/positions.h"

namespace {

using namespace support;

GxBezierCurve threeLines(int closed) {
  GxBezierCurve curve = polygon({0, 0, 1, 0, 2, 0, 3, 0});
  curve.setStrictIsClosed(closed);
  return curve;
}

bool coincide(Position const& p, Position const& q) {
  return p.getSegmentNumber() == q.getSegmentNumber() &&
         IS_EQUAL(p.getTValue(), q.getTValue(), 1e-9);
}

TEST(PositionPredicates, EqualOnACurveKnowsTheSeamOfAClosedOne) {
  // Two positions, the tolerance, equal on an open curve and on a closed one. Two turns are not
  // tried; on the tolerance is outside.
  for (Row const row :
       table("0 3 1e-9 0 1; 3 0 1e-9 0 1; 2.9999999999 0 1e-9 0 1; 2.99999999 0 1e-9 0 0;"
             "6 0 1e-9 0 0; 1.5 1.75 0.25 0 0; 1.5 1.5 0 0 0; 1.5 1.5 1e-9 1 1")) {
    EXPECT_EQ(isEqual(threeLines(0), at(row[0]), at(row[1]), row[2]), row[3]);
    EXPECT_EQ(isEqual(threeLines(1), at(row[0]), at(row[1]), row[2]), row[4]);
  }
}

TEST(PositionPredicates, TwoPositionsCutAClosedCurveInTwoStretches) {
  std::vector<Position> grid{rawPosition(1, 1.0), {3, 0.0}, {3, 5e-10}};
  for (int segment = 0; segment < 3; ++segment) {
    for (double const t : {0.0, 5e-10, 2e-9, 0.5, 1.0 - 5e-10}) grid.emplace_back(segment, t);
  }
  for (Position const& a : grid) {
    for (Position const& b : grid) {
      bool const isStretch = !coincide(a, b);
      for (Position const& p : grid) {
        SCOPED_TRACE(text(p) + " from " + text(a) + " to " + text(b));
        bool const isStart = coincide(p, a), isEnd = coincide(p, b);
        int const there = isStrictBetweenPosition(p, a, b, 1);
        ASSERT_EQ(there + isStrictBetweenPosition(p, b, a, 1), isStretch && p != a && p != b);
        ASSERT_EQ(isStrictBetweenPosition(p, a, b, 0), isStretch && a < p && p < b);
        ASSERT_EQ(isBetweenPosition(p, a, b, 1), there || isStart);
        ASSERT_EQ(isBothInclusiveBetweenPosition(p, a, b, 1), there || isStart || isEnd);
        for (Position const& c : grid) {  // chooses the stretch
          int const strict = isStrictBetweenPosition(p, a, b, c, 1);
          bool const chooses = !coincide(c, a) && !coincide(c, b);
          int const back = isStrictBetweenPosition(p, b, a, 1);
          bool const cIsThere = isStrictBetweenPosition(c, a, b, 1);
          ASSERT_EQ(strict, chooses && (cIsThere ? there : back));
          ASSERT_EQ(isBetweenPosition(p, a, b, c, 1), strict || isStart);
          ASSERT_EQ(isBothInclusiveBetweenPosition(p, a, b, c, 1), strict || isStart || isEnd);
        }
      }
    }
  }
}

TEST(PositionPredicates, SnapsToTheNearerJoint) {
  EXPECT_BITS(snapToAnchor({2, 1.0 - 1e-7}, 0x1p-20), at(3));
  EXPECT_BITS(snapToAnchor({2, 1e-7}, 0x1p-20), at(2));
  EXPECT_BITS(snapToAnchor({2, 0x1p-20}, 0x1p-20), Position(2, 0x1p-20));  // on it is outside
  EXPECT_BITS(snapToAnchor(rawPosition(-1, 1.0), 0x1p-20), at(0));
}

TEST(PositionPredicates, MovingStopsAtTheEndsOrGoesOnAcrossTheSeam) {
  // From, by, to on an open curve and on a closed one; once round only, and by no more than 1.
  for (Row const row : table("0.75 0.5 1.25 1.25; 2.75 0.5 3 0.25; 2.5 0.5 3 3; 0.25 -0.5 0 2.75;"
                             "0 -1 0 2; 9.5 0 3 6.5; 1.5 1.5 -1 -1")) {
    for (int const closed : {0, 1}) {
      Position result;
      adjustBezierCurvePosition(result, at(row[0]), threeLines(closed), row[1]);
      EXPECT_BITS(result, at(row[closed ? 3 : 2]));
    }
  }
}

TEST(PosDiff, DistancesGoOnceAcrossTheSeam) {
  for (Row const row : table("0.75 1.25 1 0 0.5; 3.5 0.25 1 0 0.75; 0.25 3.5 0 0 0.75;"
                             "1.5 1.25 1 3 0.75; 9 0 1 -5 0")) {
    PosDiff const d = diff(at(row[0]), at(row[1]), int(row[2]), 4);
    EXPECT_TRUE(d.first == row[3] && d.second == row[4]);
  }
  EXPECT_EQ(PosDiff(1, 0.5) < PosDiff(1, 0.5 + 1e-10), 0);
  EXPECT_EQ(PosDiff(0, 0.9) < PosDiff(1, 0.0), 1);
  EXPECT_EQ(PosDiff(1, 0.0) == PosDiff(0, 1.0), 0) << "equal in length, not in kind";
  EXPECT_EQ(ratio(PosDiff(0, 0.5), PosDiff(2, 0.0)), 0.25);
  EXPECT_EQ(ratio(PosDiff(1, 0.0), PosDiff(0, 5e-10)), 0.0);
}

TEST(ArrangeBezierCurve, AClosedCurveStartsAtTheSecondPlaceAndReachesTheFirstTheShortWay) {
  // The places; segments, the start on the curve before, and whether it is reversed. Distances are
  // those of nine segments, not eight, where one was cut; beyond the end counts modulo.
  for (Row const row : table(R"(5.75 1.5 9 1.5 0; 4 1.5 9 1.5 0; 7.5 1.5 9 1.5 1; 2 1.0999 8 1 0;
            2 1.11 9 1.11 0; 0 1.89 9 1.89 1; 0 1.91 8 2 1; 3 10 8 2 0)")) {
    GxBezierCurve const before = outline("roman-o-inner");
    GxBezierCurve curve = before;
    arrangeBezierCurve(curve, at(row[0]), at(row[1]));
    ASSERT_EQ(curve.length(), row[2]);
    EXPECT_NEAR_POINT(curve(0)[0], before.locateCurvePosition(at(row[3])), 1e-12);
    Position const start = at(row[3]);
    double const along = (curve(0).bValue(0.1) - curve(0)[0]) *
                         before[int(start.getSegmentNumber())].dValue(start.getTValue());
    EXPECT_EQ(along < 0, row[4] != 0);
  }
}

TEST(ArrangeBezierCurve, AnOpenCurveIsReversedWhenThePlacesAre) {
  GxBezierCurve curve = threeLines(0);
  arrangeBezierCurve(curve, Point(0.5, 1), Point(2.5, 1));
  EXPECT_TRUE(curve == threeLines(0));
  arrangeBezierCurve(curve, Point(2.5, 1), Point(0.5, 1));
  EXPECT_BITS(curve(0)[0], Point(3, 0));
}

}  // namespace
