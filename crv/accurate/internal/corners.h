// Samples of a stroke at which it turns sharply.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <cstddef>
#include <vector>

namespace crv::internal {

/// Returns the indices of the corners, ascending. A place is a corner if the path turns there by
/// the angle with the given cosine or more; the turn is measured between the chords to the nearest
/// places before and after it that are at least reach away along the path. Of several corners
/// within reach of each other only the sharpest counts. The ends of an open stroke are not corners.
/// places is not empty, and consecutive places differ.
std::vector<std::size_t> cornersOf(std::vector<Point> const& places, bool closed, double reach,
                                   double cosine);

}  // namespace crv::internal
