// The crossings of two segments, found by halving both.
#pragma once

#include "crv/bezier/internal/cubic.h"
#include "crv/bezier/internal/lanes.h"

#include <vector>

namespace crv::internal {

/// The box of a segment's control points: x in one lane, y in the other.
struct LaneBox {
  Lanes least, greatest;

  explicit LaneBox(Cubic const& s) {
    Lanes const p0 = lanes(s.p[0]), p1 = lanes(s.p[1]), p2 = lanes(s.p[2]), p3 = lanes(s.p[3]);
    least = minOf(p0, minOf(p1, minOf(p2, p3)));
    greatest = maxOf(p0, maxOf(p1, maxOf(p2, p3)));
  }
  LaneBox() = default;

 private:
  static Lanes lanes(Point const& p) { return Lanes{p.x, p.y}; }
};

/// Boxes that only touch overlap. The test has no branches because its outcome is unpredictable.
/// Exact form: the last comparison is the other way round than the others, for NaN.
inline bool overlap(LaneBox const& a, LaneBox const& b) {
  LaneMask const isApart = (a.least > b.greatest) | (b.least > a.greatest);
  return !holdsInAny(isApart) & (b.least[1] <= a.greatest[1]);
}

/// The part [lo, hi] of a segment, which is still to be halved depth times, and its halves, once
/// they are made.
struct HalvedPiece {
  struct Halves;

  Cubic cubic;
  double lo, hi;
  int depth;
  Halves* halves;

  bool isLeaf() const { return depth < 1; }
};

/// One crossing: the parameters on both segments.
struct Crossing {
  double a, b;
};

using Crossings = std::vector<Crossing>;

/// Appends the crossings of two pieces in the order in which the search finds them. Both are halved
/// while their boxes overlap; pieces farther apart than the margin, in curve units, are skipped.
void appendCrossings(HalvedPiece& a, HalvedPiece& b, double margin, Crossings& crossings);

}  // namespace crv::internal
