// Segments as parts without cusps.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace crv::internal {

/// A part of a segment that has a direction everywhere inside.
struct SmoothPart {
  Cubic c;
  std::size_t segment;
  double t0, t1;  // of the segment
};

/// Appends the parts of a segment, which is not one point, between its cusps, and between the
/// places where it turns back if it is straight. A part that starts or ends at a cusp has no handle
/// there. Coordinates are of the order of 1.
void appendSmoothParts(Cubic const& c, std::size_t segment, std::vector<SmoothPart>& parts);

/// The direction of a straight segment, one way or the other; nothing if it is not straight.
std::optional<Point> axisOf(Cubic const& c);

}  // namespace crv::internal
