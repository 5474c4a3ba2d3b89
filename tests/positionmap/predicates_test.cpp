// Positions compared on a curve, moved and counted; and a curve turned to start at one.
#include "tests/support/expect.h"
#include "tests/support/positions.h"

namespace {

using namespace support;

bool coincide(Position const& p, Position const& q) {
  return p.getSegmentNumber() == q.getSegmentNumber() &&
         IS_EQUAL(p.getTValue(), q.getTValue(), 1e-9);
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

}  // namespace
