// Parallels of curves, and outlines of strokes.
//
// What holds for both, S being the largest coordinate and d the distance:
// - Every place of a result lies at the distance d from the curve, within the tolerance or
//   64 u (S + |d|), whichever is more, and no place of it is nearer than that. The error is
//   bounded, not sampled (internal/parallelError.h): no place measured was ever off by more than
//   worstError. Miter and bevel joins, and caps that are not round, leave the distance: a miter
//   reaches up to its limit, a bevel and a flat cap lie on their chords.
// - Round joins and caps take one segment a quarter turn at a tolerance of 3e-4 of |d|, one per 45
//   degrees at 1e-5. Straight segments have straight parallels.
// - Where a curve turns back, and at its cusps, the parallel goes around the place in a round join.
//   Joints at which the direction changes so little that a miter stays within a sixteenth of the
//   tolerance have no join.
// - Gaps between segments stay gaps: what lies between two gaps is an open curve.
#pragma once

#include "crv/accurate/cut.h"
#include "crv/accurate/types.h"
#include "crv/export.h"

#include <vector>

namespace crv {

/// How parallels go around a joint on the outer side of its turn.
enum class Join {
  round,
  miter,  ///< Straight on to a tip, unless it is too far from the joint: then a bevel.
  bevel,  ///< Straight across.
};

/// How the outline of a stroke goes around the ends of an open curve.
enum class Cap {
  butt,    ///< Straight across the end.
  round,   ///< A half circle about the end.
  square,  ///< Straight across, half the width beyond the end.
};

/// What a parallel is to be like.
struct OffsetOptions {
  double tolerance = 0.01;  ///< Curve units: how far the distance may be off.
  Join join = Join::round;
  double miterLimit = 4.0;  ///< The farthest tip of a miter, as a multiple of the distance.
};

/// The parallels of a curve.
struct Offset {
  /// In order along the curve. The maps take positions of the curve to the place that grew from
  /// them, and back; -1 where that was trimmed away.
  std::vector<Piece> parallels;
  double worstError = 0.0;  ///< The distance is off by no more, bevels and miters left out.
};

/// The parallels of a curve at a distance, positive to the left of the direction of travel: all
/// places that are at the distance on that side, and not nearer to any other place of the curve.
///
/// Loops, swallowtails, and all else that is nearer are trimmed away, so that a curve may have
/// several parallels, or none. They run the curve's way. A closed curve that does not meet itself
/// has closed ones only; elsewhere a parallel may also end, where the curve comes as near from its
/// other side or with an end. Parallels do not cross themselves or each other; loops no larger than
/// the tolerance may stay.
///
/// Trap: left is the inside of a counter-clockwise outline only. There may be several parallels, or
/// none: the first is not the whole.
///
/// The distance 0, and distances below 2^-40 S, give the curve as it is. Curves that are one point
/// have no parallels. A tolerance that is not above 0, and unusable input, give an empty result.
///
/// Method: the parallel of each segment as in internal/parallelFit.h, joins between them, and from
/// the arrangement of all that the boundary of the places that are farther away.
[[nodiscard]] CRV_API Offset offset(Curve const& curve, double distance,
                                    OffsetOptions const& options = {});

/// The outline of a stroke of a width along a curve, as a region: outer boundaries run
/// counter-clockwise, holes clockwise, and they cross nowhere.
///
/// A closed curve has no caps. A curve that is one point gives a disc or, with square caps, a
/// square; with butt caps nothing. A width or a tolerance that is not above 0, and unusable input,
/// give an empty result.
[[nodiscard]] CRV_API std::vector<Curve> strokeOutline(Curve const& curve, double width, Cap cap,
                                                       OffsetOptions const& options = {});

}  // namespace crv
