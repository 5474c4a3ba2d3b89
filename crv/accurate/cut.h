// Cuts, stretches and reversals of curves, with maps that carry positions through them.
//
// What holds for every edit:
// - Parts of segments are computed by blossoming (Ramshaw 1989). Whole segments keep their control
//   points to the bit, an end on a joint or on the curve's end has its bits, and the pieces on both
//   sides of a cut share its point to the bit.
// - A position of the source and the position that the map takes it to lie within 64 u S of each
//   other (8 u S at most in a million random cases). Carried to the result and back, a position has
//   its t again to 4 units in the last place of 1, and to 4 of t itself where the result runs
//   forwards. A position of the result keeps its place when it is carried to the source and back,
//   but its t only to 2^-53 / w, where w is the share of the source segment that became its
//   segment.
// - Maps hold all that they need: source and result may change or end before them. Positions off
//   either curve, or outside the piece, give -1 and leave out as it was. A query takes about log n
//   for a piece of n segments. Where one place of the source has two positions on the result, such
//   as the place where a closed curve was cut once, the map gives either.
// - A joint (k, 0.0) is the start of segment k. Where the end of a segment lies farther than 16 u S
//   from the start of the next one, it has no position of its own; maps give the last t below 1.
// - Unusable and empty curves have empty results; their maps answer -1 and are never null.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <vector>

namespace crv {

/// A result of an edit. The map takes positions of the source to the curve, and back.
struct Piece {
  Curve curve;
  Map map;
};

/// Cuts a curve at positions, given in any order; the pieces come in order along the curve and are
/// open. Cuts at one place count once (the seam's two names are one place), cuts off the curve not
/// at all.
///   open curve    one piece more than there are cuts inside it; cuts at its ends do not count
///   closed curve  as many pieces as cuts, the first from the first cut to the second, the last
///                 across the seam to the first; without cuts one piece, opened at the seam
/// The time is linear in the segments, beside sorting the cuts.
[[nodiscard]] CRV_API std::vector<Piece> cut(Curve const& curve, std::vector<Position> const& cuts);

/// The same shape with one more joint, at position. The curve as it is where there is a joint
/// already, at the ends, and where position is off the curve. The closed flag stays. Linear in the
/// segments.
[[nodiscard]] CRV_API Piece withJoint(Curve const& curve, Position const& position);

/// The part of a curve from one position to another, as an open curve that starts at from and ends
/// at to. With forward false it runs against the curve. On a closed curve it crosses the seam where
/// it has to, and from == to is the whole curve, opened there. On an open curve from == to is one
/// segment that is a point. Empty where an open curve does not lead from from to to in that sense,
/// and where one of them is off the curve. Linear in the segments.
[[nodiscard]] CRV_API Piece stretch(Curve const& curve, Position const& from, Position const& to,
                                    bool forward);

/// The curve run the other way, with the same control points and closed flag. Linear in the
/// segments.
[[nodiscard]] CRV_API Piece reversed(Curve const& curve);

}  // namespace crv
