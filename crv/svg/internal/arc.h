// The elliptical arc of SVG as cubics.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <vector>

namespace crv::internal {

/// An arc as SVG defines it: from one point to another on an ellipse with two radii, whose first
/// axis is turned by an angle in degrees from the x axis.
struct Arc {
  Point from;
  double radiusX, radiusY;
  double degrees;
  bool isLarge;  // the longer way around, of the two arcs that run in the same sense
  bool isSweep;  // towards larger angles, from the x axis towards the y axis
  Point to;
};

/// Appends the arc as cubics of at most 45 degrees each, which end exactly at its ends. An arc with
/// a radius of 0, or one whose ellipse leaves the range of doubles, is a line. An arc to its own
/// start appends nothing.
void appendArc(Arc const& arc, std::vector<Cubic>& out);

}  // namespace crv::internal
