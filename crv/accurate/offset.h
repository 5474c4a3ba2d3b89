// Parallels of curves, and outlines of strokes.
//
// Common rules of both operations, where S is the largest coordinate and d the distance:
// - Every point of a result lies at the distance d from the curve, to within the tolerance or 64 u
//   (S + |d|), whichever is more. The error is bounded, not sampled (internal/parallelError.h): no
//   point measured was ever off by more than worstError. Parallels that come within 2^-40
//   (S + |d|) of each other are an exception: they become one there, which may add as much to the
//   error. worstError includes this where their ends meet.
// - Miter and bevel joins and caps that are not round do not keep the distance: a miter extends as
//   far as its limit, a bevel and a flat cap are straight.
// - Round joins and caps need one segment per 90 degrees at a tolerance of 3e-4 |d|, and one per 45
//   degrees at 1e-5 |d|. Straight segments have straight parallels.
// - Where a curve turns back, and at its cusps, the parallel has a round join. There is no join
//   where the direction changes so little that a miter stays within a sixteenth of the tolerance.
// - Gaps between segments stay gaps: the segments between two gaps are an open curve.
#pragma once

#include "crv/accurate/cut.h"
#include "crv/accurate/types.h"
#include "crv/export.h"

#include <vector>

namespace crv {

/// The join of parallels on the outer side of a joint.
enum class Join {
  round,
  miter,  ///< Tangents extended to a tip; a bevel if the tip is too far from the joint.
  bevel,  ///< A straight segment across the gap.
};

/// The cap of a stroke's outline at the ends of an open curve.
enum class Cap {
  butt,    ///< A straight segment through the end.
  round,   ///< A half circle about the end.
  square,  ///< A straight segment half the width beyond the end.
};

/// Parameters of parallels.
struct OffsetOptions {
  /// Curve units: the largest error of the distance; a quarter of the distance where that is less.
  double tolerance = 0.01;
  Join join = Join::round;
  double miterLimit = 4.0;  ///< The largest distance of a miter's tip from its joint, over |d|.
};

/// The parallels of a curve.
struct Offset {
  /// The parallels in order along the curve.
  ///
  /// Their maps take a position of the curve to the point of the parallel on the normal there,
  /// whose distance differs from |d| by at most worstError, and back. They return -1 where that
  /// point was trimmed away by more than rounding. Beside a joint without a join, the point lies up
  /// to sqrt(tolerance * |d| / 8) beside the normal, so that the parallels on both sides meet.
  ///
  /// A position that is taken to the parallel and back ends within 16 u (S + |d|) of its place,
  /// with u = 2^-53, divided by the speed of the parallel relative to that of the curve where this
  /// is below 1. All positions of a bend as tight as the distance are taken to one point. A joint
  /// is taken to one point of its join, and all points of the join are taken back to the joint. A
  /// segment that is a point is treated as part of the joint at its ends.
  std::vector<Piece> parallels;
  double worstError = 0.0;  ///< Bounds the error of the distance, except of bevels and miters.
};

/// The parallels of a curve at a distance, positive to the left of the direction of travel: all
/// points that lie at this distance on that side and are not nearer to any other point of the
/// curve.
///
/// Loops, swallowtails and all other parts that are too near are trimmed away, so a curve may have
/// several parallels, or none. They run in the direction of the curve. A closed curve that does not
/// meet itself has only closed parallels; otherwise a parallel may also end where the other side or
/// an end of the curve is at the same distance. Parallels do not cross themselves or each other,
/// except that loops no larger than the tolerance may remain.
///
/// Trap: left is the inside of a counter-clockwise outline only. There may be several parallels, or
/// none, so the first one need not be the whole result.
///
/// The distance 0, and distances below 2^-40 S in magnitude, give the curve as it is. Curves that
/// are one point have no parallels. A tolerance that is not above 0, and unusable input, give an
/// empty result.
///
/// Method: the parallels of the segments (internal/parallelFit.h) and the joins between them are
/// arranged in the plane; the result is the boundary of all points that are farther from the curve
/// than the distance.
[[nodiscard]] CRV_API Offset offset(Curve const& curve, double distance,
                                    OffsetOptions const& options = {});

/// The outline of a stroke of a width along a curve, as a region: outer boundaries run
/// counter-clockwise, holes clockwise, and they cross nowhere.
///
/// With round joins and caps the stroke contains the points within half the width of the curve.
/// Otherwise it contains the points over which a straight pen of that width passes that is held
/// across the curve, and the joins and caps. If an open end bends more tightly than the pen is
/// wide, the pen also passes over points beyond a flat cap; there the pen at the end, and the
/// centres of curvature about which it turns, bound the stroke.
///
/// A closed curve has no caps. A curve that is one point gives a disc or, with square caps, a
/// square; with butt caps nothing. A width that is not above 2^-40 S, whose sides would be one
/// place of the plane, a tolerance that is not above 0, and unusable input give an empty result.
[[nodiscard]] CRV_API std::vector<Curve> strokeOutline(Curve const& curve, double width, Cap cap,
                                                       OffsetOptions const& options = {});

}  // namespace crv
