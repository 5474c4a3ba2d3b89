// Walks along a curve by arc length or by straight-line distance.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <optional>

namespace crv {

/// How the distance of a walk is measured: along the curve, or in a straight line from the point
/// where it began.
enum class Measure { length, chord };

/// Returns the end of a walk from a position, forwards for a positive distance and backwards for a
/// negative one, across joints and the seam of a closed curve. Takes time linear in the number of
/// segments.
///
/// By length, a walk may take any number of laps. The error is at most the accuracy, in curve
/// units, or 64 u L if that is more, for each lap. A walk that would leave an open curve by no more
/// than that ends at the curve's end. A distance of 0 gives the position itself.
///
/// By chord, the result is the first position at the given distance from the point at from, to
/// within 64 u S, after at most one lap; the accuracy is ignored. If the distance is reached inside
/// a gap, the result is the position behind the gap.
///
/// Returns nothing if an open curve ends first, if a chord is never reached, for a chord of 0, a
/// position that is not on the curve, a closed curve without length, and unusable input.
[[nodiscard]] CRV_API std::optional<Position> walk(Curve const& curve, Position const& from,
                                                   double distance, Measure measure,
                                                   double accuracy);

}  // namespace crv
