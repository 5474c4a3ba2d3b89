// Raw outlines without what is nearer to the curve than their distance.
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

/// The boundary of the places that are farther from a curve than a distance, with these on its
/// left: closed paths whose parts are stretches of the raw outline's segments.
///
/// Places that far away have a winding number that the curve alone decides: outside, which is what
/// the outline winds around them. Stretches between such places and others remain; so do loops
/// inside the curve's reach by chance, which are recognised by their distance from the curve.
std::vector<Path> trimmed(RawOutline const& outline, int outside, Chain const& curve,
                          BoxTree const& boxes, double distance, double tolerance);

}  // namespace crv::internal
