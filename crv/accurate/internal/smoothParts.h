// Divides segments at their cusps.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace crv::internal {

/// A part of a segment whose velocity is nowhere zero inside.
struct SmoothPart {
  Cubic c;
  std::size_t segment;
  double t0, t1;  // of the segment
  Point in, out;  // unit vectors: the directions of travel at the start and at the end
};

/// Appends the parts of a segment, which is not one point, between its cusps, and between the
/// places where it turns back if it is straight. A part that starts or ends at a cusp has no handle
/// there. Coordinates are of the order of 1.
void appendSmoothParts(Cubic const& c, std::size_t segment, std::vector<SmoothPart>& parts);

/// A unit vector along a straight segment, in either direction; nothing if the segment is not
/// straight.
std::optional<Point> axisOf(Cubic const& c);

}  // namespace crv::internal
