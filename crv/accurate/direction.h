// The directions of travel on both sides of a position, and the signed area and orientation of an
// outline.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

namespace crv {

/// Unit vectors in the direction of travel.
struct Directions {
  Vector in;   ///< The direction of arrival.
  Vector out;  ///< The direction of departure.
};

/// The limits of the direction of travel before and behind a position. Handles may be retracted; at
/// a cusp the curve leaves against the direction of its arrival. Segments that are one point are
/// skipped: in is taken from the last segment before them that is not a point, and out from the
/// next one, across the seam of a closed curve if necessary. At an end of an open curve both
/// vectors are the one existing direction. Both are zero if all segments are points, for a position
/// that is not on the curve, and for unusable input. A velocity that rounding cannot distinguish
/// from zero counts as zero. Otherwise the error of a direction is that of a velocity that is off
/// by 8 u times the longest edge of the control polygon.
[[nodiscard]] CRV_API Directions directions(Curve const& curve, Position const& position);

/// The area enclosed by the curve: each part of the plane counts as often as the curve winds around
/// it, counter-clockwise positive. Ends of segments that do not meet are joined by straight lines,
/// the last end with the first start, whether or not the curve is closed. The error is at most 64 u
/// S times the length of the control polygon. 0 for an empty curve, NaN for unusable input. Method:
/// Green's theorem, with the integral of each segment about its start in closed form. Takes time
/// linear in the number of segments.
/// Trap: positive means counter-clockwise with y up; with y down it means clockwise.
[[nodiscard]] CRV_API double signedArea(Curve const& curve);

/// True when the signed area is negative.
/// Trap: with y down the answer is the opposite. For a figure eight the larger loop decides.
[[nodiscard]] CRV_API bool isClockwise(Curve const& curve);

}  // namespace crv
