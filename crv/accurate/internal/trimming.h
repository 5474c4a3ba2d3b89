// Removes the parts of raw outlines that are nearer to the curve than the distance.
#pragma once

#include "crv/accurate/internal/arrangement.h"
#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/rawOutline.h"
#include "crv/curve/internal/boxTree.h"

#include <vector>

namespace crv::internal {

/// The boxes of a curve's segments, wider by its resolution, for the operations below.
BoxTree boxesOf(Chain const& curve);

/// Whether a closed curve without gaps is free of contacts with itself. Coordinates are of the
/// order of 1.
bool isSimple(Chain const& curve, BoxTree const& boxes);

/// The boundary of all points farther from a curve than a distance, with these points on its left,
/// as closed paths whose parts are stretches of the raw outline's segments.
///
/// outside is the winding number of the raw outline around these points. Only edges between faces
/// with this winding number and others are kept. Loops near the curve may have it by chance; they
/// are recognised by their distance from the curve and dropped.
std::vector<Path> trimmed(RawOutline const& outline, int outside, Chain const& curve,
                          BoxTree const& boxes, double distance, double tolerance);

}  // namespace crv::internal
