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
  double t0, t1;              // of the segment
  Point in, out;              // unit vectors: the directions of travel at the start and at the end
  std::optional<Point> axis;  // of a straight segment: a unit vector along it, in either direction
};

/// Appends the parts of a segment, which is not one point, between its cusps, and between the
/// places where it turns back if it is straight. A part that starts or ends at a cusp has no handle
/// there. The magnitude is the largest coordinate of the curve.
void appendSmoothParts(Cubic const& c, std::size_t segment, double magnitude,
                       std::vector<SmoothPart>& parts);

}  // namespace crv::internal
