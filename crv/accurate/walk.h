// Walking along a curve by length or by straight distance.
#pragma once

#include "crv/accurate/types.h"
#include "crv/export.h"

#include <optional>

namespace crv {

/// How the distance of a walk is measured: along the curve, or straight from where it began.
enum class Measure { length, chord };

/// Where a walk from a position ends, forwards for a positive distance, backwards for a negative
/// one, over any number of joints and the seam of a closed curve. By length it may take any number
/// of laps, and lands within the accuracy a lap, or within 64 u L where that is more. A walk that
/// would leave an open curve by no more than that ends at its end. A distance of 0 stays where it
/// is. By chord it is the first place whose distance from the point at from is the given one, after
/// at most one lap, within 64 u S; the accuracy plays no part. A gap that jumps over the distance
/// counts: the place is behind it. Nothing where an open curve ends before or a chord is never
/// reached, for a chord of 0, a position that is not on the curve, a closed curve without length,
/// and unusable input. The time is linear in the number of segments.
[[nodiscard]] CRV_API std::optional<Position> walk(Curve const& curve, Position const& from,
                                                   double distance, Measure measure,
                                                   double accuracy);

}  // namespace crv
