// The directions of travel on both sides of a position, and the area and sense of an outline.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

namespace crv {

/// Unit vectors in the direction of travel.
struct Directions {
  Vector in;   ///< The direction of arrival.
  Vector out;  ///< The direction of departure.
};

/// The directions in which the curve arrives at a position and leaves it, as limits: the handles
/// may be retracted, and at a cusp the curve leaves against the direction of its arrival. Where a
/// segment is one point, in comes from the last segment before that moves, and out goes to the
/// next; around the seam of a closed curve, too. At an end of an open curve both are the one that
/// there is. Both are zero where no segment moves, for a position that is not on the curve, and for
/// unusable input. A velocity that rounding cannot tell from zero counts as zero. Elsewhere
/// directions are exact to the rounding of the velocity: 8 u times the longest edge of the control
/// polygon.
[[nodiscard]] CRV_API Directions directions(Curve const& curve, Position const& position);

/// The area enclosed, counted with the number of turns around it, positive for counter-clockwise.
/// Ends of segments that do not meet are joined by straight lines, the last with the first, whether
/// or not the curve is closed. Within 64 u S times the length of the control polygon; 0 for an
/// empty curve, NaN for unusable input. Method: Green's theorem, the integral of each segment about
/// its start in closed form. Linear in the segments.
/// Trap: positive and counter-clockwise are meant with y up.
[[nodiscard]] CRV_API double signedArea(Curve const& curve);

/// True when the signed area is negative.
/// Trap: with y down the answer is the opposite. A figure eight answers by its larger loop.
[[nodiscard]] CRV_API bool isClockwise(Curve const& curve);

}  // namespace crv
