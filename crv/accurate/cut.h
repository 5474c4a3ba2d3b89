// Cuts, stretches and reversals of curves, with maps that carry positions through them.
//
// Common rules of all edits:
// - Parts of segments are computed by blossoming (Ramshaw 1989). Whole segments keep their control
//   points bit for bit, an end at a joint or at the curve's end has the same bits as that point,
//   and the pieces on both sides of a cut share the point of the cut bit for bit.
// - The point at a position of the source and the point at the position to which the map takes it
//   lie within 64 u S of each other (at most 8 u S in a million random cases). A position that is
//   mapped to the result and back has the same t to within 4 * 2^-53, or to within 4 ulps of t if
//   the result runs forwards. A position of the result that is mapped to the source and back is the
//   same point, but its t may change by 2^-53 / w, where w is the part of the source segment that
//   became its segment.
// - Maps refer to no curve, so source and result may be changed or destroyed. Positions off either
//   curve, or outside the piece, give -1 and leave out untouched. The time of a query grows as log
//   n for a piece of n segments. If a point of the source has two positions on the result, such as
//   the point where a closed curve was cut once, the map returns either of them.
// - A joint (k, 0.0) is the start of segment k. The end of a segment that lies farther than 16 u S
//   from the start of the next one has no position of its own, and maps return the last t below 1.
// - Unusable and empty curves give empty results, whose maps return -1 and are never null.
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

/// Cuts a curve at positions, given in any order; the pieces are open and come in order along the
/// curve. Several cuts at one point count once (both positions of the seam are one point), and
/// positions off the curve are ignored.
///   open curve    one piece more than there are cuts inside it; cuts at its ends do not count
///   closed curve  as many pieces as cuts, the first from the first cut to the second, the last
///                 across the seam to the first; without cuts one piece, opened at the seam
/// Takes time linear in the number of segments, plus the time to sort the cuts.
[[nodiscard]] CRV_API std::vector<Piece> cut(Curve const& curve, std::vector<Position> const& cuts);

/// The same shape with one more joint, at position. At a joint, at the ends and off the curve, the
/// result is the curve as it is. The closed flag stays. Takes time linear in the number of
/// segments.
[[nodiscard]] CRV_API Piece withJoint(Curve const& curve, Position const& position);

/// The part of a curve from one position to another, as an open curve that starts at from and ends
/// at to. If forward is false, it runs against the direction of the curve. On a closed curve the
/// part crosses the seam if necessary, and from == to gives the whole curve, opened there. On an
/// open curve from == to gives one segment that is a point. The result is empty if to cannot be
/// reached from from in that direction on an open curve, or if either is off the curve. Takes time
/// linear in the number of segments.
[[nodiscard]] CRV_API Piece stretch(Curve const& curve, Position const& from, Position const& to,
                                    bool forward);

/// The curve in the opposite direction, with the same control points and closed flag. Takes time
/// linear in the number of segments.
[[nodiscard]] CRV_API Piece reversed(Curve const& curve);

}  // namespace crv
