// Samples of a stroke at which it turns sharply.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <cstddef>
#include <vector>

namespace crv::internal {

/// The indices, ascending, of the places at which the chords to the nearest places before and after
/// that are reach away along the path, or farther, turn by an angle with this cosine or more; of
/// several within reach of each other the sharpest. The ends of an open stroke are none; places is
/// not empty, and consecutive places differ.
std::vector<std::size_t> cornersOf(std::vector<Point> const& places, bool closed, double reach,
                                   double cosine);

}  // namespace crv::internal
